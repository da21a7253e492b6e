#include "data/jet/Rc4.h"

#include <array>
#include <utility>

namespace quillform::jet {

void ApplyRc4(std::uint32_t key, std::span<std::uint8_t> bytes) {
    std::array<std::uint8_t, 256> state;
    for (std::size_t i = 0; i < 256; ++i) state[i] = static_cast<std::uint8_t>(i);
    for (std::size_t i = 0, j = 0; i < 256; ++i) {
        j = (j + state[i] + (key >> (i % 4 * 8) & 0xFF)) & 0xFF;
        std::swap(state[i], state[j]);
    }
    std::size_t i = 0, j = 0;
    for (std::uint8_t& byte : bytes) {
        i = (i + 1) & 0xFF;
        j = (j + state[i]) & 0xFF;
        std::swap(state[i], state[j]);
        byte ^= state[(state[i] + state[j]) & 0xFF];
    }
}

}  // namespace quillform::jet
