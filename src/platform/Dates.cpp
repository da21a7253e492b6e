#include "platform/Dates.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/DateRange.h"
#include "platform/NumberText.h"
#include "platform/Numbers.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform {
namespace {

constexpr std::int64_t kSecondsPerDay = 86400;

std::int64_t FloorDivided(std::int64_t number, std::int64_t by) { return number / by - (number % by < 0 ? 1 : 0); }

/// Days from 1899-12-30 to the first of March of a year; years begin in March, so that the leap day ends them.
constexpr std::int64_t DaysBeforeMarch(std::int64_t year) {
    // 1899-12-30 is 693,899 days behind 0000-03-01.
    return year * 365 + year / 4 - year / 100 + year / 400 - 693899;
}

/// Days from the first of March to the first of a month, 0 being March.
constexpr std::int64_t DaysBeforeMonth(std::int64_t monthFromMarch) { return (monthFromMarch * 153 + 2) / 5; }

struct CivilDay {
    int year;
    int month;
    int day;
};

CivilDay CivilFromDay(std::int64_t day) {
    const std::int64_t days = day + 693899;
    // A guess by the mean length of a year is at most one year off.
    std::int64_t year = (days * 400 + 200) / 146097;
    while (DaysBeforeMarch(year) > day) --year;
    while (DaysBeforeMarch(year + 1) <= day) ++year;
    const std::int64_t dayOfYear = day - DaysBeforeMarch(year);
    const std::int64_t monthFromMarch = (dayOfYear * 5 + 2) / 153;
    const bool nextYear = monthFromMarch >= 10;
    return {static_cast<int>(year + (nextYear ? 1 : 0)), static_cast<int>(monthFromMarch + (nextYear ? -9 : 3)),
            static_cast<int>(dayOfYear - DaysBeforeMonth(monthFromMarch) + 1)};
}

std::int64_t DayFromCivil(std::int64_t year, int month, std::int64_t day) {
    const bool lateInYear = month <= 2;
    return DaysBeforeMarch(lateInYear ? year - 1 : year) + DaysBeforeMonth(month + (lateInYear ? 9 : -3)) + day - 1;
}

[[noreturn]] void FailOutOfRange() {
    throw RunTimeError(ErrorNumber::InvalidProcedureCall, "A date lies outside the years 100 to 9999.");
}

int WeekdayOf(std::int64_t day) {
    return static_cast<int>((day % 7 + 7 + 6) % 7) + 1;  // day 0 was a Saturday
}

/// A serial on a scale without the fold of negative serials: whole seconds, or the seconds with their fraction.
struct Moment {
    std::int64_t day;
    double seconds;
};

Moment MomentOf(double serial) {
    if (!IsDateSerial(serial)) FailOutOfRange();
    const double day = std::trunc(serial);
    return {static_cast<std::int64_t>(day), std::fabs(serial - day) * static_cast<double>(kSecondsPerDay)};
}

double SerialOf(std::int64_t day, double seconds) {
    const double fraction = seconds / static_cast<double>(kSecondsPerDay);
    const double serial = day < 0 ? static_cast<double>(day) - fraction : static_cast<double>(day) + fraction;
    if (!IsDateSerial(serial)) FailOutOfRange();
    return serial;
}

std::int64_t WholeSeconds(double serial) {
    const Moment moment = MomentOf(serial);
    // The last half second before the year 10000 has nowhere to be rounded to.
    constexpr std::int64_t last = 2958466 * kSecondsPerDay - 1;
    return std::min<std::int64_t>(moment.day * kSecondsPerDay + std::llround(moment.seconds), last);
}

/// Adds seconds, and clears what the fraction of a day lost in precision.
double AddSeconds(double serial, double seconds) {
    const Moment moment = MomentOf(serial);
    if (!(std::fabs(seconds) < 1e12)) FailOutOfRange();
    double sum = moment.seconds + seconds;
    if (std::fabs(sum - std::round(sum)) < 1e-4) sum = std::round(sum);
    const double days = std::floor(sum / static_cast<double>(kSecondsPerDay));
    return SerialOf(moment.day + static_cast<std::int64_t>(days), sum - days * static_cast<double>(kSecondsPerDay));
}

double AddMonths(double serial, double months) {
    const Moment moment = MomentOf(serial);
    if (!(std::fabs(months) < 1e6)) FailOutOfRange();
    const CivilDay civil = CivilFromDay(moment.day);
    const std::int64_t month = std::int64_t{civil.year} * 12 + civil.month - 1 + static_cast<std::int64_t>(months);
    const std::int64_t year = FloorDivided(month, 12);
    if (year < 100 || year > 9999) FailOutOfRange();
    const int inYear = static_cast<int>(month - year * 12) + 1;
    const int day = std::min(civil.day, DaysInMonth(static_cast<int>(year), inYear));
    return SerialOf(DayFromCivil(year, inYear, day), moment.seconds);
}

/// Days since the week of a day began.
int DaysIntoWeek(std::int64_t day, int firstDayOfWeek) {
    const int first = firstDayOfWeek >= 1 && firstDayOfWeek <= 7 ? firstDayOfWeek : 1;
    return (WeekdayOf(day) - first + 7) % 7;
}

/// First day of the week 1 of a year. `rule` 1: the week of January 1; 2: the first with four days in the year; 3: the
/// first full week.
std::int64_t FirstWeek(std::int64_t year, int firstDayOfWeek, int rule) {
    const std::int64_t newYear = DayFromCivil(year, 1, 1);
    const int into = DaysIntoWeek(newYear, firstDayOfWeek);
    const std::int64_t week = newYear - into;
    const int daysInYear = 7 - into;
    const int needed = rule == 2 ? 4 : rule == 3 ? 7 : 1;
    return daysInYear >= needed ? week : week + 7;
}

int WeekOfYear(double serial, int firstDayOfWeek, int rule) {
    const std::int64_t day = PartsDay(serial);
    const int year = CivilFromDay(day).year;
    std::int64_t first = FirstWeek(year, firstDayOfWeek, rule);
    if (day < first) first = FirstWeek(year - 1, firstDayOfWeek, rule);
    // Under the first rule the last days of a year keep its number, as the week isn't shared there.
    else if (rule == 2 || rule == 3)
        if (const std::int64_t next = FirstWeek(year + 1, firstDayOfWeek, rule); day >= next) first = next;
    return static_cast<int>((day - first) / 7) + 1;
}

void AppendTwoDigits(int number, std::string& out) {
    out += static_cast<char>('0' + number / 10);
    out += static_cast<char>('0' + number % 10);
}

void AppendTime(const DateParts& parts, std::string& out) {
    AppendGeneralInteger(parts.hour % 12 == 0 ? 12 : parts.hour % 12, out);
    out += ':';
    AppendTwoDigits(parts.minute, out);
    out += ':';
    AppendTwoDigits(parts.second, out);
    out += parts.hour < 12 ? " AM" : " PM";
}

}  // namespace

