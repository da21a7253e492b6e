#include "data/Engine.h"

#include <sys/stat.h>

#include <map>

#include "data/SharedFile.h"
#include "data/jet/JetStorage.h"
#include "data/sqlite/SqliteStorage.h"

namespace quillform::data {
namespace {

namespace fs = std::filesystem;

enum class FileKind { Jet, Sqlite };

/// Jet where the file is none of both, because that side's error can say what the file is instead.
FileKind LookAt(const fs::path& path) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) return FileKind::Jet;  // a look into a pipe would wait
    return !jet::LooksLikeJet(path) && sqlite::LooksLikeSqlite(path) ? FileKind::Sqlite : FileKind::Jet;
}

std::shared_ptr<Storage> OpenStorage(const fs::path& path, FileKind kind, Access access, const Clock& clock) {
    return kind == FileKind::Sqlite ? sqlite::OpenStorage(path, access, clock) : jet::Open(path, access);
}

std::shared_ptr<Storage> CreateStorage(const fs::path& path, DatabaseVersion version, const Clock& clock) {
    switch (version) {
        case DatabaseVersion::Jet10:
        case DatabaseVersion::Jet11:
        case DatabaseVersion::Jet20:
        case DatabaseVersion::Jet30:
            return jet::Create(path, jet::Format::Jet3);
        case DatabaseVersion::Jet40:
            return jet::Create(path, jet::Format::Jet4);
        case DatabaseVersion::Sqlite:
            return sqlite::CreateStorage(path, clock);
    }
    throw RunTimeError(ErrorNumber::InvalidArgument,
                       "There is no database version " + std::to_string(static_cast<int>(version)) + ".");
}

/// Tells files apart by what they are rather than by their path: a path may lead to another file than before.
std::string KeyOf(const fs::path& path, Access access) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) return path.string();
    std::string key(1, access == Access::ReadOnly ? 'r' : 'w');
    key.append(std::to_string(facts.st_dev)).append(1, ':').append(std::to_string(facts.st_ino));
    return key;
}

class Engine final : public DBEngine {
public:
    explicit Engine(const Clock& clock) : clock_(clock), store_(SpillStore::Make()) {}

    std::unique_ptr<Database> OpenDatabase(std::string_view path, Access access) override {
        const std::string key = KeyOf(fs::path(path), access);
        std::shared_ptr<SharedFile> file = files_[key].file.lock();
        if (!file) {
            const FileKind kind = KindOf(fs::path(path), access);
            file = Share(OpenStorage(fs::path(path), kind, access, clock_));
            files_[key] = {file, kind};
        }
        return OpenHandle(std::move(file), std::string(path), access);
    }

    std::unique_ptr<Database> CreateDatabase(std::string_view path, DatabaseVersion version) override {
        const std::shared_ptr<SharedFile> file = Share(CreateStorage(fs::path(path), version, clock_));
        const FileKind kind = version == DatabaseVersion::Sqlite ? FileKind::Sqlite : FileKind::Jet;
        files_[KeyOf(fs::path(path), Access::ReadWrite)] = {file, kind};
        return OpenHandle(file, std::string(path), Access::ReadWrite);
    }

private:
    struct OpenFile {
        std::weak_ptr<SharedFile> file;
        FileKind kind = FileKind::Jet;
    };

    /// A file that is open is not looked at again: closing what one looked through would drop SQLite's locks on it,
    /// which belong to the whole process.
    FileKind KindOf(const fs::path& path, Access access) const {
        const Access other = access == Access::ReadOnly ? Access::ReadWrite : Access::ReadOnly;
        const auto found = files_.find(KeyOf(path, other));
        return found != files_.end() && !found->second.file.expired() ? found->second.kind : LookAt(path);
    }
    /// A storage that two paths lead to is shared all the same.
    std::shared_ptr<SharedFile> Share(std::shared_ptr<Storage> storage) {
        std::erase_if(files_, [](const auto& entry) { return entry.second.file.expired(); });
        for (const auto& [key, open] : files_)
            if (auto file = open.file.lock(); file && file->storage == storage) return file;
        return std::make_shared<SharedFile>(std::move(storage), store_, clock_);
    }

    const Clock& clock_;
    std::shared_ptr<SpillStore> store_;
    std::map<std::string, OpenFile> files_;
};

}  // namespace

std::unique_ptr<DBEngine> MakeEngine(const Clock& clock) { return std::make_unique<Engine>(clock); }

std::vector<std::pair<std::string, std::string>> FactsOf(const std::filesystem::path& path) {
    const SystemClock clock;
    return OpenStorage(path, LookAt(path), Access::ReadOnly, clock)->Facts();
}

}  // namespace quillform::data
