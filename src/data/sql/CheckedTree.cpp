#include "data/sql/CheckedTree.h"

#include "platform/RunTimeError.h"

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

namespace {

constexpr int mostNodes = 200000;
constexpr int deepestNode = 900;  // SQLite reads 1000

void CountNodes(const CheckedExpression& expression, int depth, int& count) {
    if (++count > mostNodes || depth > deepestNode)
        throw RunTimeError(ErrorNumber::QueryTooComplex, "The statement holds an expression that is too long.");
    for (const ExpressionRef& operand : expression.operands) CountNodes(*operand, depth + 1, count);
    if (!expression.select) return;
    ForEachExpression(*expression.select, [&](const CheckedExpression& inner) { CountNodes(inner, depth + 1, count); });
}

}  // namespace

void RequireSize(const CheckedExpression& expression) {
    int count = 0;
    CountNodes(expression, 0, count);
}

}  // namespace quillform::sql
