#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillform {

/// Texts are UTF-8 and a character is a code point. Bytes that are no UTF-8 count as one character each, so that no
/// function here fails or loses a byte. Plain ASCII takes a fast path everywhere.

/// Without blanks (U+0020 only, as the platform trims) at both ends, at the left, at the right.
std::string_view Trim(std::string_view text);
std::string_view LTrim(std::string_view text);
std::string_view RTrim(std::string_view text);

std::size_t CountCharacters(std::string_view text);
/// The first or last `count` characters; the whole text where it has fewer.
std::string_view LeftCharacters(std::string_view text, std::size_t count);
std::string_view RightCharacters(std::string_view text, std::size_t count);
/// `count` characters from the 1-based position `start`; empty where the text ends before it.
std::string_view MidCharacters(std::string_view text, std::size_t start, std::size_t count = std::string_view::npos);

/// Simple case mapping of Latin, Greek and Cyrillic letters, one character to one character.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);
/// Whether two names are the same when case doesn't count.
bool EqualCaseBlind(std::string_view left, std::string_view right);

/// Reads the code point at `position` (a byte offset below the size) and moves `position` behind it. A byte that
/// begins no valid sequence gives its own value.
char32_t NextCodePoint(std::string_view text, std::size_t& position);
void AppendCodePoint(char32_t codePoint, std::string& out);

}  // namespace quillform
