#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace quillform::collation {

/// How a UTF-16 unit takes part in the order "General" (LCID 0409, version 0).
enum class WeightClass : std::uint8_t {
    None = 0,       ///< adds nothing
    Plain = 1,      ///< main weights only
    Accent = 2,     ///< main weights and an accent
    Ignorable = 3,  ///< counts only where all else is the same: hyphen, apostrophe, control characters
    Modifier = 4,   ///< a combining mark: adds to the accent before it
    Kana = 5,
};

struct Weight {
    std::uint32_t inlineBytes = 0;  ///< main weights, the first in the highest of `inlineSize` bytes
    std::uint16_t extra = 0;        ///< accent, likewise
    WeightClass kind = WeightClass::None;
    std::uint8_t inlineSize = 0;
    std::uint8_t extraSize = 0;
    std::uint8_t special = 0;  ///< of an ignorable unit; kana: its flag
    std::uint8_t letters = 1;  ///< letters that the unit stands for: 2 for what sorts as two letters, such as AE
};

/// One entry per UTF-16 unit.
const std::vector<Weight>& Jet4Weights();

/// How a byte of code page 1252 takes part in the same order of Jet 3.
struct ByteWeight {
    std::uint16_t primary = 0;
    std::uint8_t primarySize = 0;
    std::uint8_t accent = 0;     ///< 0: none
    std::uint8_t positions = 0;  ///< what it adds to the distance between accents
};

const std::array<ByteWeight, 256>& Jet3Weights();

}  // namespace quillform::collation
