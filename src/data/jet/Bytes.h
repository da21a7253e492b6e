#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string>

#include "platform/RunTimeError.h"

namespace quillform::jet {

using Bytes = std::span<const std::uint8_t>;

// Integers in the file are little-endian; callers have checked the bounds.
inline std::uint16_t GetU16(const std::uint8_t* at) { return static_cast<std::uint16_t>(at[0] | at[1] << 8); }
inline std::uint32_t GetU32(const std::uint8_t* at) {
    return static_cast<std::uint32_t>(at[0]) | static_cast<std::uint32_t>(at[1]) << 8 |
           static_cast<std::uint32_t>(at[2]) << 16 | static_cast<std::uint32_t>(at[3]) << 24;
}
inline std::uint64_t GetU64(const std::uint8_t* at) {
    return GetU32(at) | static_cast<std::uint64_t>(GetU32(at + 4)) << 32;
}
inline void PutU16(std::uint8_t* at, std::size_t value) {
    at[0] = static_cast<std::uint8_t>(value);
    at[1] = static_cast<std::uint8_t>(value >> 8);
}
inline void PutU32(std::uint8_t* at, std::uint32_t value) {
    PutU16(at, value & 0xFFFF);
    PutU16(at + 2, value >> 16);
}
inline void PutU64(std::uint8_t* at, std::uint64_t value) {
    PutU32(at, static_cast<std::uint32_t>(value));
    PutU32(at + 4, static_cast<std::uint32_t>(value >> 32));
}

/// Bytes that may not be what they claim: every read outside ends in the error of a damaged file.
[[noreturn]] inline void Damaged(const std::string& what) {
    throw RunTimeError(ErrorNumber::UnrecognizedFormat, "The database file is damaged: " + what + ".");
}

/// Where a row lies: page << 8 | slot, as the file stores it.
struct RowPointer {
    std::uint32_t value = 0;

    std::uint32_t Page() const { return value >> 8; }
    std::uint8_t Slot() const { return static_cast<std::uint8_t>(value); }
    explicit operator bool() const { return value >> 8 != 0; }
    friend auto operator<=>(const RowPointer&, const RowPointer&) = default;
};

inline RowPointer MakePointer(std::uint32_t page, std::size_t slot) {
    return {page << 8 | static_cast<std::uint32_t>(slot)};
}

}  // namespace quillform::jet
