#include "platform/Paths.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <system_error>

#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform {
namespace {

namespace fs = std::filesystem;

fs::path DataFolder() {
    const auto variable = [](const char* name) -> std::string {
        const char* value = std::getenv(name);
        return value == nullptr ? std::string() : value;
    };
    if (const std::string home = variable("QUILLFORM_HOME"); !home.empty()) return home;
    // A relative XDG_DATA_HOME is to be ignored, says the XDG base directory standard.
    if (const std::string data = variable("XDG_DATA_HOME"); data.starts_with('/')) return fs::path(data) / "quillform";
    if (const std::string home = variable("HOME"); !home.empty()) return fs::path(home) / ".local/share/quillform";
    throw RunTimeError(ErrorNumber::PathNotFound,
                       "The program's folder is unknown because neither QUILLFORM_HOME nor HOME is set.");
}

/// A path of another machine: a drive letter or a server's name in front.
bool IsForeign(std::string_view path) {
    const bool drive = path.size() >= 2 && path[1] == ':' && std::isalpha(static_cast<unsigned char>(path[0])) != 0;
    return drive || path.starts_with("\\\\");
}

std::string WithSlashes(std::string_view path) {
    std::string result(path);
    std::replace(result.begin(), result.end(), '\\', '/');
    return result;
}

bool IsFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path.empty() ? fs::path(".") : path, error);
}

bool IsFile(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return fs::exists(status) && !fs::is_directory(status);
}

/// Entries of a folder whose name differs from `name` in case only, in a fixed order.
std::vector<fs::path> Namesakes(const fs::path& folder, const std::string& name) {
    std::vector<fs::path> found;
    std::error_code error;
    fs::directory_iterator entries(folder.empty() ? fs::path(".") : folder, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error))
        if (const fs::path entry = entries->path().filename(); EqualCaseBlind(entry.native(), name))
            found.push_back(folder / entry);
    std::sort(found.begin(), found.end());
    return found;
}

using Components = std::vector<std::string>;

/// Follows the components below `folder`, the exact name first, then others in any case, until one way ends at
/// something that `accept` takes.
template <typename Accept>
std::optional<fs::path> Follow(const fs::path& folder, Components::const_iterator from, Components::const_iterator end,
                               Accept accept) {
    if (from == end) return accept(folder) ? std::optional(folder) : std::nullopt;
    if (!IsFolder(folder)) return std::nullopt;
    if (auto found = Follow(folder / *from, from + 1, end, accept)) return found;
    for (const fs::path& entry : Namesakes(folder, *from))
        if (entry.filename() != *from)
            if (auto found = Follow(entry, from + 1, end, accept)) return found;
    return std::nullopt;
}

template <typename Accept>
std::optional<fs::path> FollowPath(const std::string& path, Accept accept) {
    if (accept(fs::path(path))) return fs::path(path);
    Components components;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if (end > begin) components.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return Follow(path.starts_with('/') ? fs::path("/") : fs::path(), components.cbegin(), components.cend(), accept);
}

}  // namespace

std::string ProgramFolder() {
    std::error_code error;
    const fs::path folder = fs::absolute(DataFolder(), error);
    fs::create_directories(folder, error);
    if (!IsFolder(folder))
        throw RunTimeError(
            error == std::errc::permission_denied ? ErrorNumber::PermissionDenied : ErrorNumber::PathNotFound,
            "The program's folder \"" + folder.string() + "\" can't be made" +
                (error ? ": " + error.message() + "." : "."));
    std::string result = folder.string();
    if (!result.ends_with('/')) result += '/';
    return result;
}

std::optional<ResolvedPath> FindFile(std::string_view path, const std::vector<fs::path>& searchFolders) {
    if (path.empty() || path.find('\0') != std::string_view::npos) return std::nullopt;
    if (IsFile(fs::path(path))) return ResolvedPath{fs::path(path), false};
    if (!IsForeign(path))
        if (auto found = FollowPath(WithSlashes(path), IsFile)) return ResolvedPath{std::move(*found), false};

    const Components name = {std::string(FileNameOf(path))};
    if (name.front().empty()) return std::nullopt;
    for (const fs::path& folder : searchFolders)
        if (auto found = Follow(folder, name.cbegin(), name.cend(), IsFile))
            return ResolvedPath{std::move(*found), true};
    return std::nullopt;
}

fs::path TargetPath(std::string_view path) {
    const std::string plain = WithSlashes(path);
    const std::size_t slash = plain.rfind('/');
    if (slash == std::string::npos || IsForeign(path)) return plain;
    const auto folder = FollowPath(plain.substr(0, slash + 1), IsFolder);
    return folder ? *folder / plain.substr(slash + 1) : fs::path(plain);
}

std::string_view FileNameOf(std::string_view path) {
    const auto last = path.find_last_of("/\\");
    if (last != std::string_view::npos) return path.substr(last + 1);
    return IsForeign(path) ? path.substr(2) : path;
}

}  // namespace quillform
