#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillform::print {

/// The small parts that PDF objects are written from. All append, none fails.

void AppendInteger(std::int64_t number, std::string& out);
/// Shortest fixed form with up to three decimals: "12", ".5", "-3.125".
void AppendDecimal(double number, std::string& out);
/// "12 0 R"
void AppendReference(int object, std::string& out);
/// A text string of a dictionary: literal where it is ASCII, else UTF-16 in hexadecimal. Control characters become
/// blanks.
void AppendTextString(std::string_view utf8, std::string& out);
/// Behind a "/": characters that a name can't hold are written by number.
void AppendNameCharacters(std::string_view name, std::string& out);
/// The code units of a code point as hexadecimal digits of UTF-16, high byte first.
void AppendUtf16Hex(char32_t codePoint, std::string& out);
void AppendHex16(unsigned value, std::string& out);
/// Text of an XML element; control characters become blanks.
void AppendXmlText(std::string_view utf8, std::string& out);

}  // namespace quillform::print
