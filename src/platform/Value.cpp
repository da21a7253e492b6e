#include "platform/Value.h"

#include "platform/CodePage.h"
#include "platform/Dates.h"
#include "platform/Numbers.h"

namespace quillform {

void AppendGeneralText(const ValueView& value, std::string& out) {
    switch (value.kind) {
        case ValueKind::Null:
            return;
        case ValueKind::Boolean:
            out += value.integer != 0 ? "True" : "False";
            return;
        case ValueKind::Integer:
            AppendGeneralInteger(value.integer, out);
            return;
        case ValueKind::Currency:
            AppendGeneralCurrency(value.integer, out);
            return;
        case ValueKind::Single:
            AppendGeneralNumber(static_cast<float>(value.real), out);
            return;
        case ValueKind::Double:
            AppendGeneralNumber(value.real, out);
            return;
        case ValueKind::Date:
            AppendGeneralDate(value.real, out);
            return;
        case ValueKind::Decimal:
        case ValueKind::Text:
        case ValueKind::Guid:
            out += value.text;
            return;
        case ValueKind::Binary:
            out += Utf8FromCp1252(value.text);
            return;
    }
}

std::string GeneralText(const ValueView& value) {
    std::string text;
    AppendGeneralText(value, text);
    return text;
}

double NumberOf(const ValueView& value) {
    switch (value.kind) {
        case ValueKind::Boolean:
            return value.integer != 0 ? -1 : 0;
        case ValueKind::Integer:
            return static_cast<double>(value.integer);
        case ValueKind::Currency:
            return static_cast<double>(value.integer) / 10000;
        case ValueKind::Single:
        case ValueKind::Double:
        case ValueKind::Date:
            return value.real;
        case ValueKind::Decimal:
        case ValueKind::Text:
            return ParseNumber(value.text).value_or(0);
        case ValueKind::Null:
        case ValueKind::Binary:
        case ValueKind::Guid:
            return 0;
    }
    return 0;
}

}  // namespace quillform
