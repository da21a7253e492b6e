#include "data/jet/PageAllocator.h"

#include <algorithm>

#include "data/jet/UsageMap.h"

namespace quillform::jet {

void PageAllocator::LoadFreePages() {
    free_ = ReadFreePages(file_);
    std::erase_if(*free_, [](std::uint32_t page) { return page <= relationsTable; });  // whatever a broken map says
    std::reverse(free_->begin(), free_->end());
}

std::uint32_t PageAllocator::Allocate() {
    if (!free_) LoadFreePages();
    std::uint32_t page = 0;
    if (free_->empty()) {
        page = file_.Append();
    } else {
        page = free_->back();
        free_->pop_back();
        std::memset(file_.Modify(page), 0, file_.Form().pageSize);
    }
    MarkUsed(file_, page);
    return page;
}

void PageAllocator::Free(std::uint32_t page) {
    if (!free_) LoadFreePages();
    std::memset(file_.Modify(page), 0, file_.Form().pageSize);
    MarkFree(file_, page);
    free_->push_back(page);
}

}  // namespace quillform::jet
