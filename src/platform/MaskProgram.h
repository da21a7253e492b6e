#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillform::mask {

/// What a mask makes of its values.
enum class Kind : std::uint8_t { General, Number, Date, Text, GeneralNumber, YesNo, TrueFalse, OnOff };

enum class Step : std::uint8_t {
    Literal,
    // Numbers
    IntegerDigits,  ///< `count` places before the point, `rest` more of them behind
    AllInteger,     ///< every digit before the point: the mask begins with the point
    Point,
    DecimalDigits,  ///< `count` places behind the point, `rest` of them before
    Exponent,       ///< `count` digits at least, `rest` the letter; `always` writes the sign of positive ones too
    // Dates and times
    GeneralDate,
    ShortDate,
    LongDate,
    Day,
    Day2,
    DayName3,
    DayName,
    Weekday,
    Week,
    Month,
    Month2,
    MonthName3,
    MonthName,
    Quarter,
    DayOfYear,
    Year2,
    Year4,
    Hour,
    Hour2,
    Minute,
    Minute2,
    Second,
    Second2,
    LongTime,
    HalfUpper,        ///< AM or PM
    HalfLower,        ///< am or pm
    HalfLetterUpper,  ///< A or P
    HalfLetterLower,  ///< a or p
    // Texts
    Character,          ///< a character, or a blank where there is none
    OptionalCharacter,  ///< a character, or nothing
    WholeText,
};

struct Operation {
    Step step = Step::Literal;
    bool always = false;
    std::uint32_t count = 0;
    std::uint32_t rest = 0;  ///< of a literal: its offset in Program::literals, `count` its length
};

enum class LetterCase : std::uint8_t { Keep, Lower, Upper };

/// One of the parts that semicolons separate.
struct Section {
    std::vector<Operation> operations;
    // Numbers
    int integerPlaces = 0;
    int decimalPlaces = 0;
    int neededIntegers = 0;  ///< digits before the point that are written even where they are leading zeros
    int neededDecimals = 0;
    int power = 0;  ///< what the number is scaled by, as a power of ten
    bool grouped = false;
    bool scientific = false;
    // Dates
    bool halfDay = false;  ///< hours count to 12
    // Texts
    int characterPlaces = 0;
    bool fillsFromLeft = false;
    LetterCase letters = LetterCase::Keep;

    bool IsEmpty() const { return operations.empty(); }
};

struct Program {
    Kind kind = Kind::General;
    std::vector<Section> sections;
    std::string literals;
    int currentYear = 0;  ///< for texts that are dates without a year

    std::string_view LiteralOf(const Operation& operation) const {
        return std::string_view(literals).substr(operation.rest, operation.count);
    }
};

Program Compile(std::string_view mask);

}  // namespace quillform::mask
