#pragma once

#include <string>
#include <string_view>

namespace quillform {

/// Appends the bytes of a text as it stands: Windows 1252 letters as single bytes, backslashes and braces unescaped,
/// letters outside 1252 as `\uN?`. Only a backslash that would keep readers from opening the file is doubled: one
/// before "bin" and a number, which swallows as many bytes of the document, and one before an apostrophe without two
/// hexadecimal digits. True if the text holds a backslash or a brace, which readers take for commands.
bool AppendRtfText(std::string_view utf8, std::string& out);

/// Puts braces around the group that begins at `start` and reaches to the end of `out`, as many as its texts leave open
/// or close too often, so that what follows stands where it would without them.
void BalanceRtfGroup(std::string& out, std::size_t start);

void AppendRtfNumber(long number, std::string& out);

}  // namespace quillform
