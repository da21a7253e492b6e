#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/sql/CheckedTree.h"

namespace quillform::sql {

/// Text literal for SQLite.
std::string QuotedText(std::string_view text);

/// Writes checked statements in the dialect of SQLite, values and functions as Prepare.h tells. Texts are compared,
/// grouped and sorted with an explicit COLLATE QFTEXT, so that no declaration of a table can change the result.
std::string WriteSelect(const CheckedSelect& select);
std::string WriteDelete(const CheckedAction& action);
std::string WriteInsert(const CheckedAction& action);
std::string WriteUpdate(const CheckedAction& action);

}  // namespace quillform::sql
