#pragma once

#include <sys/types.h>

#include <filesystem>

namespace quillform::data {

/// Where a database file was when it was opened. An open file lives on without its name, and what is stored in it then
/// is lost with the last handle, so whoever is about to store asks here first.
class DatabasePlace {
public:
    /// Of a file that has just been opened, whose descriptor this is; without one, of the file that the path leads to.
    /// A relative path stays what it is now when the working folder changes.
    explicit DatabasePlace(const std::filesystem::path& path, int descriptor = -1);

    /// The file itself, behind symbolic links, from the root on.
    const std::filesystem::path& File() const { return file_; }
    /// The path that was given, from the root on: how messages call the file.
    const std::filesystem::path& Given() const { return given_; }

    /// FileMissing if the path leads nowhere by now, or to another file; NoPermission or DiskError if that can't be
    /// found out, as on a network share that went away.
    void CheckThere() const;
    /// The same, and ReadOnly if the file, or the folder that a journal needs, is write-protected.
    void CheckWritable() const;

private:
    void CheckLeadsHere(const std::filesystem::path& path) const;

    std::filesystem::path given_;
    std::filesystem::path file_;
    dev_t device_ = 0;
    ino_t number_ = 0;
};

}  // namespace quillform::data
