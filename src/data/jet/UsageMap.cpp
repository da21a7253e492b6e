#include "data/jet/UsageMap.h"

#include "data/jet/DataPage.h"

namespace quillform::jet {

namespace {

constexpr std::size_t bitmapStart = 4;  // of a bitmap page

void AppendBits(Bytes bitmap, std::uint64_t first, std::uint32_t pageCount, std::vector<std::uint32_t>& pages) {
    for (std::size_t i = 0; i < bitmap.size(); ++i) {
        if (bitmap[i] == 0) continue;
        for (unsigned bit = 0; bit < 8; ++bit) {
            const std::uint64_t page = first + 8 * i + bit;
            if ((bitmap[i] >> bit & 1) && page < pageCount) pages.push_back(static_cast<std::uint32_t>(page));
        }
    }
}

}  // namespace

std::vector<std::uint32_t> ReadUsageMap(const PageFile& file, RowPointer map) {
    std::vector<std::uint32_t> pages;
    if (!map) return pages;
    FoundRow found;
    if (!FindRow(file, map, found) || found.bytes.size() < 5) Damaged("a list of pages is missing");
    const Bytes row = found.bytes;
    if (row[0] == 0) {
        AppendBits(row.subspan(5), GetU32(&row[1]), file.PageCount(), pages);
        return pages;
    }
    if (row[0] != 1) Damaged("a list of pages has an unknown form");
    const std::uint64_t covered = (file.Form().pageSize - bitmapStart) * 8;
    for (std::size_t k = 0; 1 + 4 * k + 4 <= row.size() && k * covered < file.PageCount(); ++k) {
        const std::uint32_t page = GetU32(&row[1 + 4 * k]);
        if (page == 0) continue;
        const PageRef bytes = file.Read(page);
        if (bytes[0] != bitmapPage)
            Damaged("page " + std::to_string(page) + " should hold a list of pages and doesn't");
        AppendBits({bytes.get() + bitmapStart, file.Form().pageSize - bitmapStart}, k * covered, file.PageCount(),
                   pages);
    }
    return pages;
}

}  // namespace quillform::jet
