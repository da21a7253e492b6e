#include <cmath>
#include <string>

#include "data/sqlite/FunctionCall.h"
#include "model/DataAccess.h"
#include "platform/Dates.h"
#include "platform/Format.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform::sqlite {
namespace {

[[noreturn]] void FailOverflow() { throw RunTimeError(ErrorNumber::Overflow, "Overflow: a number is out of range."); }

/// The argument seen as a value of the type that argument `typeAt` names by its number; as it came where there is none.
ValueView Typed(const Call& call, int i, int typeAt) {
    ValueView view = call.View(i);
    if (!call.Has(typeAt) || view.kind == ValueKind::Text || view.IsNull()) return view;
    switch (static_cast<FieldType>(call.Whole(typeAt))) {
        case FieldType::Boolean:
            return {ValueKind::Boolean, call.Number(i) != 0 ? 1 : 0, 0, {}};
        case FieldType::Currency:
            return {ValueKind::Currency, std::llround(call.Number(i) * 10000), 0, {}};
        case FieldType::Date:
            return {ValueKind::Date, 0, call.Number(i), {}};
        case FieldType::Single:
            return {ValueKind::Single, 0, call.Number(i), {}};
        default:
            return view;
    }
}

/// qf_text(value[, type number]): general text.
void Text(Call& call) { call.Return(std::string_view(GeneralText(Typed(call, 0, 1)))); }

/// qf_format(value[, mask[, type number]]).
void FormatValue(Call& call) {
    std::string storage;
    const std::string_view mask = call.Has(1) ? call.Text(1, storage) : std::string_view();
    call.Return(std::string_view(Format(Typed(call, 0, 2), mask)));
}

void ToBoolean(Call& call) {
    std::string storage;
    if (call.IsText(0)) {
        const std::string_view text = quillform::Trim(call.Text(0, storage));
        if (EqualCaseBlind(text, "True")) return call.ReturnTruth(true);
        if (EqualCaseBlind(text, "False")) return call.ReturnTruth(false);
    }
    call.ReturnTruth(call.Number(0) != 0);
}

void ToByte(Call& call) {
    const std::int64_t number = call.Whole(0);
    if (number < 0 || number > 255) FailOverflow();
    call.ReturnWhole(number);
}

void ToLong(Call& call) { call.ReturnWhole(CLng(call.Number(0))); }

void ToSingle(Call& call) {
    const double number = call.Number(0);
    if (std::abs(number) > 3.4028235677973366e38) FailOverflow();
    call.Return(static_cast<double>(static_cast<float>(number)));
}

void ToCurrency(Call& call) {
    const double number = call.Number(0);
    if (std::abs(number) > 922337203685477.58) FailOverflow();
    call.Return(RoundHalfEven(number * 10000) / 10000);
}

void ToDate(Call& call) {
    const double serial = call.Date(0);
    if (serial < -657434 || serial >= 2958466) FailOverflow();
    call.Return(serial);
}

void AsItIs(Call& call) { call.ReturnArgument(0); }

void Choice(Call& call) {
    if (call.IsNull(0)) return;
    const auto index = static_cast<std::int64_t>(std::floor(call.Number(0)));
    if (index >= 1 && index < call.Count()) call.ReturnArgument(static_cast<int>(index));
}

void Switch(Call& call) {
    for (int i = 0; i + 1 < call.Count(); i += 2)
        if (call.Truth(i)) return call.ReturnArgument(i + 1);
}

void ReplaceNull(Call& call) {
    if (!call.IsNull(0)) return call.ReturnArgument(0);
    if (call.Has(1)) return call.ReturnArgument(1);
    call.Return(std::string_view());
}

void IsNumeric(Call& call) {
    std::string storage;
    call.ReturnTruth(!call.IsNull(0) && (!call.IsText(0) || ParseNumber(call.Text(0, storage)).has_value()));
}

/// qf_isdate(value[, type number]).
void IsDate(Call& call) {
    std::string storage;
    if (call.IsText(0)) return call.ReturnTruth(ParseDate(call.Text(0, storage), call.CurrentYear()).has_value());
    call.ReturnTruth(Typed(call, 0, 1).kind == ValueKind::Date);
}

void PlainNumber(Call& call) { call.Return(std::string_view(Str(call.Number(0)))); }

void LeadingNumber(Call& call) {
    std::string storage;
    call.Return(Val(call.Text(0, storage)));
}

const Function functions[] = {
    {"qf_text", 1, 2, Text},
    {"qf_cstr", 1, 2, Text},
    {"qf_format", 1, 5, FormatValue},
    {"qf_val", 1, 1, LeadingNumber},
    {"qf_str", 1, 1, PlainNumber},
    {"qf_cbool", 1, 1, ToBoolean},
    {"qf_cbyte", 1, 1, ToByte},
    {"qf_cint", 1, 1, [](Call& call) { call.ReturnWhole(CInt(call.Number(0))); }},
    {"qf_clng", 1, 1, ToLong},
    {"qf_csng", 1, 1, ToSingle},
    {"qf_cdbl", 1, 1, [](Call& call) { call.Return(call.Number(0)); }},
    {"qf_ccur", 1, 1, ToCurrency},
    {"qf_cdate", 1, 1, ToDate},
    {"qf_cvdate", 1, 1, ToDate},
    {"qf_cvar", 1, 1, AsItIs},
    {"qf_iif", 3, 3, [](Call& call) { call.ReturnArgument(call.Truth(0) ? 1 : 2); }, Nulls::Handled},
    {"qf_choose", 2, -1, Choice, Nulls::Handled},
    {"qf_switch", 2, -1, Switch, Nulls::Handled},
    {"qf_nz", 1, 2, ReplaceNull, Nulls::Handled},
    {"qf_isnull", 1, 1, [](Call& call) { call.ReturnTruth(call.IsNull(0)); }, Nulls::Handled},
    {"qf_isnumeric", 1, 1, IsNumeric, Nulls::Handled},
    {"qf_isdate", 1, 2, IsDate, Nulls::Handled},
};

}  // namespace

std::span<const Function> ConversionFunctions() { return functions; }

}  // namespace quillform::sqlite
