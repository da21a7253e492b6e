// Query files: whatever the bytes are, a load adds all of its lines or none, and what was loaded can be saved and
// loaded again to the same lines.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "persistence/QueryFile.h"
#include "platform/RunTimeError.h"

namespace {

using quillform::clssQuery;
using quillform::collQuery;

std::vector<clssQuery> LinesOf(const collQuery& queries) { return {queries.begin(), queries.end()}; }

/// The lines as they come back from a file.
collQuery SavedAndLoaded(const std::string& path, const collQuery& queries) {
    quillform::SaveQueries(path, queries);
    collQuery loaded;
    if (quillform::LoadQueries(path, loaded) != queries.Count()) std::abort();
    return loaded;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path =
        (std::filesystem::temp_directory_path() / ("fuzz-query-" + std::to_string(getpid()) + ".QRY")).string();
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    collQuery queries;
    queries.Add({});
    try {
        if (quillform::LoadQueries(path, queries) != queries.Count() - 1) std::abort();
    } catch (const quillform::RunTimeError&) {
        if (queries.Count() != 1) std::abort();
    }
    // The first round turns what a field can't hold into blanks, and those may be at its ends.
    const collQuery once = SavedAndLoaded(path, queries);
    if (LinesOf(SavedAndLoaded(path, once)) != LinesOf(once)) std::abort();
    return 0;
}
