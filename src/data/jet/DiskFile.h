#pragma once

#include <filesystem>

#include "data/DatabasePlace.h"
#include "data/jet/FileAccess.h"
#include "data/jet/FileHandle.h"

namespace quillform::jet {

/// A database file on disk. Processes that have it open share it for reading; the one that writes needs it alone for as
/// long as its transaction lasts, since the others keep pages in memory.
class DiskFile final : public FileAccess {
public:
    /// FileMissing, NoPermission, Locked. Opens for reading only where writing isn't allowed. Finishes or takes back
    /// what a process that died left half-written.
    explicit DiskFile(const std::filesystem::path& path);

    std::uint64_t Size() const override { return file_.Size(); }
    void ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override;
    bool IsReadOnly() const override { return isReadOnly_; }
    void CheckThere() const override { place_.CheckThere(); }
    void CheckWritable() const override;
    void StartWriting() override;
    void Replace(std::span<const PageImage> images, std::uint64_t newSize) override;
    void StopWriting() override;

private:
    enum class Lock : short;

    bool TryLock(Lock kind);
    bool WaitForLock(Lock kind);
    void Recover();
    void RefuseIfAccessHasIt() const;

    bool isReadOnly_ = false;  // found out while the file is opened
    FileHandle file_;
    data::DatabasePlace place_;
    std::filesystem::path path_;  // of the file itself, which the journal lies beside
    bool isHalfWritten_ = false;  // a commit failed, and so did taking it back
};

}  // namespace quillform::jet
