#include "data/collation/IndexText.h"

#include "data/collation/KeyBuilder.h"

namespace quillform::collation {

namespace {

constexpr std::size_t longestIndexed = 255;

}  // namespace

void AppendJet4IndexKey(std::u16string_view units, PairedLetters pairs, std::string& out) {
    units = units.substr(0, longestIndexed);
    while (!units.empty() && units.back() == u' ') units.remove_suffix(1);
    KeyBuilder key(pairs, out);
    for (const char16_t unit : units) key.Add(unit);
    key.Finish();
}

void AppendJet3IndexKey(std::string_view bytes, std::string& out) {
    bytes = bytes.substr(0, longestIndexed);
    while (!bytes.empty() && bytes.back() == ' ') bytes.remove_suffix(1);
    const auto& weights = Jet3Weights();
    std::string nibbles;
    std::size_t distance = 0;  // letters that could carry an accent since the last one that does
    for (const char byte : bytes) {
        const ByteWeight& weight = weights[static_cast<unsigned char>(byte)];
        for (int i = weight.primarySize - 1; i >= 0; --i) out.push_back(static_cast<char>(weight.primary >> 8 * i));
        distance += weight.positions;
        if (weight.accent == 0) continue;
        if (nibbles.empty()) nibbles.push_back(0);
        nibbles.append(distance, 2);
        nibbles.push_back(static_cast<char>(weight.accent));
        distance = 0;
    }
    nibbles.push_back(0);
    if (nibbles.size() % 2 != 0) nibbles.push_back(0);
    for (std::size_t i = 0; i < nibbles.size(); i += 2)
        out.push_back(static_cast<char>(nibbles[i] << 4 | nibbles[i + 1]));
}

bool HasKnownOrder(std::u16string_view units) {
    for (const char16_t unit : units)
        if ((unit & 0xF800) == 0xD800) return false;
    return true;
}

}  // namespace quillform::collation
