#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

#include "platform/Numbers.h"
#include "platform/RunTimeError.h"
#include "platform/Value.h"

namespace quillform {
namespace {

TEST(Numbers, ValReadsTheLeadingNumber) {
    struct Case {
        std::string_view text;
        double expected;
    };
    const Case cases[] = {
        {"12abc", 12},
        {"", 0},
        {"abc", 0},
        {"-5.5x", -5.5},
        {"+3", 3},
        {" 1 2\t3\n4", 1234},
        {".5", 0.5},
        {"-.5", -0.5},
        {".", 0},
        {"1.", 1},
        {"1.2.3", 1.2},
        {"1,234", 1},
        {"1E3", 1000},
        {"1e-2", 0.01},
        {"1D2", 100},
        {"1E", 1},
        {"1E+", 1},
        {"1Ex", 1},
        {"- 5", -5},
        {"--5", 0},
        {"&HFF", 255},
        {"&hFFFF", -1},
        {"&HFFFF&", 65535},
        {"&H10000", 65536},
        {"&O17", 15},
        {"&17", 15},
        {"&HFFFFFFFF", -1},
        {"&", 0},
        {"$5", 0},
        {"00012", 12},
        {"199812041530", 199812041530.0},
        {"inf", 0},
        {"nan", 0},
        {"0x10", 0},
        {"1e-400", 0},
        {"123456789012345678901234567890", 123456789012345678901234567890.0},
    };
    for (const Case& c : cases) EXPECT_EQ(Val(c.text), c.expected) << c.text;
    EXPECT_THROW(Val("1E999"), RunTimeError);
    EXPECT_EQ(Val(std::string(500, '0') + "7"), 7);
    EXPECT_EQ(Val("0." + std::string(500, '0') + "1"), 0);
}

TEST(Numbers, GeneralText) {
    struct Case {
        double number;
        std::string_view expected;
    };
    const Case cases[] = {
        {0.1 + 0.2, "0.3"},
        {0, "0"},
        {-0.0, "0"},
        {1, "1"},
        {-1.5, "-1.5"},
        {1e14, "100000000000000"},
        {999999999999999, "999999999999999"},
        {1e15, "1E+15"},
        {1.5e-5, "1.5E-05"},
        {0.0001, "0.0001"},
        {0.00012345, "0.00012345"},
        {1.0 / 3, "0.333333333333333"},
        {2.0 / 3, "0.666666666666667"},
        {123456789012345678.0, "1.23456789012346E+17"},
        {1e100, "1E+100"},
        {-1.7976931348623157e308, "-1.79769313486232E+308"},
        {5e-324, "4.94065645841247E-324"},
        {999999999999999.9, "1E+15"},
    };
    for (const Case& c : cases) EXPECT_EQ(GeneralText(Value::Double(c.number)), c.expected);
    EXPECT_EQ(GeneralText(Value::Single(0.1f)), "0.1");
    EXPECT_EQ(GeneralText(Value::Single(1.0f / 3)), "0.3333333");
    EXPECT_EQ(GeneralText(Value::Single(1e7f)), "1E+07");
    EXPECT_EQ(GeneralText(Value::Currency(-12300)), "-1.23");
    EXPECT_EQ(GeneralText(Value::Currency(5)), "0.0005");
    EXPECT_EQ(GeneralText(Value::Currency(std::numeric_limits<std::int64_t>::min())), "-922337203685477.5808");
    EXPECT_EQ(GeneralText(Value::Integer(std::numeric_limits<std::int64_t>::min())), "-9223372036854775808");
    EXPECT_EQ(GeneralText(Value::Boolean(true)), "True");
    EXPECT_EQ(GeneralText(Value::Binary("a\x80")), "a\xE2\x82\xAC");
    EXPECT_EQ(GeneralText(Value()), "");
}

TEST(Numbers, GeneralTextHasFifteenDigitsOfAnyDouble) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 50000; ++i) {
        const double scale[] = {1, 100, 10000, 1e-7, 1e9};
        const double number =
            static_cast<double>(static_cast<std::int64_t>(random()) >> (random() % 60)) / scale[i % 5];
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.15g", number);
        ASSERT_EQ(std::strtod(GeneralText(Value::Double(number)).c_str(), nullptr), std::strtod(expected, nullptr))
            << expected;
    }
}

TEST(Numbers, StrHasRoomForTheSign) {
    EXPECT_EQ(Str(5.0), " 5");
    EXPECT_EQ(Str(-5.0), "-5");
    EXPECT_EQ(Str(0.5), " .5");
    EXPECT_EQ(Str(-0.5), "-.5");
    EXPECT_EQ(Str(0.0), " 0");
    EXPECT_EQ(Str(1.5e-5), " 1.5E-05");
    EXPECT_EQ(TrimmedStr(0.5), ".5");
    EXPECT_EQ(TrimmedStr(0.1f), ".1");
    EXPECT_EQ(TrimmedStr(10.25), "10.25");
}

TEST(Numbers, ParseNumberTakesTheWholeText) {
    struct Case {
        std::string_view text;
        std::optional<double> expected;
    };
    const Case cases[] = {
        {"1", 1},       {" 1 ", 1},    {"-1.5", -1.5},    {"1,234.5", 1234.5}, {"$1", 1},     {"1$", 1},
        {"-$1", -1},    {"$-1", -1},   {"($1.50)", -1.5}, {"(1)", -1},         {"1-", -1},    {"1E2", 100},
        {"1e-2", 0.01}, {".5", 0.5},   {"5.", 5},         {"$ 5", 5},          {"+5", 5},     {"0", 0},
        {"", {}},       {" ", {}},     {"-", {}},         {"1x", {}},          {"x1", {}},    {"1 2", {}},
        {"(1", {}},     {"1)", {}},    {"--1", {}},       {"-1-", {}},         {"(-1)", {}},  {"$$1", {}},
        {",1", {}},     {"1.2,3", {}}, {"1E", {}},        {"1E+", {}},         {"1E999", {}}, {"inf", {}},
        {"nan", {}},    {"1/2", {}},   {"12:30", {}},     {"1E-999", 0},       {"&H10", {}},  {"1E2.5", {}},
    };
    for (const Case& c : cases) EXPECT_EQ(ParseNumber(c.text), c.expected) << c.text;
}

TEST(Numbers, RoundsHalvesToEven) {
    EXPECT_EQ(CInt(0.5), 0);
    EXPECT_EQ(CInt(1.5), 2);
    EXPECT_EQ(CInt(-2.5), -2);
    EXPECT_EQ(CInt(-3.5), -4);
    EXPECT_EQ(CInt(32767.4), 32767);
    EXPECT_THROW(CInt(32767.5), RunTimeError);
    EXPECT_EQ(CInt(-32768.5), -32768);
    EXPECT_EQ(CLng(2147483647.4), 2147483647);
    EXPECT_THROW(CLng(std::numeric_limits<double>::quiet_NaN()), RunTimeError);
    EXPECT_EQ(RoundHalfEven(4503599627370497.5), 4503599627370498);
}

TEST(Numbers, NumberOfValue) {
    EXPECT_EQ(NumberOf(Value::Boolean(true)), -1);
    EXPECT_EQ(NumberOf(Value::Currency(15000)), 1.5);
    EXPECT_EQ(NumberOf(Value::Decimal("-1.25")), -1.25);
    EXPECT_EQ(NumberOf(Value::Text("$2")), 2);
    EXPECT_EQ(NumberOf(Value::Text("2x")), 0);
    EXPECT_EQ(NumberOf(Value()), 0);
}

}  // namespace
}  // namespace quillform
