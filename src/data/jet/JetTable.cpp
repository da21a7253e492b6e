#include "data/jet/JetTable.h"

#include <algorithm>

namespace quillform::jet {

namespace {

FieldType FieldTypeOf(const Column& column) {
    switch (column.type) {
        case ColumnType::Boolean:
            return FieldType::Boolean;
        case ColumnType::Byte:
            return FieldType::Byte;
        case ColumnType::Integer:
            return FieldType::Integer;
        case ColumnType::Long:
            return FieldType::Long;
        case ColumnType::Money:
            return FieldType::Currency;
        case ColumnType::Single:
            return FieldType::Single;
        case ColumnType::Double:
            return FieldType::Double;
        case ColumnType::DateTime:
            return FieldType::Date;
        case ColumnType::Binary:
            return FieldType::Binary;
        case ColumnType::Text:
            return FieldType::Text;
        case ColumnType::Ole:
            return FieldType::LongBinary;
        case ColumnType::Memo:
            return FieldType::Memo;
        case ColumnType::Guid:
            return FieldType::Guid;
        case ColumnType::Numeric:
            return FieldType::Decimal;
    }
    return FieldType::Binary;  // types of newer engines: their bytes at least
}

Field MakeField(const Column& column, const Layout& layout) {
    Field field;
    field.Name = column.name;
    field.Type = FieldTypeOf(column);
    field.Size = column.length;
    if (column.type == ColumnType::Text) field.Size = static_cast<int>(column.length / layout.textUnit);
    if (column.IsLong()) field.Size = 0;
    field.AutoNumber = column.IsAutoNumber() || column.IsAutoGuid();
    if (column.type == ColumnType::Numeric) {
        field.Precision = column.precision;
        field.Scale = column.scale;
    }
    return field;
}

IndexDef MakeIndexDef(const NamedIndex& index, const TableDefinition& table) {
    const Tree& tree = table.trees[index.tree];
    IndexDef definition;
    definition.Name = index.name;
    definition.Primary = index.kind == NamedIndex::Kind::Primary;
    definition.Foreign = index.kind == NamedIndex::Kind::Foreign;
    definition.Unique = tree.IsUnique() || definition.Primary;
    definition.IgnoreNulls = tree.IgnoresNulls();
    definition.Required = tree.IsRequired();
    for (const Tree::Part& part : tree.parts) {
        const int position = table.FindNumber(part.column);
        if (position < 0)
            Damaged("an index of the table definition on page " + std::to_string(table.page) +
                    " is over a column that doesn't exist");
        definition.Columns.push_back({table.columns[static_cast<std::size_t>(position)].name, part.descending});
    }
    return definition;
}

}  // namespace

TableDef MakeTableDef(const std::string& name, const TableDefinition& table,
                      const std::vector<ColumnProperties>& properties, const Layout& layout) {
    TableDef definition;
    definition.Name = name;
    for (const Column& column : table.columns) definition.Fields.push_back(MakeField(column, layout));
    for (const ColumnProperties& column : properties) {
        const int position = column.required ? table.FindName(column.column) : -1;
        if (position >= 0) definition.Fields[static_cast<std::size_t>(position)].Required = true;
    }
    for (const NamedIndex& index : table.indexes) definition.Indexes.push_back(MakeIndexDef(index, table));
    return definition;
}

JetTable::JetTable(TableHost& host, const TableDef& definition, TableDefinition table)
    : host_(host),
      definition_(definition),
      table_(std::move(table)),
      form_(table_, host.Pages().Form(), host.Pages().FileHeader().codePage),
      treeChanges_(table_.trees.size()),
      room_(host.Pages(), host.Allocator(), table_.page, table_.ownedMap, table_.freeMap),
      longValues_(table_.columns.size()) {
    for (const Tree& tree : table_.trees) keys_.emplace_back(table_, tree, host.Pages().FileHeader());
}

std::unique_ptr<data::TableScan> JetTable::Scan() const {
    return std::make_unique<RowScan>(host_.Pages(), table_, form_);
}

std::unique_ptr<data::RowReader> JetTable::Reader() const {
    return std::make_unique<RowFetch>(host_.Pages(), table_, form_);
}

}  // namespace quillform::jet
