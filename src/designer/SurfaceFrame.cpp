#include "designer/SurfaceFrame.h"

#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "support/TwipScale.h"

namespace quillform::designer {

namespace {

constexpr double fullColumns = 76;
constexpr double fullRows = 19.75;
constexpr int cellPixels = 8;       // of the design; a cell is twice as high
constexpr int leastCellPixels = 5;  // on a screen that is too small for the design
constexpr int margin = 8;
constexpr int border = 1;  // around the viewport
constexpr int gap = 1;

int BarThickness() { return TwipScale::ToPixels(285); }

QScrollBar* MakeBar(Qt::Orientation orientation, const char* name, const char* accessibleName, QWidget* parent) {
    auto* const bar = new QScrollBar(orientation, parent);
    bar->setObjectName(QString::fromLatin1(name));
    bar->setAccessibleName(QString::fromLatin1(accessibleName));
    bar->setSingleStep(1);
    bar->setFocusPolicy(Qt::NoFocus);  // the surface scrolls by keys
    return bar;
}

void Follow(QScrollBar& bar, const ScrollBar& model, double pageStep) {
    const QSignalBlocker quiet(bar);
    bar.setRange(0, model.Max);
    bar.setPageStep(static_cast<int>(pageStep));
    bar.setValue(model.Value);
}

}  // namespace

SurfaceFrame::SurfaceFrame(DesignSurface& surface, ScreenFonts& fonts, QWidget* parent)
    : QWidget(parent), surface_(surface), view_(new SurfaceView(surface, fonts, this)) {
    HScroll1_ = MakeBar(Qt::Horizontal, "HScroll1", "Scroll the page sideways", this);
    VScroll1_ = MakeBar(Qt::Vertical, "VScroll1", "Scroll the page", this);
    connect(HScroll1_, &QScrollBar::valueChanged, this,
            [this](int value) { surface_.ScrollTo(value, surface_.Geometry().VScroll1.Value); });
    connect(VScroll1_, &QScrollBar::valueChanged, this,
            [this](int value) { surface_.ScrollTo(surface_.Geometry().HScroll1.Value, value); });
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize SurfaceFrame::SizeFor(int cell) {
    return {static_cast<int>(fullColumns * cell) + 2 * margin + gap + BarThickness(),
            static_cast<int>(fullRows * 2 * cell) + 2 * border + gap + BarThickness()};
}

QSize SurfaceFrame::sizeHint() const { return SizeFor(cellPixels); }

QSize SurfaceFrame::minimumSizeHint() const { return SizeFor(leastCellPixels); }

void SurfaceFrame::Follow() {
    PlaceParts();
    const SurfaceGeometry& geometry = surface_.Geometry();
    designer::Follow(*HScroll1_, geometry.HScroll1, geometry.Picture2.ScaleWidth);
    designer::Follow(*VScroll1_, geometry.VScroll1, geometry.Picture2.ScaleHeight);
    view_->update();
}

void SurfaceFrame::resizeEvent(QResizeEvent*) { PlaceParts(); }

void SurfaceFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.drawRect(QRectF(view_->geometry()).adjusted(-0.5, -0.5, 0.5, 0.5));
}

void SurfaceFrame::PlaceParts() {
    const double acrossRoom = width() - 2 * margin - gap - BarThickness();
    const double downRoom = height() - 2 * border - gap - BarThickness();
    const double fitting = std::floor(std::min(acrossRoom / fullColumns, downRoom / fullRows / 2));
    const double cell = std::max<double>(leastCellPixels, fitting);
    const Viewport& viewport = surface_.Geometry().Picture2;
    const QRect seen(margin, border, static_cast<int>(viewport.box.width * cell),
                     static_cast<int>(viewport.box.height * 2 * cell));
    view_->setGeometry(seen);
    update();
    HScroll1_->setGeometry(seen.left(), seen.bottom() + 1 + gap, seen.width(), BarThickness());
    VScroll1_->setGeometry(seen.right() + 1 + gap, seen.top(), BarThickness(), seen.height());
}

}  // namespace quillform::designer
