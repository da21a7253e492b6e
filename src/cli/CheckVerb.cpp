#include <algorithm>
#include <cstdio>
#include <set>

#include "cli/Command.h"
#include "cli/RowWriter.h"
#include "cli/RunClock.h"
#include "cli/TerminalUser.h"
#include "data/Engine.h"
#include "engine/ReportRun.h"
#include "persistence/LayoutFile.h"
#include "platform/Text.h"
#include "print/PdfTarget.h"
#include "query/ReportSelect.h"

namespace quillform::cli {

namespace {

constexpr Switch switches[] = {
    {'d', "database", "FILE", "check against this database instead of the layout's"},
    {0, "json", "", "findings as a JSON array"},
    {'v', "verbose", "", "also list what each item and condition refers to, and the statement of the report"},
};

enum class Weight { Note, Warning, Error };

std::string_view NameOf(Weight weight) {
    switch (weight) {
        case Weight::Note:
            return "note";
        case Weight::Warning:
            return "warning";
        case Weight::Error:
            return "error";
    }
    return {};
}

struct Finding {
    Weight weight;
    std::string text;
};

/// Looks a layout over without running it.
class LayoutCheck {
public:
    LayoutCheck(Layout& layout, DBEngine& engine, UserInterface& user)
        : layout_(layout), engine_(engine), user_(user) {}

    std::vector<Finding> Findings(const std::vector<LayoutProblem>& problems) {
        for (const LayoutProblem& problem : problems)
            Add(Weight::Warning, "line " + std::to_string(problem.line) + ": " + problem.text);
        if (layout_.Fields.Count() == 0) Add(Weight::Error, "the layout has no items");
        CheckFonts();
        CheckLabels();
        CheckAgainstDatabase();
        return std::move(findings_);
    }

private:
    void Add(Weight weight, std::string text) { findings_.push_back({weight, std::move(text)}); }

    void CheckFonts() {
        // The target's own list of fonts; nothing is drawn on it, so nothing is written.
        const std::vector<std::string> present = print::MakePdfTarget("/dev/null", {})->Fonts();
        std::set<std::string> told;
        for (const clssFields& item : layout_.Fields) {
            const std::string name(Trim(item.FontName));
            const bool isPresent = std::any_of(present.begin(), present.end(), [&](const std::string& font) {
                return EqualCaseBlind(Trim(font), name);
            });
            if (!isPresent && told.insert(UpperCase(name)).second)
                Add(Weight::Warning, "the font \"" + name + "\" is not installed; \"Times New Roman\" will be used");
        }
    }

    void CheckLabels() {
        const ReportSettings& settings = layout_.settings;
        if (settings.boolLabels && (settings.intLabelsAcross < 1 || settings.intLabelsDown < 1))
            Add(Weight::Error, "the label sheet has no labels across or down");
    }

    void CheckAgainstDatabase() {
        const auto path = FindReportDatabase(layout_, user_);
        if (!path) return Add(Weight::Error, "the database \"" + layout_.settings.strDatabase[1] + "\" does not exist");
        Add(Weight::Note, "database: " + *path);
        database_ = engine_.OpenDatabase(*path, Access::ReadOnly);
        if (!database_->FindTable(catalogIndexTable) || !database_->FindTable(catalogRelationTable))
            return Add(Weight::Error, "the database has not been configured for reports; run \"quillform configure " +
                                          *path + " --defaults\"");
        catalog_ = Catalog::Read(*database_);
        CheckItems();
        CheckConditions();
        CheckSorting();
        CheckStatement();
    }

    void CheckItems() {
        int position = 0;
        for (const clssFields& item : layout_.Fields) {
            ++position;
            if (item.Code < ItemCode::FirstCatalog || item.Code >= ItemCode::FirstComputed) continue;
            const std::string name = "item " + std::to_string(position) + " \"" + item.Text + "\"";
            const CatalogRow* row = catalog_.Find(item.Code);
            if (!row) {
                Add(Weight::Error, name + ": no catalog row " + std::to_string(item.Code) + "; it prints its own text");
                continue;
            }
            Add(Weight::Note, name + ": [" + row->table + "].[" + row->field + "]");
            CheckColumn(name, *row);
        }
    }

    void CheckColumn(const std::string& name, const CatalogRow& row) {
        const TableDef* table = database_->FindTable(row.table);
        if (!table)
            Add(Weight::Error, name + ": the table \"" + row.table + "\" is gone");
        else if (table->FindField(row.field) < 0)
            Add(Weight::Error, name + ": the table \"" + row.table + "\" has no column \"" + row.field + "\"");
        if (row.formulaFlag && Trim(row.aliasName).empty())
            Add(Weight::Error, name + ": the formula has no alias and prints nothing");
    }

    void CheckConditions() {
        int position = 0;
        for (const clssQuery& line : layout_.Queries) {
            const std::string name = "condition " + std::to_string(++position) + " \"" + line.Text + "\"";
            const CatalogRow* row = catalog_.Find(line.Code);
            if (!row)
                Add(Weight::Error,
                    name + ": no catalog row " + std::to_string(line.Code) + "; the line is passed over");
            else
                CheckColumn(name, *row);
        }
    }

    void CheckSorting() {
        const auto primary = std::find_if(layout_.Fields.begin(), layout_.Fields.end(),
                                          [](const clssFields& item) { return item.PrimarySort; });
        if (primary == layout_.Fields.end())
            Add(Weight::Error, "no item is the primary sort field, so the report can't run");
        else if (!catalog_.Find(primary->Code))
            Add(Weight::Error, "the primary sort field \"" + primary->Text + "\" has no catalog row");
    }

    void CheckStatement() {
        try {
            const ReportSelect select =
                BuildReportSelect(layout_.Fields, layout_.Queries, catalog_, JoinRuleOf(layout_.settings.intJoinType));
            if (select.strColumns.empty()) return Add(Weight::Error, "no item shows a field of the database");
            const std::string statement = ReportStatement(select);
            Add(Weight::Note, "statement: " + statement);
            const auto records = database_->OpenRecordset(statement, RecordsetType::Snapshot);
            Add(Weight::Note, std::to_string(records->RecordCount()) + " records");
        } catch (const RunTimeError& error) {
            Add(Weight::Error, std::string("the database refuses the report's statement: ") + error.what());
        }
    }

    Layout& layout_;
    DBEngine& engine_;
    UserInterface& user_;
    std::unique_ptr<Database> database_;
    Catalog catalog_;
    std::vector<Finding> findings_;
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
    layout.InitReportModule();
    layout.ClearLayout();
    std::vector<LayoutProblem> problems;
    if (!LoadLayout(arguments.Operands()[0], layout, *measure, user, {.checkDatabase = {}, .problems = &problems}))
        return ExitCode::Layout;
    if (const auto database = arguments.Value("database")) layout.settings.strDatabase[1] = *database;

    const std::vector<Finding> findings = LayoutCheck(layout, *engine, user).Findings(problems);
    const std::string text = arguments.Has("json") ? AsJson(findings) : AsText(findings, arguments.Has("verbose"));
    std::fwrite(text.data(), 1, text.size(), stdout);
    const bool isBroken = std::any_of(findings.begin(), findings.end(),
                                      [](const Finding& finding) { return finding.weight == Weight::Error; });
    return isBroken ? ExitCode::Layout : ExitCode::Done;
}

}  // namespace

const Verb checkVerb = {"check",
                        "LAYOUT.REP",
                        "Tells what a layout refers to and what of it is missing.",
                        "Ends with 0 if the report can run, with 6 if something is missing.",
                        switches,
                        CheckLayout};

}  // namespace quillform::cli
