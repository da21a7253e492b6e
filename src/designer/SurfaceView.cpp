// The surface's mouse and keys; what it looks like is in SurfacePaint.cpp.

#include "designer/SurfaceView.h"

#include <QMouseEvent>
#include <QTimerEvent>
#include <utility>

namespace quillform::designer {

namespace {

MouseButton ButtonOf(Qt::MouseButton button) {
    if (button == Qt::LeftButton) return MouseButton::Left;
    return button == Qt::RightButton ? MouseButton::Right : MouseButton::Middle;
}

MouseButton ButtonOf(Qt::MouseButtons held) {
    if (held == Qt::NoButton) return MouseButton::None;
    return held & Qt::LeftButton ? MouseButton::Left : MouseButton::Right;
}

/// The step of an arrow key in columns and rows; none for other keys.
QPoint ArrowOf(int key) {
    switch (key) {
        case Qt::Key_Left:
            return {-1, 0};
        case Qt::Key_Right:
            return {1, 0};
        case Qt::Key_Up:
            return {0, -1};
        case Qt::Key_Down:
            return {0, 1};
        default:
            return {};
    }
}

}  // namespace

SurfaceView::SurfaceView(DesignSurface& surface, ScreenFonts& fonts, QWidget* parent)
    : QWidget(parent), surface_(surface), fonts_(fonts), editing_(surface) {
    setObjectName(QStringLiteral("Picture2"));
    setAccessibleName(QStringLiteral("Report page"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSizeF SurfaceView::CellSize() const {
    const Box& viewport = surface_.Geometry().Picture2.box;
    return {width() / viewport.width, height() / viewport.height};
}

QPointF SurfaceView::ToCells(QPointF pixels) const {
    const QSizeF cell = CellSize();
    return {pixels.x() / cell.width(), pixels.y() / cell.height()};
}

void SurfaceView::mousePressEvent(QMouseEvent* event) {
    if (hold_ != Hold::None) return;  // one button at a time
    mouse_ = ToCells(event->position());
    const Picture* const picture = surface_.Pic().At(mouse_.x(), mouse_.y());
    if (!picture) return;
    held_ = picture->Index;
    const PressResult result = editing_.Pic_MouseDown(held_, ButtonOf(event->button()), mouse_.x() - picture->box.left,
                                                      mouse_.y() - picture->box.top);
    if (result == PressResult::Drag) hold_ = Hold::Drag;
    if (result == PressResult::Sizing) hold_ = Hold::Sizing;
    update();
    Q_EMIT Selected();
    if (result == PressResult::Options) Q_EMIT OptionsWanted();
}

void SurfaceView::mouseMoveEvent(QMouseEvent* event) {
    mouse_ = ToCells(event->position());
    WatchEdge();
    if (hold_ == Hold::Drag) {
        update();
        return ShowPointed(mouse_);
    }
    // The picture that was pressed has the mouse until the button goes up.
    const Picture* const picture =
        hold_ == Hold::Sizing ? surface_.Pic().Find(held_) : surface_.Pic().At(mouse_.x(), mouse_.y());
    if (picture)
        editing_.Pic_MouseMove(picture->Index, ButtonOf(event->buttons()), mouse_.x() - picture->box.left);
    else
        editing_.Picture2_MouseMove();
    ShowPointer();
    ShowPointed(mouse_);
}

void SurfaceView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || hold_ == Hold::None) return;
    mouse_ = ToCells(event->position());
    const Hold ended = std::exchange(hold_, Hold::None);
    if (ended == Hold::Drag) {
        Drop(mouse_);
    } else if (const Picture* const picture = surface_.Pic().Find(held_)) {
        editing_.Pic_MouseUp(held_, mouse_.x() - picture->box.left);
    }
    update();
    mouseMoveEvent(event);
}

/// A drop outside the viewport leaves the item where it was.
void SurfaceView::Drop(QPointF cells) {
    const Box& viewport = surface_.Geometry().Picture2.box;
    if (!Box{0, 0, viewport.width, viewport.height}.Contains(cells.x(), cells.y())) return;
    if (const Picture* const target = surface_.Pic().At(cells.x(), cells.y()))
        editing_.Pic_DragDrop(target->Index, held_, cells.x() - target->box.left, cells.y() - target->box.top);
    else
        editing_.Picture2_DragDrop(held_, cells.x(), cells.y());
}

/// Columns and rows to scroll by for the place where the mouse holds an item; none where the page ends.
QPoint SurfaceView::EdgeStep() const {
    constexpr double edgeColumns = 1, edgeRows = 0.5;  // an edge of 120 twips all round
    const SurfaceGeometry& geometry = surface_.Geometry();
    const auto step = [](double place, double size, double edge, const auto& bar) {
        if (place < edge) return bar.Value > 0 ? -1 : 0;
        return place > size - edge && bar.Value < bar.Max ? 1 : 0;
    };
    return {step(mouse_.x(), geometry.Picture2.box.width, edgeColumns, geometry.HScroll1),
            step(mouse_.y(), geometry.Picture2.box.height, edgeRows, geometry.VScroll1)};
}

/// The first step waits, so that an item can be let go in the last row, or carried out of the window, in peace.
void SurfaceView::WatchEdge() {
    constexpr int pauseMs = 300;
    if (hold_ != Hold::Drag || EdgeStep().isNull())
        atEdge_.stop();
    else if (!atEdge_.isActive())
        atEdge_.start(pauseMs, this);
}

void SurfaceView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != atEdge_.timerId()) return QWidget::timerEvent(event);
    constexpr int stepMs = 50;
    atEdge_.start(stepMs, this);
    const SurfaceGeometry& geometry = surface_.Geometry();
    const QPoint step = EdgeStep();
    surface_.ScrollTo(geometry.HScroll1.Value + step.x(), geometry.VScroll1.Value + step.y());
    WatchEdge();
    update();
    ShowPointed(mouse_);
}

