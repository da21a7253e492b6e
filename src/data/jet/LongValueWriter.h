#pragma once

#include <string>

#include "data/jet/LongValue.h"
#include "data/jet/RoomFinder.h"

namespace quillform::jet {

/// Stores the long values of one memo or OLE column outside the rows.
class LongValueWriter {
public:
    LongValueWriter(PageFile& file, PageAllocator& allocator, RowPointer ownedMap, RowPointer freeMap)
        : file_(file), room_(file, allocator, longValueOwner, ownedMap, freeMap) {}

    /// What the row stores of the value. Values up to `inlineLimit` bytes stay in the row.
    std::string Write(std::string_view value, std::size_t inlineLimit);
    /// Gives back the pages' room of a stored value.
    void Erase(Bytes stored);
    void Forget() { room_.Forget(); }

private:
    PageFile& file_;
    RoomFinder room_;
};

}  // namespace quillform::jet
