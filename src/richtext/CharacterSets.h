#pragma once

#include <string>
#include <string_view>

namespace quillform::richtext {

/// Code page of a font's character set number; `otherwise` for the default set and for unknown ones.
int CodePageOfCharset(int charset, int otherwise);

/// Gathers the bytes and code units of a document's text until they are whole characters.
class TextDecoder {
public:
    /// Bytes of one code page; a change of the page ends what was gathered.
    void AddBytes(std::string_view bytes, int codePage);
    /// A unit of UTF-16, as signed 16-bit numbers write it too.
    void AddUnit(int unit);
    bool IsEmpty() const { return bytes_.empty() && text_.empty() && highSurrogate_ == 0; }
    /// What was gathered, as UTF-8 without control characters but tabs; halves of characters become U+FFFD. Valid until
    /// the next call.
    std::string_view Take();

private:
    void EndBytes();
    void EndUnits();

    std::string bytes_;
    int codePage_ = 1252;
    char16_t highSurrogate_ = 0;
    std::string text_;
    std::string taken_;
};

/// Whether the bytes are the same in every code page.
bool IsAscii(std::string_view bytes);

}  // namespace quillform::richtext
