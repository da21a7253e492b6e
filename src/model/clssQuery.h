#pragma once

#include <cstdint>
#include <string>

namespace quillform {

/// One query line: a condition on a catalog row, joined to the line before it.
struct clssQuery {
    std::string Key;        ///< own key text, as for an item
    std::string Text;       ///< the line as the query builder shows it
    std::string Join;       ///< word that joins the line to the one before: "AND", "OR"
    std::string Value;      ///< compared against, as typed
    std::string Operator;   ///< copied into the statement unchanged
    std::int16_t Code = 0;  ///< ID of the catalog row

    friend bool operator==(const clssQuery&, const clssQuery&) = default;
};

}  // namespace quillform
