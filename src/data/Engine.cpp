#include "data/Engine.h"

#include <sys/stat.h>

#include <map>

#include "data/SharedFile.h"
#include "data/jet/JetStorage.h"
#include "data/sqlite/SqliteStorage.h"

namespace quillform::data {
namespace {

namespace fs = std::filesystem;

std::shared_ptr<Storage> OpenStorage(const fs::path& path, Access access, const Clock& clock) {
    // The Jet side goes first where the file is none of both, so that its error can say what the file is instead.
    if (!jet::LooksLikeJet(path) && sqlite::LooksLikeSqlite(path)) return sqlite::OpenStorage(path, access, clock);
    return jet::Open(path, access);
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
        std::shared_ptr<SharedFile> file = files_[key].lock();
        if (!file) {
            file = Share(OpenStorage(fs::path(path), access, clock_));
            files_[key] = file;
        }
        return OpenHandle(std::move(file), std::string(path), access);
    }

    std::unique_ptr<Database> CreateDatabase(std::string_view path, DatabaseVersion version) override {
        const std::shared_ptr<SharedFile> file = Share(CreateStorage(fs::path(path), version, clock_));
        files_[KeyOf(fs::path(path), Access::ReadWrite)] = file;
        return OpenHandle(file, std::string(path), Access::ReadWrite);
    }

private:
    /// A storage that two paths lead to is shared all the same.
    std::shared_ptr<SharedFile> Share(std::shared_ptr<Storage> storage) {
        std::erase_if(files_, [](const auto& entry) { return entry.second.expired(); });
        for (const auto& [key, weak] : files_)
            if (auto file = weak.lock(); file && file->storage == storage) return file;
        return std::make_shared<SharedFile>(std::move(storage), store_, clock_);
    }

    const Clock& clock_;
    std::shared_ptr<SpillStore> store_;
    std::map<std::string, std::weak_ptr<SharedFile>> files_;
};

}  // namespace

std::unique_ptr<DBEngine> MakeEngine(const Clock& clock) { return std::make_unique<Engine>(clock); }

std::vector<std::pair<std::string, std::string>> FactsOf(const std::filesystem::path& path) {
    const SystemClock clock;
    return OpenStorage(path, Access::ReadOnly, clock)->Facts();
}

}  // namespace quillform::data
