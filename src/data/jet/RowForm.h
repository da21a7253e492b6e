#pragma once

#include <vector>

#include "data/jet/TableDefinition.h"

namespace quillform::jet {

/// What is needed of a table to read its rows, worked out once per table.
struct RowForm {
    RowForm(const TableDefinition& table, const Layout& layout, int headerCodePage);

    const Layout* layout;
    int codePage;
    bool hasVariables;
    std::vector<Column> columns;  ///< by position
};

/// Bytes that a value of a fixed column takes; 0 for Boolean.
std::size_t FixedBytes(const Column& column);

}  // namespace quillform::jet
