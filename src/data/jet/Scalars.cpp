#include "data/jet/Scalars.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

#include "data/jet/RowForm.h"

namespace quillform::jet {

namespace {

__extension__ typedef unsigned __int128 Magnitude;  // 28 digits need 94 bits

constexpr std::size_t mostDigits = 39;  // of 128 bits

/// Four 32-bit words, the most significant first, each little-endian, behind a byte for the sign.
void DecodeNumeric(const std::uint8_t* bytes, std::size_t scale, std::string& out) {
    Magnitude magnitude = 0;
    for (int word = 0; word < 4; ++word) magnitude = magnitude << 32 | GetU32(bytes + 1 + 4 * word);
    scale = std::min(scale, mostDigits);
    out.clear();
    for (std::size_t digit = 0; magnitude != 0 || digit <= scale; ++digit) {
        if (digit == scale && scale > 0) out.push_back('.');
        out.push_back(static_cast<char>('0' + static_cast<int>(magnitude % 10)));
        magnitude /= 10;
    }
    if (bytes[0] & 0x80) out.push_back('-');
    std::reverse(out.begin(), out.end());
}

void AppendHex(std::string& out, std::uint64_t value, int digits) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) out.push_back("0123456789ABCDEF"[value >> shift & 15]);
}

void DecodeGuid(const std::uint8_t* bytes, std::string& out) {
    out.assign(1, '{');
    AppendHex(out, GetU32(bytes), 8);
    out.push_back('-');
    AppendHex(out, GetU16(bytes + 4), 4);
    out.push_back('-');
    AppendHex(out, GetU16(bytes + 6), 4);
    for (int i = 8; i < 16; ++i) {
        if (i == 8 || i == 10) out.push_back('-');
        AppendHex(out, bytes[i], 2);
    }
    out.push_back('}');
}

[[noreturn]] void RefuseKind(const Column& column) {
    throw RunTimeError(ErrorNumber::DataTypeMismatch,
                       "The value for the column \"" + column.name + "\" is of another kind.");
}

[[noreturn]] void RefuseSize(const Column& column) {
    throw RunTimeError(ErrorNumber::Overflow,
                       "The value for the column \"" + column.name + "\" is too large for its type.");
}

void AppendLittleEndian(std::string& out, std::uint64_t value, std::size_t bytes) {
    for (std::size_t i = 0; i < bytes; ++i) out.push_back(static_cast<char>(value >> 8 * i));
}

void AppendInteger(const Column& column, const ValueView& value, std::int64_t least, std::int64_t most,
                   std::string& out) {
    if (value.kind != ValueKind::Integer && value.kind != ValueKind::Boolean) RefuseKind(column);
    if (value.integer < least || value.integer > most) RefuseSize(column);
    AppendLittleEndian(out, static_cast<std::uint64_t>(value.integer), FixedBytes(column));
}

template <typename Limits>
void AppendIntegerOf(const Column& column, const ValueView& value, std::string& out) {
    AppendInteger(column, value, std::numeric_limits<Limits>::min(), std::numeric_limits<Limits>::max(), out);
}

/// Digits behind the scale are rounded half away from zero.
void AppendNumeric(const Column& column, std::string_view digits, std::string& out) {
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) digits.remove_prefix(1);
    Magnitude magnitude = 0, limit = 1;
    for (int i = 0; i < column.precision && i < 38; ++i) limit *= 10;
    int scale = -1;  // digits behind the point so far; before the point none are counted
    bool roundUp = false;
    for (const char letter : digits) {
        if (letter == '.' && scale < 0) {
            scale = 0;
            continue;
        }
        if (letter < '0' || letter > '9') RefuseKind(column);
        if (scale >= column.scale) {
            if (scale++ == column.scale) roundUp = letter >= '5';
            continue;
        }
        magnitude = magnitude * 10 + static_cast<unsigned>(letter - '0');
        if (scale >= 0) ++scale;
        if (magnitude >= limit) RefuseSize(column);
    }
    for (scale = std::max(scale, 0); scale < column.scale; ++scale) {
        magnitude *= 10;
        if (magnitude >= limit) RefuseSize(column);
    }
    if (roundUp && ++magnitude >= limit) RefuseSize(column);
    out.push_back(negative && magnitude != 0 ? '\x80' : '\0');
    for (int shift = 96; shift >= 0; shift -= 32)
        AppendLittleEndian(out, static_cast<std::uint32_t>(magnitude >> shift), 4);
}

