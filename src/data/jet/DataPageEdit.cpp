#include "data/jet/DataPageEdit.h"

#include <algorithm>

namespace quillform::jet {

namespace {

constexpr std::size_t mostSlots = 255;
constexpr std::size_t slotBytes = 2;

/// Where the row of the last slot begins; the page end if there are none.
std::size_t LowestRow(const std::uint8_t* bytes, const Layout& form) {
    const std::size_t count = GetU16(bytes + form.dataCount);
    if (count == 0) return form.pageSize;
    return GetU16(bytes + form.dataCount + slotBytes * count) & slotOffset;
}

std::size_t FreeBytes(const std::uint8_t* bytes, const Layout& form) {
    const std::size_t directoryEnd = form.dataCount + 2 + slotBytes * GetU16(bytes + form.dataCount);
    const std::size_t lowest = LowestRow(bytes, form);
    return lowest > directoryEnd && lowest <= form.pageSize ? lowest - directoryEnd : 0;
}

}  // namespace

void InitDataPage(PageFile& file, std::uint32_t page, std::uint32_t owner) {
    const Layout& form = file.Form();
    std::uint8_t* bytes = file.Modify(page);
    std::memset(bytes, 0, form.pageSize);
    bytes[0] = dataPage;
    bytes[1] = 1;
    PutU16(bytes + 2, form.pageSize - form.dataCount - 2);
    PutU32(bytes + 4, owner);
}

std::size_t LargestRow(const Layout& form) { return form.pageSize - form.dataCount - 2 - slotBytes; }

bool HasRoom(const PageFile& file, std::uint32_t page, std::size_t length) {
    const PageRef bytes = file.Read(page);
    return GetU16(bytes.get() + file.Form().dataCount) < mostSlots &&
           FreeBytes(bytes.get(), file.Form()) >= length + slotBytes;
}

std::size_t AddRow(PageFile& file, std::uint32_t page, Bytes row, std::uint16_t flags) {
    const Layout& form = file.Form();
    std::uint8_t* bytes = file.Modify(page);
    const std::size_t slot = GetU16(bytes + form.dataCount);
    const std::size_t start = LowestRow(bytes, form) - row.size();
    if (!row.empty()) std::memcpy(bytes + start, row.data(), row.size());
    PutU16(bytes + form.dataCount, slot + 1);
    PutU16(bytes + form.dataCount + 2 + slotBytes * slot, start | flags);
    PutU16(bytes + 2, FreeBytes(bytes, form));
    return slot;
}

bool ReplaceRow(PageFile& file, RowPointer place, Bytes row, std::uint16_t flags) {
    const Layout& form = file.Form();
    std::size_t oldStart = 0, oldSize = 0, lowest = 0, count = 0;
    {
        const DataPage page(file, place.Page());
        if (place.Slot() >= page.SlotCount()) Damaged("a row that is to be changed is missing");
        for (std::size_t slot = place.Slot(); slot < page.SlotCount(); ++slot) page.Row(slot);  // checks them
        const Bytes old = page.Row(place.Slot());
        oldStart = static_cast<std::size_t>(old.data() - page.Pin().get());
        oldSize = old.size();
        count = page.SlotCount();
        lowest = page.Entry(count - 1) & slotOffset;
        if (row.size() > oldSize && row.size() - oldSize > FreeBytes(page.Pin().get(), form)) return false;
    }
    std::uint8_t* bytes = file.Modify(place.Page());
    const std::size_t newStart = oldStart + oldSize - row.size();
    std::memmove(bytes + lowest + newStart - oldStart, bytes + lowest, oldStart - lowest);
    if (!row.empty()) std::memcpy(bytes + newStart, row.data(), row.size());
    for (std::size_t slot = place.Slot(); slot < count; ++slot) {
        std::uint8_t* entry = bytes + form.dataCount + 2 + slotBytes * slot;
        const std::size_t old = GetU16(entry);
        const std::size_t kept = slot == place.Slot() ? flags : old & ~std::size_t{slotOffset};
        PutU16(entry, ((old & slotOffset) + newStart - oldStart) | kept);
    }
    PutU16(bytes + 2, FreeBytes(bytes, form));
    return true;
}

void DeleteRow(PageFile& file, RowPointer place) { ReplaceRow(file, place, {}, slotDeleted); }

}  // namespace quillform::jet
