#pragma once

#include <cstddef>

#include "data/columns/TableCache.h"
#include "data/sqlite/Connection.h"
#include "platform/Clock.h"

namespace quillform::sqlite {

/// What the virtual tables of one connection look at; outlives the connection.
struct TableModule {
    Connection& connection;
    data::TableCache& cache;
    const Clock& clock;
};

/// Lets the connection declare virtual tables over the decoded tables of a storage. They offer equality lookups on any
/// column but binary ones by a hash index that is built when first wanted; rowid is the storage's RowId; rows can be
/// inserted, updated and deleted.
void AddTableModule(TableModule& module);

/// Declares the storage's table under its own name.
void DeclareTable(TableModule& module, std::size_t table);

}  // namespace quillform::sqlite
