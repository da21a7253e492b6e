#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillform {

/// Windows code page 1252, the character set of layout files and of every text output. The five bytes that 1252 leaves
/// undefined (81 8D 8F 90 9D) stand for the code points of the same number, so that reading loses nothing.
std::string Utf8FromCp1252(std::string_view bytes);
/// Characters that 1252 doesn't have become '?'; `replaced`, where given, is raised by their number.
std::string Cp1252FromUtf8(std::string_view text, std::size_t* replaced = nullptr);
/// The byte of a code point in 1252; -1 if it has none.
int Cp1252Byte(char32_t codePoint);
void AppendCp1252(std::string_view utf8, std::string& out, std::size_t* replaced = nullptr);

/// Text of another Windows code page (1250, 1251, 1253, 932, ...). 1252 goes through the table above. Bytes that the
/// code page leaves undefined become the code point of the same number. An unknown code page is read as 1252.
std::string Utf8FromCodePage(std::string_view bytes, int codePage);
/// Characters that the code page lacks become '?' and are counted.
std::string CodePageFromUtf8(std::string_view text, int codePage, std::size_t* replaced = nullptr);

std::u16string Utf16FromUtf8(std::string_view text);
/// Lone surrogates become U+FFFD.
std::string Utf8FromUtf16(std::u16string_view units);

}  // namespace quillform
