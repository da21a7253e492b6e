#include "data/jet/DiskFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>

namespace quillform::jet {

namespace {

[[noreturn]] void FailOpen(const std::filesystem::path& path, int error) {
    const std::string name = "\"" + path.string() + "\"";
    if (error == ENOENT || error == ENOTDIR)
        throw RunTimeError(ErrorNumber::FileMissing, "The database " + name + " doesn't exist.");
    if (error == EACCES || error == EPERM)
        throw RunTimeError(ErrorNumber::NoPermission, "There is no permission to read the database " + name + ".");
    throw RunTimeError(ErrorNumber::DiskError,
                       "The database " + name + " can't be opened: " + std::generic_category().message(error) + ".");
}

}  // namespace

DiskFile::DiskFile(const std::filesystem::path& path) : path_(path) {
    handle_ = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    if (handle_ < 0 && (errno == EACCES || errno == EROFS || errno == EPERM || errno == ETXTBSY)) {
        handle_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        isReadOnly_ = true;
    }
    if (handle_ < 0) FailOpen(path, errno);
}

DiskFile::~DiskFile() { ::close(handle_); }

std::uint64_t DiskFile::Size() const {
    struct stat facts {};
    if (::fstat(handle_, &facts) != 0) FailOpen(path_, errno);
    if (!S_ISREG(facts.st_mode))
        throw RunTimeError(ErrorNumber::UnrecognizedFormat, "\"" + path_.string() + "\" is not a file.");
    return static_cast<std::uint64_t>(facts.st_size);
}

void DiskFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const {
    std::size_t done = 0;
    while (done < out.size()) {
        const ssize_t got = ::pread(handle_, out.data() + done, out.size() - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0)
            throw RunTimeError(ErrorNumber::DiskError,
                               "The database \"" + path_.string() + "\" can't be read: " +
                                   (got < 0 ? std::generic_category().message(errno) : "it ends too early") + ".");
        done += static_cast<std::size_t>(got);
    }
}

}  // namespace quillform::jet
