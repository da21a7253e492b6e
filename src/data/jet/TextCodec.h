#pragma once

#include <string>
#include <string_view>

#include "data/jet/Bytes.h"

namespace quillform::jet {

/// Jet 4 text as stored, compressed or not, as UTF-8. Gives a view of the stored bytes where they serve as they are,
/// else of `buffer`, which is overwritten.
std::string_view DecodeJet4Text(Bytes stored, std::string& buffer);
/// Jet 3 text in the code page.
std::string_view DecodeJet3Text(Bytes stored, int codePage, std::string& buffer);

/// Appends UTF-16LE units as UTF-8; half a unit at the end is left out, lone surrogates become U+FFFD.
void AppendUtf16(Bytes stored, std::string& out);

/// Text as a Jet 4 column stores it; `mayCompress` is the column's own flag.
std::string EncodeJet4Text(std::string_view text, bool mayCompress);
std::string Utf16LeFromUtf8(std::string_view text);

/// Length of a text in UTF-16 units, as column lengths are counted.
std::size_t CountUtf16Units(std::string_view text);

}  // namespace quillform::jet
