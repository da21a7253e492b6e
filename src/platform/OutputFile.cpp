#include "platform/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <system_error>
#include <utility>

#include "platform/RunTimeError.h"

namespace quillform {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBufferSize = 256 * 1024;

ErrorNumber NumberOfError(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENAMETOOLONG:
        case ELOOP:
            return ErrorNumber::PathNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ETXTBSY:
            return ErrorNumber::PermissionDenied;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return ErrorNumber::DiskFull;
        default:
            return ErrorNumber::DeviceIo;
    }
}

int OpenRetrying(const fs::path& path, int flags, mode_t mode = 0) {
    int descriptor = -1;
    do descriptor = open(path.c_str(), flags | O_CLOEXEC, mode);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

/// The system would take such a name as ending there, and so for another one.
bool HasZero(const fs::path& path) { return path.native().find('\0') != std::string::npos; }

/// A path for a message, whole even where it holds a zero.
std::string Shown(const fs::path& path) {
    std::string text = path.string();
    std::replace(text.begin(), text.end(), '\0', '?');
    return '"' + text + '"';
}

[[noreturn]] void FailWriting(const fs::path& target, int error) {
    const std::string name = target == "-" ? "Standard output" : Shown(target);
    const std::string reason = error == EISDIR    ? "it is a folder"
                               : error == ENOTSUP ? "it is no regular file"
                                                  : std::generic_category().message(error);
    throw RunTimeError(NumberOfError(error), name + " can't be written: " + reason + ".");
}

/// Whether there is something that is written straight through.
bool IsDevice(const fs::path& path) {
    struct stat status {};
    return !HasZero(path) && stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

/// A new file of the folder without a name, which is gone when its writer dies, however that happens. -1 where the file
/// system has none, or where it couldn't be named later.
int OpenNameless(const fs::path& folder) {
#ifdef O_TMPFILE
    if (access("/proc/self/fd", X_OK) == 0)
        return OpenRetrying(folder.empty() ? "." : folder, O_WRONLY | O_TMPFILE, 0666);
#endif
    return -1;
}

bool GiveName(int descriptor, const fs::path& path) {
    const std::string open = "/proc/self/fd/" + std::to_string(descriptor);
    return linkat(AT_FDCWD, open.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

/// A name in `folder` that no file has.
fs::path FreeName(const fs::path& folder) {
    auto ticks = static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
    while (true) {
        fs::path path = folder / (".quillform-" + std::to_string(getpid()) + "-" + std::to_string(ticks++));
        struct stat status {};
        if (lstat(path.c_str(), &status) != 0) return path;
    }
}

}  // namespace

AsidePath::AsidePath(const fs::path& target) : target_(target) {
    if (target_.empty() || HasZero(target_)) FailWriting(target, ENOENT);
    struct stat status {};
    const bool exists = stat(target_.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) FailWriting(target, EISDIR);
    if (exists && !S_ISREG(status.st_mode)) FailWriting(target, ENOTSUP);
    // Renaming would go round the rights of a write-protected target and would replace a link by a file.
    if (exists && access(target_.c_str(), W_OK) != 0) FailWriting(target, errno);
    std::error_code error;
    if (const fs::path real = fs::canonical(target_, error); !error) target_ = real;
    if (exists) rights_ = static_cast<fs::perms>(status.st_mode & 07777);
    const fs::path folder = target_.parent_path();
    const fs::path entered = folder.empty() ? "." : folder / "";  // with the slash, a file can't pass for a folder
    if (access(entered.c_str(), W_OK | X_OK) != 0) FailWriting(target, errno);
    path_ = FreeName(folder);
}

AsidePath::~AsidePath() {
    if (!path_.empty()) unlink(path_.c_str());
}

void AsidePath::TakeRights() const {
    std::error_code ignored;  // a right that can't be kept is no loss
    if (rights_) fs::permissions(path_, *rights_, ignored);
}

void AsidePath::Commit() {
    if (rename(path_.c_str(), target_.c_str()) != 0) FailWriting(target_, errno);
    path_.clear();
}

OutputFile::OutputFile(fs::path target) : target_(std::move(target)) {
    buffer_.reserve(kBufferSize);
    if (target_ == "-") {
        descriptor_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    } else if (IsDevice(target_)) {
        descriptor_ = OpenRetrying(target_, O_WRONLY | O_NOCTTY);
    } else {
        aside_.emplace(target_);
        descriptor_ = OpenNameless(aside_->Path().parent_path());
        isNameless_ = descriptor_ >= 0;
        if (!isNameless_) descriptor_ = OpenRetrying(aside_->Path(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    }
    if (descriptor_ < 0) Fail(errno);
    if (aside_ && !isNameless_) aside_->TakeRights();
}

OutputFile::~OutputFile() {
    if (descriptor_ >= 0) close(descriptor_);
}

void OutputFile::Write(std::string_view bytes) {
    position_ += bytes.size();
    if (buffer_.size() + bytes.size() > kBufferSize) Flush();
    buffer_.append(bytes);
    if (buffer_.size() >= kBufferSize) Flush();
}

void OutputFile::Flush() {
    const char* from = buffer_.data();
    std::size_t left = buffer_.size();
    while (left > 0) {
        const ssize_t written = write(descriptor_, from, left);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) Fail(errno);
        from += written;
        left -= static_cast<std::size_t>(written);
    }
    buffer_.clear();
}

void OutputFile::Commit() {
    if (descriptor_ < 0) return;
    Flush();
    if (isNameless_) {
        // A link can't take the place of a file, so it gets the name that is renamed then.
        if (!GiveName(descriptor_, aside_->Path())) Fail(errno);
        aside_->TakeRights();
    }
    // Some file systems tell only here that the disk is full.
    if (close(std::exchange(descriptor_, -1)) != 0 && errno != EINTR) Fail(errno);
    if (aside_) aside_->Commit();
}

void OutputFile::Fail(int error) const { FailWriting(target_, error); }

std::string ReadWholeFile(const fs::path& path) {
    const auto fail = [&](int error) {
        const ErrorNumber number =
            error == ENOENT || error == ENOTDIR ? ErrorNumber::FileNotFound : NumberOfError(error);
        const std::string reason = error == EISDIR ? "it is a folder" : std::generic_category().message(error);
        throw RunTimeError(number, Shown(path) + " can't be read: " + reason + ".");
    };
    struct Closer {
        int descriptor;
        ~Closer() {
            if (descriptor >= 0) close(descriptor);
        }
    } file{HasZero(path) ? -1 : OpenRetrying(path, O_RDONLY)};
    if (HasZero(path)) fail(ENOENT);
    if (file.descriptor < 0) fail(errno);

    std::string content;
    struct stat status {};
    if (fstat(file.descriptor, &status) == 0 && status.st_size > 0)
        content.reserve(static_cast<std::size_t>(status.st_size) + 1);
    std::array<char, 64 * 1024> chunk;
    while (true) {
        const ssize_t got = read(file.descriptor, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) fail(errno);
        if (got == 0) return content;
        content.append(chunk.data(), static_cast<std::size_t>(got));
    }
}

}  // namespace quillform
