#include "data/jet/RoomFinder.h"

#include <algorithm>

#include "data/jet/DataPageEdit.h"
#include "data/jet/UsageMap.h"

namespace quillform::jet {

namespace {

/// A page with less than this isn't worth looking at for another row.
std::size_t LeastRoom(const Layout& form) { return form.pageSize / 32; }

}  // namespace

bool RoomFinder::IsOurs(std::uint32_t page) const { return DataPage::IsDataPage(file_, page, owner_); }

std::uint32_t RoomFinder::FindPage(std::size_t length) {
    constexpr int mostTries = 4;
    if (!candidates_) candidates_ = ReadUsageMap(file_, freeMap_);
    for (int attempt = 0; attempt < mostTries && !candidates_->empty(); ++attempt) {
        const std::uint32_t page = candidates_->back();
        if (IsOurs(page) && HasRoom(file_, page, length)) return page;
        // It stays in the file's map if smaller rows may still find room.
        if (!IsOurs(page) || !HasRoom(file_, page, LeastRoom(file_.Form()))) RemoveFromMap(file_, freeMap_, page);
        candidates_->pop_back();
    }
    const std::uint32_t page = allocator_.Allocate();
    InitDataPage(file_, page, owner_);
    AddToMap(file_, allocator_, ownedMap_, page);
    AddToMap(file_, allocator_, freeMap_, page);
    candidates_->push_back(page);
    return page;
}

RowPointer RoomFinder::Add(Bytes row, std::uint16_t flags) {
    const std::uint32_t page = FindPage(row.size());
    return MakePointer(page, AddRow(file_, page, row, flags));
}

void RoomFinder::NoteRoom(std::uint32_t page) {
    if (!IsOurs(page) || !HasRoom(file_, page, LeastRoom(file_.Form()))) return;
    AddToMap(file_, allocator_, freeMap_, page);
    if (candidates_ && std::find(candidates_->begin(), candidates_->end(), page) == candidates_->end())
        candidates_->insert(candidates_->begin(), page);
}

}  // namespace quillform::jet
