#include "platform/MaskWriters.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/DateRange.h"
#include "platform/Dates.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

namespace quillform::mask {
namespace {

void AppendPadded(int number, std::size_t width, std::string& out) {
    std::array<char, 12> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    const auto length = static_cast<std::size_t>(end - text.data());
    if (length < width) out.append(width - length, '0');
    out.append(text.data(), length);
}

/// Digits from the place `from` down to the place `to`, both counted from the units.
void AppendIntegerPlaces(const DecimalDigits& digits, int from, int to, bool grouped, std::string& out) {
    for (int place = from; place >= to; --place) {
        out += digits.At(digits.pointAt - 1 - place);
        if (grouped && place > 0 && place % 3 == 0) out += ',';
    }
}

void AppendIntegers(const Section& section, const Operation& operation, const DecimalDigits& digits, std::string& out) {
    const int last = static_cast<int>(operation.rest);
    const int first = last + static_cast<int>(operation.count) - 1;
    const int written = std::max({digits.pointAt, section.neededIntegers, 0}) - 1;
    // The first place takes all digits for which the mask has no place.
    const bool leads = first == section.integerPlaces - 1;
    AppendIntegerPlaces(digits, leads ? written : std::min(written, first), last, section.grouped, out);
}

void AppendDecimals(const Section& section, const Operation& operation, const DecimalDigits& digits, std::string& out) {
    const int first = static_cast<int>(operation.rest);
    const int behind = first + static_cast<int>(operation.count);
    const int end = std::min(behind, std::max(section.neededDecimals, digits.count - digits.pointAt));
    for (int place = first; place < end; ++place) out += digits.At(digits.pointAt + place);
}

void AppendExponent(const Operation& operation, int exponent, std::string& out) {
    out += static_cast<char>(operation.rest);
    if (exponent < 0 || operation.always) out += exponent < 0 ? '-' : '+';
    AppendPadded(std::abs(exponent), std::max<std::size_t>(operation.count, 1), out);
}

/// Moves the point so that the places before it are filled, and returns the exponent that this takes.
int Normalize(const Section& section, DecimalDigits& digits) {
    if (digits.IsZero()) return 0;
    int exponent = digits.pointAt - section.integerPlaces;
    digits.pointAt = section.integerPlaces;
    digits.RoundTo(section.decimalPlaces);
    if (digits.pointAt > section.integerPlaces) {  // 9.99 became 10.0
        digits.pointAt = section.integerPlaces;
        ++exponent;
    }
    return exponent;
}

}  // namespace

bool RoundsToZero(const Section& section, DecimalDigits digits) {
    if (digits.IsZero() || section.scientific || section.integerPlaces + section.decimalPlaces == 0)
        return digits.IsZero();
    digits.pointAt += section.power;
    digits.RoundTo(section.decimalPlaces);
    return digits.IsZero();
}

void AppendNumber(const Program& program, const Section& section, DecimalDigits digits, std::string& out) {
    if (!digits.IsZero()) digits.pointAt += section.power;
    int exponent = 0;
    if (section.scientific)
        exponent = Normalize(section, digits);
    else
        digits.RoundTo(section.decimalPlaces);
    digits.DropTrailingZeros();

    if (digits.negative && !section.IsEmpty()) out += '-';
    for (const Operation& operation : section.operations) {
        switch (operation.step) {
            case Step::Literal:
                out += program.LiteralOf(operation);
                break;
            case Step::IntegerDigits:
                AppendIntegers(section, operation, digits, out);
                break;
            case Step::AllInteger:
                AppendIntegerPlaces(digits, digits.pointAt - 1, 0, section.grouped, out);
                break;
            case Step::Point:
                out += '.';
                break;
            case Step::DecimalDigits:
                AppendDecimals(section, operation, digits, out);
                break;
            case Step::Exponent:
                AppendExponent(operation, exponent, out);
                break;
            default:
                break;  // no step of dates or texts is compiled into a number section
        }
    }
}

namespace {

void AppendNumberOf(int number, std::string& out) { AppendPadded(number, 1, out); }

void AppendLongDate(const DateParts& parts, std::string& out) {
    out.append(WeekdayName(parts.weekday)).append(", ").append(MonthName(parts.month)).append(1, ' ');
    AppendNumberOf(parts.day, out);
    out += ", ";
    AppendPadded(parts.year, 4, out);
}

void AppendShortDate(const DateParts& parts, std::string& out) {
    AppendNumberOf(parts.month, out);
    out += '/';
    AppendNumberOf(parts.day, out);
    out += '/';
    AppendPadded(parts.year, 4, out);
}

int HalfDayHour(int hour) { return hour % 12 == 0 ? 12 : hour % 12; }

void AppendLongTime(const DateParts& parts, std::string& out) {
    AppendNumberOf(HalfDayHour(parts.hour), out);
    out += ':';
    AppendPadded(parts.minute, 2, out);
    out += ':';
    AppendPadded(parts.second, 2, out);
    out += parts.hour < 12 ? " AM" : " PM";
}

void AppendDateStep(const Section& section, Step step, const DateParts& parts, double serial, std::string& out) {
    const int hour = section.halfDay ? HalfDayHour(parts.hour) : parts.hour;
    const bool morning = parts.hour < 12;
    switch (step) {
        case Step::GeneralDate:
            AppendGeneralDate(serial, out);
            break;
        case Step::ShortDate:
            AppendShortDate(parts, out);
            break;
        case Step::LongDate:
            AppendLongDate(parts, out);
            break;
        case Step::Day:
            AppendNumberOf(parts.day, out);
            break;
        case Step::Day2:
            AppendPadded(parts.day, 2, out);
            break;
        case Step::DayName3:
            out += WeekdayName(parts.weekday).substr(0, 3);
            break;
        case Step::DayName:
            out += WeekdayName(parts.weekday);
            break;
        case Step::Weekday:
            AppendNumberOf(parts.weekday, out);
            break;
        case Step::Week:
            AppendNumberOf(DatePart(DateInterval::Week, serial), out);
            break;
        case Step::Month:
            AppendNumberOf(parts.month, out);
            break;
        case Step::Month2:
            AppendPadded(parts.month, 2, out);
            break;
        case Step::MonthName3:
            out += MonthName(parts.month).substr(0, 3);
            break;
        case Step::MonthName:
            out += MonthName(parts.month);
            break;
        case Step::Quarter:
            AppendNumberOf((parts.month - 1) / 3 + 1, out);
            break;
        case Step::DayOfYear:
            AppendNumberOf(DatePart(DateInterval::DayOfYear, serial), out);
            break;
        case Step::Year2:
            AppendPadded(parts.year % 100, 2, out);
            break;
        case Step::Year4:
            AppendPadded(parts.year, 4, out);
            break;
        case Step::Hour:
            AppendNumberOf(hour, out);
            break;
        case Step::Hour2:
            AppendPadded(hour, 2, out);
            break;
        case Step::Minute:
            AppendNumberOf(parts.minute, out);
            break;
        case Step::Minute2:
            AppendPadded(parts.minute, 2, out);
            break;
        case Step::Second:
            AppendNumberOf(parts.second, out);
            break;
        case Step::Second2:
            AppendPadded(parts.second, 2, out);
            break;
        case Step::LongTime:
            AppendLongTime(parts, out);
            break;
        case Step::HalfUpper:
            out += morning ? "AM" : "PM";
            break;
        case Step::HalfLower:
            out += morning ? "am" : "pm";
            break;
        case Step::HalfLetterUpper:
            out += morning ? 'A' : 'P';
            break;
        case Step::HalfLetterLower:
            out += morning ? 'a' : 'p';
            break;
        default:
            break;  // no step of numbers or texts is compiled into a date section
    }
}

void ChangeCase(LetterCase letters, std::size_t from, std::string& out) {
    if (letters == LetterCase::Keep) return;
    const std::string_view text = std::string_view(out).substr(from);
    const std::string changed = letters == LetterCase::Upper ? UpperCase(text) : LowerCase(text);
    out.resize(from);
    out += changed;
}

}  // namespace

void AppendDate(const Program& program, const Section& section, double serial, std::string& out) {
    const std::size_t begin = out.size();
    const DateParts parts = PartsOf(serial);
    for (const Operation& operation : section.operations) {
        if (operation.step == Step::Literal)
            out += program.LiteralOf(operation);
        else
            AppendDateStep(section, operation.step, parts, serial, out);
    }
    ChangeCase(section.letters, begin, out);
}

namespace {

/// Deals the characters of a text out to the places of a mask.
class Dealer {
public:
    Dealer(const Section& section, std::string_view text)
        : text_(text),
          places_(static_cast<std::size_t>(section.characterPlaces)),
          characters_(CountCharacters(text)),
          fromLeft_(section.fillsFromLeft) {}

