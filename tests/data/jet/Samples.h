#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "data/Storage.h"

namespace quillform::test {

/// Folder of real database files with lists of their content; the tests over it are skipped where it is missing.
std::filesystem::path SampleFolder();

/// The .mdb files there, in order of name.
std::vector<std::filesystem::path> SampleFiles();

using Line = std::vector<std::string>;
/// Lines of a list of expected content, split at the tabs, without its heading.
std::vector<Line> ReadList(const std::string& fileName);

/// Position of a table in Tables(); -1 if there is none.
int FindTable(const data::Storage& storage, std::string_view name);

/// All rows of a table as text: fields by ascending place in `order` (positions in the definition), sorted lines.
std::string CanonicalDump(const data::StoredTable& table, const std::vector<int>& order, std::size_t* rows = nullptr);

/// A file name in the test's own folder, removed when the object dies.
class ScratchFile {
public:
    explicit ScratchFile(std::string_view name);
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace quillform::test
