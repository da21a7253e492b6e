#include "designer/ItemPlacing.h"

#include "model/DesignGrid.h"

namespace quillform::designer {

namespace {

bool Inside(double edge, double from, double to, OverlapRule rule) {
    return edge < to && (edge > from || (rule.boundsCount && edge == from));
}

bool Collide(const Box& added, const Box& other, OverlapRule rule) {
    const bool inRows =
        Inside(added.top, other.top, other.Bottom(), rule) || Inside(added.Bottom(), other.top, other.Bottom(), rule);
    const bool inColumns =
        Inside(added.Right(), other.left, other.Right(), rule) || Inside(added.left, other.left, other.Right(), rule);
    return inRows && inColumns;
}

bool PassesEnd(const DesignSurface& surface, const Box& box, OverlapRule rule) {
    const double end = surface.Geometry().LastColumn();
    return rule.endWraps ? box.Right() >= end : box.Right() > end;
}

}  // namespace

void AvoidOverlap(DesignSurface& surface, std::int16_t newIndex, std::span<const std::int16_t> others, OverlapRule rule,
                  const std::function<void()>& onWrap) {
    const Picture* const added = surface.Pic().Find(newIndex);
    if (!added) return;
    for (bool moved = true; moved;) {
        moved = false;
        for (const std::int16_t index : others) {
            const Picture* const other = surface.Pic().Find(index);
            if (index == newIndex || !other || !Collide(added->box, other->box, rule)) continue;
            moved = true;
            surface.MovePicture(newIndex, other->box.Right() + intGridX, added->box.top);
            if (!PassesEnd(surface, added->box, rule)) continue;
            surface.MovePicture(newIndex, -surface.Geometry().HScroll1.Value, added->box.top + intGridY);
            if (onWrap) onWrap();
        }
    }
}

void TakePlaceFromPicture(const DesignSurface& surface, clssFields& item) {
    const Picture* const picture = surface.Pic().Find(item.Index);
    if (!picture) return;
    item.Left = static_cast<float>(picture->box.left + surface.Geometry().HScroll1.Value);
    item.Top = static_cast<float>(picture->box.top + surface.Geometry().VScroll1.Value);
}

}  // namespace quillform::designer
