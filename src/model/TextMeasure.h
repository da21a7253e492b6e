#pragma once

#include <string>
#include <string_view>

namespace quillform {

struct FontSpec {
    std::string name;  ///< family as the layout has it, any case
    double size = 10;  ///< points
    bool bold = false;
    bool italic = false;
    bool underline = false;
    friend bool operator==(const FontSpec&, const FontSpec&) = default;
};

/// A font found once and used many times; good for the measure or target that gave it.
enum class FontId : int {};

/// Measures text as the print target draws it: advances at design units, no hinting, no kerning, no ligatures. Twips.
class TextMeasure {
public:
    virtual ~TextMeasure() = default;
    /// Never fails: a family that is missing falls to its metric twin, then to a default.
    virtual FontId Font(const FontSpec& spec) = 0;
    virtual double TextWidth(FontId font, std::string_view text) const = 0;
    /// Height of one line of text in the font.
    virtual double TextHeight(FontId font) const = 0;
    /// From the upper edge of a line to its baseline; texts of several fonts on a line share the baseline.
    virtual double TextAscent(FontId font) const { return TextHeight(font) * 0.8; }
};

}  // namespace quillform
