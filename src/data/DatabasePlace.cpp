#include "data/DatabasePlace.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/RunTimeError.h"

namespace quillform::data {

namespace {

[[noreturn]] void Fail(ErrorNumber number, const std::filesystem::path& database, const std::string& what) {
    throw RunTimeError(number, "The database \"" + database.string() + "\" " + what + ".");
}

[[noreturn]] void FailUnreachable(const std::filesystem::path& database, int error) {
    if (error == ENOENT || error == ENOTDIR)
        Fail(ErrorNumber::FileMissing, database,
             "isn't there any more: it was deleted, renamed or moved since it was opened, so nothing can be stored");
    const bool isForbidden = error == EACCES || error == EPERM;
    Fail(isForbidden ? ErrorNumber::NoPermission : ErrorNumber::DiskError, database,
         "can't be reached any more (" + std::generic_category().message(error) + "), so nothing can be stored");
}

std::filesystem::path FromRoot(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path whole = std::filesystem::absolute(path, error);
    return error ? path : whole;
}

std::filesystem::path BehindLinks(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real;
}

}  // namespace

DatabasePlace::DatabasePlace(const std::filesystem::path& path, int descriptor)
    : given_(FromRoot(path)), file_(BehindLinks(given_)) {
    struct stat facts {};
    if ((descriptor < 0 ? ::stat(file_.c_str(), &facts) : ::fstat(descriptor, &facts)) != 0) return;
    device_ = facts.st_dev;
    number_ = facts.st_ino;
}

/// Both paths count: the journal lies beside the file itself, and the user looks for his data behind the link.
void DatabasePlace::CheckThere() const {
    CheckLeadsHere(given_);
    if (file_ != given_) CheckLeadsHere(file_);
}

void DatabasePlace::CheckLeadsHere(const std::filesystem::path& path) const {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) FailUnreachable(given_, errno);
    if (facts.st_dev != device_ || facts.st_ino != number_)
        Fail(ErrorNumber::FileMissing, given_,
             "isn't the file that was opened: another one was put in its place, so nothing can be stored; open it "
             "again to work with that one");
}

void DatabasePlace::CheckWritable() const {
    CheckThere();
    // Changes would go on through the open handle, against the wish of whoever protected the file.
    if (::access(file_.c_str(), W_OK) != 0)
        Fail(ErrorNumber::ReadOnly, given_, "can only be read: the file is write-protected");
    if (::access(file_.parent_path().c_str(), W_OK | X_OK) != 0)
        Fail(ErrorNumber::ReadOnly, given_, "can only be read: nothing can be written to its folder");
}

}  // namespace quillform::data
