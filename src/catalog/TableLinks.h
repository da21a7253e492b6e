#pragma once

#include <string>
#include <vector>

#include "catalog/CatalogTables.h"
#include "model/DataAccess.h"

namespace quillform {

/// How the tables of a database are linked, for a configuration that asks nobody.
struct TableLinks {
    /// In the order in which pairs of tables are walked: the earlier table of `tables` first.
    std::vector<CatalogRelation> relations;
    std::vector<std::string> leftOut;  ///< whole sentences: what wasn't taken, and why
};

/// Takes the relations that the file itself keeps (`own`), then guesses links between tables that these leave apart.
///
/// Together the links form a forest, because a report joins each table once: a link that would close a circle would
/// join a table a second time, and the statement would be refused. So of the file's relations those count that connect
/// tables that weren't connected yet, in the file's order; the others are told in `leftOut`. A pair is linked by one
/// pair of fields: of a relation over several the first counts.
///
/// A link is guessed where a field of one table is named as the key of another and its type can be compared with it;
/// then where two tables have keys of one name that ends as key names do ("ID", "No", "Code", ...), one of them
/// declared by an index. The key of a table is its primary key, if that is a single field; without a primary key a
/// unique index over a single field; without that the first field, if its name ends as key names do. Names that say
/// nothing by themselves ("ID", "Code", "Name", ...) link nothing, and neither do two fields that number their own
/// rows. Case doesn't count.
TableLinks LinkTables(const std::vector<TableDef>& tables, const std::vector<Relation>& own);

}  // namespace quillform
