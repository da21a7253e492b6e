#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalog/Answers.h"
#include "model/DataAccess.h"

namespace quillform {

/// What a configuration did, for people.
struct ConfigurationReport {
    std::vector<std::string> made;   ///< the catalog tables that were missing, one sentence each
    std::vector<std::string> notes;  ///< what was left out, cut or is good to know, one sentence each
    Answers answered;                ///< what was answered to the questions that were asked

    bool Changed() const { return !made.empty(); }
    /// All of it, to be printed line by line.
    std::vector<std::string> Lines() const;
};

enum class Changes { Keep, Drop };

/// Configures a database for reports without asking: makes those of the three catalog tables that are missing and fills
/// them by the same walk that leads a person through the questions, with these answers, as one transaction. Where all
/// three are there, nothing changes. `databasePath` goes into the rows. `Report - Labels` gets the common sheets unless
/// the answers say no. With Changes::Drop the database is left as it was, and the report tells what would have been
/// done.
///
/// What the answers don't name goes by their rules. Proposed answers give every table that a user made in this file
/// (system, hidden and linked tables don't take part) a row for each field under its own name and with its proposed
/// mask, a date under four masks, no formulas; ProposedAnswers.h tells where they differ from the pages' own proposals.
/// Tables are linked as LinkTables says, where the pages would propose no fields at all. When the catalog holds all the
/// rows that a report can select, no more are added.
///
/// RunTimeError InvalidFileFormat for an answer that can't be taken, others of the data layer if the database can't be
/// written; it is as it was then.
ConfigurationReport ConfigureByAnswers(Database& database, std::string_view databasePath, const Answers& answers,
                                       Changes changes = Changes::Keep);

/// The same with the proposed answer to every question.
ConfigurationReport ConfigureWithDefaults(Database& database, std::string_view databasePath);

}  // namespace quillform
