#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillform {

/// Leading number of a text: blanks, tabs and line feeds are skipped everywhere, digits, one sign, one point, an
/// exponent behind E or D, and &H / &O prefixes are read up to the first character that can't belong to a number.
/// 0 if there is none. No thousands separators. RunTimeError Overflow beyond the range of a Double, or of 32 bits with
/// a prefix.
double Val(std::string_view text);

/// Plain form: general decimal with one leading blank when not negative. No zero before the point (" .5", "-.5").
std::string Str(double number);
std::string Str(float number);
/// Trimmed form: the plain form without its leading blank.
std::string TrimmedStr(double number);
std::string TrimmedStr(float number);

/// General text of a number when it is joined to a text: 15 significant digits (7 for Single), "0.5" with its zero,
/// exponent form ("1E+15", "1.5E-05") from 1E15 (1E7 for Single) up and below 1E-4. "INF", "-INF" and "NaN" for what
/// isn't a number.
void AppendGeneralNumber(double number, std::string& out);
void AppendGeneralNumber(float number, std::string& out);
void AppendGeneralInteger(std::int64_t number, std::string& out);
/// `tenThousandths` is the amount times 10,000; up to four decimals, no trailing zeros.
void AppendGeneralCurrency(std::int64_t tenThousandths, std::string& out);

/// The whole text as a number, as the platform converts it (CDbl, IsNumeric): outer blanks, sign, thousands commas,
/// a point, an exponent, a leading or trailing currency sign "$", parentheses for negative. Empty if it isn't one.
std::optional<double> ParseNumber(std::string_view text);

/// Nearest whole number, a half going to the even one (CInt, CLng without their range).
double RoundHalfEven(double number);
/// The same as a 16-bit or 32-bit integer; RunTimeError Overflow outside the range.
std::int16_t CInt(double number);
std::int32_t CLng(double number);

}  // namespace quillform
