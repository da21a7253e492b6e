#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "data/jet/Bytes.h"

namespace quillform::jet {

/// Original content of a page that a commit is about to overwrite, or its new content.
struct PageImage {
    std::uint64_t offset;
    Bytes bytes;
};

/// The bytes below the pages: a file, or a piece of memory.
class FileAccess {
public:
    virtual ~FileAccess() = default;
    virtual std::uint64_t Size() const = 0;
    /// Fills `out` whole from `offset`; DiskError if that isn't there.
    virtual void ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const = 0;
    virtual bool IsReadOnly() const = 0;

    /// FileMissing, NoPermission or DiskError if changes would go where nobody finds them.
    virtual void CheckThere() const {}
    /// The same, and ReadOnly.
    virtual void CheckWritable() const {}
    /// Makes sure that this process may write and nobody else does: Locked, or what CheckWritable finds.
    virtual void StartWriting() = 0;
    /// Replaces the images, in any order, so that a crash leaves either all or none of them.
    virtual void Replace(std::span<const PageImage> images, std::uint64_t newSize) = 0;
    virtual void StopWriting() = 0;
};

/// A database in memory; changes stay there.
class MemoryFile final : public FileAccess {
public:
    using Content = std::shared_ptr<std::vector<std::uint8_t>>;

    explicit MemoryFile(std::vector<std::uint8_t> bytes)
        : bytes_(std::make_shared<std::vector<std::uint8_t>>(std::move(bytes))) {}
    /// The bytes outlive the database for whoever keeps `content`.
    explicit MemoryFile(Content content) : bytes_(std::move(content)) {}
    std::uint64_t Size() const override { return bytes_->size(); }
    void ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override;
    bool IsReadOnly() const override { return false; }
    void StartWriting() override {}
    void Replace(std::span<const PageImage> images, std::uint64_t newSize) override;
    void StopWriting() override {}

private:
    Content bytes_;
};

}  // namespace quillform::jet
