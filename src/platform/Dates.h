#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillform {

/// A date and time is a double in days since 1899-12-30 (a serial). The fraction is the time of day and counts forward
/// for negative serials too: -1.25 is 1899-12-29 06:00. Years 100 to 9999.
struct DateParts {
    int year = 1899;
    int month = 12;  ///< 1..12
    int day = 30;    ///< 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;   ///< rounded to the nearest whole second
    int weekday = 7;  ///< 1 Sunday .. 7 Saturday
};

/// RunTimeError InvalidProcedureCall outside years 100..9999, as in every function here that takes a serial.
DateParts PartsOf(double serial);
/// Serial of a day; month and day may lie outside their ranges and are carried over, as the platform does. Years 0..29
/// mean 2000..2029 and 30..99 mean 1930..1999. RunTimeError InvalidProcedureCall outside years 100..9999.
double DateSerial(int year, int month, int day);
double TimeSerial(int hour, int minute, int second);
/// Whole day and time of day of a serial, the latter in [0, 1). These two take any number.
double DatePartOf(double serial);
double TimePartOf(double serial);

/// A text as date, time or both, as the platform converts it (CDate, IsDate) in the US order: "12/31/1998",
/// "12-31-98", "1998/12/31", "1998-12-31", "31 Dec 1998", "December 31, 1998", "10:30", "10:30:15 PM", date and time in
/// either order. Where the order month/day can't be, day/month is tried. Two-digit years as in DateSerial; a missing
/// year is `currentYear`. Empty if the text is none.
std::optional<double> ParseDate(std::string_view text, int currentYear);

/// "m/d/yyyy", with " h:mm:ss AM" behind if there is a time of day; the time alone on day 0. A number outside the years
/// 100 to 9999 is written as a number.
void AppendGeneralDate(double serial, std::string& out);

enum class DateInterval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };
/// "yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s", case-blind.
std::optional<DateInterval> DateIntervalFromText(std::string_view text);
/// Month ends are kept: one month after January 31 is the last of February.
double DateAdd(DateInterval interval, double number, double serial);
/// Number of boundaries of the interval between the two.
double DateDiff(DateInterval interval, double from, double to, int firstDayOfWeek = 1);
int DatePart(DateInterval interval, double serial, int firstDayOfWeek = 1, int firstWeekOfYear = 1);

std::string_view MonthName(int month);      ///< English, 1..12
std::string_view WeekdayName(int weekday);  ///< English, 1 Sunday .. 7

}  // namespace quillform
