#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "data/columns/Column.h"

namespace quillform::data {

/// Places of values in their order: equal values have equal ranks, a lesser value a lesser rank. Null is 0 and so comes
/// first; an outer join's missing row counts as Null. Numbers are ordered as numbers, texts by the collation, bytes as
/// they are.
struct Ranks {
    std::vector<std::uint32_t> of;  ///< one per row looked at
    std::uint32_t most = 0;
};

/// Ranks of the rows `rows` of a column among themselves; `rows` may repeat.
Ranks RankRows(const Column& column, std::span<const RowPosition> rows);
/// Ranks of all rows.
Ranks RankAll(const Column& column);

/// One column of a sort list, ready to be compared.
struct SortKey {
    Ranks ranks;  ///< one per row of the result
    bool descending = false;
};

/// Order of the result rows 0 .. count-1 by the keys, the first deciding first. Rows that are equal in all keys keep
/// their order.
std::vector<RowPosition> SortedOrder(std::span<const SortKey> keys, std::size_t count);

}  // namespace quillform::data
