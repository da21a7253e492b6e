#include <cmath>
#include <string>

#include "data/columns/LikePattern.h"
#include "data/sqlite/FunctionCall.h"
#include "platform/Numbers.h"

namespace quillform::sqlite {
namespace {

[[noreturn]] void FailDivision() { throw RunTimeError(ErrorNumber::DivisionByZero, "Division by zero."); }

/// One Null counts as an empty text, two give Null.
void Concat(Call& call) {
    if (call.IsNull(0) && call.IsNull(1)) return;
    std::string left;
    std::string right;
    std::string joined;
    if (!call.IsNull(0)) joined = call.Text(0, left);
    if (!call.IsNull(1)) joined += call.Text(1, right);
    call.Return(std::string_view(joined));
}

/// Two texts are joined; otherwise both are numbers.
void Add(Call& call) {
    if (call.IsText(0) && call.IsText(1)) return Concat(call);
    if (call.IsWhole(0) && call.IsWhole(1)) return call.ReturnWhole(call.Whole(0) + call.Whole(1));
    call.Return(call.Number(0) + call.Number(1));
}

void Divide(Call& call) {
    const double divisor = call.Number(1);
    if (divisor == 0) FailDivision();
    call.Return(call.Number(0) / divisor);
}

/// Both sides are rounded before they are divided, and the quotient loses its fraction.
void DivideWhole(Call& call) {
    const std::int64_t divisor = call.Whole(1);
    if (divisor == 0) FailDivision();
    call.ReturnWhole(call.Whole(0) / divisor);
}

void Modulo(Call& call) {
    const std::int64_t divisor = call.Whole(1);
    if (divisor == 0) FailDivision();
    call.ReturnWhole(divisor == -1 ? 0 : call.Whole(0) % divisor);
}

void Power(Call& call) {
    const double base = call.Number(0);
    const double exponent = call.Number(1);
    if ((base < 0 && std::trunc(exponent) != exponent) || (base == 0 && exponent < 0))
        throw RunTimeError(ErrorNumber::InvalidProcedureCall,
                           "Invalid procedure call: the power of these numbers is no real number.");
    call.Return(std::pow(base, exponent));
}

void Like(Call& call) {
    std::string first;
    std::string second;
    call.ReturnTruth(data::MatchesPattern(call.Text(0, first), call.Text(1, second)));
}

void Imply(Call& call) {
    // False implies everything and anything implies True, Null or not.
    if (!call.IsNull(0) && call.Whole(0) == 0) return call.ReturnTruth(true);
    if (!call.IsNull(1) && call.Whole(1) == -1) return call.ReturnTruth(true);
    if (call.IsNull(0) || call.IsNull(1)) return;
    call.ReturnWhole(~call.Whole(0) | call.Whole(1));
}

const Function functions[] = {
    {"qf_concat", 2, 2, Concat, Nulls::Handled},
    {"qf_add", 2, 2, Add},
    {"qf_divide", 2, 2, Divide},
    {"qf_intdiv", 2, 2, DivideWhole},
    {"qf_mod", 2, 2, Modulo},
    {"qf_power", 2, 2, Power},
    {"qf_like", 2, 2, Like},
    {"qf_not", 1, 1, [](Call& call) { call.ReturnWhole(~call.Whole(0)); }},
    {"qf_xor", 2, 2, [](Call& call) { call.ReturnWhole(call.Whole(0) ^ call.Whole(1)); }},
    {"qf_eqv", 2, 2, [](Call& call) { call.ReturnWhole(~(call.Whole(0) ^ call.Whole(1))); }},
    {"qf_imp", 2, 2, Imply, Nulls::Handled},
};

}  // namespace

std::span<const Function> OperatorFunctions() { return functions; }

}  // namespace quillform::sqlite
