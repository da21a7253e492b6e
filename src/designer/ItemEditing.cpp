#include "designer/ItemEditing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

#include "designer/ItemPlacing.h"
#include "model/DesignGrid.h"
#include "platform/Numbers.h"

namespace quillform::designer {

namespace {

constexpr double sizingEdge = 0.9;  // of a picture's width
constexpr int lastCodeWithOptions = 9000;

/// Whole cells; a fraction of more than a half goes up, a half down. Left of the page the same points snap as on it.
double Snapped(double cells, double gridStep) {
    const double whole = std::floor(cells);
    return cells - whole > 0.5 ? whole + gridStep : whole;
}

bool HasOptions(const clssFields& item) {
    return item.Code >= ItemCode::FirstCatalog && item.Code <= lastCodeWithOptions;
}

}  // namespace

void ItemEditing::Pic_MouseMove(int index, MouseButton button, double x) {
    const Picture* const picture = surface_.Pic().Find(index);
    if (!picture) return;
    if (x > sizingEdge * picture->box.width)
        pointer_ = Pointer::SizeWE;
    else if (button != MouseButton::Left)
        pointer_ = Pointer::Default;
}

PressResult ItemEditing::Pic_MouseDown(int index, MouseButton button, double x, double y) {
    isSizing_ = false;
    Select(index);
    if (!surface_.SelectedItem()) return PressResult::Nothing;
    if (pointer_ == Pointer::Default && button != MouseButton::Left)
        return ChooseOptionItem() ? PressResult::Options : PressResult::Nothing;
    if (button != MouseButton::Left) return PressResult::Nothing;
    isSizing_ = pointer_ == Pointer::SizeWE;
    sngMouseX = static_cast<float>(x);
    sngMouseY = static_cast<float>(y);
    return isSizing_ ? PressResult::Sizing : PressResult::Drag;
}

void ItemEditing::Pic_MouseUp(int index, double x) {
    // Another button that goes up over the edge ends no sizing, since it began none.
    if (pointer_ == Pointer::Default || !isSizing_) return;
    isSizing_ = false;
    Select(index);
    SizeTo(index, std::floor(x));
}

Box ItemEditing::DropBox(int source, double x, double y) const {
    const Picture* const picture = surface_.Pic().Find(source);
    if (!picture) return {};
    return {Snapped(x - static_cast<double>(sngMouseX), intGridX),
            Snapped(y - static_cast<double>(sngMouseY), intGridY), picture->box.width, picture->box.height};
}

void ItemEditing::Picture2_DragDrop(int source, double x, double y) {
    const Box dropped = DropBox(source, x, y);
    surface_.MovePicture(source, dropped.left, dropped.top);
    Select(source);
    StorePlace(source);
}

void ItemEditing::Pic_DragDrop(int index, int source, double x, double y) {
    if (const Picture* const target = surface_.Pic().Find(index))
        Picture2_DragDrop(source, target->box.left + x, target->box.top + y);
}

void ItemEditing::MoveSelected(int columns, int rows) {
    const Picture* const picture = surface_.Pic().Find(surface_.intSelected);
    const clssFields* const item = surface_.SelectedItem();
    if (!item || !picture) return;
    const SurfaceGeometry& geometry = surface_.Geometry();
    const double left = columns == 0 ? picture->box.left : std::round(picture->box.left) + columns;
    const double top = rows == 0 ? picture->box.top : std::round(picture->box.top) + rows;
    surface_.MovePicture(surface_.intSelected, std::max<double>(left, -geometry.HScroll1.Value),
                         std::max<double>(top, -geometry.VScroll1.Value));
    StorePlace(surface_.intSelected);
}

void ItemEditing::WidenSelected(int columns) {
    if (const Picture* const picture = surface_.Pic().Find(surface_.intSelected))
        SizeTo(surface_.intSelected, std::floor(picture->box.width) + columns);
}

std::optional<std::int16_t> ItemEditing::Neighbour(bool forward) const {
    std::vector<const clssFields*> order;
    for (const clssFields& item : surface_.Report().Fields) order.push_back(&item);
    std::stable_sort(order.begin(), order.end(), [](const clssFields* one, const clssFields* other) {
        return std::tie(one->Top, one->Left) < std::tie(other->Top, other->Left);
    });
    if (!forward) std::reverse(order.begin(), order.end());
    auto next = std::find(order.begin(), order.end(), surface_.SelectedItem());
    next = next == order.end() ? order.begin() : next + 1;
    if (next == order.end()) return std::nullopt;
    return (*next)->Index;
}

bool ItemEditing::ChooseOptionItem() {
    const int position = surface_.FindItem(surface_.intSelected);
    if (position == 0 || !HasOptions(surface_.Report().Fields.Item(position))) return false;
    surface_.Report().intOptionItem = static_cast<std::int16_t>(position);
    return true;
}

void ItemEditing::SizeTo(int index, double width) {
    const Picture* const picture = surface_.Pic().Find(index);
    if (!picture) return;
    const double most = std::numeric_limits<std::int16_t>::max();
    surface_.SizePicture(index, std::clamp(width, 1.0, most), picture->box.height);
    if (clssFields* const item = surface_.ItemOf(index)) item->Length = CInt(picture->box.width / intGridX);
}

void ItemEditing::StorePlace(int index) {
    if (clssFields* const item = surface_.ItemOf(index)) TakePlaceFromPicture(surface_, *item);
}

}  // namespace quillform::designer
