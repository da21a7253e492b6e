#include "desktop/Configuration.h"

#include <QApplication>
#include <algorithm>

#include "catalog/AnswersFile.h"
#include "catalog/CatalogTables.h"
#include "catalog/CheckDatabase.h"
#include "catalog/RecordingPage.h"
#include "catalog/WizardWalk.h"
#include "catalog/frmRptWizard.h"
#include "dialogs/frmLabelMaintenance.h"
#include "platform/OutputFile.h"

namespace quillform {

namespace {

bool HasCatalog(const Database& database) {
    const auto tables = {catalogIndexTable, catalogRelationTable, catalogLabelsTable};
    return std::all_of(tables.begin(), tables.end(),
                       [&](std::string_view table) { return database.FindTable(table) != nullptr; });
}

/// The wizard's form lives as long as its walk, so that nothing of it is left behind later boxes.
WizardOutcome Walk(const std::optional<std::string>& databasePath, DBEngine& engine, DesktopUser& user) {
    frmRptWizard form(engine, databasePath.value_or(std::string()));
    RecordingPage page(form);
    bool hasCommonSheets = true;
    const auto showLabelStyles = [&](const Database& database) {
        hasCommonSheets = dialogs::ShowLabelStyles(database.Name(), user, engine, QApplication::activeWindow());
    };
    WizardWalk walk(page, user, showLabelStyles);
    WizardOutcome outcome;
    std::unique_ptr<Database> database;
    try {
        database = CheckDatabaseforReportData(databasePath, engine, user, walk);
    } catch (const WizardLeft&) {
        outcome.wasLeft = true;
        database = engine.OpenDatabase(*databasePath);
    }
    if (database == nullptr) return outcome;
    outcome.isComplete = !outcome.wasLeft && HasCatalog(*database);
    outcome.answered = page.Recorded(*database);
    outcome.answered.commonSheets = hasCommonSheets;
    outcome.givesAllRows = page.GivesAllRows();
    return outcome;
}

bool HasAnswers(const Answers& answers) { return !answers.tables.empty() || !answers.links.empty(); }

}  // namespace

WizardOutcome CheckWithWizard(const std::optional<std::string>& databasePath, DBEngine& engine, DesktopUser& user) {
    WizardOutcome outcome = Walk(databasePath, engine, user);
    user.ShowWarnings();
    return outcome;
}

void Configure(const std::string& databasePath, DBEngine& engine, DesktopUser& user,
               const std::optional<std::string>& record) {
    std::optional<OutputFile> file;
    if (record) file.emplace(*record);  // before an hour of answers, not after it
    const WizardOutcome outcome = CheckWithWizard(databasePath, engine, user);
    if (file && HasAnswers(outcome.answered)) {
        file->Write(AnswersText(outcome.answered));
        file->Commit();
        if (!outcome.givesAllRows)
            user.Message("The answers in \"" + *record +
                             "\" don't give all entries of this catalog: by going back a field was answered twice, and "
                             "the entries of both answers were kept.",
                         {});
    }
    if (outcome.wasLeft) throw RunTimeError(ErrorNumber::DialogCancelled, "The configuration was left before its end.");
    if (!outcome.isComplete)
        throw RunTimeError(ErrorNumber::DialogCancelled, "The database \"" + databasePath + "\" has no whole catalog.");
    user.Message("The database \"" + databasePath + "\" is ready for reports.", {});
}

}  // namespace quillform
