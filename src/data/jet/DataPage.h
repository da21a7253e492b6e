#pragma once

#include "data/jet/PageFile.h"

namespace quillform::jet {

/// The slots of one data page, for reading. docs/mdb-format.md, "Data pages".
class DataPage {
public:
    DataPage() = default;
    /// Damaged if the page is no data page or its directory doesn't fit.
    DataPage(const PageFile& file, std::uint32_t page);

    static bool IsDataPage(const PageFile& file, std::uint32_t page, std::uint32_t owner);

    std::uint32_t Number() const { return number_; }
    std::size_t SlotCount() const { return count_; }
    std::uint16_t Entry(std::size_t slot) const { return GetU16(bytes_.get() + directory_ + 2 * slot); }
    std::uint32_t Owner() const { return GetU32(bytes_.get() + 4); }
    std::size_t FreeBytes() const { return GetU16(bytes_.get() + 2); }
    /// The bytes of the slot, whatever its flags say. They live as long as this page object or a copy.
    Bytes Row(std::size_t slot) const;
    const PageRef& Pin() const { return bytes_; }

private:
    PageRef bytes_{};
    std::uint32_t number_ = 0;
    std::size_t count_ = 0;
    std::size_t directory_ = 0;
    std::size_t pageSize_ = 0;
};

/// A row found by its identity: through the slot that says where it moved, if it did. `place` is where it really lies.
struct FoundRow {
    DataPage page{};
    Bytes bytes{};
    RowPointer place{};
};

/// False if the slot doesn't exist or is deleted. Damaged if the way to the row is broken.
bool FindRow(const PageFile& file, RowPointer row, FoundRow& found);

}  // namespace quillform::jet
