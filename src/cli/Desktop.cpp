#include "cli/Desktop.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace quillform::cli {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view programName = "quillform-desktop";

bool IsSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// Beside this program, as it is built, or where it is installed; empty if it is in neither place.
fs::path FindProgram() {
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    for (const fs::path& place : {folder / programName, folder / "../libexec/quillform" / programName})
        if (access(place.c_str(), X_OK) == 0) return place;
    return {};
}

}  // namespace

bool HasDisplay() { return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet("QT_QPA_PLATFORM"); }

Desktop DesktopOfOwnProgram(char** words) {
    const fs::path program = FindProgram();
    if (program.empty()) return {};
    return [program, words](const DesktopRequest&) -> ExitCode {
        execv(program.c_str(), words);
        throw RunTimeError(ErrorNumber::NotSupported,
                           "The program " + program.string() + " can't be started: " + std::strerror(errno) + ".");
    };
}

}  // namespace quillform::cli
