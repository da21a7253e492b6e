#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace quillform {

/// Number of bytes below 80 from `from` on. Eight are looked at together, since most texts are ASCII throughout.
inline std::size_t AsciiRun(std::string_view text, std::size_t from) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::size_t at = from;
    for (std::uint64_t block = 0; at + sizeof block <= text.size(); at += sizeof block) {
        std::memcpy(&block, text.data() + at, sizeof block);
        if ((block & highBits) != 0) break;
    }
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) ++at;
    return at - from;
}

}  // namespace quillform
