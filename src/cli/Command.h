#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "cli/Arguments.h"
#include "cli/Desktop.h"
#include "cli/ExitCode.h"

namespace quillform::cli {

/// One verb of the command.
struct Verb {
    std::string_view name;
    std::string_view operands;  ///< as the usage line shows them
    std::string_view summary;   ///< one line for the list of verbs
    std::string_view details;   ///< what the verb's help says beyond its switches; may be empty
    std::span<const Switch> switches;
    /// Throws UsageError and RunTimeError; the command turns them into a sentence and an exit code.
    ExitCode (*run)(const Arguments& arguments);
    /// What is done in windows instead, if these arguments ask for a person; null for a verb that never does.
    std::optional<DesktopRequest> (*windows)(const Arguments& arguments) = nullptr;
    std::string_view withoutWindows{};  ///< what to do where no window can be opened, as the end of a sentence
};

extern const Verb runVerb;
extern const Verb configureVerb;
extern const Verb checkVerb;
extern const Verb tablesVerb;
extern const Verb sqlVerb;
extern const Verb exportVerb;
extern const Verb infoVerb;
extern const Verb showVerb;
extern const Verb sampleVerb;

/// The whole command: `words` are the arguments without the program's name. Writes one sentence to standard error for
/// each failure. `desktop` opens the windows that the words ask for.
ExitCode RunCommand(std::span<const std::string_view> words, const Desktop& desktop = {});

}  // namespace quillform::cli
