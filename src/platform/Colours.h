#pragma once

#include <cstdint>

namespace quillform {

struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

/// The platform's 16-colour table, 0 to 15: black, blue, green, cyan, red, magenta, yellow, white (light grey), grey,
/// then the light forms of blue, green, cyan, red, magenta, yellow, and bright white. Numbers outside are taken as the
/// nearest end, since a broken layout may hold any number.
Rgb QBColor(int number);

}  // namespace quillform
