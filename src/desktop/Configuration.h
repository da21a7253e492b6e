#pragma once

#include <optional>
#include <string>

#include "catalog/Answers.h"
#include "desktop/DesktopUser.h"
#include "model/DataAccess.h"

namespace quillform {

/// What came of a check with the wizard.
struct WizardOutcome {
    bool isComplete = false;  ///< the database has its catalog now, and the wizard wasn't left before its end
    bool wasLeft = false;
    bool givesAllRows = true;  ///< `answered` gives all rows that are in the catalog
    Answers answered;          ///< what was answered, also by a person who left
};

/// CheckDatabaseforReportData, with the wizard's form for its questions. Warnings are shown at the end. An empty
/// `databasePath` is a database that isn't there, which the user is told.
WizardOutcome CheckWithWizard(const std::optional<std::string>& databasePath, DBEngine& engine, DesktopUser& user);

/// Configures a database by the wizard and tells when that is done. With `record` the answers are written to that file,
/// for others like it; what was answered is written too when the wizard is left. RunTimeError DialogCancelled if the
/// catalog isn't complete at the end, and those of the file.
void Configure(const std::string& databasePath, DBEngine& engine, DesktopUser& user,
               const std::optional<std::string>& record);

}  // namespace quillform
