// How fast pages leave for PDF, and what measuring a text costs.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "print/PdfTarget.h"

namespace quillform::print {
namespace {

constexpr int kItems = 6;
constexpr double kColumns[kItems] = {0, 1440, 3960, 5400, 7200, 9000};
using Row = std::array<std::string, kItems>;

// Values as an order list has them, padded with blanks as the report's items are.
std::vector<Row> SampleRows(int count) {
    static const char* const names[] = {"Smith & Sons",  "J\xC3\xBCrgen Gro\xC3\x9F", "O'Neil (West)",
                                        "Nancy Davolio", "Alfreds Futterkiste",       "Blauer See Delikatessen"};
    std::vector<Row> rows(static_cast<std::size_t>(count));
    unsigned random = 12345;
    const auto next = [&random](unsigned below) { return (random = random * 1103515245U + 12345U) / 65536U % below; };
    for (int i = 0; i < count; ++i) {
        Row& row = rows[static_cast<std::size_t>(i)];
        row[0] = std::to_string(10248 + i);
        row[1] = names[next(6)];
        row[2] = std::to_string(1 + next(12)) + "/" + std::to_string(1 + next(28)) + "/199" + std::to_string(next(10));
        row[3] = std::to_string(next(30000)) + "." + std::to_string(10 + next(90));
        row[4] = next(3) == 0 ? "" : "Yes";
        row[5] = "Note " + std::to_string(next(10000));
        for (std::string& item : row) item.append(40, ' ');
    }
    return rows;
}

void PrintHeading(PdfTarget& target, FontId font) {
    target.SetRole(PageRole::Heading);
    target.BeginRow();
    target.SetFont(font);
    target.SetForeColor(1);
    target.Print("Orders by customer");
    target.SetForeColor(0);
}

void PrintRow(PdfTarget& target, const Row& row, double y) {
    target.SetRole(PageRole::Detail);
    target.BeginRow();
    for (int i = 0; i < kItems; ++i) {
        const std::string& text = row[static_cast<std::size_t>(i)];
        const std::string_view trimmed(text.data(), text.size() - 40);
        target.SetCurrentX(i == 3 ? kColumns[4] - 100 - target.TextWidth(trimmed) : kColumns[i]);
        target.SetCurrentY(y);
        target.Print(text);
    }
}

void PrintReport(const std::filesystem::path& file, const std::vector<Row>& rows, int count) {
    const auto target = MakePdfTarget(file, {"Orders", "en-US", 36160});
    const FontId title = target->Font({"Times New Roman", 14, true});
    const FontId font = target->Font({"Arial", 9});
    PrintHeading(*target, title);
    double y = target->CurrentY();
    for (int i = 0; i < count; ++i) {
        if (target->ScaleHeight() - 2 * target->TextHeight(font) < y) {
            target->NewPage();
            PrintHeading(*target, title);
            y = target->CurrentY();
        }
        target->SetFont(font);
        PrintRow(*target, rows[static_cast<std::size_t>(i) % rows.size()], y);
        y = target->CurrentY();
    }
    target->EndDoc();
}

double PeakMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

// The rows come round again after some pages, so that what they take doesn't hide what printing takes.
void PdfRows(benchmark::State& state) {
    const auto rows = SampleRows(1009);
    const auto file = std::filesystem::temp_directory_path() / "quillform-bench.pdf";
    for (auto _ : state) PrintReport(file, rows, static_cast<int>(state.range(0)));
    state.counters["rows/s"] =
        benchmark::Counter(static_cast<double>(state.range(0)), benchmark::Counter::kIsIterationInvariantRate);
    state.counters["peak MiB"] = PeakMiB();
    state.counters["file MiB"] = static_cast<double>(std::filesystem::file_size(file)) / 1024 / 1024;
    std::filesystem::remove(file);
}
// The smallest first: the process's peak never falls again.
BENCHMARK(PdfRows)->Arg(50)->Arg(5000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void MeasureText(benchmark::State& state, const char* text) {
    const auto measure = MakeTextMeasure();
    const FontId font = measure->Font({"Arial", 10});
    for (auto _ : state) benchmark::DoNotOptimize(measure->TextWidth(font, text));
}
BENCHMARK_CAPTURE(MeasureText, ascii, "Alfreds Futterkiste");
BENCHMARK_CAPTURE(MeasureText, accented, "J\xC3\xBCrgen Gro\xC3\x9F & S\xC3\xB6hne");

}  // namespace
}  // namespace quillform::print

BENCHMARK_MAIN();
