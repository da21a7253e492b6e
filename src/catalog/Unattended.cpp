#include "catalog/Unattended.h"

#include <set>
#include <utility>

#include "catalog/AnswersPage.h"
#include "catalog/CatalogTables.h"
#include "catalog/CheckDatabase.h"
#include "catalog/CommonSheets.h"
#include "catalog/FieldRows.h"
#include "catalog/Quoted.h"
#include "catalog/RecordingPage.h"
#include "catalog/WizardWalk.h"
#include "model/Transaction.h"
#include "model/UserInterface.h"

namespace quillform {

namespace {

/// Nobody: wants every table that is missing, and hands what the walk says to the page that gave the answer.
class UnattendedUser final : public UserInterface {
public:
    explicit UnattendedUser(AnswersPage& page) : page_(page) {}

    void Message(std::string_view text, std::string_view) override { page_.TakeMessage(text); }
    bool Ask(std::string_view, std::string_view, MessageIcon) override { return true; }
    void Warn(std::string_view) override {}

private:
    AnswersPage& page_;
};

/// The walk with answers at hand: each table is looked up before its questions come.
class UnattendedWalk final : public ConfigurationWalk {
public:
    UnattendedWalk(AnswersPage& page, WizardWalk& walk, bool addsSheets)
        : page_(page), walk_(walk), addsSheets_(addsSheets) {}

    void ConfigureTableFields(Database& database, const TableDef& table, Recordset& index) override {
        walk_.ConfigureTableFields(database, page_.Prepare(table), index);
    }
    void ConfigureTableRelation(const TableDef& first, const TableDef& second, Recordset& relations,
                                std::string_view firstPath, std::string_view secondPath) override {
        walk_.ConfigureTableRelation(first, second, relations, firstPath, secondPath);
    }
    void MaintainLabels(Database& database) override {
        if (addsSheets_) AddSheets(database, commonSheets);
    }

private:
    AnswersPage& page_;
    WizardWalk& walk_;
    bool addsSheets_;
};

std::string Counted(std::size_t count, std::string_view singular, std::string_view plural) {
    return std::to_string(count) + " " + std::string(count == 1 ? singular : plural);
}

/// What stands in the catalog, for people.
class Summary {
public:
    explicit Summary(Database& database) : catalog_(Catalog::Read(database)), tables_(database.TableDefs()) {
        for (const CatalogRow& row : catalog_.Rows()) {
            names_.insert(row.table);
            fields_.insert({row.table, row.field});
            if (IsAmount(row)) wholeAmounts_.insert({row.table, row.field});
        }
    }

    std::string OfIndex() const {
        return "Made the table " + Quoted(catalogIndexTable) + " with " +
               Counted(catalog_.Rows().size(), "row", "rows") + " for " + Counted(fields_.size(), "field", "fields") +
               " of " + Counted(names_.size(), "table", "tables") + ".";
    }
    std::string OfRelations() const {
        return "Made the table " + Quoted(catalogRelationTable) + " with " +
               Counted(catalog_.Relations().size(), "relation", "relations") + ".";
    }
    /// Empty if there is none.
    std::string OfWholeAmounts() const {
        if (wholeAmounts_.empty()) return {};
        return Counted(wholeAmounts_.size(), "currency or decimal field has", "currency or decimal fields have") +
               " the mask " + Quoted(ProposedNumberMask(FieldType::Currency)) +
               ", which prints no decimals; an item that should show them needs another mask.";
    }

private:
    using Name = std::pair<std::string, std::string>;

    bool IsAmount(const CatalogRow& row) const {
        if (row.formulaFlag || row.mask != ProposedNumberMask(FieldType::Currency)) return false;
        for (const TableDef& table : tables_) {
            if (table.Name != row.table) continue;
            const int found = table.FindField(row.field);
            if (found < 0) return false;
            const FieldType type = table.Fields[static_cast<std::size_t>(found)].Type;
            return type == FieldType::Currency || type == FieldType::Decimal;
        }
        return false;
    }

    Catalog catalog_;
    const std::vector<TableDef>& tables_;
    std::set<std::string> names_;
    std::set<Name> fields_;
    std::set<Name> wholeAmounts_;
};

/// Which of the catalog tables are missing.
struct Missing {
    explicit Missing(const Database& database)
        : index(!database.FindTable(catalogIndexTable)),
          relations(!database.FindTable(catalogRelationTable)),
          labels(!database.FindTable(catalogLabelsTable)) {}

    bool Any() const { return index || relations || labels; }

    bool index;
    bool relations;
    bool labels;
};

void Tell(Database& database, const Missing& missing, bool hasSheets, ConfigurationReport& report) {
    if (missing.index || missing.relations) {
        const Summary summary(database);
        if (missing.index) report.made.push_back(summary.OfIndex());
        if (missing.relations) report.made.push_back(summary.OfRelations());
        const std::string amounts = missing.index ? summary.OfWholeAmounts() : std::string();
        if (!amounts.empty()) report.notes.push_back(amounts);
    }
    if (missing.labels)
        report.made.push_back("Made the table " + Quoted(catalogLabelsTable) +
                              (hasSheets ? " with the " + std::to_string(commonSheets.size()) + " common label sheets."
                                         : std::string(", empty.")));
}

}  // namespace

std::vector<std::string> ConfigurationReport::Lines() const {
    if (!Changed()) return {"The database has its three catalog tables already; nothing was changed."};
    std::vector<std::string> lines = made;
    lines.insert(lines.end(), notes.begin(), notes.end());
    return lines;
}

ConfigurationReport ConfigureByAnswers(Database& database, std::string_view databasePath, const Answers& answers,
                                       Changes changes) {
    ConfigurationReport report;
    const Missing missing(database);
    if (!missing.Any()) return report;

    Transaction work(database);
    const std::string path(databasePath);
    AnswersPage page(database, answers);
    RecordingPage recording(page);
    UnattendedUser user(page);
    WizardWalk wizard(recording, user, {}, path);
    UnattendedWalk walk(page, wizard, answers.commonSheets);
    CompleteCatalog(database, path, user, walk, OnFailure::Stop);
    report.notes = page.Finish();
    report.answered = recording.Recorded(database);
    report.answered.commonSheets = answers.commonSheets;
    Tell(database, missing, answers.commonSheets, report);
    if (changes == Changes::Keep) work.Commit();
    return report;
}

ConfigurationReport ConfigureWithDefaults(Database& database, std::string_view databasePath) {
    return ConfigureByAnswers(database, databasePath, {});
}

}  // namespace quillform
