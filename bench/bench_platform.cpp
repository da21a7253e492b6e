#include <benchmark/benchmark.h>

#include <vector>

#include "platform/Dates.h"
#include "platform/Format.h"
#include "platform/Numbers.h"

namespace quillform {
namespace {

/// Amounts of all sizes, the same in every run.
std::vector<std::int64_t> Amounts() {
    std::vector<std::int64_t> amounts;
    std::uint64_t state = 1;
    for (int i = 0; i < 1024; ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        amounts.push_back(static_cast<std::int64_t>(state >> 33) * 100 >> (state >> 20 & 15));
    }
    return amounts;
}

template <typename Make>
void RunMask(benchmark::State& state, std::string_view text, Make make) {
    const Mask mask(text);
    std::vector<Value> values;
    for (const std::int64_t amount : Amounts()) values.push_back(make(amount));
    std::string out;
    std::size_t i = 0;
    for (auto _ : state) {
        out.clear();
        mask.AppendTo(values[i++ % values.size()], out);
        benchmark::DoNotOptimize(out.data());
    }
}

void MaskOnDouble(benchmark::State& state) {
    RunMask(state, "###,###,##0.00",
            [](std::int64_t amount) { return Value::Double(static_cast<double>(amount / 100) / 100); });
}
BENCHMARK(MaskOnDouble);

void MaskOnLongDouble(benchmark::State& state) {
    RunMask(state, "###,###,##0.00",
            [](std::int64_t amount) { return Value::Double(static_cast<double>(amount) / 7); });
}
BENCHMARK(MaskOnLongDouble);

void MaskOnCurrency(benchmark::State& state) {
    RunMask(state, "###,###,##0.00", [](std::int64_t amount) { return Value::Currency(amount); });
}
BENCHMARK(MaskOnCurrency);

void MaskOnInteger(benchmark::State& state) {
    RunMask(state, "#,##0", [](std::int64_t amount) { return Value::Integer(amount); });
}
BENCHMARK(MaskOnInteger);

void MaskOnText(benchmark::State& state) {
    RunMask(state, "###,###,##0.00",
            [](std::int64_t amount) { return Value::Text(GeneralText(Value::Currency(amount))); });
}
BENCHMARK(MaskOnText);

void MaskOnDate(benchmark::State& state) {
    RunMask(state, "mm/dd/yyyy", [](std::int64_t amount) { return Value::Date(static_cast<double>(amount % 50000)); });
}
BENCHMARK(MaskOnDate);

void MaskOnDateAndTime(benchmark::State& state) {
    RunMask(state, "mmmm d, yyyy hh:mm AM/PM",
            [](std::int64_t amount) { return Value::Date(static_cast<double>(amount % 50000) + 0.618); });
}
BENCHMARK(MaskOnDateAndTime);

void GeneralDouble(benchmark::State& state) {
    RunMask(state, "", [](std::int64_t amount) { return Value::Double(static_cast<double>(amount / 100) / 100); });
}
BENCHMARK(GeneralDouble);

void GeneralInteger(benchmark::State& state) {
    RunMask(state, "", [](std::int64_t amount) { return Value::Integer(amount); });
}
BENCHMARK(GeneralInteger);

void GeneralDate(benchmark::State& state) {
    RunMask(state, "", [](std::int64_t amount) { return Value::Date(static_cast<double>(amount % 50000)); });
}
BENCHMARK(GeneralDate);

void LeadingNumber(benchmark::State& state) {
    std::vector<std::string> texts;
    for (const std::int64_t amount : Amounts()) texts.push_back(GeneralText(Value::Currency(amount)));
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(Val(texts[i++ % texts.size()]));
}
BENCHMARK(LeadingNumber);

void DateText(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(ParseDate("12/31/1998 10:3", 2024));
}
BENCHMARK(DateText);

void CompileMask(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(Mask("###,###,##0.00"));
}
BENCHMARK(CompileMask);

}  // namespace
}  // namespace quillform

BENCHMARK_MAIN();
