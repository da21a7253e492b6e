#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

namespace quillform::testing {

/// A folder of its own for one test, gone with it.
class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillform-test-XXXXXX").string();
        if (mkdtemp(pattern.data())) path_ = pattern;
    }
    ~ScratchFolder() {
        std::error_code ignored;  // a folder that stays is no failure of the test
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string File(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace quillform::testing
