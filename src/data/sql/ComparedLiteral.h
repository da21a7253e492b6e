#pragma once

#include "data/sql/CheckedTree.h"

namespace quillform::sql {

/// A column compared with a literal. Statements are often made from the general text of a value read before, and that
/// text has fewer digits than the value: 15 for a Double, 7 for a Single, whole seconds for a time. Equality with a
/// literal that shows as many digits as a text can have therefore means every value with that text, so that a row is
/// found again by what was read from it; literals compared with a Single are rounded to one.
/// Gives the condition to use instead, or null where the plain comparison serves.
ExpressionRef ByGeneralText(Operator op, const ExpressionRef& left, const ExpressionRef& right);

}  // namespace quillform::sql
