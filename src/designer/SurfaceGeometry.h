#pragma once

#include "model/ReportSettings.h"

namespace quillform::designer {

// Every length of the surface is in cells: 120 twips wide, 240 twips high.

/// Place and size in cells.
struct Box {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    double Right() const { return left + width; }
    double Bottom() const { return top + height; }
    /// Left and upper edge belong to the box, right and lower edge don't.
    bool Contains(double x, double y) const { return x >= left && x < Right() && y >= top && y < Bottom(); }
    friend bool operator==(const Box&, const Box&) = default;
};

/// The part of the page that is seen, on the main form. Pictures stand in it by its own inner measure.
struct Viewport {
    Box box{1, 3, 76, 20};
    double ScaleWidth = 75.5;
    double ScaleHeight = 20;
};

/// Steps of one cell from 0 to Max.
struct ScrollBar {
    Box box;
    int Value = 0;
    int Max = 0;
};

/// How big the viewport is and how far it scrolls over the page.
struct SurfaceGeometry {
    Viewport Picture2;
    ScrollBar HScroll1{{1, 23, 76, 285.0 / 240}, 0, 0};
    ScrollBar VScroll1{{77, 3, 285.0 / 120, 20}, 0, 0};

    /// Viewport and scroll ranges from paper and orientation, or from the label's size. A paper number that isn't known
    /// leaves the ranges as they are. A page smaller than the viewport makes that smaller; one cell of it stays in any
    /// case. A value beyond the new range falls back to its end.
    void SetPageSize(const ReportSettings& settings);

    /// The farthest column that a picture of a new item may reach.
    double LastColumn() const { return Picture2.ScaleWidth + HScroll1.Max; }
};

}  // namespace quillform::designer
