#include "data/sqlite/SqliteSchema.h"

#include <algorithm>
#include <cstdlib>
#include <map>

#include "platform/Text.h"

namespace quillform::sqlite {
namespace {

/// Numbers in the parentheses of a declared type, such as the 12 and 2 of DECIMAL(12,2).
struct DeclaredSize {
    int first = 0;
    int second = 0;
};

DeclaredSize SizeIn(const std::string& declared) {
    DeclaredSize size;
    const std::size_t open = declared.find('(');
    if (open == std::string::npos) return size;
    size.first = std::atoi(declared.c_str() + open + 1);
    const std::size_t comma = declared.find(',', open);
    if (comma != std::string::npos) size.second = std::atoi(declared.c_str() + comma + 1);
    return size;
}

int ByteSize(FieldType type) {
    switch (type) {
        case FieldType::Boolean:
        case FieldType::Byte:
            return 1;
        case FieldType::Integer:
            return 2;
        case FieldType::Long:
        case FieldType::Single:
            return 4;
        case FieldType::Currency:
        case FieldType::Double:
        case FieldType::Date:
            return 8;
        case FieldType::Guid:
            return 16;
        case FieldType::Decimal:
            return 17;
        case FieldType::Binary:
        case FieldType::Text:
        case FieldType::LongBinary:
        case FieldType::Memo:
            return 0;
    }
    return 0;
}

void SetTextType(Field& field, int size) {
    field.Type = size > 255 ? FieldType::Memo : FieldType::Text;
    field.Size = size > 255 ? 0 : size > 0 ? size : 255;
}

/// False where the declaration says nothing.
bool SetDeclaredType(Field& field, const std::string& declared) {
    const auto contains = [&](std::string_view part) { return declared.find(part) != std::string::npos; };
    const DeclaredSize size = SizeIn(declared);
    const auto is = [&](FieldType type) {
        field.Type = type;
        field.Size = ByteSize(type);
        return true;
    };
    if (contains("BOOL")) return is(FieldType::Boolean);
    if (contains("DATE") || contains("TIME")) return is(FieldType::Date);
    if (contains("CURRENCY") || contains("MONEY")) return is(FieldType::Currency);
    if (contains("BYTE") || contains("TINYINT")) return is(FieldType::Byte);
    if (contains("SMALLINT") || contains("INT2")) return is(FieldType::Integer);
    if (contains("INT")) return is(FieldType::Long);
    if (contains("GUID")) return is(FieldType::Guid);
    if (contains("LONGTEXT") || contains("CLOB") || contains("MEMO")) return is(FieldType::Memo);
    if (contains("CHAR") || contains("TEXT")) return SetTextType(field, size.first), true;
    if (contains("SINGLE")) return is(FieldType::Single);
    if (contains("DECIMAL") && size.first > 0) {
        field.Precision = std::min(size.first, 28);
        field.Scale = std::clamp(size.second, 0, field.Precision);
        return is(FieldType::Decimal);
    }
    if (contains("REAL") || contains("FLOA") || contains("DOUB") || contains("NUM") || contains("DEC"))
        return is(FieldType::Double);
    if (contains("BLOB") || contains("BINARY")) {
        is(size.first > 0 && size.first <= 510 ? FieldType::Binary : FieldType::LongBinary);
        if (field.Type == FieldType::Binary) field.Size = size.first;
        return true;
    }
    return false;
}

/// Type of a column without a declared one, by its first value.
void SetTypeByValue(Connection& connection, const std::string& table, Field& field) {
    const std::string column = Quoted(field.Name);
    Statement first(connection, "SELECT typeof(" + column + ") FROM " + Quoted(table) + " WHERE " + column +
                                    " IS NOT NULL LIMIT 1");
    const std::string type = first.Step() ? std::string(first.Text(0)) : "text";
    if (type == "integer")
        SetDeclaredType(field, "INT");
    else if (type == "real")
        SetDeclaredType(field, "REAL");
    else if (type == "blob")
        SetDeclaredType(field, "BLOB");
    else
        SetTextType(field, 0);
}

void ReadIndexes(Connection& connection, TableDef& table) {
    Statement list(connection, "PRAGMA index_list(" + Quoted(table.Name) + ')');
    while (list.Step()) {
        const std::string stored(list.Text(1));
        if (list.Text(3) == "pk") continue;  // read with the columns
        IndexDef index;
        const std::string prefix = table.Name + '.';
        index.Name = stored.starts_with(prefix) ? stored.substr(prefix.size()) : stored;
        index.Unique = list.Whole(2) != 0;
        Statement columns(connection, "PRAGMA index_xinfo(" + Quoted(stored) + ')');
        bool isPlain = true;
        while (columns.Step()) {
            if (columns.Whole(5) == 0) continue;  // the row id behind the key
            isPlain = isPlain && !columns.IsNull(2);
            index.Columns.push_back({std::string(columns.Text(2)), columns.Whole(3) != 0});
        }
        if (isPlain) table.Indexes.push_back(std::move(index));
    }
}

SchemaTable ReadTable(Connection& connection, const std::string& name, bool withoutRowId) {
    SchemaTable table;
    table.definition.Name = name;
    table.definition.IsSystem = name.starts_with("sqlite_");
    std::map<std::int64_t, std::string> keyColumns;
    std::size_t wholeKey = 0;
    Statement columns(connection, "PRAGMA table_info(" + Quoted(name) + ')');
    while (columns.Step()) {
        Field field;
        field.Name = columns.Text(1);
        const std::string declared = UpperCase(columns.Text(2));
        if (!SetDeclaredType(field, declared)) SetTypeByValue(connection, name, field);
        field.Required = columns.Whole(3) != 0;
        if (columns.Whole(5) > 0) keyColumns[columns.Whole(5)] = field.Name;
        if (columns.Whole(5) > 0 && declared == "INTEGER") wholeKey = table.definition.Fields.size() + 1;
        table.definition.Fields.push_back(std::move(field));
    }
    table.isRowId.assign(table.definition.Fields.size(), false);
    if (!withoutRowId && keyColumns.size() == 1 && wholeKey > 0) {
        table.isRowId[wholeKey - 1] = true;
        table.definition.Fields[wholeKey - 1].AutoNumber = true;
    }
    if (!keyColumns.empty()) {
        IndexDef key{"PrimaryKey", {}, true, true, false, false, true};
        for (const auto& [place, column] : keyColumns) key.Columns.push_back({column, false});
        table.definition.Indexes.push_back(std::move(key));
    }
    ReadIndexes(connection, table.definition);
    if (withoutRowId) return table;
    for (const char* rowId : {"rowid", "_rowid_", "oid"})
        if (table.rowIdName.empty() && table.definition.FindField(rowId) < 0) table.rowIdName = rowId;
    return table;
}

std::string DeclaredType(const Field& field) {
    const auto sized = [&](const char* name) { return name + ('(' + std::to_string(field.Size) + ')'); };
    switch (field.Type) {
        case FieldType::Boolean:
            return "BOOLEAN";
        case FieldType::Byte:
            return "BYTE";
        case FieldType::Integer:
            return "SMALLINT";
        case FieldType::Long:
            return "INTEGER";
        case FieldType::Currency:
            return "CURRENCY";
        case FieldType::Single:
            return "SINGLE";
        case FieldType::Double:
            return "DOUBLE";
        case FieldType::Date:
            return "DATETIME";
        case FieldType::Binary:
            return sized("BLOB");
        case FieldType::Text:
            return sized("VARCHAR");
        case FieldType::LongBinary:
            return "BLOB";
        case FieldType::Memo:
            return "LONGTEXT";
        case FieldType::Guid:
            return "GUID TEXT";
        case FieldType::Decimal:
            return "DECIMAL(" + std::to_string(field.Precision) + ',' + std::to_string(field.Scale) + ')';
    }
    return "TEXT";
}

std::string ColumnList(const IndexDef& index) {
    std::string list;
    for (const IndexDef::Column& column : index.Columns) {
        if (!list.empty()) list += ", ";
        list += Quoted(column.Name) + (column.Descending ? " DESC" : "");
    }
    return '(' + list + ')';
}

}  // namespace

std::vector<SchemaTable> ReadSchema(Connection& connection) {
    std::vector<SchemaTable> tables;
    Statement list(connection,
                   "SELECT name, wr FROM pragma_table_list WHERE schema = 'main' AND type = 'table' AND name "
                   "NOT IN ('sqlite_schema', 'sqlite_temp_schema') ORDER BY name COLLATE NOCASE");
    while (list.Step()) tables.push_back(ReadTable(connection, std::string(list.Text(0)), list.Whole(1) != 0));
    return tables;
}

std::vector<Relation> ReadRelations(Connection& connection, const std::vector<SchemaTable>& tables) {
    std::vector<Relation> relations;
    for (const SchemaTable& table : tables) {
        std::int64_t previous = -1;
        Statement keys(connection, "PRAGMA foreign_key_list(" + Quoted(table.definition.Name) + ')');
        while (keys.Step()) {
            const std::string parent(keys.Text(2));
            const auto one = std::ranges::find_if(
                tables, [&](const SchemaTable& t) { return EqualCaseBlind(t.definition.Name, parent); });
            if (one == tables.end()) continue;
            if (keys.Whole(0) != previous)
                relations.push_back({one->definition.Name + table.definition.Name,
                                     one->definition.Name,
                                     table.definition.Name,
                                     {},
                                     {}});
            previous = keys.Whole(0);
            std::string to(keys.Text(4));
            const auto place = static_cast<std::size_t>(keys.Whole(1));
            if (to.empty())  // the parent's primary key, unnamed
                for (const IndexDef& index : one->definition.Indexes)
                    if (index.Primary && place < index.Columns.size()) to = index.Columns[place].Name;
            relations.back().Fields.push_back(to);
            relations.back().ForeignFields.emplace_back(keys.Text(3));
        }
    }
    return relations;
}

std::string CreateTableText(const TableDef& table) {
    std::string text = "CREATE TABLE " + Quoted(table.Name) + " (";
    std::string indexes;
    std::string autoNumber;
    for (const IndexDef& index : table.Indexes) {
        const int column = index.Columns.size() == 1 ? table.FindField(index.Columns[0].Name) : -1;
        if (index.Primary && column >= 0 && table.Fields[static_cast<std::size_t>(column)].AutoNumber)
            autoNumber = table.Fields[static_cast<std::size_t>(column)].Name;
    }
    for (const Field& field : table.Fields) {
        if (text.back() != '(') text += ", ";
        text += Quoted(field.Name) + ' ' + DeclaredType(field);
        if (field.Name == autoNumber) text += " PRIMARY KEY";
        if (field.Required) text += " NOT NULL";
        if (field.Type == FieldType::Text) text += " COLLATE NOCASE";
    }
    for (const IndexDef& index : table.Indexes) {
        if (index.Primary && autoNumber.empty())
            text += ", PRIMARY KEY " + ColumnList(index);
        else if (!index.Primary)
            indexes += std::string("CREATE ") + (index.Unique ? "UNIQUE " : "") + "INDEX " +
                       Quoted(table.Name + '.' + index.Name) + " ON " + Quoted(table.Name) + ' ' + ColumnList(index) +
                       ";";
    }
    return text + ");" + indexes;
}

}  // namespace quillform::sqlite
