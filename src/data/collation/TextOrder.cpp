#include "data/collation/TextOrder.h"

#include <array>
#include <cstdint>

#include "data/collation/KeyBuilder.h"
#include "platform/Text.h"

namespace quillform::collation {

namespace {

/// Main weights of the ASCII characters, the first byte high; 0 for those without. One-byte and two-byte weights begin
/// with different bytes, so whole weights compare as the bytes would.
std::array<std::uint16_t, 128> MakeAsciiWeights() {
    std::array<std::uint16_t, 128> ascii{};
    for (std::size_t i = 0; i < ascii.size(); ++i) {
        const Weight& weight = Jet4Weights()[i];
        ascii[i] = static_cast<std::uint16_t>(weight.inlineSize == 1 ? weight.inlineBytes << 8 : weight.inlineBytes);
    }
    return ascii;
}

const std::array<std::uint16_t, 128>& AsciiWeights() {
    static const std::array<std::uint16_t, 128> weights = MakeAsciiWeights();
    return weights;
}

/// The main weights of a text, byte by byte. Characters above U+FFFF, which the order doesn't know, come last by
/// number: they must at least differ.
class MainWeights {
public:
    MainWeights(std::string_view text, std::size_t at) : text_(text), at_(at) {}

    /// The next byte; -1 at the end.
    int Next() {
        while (pending_ == 0) {
            if (at_ >= text_.size()) return -1;
            Take(NextCodePoint(text_, at_));
        }
        --pending_;
        return static_cast<int>(bytes_ >> 8 * pending_ & 0xFF);
    }

private:
    void Take(char32_t letter) {
        if (letter > 0xFFFF) {
            bytes_ = std::uint64_t{0xFF} << 32 | std::uint64_t{0xFF} << 24 | letter;
            pending_ = 5;
            return;
        }
        const Weight& weight = Jet4Weights()[letter];
        bytes_ = weight.inlineBytes;
        pending_ = weight.inlineSize;
    }

    std::string_view text_;
    std::size_t at_;
    std::uint64_t bytes_ = 0;
    int pending_ = 0;
};

int CompareKeys(std::string_view left, std::string_view right) {
    std::string leftKey, rightKey;
    AppendKey(left, leftKey);
    AppendKey(right, rightKey);
    return leftKey.compare(rightKey);
}

/// Both texts have the same main weights before `leftAt` and `rightAt`.
int CompareFrom(std::string_view left, std::size_t leftAt, std::string_view right, std::size_t rightAt) {
    MainWeights leftWeights(left, leftAt), rightWeights(right, rightAt);
    while (true) {
        const int leftByte = leftWeights.Next(), rightByte = rightWeights.Next();
        if (leftByte != rightByte) return leftByte < rightByte ? -1 : 1;
        if (leftByte < 0) return CompareKeys(left, right);
    }
}

}  // namespace

int Compare(std::string_view left, std::string_view right) {
    left = RTrim(left);
    right = RTrim(right);
    if (left == right) return 0;
    const auto& ascii = AsciiWeights();
    bool hasIgnorable = false;
    std::size_t i = 0, k = 0;
    const auto skip = [&](std::string_view text, std::size_t& at) {
        for (; at < text.size(); ++at) {
            const auto letter = static_cast<unsigned char>(text[at]);
            if (letter >= 0x80 || ascii[letter] != 0) return;
            hasIgnorable = true;
        }
    };
    while (true) {
        skip(left, i);
        skip(right, k);
        const int first = i < left.size() ? static_cast<unsigned char>(left[i]) : -1;
        const int second = k < right.size() ? static_cast<unsigned char>(right[k]) : -1;
        if (first >= 0x80 || second >= 0x80) return CompareFrom(left, i, right, k);
        const int leftWeight = first < 0 ? -1 : ascii[static_cast<std::size_t>(first)];
        const int rightWeight = second < 0 ? -1 : ascii[static_cast<std::size_t>(second)];
        if (leftWeight != rightWeight) return leftWeight < rightWeight ? -1 : 1;
        if (first < 0) return hasIgnorable ? CompareKeys(left, right) : 0;
        ++i;
        ++k;
    }
}

void AppendKey(std::string_view text, std::string& out) {
    text = RTrim(text);
    KeyBuilder key(PairedLetters::CountTwo, out);
    for (std::size_t at = 0; at < text.size();) {
        const char32_t letter = NextCodePoint(text, at);
        if (letter <= 0xFFFF)
            key.Add(static_cast<char16_t>(letter));
        else
            key.AddUnknown(letter);
    }
    key.Finish();
}

std::size_t Hash(std::string_view text) {
    // Main weights only: equal texts have the same ones, and few texts differ in the rest alone.
    text = RTrim(text);
    std::uint64_t hash = 0xCBF29CE484222325u;
    const auto mix = [&hash](unsigned byte) { hash = (hash ^ byte) * 0x100000001B3u; };
    const auto& ascii = AsciiWeights();
    std::size_t at = 0;
    for (; at < text.size() && static_cast<unsigned char>(text[at]) < 0x80; ++at) {
        const unsigned weight = ascii[static_cast<unsigned char>(text[at])];
        if (weight == 0) continue;
        mix(weight >> 8);
        if (weight & 0xFF) mix(weight & 0xFF);
    }
    MainWeights rest(text, at);
    for (int byte = rest.Next(); byte >= 0; byte = rest.Next()) mix(static_cast<unsigned>(byte));
    return static_cast<std::size_t>(hash ^ hash >> 32);
}

}  // namespace quillform::collation
