#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QScreen>
#include <QWidget>

#include "support/TwipScale.h"

// Run at several scales of the screen, see CMakeLists.txt.
namespace quillform {
namespace {

double WantedRatio() {
    return qEnvironmentVariableIsEmpty("QT_SCALE_FACTOR") ? 1 : qgetenv("QT_SCALE_FACTOR").toDouble();
}

/// Draws a cell of the design grid, 120 by 240 twips, at a given column and row.
struct Cell : QWidget {
    int column = 0;
    int row = 0;
    void paintEvent(QPaintEvent*) override {
        const TwipScale scale(devicePixelRatioF());
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        const double left = scale.ToSharp(column * 120.0), top = scale.ToSharp(row * 240.0);
        painter.fillRect(
            QRectF(left, top, scale.ToSharp((column + 1) * 120.0) - left, scale.ToSharp((row + 1) * 240.0) - top),
            Qt::black);
    }
};

TEST(TwipScale, AnInchHasNinetySixPixelsAtAnyScale) {
    QWidget widget;
    EXPECT_DOUBLE_EQ(widget.devicePixelRatioF(), WantedRatio());
    EXPECT_EQ(TwipScale::ToPixels(1440), 96);
    EXPECT_EQ(TwipScale::ToPixels(TwipScale::ToTwips(17)), 17);
    EXPECT_EQ(TwipScale::ToPixels(-22.4), -1);
    EXPECT_EQ(TwipScale::ToPixels(-22.6), -2);
}

TEST(TwipScale, CellsAreSharpAndAsLargeAsTheyShould) {
    Cell cell;
    cell.resize(200, 200);
    const double ratio = WantedRatio();
    for (const auto& [column, row] : {std::pair{0, 0}, {1, 2}, {7, 3}, {11, 5}}) {
        cell.column = column;
        cell.row = row;
        const QImage image = cell.grab().toImage();
        ASSERT_EQ(image.width(), qRound(200 * ratio));
        const QRect expected(qRound(8 * column * ratio), qRound(16 * row * ratio), qRound(8 * ratio),
                             qRound(16 * ratio));
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                ASSERT_EQ(image.pixelColor(x, y), QColor(expected.contains(x, y) ? Qt::black : Qt::white))
                    << "cell " << column << "," << row << " at " << x << "," << y;
    }
}

TEST(TwipScale, NeighboursMeetAtTheSamePixel) {
    const TwipScale scale(WantedRatio());
    for (int twips = 0; twips < 3000; twips += 7) {
        const double real = scale.ToSharp(twips) * WantedRatio();
        EXPECT_NEAR(real, std::round(real), 1e-9);
        EXPECT_LE(std::abs(scale.ToSharp(twips) - TwipScale::ToLogical(twips)), scale.Hairline() / 2 + 1e-9);
    }
}

}  // namespace
}  // namespace quillform
