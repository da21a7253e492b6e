#include "data/jet/FileAccess.h"

#include <algorithm>

namespace quillform::jet {

void MemoryFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const {
    if (offset > bytes_->size() || out.size() > bytes_->size() - offset)
        throw RunTimeError(ErrorNumber::DiskError, "The database ends before the page that is read.");
    std::copy_n(bytes_->begin() + static_cast<std::ptrdiff_t>(offset), out.size(), out.begin());
}

void MemoryFile::Replace(std::span<const PageImage> images, std::uint64_t newSize) {
    bytes_->resize(newSize);
    for (const PageImage& image : images)
        std::copy(image.bytes.begin(), image.bytes.end(), bytes_->begin() + static_cast<std::ptrdiff_t>(image.offset));
}

}  // namespace quillform::jet
