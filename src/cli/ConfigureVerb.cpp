#include <cstdio>
#include <filesystem>
#include <optional>

#include "catalog/AnswersFile.h"
#include "catalog/Unattended.h"
#include "cli/Command.h"
#include "cli/InputFiles.h"
#include "cli/RunClock.h"
#include "data/Engine.h"
#include "platform/OutputFile.h"

namespace quillform::cli {

namespace {

constexpr Switch switches[] = {
    {0, "defaults", "", "take the proposed answer to every question"},
    {0, "answers", "FILE", "take the answers from a file"},
    {0, "record", "FILE", "write the answers that were given into a file"},
    {0, "dry-run", "", "say what would be done and leave the database as it is"},
    {0, "quiet", "", "don't say what was written"},
};

std::string FoundDatabase(const std::string& name) {
    const std::filesystem::path found = ExistingFile("database", name, ErrorNumber::FileMissing);
    return std::filesystem::absolute(found).lexically_normal().string();
}

std::optional<DesktopRequest> AskInWindows(const Arguments& arguments) {
    arguments.ExpectOperands(1, 1, "DATABASE");
    if (arguments.Has("defaults") && arguments.Has("answers"))
        throw UsageError("--defaults and --answers exclude each other");
    if (arguments.Has("defaults") || arguments.Has("answers")) return std::nullopt;
    if (arguments.Has("dry-run")) throw UsageError("--dry-run needs --defaults or --answers");
    ConfigureInWindows request{FoundDatabase(arguments.Operands()[0]), arguments.Value("record")};
    if (request.record) ExpectOtherFile(*request.record, request.database);
    return request;
}

/// The answers of the file that was named; none, so that all are the proposed ones, under --defaults.
Answers GivenAnswers(const Arguments& arguments) {
    const std::optional<std::string> file = arguments.Value("answers");
    return file ? ParseAnswers(ReadWholeFile(*file), *file) : Answers();
}

ExitCode Configure(const Arguments& arguments) {
    const Answers answers = GivenAnswers(arguments);
    const std::string path = FoundDatabase(arguments.Operands()[0]);
    std::optional<OutputFile> record;
    if (const auto file = arguments.Value("record")) {
        ExpectOtherFile(*file, path);
        record.emplace(*file);
    }
    const RunClock clock(std::nullopt);
    const std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    const std::unique_ptr<Database> database = engine->OpenDatabase(path);
    const ConfigurationReport report =
        ConfigureByAnswers(*database, path, answers, arguments.Has("dry-run") ? Changes::Drop : Changes::Keep);
    if (record && report.Changed()) {
        record->Write(AnswersText(report.answered));
        record->Commit();
    }
    if (arguments.Has("quiet")) return ExitCode::Done;
    for (const std::string& line : report.Lines()) std::printf("%s\n", line.c_str());
    if (report.Changed() && arguments.Has("dry-run")) std::printf("None of it was kept: this was a dry run.\n");
    if (record && !report.Changed()) std::printf("No answers were recorded.\n");
    return ExitCode::Done;
}

}  // namespace

const Verb configureVerb = {
    "configure",
    "DATABASE",
    "Adds the catalog that tells reports what the database holds.",
    "Three tables are added: Report - Index (the fields), Report - Relation (how tables link) and\n"
    "Report - Labels. Your own tables are not changed. A catalog that is there is left alone.\n"
    "Questions are asked in windows unless --defaults or --answers answers them.\n"
    "To begin an answers file: --defaults --record FILE --dry-run.",
    switches,
    Configure,
    AskInWindows,
    "--defaults takes the proposed answers, --answers those of a file"};

}  // namespace quillform::cli
