#pragma once

#include <QPainter>
#include <QRawFont>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/TextMeasure.h"
#include "print/FontBook.h"

namespace quillform::designer {

/// Measures texts like every print target, and draws them on the screen glyph by glyph at those very measures: what is
/// seen on the surface is what is printed, and letters are sharp at any scale.
class ScreenFonts final : public TextMeasure {
public:
    FontId Font(const FontSpec& spec) override { return book_.Find(spec); }
    double TextWidth(FontId font, std::string_view text) const override { return book_.TextWidth(font, text); }
    double TextHeight(FontId font) const override { return book_.At(font).height; }

    /// Families that a layout can use as they are or by their metric twins, in alphabetical order.
    std::vector<std::string> Families() const { return book_.Files().PresentFamilies(); }

    /// Draws a line of text in the painter's pen colour. `corner` is its upper left corner in logical pixels, of which
    /// `pixelsPerTwip` stand for a twip.
    void Draw(QPainter& painter, FontId font, std::string_view text, QPointF corner, double pixelsPerTwip);

private:
    /// The glyphs of one face in a text, ready to draw.
    struct Run {
        std::uint16_t face = 0;
        QVector<quint32> glyphs;
        QVector<QPointF> places;
    };

    std::vector<Run> RunsOf(const print::FontBook::Font& font, std::string_view text, double pixelsPerEm) const;
    const QRawFont& RawFont(std::uint16_t face, double pixelsPerEm);
    void DrawUnderline(QPainter& painter, FontId font, QPointF baseline, double width, double pixelsPerEm) const;

    print::FontBook book_;
    std::map<std::pair<std::uint16_t, double>, QRawFont> rawFonts_;  // by face and size in pixels
};

}  // namespace quillform::designer
