#include "data/jet/JetStorage.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>

#include "data/jet/DiskFile.h"
#include "data/jet/JetDatabase.h"
#include "data/jet/Journal.h"
#include "platform/Clock.h"

namespace quillform::jet {

namespace {

using FileIdentity = std::pair<dev_t, ino_t>;

/// The storages that are open in this process: handles on one file must share its pages.
struct OpenFiles {
    std::mutex lock{};
    std::map<FileIdentity, std::weak_ptr<JetDatabase>> files{};
};

OpenFiles& Registry() {
    static OpenFiles registry;
    return registry;
}

std::optional<FileIdentity> IdentityOf(const std::filesystem::path& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) return std::nullopt;
    return FileIdentity{facts.st_dev, facts.st_ino};
}

/// The password protects nothing: it stands in the file's first page and the rows aren't encoded with it. Whoever set
/// it wants to be asked, though, and there is no way to ask here.
void RespectPassword(const JetDatabase& database) {
    if (database.File().FileHeader().hasPassword)
        throw RunTimeError(
            ErrorNumber::PasswordRequired,
            "\"" + database.Path() + "\" has a database password; take it off in Access to use the file here.");
}

[[noreturn]] void FailCreate(const std::filesystem::path& path, int error) {
    throw RunTimeError(
        error == ENOENT ? ErrorNumber::PathNotFound : ErrorNumber::PermissionDenied,
        "The database \"" + path.string() + "\" can't be made: " + std::generic_category().message(error) + ".");
}

/// Renames a finished file, but not over another one.
void GiveName(const std::filesystem::path& file, const std::filesystem::path& name) {
    if (::renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), RENAME_NOREPLACE) == 0) return;
    if (errno != EINVAL && errno != ENOSYS) FailCreate(name, errno);
    // A file system that can't do both at once.
    std::error_code ignored;
    if (std::filesystem::exists(name, ignored)) FailCreate(name, EEXIST);
    if (::rename(file.c_str(), name.c_str()) != 0) FailCreate(name, errno);
}

}  // namespace

bool LooksLikeJet(const std::filesystem::path& path) {
    std::array<char, 0x40B> start{};
    std::ifstream file(path, std::ios::binary);
    file.read(start.data(), start.size());
    const auto length = static_cast<std::size_t>(file.gcount());
    if (length < 0x18) return false;
    const std::string_view title(start.data() + 4, 15);
    if (title == "Standard Jet DB" || title == "Standard ACE DB" || title == "MSISAM Database") return true;
    // Access 1 and 2: known by this byte alone, so anything that is text or another database must be out first.
    constexpr std::size_t oldVersionAt = 0x40A, oldPage = 2048;
    if (length <= oldVersionAt || std::string_view(start.data(), 6) == "SQLite") return false;
    std::error_code ignored;
    const bool wholePages = std::filesystem::file_size(path, ignored) % oldPage == 0;
    return wholePages && start[oldVersionAt] >= 7 && start[oldVersionAt] <= 9 &&
           std::find(start.begin(), start.begin() + length, '\0') != start.begin() + length;
}

std::shared_ptr<data::Storage> Open(const std::filesystem::path& path, Access access) {
    OpenFiles& registry = Registry();
    const std::lock_guard hold(registry.lock);
    if (const auto identity = IdentityOf(path)) {
        if (auto open = registry.files[*identity].lock()) {
            if (access == Access::ReadWrite) open->AllowWriting();
            return open;
        }
    }
    auto database = std::make_shared<JetDatabase>(std::make_unique<DiskFile>(path), path.string(), access);
    RespectPassword(*database);
    if (const auto identity = IdentityOf(path)) registry.files[*identity] = database;
    std::erase_if(registry.files, [](const auto& entry) { return entry.second.expired(); });
    return database;
}

std::shared_ptr<data::Storage> Create(const std::filesystem::path& path, Format format) {
    const std::vector<std::uint8_t> bytes = JetDatabase::MakeEmpty(format, SystemClock().Now());
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored)) FailCreate(path, EEXIST);
    const std::filesystem::path unfinished = path.string() + "-new";
    std::filesystem::remove(unfinished, ignored);  // of a program that died while it made one
    FileHandle file(unfinished, FileHandle::Mode::CreateNew);
    if (!file.IsOpen()) FailCreate(path, file.OpenError());
    try {
        file.WriteAt(0, bytes);
        file.Sync();
        RemoveJournal(path);  // of a database that was there before and is gone
        GiveName(unfinished, path);
        SyncFolder(path.parent_path());
    } catch (...) {
        std::filesystem::remove(unfinished, ignored);
        throw;
    }
    return Open(path, Access::ReadWrite);
}

}  // namespace quillform::jet
