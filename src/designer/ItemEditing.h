#pragma once

#include <cstdint>
#include <optional>

#include "designer/DesignSurface.h"

namespace quillform::designer {

/// The two pointers that decide what a press means.
enum class Pointer { Default = 0, SizeWE = 9 };

enum class MouseButton { None = 0, Left = 1, Right = 2, Middle = 4 };

/// What a press on a picture has begun.
enum class PressResult {
    Nothing,
    Drag,     ///< the picture is being dragged: its outline follows the mouse until the drop
    Sizing,   ///< the right edge is being dragged
    Options,  ///< the options of the item at `intOptionItem` are to be shown
};

/// What mouse and keyboard do with the items of a surface. X and Y are in cells from the picture's corner, or from the
/// viewport's where said so.
class ItemEditing {
public:
    explicit ItemEditing(DesignSurface& surface) : surface_(surface) {}

    Pointer MousePointer() const { return pointer_; }

    /// Over the last tenth of a picture the pointer becomes the sizing arrow; elsewhere the default one, unless the
    /// left button is down, so that a sizing drag keeps its arrow.
    void Pic_MouseMove(int index, MouseButton button, double x);
    /// For the viewport and the form around it: the arrow goes.
    void Picture2_MouseMove() { pointer_ = Pointer::Default; }

    /// Selects the item. The default pointer then drags with the left button and shows the options of data items and
    /// page numbers with any other; the arrow sizes with the left button.
    PressResult Pic_MouseDown(int index, MouseButton button, double x, double y);
    /// Ends a sizing drag at X: whole cells, at least one, so that no item gets lost. A drag ends by its drop.
    void Pic_MouseUp(int index, double x);

    /// Where a drop at a point of the viewport would leave a dragged picture, in the viewport.
    Box DropBox(int source, double x, double y) const;
    /// Drops a dragged picture on the viewport at a point of it, on whole cells; halves go to the left and up. There is
    /// no bound: an item may be dragged off the page, and comes back by the keys.
    void Picture2_DragDrop(int source, double x, double y);
    /// Drops it on another picture, or on itself, at a point of that one.
    void Pic_DragDrop(int index, int source, double x, double y);

    /// The Delete key: the selected item and its picture go. False if there was none.
    bool DeleteSelected() { return surface_.RemoveItem(surface_.intSelected); }

    // For the keyboard

    void Select(int index) { surface_.intSelected = static_cast<std::int16_t>(index); }
    /// Moves the selected item by whole cells; it stays right of and below the page's corner.
    void MoveSelected(int columns, int rows);
    /// Widens or narrows the selected item to whole cells, at least one.
    void WidenSelected(int columns);
    /// Index of the item after or before the selected one, row by row from the left; the first or last one if none is
    /// selected. Empty at the end.
    std::optional<std::int16_t> Neighbour(bool forward) const;
    /// Sets `intOptionItem` if the selected item has options. Free texts, dates, times and the record count have none.
    bool ChooseOptionItem();

    float sngMouseX = 0;  ///< where the mouse was pressed, the grab point of a drag
    float sngMouseY = 0;

private:
    void SizeTo(int index, double width);
    void StorePlace(int index);

    DesignSurface& surface_;
    Pointer pointer_ = Pointer::Default;
    bool isSizing_ = false;
};

}  // namespace quillform::designer
