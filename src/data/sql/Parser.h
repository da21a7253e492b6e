#pragma once

#include <string_view>

#include "data/sql/SyntaxTree.h"

namespace quillform::sql {

/// Reads one statement of the report dialect. RunTimeError with the syntax error of the clause that can't be read, or
/// QueryTooComplex where it nests too deeply.
syntax::Statement Parse(std::string_view statement);

/// Reads one condition, such as a criteria text.
syntax::ExpressionPtr ParseCondition(std::string_view condition);

}  // namespace quillform::sql
