#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "designer/DesignSurface.h"

namespace quillform::designer {

/// What counts as a collision of a new picture with one that is there. Upper bounds never count.
struct OverlapRule {
    bool boundsCount = false;  ///< an edge exactly on the other's left or upper edge collides
    bool endWraps = false;     ///< reaching the last column wraps, not only passing it
};
inline constexpr OverlapRule dataFieldOverlap{.boundsCount = false, .endWraps = false};
inline constexpr OverlapRule textOverlap{.boundsCount = true, .endWraps = true};

/// Moves the picture of a new item right of each picture that it collides with, and to the start of the next row where
/// the page ends, until it collides with none. `others` are the pictures to look at, the new one may be among them.
/// `onWrap`, if given, is called for each move to the next row.
void AvoidOverlap(DesignSurface& surface, std::int16_t newIndex, std::span<const std::int16_t> others, OverlapRule rule,
                  const std::function<void()>& onWrap = {});

/// The page place that an item has from where its picture stands: into Left and Top.
void TakePlaceFromPicture(const DesignSurface& surface, clssFields& item);

}  // namespace quillform::designer
