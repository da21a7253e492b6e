#include "richtext/CharacterSets.h"

#include <algorithm>

#include "platform/CodePage.h"
#include "platform/Text.h"

namespace quillform::richtext {

namespace {

struct Charset {
    int number;
    int codePage;
};
// Character set numbers of Windows fonts.
constexpr Charset kCharsets[] = {{0, 1252},   {2, 1252},   {77, 10000}, {128, 932},  {129, 949},
                                 {130, 1361}, {134, 936},  {136, 950},  {161, 1253}, {162, 1254},
                                 {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257}, {204, 1251},
                                 {222, 874},  {238, 1250}, {254, 437},  {255, 850}};

constexpr char32_t kReplacement = 0xFFFD;
constexpr bool IsHighSurrogate(unsigned unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool IsLowSurrogate(unsigned unit) { return unit >= 0xDC00 && unit < 0xE000; }
// Symbol fonts have their characters here, at the places of their bytes.
constexpr bool IsSymbol(unsigned unit) { return unit >= 0xF020 && unit < 0xF100; }

}  // namespace

int CodePageOfCharset(int charset, int otherwise) {
    for (const Charset& known : kCharsets)
        if (known.number == charset) return known.codePage;
    return otherwise;
}

bool IsAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void TextDecoder::AddBytes(std::string_view bytes, int codePage) {
    EndUnits();
    if (codePage != codePage_) EndBytes();
    codePage_ = codePage;
    bytes_ += bytes;
}

void TextDecoder::AddUnit(int number) {
    EndBytes();
    const auto unit = static_cast<unsigned>(number) & 0xFFFF;
    if (IsLowSurrogate(unit) && highSurrogate_ != 0) {
        const char32_t high = highSurrogate_ - 0xD800U;
        AppendCodePoint(0x10000 + (high << 10) + (unit - 0xDC00), text_);
        highSurrogate_ = 0;
        return;
    }
    EndUnits();
    if (IsHighSurrogate(unit))
        highSurrogate_ = static_cast<char16_t>(unit);
    else if (IsLowSurrogate(unit))
        AppendCodePoint(kReplacement, text_);
    else
        AppendCodePoint(IsSymbol(unit) ? unit - 0xF000 : unit, text_);
}

std::string_view TextDecoder::Take() {
    EndBytes();
    EndUnits();
    taken_.swap(text_);
    text_.clear();
    std::erase_if(taken_, [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t'; });
    return taken_;
}

void TextDecoder::EndBytes() {
    if (bytes_.empty()) return;
    text_ += Utf8FromCodePage(bytes_, codePage_);
    bytes_.clear();
}

void TextDecoder::EndUnits() {
    if (highSurrogate_ != 0) AppendCodePoint(kReplacement, text_);
    highSurrogate_ = 0;
}

}  // namespace quillform::richtext
