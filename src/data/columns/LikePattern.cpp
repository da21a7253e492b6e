#include "data/columns/LikePattern.h"

#include <string>

#include "platform/Text.h"

namespace quillform::data {
namespace {

/// The character at `at` in lower case; moves `at` behind it. Plain letters, nearly all there are, don't go through
/// texts.
char32_t NextFolded(std::string_view text, std::size_t& at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80) {
        ++at;
        return byte >= 'A' && byte <= 'Z' ? byte + U'a' - U'A' : byte;
    }
    const std::size_t begin = at;
    NextCodePoint(text, at);
    const std::string folded = LowerCase(text.substr(begin, at - begin));
    std::size_t unused = 0;
    return NextCodePoint(folded, unused);
}

/// `[...]` at `at`; moves `at` behind it. Empty where the bracket isn't closed.
struct CharacterSet {
    std::string_view members;
    bool negated = false;
    bool closed = false;
};

CharacterSet ReadSet(std::string_view pattern, std::size_t& at) {
    CharacterSet set;
    // A bracket right behind the opening one belongs to the set.
    const std::size_t end = pattern.find(']', at + 2);
    if (end == std::string_view::npos) return set;
    set.members = pattern.substr(at + 1, end - at - 1);
    set.closed = true;
    if (set.members.size() > 1 && set.members.front() == '!') {
        set.negated = true;
        set.members.remove_prefix(1);
    }
    at = end + 1;
    return set;
}

bool InSet(const CharacterSet& set, char32_t character) {
    bool found = false;
    for (std::size_t at = 0; at < set.members.size() && !found;) {
        const char32_t low = NextFolded(set.members, at);
        char32_t high = low;
        if (at + 1 < set.members.size() && set.members[at] == '-') {
            ++at;
            high = NextFolded(set.members, at);
        }
        found = low <= character && character <= high;
    }
    return found != set.negated;
}

/// Matches one pattern element other than `*`; moves both positions behind what matched.
bool MatchOne(std::string_view text, std::size_t& t, std::string_view pattern, std::size_t& p) {
    if (t >= text.size()) return false;
    if (pattern[p] == '[') {
        std::size_t behind = p;
        const CharacterSet set = ReadSet(pattern, behind);
        if (set.closed) {
            p = behind;
            return InSet(set, NextFolded(text, t));
        }
    }
    const char32_t wanted = NextFolded(pattern, p);
    const char32_t found = NextFolded(text, t);
    if (wanted == U'?') return true;
    if (wanted == U'#') return found >= U'0' && found <= U'9';
    return wanted == found;
}

/// Only the last star is ever gone back to, so the time is at most the product of the lengths.
bool Matches(std::string_view text, std::string_view pattern) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t starPattern = std::string_view::npos;
    std::size_t starText = 0;
    while (t < text.size() || p < pattern.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            starPattern = ++p;
            starText = t;
            if (p == pattern.size()) return true;
            continue;
        }
        std::size_t nextText = t;
        std::size_t nextPattern = p;
        if (p < pattern.size() && MatchOne(text, nextText, pattern, nextPattern)) {
            t = nextText;
            p = nextPattern;
            continue;
        }
        if (starPattern == std::string_view::npos || starText >= text.size()) return false;
        NextFolded(text, starText);
        t = starText;
        p = starPattern;
    }
    return true;
}

}  // namespace

bool MatchesPattern(std::string_view text, std::string_view pattern) { return Matches(text, pattern); }

}  // namespace quillform::data
