#include "data/sql/FunctionTable.h"

#include "platform/Text.h"

namespace quillform::sql {

namespace {

using Rule = ResultRule;
using Special = SpecialFunction;
using Type = FieldType;

constexpr FunctionEntry functions[] = {
    // Texts
    {"Mid", "qf_mid", 2, 3, "TNN", Rule::TextOfFirst},
    {"Left", "qf_left", 2, 2, "TN", Rule::TextOfFirst},
    {"Right", "qf_right", 2, 2, "TN", Rule::TextOfFirst},
    {"Len", "qf_len", 1, 1, "T", Rule::Fixed, Type::Long},
    {"Trim", "qf_trim", 1, 1, "T", Rule::TextOfFirst},
    {"LTrim", "qf_ltrim", 1, 1, "T", Rule::TextOfFirst},
    {"RTrim", "qf_rtrim", 1, 1, "T", Rule::TextOfFirst},
    {"UCase", "qf_ucase", 1, 1, "T", Rule::TextOfFirst},
    {"LCase", "qf_lcase", 1, 1, "T", Rule::TextOfFirst},
    {"InStr", "qf_instr", 2, 4, "A", Rule::Fixed, Type::Long, false, Special::InStr},
    {"InStrRev", "qf_instrrev", 2, 4, "TTNN", Rule::Fixed, Type::Long},
    {"Replace", "qf_replace", 3, 6, "TTTNNN", Rule::TextOfFirst},
    {"StrComp", "qf_strcomp", 2, 3, "TTN", Rule::Fixed, Type::Integer},
    {"StrConv", "qf_strconv", 2, 3, "TNN", Rule::TextOfFirst},
    {"String", "qf_string", 2, 2, "NA", Rule::Fixed, Type::Text},
    {"Space", "qf_space", 1, 1, "N", Rule::Fixed, Type::Text},
    {"Chr", "qf_chr", 1, 1, "N", Rule::Fixed, Type::Text},
    {"ChrW", "qf_chr", 1, 1, "N", Rule::Fixed, Type::Text},
    {"Asc", "qf_asc", 1, 1, "T", Rule::Fixed, Type::Integer},
    {"AscW", "qf_asc", 1, 1, "T", Rule::Fixed, Type::Integer},
    // Conversions
    {"Val", "qf_val", 1, 1, "T", Rule::Fixed, Type::Double},
    {"Str", "qf_str", 1, 1, "N", Rule::Fixed, Type::Text},
    {"Format", "qf_format", 1, 4, "ATNN", Rule::Fixed, Type::Text, false, Special::Format},
    {"CStr", "qf_text", 1, 1, "A", Rule::Fixed, Type::Text, false, Special::CStr},
    {"CBool", "qf_cbool", 1, 1, "A", Rule::Fixed, Type::Boolean, false, Special::CBool},
    {"CByte", "qf_cbyte", 1, 1, "N", Rule::Fixed, Type::Byte},
    {"CInt", "qf_cint", 1, 1, "N", Rule::Fixed, Type::Integer},
    {"CLng", "qf_clng", 1, 1, "N", Rule::Fixed, Type::Long},
    {"CSng", "qf_csng", 1, 1, "N", Rule::Fixed, Type::Single},
    {"CDbl", "qf_cdbl", 1, 1, "N", Rule::Fixed, Type::Double},
    {"CCur", "qf_ccur", 1, 1, "N", Rule::Fixed, Type::Currency},
    {"CDate", "qf_cdate", 1, 1, "A", Rule::Fixed, Type::Date},
    {"CVDate", "qf_cvdate", 1, 1, "A", Rule::Fixed, Type::Date},
    // Choices
    {"IIf", {}, 2, 3, "A", Rule::Fixed, Type::Text, false, Special::IIf},
    {"Nz", {}, 1, 2, "A", Rule::Fixed, Type::Text, false, Special::Nz},
    {"Switch", {}, 2, -1, "A", Rule::Fixed, Type::Text, false, Special::Switch},
    {"Choose", {}, 2, -1, "A", Rule::Fixed, Type::Text, false, Special::Choose},
    {"IsNull", {}, 1, 1, "A", Rule::Fixed, Type::Boolean, false, Special::IsNull},
    {"IsNumeric", "qf_isnumeric", 1, 1, "A", Rule::Fixed, Type::Boolean, false, Special::IsNumeric},
    {"IsDate", "qf_isdate", 1, 1, "A", Rule::Fixed, Type::Boolean, false, Special::IsDate},
    // Numbers
    {"Int", "qf_int", 1, 1, "N", Rule::NumberOfFirst},
    {"Fix", "qf_fix", 1, 1, "N", Rule::NumberOfFirst},
    {"Round", "qf_round", 1, 2, "NN", Rule::NumberOfFirst},
    {"Abs", "qf_abs", 1, 1, "N", Rule::NumberOfFirst},
    {"Sgn", "qf_sgn", 1, 1, "N", Rule::Fixed, Type::Integer},
    {"Sqr", "qf_sqr", 1, 1, "N", Rule::Fixed, Type::Double},
    {"Exp", "qf_exp", 1, 1, "N", Rule::Fixed, Type::Double},
    {"Log", "qf_log", 1, 1, "N", Rule::Fixed, Type::Double},
    {"Sin", "qf_sin", 1, 1, "N", Rule::Fixed, Type::Double},
    {"Cos", "qf_cos", 1, 1, "N", Rule::Fixed, Type::Double},
    {"Tan", "qf_tan", 1, 1, "N", Rule::Fixed, Type::Double},
    {"Atn", "qf_atn", 1, 1, "N", Rule::Fixed, Type::Double},
    // Dates
    {"Date", "qf_date", 0, 0, {}, Rule::Fixed, Type::Date},
    {"Time", "qf_time", 0, 0, {}, Rule::Fixed, Type::Date},
    {"Now", "qf_now", 0, 0, {}, Rule::Fixed, Type::Date},
    {"Year", "qf_year", 1, 1, "D", Rule::Fixed, Type::Integer},
    {"Month", "qf_month", 1, 1, "D", Rule::Fixed, Type::Integer},
    {"Day", "qf_day", 1, 1, "D", Rule::Fixed, Type::Integer},
    {"Hour", "qf_hour", 1, 1, "D", Rule::Fixed, Type::Integer},
    {"Minute", "qf_minute", 1, 1, "D", Rule::Fixed, Type::Integer},
    {"Second", "qf_second", 1, 1, "D", Rule::Fixed, Type::Integer},
    {"Weekday", "qf_weekday", 1, 2, "DN", Rule::Fixed, Type::Integer},
    {"DateAdd", "qf_dateadd", 3, 3, "TND", Rule::Fixed, Type::Date},
    {"DateDiff", "qf_datediff", 3, 5, "TDDNN", Rule::Fixed, Type::Long},
    {"DatePart", "qf_datepart", 2, 4, "TDNN", Rule::Fixed, Type::Integer},
    {"DateSerial", "qf_dateserial", 3, 3, "NNN", Rule::Fixed, Type::Date},
    {"TimeSerial", "qf_timeserial", 3, 3, "NNN", Rule::Fixed, Type::Date},
    {"DateValue", "qf_datevalue", 1, 1, "D", Rule::Fixed, Type::Date},
    {"TimeValue", "qf_timevalue", 1, 1, "D", Rule::Fixed, Type::Date},
    {"MonthName", "qf_monthname", 1, 2, "NN", Rule::Fixed, Type::Text},
    {"WeekdayName", "qf_weekdayname", 1, 3, "NNN", Rule::Fixed, Type::Text},
    // Aggregates
    {"Count", "count", 1, 1, "A", Rule::Fixed, Type::Long, true},
    {"Sum", "sum", 1, 1, "N", Rule::Sum, Type::Double, true},
    {"Avg", "avg", 1, 1, "N", Rule::Average, Type::Double, true},
    {"Min", "min", 1, 1, "A", Rule::FirstAsItIs, Type::Text, true},
    {"Max", "max", 1, 1, "A", Rule::FirstAsItIs, Type::Text, true},
    {"First", "qf_first", 1, 1, "A", Rule::FirstAsItIs, Type::Text, true},
    {"Last", "qf_last", 1, 1, "A", Rule::FirstAsItIs, Type::Text, true},
    {"StDev", "qf_stdev", 1, 1, "N", Rule::Fixed, Type::Double, true},
    {"StDevP", "qf_stdevp", 1, 1, "N", Rule::Fixed, Type::Double, true},
    {"StdDev", "qf_stdev", 1, 1, "N", Rule::Fixed, Type::Double, true},
    {"StdDevP", "qf_stdevp", 1, 1, "N", Rule::Fixed, Type::Double, true},
    {"Var", "qf_var", 1, 1, "N", Rule::Fixed, Type::Double, true},
    {"VarP", "qf_varp", 1, 1, "N", Rule::Fixed, Type::Double, true},
};

}  // namespace

std::span<const FunctionEntry> Functions() { return functions; }

const FunctionEntry* FindFunction(std::string_view name) {
    for (const FunctionEntry& entry : functions)
        if (entry.name.size() == name.size() && EqualCaseBlind(entry.name, name)) return &entry;
    return nullptr;
}

}  // namespace quillform::sql
