#include "platform/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/DecimalDigits.h"
#include "platform/NumberText.h"
#include "platform/RunTimeError.h"

namespace quillform {
namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;
constexpr int kLargestExponent = 99999;  // far outside every range, and sums of two stay in an int

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// Nearest double of digits with the point at `pointAt`. Infinite beyond the range.
double NearestDouble(bool negative, std::string_view digits, int pointAt) {
    const auto first = digits.find_first_not_of('0');
    if (first == std::string_view::npos) return 0;
    ShortText text;
    for (const char c : digits.substr(first)) text.Add(c);
    text.Add('e');
    std::array<char, 12> exponent;
    const auto power = pointAt - static_cast<int>(digits.size());
    const auto end = std::to_chars(exponent.data(), exponent.data() + exponent.size(), power).ptr;
    for (const char* c = exponent.data(); c != end; ++c) text.Add(*c);

    double number = 0;
    const std::string_view view = text.View();
    const auto error = std::from_chars(view.data(), view.data() + view.size(), number).ec;
    if (error == std::errc::result_out_of_range)
        number = pointAt > static_cast<int>(first) ? std::numeric_limits<double>::infinity() : 0;
    return negative ? -number : number;
}

/// Walks over a text and leaves out its blanks.
class LeadingNumber {
public:
    explicit LeadingNumber(std::string_view text) : text_(text) { SkipBlanks(); }

    double Read() {
        if (Peek() == '&') return ReadPrefixed();
        const bool negative = Peek() == '-';
        if (negative || Peek() == '+') Next();
        ShortText digits;
        int count = 0;
        for (; IsDigit(Peek()); Next(), ++count) digits.Add(Peek());
        int pointAt = count;
        if (Peek() == '.')
            for (Next(); IsDigit(Peek()); Next(), ++count) digits.Add(Peek());
        if (count == 0) return 0;
        pointAt += ReadExponent();
        const double number = NearestDouble(negative, digits.View(), pointAt);
        if (std::isinf(number)) throw RunTimeError(ErrorNumber::Overflow, "A number in a text is too large.");
        return number;
    }

private:
    char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    void Next() {
        ++at_;
        SkipBlanks();
    }
    void SkipBlanks() {
        while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
    }

    int ReadExponent() {
        const char mark = static_cast<char>(Peek() & ~0x20);
        if (mark != 'E' && mark != 'D') return 0;
        Next();
        const bool negative = Peek() == '-';
        if (negative || Peek() == '+') Next();
        int exponent = 0;
        for (; IsDigit(Peek()); Next()) exponent = std::min(exponent * 10 + (Peek() - '0'), kLargestExponent);
        return negative ? -exponent : exponent;
    }

    static int DigitOf(char c, int base) {
        const char letter = static_cast<char>(c & ~0x20);
        const int digit = IsDigit(c) ? c - '0' : letter >= 'A' && letter <= 'F' ? letter - 'A' + 10 : base;
        return digit < base ? digit : -1;
    }

