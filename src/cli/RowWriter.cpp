#include "cli/RowWriter.h"

#include <array>
#include <charconv>

#include "platform/DateRange.h"
#include "platform/Dates.h"
#include "platform/Text.h"

namespace quillform::cli {

namespace {

constexpr std::size_t flushSize = 1 << 16;
constexpr std::string_view hexDigits = "0123456789abcdef";

template <typename Number>
void AppendNumber(Number number, std::string& out) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out.append(digits.data(), end);
}

/// `number` has at most `digits` digits and no sign.
void AppendPadded(int number, int digits, std::string& out) {
    out.append(static_cast<std::size_t>(digits), '0');
    for (std::size_t at = out.size(); number > 0; number /= 10) out[--at] = static_cast<char>('0' + number % 10);
}

void AppendDate(double serial, std::string& out) {
    if (!IsDateSerial(serial)) return AppendNumber(serial, out);  // a damaged or foreign record must not end an export
    const DateParts parts = PartsOf(serial);
    const bool hasTime = parts.hour != 0 || parts.minute != 0 || parts.second != 0;
    const bool hasDay = DatePartOf(serial) != 0 || !hasTime;
    if (hasDay) {
        AppendPadded(parts.year, 4, out);
        out += '-';
        AppendPadded(parts.month, 2, out);
        out += '-';
        AppendPadded(parts.day, 2, out);
        if (hasTime) out += ' ';
    }
    if (!hasTime) return;
    AppendPadded(parts.hour, 2, out);
    out += ':';
    AppendPadded(parts.minute, 2, out);
    out += ':';
    AppendPadded(parts.second, 2, out);
}

/// Looks at every character without a way out in the middle, so that many are compared at once.
bool NeedsQuotes(std::string_view text) {
    bool isNeeded = false;
    for (const char c : text) isNeeded |= (c == '"') | (c == ',') | (c == '\r') | (c == '\n');
    return isNeeded;
}

/// Copies the character at `at` and moves `at` to its last byte. JSON takes UTF-8 only, and names of files may be any
/// bytes: one that is none becomes the replacement character.
void AppendBeyondAscii(std::string_view text, std::size_t& at, std::string& out) {
    std::size_t end = at;
    NextCodePoint(text, end);
    if (end - at == 1)
        out += "\xEF\xBF\xBD";
    else
        out += text.substr(at, end - at);
    at = end - 1;
}

/// The text is behind `start` in `out` already; quotes it where it needs to be.
void QuoteField(std::size_t start, std::string& out) {
    if (!NeedsQuotes(std::string_view(out).substr(start))) return;
    std::string quoted = "\"";
    for (std::size_t i = start; i < out.size(); ++i) {
        if (out[i] == '"') quoted += '"';
        quoted += out[i];
    }
    quoted += '"';
    out.replace(start, std::string::npos, quoted);
}

void AppendCsvField(const ValueView& value, std::string& out) {
    if (value.kind == ValueKind::Text && value.text.empty()) {
        out += "\"\"";
        return;
    }
    const std::size_t start = out.size();
    AppendMachineText(value, out);
    if (value.kind == ValueKind::Text) QuoteField(start, out);
}

void WriteCsvHeader(const std::vector<Field>& fields, std::string& out) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) out += ',';
        const std::size_t start = out.size();
        out += fields[i].Name;
        QuoteField(start, out);
    }
    out += "\r\n";
}

void AppendCsvRow(const Recordset& records, int columns, std::string& out) {
    for (int i = 0; i < columns; ++i) {
        if (i > 0) out += ',';
        AppendCsvField(records.Value(i), out);
    }
    out += "\r\n";
}

void AppendJsonRow(const Recordset& records, bool isFirst, std::string& out) {
    out += isFirst ? "\n{" : ",\n{";
    const std::vector<Field>& fields = records.Fields();
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0) out += ", ";
        AppendJsonText(fields[i].Name, out);
        out += ": ";
        AppendJson(records.Value(static_cast<int>(i)), out);
    }
    out += '}';
}

}  // namespace

void AppendMachineText(const ValueView& value, std::string& out) {
    switch (value.kind) {
        case ValueKind::Single:
            AppendNumber(static_cast<float>(value.real), out);
            return;
        case ValueKind::Double:
            AppendNumber(value.real, out);
            return;
        case ValueKind::Date:
            AppendDate(value.real, out);
            return;
        case ValueKind::Binary:
            for (const char c : value.text) {
                const auto byte = static_cast<unsigned char>(c);
                out += hexDigits[byte >> 4];
                out += hexDigits[byte & 15];
            }
            return;
        case ValueKind::Null:
        case ValueKind::Boolean:
        case ValueKind::Integer:
        case ValueKind::Currency:
        case ValueKind::Decimal:
        case ValueKind::Text:
        case ValueKind::Guid:
            AppendGeneralText(value, out);
            return;
    }
}

void AppendJsonText(std::string_view text, std::string& out) {
    out += '"';
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (byte >= 0x80) {
            AppendBeyondAscii(text, i, out);
        } else if (byte < 0x20) {
            out += "\\u00";
            out += hexDigits[byte >> 4];
            out += hexDigits[byte & 15];
        } else {
            out += c;
        }
    }
    out += '"';
}

void AppendJson(const ValueView& value, std::string& out) {
    switch (value.kind) {
        case ValueKind::Null:
            out += "null";
            return;
        case ValueKind::Boolean:
            out += value.integer ? "true" : "false";
            return;
        case ValueKind::Integer:
        case ValueKind::Currency:
            AppendMachineText(value, out);
            return;
        case ValueKind::Single:
        case ValueKind::Double:
            // JSON has no words for infinity and no-number.
            if (value.real - value.real == 0)
                AppendMachineText(value, out);
            else
                out += "null";
            return;
        case ValueKind::Date:
        case ValueKind::Decimal:
        case ValueKind::Text:
        case ValueKind::Binary:
        case ValueKind::Guid: {
            std::string text;
            AppendMachineText(value, text);
            AppendJsonText(text, out);
        }
    }
}

bool WriteRows(Recordset& records, RowFormat format, OutputFile& out, bool (*isStopped)()) {
    std::string buffer;
    const auto columns = static_cast<int>(records.Fields().size());
    if (format == RowFormat::Csv) WriteCsvHeader(records.Fields(), buffer);
    if (format == RowFormat::Json) buffer += '[';
    for (bool isFirst = true; !records.IsEOF(); records.MoveNext(), isFirst = false) {
        if (format == RowFormat::Json)
            AppendJsonRow(records, isFirst, buffer);
        else
            AppendCsvRow(records, columns, buffer);
        if (buffer.size() < flushSize) continue;
        if (isStopped()) return false;
        out.Write(buffer);
        buffer.clear();
    }
    if (format == RowFormat::Json) buffer += "\n]\n";
    out.Write(buffer);
    return true;
}

}  // namespace quillform::cli
