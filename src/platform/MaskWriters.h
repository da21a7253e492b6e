#pragma once

#include <string>
#include <string_view>

#include "platform/DecimalDigits.h"
#include "platform/MaskProgram.h"

namespace quillform::mask {

/// Whether a section writes a number as zero, so that a sign or the words of its section would be untrue.
bool RoundsToZero(const Section& section, DecimalDigits digits);
/// A negative number gets its sign in front, unless it is rounded to zero.
void AppendNumber(const Program& program, const Section& section, DecimalDigits digits, std::string& out);
/// `serial` lies inside the range of dates.
void AppendDate(const Program& program, const Section& section, double serial, std::string& out);
void AppendText(const Program& program, const Section& section, std::string_view text, std::string& out);

}  // namespace quillform::mask
