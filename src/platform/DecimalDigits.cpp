#include "platform/DecimalDigits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "platform/NumberText.h"

namespace quillform {
namespace {

DecimalDigits FromWhole(std::uint64_t number, bool negative, int decimals) {
    DecimalDigits result;
    if (number == 0) return result;
    result.negative = negative;
    const auto end = std::to_chars(result.digits.data(), result.digits.data() + result.digits.size(), number).ptr;
    result.count = static_cast<int>(end - result.digits.data());
    result.pointAt = result.count - decimals;
    return result;
}

std::uint64_t Magnitude(std::int64_t number) {
    const auto bits = static_cast<std::uint64_t>(number);
    return number < 0 ? 0 - bits : bits;
}

/// Numbers that are a whole number of hundredths or ten-thousandths with at most 15 digits: the usual amounts. The
/// quotient of two exact numbers is the double nearest to the decimal, so equality proves these are its digits.
std::optional<DecimalDigits> ShortDigits(double number) {
    constexpr double limit = 1e15;
    const double size = std::fabs(number);
    if (!(size < limit)) return std::nullopt;
    struct Scale {
        double factor;
        int decimals;
    };
    for (const Scale scale : {Scale{1, 0}, Scale{100, 2}, Scale{10000, 4}}) {
        const double scaled = std::nearbyint(size * scale.factor);
        if (scaled < limit && scaled / scale.factor == size)
            return FromWhole(static_cast<std::uint64_t>(scaled), number < 0, scale.decimals);
    }
    return std::nullopt;
}

/// Reads "d.ddde-xx", what to_chars writes in its scientific form.
DecimalDigits FromScientific(std::string_view text) {
    DecimalDigits result;
    if (text.front() == '-') {
        result.negative = true;
        text.remove_prefix(1);
    }
    const std::size_t mark = text.find('e');
    for (const char c : text.substr(0, mark))
        if (c != '.') result.digits[static_cast<std::size_t>(result.count++)] = c;
    int exponent = 0;
    const char* from = text.data() + mark + 1;
    std::from_chars(*from == '+' ? from + 1 : from, text.data() + text.size(), exponent);
    result.pointAt = exponent + 1;
    return result;
}

template <typename Float>
DecimalDigits FromFloat(Float number, int precision) {
    if (number == 0 || !std::isfinite(number)) return {};
    std::array<char, 40> text;
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::scientific, precision - 1).ptr;
    return FromScientific({text.data(), static_cast<std::size_t>(end - text.data())});
}

void AppendExponent(int exponent, std::string& out) {
    out += exponent < 0 ? "E-" : "E+";
    const int size = std::abs(exponent);
    if (size < 10) out += '0';
    AppendWhole(static_cast<std::uint64_t>(size), out);
}

}  // namespace

void DecimalDigits::RoundTo(int decimals) {
    const int keep = pointAt + decimals;
    if (keep >= count) return;
    const bool up = keep >= 0 && At(keep) >= '5';
    count = std::max(keep, 0);
    if (up) {
        int last = count - 1;
        while (last >= 0 && digits[static_cast<std::size_t>(last)] == '9') --last;
        count = last + 1;
        if (last >= 0) {
            ++digits[static_cast<std::size_t>(last)];
        } else {
            digits[0] = '1';
            count = 1;
            ++pointAt;
        }
    }
    if (count == 0) {
        negative = false;
        pointAt = 0;
    }
}

void DecimalDigits::DropTrailingZeros() {
    while (count > 0 && digits[static_cast<std::size_t>(count - 1)] == '0') --count;
}

void DecimalDigits::Assign(std::string_view plainDigits, int point) {
    const auto first = std::min(plainDigits.find_first_not_of('0'), plainDigits.size());
    plainDigits.remove_prefix(first);
    count = static_cast<int>(std::min<std::size_t>(plainDigits.size(), kCapacity));
    pointAt = count == 0 ? 0 : point - static_cast<int>(first);
    negative = negative && count > 0;
    std::memcpy(digits.data(), plainDigits.data(), static_cast<std::size_t>(count));
}

DecimalDigits DigitsOf(double number) {
    if (const auto digits = ShortDigits(number)) return *digits;
    return FromFloat(number, 15);
}

DecimalDigits DigitsOf(float number) { return FromFloat(number, 7); }

DecimalDigits DigitsOfInteger(std::int64_t number) { return FromWhole(Magnitude(number), number < 0, 0); }

DecimalDigits DigitsOfCurrency(std::int64_t tenThousandths) {
    return FromWhole(Magnitude(tenThousandths), tenThousandths < 0, 4);
}

std::optional<DecimalDigits> DigitsOfText(std::string_view text) {
    const auto parts = ReadNumberText(text);
    if (!parts) return std::nullopt;
    DecimalDigits result;
    result.negative = parts->negative;
    result.Assign(parts->digits.View(), parts->pointAt);
    return result;
}

void AppendGeneralDigits(const DecimalDigits& number, int precision, std::string& out) {
    DecimalDigits digits = number;
    digits.DropTrailingZeros();
    if (digits.IsZero()) {
        out += '0';
        return;
    }
    if (digits.negative) out += '-';
    const std::string_view all(digits.digits.data(), static_cast<std::size_t>(digits.count));
    const int point = digits.pointAt;
    if (point < -3 || point > precision) {
        out += all[0];
        if (digits.count > 1) out.append(1, '.').append(all.substr(1));
        AppendExponent(point - 1, out);
    } else if (point <= 0) {
        out.append("0.").append(static_cast<std::size_t>(-point), '0').append(all);
    } else if (point >= digits.count) {
        out.append(all).append(static_cast<std::size_t>(point - digits.count), '0');
    } else {
        const auto before = static_cast<std::size_t>(point);
        out.append(all.substr(0, before)).append(1, '.').append(all.substr(before));
    }
}

}  // namespace quillform
