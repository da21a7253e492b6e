#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace quillform {

/// A file that appears whole or not at all: written buffered beside its target under a temporary name, flushed and
/// renamed by Commit. Destroyed without Commit it leaves an existing target as it was and removes the temporary file.
/// A target that is no regular file (a device, a pipe, "-" for standard output) is written straight through.
/// Errors are RunTimeError: PathNotFound, PermissionDenied, DiskFull, DeviceIo, with the target's path in the sentence.
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
    std::filesystem::path temporary_;
    int descriptor_ = -1;
    bool renames_ = true;
    std::uint64_t position_ = 0;
    std::string buffer_;
};

/// Whole content of a file. RunTimeError FileNotFound, PermissionDenied, DeviceIo.
std::string ReadWholeFile(const std::filesystem::path& path);

}  // namespace quillform
