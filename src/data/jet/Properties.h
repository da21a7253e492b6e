#pragma once

#include <string>
#include <vector>

#include "data/jet/Bytes.h"
#include "data/jet/Layout.h"

namespace quillform::jet {

/// Those properties of a column that matter to its values.
struct ColumnProperties {
    std::string column;
    bool required = false;
};

/// Reads the properties stored with a table. Broken ones count as absent: rows can be read without them.
std::vector<ColumnProperties> ReadProperties(Bytes stored, Format format, int codePage);

/// The stored form for a new table; empty if no column needs any.
std::string WriteProperties(const std::vector<ColumnProperties>& columns, Format format, int codePage);

}  // namespace quillform::jet
