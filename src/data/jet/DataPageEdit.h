#pragma once

#include "data/jet/DataPage.h"

namespace quillform::jet {

// Changes to the rows of one data page. Rows are kept packed from the end of the page downwards in the order of their
// slots; slot numbers never change. All slots must have been checked to lie inside the page: DataPage::Row does.

void InitDataPage(PageFile& file, std::uint32_t page, std::uint32_t owner);
/// Largest row that an empty page takes.
std::size_t LargestRow(const Layout& form);
/// Whether a new row of this length fits.
bool HasRoom(const PageFile& file, std::uint32_t page, std::size_t length);
/// Adds a row, which must fit; gives its slot. `flags` as in the slot: 0 or slotTarget.
std::size_t AddRow(PageFile& file, std::uint32_t page, Bytes row, std::uint16_t flags);
/// Puts other bytes and flags into a slot; false, and nothing changed, if they don't fit.
bool ReplaceRow(PageFile& file, RowPointer place, Bytes row, std::uint16_t flags);
void DeleteRow(PageFile& file, RowPointer place);

}  // namespace quillform::jet
