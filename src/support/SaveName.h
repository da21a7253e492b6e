#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/UserInterface.h"

namespace quillform {

/// The file that is written where a save dialog gave `chosen`: that very file if it is there, for the dialog has asked
/// about it; else the name in capitals, or the file whose name differs from that in case only. As nobody was asked
/// about the latter, the user is, under `title`; empty if it is to stay. The folders stay as they were chosen.
std::optional<std::string> NameToSave(const std::string& chosen, std::string_view title, UserInterface& user);

/// The name as the program keeps it: folders and all in capitals, unless these lead to another file or folder.
std::string NameToKeep(const std::string& name);

}  // namespace quillform
