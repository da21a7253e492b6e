#pragma once

#include <string>
#include <string_view>

namespace quillform {

/// A name or reply as it stands in a sentence for people.
inline std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

}  // namespace quillform
