#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <utility>

#include "data/jet/Bytes.h"

namespace quillform::jet {

/// An open file of the operating system. Failures are DiskError, or DiskFull where there is no room, and name the file.
class FileHandle {
public:
    enum class Mode { Read, ReadWrite, CreateNew };

    FileHandle() = default;
    FileHandle(const std::filesystem::path& path, Mode mode);
    ~FileHandle();
    FileHandle(FileHandle&& other) noexcept { *this = std::move(other); }
    FileHandle& operator=(FileHandle&& other) noexcept;

    bool IsOpen() const { return handle_ >= 0; }
    std::uint64_t Size() const;
    void ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const;
    void WriteAt(std::uint64_t offset, Bytes bytes);
    void Resize(std::uint64_t size);
    /// Returns when everything is on the disk.
    void Sync();
    int Descriptor() const { return handle_; }

    /// errno of a constructor that left the file closed.
    int OpenError() const { return openError_; }

private:
    [[noreturn]] void Fail(const char* what) const;

    std::filesystem::path path_{};
    int handle_ = -1;
    int openError_ = 0;
};

/// Makes names that were added to or taken from a folder last.
void SyncFolder(const std::filesystem::path& folder);

}  // namespace quillform::jet
