#pragma once

#include <filesystem>
#include <span>

#include "data/jet/FileAccess.h"
#include "data/jet/FileHandle.h"

namespace quillform::jet {

/// The file that makes a commit whole or not there: it holds what the pages were before, lies beside the database while
/// that is overwritten, and is played back by the next open if it is still there then.
///
/// It also knows the new content of each page by checksums, one for each piece that a disk writes as a whole. So a
/// database that was put in the place of the one that the journal is about is told apart from one that was left
/// half-written, and stays as it is.
///
/// Layout, integers little-endian. Head: "QFJRNL02"; u64 size of the database before; u64 size after; u32 bytes per
/// page; u32 number of pages; u64 checksum of these 32 bytes. Then per page: u64 offset; u32 checksum of each 512 bytes
/// of the new page; the old page; u64 checksum of all that. At the end the head once more.

std::filesystem::path JournalPath(const std::filesystem::path& database);

/// Writes what the file holds now in place of `images`, as far as it has those pages, and waits until it is on the
/// disk. Leaves no journal behind if that fails.
void WriteJournal(const std::filesystem::path& database, const FileHandle& file, std::span<const PageImage> images,
                  std::uint64_t newSize);

/// Puts a database back as its journal says and removes the journal. A journal that isn't complete was never acted on:
/// it is only removed. DiskError, with nothing changed, for a journal of another state of the file, and for one that is
/// damaged although it was acted on.
void PlayBack(const std::filesystem::path& database, FileHandle& file);

/// From here on the new content of the database counts. DiskError if the journal stays.
void RemoveJournal(const std::filesystem::path& database);

}  // namespace quillform::jet
