#include <array>
#include <cstdio>
#include <filesystem>
#include <set>

#include "catalog/CatalogTables.h"
#include "cli/Command.h"
#include "cli/InputFiles.h"
#include "cli/LoadForVerb.h"
#include "cli/PrinterSwitches.h"
#include "cli/RowWriter.h"
#include "cli/RunClock.h"
#include "cli/TerminalUser.h"
#include "data/Engine.h"
#include "engine/ReportRun.h"
#include "output/OutputRooms.h"
#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "print/PdfTarget.h"

namespace quillform::cli {

namespace {

constexpr Switch switches[] = {
    {'d', "database", "FILE", "report on this database instead of the layout's"},
    {'t', "type", "TYPE",
     "printer, pdf, screen, txt, rtf, csv, word, wordperfect or mdb; else by FILE's extension, else as the layout "
     "says"},
    {'o', "output", "FILE", "write here; a folder takes the layout's name; - is standard output"},
    {'q', "query", "FILE", "add the conditions of a query file (.QRY) to the layout's"},
    {0, "printer", "NAME", "print on this printer; --type printer alone takes the default one"},
    {0, "copies", "NUMBER", "print this many copies"},
    {0, "list-printers", "", "list the printers and do nothing else; with --json as JSON"},
    {0, "walk", "HOW", "one-pass, groups, or measured: whichever is quicker (the default)"},
    {0, "date", "DATE", "take this for today's date and time, in headings and in the document"},
    {0, "orientation", "HOW", "portrait or landscape, instead of the layout's"},
    {0, "paper", "NUMBER", "paper number, instead of the layout's"},
    {0, "format", "FORMAT", "of an Access database: jet3 or jet4; else as the layout says, or jet4"},
    {0, "keep-partial", "", "keep the short file of a run that failed or was interrupted"},
    {0, "strict", "", "end with 4 if there were warnings"},
    {0, "json", "", "say what was done as JSON on standard output"},
    {0, "quiet", "", "no progress and no warnings"},
    {'v', "verbose", "", "say what was done, and how long it took"},
};

struct TypeName {
    std::string_view name;
    OutputType type;
};
constexpr TypeName typeNames[] = {
    {"pdf", OutputType::Printer},
    {"printer", OutputType::Printer},
    {"screen", OutputType::Screen},
    {"txt", OutputType::Text},
    {"text", OutputType::Text},
    {"rtf", OutputType::RichText},
    {"csv", OutputType::CommaSeparated},
    {"mrg", OutputType::CommaSeparated},
    {"word", OutputType::WordMerge},
    {"doc", OutputType::WordMerge},
    {"wordperfect", OutputType::WordPerfectMerge},
    {"mdb", OutputType::AccessDatabase},
};

std::optional<OutputType> TypeOf(std::string_view name) {
    for (const TypeName& candidate : typeNames)
        if (EqualCaseBlind(candidate.name, name)) return candidate.type;
    return std::nullopt;
}

std::string_view NameOf(OutputType type) {
    for (const TypeName& candidate : typeNames)
        if (candidate.type == type) return candidate.name;
    return {};
}

OutputType ChooseType(const Arguments& arguments, const ReportSettings& settings) {
    if (ChoosePrinter(arguments)) return OutputType::Printer;
    OutputType type = OutputTypeOfOption(settings.intOutputType);
    if (const auto named = arguments.Value("type")) {
        const auto found = TypeOf(*named);
        if (!found) throw UsageError("there is no output type \"" + *named + "\"");
        type = *found;
    } else if (const auto file = arguments.Value("output")) {
        const std::string extension = std::filesystem::path(*file).extension().string();
        if (extension.size() > 1) type = TypeOf(extension.substr(1)).value_or(type);
    }
    return type;
}

std::string ChooseFile(const Arguments& arguments, const Layout& layout, OutputType type) {
    const std::string stem = std::filesystem::path(layout.strLayoutFile).stem().string();
    const std::string name = stem + std::string(ExtensionOf(type));
    const auto chosen = arguments.Value("output");
    if (!chosen) return type == OutputType::Screen ? ScreenFileOf(layout) : name;
    std::error_code ignored;  // what isn't there is no folder
    if (std::filesystem::is_directory(*chosen, ignored)) return (std::filesystem::path(*chosen) / name).string();
    return *chosen;
}

Walk ChooseWalk(const Arguments& arguments) {
    const std::string walk = arguments.Value("walk").value_or("measured");
    if (walk == "measured") return Walk::Measured;
    if (walk == "one-pass") return Walk::OnePass;
    if (walk == "groups") return Walk::Groups;
    throw UsageError("--walk takes one-pass, groups or measured, not \"" + walk + "\"");
}

std::optional<DatabaseVersion> ChooseFormat(const Arguments& arguments) {
    const auto format = arguments.Value("format");
    if (!format) return std::nullopt;
    if (EqualCaseBlind(*format, "jet3")) return DatabaseVersion::Jet30;
    if (EqualCaseBlind(*format, "jet4")) return DatabaseVersion::Jet40;
    throw UsageError("--format takes jet3 or jet4, not \"" + *format + "\"");
}

void ApplySwitches(const Arguments& arguments, ReportSettings& settings) {
    if (const auto database = arguments.Value("database")) settings.strDatabase[1] = *database;
    if (const auto orientation = arguments.Value("orientation")) {
        if (*orientation != "portrait" && *orientation != "landscape")
            throw UsageError("--orientation takes portrait or landscape, not \"" + *orientation + "\"");
        settings.intOrientation = *orientation == "landscape" ? 0 : 1;
    }
    if (const auto paper = arguments.Value("paper")) {
        PaperInches inches;
        const double number = Val(*paper);
        if (number < 1 || number > 32767 || *paper != std::to_string(static_cast<int>(number)) ||
            !FindPaper(static_cast<int>(number), inches))
            throw UsageError("there is no paper number \"" + *paper + "\"");
        settings.intPaperSize = static_cast<std::int16_t>(number);
    }
}

/// A report passes over a condition whose catalog row is missing, and then shows more than was asked for: as it would
/// with the query file of another database.
void WarnOfLostConditions(const collQuery& queries, Database& database, UserInterface& user) {
    if (queries.Count() == 0) return;
    const Catalog catalog = Catalog::Read(database);
    std::string first;
    int lost = 0;
    for (const clssQuery& line : queries)
        if (!catalog.Find(line.Code) && lost++ == 0) first = line.Text;
    if (lost > 0)
        user.Warn("Left out: " + std::to_string(lost) + " of " + std::to_string(queries.Count()) + " conditions, \"" +
                  first + "\" first, because the catalog has no such row.");
}

/// The database must be there and have its catalog before anything is opened for writing. Throws what is wrong; gives
/// the path under which it was found.
std::string CheckDatabase(const Layout& layout, DBEngine& engine, UserInterface& user) {
    const auto path = FindReportDatabase(layout, user);
    if (!path)
        throw RunTimeError(ErrorNumber::FileMissing, "The database \"" + layout.settings.strDatabase[1] + "\" " +
                                                         WhyNoFile(layout.settings.strDatabase[1]) +
                                                         "; name another with --database.");
    const std::unique_ptr<Database> database = engine.OpenDatabase(*path, Access::ReadOnly);
    if (database->FindTable(catalogIndexTable) && database->FindTable(catalogRelationTable)) {
        WarnOfLostConditions(layout.Queries, *database, user);
        return *path;
    }
    throw RunTimeError(ErrorNumber::UnrecognizedFormat, "The database \"" + *path +
                                                            "\" has not been configured for reports; run \"quillform "
                                                            "configure " +
                                                            *path + " --defaults\" first.");
}

struct Run {
    Layout layout;
    OutputType type = OutputType::Printer;
    std::optional<PrinterChoice> printer;
    std::string file;  // empty if it goes to a printer
    RunOutcome outcome;
};

/// The files of this command so far.
using Targets = std::set<std::filesystem::path>;

std::string Summary(const Run& run, const TerminalUser& user) {
    const RunOutcome& outcome = run.outcome;
    std::string json = "{\"layout\": ";
    AppendJsonText(run.layout.strLayoutFile, json);
    json += run.printer ? ", \"printer\": " : ", \"output\": ";
    AppendJsonText(run.printer ? run.printer->name : run.file, json);
    json += ", \"type\": ";
    AppendJsonText(run.printer ? "printer" : NameOf(run.type), json);
    json += ", \"records\": " + std::to_string(outcome.records) + ", \"pages\": " + std::to_string(outcome.pages);
    json += std::string(", \"walk\": \"") + (outcome.walk == Walk::Groups ? "groups" : "one-pass") + "\"";
    const std::pair<const char*, double> times[] = {{"open", outcome.times.open},
                                                    {"measure", outcome.times.measure},
                                                    {"compose", outcome.times.compose},
                                                    {"close", outcome.times.close}};
    json += ", \"seconds\": {";
    for (const auto& [name, seconds] : times) {
        if (json.back() != '{') json += ", ";
        json += std::string("\"") + name + "\": ";
        AppendJson(Value::Double(seconds), json);
    }
    json += "}, \"warnings\": [";
    for (const std::string& warning : user.Warnings()) {
        if (json.back() != '[') json += ", ";
        AppendJsonText(warning, json);
    }
    return json + "]}\n";
}

void TellVerbosely(const Run& run) {
    const RunTimes& times = run.outcome.times;
    std::fprintf(stderr,
                 "quillform: %s: %lld %s, %d %s, %s; %.3f s to read and sort, %.3f s to choose the walk, %.3f s to "
                 "compose and write, %.3f s to close\n",
                 run.printer ? "printer" : run.file.c_str(), static_cast<long long>(run.outcome.records),
                 run.outcome.records == 1 ? "record" : "records", static_cast<int>(run.outcome.pages),
                 run.outcome.pages == 1 ? "page" : "pages",
                 run.outcome.walk == Walk::Groups ? "walked by groups" : "one pass", times.open, times.measure,
                 times.compose, times.close);
}

ExitCode CodeOf(const Run& run, const TerminalUser& user, bool isStrict) {
    switch (run.outcome.end) {
        case RunEnd::NoRecords:
            return ExitCode::NoRecords;
        case RunEnd::Cancelled:
            return ExitCode::Interrupted;
        case RunEnd::Failed:
            return ExitCodeOf(*run.outcome.failure);
        case RunEnd::NoItems:
        case RunEnd::NoPrimarySort:
        case RunEnd::NoPrimaryRow:
            return ExitCode::Layout;
        case RunEnd::TargetCancelled:
            return ExitCode::Target;
        case RunEnd::Done:
            break;
    }
    return isStrict && !user.Warnings().empty() ? ExitCode::Warnings : ExitCode::Done;
}

void TellEnd(const Run& run, UserInterface& user) {
    if (run.outcome.failure) user.Message(run.outcome.failure->what());
    if (run.outcome.end == RunEnd::Cancelled) user.Message("The report was interrupted.");
    if (run.outcome.end == RunEnd::NoPrimaryRow)
        user.Message("The primary sort field of the layout is no longer in the catalog.");
}

/// Tells the lines that weren't understood, but no flood of them, as a file of another kind would give.
void TellProblems(const std::string& layoutFile, const std::vector<LayoutProblem>& problems, const Layout& layout,
                  UserInterface& user) {
    constexpr std::size_t mostTold = 10;
    if (layout.Fields.Count() == 0 && !problems.empty())
        throw RunTimeError(ErrorNumber::InvalidFileFormat,
                           "The layout \"" + layoutFile + "\" has no item that can be read; line " +
                               std::to_string(problems.front().line) + ": " + problems.front().text + ".");
    for (std::size_t i = 0; i < std::min(problems.size(), mostTold); ++i)
        user.Warn("Layout \"" + layoutFile + "\", line " + std::to_string(problems[i].line) + ": " + problems[i].text +
                  ".");
    if (problems.size() > mostTold)
        user.Warn("Layout \"" + layoutFile + "\": " + std::to_string(problems.size() - mostTold) +
                  " more of its lines have faults; \"quillform check\" tells all.");
}

/// The target is neither what the report is made from nor what another of these layouts has just written. Databases are
/// the business of the output that makes one.
void ExpectOwnTarget(const Run& run, const Arguments& arguments, Targets& written) {
    const std::filesystem::path target = TargetPath(run.file);
    ExpectOtherFile(target, run.layout.strLayoutFile);
    if (const auto query = arguments.Value("query")) ExpectOtherFile(target, *query);
    if (run.type != OutputType::AccessDatabase) ExpectOtherFile(target, run.layout.settings.strDatabase[1]);
    if (arguments.Operands().size() > 1 && !written.insert(target).second)
        throw RunTimeError(ErrorNumber::PermissionDenied, "\"" + run.file + "\" isn't written for \"" +
                                                              run.layout.strLayoutFile +
                                                              "\": it belongs to another of these layouts.");
}

/// A name such as "report.docx" promises what no output writes.
void NoteUnknownExtension(const Arguments& arguments, const Run& run, UserInterface& user) {
    const std::string extension = std::filesystem::path(run.file).extension().string();
    if (arguments.Has("type") || extension.size() < 2 || TypeOf(extension.substr(1))) return;
    user.Note("No output is named \"" + extension.substr(1) + "\", so \"" + run.file + "\" is made as " +
              std::string(NameOf(run.type)) + ", as the layout says; --type chooses another.");
}

ExitCode RunLayout(const Arguments& arguments, const std::string& layoutFile, Targets& written) {
    const RunClock clock(arguments.Value("date"));
    TerminalUser user({.isQuiet = arguments.Has("quiet"), .answersYes = false});
    const std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    const std::unique_ptr<TextMeasure> measure = print::MakeTextMeasure();
    Run run;
    const std::vector<LayoutProblem> problems = LoadForVerb(layoutFile, run.layout, *measure, user);
    TellProblems(layoutFile, problems, run.layout, user);
    ApplySwitches(arguments, run.layout.settings);
    if (const auto query = arguments.Value("query")) AddQueryFile(*query, run.layout);
    run.type = ChooseType(arguments, run.layout.settings);
    run.printer = ChoosePrinter(arguments);
    if (!run.printer) run.file = ChooseFile(arguments, run.layout, run.type);
    const auto format = ChooseFormat(arguments);
    const RunOptions options{.walk = ChooseWalk(arguments)};
    // A substituted database is told once, here. A layout without items is the run's to refuse.
    if (run.layout.Fields.Count() > 0) run.layout.settings.strDatabase[1] = CheckDatabase(run.layout, *engine, user);
    if (!run.printer) {
        ExpectOwnTarget(run, arguments, written);
        NoteUnknownExtension(arguments, run, user);
    }

    const InterruptGuard guard;
    const std::unique_ptr<Output> output = MakeOutput(
        run.type,
        {.file = run.file, .keepsStopped = arguments.Has("keep-partial"), .format = format, .printer = run.printer});
    ReportRun report(run.layout, *output, {*engine, user, clock, *measure}, options);
    run.outcome = report.ProcessReport();
    TellEnd(run, user);
    if (arguments.Has("verbose")) TellVerbosely(run);
    if (arguments.Has("json")) {
        const std::string summary = Summary(run, user);
        std::fwrite(summary.data(), 1, summary.size(), stdout);
    }
    return CodeOf(run, user, arguments.Has("strict"));
}

/// Whether the target of several reports gives each a file of its own.
void ExpectFolder(const Arguments& arguments) {
    const auto target = arguments.Value("output");
    std::error_code ignored;  // what isn't there is no folder
    if (target && !std::filesystem::is_directory(*target, ignored))
        throw UsageError("several layouts need a folder to write to, and \"" + *target + "\" is none");
}

/// A report that fails is told and the next one runs; the first failure decides the exit code.
ExitCode RunReports(const Arguments& arguments) {
    const std::vector<std::string>& layouts = arguments.Operands();
    if (arguments.Has("list-printers")) return ListPrinters(arguments.Has("json"));
    arguments.ExpectOperands(1, std::string::npos, "LAYOUT.REP");
    if (arguments.Has("json") && arguments.Value("output") == "-")
        throw UsageError("the report and --json can't both go to standard output");
    Targets written;
    if (layouts.size() == 1) return RunLayout(arguments, layouts.front(), written);
    ExpectFolder(arguments);
    ExitCode first = ExitCode::Done;
    for (const std::string& layout : layouts) {
        ExitCode code = ExitCode::Done;
        try {
            code = RunLayout(arguments, layout, written);
        } catch (const RunTimeError& error) {
            TerminalUser({}).Message(error.what(), {});
            code = ExitCodeOf(error);
        }
        if (code == ExitCode::Interrupted) return code;
        if (first == ExitCode::Done) first = code;
    }
    return first;
}

}  // namespace

const Verb runVerb = {
    "run",
    "LAYOUT.REP ...",
    "Runs report layouts over their databases into files or onto paper.",
    "The database is looked for where the layout says, then by its file name beside the layout and in the\n"
    "program's folder. The output is written whole or not at all. Of several layouts, one that fails doesn't\n"
    "keep the others from running.",
    switches,
    RunReports,
};

}  // namespace quillform::cli
