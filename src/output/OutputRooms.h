#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Output.h"

namespace quillform {

/// The printer that pages are sent to.
struct PrinterChoice {
    std::string name;  ///< empty: the default printer
    int copies = 1;
};

/// Where an output goes. Without a file the user is asked for one, and a new file's name is taken in capitals, as
/// the described dialogs do; a file that is named beforehand is taken as it is written.
struct OutputTarget {
    std::optional<std::string> file{};
    /// Whether the file of a run that was cancelled or failed stays, well-formed and short, where no file stood before.
    /// An unattended run takes it away, since nobody is there to see that it is short.
    bool keepsStopped = true;
    /// Format of an Access database; without one, what the layout's report option names.
    std::optional<DatabaseVersion> format{};
    /// Pages go to this printer instead of a file; no other output has a use for it. A run that was stopped prints
    /// nothing.
    std::optional<PrinterChoice> printer{};
};

/// The one place where an output type becomes an output. RunTimeError NotSupported for a letter that is none.
std::unique_ptr<Output> MakeOutput(OutputType type, const OutputTarget& target);
/// Extension, with its point, that a file of the type usually has: ".pdf", ".txt", ...
std::string_view ExtensionOf(OutputType type);
/// File of the screen output: "DISPLY1.RTF" in the program's folder, 1 being the preview number.
std::string ScreenFileOf(const Layout& layout);

}  // namespace quillform
