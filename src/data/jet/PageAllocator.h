#pragma once

#include <optional>
#include <vector>

#include "data/jet/PageFile.h"

namespace quillform::jet {

/// Hands out pages and takes them back, and keeps the file's map of free pages true to that.
class PageAllocator {
public:
    explicit PageAllocator(PageFile& file) : file_(file) {}

    /// A page of zeros that is free no more: one that the map has as free, else a new one at the end.
    std::uint32_t Allocate();
    void Free(std::uint32_t page);
    /// Forgets what it knows: the transaction was rolled back.
    void Forget() { free_.reset(); }

private:
    void LoadFreePages();

    PageFile& file_;
    std::optional<std::vector<std::uint32_t>> free_{};  // the lowest last
};

}  // namespace quillform::jet
