#include <cstdio>
#include <filesystem>

#include "catalog/DefaultAnswers.h"
#include "cli/Command.h"
#include "cli/RunClock.h"
#include "data/Engine.h"
#include "platform/Paths.h"

namespace quillform::cli {

namespace {

constexpr Switch switches[] = {
    {0, "defaults", "", "take the proposed answer to every question"},
    {0, "quiet", "", "don't say what was written"},
};

std::string FoundDatabase(const std::string& name) {
    const auto found = FindFile(name);
    if (!found) throw RunTimeError(ErrorNumber::FileMissing, "The database \"" + name + "\" does not exist.");
    return std::filesystem::absolute(found->path).lexically_normal().string();
}

std::optional<DesktopRequest> AskInWindows(const Arguments& arguments) {
    arguments.ExpectOperands(1, 1, "DATABASE");
    if (arguments.Has("defaults")) return std::nullopt;
    return ConfigureInWindows{FoundDatabase(arguments.Operands()[0]), std::nullopt};
}

ExitCode Configure(const Arguments& arguments) {
    const std::string path = FoundDatabase(arguments.Operands()[0]);
    const RunClock clock(std::nullopt);
    const std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    const std::unique_ptr<Database> database = engine->OpenDatabase(path);
    const ConfigurationReport report = ConfigureWithDefaults(*database, path);
    if (arguments.Has("quiet")) return ExitCode::Done;
    for (const std::string& line : report.Lines()) std::printf("%s\n", line.c_str());
    return ExitCode::Done;
}

}  // namespace

const Verb configureVerb = {
    "configure",
    "DATABASE",
    "Adds the catalog that tells reports what the database holds.",
    "Three tables are added: Report - Index (the fields), Report - Relation (how tables link) and\n"
    "Report - Labels. Your own tables are not changed. A catalog that is there is left alone.",
    switches,
    Configure,
    AskInWindows,
    "--defaults takes the proposed answers"};

}  // namespace quillform::cli
