#pragma once

namespace quillform::cli {

/// Fills the places of standard streams that whoever started the program has closed. Else the next file that is opened,
/// such as a database, would take the place of standard output and receive what is meant for it. Input is at its end
/// then, and writing to the output fails.
void HoldStandardStreams();

}  // namespace quillform::cli
