#include "catalog/FieldRows.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "catalog/MaskDisplayLength.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr int booleanWidth = 5;  // "False"

CatalogRow PlainRow(std::string_view table, const Field& field, std::string text) {
    CatalogRow row;
    row.field = field.Name;
    row.table = table;
    row.text = std::move(text);
    row.mask = " ";
    row.aliasName = " ";
    row.parameter1 = " ";
    row.parameter2 = " ";
    return row;
}

CatalogRow MaskedRow(std::string_view table, const Field& field, std::string text, std::string_view mask) {
    CatalogRow row = PlainRow(table, field, std::move(text));
    row.defaultLength = MaskDisplayLength(mask);
    row.mask = mask;
    return row;
}

}  // namespace

FieldKind FieldKindOf(FieldType type) {
    switch (type) {
        case FieldType::Boolean:
            return FieldKind::Boolean;
        case FieldType::Date:
            return FieldKind::Date;
        case FieldType::Text:
            return FieldKind::Text;
        case FieldType::Byte:
        case FieldType::Integer:
        case FieldType::Long:
        case FieldType::Currency:
        case FieldType::Single:
        case FieldType::Double:
        case FieldType::Binary:
        case FieldType::LongBinary:
        case FieldType::Memo:
        case FieldType::Guid:
        case FieldType::Decimal:
            return FieldKind::Number;
    }
    return FieldKind::Number;
}

std::string_view ProposedNumberMask(FieldType type) {
    return type == FieldType::Single || type == FieldType::Double ? "###,###,##0.00" : "###,###,##0";
}

bool MayBeTextDate(const Field& field) {
    constexpr int longest = 14;
    return field.Type == FieldType::Text && field.Size <= longest;
}

std::size_t CharactersBehindDescription(const Field& field) {
    const std::string_view mask =
        *std::max_element(std::begin(proposedDateMasks), std::end(proposedDateMasks),
                          [](std::string_view left, std::string_view right) { return left.size() < right.size(); });
    if (field.Type == FieldType::Date) return DateRow({}, field, {}, mask).text.size();
    return MayBeTextDate(field) ? TextDateRow({}, field, {}, mask).text.size() : 0;
}

CatalogRow NumberRow(std::string_view table, const Field& field, std::string_view description, std::string_view mask) {
    CatalogRow row = MaskedRow(table, field, std::string(description), mask);
    row.numeric = true;
    return row;
}

CatalogRow TextRow(std::string_view table, const Field& field, std::string_view description, std::string_view mask) {
    CatalogRow row = PlainRow(table, field, std::string(description));
    row.defaultLength = field.Size;
    row.mask += mask;
    return row;
}

CatalogRow BooleanRow(std::string_view table, const Field& field, std::string_view description) {
    CatalogRow row = PlainRow(table, field, std::string(description));
    row.defaultLength = booleanWidth;
    return row;
}

CatalogRow DateRow(std::string_view table, const Field& field, std::string_view description, std::string_view mask) {
    return MaskedRow(table, field, std::string(Trim(description)) + " (" + std::string(Trim(mask)) + ")", mask);
}

CatalogRow TextDateRow(std::string_view table, const Field& field, std::string_view description,
                       std::string_view mask) {
    CatalogRow row = MaskedRow(table, field, std::string(description) + "(" + std::string(Trim(mask)) + ")", mask);
    row.isTextDate = true;
    return row;
}

CatalogRow FormulaRow(std::string_view table, const Field& field, std::string_view description,
                      const Formula& formula) {
    CatalogRow row = PlainRow(table, field, std::string(description));
    row.defaultLength = formula.defaultLength;
    row.mask = formula.mask;
    row.numeric = field.Type != FieldType::Text && field.Type != FieldType::Memo && field.Type != FieldType::Date;
    row.formulaFlag = true;
    row.aliasName = formula.alias;
    row.functionCode = static_cast<std::int32_t>(formula.code);
    row.parameter1 += formula.position;
    row.parameter2 += formula.length;
    return row;
}

}  // namespace quillform
