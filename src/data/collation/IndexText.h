#pragma once

#include <string>
#include <string_view>

namespace quillform::collation {

/// How many places of a Jet 4 key a letter such as AE or sharp s takes: engines up to Access 2003 count its two
/// letters, the one of Access 2007 (build 4518) counts one.
enum class PairedLetters { CountTwo, CountOne };

/// Appends what an ascending Jet 4 index stores of a text behind the start byte: the first 255 UTF-16 units, without
/// blanks at the end. docs/mdb-format.md, "Index keys".
void AppendJet4IndexKey(std::u16string_view units, PairedLetters pairs, std::string& out);

/// The same for Jet 3, from bytes of code page 1252.
void AppendJet3IndexKey(std::string_view bytes, std::string& out);

/// Whether the order of all these units is known; surrogates have none in this sort order.
bool HasKnownOrder(std::u16string_view units);

}  // namespace quillform::collation
