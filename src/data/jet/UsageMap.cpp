#include "data/jet/UsageMap.h"

#include <algorithm>

#include "data/jet/DataPage.h"
#include "data/jet/PageAllocator.h"

namespace quillform::jet {

namespace {

constexpr std::size_t bitmapStart = 4;  // of a bitmap page
constexpr std::size_t inRowStart = 5;   // of the bitmap in a row, behind the kind and the first page
constexpr std::size_t listStart = 1;    // of the list of bitmap pages, behind the kind
constexpr std::uint8_t listKind = 1;    // of a row; 0 is a bitmap in the row
constexpr RowPointer freeMap{globalMap};
constexpr std::uint32_t noSuchPage = 0xFFFFFFFF;  // for numbers that only a damaged map can have

/// Appends the pages of a bitmap up to the first one behind the file, and that one, too. False if there is one.
bool AppendBits(Bytes bitmap, std::uint64_t first, std::uint32_t pageCount, std::vector<std::uint32_t>& pages) {
    for (std::size_t i = 0; i < bitmap.size(); ++i) {
        if (bitmap[i] == 0) continue;
        for (unsigned bit = 0; bit < 8; ++bit) {
            const std::uint64_t page = first + 8 * i + bit;
            if (!(bitmap[i] >> bit & 1)) continue;
            pages.push_back(static_cast<std::uint32_t>(std::min<std::uint64_t>(page, noSuchPage)));
            if (page >= pageCount) return false;
        }
    }
    return true;
}

void SetBit(std::uint8_t* bitmap, std::size_t bit, bool value) {
    const auto mask = static_cast<std::uint8_t>(1u << bit % 8);
    bitmap[bit / 8] = static_cast<std::uint8_t>(value ? bitmap[bit / 8] | mask : bitmap[bit / 8] & ~mask);
}

/// One usage map, for reading or for changing in place.
class Map {
public:
    Map(const PageFile& file, RowPointer map) : file_(file) {
        if (!FindRow(file, map, found_) || found_.bytes.size() < inRowStart) Damaged("a list of pages is missing");
        if (Row()[0] > listKind) Damaged("a list of pages has an unknown form");
    }

    bool IsList() const { return Row()[0] == listKind; }
    Bytes Row() const { return found_.bytes; }
    std::uint32_t First() const { return GetU32(&Row()[1]); }
    std::size_t InRowBits() const { return (Row().size() - inRowStart) * 8; }
    bool CoversInRow(std::uint32_t page) const { return page >= First() && page - First() < InRowBits(); }
    std::size_t BitsPerPage() const { return (file_.Form().pageSize - bitmapStart) * 8; }
    std::size_t ListSize() const { return (Row().size() - listStart) / 4; }
    std::uint32_t ListEntry(std::size_t entry) const { return GetU32(&Row()[listStart + 4 * entry]); }

    PageRef BitmapPage(std::uint32_t page) const {
        PageRef bytes = file_.Read(page);
        if (bytes[0] != bitmapPage)
            Damaged("page " + std::to_string(page) + " should hold a list of pages and doesn't");
        return bytes;
    }

