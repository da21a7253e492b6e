#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillform {

/// The program's folder with a trailing separator: `$QUILLFORM_HOME`, else the user's data folder for the program
/// (`$XDG_DATA_HOME/quillform`, `~/.local/share/quillform`). Made on first use.
std::string ProgramFolder();

struct ResolvedPath {
    std::filesystem::path path;
    bool substituted = false;  ///< found by its file name elsewhere; the user is to be told
};

/// Finds an existing file by a path as a layout may hold it: `\` or `/`, any case, a drive letter or a UNC head of
/// another machine. A path that doesn't exist is looked for by its file name in each of `searchFolders`, in order.
/// Empty if nothing is found.
std::optional<ResolvedPath> FindFile(std::string_view path,
                                     const std::vector<std::filesystem::path>& searchFolders = {});

/// Where a file that is to be written by `path` goes: the folder is found case-blind, the file name stays as given.
/// Where the folder doesn't exist, the path with `/` for `\`, and the open that follows fails with its own error.
std::filesystem::path TargetPath(std::string_view path);

/// Last component of a path written with `\` or `/`.
std::string_view FileNameOf(std::string_view path);

}  // namespace quillform
