#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "data/columns/Column.h"

namespace quillform::data {

/// The rows that a statement gave. A column that the statement passes on unchanged isn't copied: it is the table's
/// decoded column, seen through the list of row positions that the statement chose.
struct Result {
    struct ResultColumn {
        std::shared_ptr<const Column> values;
        int rows = -1;  ///< which list of `rows` leads to the values; -1: row for row
    };
    std::vector<ResultColumn> columns;
    std::vector<std::vector<RowPosition>> rows;
    std::size_t count = 0;

    ValueView At(std::size_t row, std::size_t column) const {
        const ResultColumn& from = columns[column];
        return from.values->At(from.rows < 0 ? static_cast<RowPosition>(row)
                                             : rows[static_cast<std::size_t>(from.rows)][row]);
    }
};

}  // namespace quillform::data
