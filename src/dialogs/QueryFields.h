#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/DataAccess.h"
#include "model/Layout.h"

namespace quillform::dialogs {

/// Characters that can be typed as a value while no field says otherwise.
inline constexpr int longestQueryValue = 35;

/// A root of the query builder's tree. Its key is its name.
struct QueryTable {
    struct Row {
        std::int32_t id = 0;  ///< of the catalog
        std::string text;
        std::string Key() const { return "C" + std::to_string(id); }
    };
    std::string name;
    std::vector<Row> rows;
};

/// The catalog's tables and rows by name.
std::vector<QueryTable> ReadQueryFields(Database& database);

/// The catalog row that a query line is to be about.
struct QueryField {
    std::int16_t code = 0;
    std::string text;
    int longestValue = 0;  ///< characters of a value; above 0
};

/// The catalog row that the key of a clicked node names; empty if it names none. A key without its first letter is
/// taken for the number, and so the name of a table may be one: "x5" is a click on row 5. RunTimeError if the report
/// database can't be read.
std::optional<QueryField> FindQueryField(const Layout& layout, DBEngine& engine, std::string_view nodeKey);

}  // namespace quillform::dialogs
