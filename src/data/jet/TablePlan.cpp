#include <algorithm>

#include "data/collation/TextOrder.h"
#include "data/jet/DefinitionWriter.h"
#include "data/jet/RowForm.h"
#include "data/jet/TextCodec.h"
#include "platform/Text.h"

namespace quillform::jet {

namespace {

constexpr std::size_t mostColumns = 255, mostTrees = 32, mostParts = 10, longestName = 64;
constexpr int longestText = 255, longestBinary = 255;
constexpr std::uint16_t generalOrder = 0x0409;

[[noreturn]] void Refuse(const std::string& why, ErrorNumber number = ErrorNumber::InvalidArgument) {
    throw RunTimeError(number, why);
}

void CheckName(const std::string& name, const char* what) {
    const std::string quoted = std::string(what) + " name \"" + name + "\"";
    const auto refuse = [&quoted](const char* why) { Refuse("The " + quoted + why, ErrorNumber::InvalidName); };
    if (name.empty() || CountUtf16Units(name) > longestName) refuse(" must have 1 to 64 characters.");
    if (name.front() == ' ') refuse(" begins with a blank.");
    for (const char letter : name)
        if (static_cast<unsigned char>(letter) < ' ' ||
            std::string_view(".!`[]").find(letter) != std::string_view::npos)
            refuse(" holds a character that isn't allowed in names.");
}

ColumnType ColumnTypeOf(const Field& field, Format format) {
    switch (field.Type) {
        case FieldType::Boolean:
            return ColumnType::Boolean;
        case FieldType::Byte:
            return ColumnType::Byte;
        case FieldType::Integer:
            return ColumnType::Integer;
        case FieldType::Long:
            return ColumnType::Long;
        case FieldType::Currency:
            return ColumnType::Money;
        case FieldType::Single:
            return ColumnType::Single;
        case FieldType::Double:
            return ColumnType::Double;
        case FieldType::Date:
            return ColumnType::DateTime;
        case FieldType::Binary:
            return ColumnType::Binary;
        case FieldType::Text:
            return ColumnType::Text;
        case FieldType::LongBinary:
            return ColumnType::Ole;
        case FieldType::Memo:
            return ColumnType::Memo;
        case FieldType::Guid:
            return ColumnType::Guid;
        case FieldType::Decimal:
            if (format == Format::Jet4) return ColumnType::Numeric;
            throw RunTimeError(
                ErrorNumber::NotSupported,
                "The column \"" + field.Name + "\" is a Decimal, which databases of Access 97 don't have.");
    }
    Refuse("The column \"" + field.Name + "\" has an unknown type.");
}

std::uint16_t LengthOf(const Field& field, const Column& column, const Layout& form) {
    if (column.IsLong()) return 0;
    if (column.type == ColumnType::Boolean) return 1;
    if (column.type != ColumnType::Text && column.type != ColumnType::Binary)
        return static_cast<std::uint16_t>(FixedBytes(column));
    const int most = column.type == ColumnType::Text ? longestText : longestBinary;
    const int size = field.Size > 0 ? field.Size : most;
    if (size > most)
        Refuse("The column \"" + field.Name + "\" is longer than " + std::to_string(most) + "; a Memo can be.");
    return static_cast<std::uint16_t>(static_cast<std::size_t>(size) *
                                      (column.type == ColumnType::Text ? form.textUnit : 1));
}

bool IsVariableType(ColumnType type) {
    return type == ColumnType::Text || type == ColumnType::Binary || type == ColumnType::Memo ||
           type == ColumnType::Ole;
}

Column PlanColumn(const Field& field, const Header& header, const Layout& form) {
    CheckName(field.Name, "column");
    Column column;
    column.name = field.Name;
    column.type = ColumnTypeOf(field, header.format);
    column.length = LengthOf(field, column, form);
    column.flags = Column::updatableFlag;
    if (!IsVariableType(column.type)) column.flags |= Column::fixedFlag;
    if (field.AutoNumber) {
        if (column.type != ColumnType::Long && column.type != ColumnType::Guid)
            Refuse("The column \"" + field.Name + "\" counts up by itself and must be a Long for that.");
        column.flags |= column.type == ColumnType::Long ? Column::autoNumberFlag : Column::autoGuidFlag;
    }
    if (column.type == ColumnType::Numeric) {
        constexpr int usualPrecision = 18, mostPrecision = 28;
        const int precision = field.Precision > 0 ? field.Precision : usualPrecision;
        if (precision > mostPrecision || field.Scale < 0 || field.Scale > precision)
            Refuse("The column \"" + field.Name +
                   "\" can have 28 digits at most, and no more behind the point than in all.");
        column.precision = static_cast<std::uint8_t>(precision);
        column.scale = static_cast<std::uint8_t>(field.Scale);
    }
    const bool isText = column.type == ColumnType::Text || column.type == ColumnType::Memo;
    if (isText && header.format == Format::Jet4) column.extendedFlags = Column::compressFlag;
    column.sortOrder = header.sortOrder;
    column.sortVersion = header.sortVersion;
    column.codePage = static_cast<std::uint16_t>(header.codePage);
    return column;
}

/// Numbers the columns and gives each its place in the row: the variable ones first texts, then long values.
void PlaceColumns(TableDefinition& table) {
    std::uint16_t number = 0, fixedEnd = 0, variables = 0;
    for (const bool wantLong : {false, true})
        for (Column& column : table.columns)
            if (!column.IsFixed() && column.IsLong() == wantLong) column.variable = variables++;
    std::uint16_t before = 0;
    for (Column& column : table.columns) {
        column.number = column.ordinal = number++;
        if (!column.IsFixed()) {
            ++before;
            continue;
        }
        column.variable = before;
        if (column.type == ColumnType::Boolean) continue;
        column.fixedOffset = fixedEnd;
        fixedEnd = static_cast<std::uint16_t>(fixedEnd + FixedBytes(column));
    }
    table.maxColumns = number;
    table.variableSlots = variables;
}

Tree PlanTree(const IndexDef& index, const TableDefinition& table, const Header& header) {
    Tree tree;
    if (index.Columns.empty() || index.Columns.size() > mostParts)
        Refuse("The index \"" + index.Name + "\" must have 1 to 10 columns.");
    for (const IndexDef::Column& part : index.Columns) {
        const auto found = std::find_if(table.columns.begin(), table.columns.end(), [&part](const Column& column) {
            return EqualCaseBlind(column.name, part.Name);
        });
        if (found == table.columns.end())
            throw RunTimeError(ErrorNumber::ItemNotFound,
                               "The index \"" + index.Name + "\" is over \"" + part.Name + "\", which is no column.");
        const bool isText = found->type == ColumnType::Text || found->type == ColumnType::Memo;
        if (found->type == ColumnType::Ole || (found->type == ColumnType::Memo && header.format == Format::Jet3))
            throw RunTimeError(ErrorNumber::NotSupported,
                               "The column \"" + found->name + "\" can't be part of an index for its type.");
        if (isText && (header.sortOrder != generalOrder || header.sortVersion != 0))
            throw RunTimeError(ErrorNumber::NotSupported,
                               "The column \"" + found->name +
                                   "\" can't be part of an index: the sort order of this database isn't known here.");
        tree.parts.push_back({found->number, part.Descending});
    }
    if (index.Unique || index.Primary) tree.flags |= Tree::uniqueFlag;
    if (index.Required || index.Primary) tree.flags |= Tree::requiredFlag;
    if (index.IgnoreNulls && !index.Primary) tree.flags |= Tree::ignoreNullsFlag;
    if (header.format == Format::Jet4) tree.flags |= Tree::jet4Flag;
    return tree;
}

void PlanIndexes(const TableDef& table, const Header& header, TableDefinition& plan) {
    for (const IndexDef& index : table.Indexes) {
        // The hidden side of a relation; without the relation it has no meaning.
        if (index.Foreign && index.Name.starts_with(".")) continue;
        NamedIndex named;
        named.name = index.Name.empty() && index.Primary ? "PrimaryKey" : index.Name;
        CheckName(named.name, "index");
        named.number = named.tree = static_cast<std::uint32_t>(plan.trees.size());
        if (index.Primary) named.kind = NamedIndex::Kind::Primary;
        plan.trees.push_back(PlanTree(index, plan, header));
        plan.indexes.push_back(std::move(named));
    }
    if (plan.trees.size() > mostTrees) Refuse("A table can have 32 indexes at most.");
    std::sort(plan.indexes.begin(), plan.indexes.end(), [](const NamedIndex& left, const NamedIndex& right) {
        return UpperCase(left.name) < UpperCase(right.name);
    });
    for (std::size_t i = 1; i < plan.indexes.size(); ++i)
        if (EqualCaseBlind(plan.indexes[i - 1].name, plan.indexes[i].name))
            Refuse("Two indexes of the table are called \"" + plan.indexes[i].name + "\".");
    if (std::count_if(table.Indexes.begin(), table.Indexes.end(), [](const IndexDef& index) { return index.Primary; }) >
        1)
        Refuse("A table can have only one primary key.");
}

}  // namespace

TableDefinition PlanTable(const TableDef& table, const Header& header) {
    const Layout& form = LayoutOf(header.format);
    CheckName(table.Name, "table");
    if (table.Fields.empty())
        Refuse("The table \"" + table.Name + "\" must have a column.", ErrorNumber::NoFieldDefined);
    if (table.Fields.size() > mostColumns)
        Refuse("The table \"" + table.Name + "\" can have 255 columns at most.", ErrorNumber::TooManyFields);
    TableDefinition plan;
    for (std::size_t i = 0; i < table.Fields.size(); ++i) {
        plan.columns.push_back(PlanColumn(table.Fields[i], header, form));
        if (table.FindField(table.Fields[i].Name) != static_cast<int>(i))
            Refuse("Two columns of the table are called \"" + table.Fields[i].Name + "\".",
                   ErrorNumber::FieldDefinedTwice);
    }
    PlaceColumns(plan);
    std::size_t fixedBytes = 0;
    for (const Column& column : plan.columns) fixedBytes += column.IsFixed() ? FixedBytes(column) : form.countWidth;
    if (fixedBytes + plan.maxColumns / 8 + 16 > form.maxRow)
        Refuse("The columns of the table \"" + table.Name + "\" take more room than a row has.");
    PlanIndexes(table, header, plan);
    return plan;
}

}  // namespace quillform::jet
