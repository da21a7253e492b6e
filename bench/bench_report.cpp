// The whole command: a grouped report of many rows, four tables joined in an .mdb, to every output that streams.
//   bench_report [ROWS] [FOLDER]    ROWS about 100,000 if left out; FOLDER keeps the database between runs
// Prints rows a second, where the time went, and the most memory that the command held.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "data/Engine.h"
#include "persistence/LayoutFile.h"
#include "platform/CodePage.h"
#include "platform/OutputFile.h"
#include "sample/SampleDatabase.h"
#include "sample/SampleLayouts.h"

namespace {

namespace fs = std::filesystem;
using namespace quillform;

constexpr int linesPerOrder = 3;  // on average

void MakeDatabase(const fs::path& path, int rows) {
    const SystemClock clock;
    const auto engine = data::MakeEngine(clock);
    const auto start = std::chrono::steady_clock::now();
    const auto database = engine->CreateDatabase(path.string(), DatabaseVersion::Jet40);
    sample::WriteTables(*database, sample::MakeCompany(rows / linesPerOrder));
    sample::WriteCatalog(*database, path.filename().string());
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%s made in %.1f s, %.1f MiB\n", path.c_str(), seconds.count(),
                static_cast<double>(fs::file_size(path)) / (1 << 20));
}

/// The sample report of sales, without its condition: every order line in groups of country and customer.
void MakeLayout(const fs::path& database, const fs::path& target) {
    const SystemClock clock;
    const auto engine = data::MakeEngine(clock);
    const auto opened = engine->OpenDatabase(database.string(), Access::ReadOnly);
    for (sample::SampleLayout& made : sample::MakeLayouts(Catalog::Read(*opened), database.string())) {
        if (made.fileName != "SALES.REP") continue;
        made.layout.Queries.ClearAll();
        OutputFile file(target);
        file.Write(Cp1252FromUtf8(LayoutText(made.layout)));
        file.Commit();
    }
}

/// Runs the preparation in a process of its own: a child's peak memory counts from the size that its parent had, so
/// this one must stay small. True if it went well.
template <typename Work>
bool InChild(const Work& work) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        try {
            work();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "bench_report: %s\n", error.what());
            _exit(1);
        }
        std::fflush(stdout);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// The number behind "name": in the command's summary.
double NumberBehind(const std::string& json, const std::string& name) {
    const std::size_t found = json.find("\"" + name + "\": ");
    return found == std::string::npos ? 0 : std::atof(json.c_str() + found + name.size() + 4);
}

struct Measured {
    double seconds = 0;
    double mebibytes = 0;
    bool isDone = false;
};

Measured RunCommand(const fs::path& layout, const fs::path& target, const fs::path& summary) {
    const auto start = std::chrono::steady_clock::now();
    std::fflush(stdout);  // or the child would print it again
    const pid_t child = fork();
    if (child == 0) {
        if (!std::freopen(summary.c_str(), "w", stdout)) _exit(126);
        execl(QUILLFORM_PROGRAM, QUILLFORM_PROGRAM, "run", "--quiet", "--json", "--walk", "one-pass", layout.c_str(),
              "-o", target.c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    return {seconds.count(), static_cast<double>(usage.ru_maxrss) / 1024,
            WIFEXITED(status) && WEXITSTATUS(status) == 0};
}

bool BenchOutput(const fs::path& folder, const std::string& extension) {
    const fs::path target = folder / ("bench" + extension);
    const fs::path summary = folder / "summary.json";
    Measured best;
    std::string json;  // the summary of the best round
    for (int round = 0; round < 3; ++round) {
        const Measured measured = RunCommand(folder / "BENCH.REP", target, summary);
        if (!measured.isDone) {
            std::fprintf(stderr, "the command failed for %s\n", target.c_str());
            return false;
        }
        if (best.seconds != 0 && measured.seconds >= best.seconds) continue;
        best = measured;
        std::ifstream stream(summary);
        json.assign(std::istreambuf_iterator<char>(stream), {});
    }
    const double rows = NumberBehind(json, "records");
    std::printf(
        "%-5s %8.0f rows %6.0f pages %7.3f s %9.0f rows/s | read and sort %.3f s, compose and write %.3f s, "
        "close %.3f s | %6.1f MiB\n",
        extension.c_str() + 1, rows, NumberBehind(json, "pages"), best.seconds, rows / best.seconds,
        NumberBehind(json, "open"), NumberBehind(json, "compose"), NumberBehind(json, "close"), best.mebibytes);
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    const int rows = count > 1 ? std::atoi(arguments[1]) : 100000;
    const fs::path folder = count > 2 ? fs::path(arguments[2]) : fs::temp_directory_path() / "quillform-bench";
    try {
        fs::create_directories(folder);
        const fs::path database = fs::absolute(folder / ("rows-" + std::to_string(rows) + ".mdb"));
        const bool isReady = InChild([&] {
            if (!fs::exists(database)) MakeDatabase(database, rows);
            MakeLayout(database, folder / "BENCH.REP");
        });
        if (!isReady) return 1;
        bool isDone = true;
        for (const char* extension : {".txt", ".csv", ".rtf", ".pdf"}) isDone = BenchOutput(folder, extension) && isDone;
        return isDone ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_report: %s\n", error.what());
        return 1;
    }
}
