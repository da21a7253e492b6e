#pragma once

#include <filesystem>

#include "data/jet/FileAccess.h"
#include "model/DataAccess.h"

namespace quillform::jet {

/// A database file on disk.
class DiskFile final : public FileAccess {
public:
    /// FileMissing, NoPermission, Locked. Opens for reading only where writing isn't allowed.
    explicit DiskFile(const std::filesystem::path& path);
    ~DiskFile() override;
    DiskFile(const DiskFile&) = delete;
    DiskFile& operator=(const DiskFile&) = delete;

    std::uint64_t Size() const override;
    void ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override;
    bool IsReadOnly() const override { return isReadOnly_; }
    void StartWriting() override;
    void Replace(std::span<const PageImage> images, std::uint64_t newSize) override;
    void StopWriting() override;

private:
    std::filesystem::path path_;
    int handle_ = -1;
    bool isReadOnly_ = false;
};

}  // namespace quillform::jet
