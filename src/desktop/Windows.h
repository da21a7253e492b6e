#pragma once

#include "cli/Desktop.h"

namespace quillform {

/// Starts the windows, opens what is asked for, and comes back when the last of them is closed. Where the display that
/// the environment names can't be used, the program ends with one sentence and exit code 1.
cli::ExitCode OpenWindows(const cli::DesktopRequest& request);

}  // namespace quillform