bool IsDateSerial(double serial) { return serial > kBeforeFirstDate && serial < kBehindLastDate; }

std::int64_t PartsDay(double serial) { return FloorDivided(WholeSeconds(serial), kSecondsPerDay); }

int DaysInMonth(int year, int month) {
    static constexpr std::array<int, 12> days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[static_cast<std::size_t>(month - 1)];
}

int FullYear(int year) { return year < 0 || year > 99 ? year : year < 30 ? year + 2000 : year + 1900; }

DateParts PartsOf(double serial) {
    const std::int64_t seconds = WholeSeconds(serial);
    const std::int64_t day = FloorDivided(seconds, kSecondsPerDay);
    const int inDay = static_cast<int>(seconds - day * kSecondsPerDay);
    const CivilDay civil = CivilFromDay(day);
    return {civil.year, civil.month, civil.day, inDay / 3600, inDay / 60 % 60, inDay % 60, WeekdayOf(day)};
}

double DateSerial(int year, int month, int day) {
    const std::int64_t months = std::int64_t{FullYear(year)} * 12 + month - 1;
    const std::int64_t carried = FloorDivided(months, 12);
    // Inside these years the sum can't overflow, and further out no day brings it back.
    if (carried < -10'000'000 || carried > 10'000'000) FailOutOfRange();
    constexpr std::int64_t wholeCycles = 25'000;  // of 400 years, so that the division stays above zero
    const std::int64_t shifted = carried + wholeCycles * 400;
    const std::int64_t first = DayFromCivil(shifted, static_cast<int>(months - carried * 12) + 1, 1);
    return SerialOf(first - wholeCycles * 146097 + day - 1, 0);
}

double TimeSerial(int hour, int minute, int second) {
    const std::int64_t seconds = std::int64_t{hour} * 3600 + std::int64_t{minute} * 60 + second;
    const std::int64_t day = FloorDivided(seconds, kSecondsPerDay);
    return SerialOf(day, static_cast<double>(seconds - day * kSecondsPerDay));
}

double DatePartOf(double serial) { return std::trunc(serial) + 0.0; }
double TimePartOf(double serial) { return std::fabs(serial - std::trunc(serial)); }

void AppendGeneralDate(double serial, std::string& out) {
    if (!IsDateSerial(serial)) return AppendGeneralNumber(serial, out);
    const DateParts parts = PartsOf(serial);
    const bool hasDate = PartsDay(serial) != 0;
    const bool hasTime = !hasDate || parts.hour != 0 || parts.minute != 0 || parts.second != 0;
    if (hasDate) {
        AppendGeneralInteger(parts.month, out);
        out += '/';
        AppendGeneralInteger(parts.day, out);
        out += '/';
        AppendGeneralInteger(parts.year, out);
    }
    if (hasDate && hasTime) out += ' ';
    if (hasTime) AppendTime(parts, out);
}

