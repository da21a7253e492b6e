#include "model/DataAccess.h"

#include "platform/Text.h"

namespace quillform {

std::string_view FieldTypeName(FieldType type) {
    switch (type) {
        case FieldType::Boolean:
            return "Boolean";
        case FieldType::Byte:
            return "Byte";
        case FieldType::Integer:
            return "Integer";
        case FieldType::Long:
            return "Long";
        case FieldType::Currency:
            return "Currency";
        case FieldType::Single:
            return "Single";
        case FieldType::Double:
            return "Double";
        case FieldType::Date:
            return "Date";
        case FieldType::Binary:
            return "Binary";
        case FieldType::Text:
            return "Text";
        case FieldType::LongBinary:
            return "OLE object";
        case FieldType::Memo:
            return "Memo";
        case FieldType::Guid:
            return "GUID";
        case FieldType::Decimal:
            return "Decimal";
    }
    return "Unknown";
}

bool IsNumber(FieldType type) {
    switch (type) {
        case FieldType::Byte:
        case FieldType::Integer:
        case FieldType::Long:
        case FieldType::Currency:
        case FieldType::Single:
        case FieldType::Double:
        case FieldType::Decimal:
            return true;
        case FieldType::Boolean:
        case FieldType::Date:
        case FieldType::Binary:
        case FieldType::Text:
        case FieldType::LongBinary:
        case FieldType::Memo:
        case FieldType::Guid:
            return false;
    }
    return false;
}

int TableDef::FindField(std::string_view name) const {
    for (std::size_t i = 0; i < Fields.size(); ++i)
        if (EqualCaseBlind(Fields[i].Name, name)) return static_cast<int>(i);
    return -1;
}

ValueView Recordset::Value(std::string_view name) const {
    const int column = FindField(name);
    if (column < 0)
        throw RunTimeError(ErrorNumber::ItemNotFound, "The record set has no column \"" + std::string(name) + "\".");
    return Value(column);
}

std::string Recordset::Text(int column) const { return GeneralText(Value(column)); }

std::string Recordset::Text(std::string_view name) const { return GeneralText(Value(name)); }

void Recordset::SetValue(std::string_view name, const ValueView& value) {
    const int column = FindField(name);
    if (column < 0)
        throw RunTimeError(ErrorNumber::ItemNotFound, "The record set has no column \"" + std::string(name) + "\".");
    SetValue(column, value);
}

const TableDef* Database::FindTable(std::string_view name) const {
    for (const TableDef& table : TableDefs())
        if (table.Name == name) return &table;
    return nullptr;
}

}  // namespace quillform