    /// &H or &O digits fill a 16-bit integer, if they are more a 32-bit one; an & behind them makes it 32 bits.
    double ReadPrefixed() {
        Next();
        const char letter = static_cast<char>(Peek() & ~0x20);
        const int base = letter == 'H' ? 16 : 8;
        if (letter == 'H' || letter == 'O') Next();
        std::uint64_t bits = 0;
        for (; DigitOf(Peek(), base) >= 0; Next()) {
            bits = bits * static_cast<unsigned>(base) + static_cast<unsigned>(DigitOf(Peek(), base));
            if (bits > 0xFFFFFFFF) throw RunTimeError(ErrorNumber::Overflow, "A number in a text is too large.");
        }
        if (bits <= 0xFFFF && Peek() != '&') return static_cast<std::int16_t>(bits);
        return static_cast<std::int32_t>(bits);
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

/// Reads the surroundings of a number, of which each kind may stand once: sign, currency sign, parentheses.
class NumberReader {
public:
    explicit NumberReader(std::string_view text) : text_(text) {}

    std::optional<NumberText> Read() {
        ReadHead();
        if (!ReadDigits()) return std::nullopt;
        ReadTail();
        if (at_ != text_.size() || open_) return std::nullopt;
        return std::move(result_);
    }

private:
    char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    bool Take(char c) {
        if (Peek() != c) return false;
        ++at_;
        return true;
    }
    void SkipBlanks() {
        while (IsBlank(Peek())) ++at_;
    }

    bool TakeSign() {
        if (signed_ || (Peek() != '-' && Peek() != '+')) return false;
        result_.negative = text_[at_++] == '-';
        return signed_ = true;
    }
    bool TakeCurrency() { return !currency_ && Take('$') && (currency_ = true); }
    bool TakeOpen() { return !signed_ && Take('(') && (signed_ = open_ = result_.negative = true); }
    bool TakeClose() {
        if (!open_ || !Take(')')) return false;
        open_ = false;
        return true;
    }

    void ReadHead() {
        do SkipBlanks();
        while (TakeSign() || TakeCurrency() || TakeOpen());
    }
    void ReadTail() {
        do SkipBlanks();
        while (TakeSign() || TakeCurrency() || TakeClose());
    }

    bool ReadDigits() {
        int count = 0;
        for (; IsDigit(Peek()) || (Peek() == ',' && count > 0); ++at_) {
            if (Peek() == ',') continue;
            result_.digits.Add(Peek());
            ++count;
        }
        result_.pointAt = count;
        if (Take('.'))
            for (; IsDigit(Peek()); ++at_, ++count) result_.digits.Add(Peek());
        return count > 0 && ReadExponent();
    }

    bool ReadExponent() {
        if (Peek() != 'E' && Peek() != 'e') return true;
        ++at_;
        const bool negative = Peek() == '-';
        if (negative || Peek() == '+') ++at_;
        if (!IsDigit(Peek())) return false;
        int exponent = 0;
        for (; IsDigit(Peek()); ++at_) exponent = std::min(exponent * 10 + (Peek() - '0'), kLargestExponent);
        result_.pointAt += negative ? -exponent : exponent;
        return InRange();
    }

    /// A number too large for a Double isn't one; what is too small is zero.
    bool InRange() {
        const double number = NearestDouble(false, result_.digits.View(), result_.pointAt);
        if (number == 0) result_ = NumberText();
        return std::isfinite(number);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    NumberText result_;
    bool signed_ = false;
    bool currency_ = false;
    bool open_ = false;
};

template <typename Float>
void AppendFloat(Float number, int precision, std::string& out) {
    if (std::isnan(number))
        out += "NaN";
    else if (std::isinf(number))
        out += number < 0 ? "-INF" : "INF";
    else
        AppendGeneralDigits(DigitsOf(number), precision, out);
}

template <typename Float>
std::string TrimmedStrOf(Float number) {
    std::string text;
    AppendGeneralNumber(number, text);
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    if (text.compare(sign, 2, "0.") == 0) text.erase(sign, 1);
    return text;
}

template <typename Float>
std::string StrOf(Float number) {
    std::string text = TrimmedStrOf(number);
    if (!text.starts_with('-')) text.insert(text.begin(), ' ');
    return text;
}

template <typename Integer>
Integer Narrowed(double number) {
    const double rounded = RoundHalfEven(number);
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
        std::string text;
        AppendGeneralNumber(number, text);
        throw RunTimeError(ErrorNumber::Overflow, "The number " + text + " is too large for a " +
                                                      std::to_string(sizeof(Integer) * 8) + "-bit integer.");
    }
    return static_cast<Integer>(rounded);
}

}  // namespace

std::optional<NumberText> ReadNumberText(std::string_view text) {
    // Most texts that are no number show it by their first character.
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return std::nullopt;
    const char c = text[first];
    if (!IsDigit(c) && c != '.' && c != '-' && c != '+' && c != '$' && c != '(') return std::nullopt;
    return NumberReader(text).Read();
}

double Val(std::string_view text) { return LeadingNumber(text).Read(); }

std::string Str(double number) { return StrOf(number); }
std::string Str(float number) { return StrOf(number); }
std::string TrimmedStr(double number) { return TrimmedStrOf(number); }
std::string TrimmedStr(float number) { return TrimmedStrOf(number); }

void AppendGeneralNumber(double number, std::string& out) { AppendFloat(number, kDoubleDigits, out); }
void AppendGeneralNumber(float number, std::string& out) { AppendFloat(number, kSingleDigits, out); }

void AppendGeneralInteger(std::int64_t number, std::string& out) {
    std::array<char, 24> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    out.append(text.data(), end);
}

void AppendGeneralCurrency(std::int64_t tenThousandths, std::string& out) {
    AppendGeneralDigits(DigitsOfCurrency(tenThousandths), DecimalDigits::kCapacity, out);
}

std::optional<double> ParseNumber(std::string_view text) {
    const auto parts = ReadNumberText(text);
    if (!parts) return std::nullopt;
    const double number = NearestDouble(parts->negative, parts->digits.View(), parts->pointAt);
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

double RoundHalfEven(double number) {
    const double floor = std::floor(number);
    const double rest = number - floor;
    if (rest < 0.5) return floor;
    if (rest > 0.5) return floor + 1;
    return std::fmod(floor, 2) == 0 ? floor : floor + 1;
}

std::int16_t CInt(double number) { return Narrowed<std::int16_t>(number); }
std::int32_t CLng(double number) { return Narrowed<std::int32_t>(number); }

}  // namespace quillform
