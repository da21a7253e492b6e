#pragma once

#include <optional>
#include <vector>

#include "data/jet/PageAllocator.h"

namespace quillform::jet {

/// Finds pages with room for new rows among those of a table or of a column's long values, and keeps their two maps:
/// the pages that belong there, and those worth trying.
class RoomFinder {
public:
    RoomFinder(PageFile& file, PageAllocator& allocator, std::uint32_t owner, RowPointer ownedMap, RowPointer freeMap)
        : file_(file), allocator_(allocator), owner_(owner), ownedMap_(ownedMap), freeMap_(freeMap) {}

    /// Adds a row to a page with room; gives its place.
    RowPointer Add(Bytes row, std::uint16_t flags);
    /// A row was taken off the page.
    void NoteRoom(std::uint32_t page);
    void Forget() { candidates_.reset(); }

private:
    bool IsOurs(std::uint32_t page) const;
    std::uint32_t FindPage(std::size_t length);

    PageFile& file_;
    PageAllocator& allocator_;
    std::uint32_t owner_;
    RowPointer ownedMap_;
    RowPointer freeMap_;
    std::optional<std::vector<std::uint32_t>> candidates_{};
};

}  // namespace quillform::jet
