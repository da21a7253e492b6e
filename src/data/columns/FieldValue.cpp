#include "data/columns/FieldValue.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "platform/Dates.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform::data {
namespace {

[[noreturn]] void FailKind(const Field& field, const ValueView& value) {
    throw RunTimeError(ErrorNumber::DataTypeMismatch, "The value \"" + GeneralText(value) +
                                                          "\" can't be stored in field \"" + field.Name +
                                                          "\" of type " + std::string(FieldTypeName(field.Type)) + ".");
}

[[noreturn]] void FailRange(const Field& field, const ValueView& value) {
    throw RunTimeError(ErrorNumber::Overflow, "The number " + GeneralText(value) + " is out of the range of field \"" +
                                                  field.Name + "\" of type " + std::string(FieldTypeName(field.Type)) +
                                                  ".");
}

double NumberFor(const Field& field, const ValueView& value) {
    if (value.kind == ValueKind::Text) {
        const auto number = ParseNumber(value.text);
        if (!number) FailKind(field, value);
        return *number;
    }
    if (value.kind == ValueKind::Binary || value.kind == ValueKind::Guid) FailKind(field, value);
    return NumberOf(value);
}

Value WholeFor(const Field& field, const ValueView& value, std::int64_t least, std::int64_t most) {
    const bool isWhole = value.kind == ValueKind::Integer;
    const double number = isWhole ? 0 : RoundHalfEven(NumberFor(field, value));
    if (!isWhole && !(number >= -9.2e18 && number <= 9.2e18)) FailRange(field, value);
    const std::int64_t whole = isWhole ? value.integer : static_cast<std::int64_t>(number);
    if (whole < least || whole > most) FailRange(field, value);
    return Value::Integer(whole);
}

Value BooleanFor(const Field& field, const ValueView& value) {
    if (value.kind == ValueKind::Text) {
        const std::string_view text = Trim(value.text);
        for (const std::string_view word : {"True", "Yes", "On"})
            if (EqualCaseBlind(text, word)) return Value::Boolean(true);
        for (const std::string_view word : {"False", "No", "Off"})
            if (EqualCaseBlind(text, word)) return Value::Boolean(false);
    }
    return Value::Boolean(NumberFor(field, value) != 0);
}

Value CurrencyFor(const Field& field, const ValueView& value) {
    if (value.kind == ValueKind::Currency) return Value::Currency(value.integer);
    const double scaled = RoundHalfEven(NumberFor(field, value) * 10000);
    if (!(std::abs(scaled) < 9.2233720368547e18)) FailRange(field, value);
    return Value::Currency(static_cast<std::int64_t>(scaled));
}

Value DateFor(const Field& field, const ValueView& value, int currentYear) {
    double serial = 0;
    if (value.kind == ValueKind::Text) {
        const auto date = ParseDate(value.text, currentYear);
        if (!date) FailKind(field, value);
        serial = *date;
    } else {
        serial = NumberFor(field, value);
    }
    if (!(serial >= -657434 && serial < 2958466)) FailRange(field, value);
    return Value::Date(serial);
}

void CheckSize(const Field& field, std::size_t size) {
    if (field.Size > 0 && size > static_cast<std::size_t>(field.Size))
        throw RunTimeError(ErrorNumber::ValueTooLong,
                           "The field \"" + field.Name + "\" is too small for the value: it holds " +
                               std::to_string(field.Size) + ", the value has " + std::to_string(size) + ".");
}

Value TextFor(const Field& field, const ValueView& value) {
    std::string text = GeneralText(value);
    if (field.Type == FieldType::Text) CheckSize(field, CountCharacters(text));
    return Value::Text(std::move(text));
}

Value BinaryFor(const Field& field, const ValueView& value) {
    std::string bytes = value.kind == ValueKind::Binary ? std::string(value.text) : GeneralText(value);
    if (field.Type == FieldType::Binary) CheckSize(field, bytes.size());
    return Value::Binary(std::move(bytes));
}

Value GuidFor(const Field& field, const ValueView& value) {
    const std::string text = UpperCase(GeneralText(value));
    const std::string_view form = "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}";
    if (text.size() != form.size()) FailKind(field, value);
    for (std::size_t i = 0; i < form.size(); ++i) {
        const bool fits = form[i] == 'X' ? std::isxdigit(static_cast<unsigned char>(text[i])) != 0 : text[i] == form[i];
        if (!fits) FailKind(field, value);
    }
    return Value::Guid(text);
}

Value DecimalFor(const Field& field, const ValueView& value) {
    if (value.kind == ValueKind::Decimal) return Value::Decimal(std::string(value.text));
    const double number = NumberFor(field, value);
    if (!(std::abs(number) < std::pow(10.0, field.Precision > 0 ? field.Precision - field.Scale : 28)))
        FailRange(field, value);
    std::string digits(64, '\0');
    const int size = std::snprintf(digits.data(), digits.size(), "%.*f", field.Scale, number);
    digits.resize(static_cast<std::size_t>(size));
    return Value::Decimal(std::move(digits));
}

}  // namespace

Value ValueForField(const Field& field, const ValueView& value, int currentYear) {
    if (value.IsNull()) return {};
    using Limits16 = std::numeric_limits<std::int16_t>;
    using Limits32 = std::numeric_limits<std::int32_t>;
    switch (field.Type) {
        case FieldType::Boolean:
            return BooleanFor(field, value);
        case FieldType::Byte:
            return WholeFor(field, value, 0, 255);
        case FieldType::Integer:
            return WholeFor(field, value, Limits16::min(), Limits16::max());
        case FieldType::Long:
            return WholeFor(field, value, Limits32::min(), Limits32::max());
        case FieldType::Currency:
            return CurrencyFor(field, value);
        case FieldType::Single: {
            const double number = NumberFor(field, value);
            if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max())) FailRange(field, value);
            return Value::Single(static_cast<float>(number));
        }
        case FieldType::Double:
            return Value::Double(NumberFor(field, value));
        case FieldType::Date:
            return DateFor(field, value, currentYear);
        case FieldType::Text:
        case FieldType::Memo:
            return TextFor(field, value);
        case FieldType::Binary:
        case FieldType::LongBinary:
            return BinaryFor(field, value);
        case FieldType::Guid:
            return GuidFor(field, value);
        case FieldType::Decimal:
            return DecimalFor(field, value);
    }
    return {};
}

}  // namespace quillform::data
