#include "data/jet/Scalars.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

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
    out = "{";
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

}  // namespace

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
