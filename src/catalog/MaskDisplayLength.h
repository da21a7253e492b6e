#pragma once

#include <cstdint>
#include <string_view>

namespace quillform {

/// Width in characters that a value is taken to need when printed by the mask: the length of the mask, corrected for
/// the parts that print wider or narrower than they are written (month and day names, the markers for the half of the
/// day, the long time, the character that makes the next one literal). The widest value of a mask may be wider still.
/// Case counts. RunTimeError Overflow for a mask of more characters than a 16-bit number holds.
std::int16_t MaskDisplayLength(std::string_view mask);

}  // namespace quillform
