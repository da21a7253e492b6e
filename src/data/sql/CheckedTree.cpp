#include "data/sql/CheckedTree.h"

namespace quillform::sql {

bool Same(const CheckedExpression& left, const CheckedExpression& right) {
    if (&left == &right) return true;
    if (left.kind != right.kind || left.op != right.op || left.negated != right.negated || left.outer != right.outer ||
        left.source != right.source || left.column != right.column || left.function != right.function ||
        left.select != right.select || left.operands.size() != right.operands.size())
        return false;
    if (left.kind == CheckedExpression::Kind::Constant && !(left.constant == right.constant)) return false;
    for (std::size_t i = 0; i < left.operands.size(); ++i)
        if (!Same(*left.operands[i], *right.operands[i])) return false;
    return true;
}

}  // namespace quillform::sql
