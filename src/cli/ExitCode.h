#pragma once

#include "platform/RunTimeError.h"

namespace quillform::cli {

/// What the command ends with; scripts rely on the numbers.
enum class ExitCode : int {
    Done = 0,
    Failed = 1,
    Usage = 2,      ///< wrong switches or arguments
    NoRecords = 3,  ///< done, but the report has no records
    Warnings = 4,   ///< done with warnings, under --strict
    Database = 5,   ///< database missing, damaged, locked or not readable
    Layout = 6,     ///< layout, query or answers file unreadable or pointing at what isn't there
    Target = 7,     ///< the output can't be written
    Interrupted = 130,
};

/// The code of a failure by its number.
ExitCode ExitCodeOf(const RunTimeError& error);

}  // namespace quillform::cli
