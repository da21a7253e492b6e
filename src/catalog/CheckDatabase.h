#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/DataAccess.h"
#include "model/UserInterface.h"

namespace quillform {

/// What a person is led through when catalog tables are made: pages of questions whose answers become their rows.
/// A RunTimeError ends the call that threw it; the check goes on with the next.
class ConfigurationWalk {
public:
    virtual ~ConfigurationWalk() = default;

    /// Asks about one table and its fields, and adds rows to the open `Report - Index`.
    virtual void ConfigureTableFields(Database& database, const TableDef& table, Recordset& index) = 0;
    /// Asks how two tables are linked, and adds one row or none to the open `Report - Relation`.
    virtual void ConfigureTableRelation(const TableDef& first, const TableDef& second, Recordset& relations,
                                        std::string_view firstPath, std::string_view secondPath) = 0;
    /// Shows the form for label styles until it is closed. The table `Report - Labels` is there and empty.
    virtual void MaintainLabels(Database& database) = 0;
};

/// What becomes of a step of the check that fails.
enum class OnFailure {
    Warn,  ///< the user is warned and the next step runs; but nobody is asked for rows that can't be stored
    Stop,  ///< the check ends, and the failure goes on to the caller
};

/// Makes sure that an open database has the three catalog tables: each one that is missing, by its exact name, is made
/// after the user said Yes, and filled by the walk. A table that is there is used without a look at its columns. At the
/// first No the check ends; what was made until then stays. `databasePath` goes into the rows.
void CompleteCatalog(Database& database, const std::string& databasePath, UserInterface& user, ConfigurationWalk& walk,
                     OnFailure onFailure);

/// Opens the report database and completes its catalog, with a warning for each step that fails. `databasePath` is
/// where the report database was found; empty if it wasn't, which the user is told.
///
/// Gives the open database, also after a No; null if there is no such file or it can't be opened.
std::unique_ptr<Database> CheckDatabaseforReportData(const std::optional<std::string>& databasePath, DBEngine& engine,
                                                     UserInterface& user, ConfigurationWalk& walk);

}  // namespace quillform