void SurfaceView::wheelEvent(QWheelEvent* event) {
    constexpr int stepsPerCell = 40;  // a notch of the wheel is 120: three cells
    QPoint turned = event->angleDelta();
    if (event->modifiers() & Qt::ShiftModifier && turned.x() == 0) turned = turned.transposed();
    wheelSteps_ += turned;
    const int columns = wheelSteps_.x() / stepsPerCell;
    const int rows = wheelSteps_.y() / stepsPerCell;
    wheelSteps_ -= QPoint(columns, rows) * stepsPerCell;
    const SurfaceGeometry& geometry = surface_.Geometry();
    surface_.ScrollTo(geometry.HScroll1.Value - columns, geometry.VScroll1.Value - rows);
    ShowPointed(mouse_);
    event->accept();
}

void SurfaceView::leaveEvent(QEvent*) {
    if (hold_ == Hold::None) editing_.Picture2_MouseMove();
    Q_EMIT Pointed(nullptr, std::nullopt);
}

void SurfaceView::keyPressEvent(QKeyEvent* event) {
    if (MoveByKey(*event) || ScrollByKey(*event)) return;
    const bool isMenuKey =
        event->key() == Qt::Key_Menu || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (isMenuKey || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (editing_.ChooseOptionItem()) Q_EMIT OptionsWanted();
        return;
    }
    QWidget::keyPressEvent(event);  // on to the form
}

bool SurfaceView::MoveByKey(const QKeyEvent& event) {
    const QPoint step = ArrowOf(event.key());
    const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
    if (step.isNull() || (held != Qt::NoModifier && held != Qt::ShiftModifier)) return false;
    if (!surface_.SelectedItem()) return true;
    if (held == Qt::NoModifier)
        editing_.MoveSelected(step.x(), step.y());
    else
        editing_.WidenSelected(step.x());
    SelectAndReveal(surface_.intSelected);
    return true;
}

bool SurfaceView::ScrollByKey(const QKeyEvent& event) {
    QPoint step;
    if (event.modifiers() & Qt::ControlModifier) step = ArrowOf(event.key());
    const int page = static_cast<int>(surface_.Geometry().Picture2.ScaleHeight) - 1;
    if (event.key() == Qt::Key_PageUp) step = {0, -page};
    if (event.key() == Qt::Key_PageDown) step = {0, page};
    if (step.isNull()) return false;
    surface_.ScrollTo(surface_.Geometry().HScroll1.Value + step.x(), surface_.Geometry().VScroll1.Value + step.y());
    return true;
}

bool SurfaceView::focusNextPrevChild(bool next) {
    const std::optional<std::int16_t> neighbour = editing_.Neighbour(next);
    if (!neighbour) return QWidget::focusNextPrevChild(next);
    SelectAndReveal(*neighbour);
    return true;
}

void SurfaceView::SelectAndReveal(int index) {
    editing_.Select(index);
    surface_.Reveal(index);
    update();
    Q_EMIT Selected();
    const Picture* const picture = surface_.Pic().Find(index);
    if (picture) ShowPointed({picture->box.left, picture->box.top});
}

void SurfaceView::ShowPointer() {
    setCursor(editing_.MousePointer() == Pointer::SizeWE ? Qt::SizeHorCursor : Qt::ArrowCursor);
}

/// While an item is dragged its own corner counts, not the place under the mouse.
void SurfaceView::ShowPointed(QPointF cells) {
    const QPointF scrolled(surface_.Geometry().HScroll1.Value, surface_.Geometry().VScroll1.Value);
    if (hold_ == Hold::Drag) {
        const QPointF corner = cells - QPointF(editing_.sngMouseX, editing_.sngMouseY);
        Q_EMIT Pointed(surface_.ItemOf(held_), corner + scrolled);
        return;
    }
    const Picture* const picture =
        hold_ == Hold::Sizing ? surface_.Pic().Find(held_) : surface_.Pic().At(cells.x(), cells.y());
    Q_EMIT Pointed(picture ? surface_.ItemOf(picture->Index) : nullptr, cells + scrolled);
}

}  // namespace quillform::designer
