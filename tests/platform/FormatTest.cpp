#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "platform/Format.h"

namespace quillform {
namespace {

struct Case {
    Value value;
    std::string_view mask;
    std::string_view expected;
};

void Check(std::initializer_list<Case> cases) {
    for (const Case& c : cases)
        EXPECT_EQ(Format(c.value, c.mask), c.expected) << "mask " << c.mask << ", value " << GeneralText(c.value);
}

Value Number(double number) { return Value::Double(number); }
Value Text(std::string text) { return Value::Text(std::move(text)); }

// 1998-12-04 15:07:09, a Friday
constexpr double kFriday = 36133 + (15 * 3600 + 7 * 60 + 9) / 86400.0;

TEST(Format, NumberPlaces) {
    Check({
        {Number(1234), "###,###,##0", "1,234"},
        {Number(0), "###,###,##0", "0"},
        {Number(1234567.895), "###,###,##0.00", "1,234,567.90"},
        {Number(0), "#", ""},
        {Number(0), "#.##", "."},
        {Number(0.5), "#.##", ".5"},
        {Number(1), "0.##", "1."},
        {Number(1.25), "0.##", "1.25"},
        {Number(5), "000", "005"},
        {Number(5), "0##", "005"},
        {Number(1234), "00", "1234"},
        {Number(12.5), ".00", "12.50"},
        {Number(0.25), ".00", ".25"},
        {Number(0.5), "0.#0", "0.50"},
        {Number(1234.5), "0,0.0", "1,234.5"},
        {Number(5), "#,##0", "5"},
        {Number(5), "0,000", "0,005"},
        {Number(1e20), "#,##0", "100,000,000,000,000,000,000"},
        {Number(0.05), "0.0", "0.1"},
        {Number(0.04), "0.0", "0.0"},
        {Number(0.001), "0.00", "0.00"},
        {Number(999.995), "0.00", "1000.00"},
        {Number(9.5), "#", "10"},
    });
}

TEST(Format, SignsAndSections) {
    Check({
        {Number(-5), "0.00", "-5.00"},
        {Number(-5), "$0", "-$5"},
        {Number(-0.001), "0.00", "0.00"},
        {Number(-0.001), "0.00;(0.00)", "0.00"},
        {Number(-0.001), "0.00;(0.00);nil", "nil"},
        {Number(-0.005), "0.00", "-0.01"},
        {Number(-0.3), "0;\\n\\e\\g", "neg"},
        {Number(-7), "0;(0)", "(7)"},
        {Number(7), "0;(0)", "7"},
        {Number(0), "0;(0)", "0"},
        {Number(0), "0;(0);\\-", "-"},
        {Number(-5), "0;;zero", "-5"},
        {Number(0), "0.0;;", "0.0"},
        {Value(), "0;(0);zero;\\N\\o\\n\\e", "None"},
        {Value(), "0", ""},
        {Value(), "", ""},
        {Number(3), "0;1;2;3;4;5", "3"},
        {Number(-3), "\"a;b\"0;\\;0", ";3"},
        {Number(3), "\"a;b\"0;\\;0", "a;b3"},
    });
}

TEST(Format, ScalesPercentsAndExponents) {
    Check({
        {Number(0.126), "0%", "13%"},
        {Number(0.5), "0.0%", "50.0%"},
        {Number(-0.5), "0%", "-50%"},
        {Number(12345678), "#,##0,", "12,346"},
        {Number(12345678), "0,,.00", "12.35"},
        {Number(1500), "0.0,", "1.5"},
        {Number(12345.678), "0.00E+00", "1.23E+04"},
        {Number(12345.678), "0.00e-00", "1.23e04"},
        {Number(0.00012), "0.0E-0", "1.2E-4"},
        {Number(0.00012), "0.0E+000", "1.2E-004"},
        {Number(9.999), "0.00E+00", "1.00E+01"},
        {Number(0), "0.00E+00", "0.00E+00"},
        {Number(-1234), "0.0E+0", "-1.2E+3"},
        {Number(12345), "00.0E+0", "12.3E+3"},
        {Number(5), "E+", "E+"},
        {Number(5), "0E", "5E"},
    });
}

TEST(Format, LiteralsStandWhereTheyAre) {
    Check({
        {Number(1234567890), "(###) ###-####", "(123) 456-7890"},
        {Number(5), "$ 0 \"pieces\"", "$ 5 pieces"},
        {Number(5), "\\#0", "#5"},
        {Number(5), "0\\", "5"},
        {Number(5), "0\"open", "5open"},
        {Number(5), "0\"\"", "5"},
        {Number(5), "0 days", "5 days"},
        {Number(5), "0 \xE2\x82\xAC", "5 \xE2\x82\xAC"},
        {Number(5),
         "\\\xE2\x82\xAC"
         "0",
         "\xE2\x82\xAC"
         "5"},
        {Number(123), "0-0-0", "1-2-3"},
        {Number(1.25), "0.0-0", "1.2-5"},
        {Number(5), "\\x", "x"},
    });
}

TEST(Format, ExactTypesLoseNoDigit) {
    Check({
        {Value::Integer(std::numeric_limits<std::int64_t>::min()), "#,##0", "-9,223,372,036,854,775,808"},
        {Value::Currency(9223372036854775807), "#,##0.0000", "922,337,203,685,477.5807"},
        {Value::Currency(-5), "0.00##", "-0.0005"},
        {Value::Currency(12345), "0.00", "1.23"},
        {Value::Currency(12350), "0.00", "1.24"},
        {Value::Decimal("-79228162514264337593543950335"), "#,##0", "-79,228,162,514,264,337,593,543,950,335"},
        {Value::Decimal("0.0000000000000000000000000001"), "0.0000000000000000000000000000",
         "0.0000000000000000000000000001"},
        {Text("12345678901234567890.12"), "#,##0.00", "12,345,678,901,234,567,890.12"},
        {Value::Single(0.1f), "0.000000000", "0.100000000"},
        {Value::Single(16777216.0f), "0", "16777220"},
        {Number(0.1 + 0.2), "0.00000000000000000", "0.30000000000000000"},
        {Number(1.005), "0.00", "1.01"},
        {Number(2.675), "0.00", "2.68"},
        {Number(1.0 / 3 * 1e20), "0", "33333333333333300000"},
    });
}

TEST(Format, TextsThatReadAsNumbers) {
    Check({
        {Text("1234.5"), "#,##0.00", "1,234.50"},
        {Text(" 12 "), "0.0", "12.0"},
        {Text("1,234"), "0", "1234"},
        {Text("$5"), "0.00", "5.00"},
        {Text("(5)"), "0", "-5"},
        {Text("5-"), "0", "-5"},
        {Text("1E3"), "0", "1000"},
        {Text("1e-9999"), "0.0", "0.0"},
        {Text("1e9999"), "0.0", "1e9999"},
        {Text("12abc"), "0.00", "12abc"},
        {Text("abc"), "0.00", "abc"},
        {Text(""), "0.00", ""},
        {Text("-"), "0", "-"},
        {Text("."), "0", "."},
        {Text("1.2.3"), "0", "1.2.3"},
        {Text("12/31/1998"), "0", "12/31/1998"},
        {Value::Boolean(true), "0", "-1"},
        {Value::Date(36133.5), "0.00", "36133.50"},
        {Value::Guid("{00000000-0000-0000-0000-000000000000}"), "0", "{00000000-0000-0000-0000-000000000000}"},
        {Number(std::numeric_limits<double>::infinity()), "0", "INF"},
        {Number(std::nan("")), "0", "NaN"},
    });
}

TEST(Format, DatesAndTimes) {
    Check({
        {Value::Date(kFriday), "mmmm dd, yyyy", "December 04, 1998"},
        {Value::Date(kFriday), "m/d/yy", "12/4/98"},
        {Value::Date(kFriday), "dd-mmm-yy", "04-Dec-98"},
        {Value::Date(kFriday), "DDD dddd", "Fri Friday"},
        {Value::Date(kFriday), "ddddd", "12/4/1998"},
        {Value::Date(kFriday), "dddddd", "Friday, December 4, 1998"},
        {Value::Date(kFriday), "hh:mm AM/PM", "03:07 PM"},
        {Value::Date(kFriday), "h:mm:ss", "15:07:09"},
        {Value::Date(kFriday), "AM/PM h", "PM 3"},
        {Value::Date(kFriday), "h am/pm A/P a/p AMPM", "3 pm P p PM"},
        {Value::Date(kFriday), "mm:ss", "07:09"},
        {Value::Date(kFriday), "m:s", "7:9"},
        {Value::Date(kFriday), "m/d h:n", "12/4 15:7"},
        {Value::Date(kFriday), "hh mm mm", "15 07 12"},
        {Value::Date(kFriday), "ttttt", "3:07:09 PM"},
        {Value::Date(kFriday), "c", "12/4/1998 3:07:09 PM"},
        {Value::Date(kFriday), "y q w ww", "338 4 6 49"},
        {Value::Date(kFriday), "yyyy\"-\"mm\\-dd", "1998-12-04"},
        {Value::Date(kFriday), "dd.mm.yyyy", "04.12.1998"},
        {Value::Date(kFriday), "d \\d\\a\\y", "4 day"},
        {Value::Date(kFriday), ">dd-mmm-yy", "04-DEC-98"},
        {Value::Date(0), "h AM/PM", "12 AM"},
        {Value::Date(0.5), "h AM/PM", "12 PM"},
        {Value::Date(-1.25), "m/d/yyyy h:nn", "12/29/1899 6:00"},
        {Value::Date(36133 + 86399.6 / 86400), "m/d/yyyy h:nn:ss", "12/5/1998 0:00:00"},
        {Value::Date(36133 + 59.7 / 86400), "h:nn:ss", "0:01:00"},
        {Value::Date(-657434), "yyyy-mm-dd", "0100-01-01"},
        {Value::Date(2958465.999999), "yyyy-mm-dd hh:nn:ss", "9999-12-31 23:59:59"},
        {Number(1), "m/d/yyyy", "12/31/1899"},
        {Number(1e10), "m/d/yyyy", "10000000000"},
        {Text("36133"), "m/d/yyyy", "12/4/1998"},
        {Text("4 Dec 1998"), "m/d/yyyy", "12/4/1998"},
        {Text("19981204"), "m/d/yyyy", "19981204"},
        {Text("tomorrow"), "m/d/yyyy", "tomorrow"},
        {Text(""), "m/d/yyyy", ""},
        {Value(), "m/d/yyyy", ""},
    });
}

TEST(Format, TextMasks) {
    Check({
        {Text("5551234"), "@@@-@@@@", "555-1234"},
        {Text("ab"), "@@@@", "  ab"},
        {Text("ab"), "!@@@@", "ab  "},
        {Text("ab"), "&&&&", "ab"},
        {Text("abcdef"), "@@\\-@@", "abcd-ef"},
        {Text("abcdef"), "!@@\\-@@", "ab-cdef"},
        {Text("aBc"), "<", "abc"},
        {Text("aBc"), ">", "ABC"},
        {Text("\xC3\xA4\x62"), ">@@@",
         " \xC3\x84"
         "B"},
        {Text("x"), "\\(>\\)", "(X)"},
        {Text(""), "@;\\n\\o\\n\\e", "none"},
        {Value(), "@;\\n\\o\\n\\e", "none"},
        {Value(), "@@", ""},
        {Number(5551234), "@@@-@@@@", "555-1234"},
        {Value::Date(36133), ">@", "12/4/1998"},
    });
}

TEST(Format, NamedMasks) {
    Check({
        {Number(-1234.5), "Currency", "($1,234.50)"},
        {Number(-1234.5), "fixed", "-1234.50"},
        {Number(1234.567), "Standard", "1,234.57"},
        {Number(0.5), "Percent", "50.00%"},
        {Number(1234.5), "Scientific", "1.23E+03"},
        {Number(1234.5), "General Number", "1234.5"},
        {Text("007"), "General Number", "7"},
        {Number(0), "Yes/No", "No"},
        {Value::Boolean(true), "Yes/No", "Yes"},
        {Text("False"), "On/Off", "Off"},
        {Text("maybe"), "True/False", "maybe"},
        {Number(3), "True/False", "True"},
        {Value::Date(kFriday), "General Date", "12/4/1998 3:07:09 PM"},
        {Value::Date(kFriday), "Long Date", "Friday, December 4, 1998"},
        {Value::Date(kFriday), "Medium Date", "04-Dec-98"},
        {Value::Date(kFriday), "Short Date", "12/4/1998"},
        {Value::Date(kFriday), "Long Time", "3:07:09 PM"},
        {Value::Date(kFriday), "Medium Time", "03:07 PM"},
        {Value::Date(kFriday), "Short Time", "15:07"},
    });
}

TEST(Format, EmptyMaskLeavesGeneralText) {
    for (const std::string_view mask : {"", " ", "   ", ";", ";;;", "\\", "\"\"", ","}) {
        EXPECT_TRUE(Mask(mask).IsGeneral());
        EXPECT_EQ(Format(Number(1234.5), mask), "1234.5");
        EXPECT_EQ(Format(Text("abc"), mask), "abc");
    }
    EXPECT_FALSE(Mask("0").IsGeneral());
    EXPECT_TRUE(Mask().IsGeneral());
}

TEST(Format, AppendsAndSharesItsProgram) {
    Mask copy;
    {
        const Mask mask("0.0");
        copy = mask;
    }
    std::string out = "a";
    copy.AppendTo(Value::Integer(1), out);
    copy.AppendTo(Value::Integer(-2), out);
    EXPECT_EQ(out, "a1.0-2.0");
}

/// Digits, grouped and rounded the slow way, as exact arithmetic on the amount.
std::string GroupedByHand(std::int64_t tenThousandths) {
    std::uint64_t size = tenThousandths < 0 ? 0 - static_cast<std::uint64_t>(tenThousandths)
                                            : static_cast<std::uint64_t>(tenThousandths);
    const std::uint64_t cents = size / 100 + (size % 100 >= 50 ? 1 : 0);
    std::string whole = std::to_string(cents / 100);
    for (int at = static_cast<int>(whole.size()) - 3; at > 0; at -= 3) whole.insert(static_cast<std::size_t>(at), ",");
    const std::string decimals = std::to_string(cents % 100 + 100).substr(1);
    return (tenThousandths < 0 && cents > 0 ? "-" : "") + whole + "." + decimals;
}

TEST(Format, AgreesWithExactArithmetic) {
    std::mt19937_64 random(20240611);
    const Mask mask("###,###,##0.00");
    for (int i = 0; i < 20000; ++i) {
        const auto amount = static_cast<std::int64_t>(random()) >> (random() % 63);
        std::string text;
        mask.AppendTo(Value::Currency(amount), text);
        ASSERT_EQ(text, GroupedByHand(amount)) << amount;
        if (amount < -1'000'000'000'000 || amount > 1'000'000'000'000) continue;
        text.clear();
        mask.AppendTo(Value::Double(static_cast<double>(amount) / 10000), text);
        ASSERT_EQ(text, GroupedByHand(amount)) << amount;
    }
}

}  // namespace
}  // namespace quillform
