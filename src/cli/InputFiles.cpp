#include "cli/InputFiles.h"

#include "platform/Paths.h"

namespace quillform::cli {

namespace fs = std::filesystem;

std::string WhyNoFile(const std::string& name) {
    std::error_code ignored;  // what can't be looked at isn't there
    return fs::is_directory(TargetPath(name), ignored) ? "is a folder" : "does not exist";
}

fs::path ExistingFile(std::string_view kind, const std::string& name, ErrorNumber missing) {
    if (const auto found = FindFile(name)) return found->path;
    throw RunTimeError(missing, "The " + std::string(kind) + " \"" + name + "\" " + WhyNoFile(name) + ".");
}

void ExpectOtherFile(const fs::path& target, const fs::path& input) {
    std::error_code ignored;  // a target that isn't there yet is another file
    if (!fs::is_regular_file(target, ignored) || !fs::equivalent(target, input, ignored)) return;
    throw RunTimeError(ErrorNumber::PermissionDenied,
                       "\"" + target.string() + "\" can't be written: it is a file that is read for it.");
}

}  // namespace quillform::cli
