#include "data/jet/DiskFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>

#include "data/jet/Journal.h"

namespace quillform::jet {

enum class DiskFile::Lock : short { None = F_UNLCK, Shared = F_RDLCK, Exclusive = F_WRLCK };

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

[[noreturn]] void FailLocked(const std::filesystem::path& path, const char* who) {
    throw RunTimeError(ErrorNumber::Locked, "The database \"" + path.string() + "\" is in use by " + who + ".");
}

/// For reading only where writing isn't allowed.
FileHandle OpenAsAllowed(const std::filesystem::path& path, bool& isReadOnly) {
    FileHandle file(path, FileHandle::Mode::ReadWrite);
    const int error = file.OpenError();
    if (!file.IsOpen() && (error == EACCES || error == EROFS || error == EPERM || error == ETXTBSY)) {
        file = FileHandle(path, FileHandle::Mode::Read);
        isReadOnly = true;
    }
    if (!file.IsOpen()) FailOpen(path, file.OpenError());
    return file;
}

}  // namespace

DiskFile::DiskFile(const std::filesystem::path& path)
    : file_(OpenAsAllowed(path, isReadOnly_)), place_(path, file_.Descriptor()), path_(place_.File()) {
    if (!WaitForLock(Lock::Shared)) FailLocked(path_, "another program that writes to it");
    if (std::filesystem::exists(JournalPath(path_))) Recover();
}

/// The lock belongs to the open file, not to the process, and goes with it. It lies far behind the end of any database,
/// where it is in nobody's way.
bool DiskFile::TryLock(Lock kind) {
    struct flock range {};
    range.l_type = static_cast<short>(kind);
    range.l_whence = SEEK_SET;
    range.l_start = off_t{1} << 40;
    range.l_len = 1;
    if (::fcntl(file_.Descriptor(), F_OFD_SETLK, &range) == 0) return true;
    // A file system without locks: reading goes on, writing is taken to be alone.
    return errno != EAGAIN && errno != EACCES;
}

bool DiskFile::WaitForLock(Lock kind) {
    using namespace std::chrono_literals;
    for (int attempt = 0; attempt < 20; ++attempt) {
        if (TryLock(kind)) return true;
        std::this_thread::sleep_for(25ms);
    }
    return false;
}

void DiskFile::Recover() {
    if (isReadOnly_)
        throw RunTimeError(ErrorNumber::NoPermission,
                           "\"" + path_.string() +
                               "\" was left in the middle of a change, and there is no permission to put it right.");
    RefuseIfAccessHasIt();
    // Two programs that open the file now would wait for each other if each kept its share.
    TryLock(Lock::None);
    if (!WaitForLock(Lock::Exclusive)) FailLocked(path_, "another program, and a change to it was left unfinished");
    PlayBack(path_, file_);
    TryLock(Lock::Shared);
}

/// Access keeps this file beside a database that it has open.
void DiskFile::RefuseIfAccessHasIt() const {
    std::filesystem::path lockFile = path_;
    lockFile.replace_extension(".ldb");
    std::error_code error;
    const auto size = std::filesystem::file_size(lockFile, error);
    if (!error && size > 0)
        FailLocked(path_, ("Access (the file \"" + lockFile.filename().string() + "\" says so)").c_str());
}

void DiskFile::CheckWritable() const {
    place_.CheckWritable();
    if (isReadOnly_)
        throw RunTimeError(ErrorNumber::ReadOnly,
                           "The database \"" + place_.Given().string() +
                               "\" can only be read: it was write-protected when it was opened.");
}

void DiskFile::StartWriting() {
    CheckWritable();
    RefuseIfAccessHasIt();
    if (!WaitForLock(Lock::Exclusive)) FailLocked(path_, "another program");
}

void DiskFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const {
    if (isHalfWritten_)
        throw RunTimeError(ErrorNumber::DiskError, "\"" + path_.string() +
                                                       "\" was left in the middle of a change that couldn't be taken "
                                                       "back; close it and open it again.");
    file_.ReadAt(offset, out);
}

void DiskFile::StopWriting() { TryLock(Lock::Shared); }

void DiskFile::Replace(std::span<const PageImage> images, std::uint64_t newSize) {
    place_.CheckThere();  // a transaction may have been open for long
    WriteJournal(path_, file_, images, newSize);
    try {
        for (const PageImage& image : images) file_.WriteAt(image.offset, image.bytes);
        if (newSize != file_.Size()) file_.Resize(newSize);
        file_.Sync();
        RemoveJournal(path_);
    } catch (...) {
        isHalfWritten_ = true;
        PlayBack(path_, file_);  // if this fails too, the next open does it
        isHalfWritten_ = false;
        throw;
    }
}

}  // namespace quillform::jet
