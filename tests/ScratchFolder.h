#pragma once

#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillform {

/// A folder of its own for one test, gone with it.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillform-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path_ = pattern;
    }
    ~ScratchFolder() {
        std::error_code ignored;  // a folder that stays is no failure of the test
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }
    std::string File(std::string_view name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

}  // namespace quillform
