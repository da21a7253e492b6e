#pragma once

#include <span>
#include <string_view>

#include "cli/Arguments.h"
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
};

extern const Verb runVerb;
extern const Verb configureVerb;
extern const Verb checkVerb;
extern const Verb tablesVerb;
extern const Verb sqlVerb;
extern const Verb exportVerb;
extern const Verb infoVerb;
extern const Verb sampleVerb;

/// The whole command: `words` are the arguments without the program's name. Writes one sentence to standard error for
/// each failure.
ExitCode RunCommand(std::span<const std::string_view> words);

}  // namespace quillform::cli
