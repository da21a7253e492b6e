#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillform {

/// A number as decimal digits on the stack: 0.d1d2d3... times ten to the power `pointAt`. The first digit isn't 0, and
/// zero has no digits. This is what general texts and number masks are written from.
struct DecimalDigits {
    static constexpr int kCapacity = 40;  ///< more than the 29 digits of the widest exact type, Decimal

    bool negative = false;
    int count = 0;
    int pointAt = 0;
    std::array<char, kCapacity> digits;  // only the first `count` are set

    bool IsZero() const { return count == 0; }
    /// The digit of the place `place`: 0 is the first one, those outside are zeros.
    char At(int place) const { return place >= 0 && place < count ? digits[static_cast<std::size_t>(place)] : '0'; }
    /// Keeps `decimals` digits behind the point; half goes away from zero.
    void RoundTo(int decimals);
    void DropTrailingZeros();
    /// Sets the digits from plain characters; leading zeros are dropped, `point` counts the digits before the point.
    void Assign(std::string_view plainDigits, int point);
};

/// 15 significant digits, 7 for Single: the precision of general texts. Not for infinities and NaN.
DecimalDigits DigitsOf(double number);
DecimalDigits DigitsOf(float number);
DecimalDigits DigitsOfInteger(std::int64_t number);
DecimalDigits DigitsOfCurrency(std::int64_t tenThousandths);
/// The digits of a text that reads as a number (see ParseNumber); empty if it doesn't.
std::optional<DecimalDigits> DigitsOfText(std::string_view text);

/// The general text: plain digits, or an exponent below 1E-4 or where the digits before the point are more than
/// `precision`.
void AppendGeneralDigits(const DecimalDigits& number, int precision, std::string& out);

}  // namespace quillform