int HexDigit(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    if (letter >= 'A' && letter <= 'F') return letter - 'A' + 10;
    if (letter >= 'a' && letter <= 'f') return letter - 'a' + 10;
    return -1;
}

/// Braces and hyphens are taken or left; what counts is 32 digits.
void AppendGuid(const Column& column, std::string_view text, std::string& out) {
    std::array<std::uint8_t, 16> bytes{};
    std::size_t digits = 0;
    for (const char letter : text) {
        const int digit = HexDigit(letter);
        if (digit < 0 && letter != '{' && letter != '}' && letter != '-') RefuseKind(column);
        if (digit < 0) continue;
        if (digits == 32) RefuseKind(column);
        bytes[digits / 2] = static_cast<std::uint8_t>(bytes[digits / 2] << 4 | digit);
        ++digits;
    }
    if (digits != 32) RefuseKind(column);
    for (const std::size_t i : {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15})
        out.push_back(static_cast<char>(bytes[i]));
}

}  // namespace

void AppendScalar(const Column& column, const ValueView& value, std::string& out) {
    switch (column.type) {
        case ColumnType::Byte:
            return AppendIntegerOf<std::uint8_t>(column, value, out);
        case ColumnType::Integer:
            return AppendIntegerOf<std::int16_t>(column, value, out);
        case ColumnType::Long:
            return AppendIntegerOf<std::int32_t>(column, value, out);
        case ColumnType::Money:
            if (value.kind != ValueKind::Currency) RefuseKind(column);
            return AppendLittleEndian(out, static_cast<std::uint64_t>(value.integer), 8);
        case ColumnType::Single:
            if (value.kind != ValueKind::Single) RefuseKind(column);
            return AppendLittleEndian(out, std::bit_cast<std::uint32_t>(static_cast<float>(value.real)), 4);
        case ColumnType::Double:
            if (value.kind != ValueKind::Double) RefuseKind(column);
            return AppendLittleEndian(out, std::bit_cast<std::uint64_t>(value.real), 8);
        case ColumnType::DateTime:
            if (value.kind != ValueKind::Date) RefuseKind(column);
            return AppendLittleEndian(out, std::bit_cast<std::uint64_t>(value.real), 8);
        case ColumnType::Guid:
            if (value.kind != ValueKind::Guid) RefuseKind(column);
            return AppendGuid(column, value.text, out);
        case ColumnType::Numeric:
            if (value.kind != ValueKind::Decimal) RefuseKind(column);
            return AppendNumeric(column, value.text, out);
        case ColumnType::Boolean:
        case ColumnType::Binary:
        case ColumnType::Text:
        case ColumnType::Ole:
        case ColumnType::Memo:
            break;
    }
    RefuseKind(column);
}

ValueView DecodeScalar(const Column& column, const std::uint8_t* bytes, std::string& buffer) {
    switch (column.type) {
        case ColumnType::Byte:
            return {.kind = ValueKind::Integer, .integer = bytes[0]};
        case ColumnType::Integer:
            return {.kind = ValueKind::Integer, .integer = static_cast<std::int16_t>(GetU16(bytes))};
        case ColumnType::Long:
            return {.kind = ValueKind::Integer, .integer = static_cast<std::int32_t>(GetU32(bytes))};
        case ColumnType::Money:
            return {.kind = ValueKind::Currency, .integer = static_cast<std::int64_t>(GetU64(bytes))};
        case ColumnType::Single:
            return {.kind = ValueKind::Single, .real = std::bit_cast<float>(GetU32(bytes))};
        case ColumnType::Double:
            return {.kind = ValueKind::Double, .real = std::bit_cast<double>(GetU64(bytes))};
        case ColumnType::DateTime:
            return {.kind = ValueKind::Date, .real = std::bit_cast<double>(GetU64(bytes))};
        case ColumnType::Guid:
            DecodeGuid(bytes, buffer);
            return {.kind = ValueKind::Guid, .text = buffer};
        case ColumnType::Numeric:
            DecodeNumeric(bytes, column.scale, buffer);
            return {.kind = ValueKind::Decimal, .text = buffer};
        case ColumnType::Boolean:
        case ColumnType::Binary:
        case ColumnType::Text:
        case ColumnType::Ole:
        case ColumnType::Memo:
            break;
    }
    return {};
}

}  // namespace quillform::jet
