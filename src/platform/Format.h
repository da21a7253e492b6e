#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Value.h"

namespace quillform {

/// A format mask, read once and applied to any number of values.
///
/// Numbers: `#` `0` `,` `.` `%` `E+` `E-` `e+` `e-`, up to four sections by `;` (positive, negative, zero, Null), a
/// comma behind the last digit place scales by a thousand. Dates and times: `c` `d`..`dddddd` `w` `ww` `m`..`mmmm` `q`
/// `y` `yy` `yyyy` `h` `hh` `n` `nn` (and `m` or `mm` behind `h` or before `s`) `s` `ss` `ttttt` `AM/PM` `am/pm` `A/P`
/// `a/p` `AMPM`, which make hours count to 12 wherever they stand. Texts: `@` `&` `<` `>` `!`. Named masks: "General
/// Number", "Currency", "Fixed", "Standard", "Percent", "Scientific", "Yes/No", "True/False", "On/Off", "General Date",
/// "Long Date", "Medium Date", "Short Date", "Long Time", "Medium Time", "Short Time".
/// `\` and double quotes make literals; `-` `+` `$` `(` `)` `:` `/` and blank stand as they are. English names.
///
/// A text that reads as a number (or, by a date mask, as a date) is formatted as one; any other text stays unchanged
/// unless the mask is a text mask. The empty mask, one of blanks only, and one that would write nothing at all, give
/// the general text. The first character of a mask that belongs to numbers, dates or texts only decides which of them
/// it is for; what has no meaning for that kind stands as it is. A number outside the range of dates stays general text
/// under a date mask. Texts that are dates without a year get the year in which the mask was made. A number that a
/// section rounds to zero is written as zero: without a sign, and by the third section if there is one. Numbers are
/// rounded half away from zero on their general decimal digits (15, or 7 for Single), so that what a user sees in the
/// general text is what the mask rounds.
class Mask {
public:
    Mask();
    explicit Mask(std::string_view mask);
    Mask(const Mask&);
    Mask(Mask&&) noexcept;
    Mask& operator=(const Mask&);
    Mask& operator=(Mask&&) noexcept;
    ~Mask();

    /// Whether the mask leaves values as general text.
    bool IsGeneral() const;
    /// Appends the formatted value. No allocation for plain numbers and dates beyond what `out` grows.
    void AppendTo(const ValueView& value, std::string& out) const;

private:
    struct Program;
    std::shared_ptr<const Program> program_;  // immutable, so copies share it
};

std::string Format(const ValueView& value, std::string_view mask);

}  // namespace quillform
