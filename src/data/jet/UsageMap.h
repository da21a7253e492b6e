#pragma once

#include <vector>

#include "data/jet/PageFile.h"

namespace quillform::jet {

class PageAllocator;

/// The pages of a usage map in ascending order; none for a null pointer. Pages behind the end of the file are left out.
std::vector<std::uint32_t> ReadUsageMap(const PageFile& file, RowPointer map);
/// The same for readers of rows, and behind them the first page that the map has and the file hasn't: of a file that
/// was cut off, rows are missing, and the read of that page says so.
std::vector<std::uint32_t> ReadUsageMapToTheFirstMissing(const PageFile& file, RowPointer map);

/// Adds a page to a map of pages in use, which may need pages itself to grow. Nothing happens for a null pointer.
void AddToMap(PageFile& file, PageAllocator& allocator, RowPointer map, std::uint32_t page);
void RemoveFromMap(PageFile& file, RowPointer map, std::uint32_t page);

/// Pages inside the file that the map of free pages has as free; what it doesn't cover counts as free.
std::vector<std::uint32_t> ReadFreePages(const PageFile& file);
/// Sets or clears a page's bit there. Marking a page as used may make the map grow at the end of the file.
void MarkUsed(PageFile& file, std::uint32_t page);
void MarkFree(PageFile& file, std::uint32_t page);

}  // namespace quillform::jet
