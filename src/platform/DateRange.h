#pragma once

#include <cstdint>

namespace quillform {

// What the date functions share with the mask and the reader of date texts.

inline constexpr double kBeforeFirstDate = -657435;  ///< serials of January 1, 100 and later lie above
inline constexpr double kBehindLastDate = 2958466;   ///< serials of December 31, 9999 and earlier lie below

/// Whether a number is the serial of a date in the years 100 to 9999. NaN and infinities aren't.
bool IsDateSerial(double serial);
/// The day of a serial whose time has been rounded to whole seconds.
std::int64_t PartsDay(double serial);
int DaysInMonth(int year, int month);
/// 0..29 mean 2000..2029, 30..99 mean 1930..1999.
int FullYear(int year);

}  // namespace quillform
