#pragma once

#include <map>
#include <string>

#include "data/jet/PageFile.h"
#include "data/jet/TableDefinition.h"

namespace quillform::test {

struct IndexFindings {
    std::size_t trees = 0;          ///< whose entries were compared with the rows
    std::size_t unknownOrders = 0;  ///< whose sort order isn't known, so that only their form was checked
    std::size_t entries = 0;
    std::size_t levels = 0;  ///< of the highest tree
    std::string fault{};     ///< empty: all is right
};

/// Walks each tree of a table: order, links between pages, keys above the leaves, uniqueness, pages in the tree's own
/// map; and compares its entries with those that the rows of the table should have.
void CheckIndexes(const jet::PageFile& file, const jet::TableDefinition& table, IndexFindings& findings);

/// The same for every table of the file, system tables among them.
IndexFindings CheckAllIndexes(const jet::PageFile& file);

/// Every page that belongs to the table: rows, long values, indexes, definition.
std::vector<std::uint32_t> PagesOfTable(const jet::PageFile& file, const jet::TableDefinition& table);

}  // namespace quillform::test
