#include <algorithm>
#include <cstdio>

#include "cli/Command.h"
#include "cli/LayoutCheck.h"
#include "cli/LoadForVerb.h"
#include "cli/RowWriter.h"
#include "cli/RunClock.h"
#include "cli/TerminalUser.h"
#include "data/Engine.h"
#include "print/PdfTarget.h"

namespace quillform::cli {

namespace {

constexpr Switch switches[] = {
    {'d', "database", "FILE", "check against this database instead of the layout's"},
    {0, "json", "", "findings as a JSON array"},
    {'v', "verbose", "", "also list what each item and condition refers to, and the statement of the report"},
};

std::string AsText(const std::vector<Finding>& findings, bool isVerbose) {
    std::string text;
    for (const Finding& finding : findings)
        if (isVerbose || finding.weight != Weight::Note)
            text += std::string(NameOf(finding.weight)) + ": " + finding.text + "\n";
    return text;
}

std::string AsJson(const std::vector<Finding>& findings) {
    std::string json = "[";
    for (const Finding& finding : findings) {
        json += json.size() > 1 ? ",\n" : "\n";
        json += "{\"weight\": \"" + std::string(NameOf(finding.weight)) + "\", \"text\": ";
        AppendJsonText(finding.text, json);
        json += "}";
    }
    return json + "\n]\n";
}

ExitCode CheckLayout(const Arguments& arguments) {
    arguments.ExpectOperands(1, 1, "LAYOUT.REP");
    const RunClock clock(std::nullopt);
    TerminalUser user({});
    const std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    const std::unique_ptr<TextMeasure> measure = print::MakeTextMeasure();
    Layout layout;
    const std::vector<LayoutProblem> problems = LoadForVerb(arguments.Operands()[0], layout, *measure, user);
    if (const auto database = arguments.Value("database")) layout.settings.strDatabase[1] = *database;

    // The target's own list of fonts; nothing is drawn on it, so nothing is written.
    const std::vector<std::string> fonts = print::MakePdfTarget("/dev/null", {})->Fonts();
    const std::vector<Finding> findings = LayoutCheck(layout, *engine, user, fonts).Findings(problems);
    const std::string text = arguments.Has("json") ? AsJson(findings) : AsText(findings, arguments.Has("verbose"));
    std::fwrite(text.data(), 1, text.size(), stdout);
    const auto has = [&](Weight weight) {
        return std::any_of(findings.begin(), findings.end(),
                           [&](const Finding& finding) { return finding.weight == weight; });
    };
    if (has(Weight::DatabaseError)) return ExitCode::Database;
    return has(Weight::Error) ? ExitCode::Layout : ExitCode::Done;
}

}  // namespace

const Verb checkVerb = {
    "check",
    "LAYOUT.REP",
    "Tells what a layout refers to and what of it is missing.",
    "Ends with 0 if the report can run, with 6 if something that the layout names is missing, with 5 if its\n"
    "database is.",
    switches,
    CheckLayout};

}  // namespace quillform::cli
