#pragma once

#include <string>

#include "print/FontFace.h"
#include "print/PdfFile.h"

namespace quillform::print {

/// Embeds what the document used of a face, and gives the font's object. The characters of the document are named in
/// it, so that copied and searched text is what was printed.
int EmbedFont(PdfFile& file, const FontFace& face);

}  // namespace quillform::print
