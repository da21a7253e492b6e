#pragma once

#include <string_view>

#include "designer/DesignerForms.h"

namespace quillform::designer {

/// Prints a text alone, in the printer's own font: on the printer that is set up, else into a PDF file that the user
/// names. A cancelled file dialog prints nothing. RunTimeError of the print service or of the file.
void PrintText(std::string_view text, const DesignerServices& services);

}  // namespace quillform::designer