std::optional<DateInterval> DateIntervalFromText(std::string_view text) {
    struct Name {
        std::string_view text;
        DateInterval interval;
    };
    static constexpr Name names[] = {
        {"yyyy", DateInterval::Year},   {"q", DateInterval::Quarter}, {"m", DateInterval::Month},
        {"y", DateInterval::DayOfYear}, {"d", DateInterval::Day},     {"w", DateInterval::Weekday},
        {"ww", DateInterval::Week},     {"h", DateInterval::Hour},    {"n", DateInterval::Minute},
        {"s", DateInterval::Second},
    };
    for (const Name& name : names)
        if (EqualCaseBlind(name.text, text)) return name.interval;
    return std::nullopt;
}

double DateAdd(DateInterval interval, double number, double serial) {
    const double count = RoundHalfEven(number);
    constexpr double secondsPerDay = kSecondsPerDay;
    switch (interval) {
        case DateInterval::Year:
            return AddMonths(serial, count * 12);
        case DateInterval::Quarter:
            return AddMonths(serial, count * 3);
        case DateInterval::Month:
            return AddMonths(serial, count);
        case DateInterval::DayOfYear:
        case DateInterval::Day:
        case DateInterval::Weekday:
            return AddSeconds(serial, count * secondsPerDay);
        case DateInterval::Week:
            return AddSeconds(serial, count * 7 * secondsPerDay);
        case DateInterval::Hour:
            return AddSeconds(serial, count * 3600);
        case DateInterval::Minute:
            return AddSeconds(serial, count * 60);
        case DateInterval::Second:
            return AddSeconds(serial, count);
    }
    return serial;
}

double DateDiff(DateInterval interval, double from, double to, int firstDayOfWeek) {
    const auto difference = [&](auto measure) { return static_cast<double>(measure(to) - measure(from)); };
    switch (interval) {
        case DateInterval::Year:
            return difference([](double serial) { return PartsOf(serial).year; });
        case DateInterval::Quarter:
            return difference([](double serial) {
                const DateParts parts = PartsOf(serial);
                return parts.year * 4 + (parts.month - 1) / 3;
            });
        case DateInterval::Month:
            return difference([](double serial) {
                const DateParts parts = PartsOf(serial);
                return parts.year * 12 + parts.month;
            });
        case DateInterval::DayOfYear:
        case DateInterval::Day:
            return difference(PartsDay);
        case DateInterval::Weekday:
            return std::trunc(difference(PartsDay) / 7);
        case DateInterval::Week:
            return difference([&](double serial) {
                       return PartsDay(serial) - DaysIntoWeek(PartsDay(serial), firstDayOfWeek);
                   }) /
                   7;
        case DateInterval::Hour:
            return difference([](double serial) { return FloorDivided(WholeSeconds(serial), 3600); });
        case DateInterval::Minute:
            return difference([](double serial) { return FloorDivided(WholeSeconds(serial), 60); });
        case DateInterval::Second:
            return difference(WholeSeconds);
    }
    return 0;
}

int DatePart(DateInterval interval, double serial, int firstDayOfWeek, int firstWeekOfYear) {
    const DateParts parts = PartsOf(serial);
    switch (interval) {
        case DateInterval::Year:
            return parts.year;
        case DateInterval::Quarter:
            return (parts.month - 1) / 3 + 1;
        case DateInterval::Month:
            return parts.month;
        case DateInterval::DayOfYear:
            return static_cast<int>(PartsDay(serial) - DayFromCivil(parts.year, 1, 1)) + 1;
        case DateInterval::Day:
            return parts.day;
        case DateInterval::Weekday:
            return DaysIntoWeek(PartsDay(serial), firstDayOfWeek) + 1;
        case DateInterval::Week:
            return WeekOfYear(serial, firstDayOfWeek, firstWeekOfYear);
        case DateInterval::Hour:
            return parts.hour;
        case DateInterval::Minute:
            return parts.minute;
        case DateInterval::Second:
            return parts.second;
    }
    return 0;
}

std::string_view MonthName(int month) {
    static constexpr std::array<std::string_view, 12> names = {"January",   "February", "March",    "April",
                                                               "May",       "June",     "July",     "August",
                                                               "September", "October",  "November", "December"};
    if (month < 1 || month > 12)
        throw RunTimeError(ErrorNumber::InvalidProcedureCall, "A month's number lies outside 1 to 12.");
    return names[static_cast<std::size_t>(month - 1)];
}

std::string_view WeekdayName(int weekday) {
    static constexpr std::array<std::string_view, 7> names = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                              "Thursday", "Friday", "Saturday"};
    if (weekday < 1 || weekday > 7)
        throw RunTimeError(ErrorNumber::InvalidProcedureCall, "A weekday's number lies outside 1 to 7.");
    return names[static_cast<std::size_t>(weekday - 1)];
}

}  // namespace quillform
