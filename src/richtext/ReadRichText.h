#pragma once

#include <filesystem>
#include <string_view>

#include "richtext/Document.h"

namespace quillform::richtext {

/// Reads rich text as reports are written and as word processors write it: fonts, sizes, colours, paragraphs with tab
/// stops, tables, page breaks, sheets and margins. Pictures, notes, page headings and whatever else it doesn't know are
/// left out, fields show their result. A file that breaks off shows what there is. Characters beyond ASCII are read in
/// the code page of their font, or by their number. Time and memory are in proportion to the input, whatever it holds.
/// RunTimeError InvalidFileFormat if it doesn't begin as rich text does.
Document ReadRichText(std::string_view bytes);

/// Also FileNotFound, PermissionDenied and DeviceIo, as ReadWholeFile.
Document ReadRichTextFile(const std::filesystem::path& path);

}  // namespace quillform::richtext
