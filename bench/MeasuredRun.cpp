#include "MeasuredRun.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "catalog/CommonSheets.h"
#include "data/Engine.h"
#include "persistence/LayoutFile.h"
#include "platform/CodePage.h"
#include "platform/OutputFile.h"
#include "sample/SampleDatabase.h"
#include "sample/SampleLayouts.h"

namespace quillform::bench {

namespace {

namespace fs = std::filesystem;

constexpr int linesPerOrder = 3;  // on average

double SecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

bool IsData(const clssFields& item) { return item.Code > 0 && item.Code < ItemCode::FirstHeadingLoose; }

void Save(const Layout& layout, const fs::path& target) {
    OutputFile file(target);
    file.Write(Cp1252FromUtf8(LayoutText(layout)));
    file.Commit();
}

void TakeTotals(clssFields& item) {
    item.SuppressDuplicate = item.SubTotalFlag1 = item.SubTotalFlag2 = item.GrandTotalFlag = false;
}

/// No heading, so that nothing but records is written, and room for the longest product.
Layout PlainOf(const Layout& grouped) {
    constexpr std::int16_t longest = 40;
    Layout plain = grouped;
    plain.settings.intCharChange1 = plain.settings.intCharChange2 = 0;
    plain.Fields.ClearAll();
    for (const clssFields& item : grouped.Fields) {
        if (!IsData(item)) continue;
        clssFields& kept = plain.Fields.Add(item);
        TakeTotals(kept);
        kept.Length = longest;
    }
    return plain;
}

/// Three across and ten down on a Letter sheet, country, customer, order, quantity and product below each other.
Layout LabelsOf(const Layout& grouped) {
    Layout labels = grouped;
    ReportSettings& settings = labels.settings;
    UseLabels(addressSheet, settings);
    settings.intOrientation = 1;
    settings.intCharChange1 = settings.intCharChange2 = 0;
    labels.Fields.ClearAll();
    for (const clssFields& item : grouped.Fields) {
        // Each table is joined by the one before it, so a level left out would break the chain.
        const bool isSorted = item.PrimarySort || item.SecondarySort || item.TriarySort;
        if (!IsData(item) || !(isSorted || item.Text == "Quantity" || item.Text == "Product")) continue;
        clssFields& placed = labels.Fields.Add(item);
        TakeTotals(placed);
        placed.Top = static_cast<float>(labels.Fields.Count() - 1);
        placed.Left = 1;
    }
    return labels;
}

}  // namespace

Measured RunMeasured(const std::vector<std::string>& command, const fs::path& output) {
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    std::fflush(stdout);  // or the child would print it again
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        if (!std::freopen(output.c_str(), "w", stdout)) _exit(126);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    return {seconds.count(), SecondsOf(usage.ru_utime) + SecondsOf(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) / 1024, WIFEXITED(status) && WEXITSTATUS(status) == 0};
}

Measured RunThrice(const std::vector<std::string>& command, const fs::path& output,
                   const std::function<void()>& before) {
    Measured best;
    for (int round = 0; round < 3; ++round) {
        if (before) before();
        const Measured measured = RunMeasured(command, output);
        if (!measured.isDone) return measured;
        if (!best.isDone || measured.seconds < best.seconds) best = measured;
    }
    return best;
}

bool InChild(const std::function<void()>& work) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        try {
            work();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "bench: %s\n", error.what());
            _exit(1);
        }
        std::fflush(stdout);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

fs::path MakeDatabase(const fs::path& folder, int rows) {
    fs::create_directories(folder);
    const fs::path path = fs::absolute(folder / ("rows-" + std::to_string(rows) + ".mdb"));
    if (fs::exists(path)) return path;
    const SystemClock clock;
    const auto engine = data::MakeEngine(clock);
    const auto database = engine->CreateDatabase(path.string(), DatabaseVersion::Jet40);
    sample::WriteTables(*database, sample::MakeCompany(rows / linesPerOrder));
    sample::WriteCatalog(*database, path.filename().string());
    return path;
}

void MakeLayouts(const fs::path& database, const fs::path& folder) {
    const SystemClock clock;
    const auto engine = data::MakeEngine(clock);
    const auto opened = engine->OpenDatabase(database.string(), Access::ReadOnly);
    for (sample::SampleLayout& made : sample::MakeLayouts(Catalog::Read(*opened), database.string())) {
        if (made.fileName != "SALES.REP") continue;
        made.layout.Queries.ClearAll();
        Save(made.layout, folder / "BENCH.REP");
        Save(PlainOf(made.layout), folder / "PLAIN.REP");
        Save(LabelsOf(made.layout), folder / "LABELS.REP");
    }
}

double NumberBehind(const std::string& json, const std::string& name) {
    const std::size_t found = json.find("\"" + name + "\": ");
    return found == std::string::npos ? 0 : std::atof(json.c_str() + found + name.size() + 4);
}

std::string ReadFile(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace quillform::bench
