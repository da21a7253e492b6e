#include "platform/Text.h"

#include <cstdint>

#include "platform/AsciiRun.h"

namespace quillform {
namespace {

bool IsAscii(std::string_view text) { return AsciiRun(text, 0) == text.size(); }

bool IsContinuation(std::string_view text, std::size_t position) {
    return position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0) == 0x80;
}

/// Letters of one stretch of the character set: capitals from `first` to `last`, every `step`-th character one, each
/// `distance` below its small letter.
struct CaseRange {
    char32_t first;
    char32_t last;
    char32_t distance;
    char32_t step;
};

constexpr CaseRange kCaseRanges[] = {
    {0x41, 0x5A, 0x20, 1},  // A-Z
    {0xC0, 0xD6, 0x20, 1},  // Latin-1, around the multiplication sign
    {0xD8, 0xDE, 0x20, 1},
    {0x100, 0x12E, 1, 2},  // Latin Extended-A; the dotted and the dotless i have no partner of
                           // their own
    {0x132, 0x136, 1, 2},
    {0x139, 0x147, 1, 2},
    {0x14A, 0x176, 1, 2},
    {0x179, 0x17D, 1, 2},
    {0x1A0, 0x1A4, 1, 2},  // Latin Extended-B
    {0x1AF, 0x1AF, 1, 1},
    {0x1CD, 0x1DB, 1, 2},
    {0x1DE, 0x1EE, 1, 2},
    {0x1F8, 0x21E, 1, 2},
    {0x222, 0x232, 1, 2},
    {0x386, 0x386, 38, 1},  // Greek
    {0x388, 0x38A, 37, 1},
    {0x38C, 0x38C, 64, 1},
    {0x38E, 0x38F, 63, 1},
    {0x391, 0x3A1, 0x20, 1},
    {0x3A3, 0x3AB, 0x20, 1},
    {0x400, 0x40F, 0x50, 1},  // Cyrillic
    {0x410, 0x42F, 0x20, 1},
    {0x460, 0x480, 1, 2},
    {0x48A, 0x4BE, 1, 2},
    {0x4C0, 0x4C0, 15, 1},
    {0x4C1, 0x4CD, 1, 2},
    {0x4D0, 0x52E, 1, 2},
    {0x1E00, 0x1E94, 1, 2},  // Latin Extended Additional
    {0x1EA0, 0x1EFE, 1, 2},
};

constexpr char32_t kCapitalYDiaeresis = 0x178;  // the one capital above its small letter, U+00FF
constexpr char32_t kFinalSigma = 0x3C2;         // a second small form of the capital sigma
constexpr char32_t kCapitalSigma = 0x3A3;

char32_t ToLower(char32_t letter) {
    if (letter == kCapitalYDiaeresis) return 0xFF;
    for (const CaseRange& range : kCaseRanges) {
        if (letter < range.first) break;
        if (letter <= range.last && (letter - range.first) % range.step == 0) return letter + range.distance;
    }
    return letter;
}

char32_t ToUpper(char32_t letter) {
    if (letter == 0xFF) return kCapitalYDiaeresis;
    if (letter == kFinalSigma) return kCapitalSigma;
    for (const CaseRange& range : kCaseRanges) {
        if (letter < range.first + range.distance || letter > range.last + range.distance) continue;
        if ((letter - range.distance - range.first) % range.step == 0) return letter - range.distance;
    }
    return letter;
}

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

template <typename Ascii, typename Wide>
std::string Mapped(std::string_view text, Ascii ascii, Wide wide) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const char32_t letter = NextCodePoint(text, at);
        const char32_t mapped = at - begin > 1 ? wide(letter) : letter;
        if (letter < 0x80)
            result += ascii(text[begin]);
        else if (mapped == letter)
            result.append(text, begin, at - begin);  // a byte that is no UTF-8 stays the byte it is
        else
            AppendCodePoint(mapped, result);
    }
    return result;
}

/// Byte offset of the 0-based character `index`; the size where there are fewer.
std::size_t OffsetOf(std::string_view text, std::size_t index) {
    std::size_t at = 0;
    for (; index > 0 && at < text.size(); --index) NextCodePoint(text, at);
    return at;
}

char32_t FoldedNext(std::string_view text, std::size_t& at) {
    const std::size_t begin = at;
    const char32_t letter = NextCodePoint(text, at);
    if (letter < 0x80) return static_cast<unsigned char>(AsciiLower(text[begin]));
    return at - begin > 1 ? ToLower(ToUpper(letter)) : letter;
}

}  // namespace

std::string_view LTrim(std::string_view text) {
    const auto begin = text.find_first_not_of(' ');
    return begin == std::string_view::npos ? text.substr(text.size()) : text.substr(begin);
}

std::string_view RTrim(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? text.substr(0, 0) : text.substr(0, last + 1);
}

std::string_view Trim(std::string_view text) { return RTrim(LTrim(text)); }

std::size_t CountCharacters(std::string_view text) {
    if (IsAscii(text)) return text.size();
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++count) NextCodePoint(text, at);
    return count;
}

std::string_view LeftCharacters(std::string_view text, std::size_t count) {
    if (count >= text.size()) return text;
    if (IsAscii(text.substr(0, count))) return text.substr(0, count);
    return text.substr(0, OffsetOf(text, count));
}

std::string_view RightCharacters(std::string_view text, std::size_t count) {
    if (count >= text.size()) return text;
    const std::size_t characters = CountCharacters(text);
    return count >= characters ? text : text.substr(OffsetOf(text, characters - count));
}

std::string_view MidCharacters(std::string_view text, std::size_t start, std::size_t count) {
    const std::string_view rest = text.substr(OffsetOf(text, start > 0 ? start - 1 : 0));
    return LeftCharacters(rest, count);
}

std::string UpperCase(std::string_view text) { return Mapped(text, AsciiUpper, ToUpper); }
std::string LowerCase(std::string_view text) { return Mapped(text, AsciiLower, ToLower); }

bool EqualCaseBlind(std::string_view left, std::string_view right) {
    std::size_t leftAt = 0;
    std::size_t rightAt = 0;
    while (leftAt < left.size() && rightAt < right.size())
        if (FoldedNext(left, leftAt) != FoldedNext(right, rightAt)) return false;
    return leftAt == left.size() && rightAt == right.size();
}

char32_t NextCodePoint(std::string_view text, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(text[position]);
    if (lead < 0x80) return static_cast<char32_t>(text[position++]);

    const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    static constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    char32_t codePoint = lead & (0x3Fu >> more);
    bool valid = lead >= 0xC2 && lead <= 0xF4;
    for (std::size_t i = 1; valid && i <= more; ++i) {
        valid = IsContinuation(text, position + i);
        if (valid) codePoint = (codePoint << 6) | (static_cast<unsigned char>(text[position + i]) & 0x3Fu);
    }
    valid = valid && codePoint >= smallest[more] && codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
    position += valid ? more + 1 : 1;
    return valid ? codePoint : lead;
}

void AppendCodePoint(char32_t codePoint, std::string& out) {
    const auto tail = [&](int shift) { out += static_cast<char>(0x80u | ((codePoint >> shift) & 0x3Fu)); };
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) codePoint = 0xFFFD;
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += static_cast<char>(0xC0u | (codePoint >> 6));
        tail(0);
    } else if (codePoint < 0x10000) {
        out += static_cast<char>(0xE0u | (codePoint >> 12));
        tail(6), tail(0);
    } else {
        out += static_cast<char>(0xF0u | (codePoint >> 18));
        tail(12), tail(6), tail(0);
    }
}

}  // namespace quillform
