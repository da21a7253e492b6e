#pragma once

#include <QBasicTimer>
#include <QWidget>
#include <optional>

#include "designer/DesignSurface.h"
#include "designer/ItemEditing.h"
#include "designer/ScreenFonts.h"

namespace quillform::designer {

/// The viewport `Picture2` on the screen: paints grid and pictures, and hands mouse and keys to ItemEditing. Its size
/// decides the scale: the viewport's columns are as wide as fit into it.
///
/// Keys: Tab and Shift+Tab select the next and the previous item and leave the surface at the last one; arrows move the
/// selected item by a cell, with Shift they change its width, with Ctrl they scroll; Page Up and Page Down scroll by a
/// viewport; Enter or the menu key shows the item's options. The wheel scrolls, also during a drag; with Shift
/// sideways. An item that is held at an edge or beyond it scrolls to what lies there.
class SurfaceView : public QWidget {
    Q_OBJECT

public:
    SurfaceView(DesignSurface& surface, ScreenFonts& fonts, QWidget* parent = nullptr);

    ItemEditing& Editing() { return editing_; }
    /// Logical pixels of one cell.
    QSizeF CellSize() const;

Q_SIGNALS:
    /// An item was selected by a press or by a key.
    void Selected();
    /// The options of the item at `intOptionItem` are wanted.
    void OptionsWanted();
    /// The mouse is over an item's picture (null: over none) at a point of the page, in cells; or it has left.
    void Pointed(const clssFields* item, std::optional<QPointF> place);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    enum class Hold { None, Drag, Sizing };  // what the left button holds

    void Picture2_Paint(QPainter& painter) const;
    void PaintPicture(QPainter& painter, const Picture& picture);
    void PaintSelection(QPainter& painter) const;
    void PaintDragOutline(QPainter& painter) const;
    QRectF ToPixels(const Box& cells) const;
    double Sharp(double pixels) const;
    QPointF ToCells(QPointF pixels) const;

    void Drop(QPointF cells);
    QPoint EdgeStep() const;
    void WatchEdge();
    void ShowPointer();
    void ShowPointed(QPointF cells);
    void SelectAndReveal(int index);
    bool MoveByKey(const QKeyEvent& event);
    bool ScrollByKey(const QKeyEvent& event);

    DesignSurface& surface_;
    ScreenFonts& fonts_;
    ItemEditing editing_;
    Hold hold_ = Hold::None;
    int held_ = 0;        // picture that the mouse was pressed on
    QPointF mouse_;       // in cells of the viewport
    QBasicTimer atEdge_;  // runs while a dragged item is held at an edge
    QPoint wheelSteps_;   // what the wheel has turned beyond whole cells, in eighths of a degree
};

}  // namespace quillform::designer
