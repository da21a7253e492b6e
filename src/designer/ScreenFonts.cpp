#include "designer/ScreenFonts.h"

#include <QGlyphRun>
#include <algorithm>

#include "platform/Text.h"

namespace quillform::designer {

namespace {

constexpr std::size_t mostRawFonts = 200;  // zooming by the mouse goes through many sizes

}  // namespace

void ScreenFonts::Draw(QPainter& painter, FontId font, std::string_view text, QPointF corner, double pixelsPerTwip) {
    const print::FontBook::Font& found = book_.At(font);
    const double pixelsPerEm = found.twipsPerEm * pixelsPerTwip;
    const QPointF baseline = corner + QPointF(0, found.ascent * pixelsPerTwip);
    for (const Run& run : RunsOf(found, text, pixelsPerEm)) {
        QGlyphRun glyphs;
        glyphs.setRawFont(RawFont(run.face, pixelsPerEm));
        glyphs.setGlyphIndexes(run.glyphs);
        glyphs.setPositions(run.places);
        painter.drawGlyphRun(baseline, glyphs);
    }
    if (found.spec.underline)
        DrawUnderline(painter, font, baseline, book_.TextWidth(font, text) * pixelsPerTwip, pixelsPerEm);
}

std::vector<ScreenFonts::Run> ScreenFonts::RunsOf(const print::FontBook::Font& font, std::string_view text,
                                                  double pixelsPerEm) const {
    std::vector<Run> runs;
    double x = 0;
    for (std::size_t position = 0; position < text.size();) {
        const print::FontBook::Glyph& glyph = book_.GlyphOf(font.typeface, NextCodePoint(text, position));
        if (glyph.isDrawn) {
            auto run = std::find_if(runs.begin(), runs.end(), [&](const Run& r) { return r.face == glyph.face; });
            if (run == runs.end()) run = runs.insert(runs.end(), {glyph.face, {}, {}});
            run->glyphs.append(glyph.index);
            run->places.append(QPointF(x, 0));
        }
        x += glyph.advance * pixelsPerEm;
    }
    return runs;
}

const QRawFont& ScreenFonts::RawFont(std::uint16_t face, double pixelsPerEm) {
    if (rawFonts_.size() > mostRawFonts) rawFonts_.clear();
    QRawFont& font = rawFonts_[{face, pixelsPerEm}];
    if (!font.isValid()) {
        const std::string& path = book_.Faces()[face]->File().path;
        font = QRawFont(QString::fromStdString(path), pixelsPerEm, QFont::PreferNoHinting);
    }
    return font;
}

void ScreenFonts::DrawUnderline(QPainter& painter, FontId font, QPointF baseline, double width,
                                double pixelsPerEm) const {
    const print::FontFace::Metrics& metrics = book_.PrimaryFace(font).Measures();
    const double thickness = std::max(1.0, metrics.underlineThickness * pixelsPerEm);
    const double top = baseline.y() + metrics.underlineCentre * pixelsPerEm - thickness / 2;
    painter.fillRect(QRectF(baseline.x(), top, width, thickness), painter.pen().color());
}

}  // namespace quillform::designer
