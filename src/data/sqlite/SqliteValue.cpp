#include "data/sqlite/SqliteValue.h"

#include <cmath>
#include <cstdio>
#include <optional>

#include "data/columns/Column.h"
#include "platform/Dates.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform::sqlite {
namespace {

constexpr double julianOfDayZero = 2415018.5;  // 1899-12-30
constexpr double julianLeast = 1721425;        // year 1
constexpr double julianMost = 5373484;         // year 9999
constexpr double unixOfDayZero = 25569;        // 1970-01-01 as a serial

std::optional<int> Digits(std::string_view text, std::size_t at, std::size_t count) {
    if (text.size() < at + count) return {};
    int number = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < '0' || text[i] > '9') return {};
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

/// Serial of a time of day counted forward from a day, which for days before day zero isn't their sum.
double WithTime(double day, double fraction) { return day < 0 ? day - fraction : day + fraction; }

/// "2024-05-31", with " 10:30", "T10:30:15.250" behind; a zone "Z" counts for nothing.
std::optional<double> IsoDate(std::string_view text) {
    const auto year = Digits(text, 0, 4);
    const auto month = Digits(text, 5, 2);
    const auto day = Digits(text, 8, 2);
    if (!year || !month || !day || text[4] != '-' || text[7] != '-' || *year < 100) return {};
    if (*month < 1 || *month > 12 || *day < 1 || *day > 31) return {};
    const double serial = DateSerial(*year, *month, *day);
    if (text.size() == 10) return serial;
    const auto hour = Digits(text, 11, 2);
    const auto minute = Digits(text, 14, 2);
    if ((text[10] != ' ' && text[10] != 'T') || !hour || !minute || text[13] != ':') return {};
    double seconds = 0;
    std::size_t at = 16;
    if (text.size() > at && text[at] == ':') {
        const auto second = Digits(text, 17, 2);
        if (!second) return {};
        seconds = *second;
        at = 19;
        if (text.size() > at && text[at] == '.') {
            double scale = 0.1;
            for (++at; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at, scale /= 10)
                seconds += (text[at] - '0') * scale;
        }
    }
    if (at != text.size() && text.substr(at) != "Z") return {};
    return WithTime(serial, (*hour * 3600 + *minute * 60 + seconds) / 86400);
}

double SerialOfDays(double days) {
    const double day = std::floor(days);
    return WithTime(day, days - day);
}

double SerialOfNumber(double number, bool isWhole) {
    if (isWhole && std::abs(number) > 1e11) return SerialOfDays(number / 86400000 + unixOfDayZero);
    if (isWhole && std::abs(number) > julianMost) return SerialOfDays(number / 86400 + unixOfDayZero);
    if (number >= julianLeast && number <= julianMost) return SerialOfDays(number - julianOfDayZero);
    return number;
}

bool IsText(int type) { return type == SQLITE_TEXT || type == SQLITE_BLOB; }

}  // namespace

ValueView ValueReader::Read(const Statement& statement, int place, const Field& field) const {
    if (statement.IsNull(place)) return {};
    const ValueKind kind = data::KindOf(field.Type);
    switch (kind) {
        case ValueKind::Boolean:
            return ReadBoolean(statement, place);
        case ValueKind::Integer:
        case ValueKind::Currency:
        case ValueKind::Single:
        case ValueKind::Double:
            return ReadNumber(statement, place, kind);
        case ValueKind::Date:
            return ReadDate(statement, place);
        case ValueKind::Decimal:
            return ReadDecimal(statement, place, field);
        case ValueKind::Null:
        case ValueKind::Text:
        case ValueKind::Guid:
            return {kind, 0, 0, statement.Text(place)};
        case ValueKind::Binary:
            return {kind, 0, 0, statement.Bytes(place)};
    }
    return {};
}

ValueView ValueReader::ReadBoolean(const Statement& statement, int place) const {
    if (!IsText(statement.Type(place))) return {ValueKind::Boolean, statement.Real(place) != 0 ? 1 : 0, 0, {}};
    const std::string_view text = statement.Text(place);
    for (const std::string_view word : {"true", "t", "yes", "y", "on", "1", "-1"})
        if (EqualCaseBlind(text, word)) return {ValueKind::Boolean, 1, 0, {}};
    for (const std::string_view word : {"false", "f", "no", "n", "off", "0"})
        if (EqualCaseBlind(text, word)) return {ValueKind::Boolean, 0, 0, {}};
    return {};
}

ValueView ValueReader::ReadNumber(const Statement& statement, int place, ValueKind kind) const {
    const int type = statement.Type(place);
    if (type == SQLITE_INTEGER && kind == ValueKind::Integer) return {kind, statement.Whole(place), 0, {}};
    double number = 0;
    if (IsText(type)) {
        const auto parsed = ParseNumber(statement.Text(place));
        if (!parsed) return {};
        number = *parsed;
    } else {
        number = statement.Real(place);
    }
    const bool fits = std::abs(number) < 9.2e14;
    if (kind == ValueKind::Integer) return fits ? ValueView{kind, std::llround(number), 0, {}} : ValueView{};
    if (kind == ValueKind::Currency) return fits ? ValueView{kind, std::llround(number * 10000), 0, {}} : ValueView{};
    return {kind, 0, number, {}};
}

ValueView ValueReader::ReadDate(const Statement& statement, int place) const {
    const int type = statement.Type(place);
    double serial = 0;
    if (IsText(type)) {
        const std::string_view text = statement.Text(place);
        auto parsed = IsoDate(text);
        if (!parsed) parsed = ParseDate(text, PartsOf(clock_.Now()).year);
        if (!parsed) return {};
        serial = *parsed;
    } else {
        serial = SerialOfNumber(statement.Real(place), type == SQLITE_INTEGER);
    }
    if (!(serial >= -657434 && serial < 2958466)) return {};
    return {ValueKind::Date, 0, serial, {}};
}

ValueView ValueReader::ReadDecimal(const Statement& statement, int place, const Field& field) const {
    const int type = statement.Type(place);
    if (IsText(type)) {
        if (!ParseNumber(statement.Text(place))) return {};
        return {ValueKind::Decimal, 0, 0, statement.Text(place)};
    }
    std::string& digits = digits_[place];
    digits.resize(400);
    const int size = std::snprintf(digits.data(), digits.size(), "%.*f", field.Scale, statement.Real(place));
    digits.resize(static_cast<std::size_t>(size));
    return {ValueKind::Decimal, 0, 0, digits};
}

void BindValue(Statement& statement, int parameter, const Value& value) {
    if (value.Kind() != ValueKind::Date) return statement.Bind(parameter, value);
    const DateParts parts = PartsOf(value.View().real);
    char text[64];
    const int size = std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", parts.year, parts.month,
                                   parts.day, parts.hour, parts.minute, parts.second);
    statement.Bind(parameter, {ValueKind::Text, 0, 0, std::string_view(text, static_cast<std::size_t>(size))});
}

}  // namespace quillform::sqlite
