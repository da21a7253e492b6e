#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/sqlite/Connection.h"
#include "model/DataAccess.h"

namespace quillform::sqlite {

/// A table of a SQLite file as the storage sees it.
struct SchemaTable {
    TableDef definition;
    std::string rowIdName;      ///< the name under which row ids are read; empty for a table without them
    std::vector<bool> isRowId;  ///< per column: it is the row id itself
};

std::vector<SchemaTable> ReadSchema(Connection& connection);
std::vector<Relation> ReadRelations(Connection& connection, const std::vector<SchemaTable>& tables);

/// The statements that make a table with its indexes.
std::string CreateTableText(const TableDef& table);

}  // namespace quillform::sqlite
