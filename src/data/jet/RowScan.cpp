#include "data/jet/RowScan.h"

#include "data/jet/UsageMap.h"

namespace quillform::jet {

RowScan::RowScan(const PageFile& file, const TableDefinition& table, const RowForm& form)
    : file_(file),
      owner_(table.page),
      pages_(ReadUsageMapToTheFirstMissing(file, table.ownedMap)),
      decoder_(file, form) {}

bool RowScan::NextPage() {
    while (nextPage_ < pages_.size()) {
        const std::uint32_t page = pages_[nextPage_++];
        // Maps of real files name pages that went to another use since.
        if (!DataPage::IsDataPage(file_, page, owner_)) continue;
        page_ = DataPage(file_, page);
        return true;
    }
    page_ = {};
    return false;
}

bool RowScan::TakeSlot() {
    const std::uint16_t flags = page_.Entry(slot_) & slotDeleted;
    if (flags & slotTarget) return false;  // deleted, or seen through the slot that leads here
    if (flags == 0) {
        decoder_.SetRow(page_.Row(slot_));
        return true;
    }
    if (!FindRow(file_, Place(), moved_)) Damaged("a moved row was deleted at its new place only");
    decoder_.SetRow(moved_.bytes);
    return true;
}

bool RowScan::Next() {
    ++slot_;
    if (!page_.Pin()) {
        if (!NextPage()) return false;
        slot_ = 0;
    }
    while (true) {
        for (; slot_ < page_.SlotCount(); ++slot_)
            if (TakeSlot()) return true;
        if (!NextPage()) return false;
        slot_ = 0;
    }
}

bool RowFetch::Read(data::RowId id) {
    if (id < 0 || id > 0xFFFFFFFF) return false;
    const RowPointer place{static_cast<std::uint32_t>(id)};
    if (place.Page() >= file_.PageCount() || !DataPage::IsDataPage(file_, place.Page(), owner_)) return false;
    found_.page = DataPage(file_, place.Page());
    if (place.Slot() >= found_.page.SlotCount()) return false;
    if (found_.page.Entry(place.Slot()) & slotTarget) return false;
    if (!FindRow(file_, place, found_)) return false;
    decoder_.SetRow(found_.bytes);
    return true;
}

}  // namespace quillform::jet
