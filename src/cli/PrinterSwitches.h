#pragma once

#include <optional>

#include "cli/Arguments.h"
#include "cli/ExitCode.h"
#include "output/OutputRooms.h"

namespace quillform::cli {

/// The printer that the switches "type", "printer" and "copies" ask for; empty if the report goes to a file. UsageError
/// where the switches contradict each other.
std::optional<PrinterChoice> ChoosePrinter(const Arguments& arguments);

/// Writes the printers of the print service to standard output, one a line: name, whether it is the default, state,
/// description and place.
ExitCode ListPrinters(bool asJson);

}  // namespace quillform::cli
