// The whole command: a report of many rows, four tables joined in an .mdb, to every output.
//   bench_report [ROWS] [FOLDER]   ROWS about 100,000 if left out; FOLDER keeps the databases between runs
//   bench_report memory [FOLDER]   the most memory held, at 20,000, 100,000 and 1,000,000 rows
// Prints rows a second by the clock (the best of three runs), where the time went, and the most memory that the command
// held. The records themselves are kept packed in memory, so that grows with the rows for every output alike; what an
// output adds to it doesn't where the format can be streamed.
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "MeasuredRun.h"

namespace {

namespace fs = std::filesystem;
using namespace quillform::bench;

struct BenchedOutput {
    const char* name;
    const char* layout;
    const char* type;
    const char* file;
};
constexpr BenchedOutput outputs[] = {
    {"txt", "BENCH.REP", "txt", "bench.txt"},          {"csv", "BENCH.REP", "csv", "bench.csv"},
    {"word", "BENCH.REP", "word", "bench.doc"},        {"wordperfect", "BENCH.REP", "wordperfect", "bench-wp.doc"},
    {"rtf", "BENCH.REP", "rtf", "bench.rtf"},          {"mdb", "BENCH.REP", "mdb", "bench.mdb"},
    {"pdf", "BENCH.REP", "pdf", "bench.pdf"},          {"labels rtf", "LABELS.REP", "rtf", "labels.rtf"},
    {"labels pdf", "LABELS.REP", "pdf", "labels.pdf"},
};

std::vector<std::string> CommandFor(const fs::path& folder, const BenchedOutput& output) {
    return {QUILLFORM_PROGRAM,
            "run",
            "--quiet",
            "--json",
            "--walk",
            "one-pass",
            "-t",
            output.type,
            (folder / output.layout).string(),
            "-o",
            (folder / output.file).string()};
}

bool Failed(const BenchedOutput& output) {
    std::fprintf(stderr, "bench_report: the command failed for %s\n", output.name);
    return false;
}

bool BenchOutput(const fs::path& folder, const BenchedOutput& output) {
    const fs::path summary = folder / "summary.json";
    const Measured best = RunThrice(CommandFor(folder, output), summary);
    if (!best.isDone) return Failed(output);
    const std::string json = ReadFile(summary);
    const double rows = NumberBehind(json, "records");
    std::printf(
        "%-11s %8.0f rows %6.0f pages %7.3f s (%.3f s of processor) %9.0f rows/s | read and sort %.3f s, compose "
        "and write %.3f s | %6.1f MiB\n",
        output.name, rows, NumberBehind(json, "pages"), best.seconds, best.cpuSeconds, rows / best.seconds,
        NumberBehind(json, "open"), NumberBehind(json, "compose"), best.mebibytes);
    return true;
}

bool Prepare(const fs::path& folder, int rows) {
    return InChild([&] { MakeLayouts(MakeDatabase(folder, rows), folder); });
}

bool BenchAll(const fs::path& folder, int rows) {
    if (!Prepare(folder, rows)) return false;
    bool isDone = true;
    for (const BenchedOutput& output : outputs) isDone = BenchOutput(folder, output) && isDone;
    return isDone;
}

bool BenchMemory(const fs::path& folder) {
    constexpr int sizes[] = {20000, 100000, 1000000};
    double peaks[std::size(outputs)][std::size(sizes)] = {};
    for (std::size_t size = 0; size < std::size(sizes); ++size) {
        if (!Prepare(folder, sizes[size])) return false;
        for (std::size_t i = 0; i < std::size(outputs); ++i) {
            const Measured measured = RunMeasured(CommandFor(folder, outputs[i]), folder / "summary.json");
            if (!measured.isDone) return Failed(outputs[i]);
            peaks[i][size] = measured.mebibytes;
        }
    }
    std::printf("MiB at most   %8d rows      %8d rows      %8d rows      (beside txt)\n", sizes[0], sizes[1], sizes[2]);
    for (std::size_t i = 0; i < std::size(outputs); ++i) {
        std::printf("%-11s", outputs[i].name);
        for (std::size_t size = 0; size < std::size(sizes); ++size)
            std::printf("  %8.1f (%+6.1f)", peaks[i][size], peaks[i][size] - peaks[0][size]);
        std::printf("\n");
    }
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    const std::string first = count > 1 ? arguments[1] : "100000";
    const fs::path folder = count > 2 ? fs::path(arguments[2]) : fs::temp_directory_path() / "quillform-bench";
    try {
        return (first == "memory" ? BenchMemory(folder) : BenchAll(folder, std::atoi(first.c_str()))) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_report: %s\n", error.what());
        return 1;
    }
}
