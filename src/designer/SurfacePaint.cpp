// What the surface looks like.

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "designer/SurfaceView.h"
#include "model/DesignGrid.h"
#include "platform/Colours.h"

namespace quillform::designer {

namespace {

constexpr int gridRows = 25;
constexpr int gridColumns = 60;  // one line in two columns

QColor ColorOf(int number) {
    const Rgb rgb = QBColor(number);
    return {rgb.red, rgb.green, rgb.blue};
}

}  // namespace

/// The nearest place where a line covers whole pixels of the screen.
double SurfaceView::Sharp(double pixels) const {
    const double ratio = devicePixelRatioF();
    return std::round(pixels * ratio) / ratio;
}

QRectF SurfaceView::ToPixels(const Box& cells) const {
    const QSizeF cell = CellSize();
    const QPointF from(Sharp(cells.left * cell.width()), Sharp(cells.top * cell.height()));
    return {from, QPointF(Sharp(cells.Right() * cell.width()), Sharp(cells.Bottom() * cell.height()))};
}

void SurfaceView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Picture2_Paint(painter);
    const Box& viewport = surface_.Geometry().Picture2.box;
    for (const auto& picture : surface_.Pic().FromBelow()) {
        const Box& box = picture->box;
        const bool isSeen =
            box.left < viewport.width && box.Right() > 0 && box.top < viewport.height && box.Bottom() > 0;
        if (isSeen) PaintPicture(painter, *picture);
    }
    PaintSelection(painter);
    if (hold_ == Hold::Drag) PaintDragOutline(painter);
}

/// The grid belongs to the viewport and stays where it is while the page scrolls.
void SurfaceView::Picture2_Paint(QPainter& painter) const {
    painter.fillRect(rect(), Qt::white);
    painter.setPen(QPen(QColor(192, 192, 192), 0, Qt::DotLine));
    const QSizeF cell = CellSize();
    const double halfPixel = 0.5 / devicePixelRatioF();
    for (int i = 1; i <= gridRows; ++i) {
        const double y = Sharp(i * cell.height()) + halfPixel;
        if (y < height()) painter.drawLine(QPointF(0, y), QPointF(width(), y));
    }
    for (int i = 1; i <= gridColumns; ++i) {
        const double x = Sharp(2 * i * cell.width()) + halfPixel;
        if (x < width()) painter.drawLine(QPointF(x, 0), QPointF(x, height()));
    }
}

void SurfaceView::PaintPicture(QPainter& painter, const Picture& picture) {
    const QRectF box = ToPixels(picture.box);
    painter.fillRect(box, ColorOf(picture.backColor));
    const double halfPixel = 0.5 / devicePixelRatioF();
    painter.setPen(QPen(QColor(170, 178, 190), 0));
    painter.drawRect(box.adjusted(halfPixel, halfPixel, -halfPixel, -halfPixel));

    const double pixelsPerColumn = CellSize().width();
    painter.setPen(ColorOf(picture.foreColor));
    painter.setClipRect(box);
    fonts_.Draw(painter, picture.fontId, picture.text, box.topLeft() + QPointF(picture.CurrentX * pixelsPerColumn, 0),
                pixelsPerColumn / intColumnTwips);
    painter.setClipping(false);
}

/// A frame around the selected item and a grip on the edge that sizes it.
void SurfaceView::PaintSelection(QPainter& painter) const {
    const Picture* const picture = surface_.SelectedItem() ? surface_.Pic().Find(surface_.intSelected) : nullptr;
    if (!picture) return;
    const QRectF box = ToPixels(picture->box);
    const QColor color = hasFocus() ? QColor(20, 100, 200) : QColor(90, 130, 175);
    // A white seam keeps the frame visible on dark items.
    for (const auto& [seam, width] : {std::pair(QColor(Qt::white), 3.5), std::pair(color, 1.5)}) {
        QPen pen(seam, width);
        pen.setJoinStyle(Qt::MiterJoin);
        painter.setPen(pen);
        painter.drawRect(box.adjusted(-1, -1, 1, 1));
    }
    constexpr double grip = 2.5;
    painter.fillRect(QRectF(box.right() - grip, box.center().y() - grip, 2 * grip, 2 * grip), color);
}

/// Where the item will be if it is dropped now.
void SurfaceView::PaintDragOutline(QPainter& painter) const {
    const QRectF box = ToPixels(editing_.DropBox(held_, mouse_.x(), mouse_.y()));
    painter.fillRect(box, QColor(20, 100, 200, 40));
    painter.setPen(QPen(QColor(20, 100, 200), 1, Qt::DashLine));
    painter.drawRect(box);
}

}  // namespace quillform::designer
