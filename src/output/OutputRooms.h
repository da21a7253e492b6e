#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Output.h"

namespace quillform {

/// Where an output goes. Without a file the user is asked for one, and the answer is taken in capitals, as the
/// described dialogs do; a file that is named beforehand is taken as it is written.
struct OutputTarget {
    std::optional<std::string> file;
    /// Whether the file of a run that was cancelled or failed stays, well-formed and short, where no file stood before.
    /// An unattended run takes it away, since nobody is there to see that it is short.
    bool keepsStopped = true;
    /// Format of an Access database; without one, what the layout's report option names.
    std::optional<DatabaseVersion> format{};
};

/// The one place where an output type becomes an output. RunTimeError NotSupported for a type that can't be made yet.
std::unique_ptr<Output> MakeOutput(OutputType type, const OutputTarget& target);
/// The types that MakeOutput makes.
std::vector<OutputType> SupportedOutputs();
/// Extension, with its point, that a file of the type usually has: ".pdf", ".txt", ...
std::string_view ExtensionOf(OutputType type);

}  // namespace quillform
