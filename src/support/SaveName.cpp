#include "support/SaveName.h"

#include <filesystem>
#include <system_error>

#include "platform/Paths.h"
#include "platform/Text.h"

namespace quillform {

namespace {

/// Two folders may differ in case only, and only one of them was chosen.
std::string InCapitals(const std::string& path) {
    const std::string_view name = FileNameOf(path);
    return path.substr(0, path.size() - name.size()) + UpperCase(name);
}

}  // namespace

std::string SaveNameOf(const std::string& chosen) {
    std::error_code error;
    if (std::filesystem::exists(chosen, error)) return chosen;
    const std::string capitals = InCapitals(chosen);
    const auto namesake = FindFile(capitals);
    return namesake ? namesake->path.string() : capitals;
}

std::optional<std::string> NameToSave(const std::string& chosen, std::string_view title, UserInterface& user) {
    std::string name = SaveNameOf(chosen);
    if (name == chosen || !FindFile(name)) return name;
    // Something may be lost, so that a hasty Enter is a No.
    if (!user.Ask("\"" + name + "\" is there already.  Replace it?", title, MessageIcon::Exclamation)) return {};
    return name;
}

std::string NameToKeep(const std::string& name) {
    const std::string capitals = UpperCase(name);
    if (const auto exact = FindFile(name)) {
        const auto found = FindFile(capitals);
        return found && found->path == exact->path ? capitals : name;
    }
    const std::string nameOnly = InCapitals(name);
    return TargetPath(capitals) == TargetPath(nameOnly) ? capitals : nameOnly;
}

}  // namespace quillform
