#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/UserInterface.h"

namespace quillform {

/// The file that a save dialog's answer stands for: that very file if it is there; else the name in capitals, or the
/// file whose name differs from that in case only. The folders stay as they were chosen.
std::string SaveNameOf(const std::string& chosen);

/// The same, for the dialog has asked about the name as it was typed, and nobody about a file of another case: so the
/// user is, under `title`. Empty if that file is to stay.
std::optional<std::string> NameToSave(const std::string& chosen, std::string_view title, UserInterface& user);

/// The name as the program keeps it: folders and all in capitals, unless these lead to another file or folder.
std::string NameToKeep(const std::string& name);

}  // namespace quillform
