#include <cmath>

#include "data/sqlite/FunctionCall.h"
#include "platform/Numbers.h"

namespace quillform::sqlite {
namespace {

[[noreturn]] void FailDomain(const char* function) {
    throw RunTimeError(ErrorNumber::InvalidProcedureCall,
                       std::string("Invalid procedure call: the argument of ") + function + " is out of its range.");
}

template <auto compute>
void Real(Call& call) {
    call.Return(compute(call.Number(0)));
}

/// Whole numbers stay whole.
template <auto compute>
void Stepped(Call& call) {
    if (call.IsWhole(0)) return call.ReturnArgument(0);
    call.Return(compute(call.Number(0)));
}

double Floor(double number) { return std::floor(number); }
double Truncate(double number) { return std::trunc(number); }
double Sine(double number) { return std::sin(number); }
double Cosine(double number) { return std::cos(number); }
double Tangent(double number) { return std::tan(number); }
double ArcTangent(double number) { return std::atan(number); }
double Exponential(double number) { return std::exp(number); }

double SquareRoot(double number) {
    if (number < 0) FailDomain("Sqr");
    return std::sqrt(number);
}

double Logarithm(double number) {
    if (number <= 0) FailDomain("Log");
    return std::log(number);
}

void Round(Call& call) {
    const std::int64_t places = call.Whole(1, 0);
    if (places < 0 || places > 22) FailDomain("Round");
    if (call.IsWhole(0)) return call.ReturnArgument(0);
    const double number = call.Number(0);
    const double scale = std::pow(10.0, static_cast<double>(places));
    const double scaled = number * scale;
    // A number so large that it has no digit behind the place is its own rounding.
    if (std::abs(scaled) >= 1e15) return call.Return(number);
    call.Return(RoundHalfEven(scaled) / scale);
}

void Abs(Call& call) {
    if (call.IsWhole(0)) return call.ReturnWhole(std::abs(call.Whole(0)));
    call.Return(std::abs(call.Number(0)));
}

void Sgn(Call& call) {
    const double number = call.Number(0);
    call.ReturnWhole(number > 0 ? 1 : number < 0 ? -1 : 0);
}

const Function functions[] = {
    {"qf_int", 1, 1, Stepped<Floor>},
    {"qf_fix", 1, 1, Stepped<Truncate>},
    {"qf_round", 1, 2, Round},
    {"qf_abs", 1, 1, Abs},
    {"qf_sgn", 1, 1, Sgn},
    {"qf_sqr", 1, 1, Real<SquareRoot>},
    {"qf_exp", 1, 1, Real<Exponential>},
    {"qf_log", 1, 1, Real<Logarithm>},
    {"qf_sin", 1, 1, Real<Sine>},
    {"qf_cos", 1, 1, Real<Cosine>},
    {"qf_tan", 1, 1, Real<Tangent>},
    {"qf_atn", 1, 1, Real<ArcTangent>},
};

}  // namespace

std::span<const Function> NumberFunctions() { return functions; }

}  // namespace quillform::sqlite
