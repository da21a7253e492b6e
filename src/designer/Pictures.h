#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "designer/SurfaceGeometry.h"
#include "model/TextMeasure.h"

namespace quillform::designer {

/// What shows one item on the surface. Its place is that of the item less the scroll values.
struct Picture {
    std::int16_t Index = 0;  ///< of the item; an item and its picture have the same
    Box box{0, 0, 1, 210.0 / 240};
    int foreColor = 0;   ///< colour number, 0 to 15
    int backColor = 15;  ///< colour number, 0 to 15
    FontSpec font{.name = "Times New Roman"};
    FontId fontId{};      ///< the font in the surface's measure
    std::string text;     ///< drawn at the upper edge, cut at the right one
    double CurrentX = 0;  ///< where the text begins, in cells from the left edge
};

/// The pictures of a layout by their Index, in the order of creation: a later one lies over an earlier one.
class Pictures {
public:
    /// A new picture like the template: at the upper left, empty, on top of all. One that is there under the number
    /// gives way to it.
    Picture& Load(std::int16_t index);
    /// False if there is none.
    bool Unload(std::int16_t index);
    void Clear();

    /// Null if there is none. Good until the picture is unloaded.
    Picture* Find(int index);
    const Picture* Find(int index) const;
    /// The uppermost picture at a point of the viewport, or null.
    const Picture* At(double x, double y) const;

    const std::vector<std::unique_ptr<Picture>>& FromBelow() const { return fromBelow_; }

private:
    std::vector<std::unique_ptr<Picture>> fromBelow_;
    std::unordered_map<int, Picture*> byIndex_;
};

}  // namespace quillform::designer