    /// The row's bytes for changing. The map must be found again to be read after that.
    std::uint8_t* Change(PageFile& file) const {
        const auto offset = static_cast<std::size_t>(Row().data() - found_.page.Pin().get());
        const std::uint32_t page = found_.place.Page();
        found_.page = {};  // or the page would be copied for the sake of this very reference
        return file.Modify(page) + offset;
    }

private:
    const PageFile& file_;
    mutable FoundRow found_{};
};

std::uint32_t NewBitmapPage(PageFile& file, std::uint32_t page, std::uint8_t fill) {
    std::uint8_t* bytes = file.Modify(page);
    std::memset(bytes, fill, file.Form().pageSize);
    PutU32(bytes, 0x0105);
    return page;
}

/// Turns the bitmap in the row into a list without entries.
void MakeList(PageFile& file, RowPointer map) {
    const Map old(file, map);
    const std::size_t size = old.Row().size();
    std::uint8_t* row = old.Change(file);
    std::memset(row, 0, size);
    row[0] = listKind;
}

/// Sets a bit in a list form. `newPage` gives the number of a page for a bitmap where one is missing.
template <typename NewPage>
void SetInList(PageFile& file, RowPointer map, std::uint32_t page, bool value, NewPage newPage) {
    std::uint32_t bitmap = 0;
    std::size_t bit = 0;
    {
        const Map list(file, map);
        const std::size_t entry = page / list.BitsPerPage();
        bit = page % list.BitsPerPage();
        if (entry >= list.ListSize()) Damaged("a list of pages can't grow to the size of the file");
        bitmap = list.ListEntry(entry);
        if (bitmap == 0) {
            bitmap = newPage();
            if (bitmap == 0) return;
            PutU32(Map(file, map).Change(file) + listStart + 4 * entry, bitmap);
        } else {
            list.BitmapPage(bitmap);
        }
    }
    SetBit(file.Modify(bitmap) + bitmapStart, bit, value);
}

/// Whether all pages of the map and the new one can be covered by moving the start; if so, does it.
bool MoveStart(PageFile& file, RowPointer map, const std::vector<std::uint32_t>& pages, std::uint32_t page) {
    const Map old(file, map);
    const std::uint32_t lowest = pages.empty() ? page : std::min(page, pages.front());
    const std::uint32_t highest = pages.empty() ? page : std::max(page, pages.back());
    const std::uint32_t first = lowest / 8 * 8;
    if (highest - first >= old.InRowBits()) return false;
    const std::size_t size = old.Row().size();
    std::uint8_t* row = old.Change(file);
    std::memset(row, 0, size);
    PutU32(row + 1, first);
    for (const std::uint32_t member : pages) SetBit(row + inRowStart, member - first, true);
    SetBit(row + inRowStart, page - first, true);
    return true;
}

}  // namespace

std::vector<std::uint32_t> ReadUsageMap(const PageFile& file, RowPointer map) {
    std::vector<std::uint32_t> pages = ReadUsageMapToTheFirstMissing(file, map);
    if (!pages.empty() && pages.back() >= file.PageCount()) pages.pop_back();
    return pages;
}

std::vector<std::uint32_t> ReadUsageMapToTheFirstMissing(const PageFile& file, RowPointer map) {
    std::vector<std::uint32_t> pages;
    if (!map) return pages;
    const Map found(file, map);
    if (!found.IsList()) {
        AppendBits(found.Row().subspan(inRowStart), found.First(), file.PageCount(), pages);
        return pages;
    }
    const std::size_t covered = found.BitsPerPage();
    for (std::size_t k = 0; k < found.ListSize(); ++k) {
        if (found.ListEntry(k) == 0) continue;
        const PageRef bytes = found.BitmapPage(found.ListEntry(k));
        if (!AppendBits({bytes.get() + bitmapStart, covered / 8}, k * covered, file.PageCount(), pages)) break;
    }
    return pages;
}

void AddToMap(PageFile& file, PageAllocator& allocator, RowPointer map, std::uint32_t page) {
    if (!map) return;
    bool isList = false;
    {
        const Map found(file, map);
        isList = found.IsList();
        if (!isList && found.CoversInRow(page)) {
            const std::uint32_t first = found.First();
            SetBit(found.Change(file) + inRowStart, page - first, true);
            return;
        }
    }
    const auto newPage = [&] { return NewBitmapPage(file, allocator.Allocate(), 0); };
    if (!isList) {
        const std::vector<std::uint32_t> pages = ReadUsageMap(file, map);
        if (MoveStart(file, map, pages, page)) return;
        MakeList(file, map);
        for (const std::uint32_t member : pages) SetInList(file, map, member, true, newPage);
    }
    SetInList(file, map, page, true, newPage);
}

void RemoveFromMap(PageFile& file, RowPointer map, std::uint32_t page) {
    if (!map) return;
    {
        const Map found(file, map);
        if (!found.IsList()) {
            const std::uint32_t first = found.First();
            if (found.CoversInRow(page)) SetBit(found.Change(file) + inRowStart, page - first, false);
            return;
        }
    }
    SetInList(file, map, page, false, [] { return 0u; });
}

std::vector<std::uint32_t> ReadFreePages(const PageFile& file) {
    std::vector<std::uint32_t> pages = ReadUsageMap(file, freeMap);
    const Map map(file, freeMap);
    const auto appendRange = [&](std::uint64_t from, std::uint64_t to) {
        for (std::uint64_t page = from; page < std::min<std::uint64_t>(to, file.PageCount()); ++page)
            pages.push_back(static_cast<std::uint32_t>(page));
    };
    if (!map.IsList()) {
        appendRange(std::uint64_t{map.First()} + map.InRowBits(), file.PageCount());
        return pages;
    }
    for (std::size_t k = 0; k < map.ListSize(); ++k)
        if (map.ListEntry(k) == 0) appendRange(k * map.BitsPerPage(), (k + 1) * map.BitsPerPage());
    std::sort(pages.begin(), pages.end());
    return pages;
}

void MarkUsed(PageFile& file, std::uint32_t page) {
    std::vector<std::uint32_t> ownPages;
    const auto newPage = [&] {
        ownPages.push_back(NewBitmapPage(file, file.Append(), 0xFF));
        return ownPages.back();
    };
    {
        const Map map(file, freeMap);
        if (!map.IsList() && map.CoversInRow(page)) {
            const std::uint32_t first = map.First();
            SetBit(map.Change(file) + inRowStart, page - first, false);
            return;
        }
        if (!map.IsList()) {
            // In the list form the pages that are used must be cleared in bitmaps that begin all free.
            const std::vector<std::uint32_t> free = ReadUsageMap(file, freeMap);
            const std::uint64_t end = std::uint64_t{map.First()} + map.InRowBits();
            MakeList(file, freeMap);
            for (std::uint32_t used = 0; used < std::min<std::uint64_t>(end, file.PageCount()); ++used)
                if (!std::binary_search(free.begin(), free.end(), used)) SetInList(file, freeMap, used, false, newPage);
        }
    }
    SetInList(file, freeMap, page, false, newPage);
    for (std::size_t i = 0; i < ownPages.size(); ++i) SetInList(file, freeMap, ownPages[i], false, newPage);
}

void MarkFree(PageFile& file, std::uint32_t page) {
    {
        const Map map(file, freeMap);
        if (!map.IsList()) {
            const std::uint32_t first = map.First();
            if (map.CoversInRow(page)) SetBit(map.Change(file) + inRowStart, page - first, true);
            return;
        }
    }
    SetInList(file, freeMap, page, true, [] { return 0u; });
}

}  // namespace quillform::jet
