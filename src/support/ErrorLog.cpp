#include "support/ErrorLog.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "platform/CodePage.h"
#include "platform/Format.h"
#include "platform/RunTimeError.h"

namespace quillform {

namespace {

[[noreturn]] void Fail(const std::filesystem::path& path, int error) {
    ErrorNumber number = ErrorNumber::DeviceIo;
    if (error == EWOULDBLOCK) number = ErrorNumber::PermissionDenied;
    if (error == ENOENT || error == ENOTDIR) number = ErrorNumber::FileNotFound;
    if (error == ENOSPC || error == EDQUOT) number = ErrorNumber::DiskFull;
    throw RunTimeError(number,
                       "\"" + path.string() + "\" can't be written: " + std::generic_category().message(error) + ".");
}

/// An open file that no other holder of such a lock can write to.
class LockedFile {
public:
    explicit LockedFile(const std::filesystem::path& path)
        : path_(path), descriptor_(open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666)) {
        if (descriptor_ < 0) Fail(path_, errno);
        if (flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return;
        const int error = errno;
        close(descriptor_);
        Fail(path_, error);
    }
    ~LockedFile() { close(descriptor_); }
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

    void Append(std::string_view bytes) {
        struct stat before {};
        if (fstat(descriptor_, &before) != 0) Fail(path_, errno);
        while (!bytes.empty()) {
            const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) TakeBack(before.st_size, errno);
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }

private:
    [[noreturn]] void TakeBack(off_t size, int error) {
        // If even this fails, half an entry stays; the first failure is the one to tell.
        static_cast<void>(!ftruncate(descriptor_, size));
        Fail(path_, error);
    }

    const std::filesystem::path& path_;
    int descriptor_;
};

std::string OneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char character) { return character == '\r' || character == '\n'; }, ' ');
    return line;
}

}  // namespace

std::string LogEntry(std::string_view strWhere, std::string_view strName, int number, double when) {
    const Value date = Value::Date(when);
    std::string entry = "ERROR NAME: " + OneLine(strName) + "\r\n";
    entry += "ERROR NUMBER: " + std::to_string(number) + "\r\n";
    entry += "WHEN: " + Format(date, "mm-dd-yyyy") + "  " + Format(date, "hh:mm:ss") + "\r\n";
    entry += "WHERE: " + OneLine(strWhere) + "\r\n";
    entry += std::string(34, '=') + "\r\n";
    return Cp1252FromUtf8(entry);
}

void AppendLocked(const std::filesystem::path& path, std::string_view bytes) { LockedFile(path).Append(bytes); }

}  // namespace quillform
