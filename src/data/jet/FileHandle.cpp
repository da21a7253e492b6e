#include "data/jet/FileHandle.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace quillform::jet {

namespace {

/// Without O_NONBLOCK the opening of a pipe in place of a file would wait for its other end, for ever.
int FlagsOf(FileHandle::Mode mode) {
    switch (mode) {
        case FileHandle::Mode::Read:
            return O_RDONLY | O_CLOEXEC | O_NONBLOCK;
        case FileHandle::Mode::ReadWrite:
            return O_RDWR | O_CLOEXEC | O_NONBLOCK;
        case FileHandle::Mode::CreateNew:
            return O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC;
    }
    return O_RDONLY;
}

}  // namespace

FileHandle::FileHandle(const std::filesystem::path& path, Mode mode) : path_(path) {
    constexpr mode_t permissions = 0666;  // less what the user's mask takes away
    handle_ = ::open(path.c_str(), FlagsOf(mode), permissions);
    if (handle_ < 0) openError_ = errno;
}

FileHandle::~FileHandle() {
    if (handle_ >= 0) ::close(handle_);
}

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept {
    if (this == &other) return *this;
    if (handle_ >= 0) ::close(handle_);
    path_ = std::move(other.path_);
    handle_ = std::exchange(other.handle_, -1);
    openError_ = other.openError_;
    return *this;
}

void FileHandle::Fail(const char* what) const {
    const int error = errno;
    const bool isFull = error == ENOSPC || error == EDQUOT || error == EFBIG;
    throw RunTimeError(
        isFull ? ErrorNumber::DiskFull : ErrorNumber::DiskError,
        "\"" + path_.string() + "\" can't be " + what + ": " + std::generic_category().message(error) + ".");
}

std::uint64_t FileHandle::Size() const {
    struct stat facts {};
    if (::fstat(handle_, &facts) != 0) Fail("read");
    if (!S_ISREG(facts.st_mode))
        throw RunTimeError(ErrorNumber::UnrecognizedFormat, "\"" + path_.string() + "\" is not a file.");
    return static_cast<std::uint64_t>(facts.st_size);
}

void FileHandle::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const {
    for (std::size_t done = 0; done < out.size();) {
        const ssize_t got = ::pread(handle_, out.data() + done, out.size() - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) Fail("read");
        if (got == 0)
            throw RunTimeError(ErrorNumber::DiskError, "\"" + path_.string() + "\" ends before the part that is read.");
        done += static_cast<std::size_t>(got);
    }
}

void FileHandle::WriteAt(std::uint64_t offset, Bytes bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t put =
            ::pwrite(handle_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) Fail("written");
        done += static_cast<std::size_t>(put);
    }
}

void FileHandle::Resize(std::uint64_t size) {
    if (::ftruncate(handle_, static_cast<off_t>(size)) != 0) Fail("resized");
}

void FileHandle::Sync() {
    if (::fsync(handle_) != 0) Fail("written");
}

void SyncFolder(const std::filesystem::path& folder) {
    // Some file systems can't do this; the names then last as long as the file system keeps its own promises.
    const int handle = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    ::fsync(handle);
    ::close(handle);
}

}  // namespace quillform::jet
