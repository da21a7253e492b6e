#pragma once

#include <string>
#include <string_view>

namespace quillform::collation {

/// The order and equality of texts in the "General" sort order (LCID 0409) of Jet 4, which is also how statements
/// compare, group and sort texts in every database: upper and lower case are the same, trailing blanks don't count,
/// accents count only where all letters are the same, hyphens and apostrophes last of all. Texts are UTF-8.

/// <0, 0, >0. Plain ASCII is compared without building keys.
int Compare(std::string_view left, std::string_view right);
inline bool Equal(std::string_view left, std::string_view right) { return Compare(left, right) == 0; }

/// Appends a key: keys compare bytewise (memcmp, then length) as the texts do by Compare.
void AppendKey(std::string_view text, std::string& out);

/// A hash that agrees with Equal.
std::size_t Hash(std::string_view text);

}  // namespace quillform::collation
