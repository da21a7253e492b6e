#include "sample/SampleData.h"

#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "persistence/LayoutFile.h"
#include "platform/CodePage.h"
#include "platform/OutputFile.h"
#include "platform/RunTimeError.h"
#include "sample/SampleDatabase.h"
#include "sample/SampleLayouts.h"

namespace quillform::sample {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view databaseName = "Sample.mdb";

/// Removes what was made unless everything was.
class MadeFiles {
public:
    MadeFiles() = default;
    MadeFiles(const MadeFiles&) = delete;
    MadeFiles& operator=(const MadeFiles&) = delete;
    ~MadeFiles() {
        std::error_code ignored;  // the failure that led here is the one to be told
        for (const fs::path& path : paths_) fs::remove(path, ignored);
    }

    void Add(fs::path path) { paths_.push_back(std::move(path)); }
    std::vector<fs::path> Keep() { return std::exchange(paths_, {}); }

private:
    std::vector<fs::path> paths_;
};

void RefuseExisting(const fs::path& path) {
    if (fs::exists(path))
        throw RunTimeError(ErrorNumber::PermissionDenied,
                           "The file \"" + path.string() + "\" exists already; name another folder or move it away.");
}

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        throw RunTimeError(ErrorNumber::PathNotFound,
                           "The folder \"" + folder.string() + "\" can't be made: " + error.message() + ".");
}

Catalog MakeDatabase(DBEngine& engine, const fs::path& path) {
    const std::unique_ptr<Database> database = engine.CreateDatabase(path.string(), DatabaseVersion::Jet40);
    WriteTables(*database, MakeCompany(sampleOrders));
    WriteCatalog(*database, databaseName);
    return Catalog::Read(*database);
}

/// A path that a layout file can't write is left out but for the file name, by which the database is found beside the
/// layout.
std::string PathForLayouts(const fs::path& database) {
    std::size_t lostCharacters = 0;
    Cp1252FromUtf8(database.string(), &lostCharacters);
    return lostCharacters == 0 ? database.string() : std::string(databaseName);
}

}  // namespace

std::vector<fs::path> WriteSamples(DBEngine& engine, const fs::path& folder) {
    MakeFolder(folder);
    const fs::path databasePath = fs::absolute(folder / databaseName).lexically_normal();
    RefuseExisting(databasePath);
    for (std::string_view name : SampleLayoutNames()) RefuseExisting(folder / name);

    MadeFiles made;
    made.Add(databasePath);
    const Catalog catalog = MakeDatabase(engine, databasePath);
    for (const SampleLayout& sample : MakeLayouts(catalog, PathForLayouts(databasePath))) {
        OutputFile file(folder / sample.fileName);
        file.Write(Cp1252FromUtf8(LayoutText(sample.layout)));
        file.Commit();
        made.Add(folder / sample.fileName);
    }
    return made.Keep();
}

}  // namespace quillform::sample
