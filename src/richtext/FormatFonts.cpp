#include "richtext/FormatFonts.h"

namespace quillform::richtext {

namespace {

// More are no document that was made to be read; the measure keeps a table of each.
constexpr std::size_t kMostFonts = 1000;

std::uint64_t LookOf(const CharacterFormat& format) {
    const std::uint64_t style = (format.bold ? 1U : 0U) | (format.italic ? 2U : 0U) | (format.underline ? 4U : 0U);
    return (std::uint64_t{format.font} << 32) | (std::uint64_t{format.halfPoints} << 8) | style;
}

}  // namespace

std::size_t FormatFonts::NumberOf(std::uint32_t format) {
    if (numberOfFormat_.empty()) numberOfFormat_.resize(document_.characterFormats.size());
    std::uint32_t& number = numberOfFormat_[format];
    if (number == 0) number = static_cast<std::uint32_t>(Find(document_.characterFormats[format]) + 1);
    return number - 1;
}

std::size_t FormatFonts::Find(const CharacterFormat& format) {
    const std::uint64_t look = LookOf(format);
    if (const auto known = numberOfLook_.find(look); known != numberOfLook_.end()) return known->second;
    if (fonts_.size() == kMostFonts) return 0;
    PlacedFont font;
    font.spec = {document_.fonts[format.font].name, format.halfPoints / 2.0, format.bold, format.italic,
                 format.underline};
    font.id = measure_.Font(font.spec);
    font.ascent = measure_.TextAscent(font.id);
    font.height = measure_.TextHeight(font.id);
    fonts_.push_back(font);
    numberOfLook_.emplace(look, fonts_.size() - 1);
    return fonts_.size() - 1;
}

}  // namespace quillform::richtext
