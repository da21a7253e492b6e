#pragma once

#include <vector>

#include "data/jet/JetTable.h"

namespace quillform::jet {

// The steps that make an empty database, in this order. JetDatabase::MakeEmpty takes them.

/// The first pages of a file without any table.
std::vector<std::uint8_t> FirstPages(const Header& header);
/// Defines the four system tables in it.
void InstallSystemTables(PageFile& file, PageAllocator& allocator);
/// Fills the catalogue with the objects that every database has, and their permissions.
void EnterSystemObjects(JetTable& objects, JetTable& aces, const Header& header);

}  // namespace quillform::jet
