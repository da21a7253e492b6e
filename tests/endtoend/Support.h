#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "PlacedWords.h"
#include "ScratchFolder.h"

namespace endtoend {

using quillform::ScratchFolder;

struct Outcome {
    int exitCode = -1;  ///< -1: ended by a signal
    std::string output;
    std::string errors;
};

/// Runs a program with its arguments, no shell between. DISPLAY is unset, the date fixed, the home a folder of its own.
/// Ended by force after a minute, so that a hang is a failed test.
Outcome RunProgram(const std::vector<std::string>& command);
/// The same with the built program `quillform` and its arguments.
Outcome Quillform(const std::vector<std::string>& arguments);

bool HasTool(std::string_view name);
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, std::string_view content);
std::vector<std::string> Lines(std::string_view text);

/// Fields of comma separated text with doubled quotes; a quoted field may hold line ends.
std::vector<std::vector<std::string>> ParseCsv(std::string_view text);

/// A table as `mdb-export`, an independent reader, gives it: rows of texts by column name.
using Row = std::map<std::string, std::string>;
std::vector<Row> ExportedRows(const std::filesystem::path& database, const std::string& table);

using quillform::PlacedWord;
/// The words of a PDF on all its pages.
std::vector<PlacedWord> WordsOf(const std::filesystem::path& document);

/// Names and contents of the files of a folder, for "nothing changed on disk".
std::map<std::string, std::string> Snapshot(const std::filesystem::path& folder);

/// A copy of a database of the shared samples in the folder, writable; empty path where the samples are missing.
std::filesystem::path CopyOfShared(std::string_view name, const ScratchFolder& folder);

/// "" if the texts are the same, else the number of the first differing line and the line on both sides.
std::string FirstDifference(std::string_view expected, std::string_view actual);

}  // namespace endtoend
