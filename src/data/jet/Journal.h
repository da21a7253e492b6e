#pragma once

#include <filesystem>
#include <span>

#include "data/jet/FileAccess.h"
#include "data/jet/FileHandle.h"

namespace quillform::jet {

/// The file that makes a commit whole or not there: it holds what the pages were before, lies beside the database while
/// that is overwritten, and is played back by the next open if it is still there then.
///
/// Layout, integers little-endian: "QFJRNL01"; u64 size of the database before; u32 bytes per page; u32 number of
/// pages; u64 checksum of these 24 bytes; then per page u64 offset, the page, u64 checksum of both.

std::filesystem::path JournalPath(const std::filesystem::path& database);

/// Writes the present content of `pages` (offsets of those that lie inside the database) and waits until it is on the
/// disk. Leaves no journal behind if that fails.
void WriteJournal(const std::filesystem::path& database, const FileHandle& file, std::span<const std::uint64_t> pages,
                  std::size_t pageSize);

/// Puts a database back as its journal says and removes the journal. A journal that isn't complete was never acted on:
/// it is only removed.
void PlayBack(const std::filesystem::path& database, FileHandle& file);

/// From here on the new content of the database counts. DiskError if the journal stays.
void RemoveJournal(const std::filesystem::path& database);

}  // namespace quillform::jet
