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

ExitCode Configure(const Arguments& arguments) {
    arguments.ExpectOperands(1, 1, "DATABASE");
    if (!arguments.Has("defaults")) throw UsageError("there is no window to ask in, so --defaults is needed");
    const std::string& name = arguments.Operands()[0];
    const auto found = FindFile(name);
    if (!found) throw RunTimeError(ErrorNumber::FileMissing, "The database \"" + name + "\" does not exist.");
    const RunClock clock(std::nullopt);
    const std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    const std::unique_ptr<Database> database = engine->OpenDatabase(found->path.string());
    const std::string path = std::filesystem::absolute(found->path).lexically_normal().string();
    const ConfigurationReport report = ConfigureWithDefaults(*database, path);
    if (arguments.Has("quiet")) return ExitCode::Done;
    for (const std::string& line : report.Lines()) std::printf("%s\n", line.c_str());
    return ExitCode::Done;
}

}  // namespace

const Verb configureVerb = {
    "configure",
    "DATABASE --defaults",
    "Adds the catalog that tells reports what the database holds.",
    "Three tables are added: Report - Index (the fields), Report - Relation (how tables link) and\n"
    "Report - Labels. Your own tables are not changed. A catalog that is there is left alone.",
    switches,
    Configure};

}  // namespace quillform::cli
