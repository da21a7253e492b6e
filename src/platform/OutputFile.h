#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillform {

/// The name under which a file is made beside its target, and the rename that puts it in the target's place. Whoever
/// writes the file makes it, new, under Path(). Destroyed without Commit it removes the file and leaves an existing
/// target as it was. Errors as for OutputFile, among them a target that is no regular file.
class AsidePath {
public:
    explicit AsidePath(const std::filesystem::path& target);
    ~AsidePath();
    AsidePath(const AsidePath&) = delete;
    AsidePath& operator=(const AsidePath&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    /// Gives the file the rights of the one that it is to replace, if there is one.
    void TakeRights() const;
    void Commit();

private:
    std::filesystem::path target_;  // where a link leads to
    std::filesystem::path path_;
    std::optional<std::filesystem::perms> rights_;
};

/// A file that appears whole or not at all: written buffered beside its target without a name, where the file system
/// has such files, else under a temporary one; flushed, named and renamed by Commit. Destroyed without Commit it leaves
/// an existing target as it was and removes the temporary file. A target that is no regular file (a device, a pipe, "-"
/// for standard output) is written straight through. Errors are RunTimeError: PathNotFound, PermissionDenied, DiskFull,
/// DeviceIo, with the target's path in the sentence.
class OutputFile {
public:
    explicit OutputFile(std::filesystem::path target);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void Write(std::string_view bytes);
    /// Bytes written so far.
    std::uint64_t Position() const { return position_; }
    void Commit();

private:
    void Flush();
    [[noreturn]] void Fail(int error) const;

    std::filesystem::path target_;
    std::optional<AsidePath> aside_;  // empty where the target is written straight through
    int descriptor_ = -1;
    bool isNameless_ = false;  // until Commit
    std::uint64_t position_ = 0;
    std::string buffer_;
};

/// Whole content of a file. RunTimeError FileNotFound, PermissionDenied, DeviceIo.
std::string ReadWholeFile(const std::filesystem::path& path);

}  // namespace quillform
