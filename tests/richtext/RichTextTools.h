#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/TextMeasure.h"
#include "richtext/Document.h"

namespace quillform::richtext {

/// Every letter is 12 twips wide for each point of its font and its line 24 high: 120 and 240 at ten points.
class SquareMeasure final : public TextMeasure {
public:
    FontId Font(const FontSpec& spec) override;
    double TextWidth(FontId font, std::string_view text) const override;
    double TextHeight(FontId font) const override { return 24 * SizeOf(font); }

private:
    double SizeOf(FontId font) const { return sizes_[static_cast<std::size_t>(font)]; }
    std::vector<double> sizes_;
};

/// The document's texts with the looks of each run before it where they change: "<Arial 10 b i u cf1 cb2>". Paragraphs
/// end with '|', cells with '/', rows with '#', page breaks are '='; tabs are '>', other line ends '^'.
std::string Marked(const Document& document);
/// The same without looks.
std::string Shape(const Document& document);
std::string Shape(std::string_view rtf);

/// One line per text of each page, "x y text" in whole twips on the sheet, pages divided by a line of "-". Boxes are
/// "x y width height red,green,blue" behind the texts of their page.
std::string Laid(std::string_view rtf);

/// A report document as Quillform writes them, up to the start of the body. Fonts: 1 Arial, 2 Courier New. The text
/// area begins at 720, 720 and is 10800 twips wide.
std::string Frame(bool isLandscape = false);

}  // namespace quillform::richtext
