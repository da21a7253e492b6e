#pragma once

#include <optional>
#include <string>

#include "cli/ExitCode.h"
#include "desktop/DesktopUser.h"

namespace quillform {

/// The designer as a program: makes what it works with, opens the main form, with a layout where one is given, and
/// comes back when the form is closed. The first start makes the samples in the program's folder.
cli::ExitCode OpenDesigner(DesktopUser& user, const std::optional<std::string>& layoutFile);

}  // namespace quillform
