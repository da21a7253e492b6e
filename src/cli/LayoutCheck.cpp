#include "cli/LayoutCheck.h"

#include <algorithm>
#include <set>

#include "cli/InputFiles.h"
#include "engine/ReportRun.h"
#include "model/DesignGrid.h"
#include "platform/MaskProgram.h"
#include "platform/Text.h"
#include "query/ReportSelect.h"

namespace quillform::cli {

namespace {

std::string NameOfItem(int position, const clssFields& item) {
    return "item " + std::to_string(position) + " \"" + item.Text + "\"";
}

/// The order in which a run takes the items, which decides how their tables are joined.
void SortByPlace(collFields& items) {
    std::vector<clssFields> sorted(items.begin(), items.end());
    std::stable_sort(sorted.begin(), sorted.end(), [](const clssFields& left, const clssFields& right) {
        return left.Top != right.Top ? left.Top < right.Top : left.Left < right.Left;
    });
    items.ClearAll();
    for (clssFields& item : sorted) items.Add(std::move(item));
}

}  // namespace

std::string_view NameOf(Weight weight) {
    switch (weight) {
        case Weight::Note:
            return "note";
        case Weight::Warning:
            return "warning";
        case Weight::Error:
        case Weight::DatabaseError:
            return "error";
    }
    return {};
}

std::vector<Finding> LayoutCheck::Findings(const std::vector<LayoutProblem>& problems) {
    for (const LayoutProblem& problem : problems)
        Add(Weight::Warning, "line " + std::to_string(problem.line) + ": " + problem.text);
    if (layout_.Fields.Count() == 0) Add(Weight::Error, "the layout has no items");
    CheckFonts();
    CheckPlaces();
    CheckLabels();
    CheckAgainstDatabase();
    return std::move(findings_);
}

void LayoutCheck::CheckFonts() {
    std::set<std::string> told;
    for (const clssFields& item : layout_.Fields) {
        const std::string name(Trim(item.FontName));
        const bool isPresent = std::any_of(fonts_.begin(), fonts_.end(),
                                           [&](const std::string& font) { return EqualCaseBlind(Trim(font), name); });
        if (!isPresent && told.insert(UpperCase(name)).second)
            Add(Weight::Warning, "the font \"" + name + "\" is not installed; \"Times New Roman\" will be used");
    }
}

void LayoutCheck::CheckPlaces() {
    int position = 0;
    for (clssFields item : layout_.Fields) {
        ++position;
        try {
            SetItemTwips(item, layout_.PictureOf(item));
        } catch (const RunTimeError&) {
            Add(Weight::Error, NameOfItem(position, item) + ": stands or reaches past the largest position on a page");
        }
    }
}

void LayoutCheck::CheckLabels() {
    const ReportSettings& settings = layout_.settings;
    if (settings.boolLabels && (settings.intLabelsAcross < 1 || settings.intLabelsDown < 1))
        Add(Weight::Error, "the label sheet has no labels across or down");
}

void LayoutCheck::CheckAgainstDatabase() {
    if (!OpenDatabase()) return;
    CheckItems();
    CheckConditions();
    CheckSorting();
    SortByPlace(layout_.Fields);
    if (CheckTables()) CheckStatement();
}

bool LayoutCheck::OpenDatabase() {
    const auto path = FindReportDatabase(layout_, user_);
    if (!path) {
        Add(Weight::DatabaseError,
            "the database \"" + layout_.settings.strDatabase[1] + "\" " + WhyNoFile(layout_.settings.strDatabase[1]));
        return false;
    }
    Add(Weight::Note, "database: " + *path);
    try {
        database_ = engine_.OpenDatabase(*path, Access::ReadOnly);
        if (database_->FindTable(catalogIndexTable) && database_->FindTable(catalogRelationTable)) {
            catalog_ = Catalog::Read(*database_);
            return true;
        }
        Add(Weight::DatabaseError,
            "the database has not been configured for reports; run \"quillform configure " + *path + " --defaults\"");
    } catch (const RunTimeError& error) {
        Add(Weight::DatabaseError, std::string("the database can't be read: ") + error.what());
    }
    return false;
}

void LayoutCheck::CheckItems() {
    int position = 0;
    for (const clssFields& item : layout_.Fields) {
        ++position;
        if (item.Code < ItemCode::FirstCatalog || item.Code >= ItemCode::FirstComputed) continue;
        const std::string name = NameOfItem(position, item);
        if (!IsDataItem(item)) {
            Add(Weight::Error, name + ": reports select the catalog rows " + std::to_string(ItemCode::FirstCatalog) +
                                   " to " + std::to_string(ItemCode::LastCatalog) + " and not " +
                                   std::to_string(item.Code) + "; it prints no data");
            continue;
        }
        const CatalogRow* row = catalog_.Find(item.Code);
        if (!row) {
            Add(Weight::Error, name + ": no catalog row " + std::to_string(item.Code) + "; it prints its own text");
            continue;
        }
        Add(Weight::Note, name + ": [" + row->table + "].[" + row->field + "]");
        const Field* field = CheckColumn(name, *row);
        if (field && !row->formulaFlag) CheckMask(name, item, field->Type);
    }
}

void LayoutCheck::CheckMask(const std::string& name, const clssFields& item, FieldType type) {
    const mask::Kind kind = mask::Compile(item.Mask).kind;
    if (kind == mask::Kind::Date && IsNumber(type))
        Add(Weight::Warning, name + ": the mask \"" + item.Mask + "\" is one for dates, and the column holds numbers");
    if (kind == mask::Kind::Number && type == FieldType::Date)
        Add(Weight::Warning, name + ": the mask \"" + item.Mask + "\" is one for numbers, and the column holds dates");
}

const Field* LayoutCheck::CheckColumn(const std::string& name, const CatalogRow& row) {
    if (row.formulaFlag && Trim(row.aliasName).empty())
        Add(Weight::Error, name + ": the formula has no alias and prints nothing");
    const TableDef* table = database_->FindTable(row.table);
    if (!table) {
        Add(Weight::Error, name + ": the table \"" + row.table + "\" is gone");
        return nullptr;
    }
    const int column = table->FindField(row.field);
    if (column >= 0) return &table->Fields[static_cast<std::size_t>(column)];
    Add(Weight::Error, name + ": the table \"" + row.table + "\" has no column \"" + row.field + "\"");
    return nullptr;
}

void LayoutCheck::CheckConditions() {
    int position = 0;
    for (const clssQuery& line : layout_.Queries) {
        const std::string name = "condition " + std::to_string(++position) + " \"" + line.Text + "\"";
        if (const CatalogRow* row = catalog_.Find(line.Code))
            CheckColumn(name, *row);
        else
            Add(Weight::Error, name + ": no catalog row " + std::to_string(line.Code) + "; the line is passed over");
    }
}

void LayoutCheck::CheckSorting() {
    const auto primary = std::find_if(layout_.Fields.begin(), layout_.Fields.end(),
                                      [](const clssFields& item) { return item.PrimarySort; });
    if (primary == layout_.Fields.end())
        Add(Weight::Error, "no item is the primary sort field, so the report can't run");
    else if (!catalog_.Find(primary->Code))
        Add(Weight::Error, "the primary sort field \"" + primary->Text + "\" has no catalog row");
}

std::vector<std::string> LayoutCheck::TablesUsed() const {
    std::vector<std::string> tables;
    const auto add = [&](int code) {
        const CatalogRow* row = catalog_.Find(code);
        if (row && std::find(tables.begin(), tables.end(), row->table) == tables.end()) tables.push_back(row->table);
    };
    for (const clssFields& item : layout_.Fields) add(item.Code);
    for (const clssQuery& line : layout_.Queries) add(line.Code);
    return tables;
}

/// False if no statement can be made of the tables. A table is joined by a link to one that the report takes before it.
bool LayoutCheck::CheckTables() {
    const std::vector<std::string> tables = TablesUsed();
    bool isSound = tables.size() <= maximumTables;
    if (!isSound)
        Add(Weight::Error, "the report draws on " + std::to_string(tables.size()) + " tables, and " +
                               std::to_string(maximumTables) + " are the most");
    for (std::size_t at = 1; at < tables.size(); ++at) {
        const auto here = tables.begin() + static_cast<std::ptrdiff_t>(at);
        const auto links = std::count_if(tables.begin(), here, [&](const std::string& before) {
            return catalog_.FindRelation(before, tables[at]) != nullptr;
        });
        if (links == 1) continue;
        isSound = false;
        if (links == 0)
            Add(Weight::Error,
                "the table \"" + tables[at] + "\" is linked to no table that the report takes before it");
        else
            Add(Weight::Error,
                "the table \"" + tables[at] +
                    "\" is linked to several tables that the report takes before it, and can't be joined "
                    "twice");
    }
    return isSound;
}

void LayoutCheck::CheckStatement() {
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

}  // namespace quillform::cli
