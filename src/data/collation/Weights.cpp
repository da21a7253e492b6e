#include "data/collation/Weights.h"

#include <string_view>

namespace quillform::collation {

namespace {

struct Run {
    std::uint16_t first, count;
    std::uint8_t kind, inlineSize;
    std::uint32_t inlineBytes;
    std::uint8_t extraSize;
    std::uint16_t extra;
    std::uint8_t special;
};

constexpr Run runs[] = {
#include "data/collation/Jet4Weights.inc"
};

struct ByteEntry {
    std::uint8_t byte, primarySize;
    std::uint16_t primary;
    std::uint8_t accent, positions;
};

constexpr ByteEntry byteEntries[] = {
#include "data/collation/Jet3Weights.inc"
};

/// Weights that are whole letters: a unit made of several of them counts as several positions.
constexpr std::string_view letterWeights =
    "\x4A\x4C\x4D\x4F\x51\x53\x55\x57\x59\x5B\x5C\x5E\x60\x62\x64\x66\x68\x69\x6B\x6D\x6F\x71\x73\x75\x76\x78";

std::uint8_t CountLetters(std::uint32_t inlineBytes, std::uint8_t size) {
    for (int i = 0; i < size; ++i)
        if (letterWeights.find(static_cast<char>(inlineBytes >> 8 * i & 0xFF)) == std::string_view::npos) return 1;
    return size > 1 ? size : std::uint8_t{1};
}

/// Weights within a run count up by one; their low byte is never 00 or 01, which are separators in keys.
std::uint32_t Following(std::uint32_t inlineBytes, std::uint32_t count) {
    constexpr std::uint32_t lowValues = 254;
    const std::uint32_t steps = (inlineBytes & 0xFF) - 2 + count;
    return ((inlineBytes >> 8) + steps / lowValues) << 8 | (steps % lowValues + 2);
}

std::vector<Weight> ExpandRuns() {
    std::vector<Weight> weights(0x10000);
    for (const Run& run : runs) {
        for (std::uint32_t i = 0; i < run.count; ++i) {
            Weight& weight = weights[run.first + i];
            weight.kind = static_cast<WeightClass>(run.kind);
            weight.inlineSize = run.inlineSize;
            weight.inlineBytes = run.inlineSize == 0 || i == 0 ? run.inlineBytes : Following(run.inlineBytes, i);
            weight.extraSize = run.extraSize;
            weight.extra = run.extra;
            weight.special = run.special;
            weight.letters = CountLetters(weight.inlineBytes, weight.inlineSize);
        }
    }
    return weights;
}

std::array<ByteWeight, 256> ExpandBytes() {
    std::array<ByteWeight, 256> weights{};
    for (const ByteEntry& entry : byteEntries)
        weights[entry.byte] = {entry.primary, entry.primarySize, entry.accent, entry.positions};
    return weights;
}

}  // namespace

const std::vector<Weight>& Jet4Weights() {
    static const std::vector<Weight> weights = ExpandRuns();
    return weights;
}

const std::array<ByteWeight, 256>& Jet3Weights() {
    static const std::array<ByteWeight, 256> weights = ExpandBytes();
    return weights;
}

}  // namespace quillform::collation
