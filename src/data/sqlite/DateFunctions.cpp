#include <cmath>
#include <string>

#include "data/sqlite/FunctionCall.h"
#include "platform/Dates.h"

namespace quillform::sqlite {
namespace {

[[noreturn]] void FailArgument(const char* function) {
    throw RunTimeError(ErrorNumber::InvalidProcedureCall,
                       std::string("Invalid procedure call: an argument of ") + function + " is out of its range.");
}

template <int DateParts::*part>
void Part(Call& call) {
    call.ReturnWhole(PartsOf(call.Date(0)).*part);
}

int FirstDayOfWeek(const Call& call, int i) {
    const std::int64_t day = call.Whole(i, 1);
    if (day < 0 || day > 7) FailArgument("a date function");
    return day == 0 ? 1 : static_cast<int>(day);
}

DateInterval Interval(const Call& call, const char* function) {
    std::string storage;
    const auto interval = DateIntervalFromText(call.Text(0, storage));
    if (!interval) FailArgument(function);
    return *interval;
}

void Weekday(Call& call) { call.ReturnWhole((PartsOf(call.Date(0)).weekday - FirstDayOfWeek(call, 1) + 7) % 7 + 1); }

void AddInterval(Call& call) {
    call.Return(DateAdd(Interval(call, "DateAdd"), std::trunc(call.Number(1)), call.Date(2)));
}

void Difference(Call& call) {
    call.ReturnWhole(static_cast<std::int64_t>(
        DateDiff(Interval(call, "DateDiff"), call.Date(1), call.Date(2), FirstDayOfWeek(call, 3))));
}

void PartByName(Call& call) {
    const auto firstWeek = static_cast<int>(call.Whole(3, 1));
    call.ReturnWhole(DatePart(Interval(call, "DatePart"), call.Date(1), FirstDayOfWeek(call, 2), firstWeek));
}

int Narrow(const Call& call, int i, const char* function) {
    const std::int64_t number = call.Whole(i);
    if (number < -32768 || number > 32767) FailArgument(function);
    return static_cast<int>(number);
}

void SerialOfDay(Call& call) {
    call.Return(
        DateSerial(Narrow(call, 0, "DateSerial"), Narrow(call, 1, "DateSerial"), Narrow(call, 2, "DateSerial")));
}

void SerialOfTime(Call& call) {
    call.Return(
        TimeSerial(Narrow(call, 0, "TimeSerial"), Narrow(call, 1, "TimeSerial"), Narrow(call, 2, "TimeSerial")));
}

void NameOfMonth(Call& call) {
    const std::int64_t month = call.Whole(0);
    if (month < 1 || month > 12) FailArgument("MonthName");
    const std::string_view name = MonthName(static_cast<int>(month));
    call.Return(call.Has(1) && call.Truth(1) ? name.substr(0, 3) : name);
}

void NameOfWeekday(Call& call) {
    const std::int64_t day = call.Whole(0);
    if (day < 1 || day > 7) FailArgument("WeekdayName");
    const auto weekday = static_cast<int>((day + FirstDayOfWeek(call, 2) - 2) % 7) + 1;
    const std::string_view name = WeekdayName(weekday);
    call.Return(call.Has(1) && call.Truth(1) ? name.substr(0, 3) : name);
}

const Function functions[] = {
    {"qf_year", 1, 1, Part<&DateParts::year>},
    {"qf_month", 1, 1, Part<&DateParts::month>},
    {"qf_day", 1, 1, Part<&DateParts::day>},
    {"qf_hour", 1, 1, Part<&DateParts::hour>},
    {"qf_minute", 1, 1, Part<&DateParts::minute>},
    {"qf_second", 1, 1, Part<&DateParts::second>},
    {"qf_weekday", 1, 2, Weekday},
    {"qf_dateadd", 3, 3, AddInterval},
    {"qf_datediff", 3, 5, Difference},
    {"qf_datepart", 2, 4, PartByName},
    {"qf_dateserial", 3, 3, SerialOfDay},
    {"qf_timeserial", 3, 3, SerialOfTime},
    {"qf_datevalue", 1, 1, [](Call& call) { call.Return(DatePartOf(call.Date(0))); }},
    {"qf_timevalue", 1, 1, [](Call& call) { call.Return(TimePartOf(call.Date(0))); }},
    {"qf_date", 0, 0, [](Call& call) { call.Return(DatePartOf(call.TheClock().Now())); }, Nulls::GiveNull, false},
    {"qf_time", 0, 0, [](Call& call) { call.Return(TimePartOf(call.TheClock().Now())); }, Nulls::GiveNull, false},
    {"qf_now", 0, 0, [](Call& call) { call.Return(call.TheClock().Now()); }, Nulls::GiveNull, false},
    {"qf_monthname", 1, 2, NameOfMonth},
    {"qf_weekdayname", 1, 3, NameOfWeekday},
};

}  // namespace

std::span<const Function> DateFunctions() { return functions; }

}  // namespace quillform::sqlite
