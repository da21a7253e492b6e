#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "designer/Pictures.h"
#include "designer/SurfaceGeometry.h"
#include "model/Layout.h"
#include "model/TextMeasure.h"

namespace quillform::designer {

/// The design surface without its window: the pictures of a layout's items behind a viewport that scrolls over the
/// page. The layout is the truth and the pictures follow it; the boxes that a run reads (`Layout::pictures`) are kept
/// beside them. Items are found by their Index, positions in Fields are from 1. Lengths are cells.
///
/// What acts on items stands beside it: ItemEditing (mouse and keys), ItemFormatting (looks), ItemPlacing (new ones).
class DesignSurface {
public:
    /// `layout` and `measure` outlive the surface.
    DesignSurface(Layout& layout, TextMeasure& measure);
    DesignSurface(const DesignSurface&) = delete;
    DesignSurface& operator=(const DesignSurface&) = delete;

    Layout& Report() { return layout_; }
    const Layout& Report() const { return layout_; }
    const SurfaceGeometry& Geometry() const { return geometry_; }
    const Pictures& Pic() const { return pictures_; }

    /// Called after anything that is seen on the surface has changed. May be empty.
    std::function<void()> onChange;

    // The whole layout

    /// No items, no pictures, new-layout settings, scrolled to the page's corner, nothing selected.
    void ClearLayout();
    /// The page and the pictures of a layout that was loaded: page size, scrolled to the page's corner, nothing
    /// selected.
    void ShowLayout();
    /// Pictures for all items anew, in the order of Fields.
    void ShowItems();

    // Page and scrolling

    void SetPageSize();
    /// Sets the scroll bars, each within its range, and moves the pictures.
    void ScrollTo(int column, int row);
    /// Moves the pictures to where the horizontal scroll bar wants them. An item whose picture is gone goes, too.
    void HScroll1_Change();
    void VScroll1_Change();
    /// Scrolls as little as brings the picture into the viewport, its left and upper edge first.
    void Reveal(int index);

    // Items and their pictures

    std::int16_t intSelected = 0;  ///< Index of the selected item; it stays when the item goes
    /// Position of the first item with this Index, 0 if there is none.
    int FindItem(int index) const;
    /// The same item itself, or null.
    clssFields* ItemOf(int index);
    const clssFields* ItemOf(int index) const;
    clssFields* SelectedItem() { return ItemOf(intSelected); }
    const clssFields* SelectedItem() const { return ItemOf(intSelected); }

    /// Lowest number from 1 that is the Index of no item, neither of the layout nor of `others`.
    std::int16_t LowestFreeIndex(const collFields* others = nullptr) const;
    /// A new picture on top of all, in "Times New Roman", black on white. It takes the item's place, size, font,
    /// colours and text by the calls below.
    const Picture& AddPicture(std::int16_t index);
    /// Passes over a picture that is gone.
    void RemovePicture(std::int16_t index);
    /// Removes the first item with this Index and its picture. False if there is no such item.
    bool RemoveItem(int index);
    /// Picture of the last item of Fields, or null.
    const Picture* LastPicture() const;

    // What a picture shows; each passes over a number that has no picture

    /// `left`, `top`: in the viewport, the item's place less the scroll values.
    void MovePicture(int index, double left, double top);
    void SizePicture(int index, double width, double height);
    void SetPictureFont(int index, const FontSpec& font);
    /// Colour numbers 0 to 15.
    void SetPictureColors(int index, int foreColor, int backColor);
    /// Clears the picture and draws the item's text, without outer blanks, where its alignment wants it.
    void DrawItemText(int index);
    /// The same for an item that isn't in Fields, or with another text in the item's place: `shown` is drawn, the
    /// item's own text is measured.
    void DrawText(const clssFields& item, std::string_view shown);

    // Measuring on a picture, in its font

    double TextWidth(const Picture& picture, std::string_view text) const;
    double TextHeight(const Picture& picture) const;
    /// Width of `Length` letters X, raised to whole cells.
    double WidthOfLength(const Picture& picture, int length) const;
    /// One row, or two if a letter is higher than one.
    double RowsOf(const Picture& picture) const;

private:
    void Changed() const {
        if (onChange) onChange();
    }
    void ShowItem(const clssFields& item);
    void GoToPageCorner();
    void Draw(Picture& picture, const clssFields& item, std::string_view shown);

    Layout& layout_;
    TextMeasure& measure_;
    SurfaceGeometry geometry_;
    Pictures pictures_;
};

}  // namespace quillform::designer
