#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/DataAccess.h"

namespace quillform {

/// What a configuration did, for people.
struct ConfigurationReport {
    std::vector<std::string> made;   ///< the catalog tables that were missing, one sentence each
    std::vector<std::string> notes;  ///< what was left out, cut or is good to know, one sentence each

    bool Changed() const { return !made.empty(); }
    /// All of it, to be printed line by line.
    std::vector<std::string> Lines() const;
};

/// Configures a database for reports without asking: makes and fills those of the three catalog tables that are
/// missing, as one transaction. Where all three are there, nothing changes. `databasePath` goes into the rows.
///
/// Every table that a user made in this file takes part (system, hidden and linked tables don't), and the rows are
/// those that the proposed answers of the configuration pages give: each field under its own name and with its proposed
/// mask, a date under four masks, no formulas. Where a proposed answer would give nothing that works, this differs:
///
/// - A memo is described as a text 50 characters wide and a GUID as one of 38, rather than as a number, so that
///   conditions on them are quoted.
/// - Binary fields and OLE objects are left out, because they can't be printed.
/// - Tables are linked as LinkTables says, where the pages would propose no fields at all.
/// - A table or field whose name has more than 50 characters or a bracket is left out, because the catalog or the
///   statements can't hold it. A date's description is cut, so that it fits with the mask behind it.
/// - After catalog number 899 nothing more is added, because a report can't select more.
///
/// `Report - Labels` is made empty. RunTimeError of the data layer if the database can't be written; it is as it was
/// then.
ConfigurationReport ConfigureWithDefaults(Database& database, std::string_view databasePath);

}  // namespace quillform
