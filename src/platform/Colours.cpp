#include "platform/Colours.h"

#include <algorithm>
#include <array>

namespace quillform {

Rgb QBColor(int number) {
    static constexpr std::array<Rgb, 16> table = {{
        {0, 0, 0},
        {0, 0, 128},
        {0, 128, 0},
        {0, 128, 128},
        {128, 0, 0},
        {128, 0, 128},
        {128, 128, 0},
        {192, 192, 192},
        {128, 128, 128},
        {0, 0, 255},
        {0, 255, 0},
        {0, 255, 255},
        {255, 0, 0},
        {255, 0, 255},
        {255, 255, 0},
        {255, 255, 255},
    }};
    return table[static_cast<std::size_t>(std::clamp(number, 0, 15))];
}

}  // namespace quillform
