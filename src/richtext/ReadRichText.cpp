#include "richtext/ReadRichText.h"

#include <algorithm>

#include "platform/OutputFile.h"
#include "platform/RunTimeError.h"
#include "richtext/Parser.h"

namespace quillform::richtext {

namespace {

bool BeginsAsRichText(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    bytes.remove_prefix(std::min(bytes.find_first_not_of(" \t\r\n"), bytes.size()));
    return bytes.starts_with("{\\rtf");
}

}  // namespace

Document ReadRichText(std::string_view bytes) {
    if (!BeginsAsRichText(bytes))
        throw RunTimeError(ErrorNumber::InvalidFileFormat, "This is no rich text: it doesn't begin with \"{\\rtf\".");
    return Parser(bytes).Read();
}

Document ReadRichTextFile(const std::filesystem::path& path) {
    const std::string bytes = ReadWholeFile(path);
    if (!BeginsAsRichText(bytes))
        throw RunTimeError(ErrorNumber::InvalidFileFormat,
                           "\"" + path.string() + "\" is no rich text file: it doesn't begin with \"{\\rtf\".");
    return Parser(bytes).Read();
}

}  // namespace quillform::richtext
