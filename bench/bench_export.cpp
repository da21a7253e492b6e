// An export to a new .mdb, the whole command, beside sqlite3's own import of the same rows into a new database.
//   bench_export [ROWS] [FOLDER]   ROWS about 100,000 if left out; FOLDER keeps the database between runs
// The rows are checked: each as mdb-export reads it back against the merge file of the same report. Needs mdbtools and
// sqlite3 (Debian packages of these names).
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "MeasuredRun.h"
#include "platform/CodePage.h"

namespace {

namespace fs = std::filesystem;
using namespace quillform::bench;

bool HasTool(const std::string& name) { return std::system(("command -v " + name + " >/dev/null 2>&1").c_str()) == 0; }

std::vector<std::string> CommandFor(const fs::path& folder, const fs::path& target, const char* type,
                                    const char* format) {
    return {QUILLFORM_PROGRAM,
            "run",
            "--quiet",
            "--json",
            "--walk",
            "one-pass",
            "-t",
            type,
            "--format",
            format,
            (folder / "PLAIN.REP").string(),
            "-o",
            target.string()};
}

/// The merge file in UTF-8 and with plain line ends, as both importers and comparison take it.
void MakeRows(const fs::path& merged, const fs::path& target) {
    std::string text = quillform::Utf8FromCp1252(ReadFile(merged));
    std::erase(text, '\r');
    std::FILE* file = std::fopen(target.c_str(), "wb");
    if (file == nullptr) return;
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
}

void Tell(const char* what, const Measured& measured, double rows, const fs::path& file) {
    std::printf("%-14s %8.0f rows %7.3f s (%.3f s of processor) %9.0f rows/s | %6.1f MiB held, file of %.1f MiB\n",
                what, rows, measured.seconds, measured.cpuSeconds, rows / measured.seconds, measured.mebibytes,
                static_cast<double>(fs::file_size(file)) / (1 << 20));
}

bool BenchFormat(const fs::path& folder, const char* format, const std::string& expected, double rows) {
    const fs::path target = folder / (std::string("export-") + format + ".mdb");
    const Measured made = RunThrice(CommandFor(folder, target, "mdb", format), folder / "log");
    if (!made.isDone) return false;
    Tell(format, made, rows, target);
    const fs::path read = folder / "read.csv";
    const bool isRead = RunMeasured({"mdb-export", "-H", target.string(), "Project1 Table"}, read).isDone;
    const bool isSame = isRead && ReadFile(read) == expected;
    std::printf("%-14s %s\n", "", isSame ? "mdb-export reads every row as it is in the merge file" : "ROWS DIFFER");
    return isSame;
}

bool Bench(const fs::path& folder, int wanted) {
    if (!InChild([&] { MakeLayouts(MakeDatabase(folder, wanted), folder); })) return false;
    const fs::path merged = folder / "rows.mrg";
    const fs::path rowsFile = folder / "rows.csv";
    if (!RunMeasured(CommandFor(folder, merged, "csv", "jet4"), folder / "log").isDone) return false;
    if (!InChild([&] { MakeRows(merged, rowsFile); })) return false;
    const std::string expected = ReadFile(rowsFile);
    const auto rows = static_cast<double>(std::count(expected.begin(), expected.end(), '\n'));

    const fs::path database = folder / "import.db";
    const Measured imported = RunThrice({"sqlite3", database.string(), "CREATE TABLE t(a,b,c,d,e,f,g,h)", ".mode csv",
                                         ".import " + rowsFile.string() + " t"},
                                        folder / "log", [&] { fs::remove(database); });
    if (!imported.isDone) return false;
    Tell("sqlite3 import", imported, rows, database);
    const bool isJet3 = BenchFormat(folder, "jet3", expected, rows);
    return BenchFormat(folder, "jet4", expected, rows) && isJet3;
}

}  // namespace

int main(int count, char** arguments) {
    const int rows = count > 1 ? std::atoi(arguments[1]) : 100000;
    const fs::path folder = count > 2 ? fs::path(arguments[2]) : fs::temp_directory_path() / "quillform-bench";
    for (const char* tool : {"sqlite3", "mdb-export"}) {
        if (HasTool(tool)) continue;
        std::printf("bench_export: skipped, %s isn't installed\n", tool);
        return 0;
    }
    try {
        return Bench(folder, rows) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_export: %s\n", error.what());
        return 1;
    }
}
