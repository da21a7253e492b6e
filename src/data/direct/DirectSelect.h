#pragma once

#include <optional>
#include <vector>

#include "data/columns/Result.h"
#include "data/columns/TableCache.h"
#include "data/sql/CheckedTree.h"

namespace quillform::data {

/// Runs a Select of the common shape over decoded columns, many times faster than SQLite over virtual tables: tables
/// joined by equalities, conditions that compare columns with constants or columns, plain columns (or Mid, Left, Right
/// of one) out, sorted by columns; grouping only to give each combination once. None where the statement is of another
/// shape.
///
/// Rows that the sort list leaves equal, and all rows without one, come in the storage order of the tables as they are
/// written, the first table deciding first; a group statement and the whole report so agree in the order.
std::optional<Result> DirectSelect(const sql::CheckedSelect& select, TableCache& cache);

/// The identities of the rows that a Select over one table gives, in its order. None where it isn't of the common shape
/// or groups rows.
std::optional<std::vector<RowId>> DirectRows(const sql::CheckedSelect& select, TableCache& cache);

}  // namespace quillform::data