    /// The characters of the next place: none where the text is shorter than the mask, several where it is longer.
    std::string_view Next() {
        const std::size_t place = place_++;
        const std::size_t surplus = characters_ > places_ ? characters_ - places_ : 0;
        const std::size_t lack = places_ > characters_ ? places_ - characters_ : 0;
        const bool takesSurplus = fromLeft_ ? place + 1 == places_ : place == 0;
        const bool isEmpty = fromLeft_ ? place >= characters_ : place < lack;
        return isEmpty ? std::string_view() : Take(takesSurplus ? surplus + 1 : 1);
    }

private:
    std::string_view Take(std::size_t count) {
        const std::string_view taken = LeftCharacters(text_, count);
        text_.remove_prefix(taken.size());
        return taken;
    }

    std::string_view text_;
    std::size_t places_;
    std::size_t characters_;
    bool fromLeft_;
    std::size_t place_ = 0;
};

}  // namespace

void AppendText(const Program& program, const Section& section, std::string_view text, std::string& out) {
    const std::string cased = section.letters == LetterCase::Upper   ? UpperCase(text)
                              : section.letters == LetterCase::Lower ? LowerCase(text)
                                                                     : std::string();
    Dealer dealer(section, section.letters == LetterCase::Keep ? text : std::string_view(cased));
    for (const Operation& operation : section.operations) {
        if (operation.step == Step::Literal) {
            out += program.LiteralOf(operation);
        } else if (operation.step == Step::WholeText) {
            out += section.letters == LetterCase::Keep ? text : std::string_view(cased);
        } else {
            const std::string_view characters = dealer.Next();
            if (characters.empty() && operation.step == Step::Character) out += ' ';
            out += characters;
        }
    }
}

}  // namespace quillform::mask
