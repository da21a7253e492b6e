#pragma once

#include <string>
#include <vector>

#include "catalog/Answers.h"
#include "catalog/CatalogTables.h"
#include "model/DataAccess.h"

// What is answered where nobody is asked: the replies that the pages propose, but where these would give nothing that
// works.
namespace quillform {

/// Why the table is left out, as a whole sentence; empty if it is included. `isSilent` is set for tables that nobody
/// misses: the engine's own and hidden ones.
std::string ProblemOfTable(const TableDef& table, bool& isSilent);

/// - A memo is described as a text 50 characters wide and a GUID as one of 38, rather than as a number, so that
///   conditions on them are quoted.
/// - Binary fields and OLE objects are left out, because they can't be printed; so are fields whose names the catalog
///   or the statements can't hold.
/// - The description of a date is cut, so that it fits with the longest mask behind it.
///
/// What is out of the ordinary is appended to `notes`, a whole sentence each.
FieldAnswers ProposedField(const TableDef& table, const Field& field, std::vector<std::string>& notes);

/// The links that LinkTables finds between the tables that are included.
std::vector<CatalogRelation> ProposedLinks(const Database& database, std::vector<std::string>& notes);

}  // namespace quillform
