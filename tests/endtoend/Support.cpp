#include "endtoend/Support.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace endtoend {

namespace {

namespace fs = std::filesystem;

constexpr const char* fixedDate = "1767182400";  // 2025-12-31 12:00 UTC

void RedirectTo(int descriptor, const fs::path& file) {
    const int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(opened, descriptor);
    close(opened);
}

[[noreturn]] void Become(const std::vector<std::string>& command, const ScratchFolder& home) {
    RedirectTo(STDOUT_FILENO, home / "stdout");
    RedirectTo(STDERR_FILENO, home / "stderr");
    const int nothing = open("/dev/null", O_RDONLY);
    dup2(nothing, STDIN_FILENO);
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("QT_QPA_PLATFORM");
    setenv("SOURCE_DATE_EPOCH", fixedDate, 1);
    setenv("QUILLFORM_HOME", (home / "program").c_str(), 1);
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

int WaitFor(pid_t child) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

Outcome RunProgram(const std::vector<std::string>& command) {
    const ScratchFolder home;
    const pid_t child = fork();
    if (child == 0) Become(command, home);
    Outcome outcome;
    outcome.exitCode = WaitFor(child);
    outcome.output = ReadFile(home / "stdout");
    outcome.errors = ReadFile(home / "stderr");
    return outcome;
}

Outcome Quillform(const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {QUILLFORM_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return RunProgram(command);
}

bool HasTool(std::string_view name) {
    std::istringstream folders(std::getenv("PATH") != nullptr ? std::getenv("PATH") : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((fs::path(folder) / name).c_str(), X_OK) == 0) return true;
    return false;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteFile(const fs::path& path, std::string_view content) {
    std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
}

std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    std::istringstream stream{std::string(text)};
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<std::vector<std::string>> ParseCsv(std::string_view text) {
    std::vector<std::vector<std::string>> records;
    std::vector<std::string> record;
    std::string field;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char letter = text[i];
        if (quoted && letter == '"' && i + 1 < text.size() && text[i + 1] == '"') {
            field += text[++i];
        } else if (letter == '"') {
            quoted = !quoted;
        } else if (!quoted && (letter == ',' || letter == '\n')) {
            record.push_back(std::move(field));
            field.clear();
            if (letter == '\n') {
                records.push_back(std::move(record));
                record.clear();
            }
        } else {
            field += letter;
        }
    }
    return records;
}

std::vector<Row> ExportedRows(const fs::path& database, const std::string& table) {
    const Outcome exported = RunProgram({"mdb-export", "-T", "%Y-%m-%d", database.string(), table});
    const auto records = ParseCsv(exported.output);
    std::vector<Row> rows;
    for (std::size_t i = 1; i < records.size(); ++i) {
        Row row;
        for (std::size_t column = 0; column < records[i].size(); ++column)
            row[records[0].at(column)] = records[i][column];
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<PlacedWord> WordsOf(const fs::path& document) {
    return quillform::WordsIn(RunProgram({"pdftotext", "-bbox", document.string(), "-"}).output);
}

std::map<std::string, std::string> Snapshot(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        files[entry.path().string()] = entry.is_regular_file() ? ReadFile(entry.path()) : "";
    return files;
}

fs::path CopyOfShared(std::string_view name, const ScratchFolder& folder) {
    const fs::path source = fs::path(QUILLFORM_SOURCE_DIR) / "../shared/jet/samples" / name;
    if (!fs::exists(source)) return {};
    const fs::path copy = folder / name;
    fs::copy_file(source, copy);
    fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add);
    return copy;
}

std::string FirstDifference(std::string_view expected, std::string_view actual) {
    if (expected == actual) return {};
    const auto left = Lines(expected);
    const auto right = Lines(actual);
    for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
        const std::string expectedLine = i < left.size() ? left[i] : "(end of file)";
        const std::string actualLine = i < right.size() ? right[i] : "(end of file)";
        if (expectedLine != actualLine)
            return "line " + std::to_string(i + 1) + "\n expected: " + expectedLine + "\n actual:   " + actualLine;
    }
    return "only the line ends differ";
}

}  // namespace endtoend
