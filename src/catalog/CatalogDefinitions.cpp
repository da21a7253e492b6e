#include "catalog/CatalogDefinitions.h"

#include <span>
#include <string>

#include "catalog/CatalogTables.h"

namespace quillform {

namespace {

struct Column {
    std::string_view name;
    FieldType type;
    int size;
};

constexpr Column indexColumns[] = {
    {"ID", FieldType::Integer, 2},           {"Database", FieldType::Text, 255},
    {"Field", FieldType::Text, 50},          {"Table", FieldType::Text, 50},
    {"Text", FieldType::Text, 50},           {"Default Length", FieldType::Integer, 2},
    {"Mask", FieldType::Text, 50},           {"Numeric", FieldType::Boolean, 1},
    {"Is Text Date", FieldType::Boolean, 1}, {"Formula Flag", FieldType::Boolean, 1},
    {"Alias Name", FieldType::Text, 50},     {"Function Code", FieldType::Integer, 2},
    {"Parameter 1", FieldType::Text, 50},    {"Parameter 2", FieldType::Text, 50},
    {"Parameter 3", FieldType::Text, 50},
};

constexpr Column relationColumns[] = {
    {"Database1", FieldType::Text, 120}, {"Database2", FieldType::Text, 120}, {"Table1", FieldType::Text, 50},
    {"Table2", FieldType::Text, 50},     {"Field1", FieldType::Text, 50},     {"Field2", FieldType::Text, 50},
};

// The numbers of a label sheet are given no size of their own: a number's size follows from its type.
constexpr Column labelColumns[] = {
    {"Label Description", FieldType::Text, 50},
    {"Left Margin", FieldType::Single, 4},
    {"Top Margin", FieldType::Single, 4},
    {"Height", FieldType::Single, 4},
    {"Width", FieldType::Single, 4},
    {"Across", FieldType::Single, 4},
    {"Down", FieldType::Single, 4},
    {"Horizontal Gap", FieldType::Single, 4},
    {"Vertical Gap", FieldType::Single, 4},
    {"Paper Size", FieldType::Integer, 2},
};

TableDef TableOf(std::string_view name, std::span<const Column> columns) {
    TableDef table;
    table.Name = name;
    for (const Column& column : columns) {
        Field field;
        field.Name = column.name;
        field.Type = column.type;
        field.Size = column.size;
        table.Fields.push_back(std::move(field));
    }
    return table;
}

}  // namespace

TableDef IndexTableDef() { return TableOf(catalogIndexTable, indexColumns); }
TableDef RelationTableDef() { return TableOf(catalogRelationTable, relationColumns); }
TableDef LabelsTableDef() { return TableOf(catalogLabelsTable, labelColumns); }

bool IsCatalogTable(std::string_view name) {
    return name == catalogIndexTable || name == catalogRelationTable || name == catalogLabelsTable;
}

bool IsOfferedTable(std::string_view name) { return !name.starts_with("MSys") && !IsCatalogTable(name); }

}  // namespace quillform
