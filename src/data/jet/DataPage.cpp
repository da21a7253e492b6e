#include "data/jet/DataPage.h"

namespace quillform::jet {

namespace {

std::string PageName(std::uint32_t page) { return "page " + std::to_string(page); }

}  // namespace

DataPage::DataPage(const PageFile& file, std::uint32_t page)
    : bytes_(file.Read(page)), number_(page), pageSize_(file.Form().pageSize) {
    const Layout& form = file.Form();
    if (bytes_[0] != dataPage) Damaged(PageName(page) + " should hold rows and doesn't");
    directory_ = form.dataCount + 2;
    count_ = GetU16(bytes_.get() + form.dataCount);
    if (directory_ + 2 * count_ > pageSize_) Damaged(PageName(page) + " claims more rows than fit");
}

bool DataPage::IsDataPage(const PageFile& file, std::uint32_t page, std::uint32_t owner) {
    const PageRef bytes = file.Read(page);
    return bytes[0] == dataPage && GetU32(bytes.get() + 4) == owner;
}

Bytes DataPage::Row(std::size_t slot) const {
    const std::size_t start = Entry(slot) & slotOffset;
    const std::size_t end = slot == 0 ? pageSize_ : Entry(slot - 1) & slotOffset;
    if (start > end || end > pageSize_ || start < directory_ + 2 * count_)
        Damaged("row " + std::to_string(slot) + " of " + PageName(number_) + " lies outside the page");
    return {bytes_.get() + start, end - start};
}

bool FindRow(const PageFile& file, RowPointer row, FoundRow& found) {
    constexpr int longestWay = 16;  // files have one step; a circle must end
    for (int step = 0; step < longestWay; ++step) {
        if (found.page.Number() != row.Page() || !found.page.Pin()) found.page = DataPage(file, row.Page());
        if (row.Slot() >= found.page.SlotCount()) {
            if (step == 0) return false;
            Damaged("a moved row isn't where " + PageName(row.Page()) + " should have it");
        }
        const std::uint16_t entry = found.page.Entry(row.Slot());
        const bool isMoved = (entry & slotDeleted) == slotMoved;
        if ((entry & slotDeleted) == slotDeleted) return false;
        found.bytes = found.page.Row(row.Slot());
        found.place = row;
        if (!isMoved) return true;
        if (found.bytes.size() < 4) Damaged("the place of a moved row on " + PageName(row.Page()) + " is cut off");
        row.value = GetU32(found.bytes.data());
    }
    Damaged("a moved row leads in a circle");
}

}  // namespace quillform::jet
