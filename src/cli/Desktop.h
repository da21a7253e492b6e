#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "cli/ExitCode.h"

namespace quillform::cli {

/// The desktop program, on a layout or on none.
struct OpenDesktop {
    std::optional<std::string> layout;
};

/// The configuration of a database, one page of questions after the other.
struct ConfigureInWindows {
    std::string database;
    std::optional<std::string> record;  ///< the answers file that is to be written
};

/// What the words of the command ask of the windows.
using DesktopRequest = std::variant<OpenDesktop, ConfigureInWindows>;

/// Opens what is asked for and comes back when it is closed. Throws RunTimeError as verbs do. Empty where there are no
/// windows.
using Desktop = std::function<ExitCode(const DesktopRequest& request)>;

/// A program without windows of its own starts the one that has them, with the same words and in its own place. The
/// libraries of windows cost each start some milliseconds, which a command that runs a thousand times must not pay.
/// `words` are those of main. Empty if the program with the windows isn't installed.
Desktop DesktopOfOwnProgram(char** words);

/// Whether the environment names a screen to open windows on.
bool HasDisplay();

}  // namespace quillform::cli
