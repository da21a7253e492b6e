#include <gtest/gtest.h>

#include <limits>

#include "platform/Clock.h"
#include "platform/Dates.h"
#include "platform/RunTimeError.h"

namespace quillform {
namespace {

std::string GeneralDate(double serial) {
    std::string text;
    AppendGeneralDate(serial, text);
    return text;
}

TEST(Dates, EveryDayOfTheRangeFollowsTheLast) {
    DateParts before = PartsOf(-657434);
    EXPECT_EQ(before.year, 100);
    EXPECT_EQ(before.month, 1);
    EXPECT_EQ(before.day, 1);
    for (int serial = -657433; serial <= 2958465; ++serial) {
        const DateParts parts = PartsOf(serial);
        const bool sameMonth = parts.month == before.month && parts.day == before.day + 1;
        const bool nextMonth = parts.day == 1 && before.day >= 28 && parts.month == before.month % 12 + 1;
        ASSERT_TRUE(sameMonth || nextMonth) << serial;
        ASSERT_EQ(parts.year, before.year + (nextMonth && parts.month == 1 ? 1 : 0)) << serial;
        ASSERT_EQ(parts.weekday, before.weekday % 7 + 1) << serial;
        ASSERT_EQ(DateSerial(parts.year, parts.month, parts.day), serial);
        before = parts;
    }
    EXPECT_EQ(before.year, 9999);
    EXPECT_EQ(PartsOf(0).weekday, 7);
    EXPECT_EQ(DateSerial(1998, 12, 4), 36133);
}

TEST(Dates, SerialsCarryOver) {
    EXPECT_EQ(DateSerial(1998, 13, 1), DateSerial(1999, 1, 1));
    EXPECT_EQ(DateSerial(1998, 0, 1), DateSerial(1997, 12, 1));
    EXPECT_EQ(DateSerial(1998, -11, 1), DateSerial(1997, 1, 1));
    EXPECT_EQ(DateSerial(1999, 3, 0), DateSerial(1999, 2, 28));
    EXPECT_EQ(DateSerial(2000, 2, 30), DateSerial(2000, 3, 1));
    EXPECT_EQ(DateSerial(29, 1, 1), DateSerial(2029, 1, 1));
    EXPECT_EQ(DateSerial(30, 1, 1), DateSerial(1930, 1, 1));
    EXPECT_THROW(DateSerial(10000, 1, 1), RunTimeError);
    EXPECT_THROW(DateSerial(std::numeric_limits<int>::max(), std::numeric_limits<int>::max(), 1), RunTimeError);
    EXPECT_THROW(DateSerial(std::numeric_limits<int>::min(), 1, std::numeric_limits<int>::min()), RunTimeError);
    EXPECT_EQ(TimeSerial(25, 0, 0), 1 + 1.0 / 24);
    EXPECT_EQ(TimeSerial(6, 0, 0), 0.25);
    EXPECT_EQ(TimeSerial(-6, 0, 0), -1.75);  // 18:00 of the day before day 0
    EXPECT_THROW(PartsOf(1e300), RunTimeError);
    EXPECT_THROW(PartsOf(std::numeric_limits<double>::quiet_NaN()), RunTimeError);
}

TEST(Dates, GeneralDate) {
    EXPECT_EQ(GeneralDate(36133), "12/4/1998");
    EXPECT_EQ(GeneralDate(36133.5), "12/4/1998 12:00:00 PM");
    EXPECT_EQ(GeneralDate(0.25), "6:00:00 AM");
    EXPECT_EQ(GeneralDate(-0.25), "6:00:00 AM");
    EXPECT_EQ(GeneralDate(0), "12:00:00 AM");
    EXPECT_EQ(GeneralDate(-1.25), "12/29/1899 6:00:00 AM");
    EXPECT_EQ(GeneralDate(36133.999999), "12/5/1998");
    EXPECT_EQ(GeneralDate(1e10), "10000000000");
}

TEST(Dates, DayAndTimeOfSerial) {
    EXPECT_EQ(DatePartOf(-1.25), -1);
    EXPECT_EQ(TimePartOf(-1.25), 0.25);
    EXPECT_EQ(DatePartOf(36133.75), 36133);
    EXPECT_EQ(TimePartOf(36133.75), 0.75);
}

TEST(Dates, ParseDate) {
    struct Case {
        std::string_view text;
        std::string_view expected;  ///< general text; empty for no date
    };
    const Case cases[] = {
        {"12/31/1998", "12/31/1998"},
        {"12-31-98", "12/31/1998"},
        {"1/2/03", "1/2/2003"},
        {"1/2/29", "1/2/2029"},
        {"1/2/30", "1/2/1930"},
        {"1998/12/31", "12/31/1998"},
        {"1998-12-31", "12/31/1998"},
        {"31/12/1998", "12/31/1998"},
        {"1998/31/12", "12/31/1998"},
        {"31 Dec 1998", "12/31/1998"},
        {"31-Dec-98", "12/31/1998"},
        {"December 31, 1998", "12/31/1998"},
        {"Dec. 31 1998", "12/31/1998"},
        {"dec 1998", "12/1/1998"},
        {"12/1998", "12/1/1998"},
        {"4 July", "7/4/2024"},
        {"7/4", "7/4/2024"},
        {"31/7", "7/31/2024"},
        {" 7 / 4 / 1998 ", "7/4/1998"},
        {"10:30", "10:30:00 AM"},
        {"10:30:15 PM", "10:30:15 PM"},
        {"10:30:15pm", "10:30:15 PM"},
        {"12:00 AM", "12:00:00 AM"},
        {"12:05 PM", "12:05:00 PM"},
        {"10 pm", "10:00:00 PM"},
        {"13:00 PM", "1:00:00 PM"},
        {"10:3", "10:03:00 AM"},
        {"12/31/1998 10:3", "12/31/1998 10:03:00 AM"},
        {"12/31/1998 10:30:15 PM", "12/31/1998 10:30:15 PM"},
        {"10:30 12/31/1998", "12/31/1998 10:30:00 AM"},
        {"10 PM 31 Dec 1998", "12/31/1998 10:00:00 PM"},
        {"31 Dec 10:30", "12/31/2024 10:30:00 AM"},
        {"12/29/1899 6:00", "12/29/1899 6:00:00 AM"},
        {"2/29/2000", "2/29/2000"},
        {"2/29/1900", ""},
        {"2/30/1999", ""},
        {"13/32/1999", ""},
        {"00/12/1998", ""},
        {"0/0/0", ""},
        {"", ""},
        {" ", ""},
        {"5", ""},
        {"1.5", ""},
        {"12abc", ""},
        {"abc", ""},
        {"Dec", ""},
        {"De 5", ""},
        {"12 31 1998", ""},
        {"12/31/1998x", ""},
        {"12/31/", ""},
        {"/12/31", ""},
        {"12//31", ""},
        {"12/31-1998", ""},
        {"12,31,1998", ""},
        {"1/2/3/4", ""},
        {"1/2/12345", ""},
        {"24:00", ""},
        {"10:60", ""},
        {"10:", ""},
        {":10", ""},
        {"10:30:15:20", ""},
        {"13:00 AM", ""},
        {"10:30 11:30", ""},
        {"12/31/1998 10", ""},
        {"PM", ""},
        {"31-Dec, 1998", "12/31/1998"},
        {"12/31/ 10:30", ""},
        {"4 5 Dec", ""},
        {"5 Dec Jan", ""},
        {"Dec-31/1998", ""},
        {"1/1/1", "1/1/2001"},
        {"1 Jan 99", "1/1/1999"},
        {"Jan 1 2 3", ""},
        {"\xC3\xA4/1/1", ""},
        {"99999999999999999999/1/1", ""},
    };
    for (const Case& c : cases) {
        const auto serial = ParseDate(c.text, 2024);
        EXPECT_EQ(serial ? GeneralDate(*serial) : "", c.expected) << c.text;
    }
}

TEST(Dates, GeneralDateReadsBack) {
    for (double serial = -657434; serial < 2958465; serial += 1234.567) {
        const double whole = DateAdd(DateInterval::Second, 0, serial);
        const auto read = ParseDate(GeneralDate(whole), 2024);
        ASSERT_TRUE(read) << GeneralDate(whole);
        ASSERT_EQ(GeneralDate(*read), GeneralDate(whole));
    }
}

TEST(Dates, DateAdd) {
    const auto add = [](DateInterval interval, double number, std::string_view from) {
        return GeneralDate(DateAdd(interval, number, ParseDate(from, 2024).value()));
    };
    EXPECT_EQ(add(DateInterval::Month, 1, "1/31/1999"), "2/28/1999");
    EXPECT_EQ(add(DateInterval::Month, 1, "1/31/2000 10:00"), "2/29/2000 10:00:00 AM");
    EXPECT_EQ(add(DateInterval::Month, -13, "1/31/2000"), "12/31/1998");
    EXPECT_EQ(add(DateInterval::Year, 1, "2/29/2000"), "2/28/2001");
    EXPECT_EQ(add(DateInterval::Quarter, 1, "11/30/1998"), "2/28/1999");
    EXPECT_EQ(add(DateInterval::Day, 1.4, "12/31/1999"), "1/1/2000");
    EXPECT_EQ(add(DateInterval::Week, -1, "1/5/2000"), "12/29/1999");
    EXPECT_EQ(add(DateInterval::Hour, 25, "12/31/1999"), "1/1/2000 1:00:00 AM");
    EXPECT_EQ(add(DateInterval::Minute, -1, "1/1/1899"), "12/31/1898 11:59:00 PM");
    EXPECT_EQ(add(DateInterval::Second, 86400, "12/29/1899 6:00"), "6:00:00 AM");
    EXPECT_THROW(add(DateInterval::Year, 9000, "1/1/2000"), RunTimeError);
    EXPECT_THROW(add(DateInterval::Day, 1e300, "1/1/2000"), RunTimeError);
    EXPECT_THROW(add(DateInterval::Month, std::numeric_limits<double>::quiet_NaN(), "1/1/2000"), RunTimeError);
    double serial = 36133;
    for (int i = 0; i < 86400; ++i) serial = DateAdd(DateInterval::Second, 1, serial);
    EXPECT_EQ(serial, 36134);
}

TEST(Dates, DateDiff) {
    const auto diff = [](DateInterval interval, std::string_view from, std::string_view to, int firstDay = 1) {
        return DateDiff(interval, ParseDate(from, 2024).value(), ParseDate(to, 2024).value(), firstDay);
    };
    EXPECT_EQ(diff(DateInterval::Year, "12/31/1998", "1/1/1999"), 1);
    EXPECT_EQ(diff(DateInterval::Quarter, "3/31/1999", "4/1/1999"), 1);
    EXPECT_EQ(diff(DateInterval::Month, "1/1/1999", "12/31/1998"), -1);
    EXPECT_EQ(diff(DateInterval::Day, "12/31/1998 23:59", "1/1/1999 0:01"), 1);
    EXPECT_EQ(DateDiff(DateInterval::Day, 36133, 36133.999999), 1);  // counts as midnight, and is shown so
    EXPECT_EQ(diff(DateInterval::Weekday, "12/4/1998", "12/17/1998"), 1);
    EXPECT_EQ(diff(DateInterval::Week, "12/5/1998", "12/6/1998"), 1);  // Saturday to Sunday
    EXPECT_EQ(diff(DateInterval::Week, "12/5/1998", "12/6/1998", 2), 0);
    EXPECT_EQ(diff(DateInterval::Hour, "10:59", "11:01"), 1);
    EXPECT_EQ(diff(DateInterval::Minute, "10:59:59", "11:00:00"), 1);
    EXPECT_EQ(diff(DateInterval::Second, "12/29/1899 23:59:59", "12/31/1899 0:00:01"), 86402);
}

TEST(Dates, DatePart) {
    const auto part = [](DateInterval interval, std::string_view text, int firstDay = 1, int firstWeek = 1) {
        return DatePart(interval, ParseDate(text, 2024).value(), firstDay, firstWeek);
    };
    EXPECT_EQ(part(DateInterval::Quarter, "9/30/1998"), 3);
    EXPECT_EQ(part(DateInterval::DayOfYear, "12/31/2000"), 366);
    EXPECT_EQ(part(DateInterval::Weekday, "12/4/1998"), 6);
    EXPECT_EQ(part(DateInterval::Weekday, "12/4/1998", 2), 5);
    EXPECT_EQ(part(DateInterval::Week, "1/1/1998"), 1);
    EXPECT_EQ(part(DateInterval::Week, "12/31/1998"), 53);
    // Week numbers by the rule of ISO 8601: weeks begin on Monday, four days decide.
    EXPECT_EQ(part(DateInterval::Week, "12/29/2003", 2, 2), 1);
    EXPECT_EQ(part(DateInterval::Week, "1/1/2005", 2, 2), 53);
    EXPECT_EQ(part(DateInterval::Week, "1/3/2005", 2, 2), 1);
    EXPECT_EQ(part(DateInterval::Week, "1/2/1999", 1, 3), 52);
    EXPECT_EQ(part(DateInterval::Week, "1/3/1999", 1, 3), 1);
}

TEST(Dates, Intervals) {
    EXPECT_EQ(DateIntervalFromText("YYYY"), DateInterval::Year);
    EXPECT_EQ(DateIntervalFromText("n"), DateInterval::Minute);
    EXPECT_EQ(DateIntervalFromText("yy"), std::nullopt);
    EXPECT_EQ(DateIntervalFromText(""), std::nullopt);
}

TEST(Clock, HonoursSourceDateEpoch) {
    ASSERT_EQ(setenv("SOURCE_DATE_EPOCH", "912784029", 1), 0);
    EXPECT_EQ(GeneralDate(SystemClock().Now()), "12/4/1998 3:07:09 PM");
    ASSERT_EQ(unsetenv("SOURCE_DATE_EPOCH"), 0);
    EXPECT_GT(SystemClock().Now(), DateSerial(2024, 1, 1));
    const SystemClock clock;
    const double before = clock.Timer();
    EXPECT_GE(clock.Timer(), before);
}

}  // namespace
}  // namespace quillform
