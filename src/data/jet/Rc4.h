#pragma once

#include <cstdint>
#include <span>

namespace quillform::jet {

/// Applies the RC4 key stream of a 4-byte key (little-endian) to the bytes, from its start. Doing it twice undoes it.
void ApplyRc4(std::uint32_t key, std::span<std::uint8_t> bytes);

}  // namespace quillform::jet
