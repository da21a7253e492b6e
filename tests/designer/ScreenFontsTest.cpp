// Texts on the screen stand where the measures say.

#include <gtest/gtest.h>

#include <QImage>

#include "designer/ScreenFonts.h"

namespace quillform::designer {
namespace {

/// The rectangle that holds all pixels that aren't white.
QRect InkOf(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).lightness() < 160) ink |= QRect(x, y, 1, 1);
    return ink;
}

TEST(ScreenFonts, DrawAtTheWidthsThatAreMeasured) {
    struct Case {
        FontSpec font;
        const char* text;
    };
    const Case cases[] = {
        {{.name = "Times New Roman", .size = 10}, "HHHHHHHHHHHHHHHHHHHHHHHHHH"},
        {{.name = "Arial", .size = 18, .bold = true}, "HHHHiiiiMMMM...H"},
        {{.name = "Courier New", .size = 9.5, .italic = true}, "H        H"},
        {{.name = "Arial", .size = 12}, "H\xC3\xA4\xC3\xB6\xC3\xBC\xE2\x82\xAC H"},
    };
    ScreenFonts fonts;
    for (const Case& c : cases) {
        for (const double pixelsPerTwip : {1 / 15.0, 2 / 15.0}) {
            SCOPED_TRACE(std::string(c.text) + " " + std::to_string(pixelsPerTwip));
            const FontId font = fonts.Font(c.font);
            const double width = fonts.TextWidth(font, c.text) * pixelsPerTwip;
            const double height = fonts.TextHeight(font) * pixelsPerTwip;
            QImage image(static_cast<int>(width) + 60, static_cast<int>(height) + 40, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            fonts.Draw(painter, font, c.text, {20, 10}, pixelsPerTwip);
            painter.end();
            const QRect ink = InkOf(image);
            // An H has a little air at its sides; a slanted one leans over them.
            const double air = c.font.size * 20 * pixelsPerTwip / 5;
            EXPECT_NEAR(ink.left(), 20, air);
            EXPECT_NEAR(ink.right(), 20 + width, air);
            EXPECT_GE(ink.top(), 10);
            EXPECT_LE(ink.bottom(), 10 + height);
        }
    }
}

TEST(ScreenFonts, UnderlineTheWholeText) {
    ScreenFonts fonts;
    const FontSpec spec{.name = "Arial", .size = 20, .underline = true};
    const FontId font = fonts.Font(spec);
    QImage image(200, 60, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    fonts.Draw(painter, font, "     ", {20, 10}, 1 / 15.0);
    painter.end();
    const QRect ink = InkOf(image);
    EXPECT_NEAR(ink.width(), fonts.TextWidth(font, "     ") / 15, 1);
    EXPECT_LE(ink.height(), 4);
}

}  // namespace
}  // namespace quillform::designer
