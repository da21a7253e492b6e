#pragma once

#include <string_view>

namespace quillform::data {

/// Whether the text meets a pattern of the dialect: `*` `?` `#` `[a-z]` `[!a-z]`; case doesn't count. `%` and `_` stand for
/// themselves.
bool MatchesPattern(std::string_view text, std::string_view pattern);

}  // namespace quillform::data
