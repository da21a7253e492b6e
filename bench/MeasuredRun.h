#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace quillform::bench {

/// What one run of a program took.
struct Measured {
    double seconds = 0;
    double cpuSeconds = 0;
    double mebibytes = 0;  ///< most memory held
    bool isDone = false;   ///< ended with 0
};

/// Runs a program with its arguments, no shell between; `output` takes its standard output.
Measured RunMeasured(const std::vector<std::string>& command, const std::filesystem::path& output);
/// The quickest of three runs; not done if one of them isn't.
Measured RunThrice(const std::vector<std::string>& command, const std::filesystem::path& output,
                   const std::function<void()>& before = {});

/// Runs the preparation in a process of its own: a child's peak memory counts from the size that its parent had, so
/// this one must stay small. True if it went well.
bool InChild(const std::function<void()>& work);

/// Makes "rows-N.mdb" in the folder unless it is there: the sample company with about `rows` order lines.
std::filesystem::path MakeDatabase(const std::filesystem::path& folder, int rows);
/// Makes, over that database: BENCH.REP, every order line in groups of country and customer; PLAIN.REP, the same
/// without groups, totals and suppressed values; LABELS.REP, a label for each order line.
void MakeLayouts(const std::filesystem::path& database, const std::filesystem::path& folder);

/// The number behind "name": in the command's JSON summary.
double NumberBehind(const std::string& json, const std::string& name);
std::string ReadFile(const std::filesystem::path& path);

}  // namespace quillform::bench
