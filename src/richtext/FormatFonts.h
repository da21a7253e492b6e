#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/TextMeasure.h"
#include "richtext/Document.h"

namespace quillform::richtext {

/// A font of laid out text. Lengths in twips.
struct PlacedFont {
    FontSpec spec;
    FontId id{};  ///< good for the measure that the layout was made with
    double ascent = 0;
    double height = 0;

    double Descent() const { return height - ascent; }
};

/// The fonts of a document's character formats, found when they are first needed.
class FormatFonts {
public:
    FormatFonts(const Document& document, TextMeasure& measure) : document_(document), measure_(measure) {}

    /// Number of the font of a format, in All().
    std::size_t NumberOf(std::uint32_t format);
    const PlacedFont& Of(std::uint32_t format) { return fonts_[NumberOf(format)]; }
    double Width(std::uint32_t format, std::string_view text) { return measure_.TextWidth(Of(format).id, text); }
    const std::vector<PlacedFont>& All() const { return fonts_; }

private:
    std::size_t Find(const CharacterFormat& format);

    const Document& document_;
    TextMeasure& measure_;
    std::vector<PlacedFont> fonts_;
    std::vector<std::uint32_t> numberOfFormat_;  // plus 1; 0: not looked for yet
    std::unordered_map<std::uint64_t, std::size_t> numberOfLook_;
};

}  // namespace quillform::richtext
