#include "designer/Pictures.h"

#include <algorithm>

namespace quillform::designer {

Picture& Pictures::Load(std::int16_t index) {
    Unload(index);
    Picture& picture = *fromBelow_.emplace_back(std::make_unique<Picture>());
    picture.Index = index;
    byIndex_[index] = &picture;
    return picture;
}

bool Pictures::Unload(std::int16_t index) {
    if (byIndex_.erase(index) == 0) return false;
    std::erase_if(fromBelow_, [index](const auto& picture) { return picture->Index == index; });
    return true;
}

void Pictures::Clear() {
    byIndex_.clear();
    fromBelow_.clear();
}

Picture* Pictures::Find(int index) {
    const auto found = byIndex_.find(index);
    return found == byIndex_.end() ? nullptr : found->second;
}

const Picture* Pictures::Find(int index) const {
    const auto found = byIndex_.find(index);
    return found == byIndex_.end() ? nullptr : found->second;
}

const Picture* Pictures::At(double x, double y) const {
    const auto found = std::find_if(fromBelow_.rbegin(), fromBelow_.rend(),
                                    [x, y](const auto& picture) { return picture->box.Contains(x, y); });
    return found == fromBelow_.rend() ? nullptr : found->get();
}

}  // namespace quillform::designer
