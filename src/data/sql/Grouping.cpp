// What a grouped select may name.

#include <algorithm>

#include "data/sql/SelectChecker.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

bool HasAggregate(const CheckedExpression& expression) {
    if (expression.kind == Kind::Aggregate) return true;
    return std::any_of(expression.operands.begin(), expression.operands.end(),
                       [](const ExpressionRef& operand) { return HasAggregate(*operand); });
}

namespace {

class GroupingCheck {
public:
    explicit GroupingCheck(const CheckedSelect& select) : select_(select) {}

    /// `depth` counts the sub-selects around the expression.
    void Check(const CheckedExpression& expression, int depth) const {
        if (IsGrouped(expression, depth)) return;
        if (expression.kind == Kind::Aggregate && depth == 0) return;
        if (expression.kind == Kind::Column && expression.outer == depth) Refuse(expression);
        for (const ExpressionRef& operand : expression.operands) Check(*operand, depth);
        if (!expression.select) return;
        ForEachExpression(*expression.select, [&](const CheckedExpression& inner) { Check(inner, depth + 1); });
    }

private:
    bool IsGrouped(const CheckedExpression& expression, int depth) const {
        return std::any_of(select_.groupBy.begin(), select_.groupBy.end(), [&](const ExpressionRef& group) {
            if (depth == 0) return Same(*group, expression);
            return group->kind == Kind::Column && expression.kind == Kind::Column && expression.outer == depth &&
                   group->source == expression.source && group->column == expression.column;
        });
    }

    [[noreturn]] void Refuse(const CheckedExpression& column) const {
        const CheckedSource& source = select_.sources[static_cast<std::size_t>(column.source)];
        throw RunTimeError(ErrorNumber::NotPartOfAggregate,
                           "The statement does not include " + WrittenName(source.name, column.type.Name) +
                               " as part of an aggregate function or in its GROUP BY clause.");
    }

    const CheckedSelect& select_;
};

}  // namespace

namespace {

/// Whether a column is named of the select that is `depth` selects out, or (`enclosing`) of one around it.
bool NamesColumn(const CheckedExpression& expression, int depth, bool enclosing) {
    if (expression.kind == Kind::Column) return enclosing ? expression.outer > depth : expression.outer == depth;
    for (const ExpressionRef& operand : expression.operands)
        if (NamesColumn(*operand, depth, enclosing)) return true;
    bool found = false;
    if (expression.select)
        ForEachExpression(*expression.select, [&](const CheckedExpression& inner) {
            found = found || NamesColumn(inner, depth + 1, enclosing);
        });
    return found;
}

}  // namespace

bool IsSameForAllRows(const CheckedExpression& expression) {
    if (expression.kind == Kind::Constant) return true;
    if (!NamesColumn(expression, 0, true)) return false;
    if (NamesColumn(expression, 0, false) || HasAggregate(expression))
        throw RunTimeError(
            ErrorNumber::NotSupported,
            "A sub-select can't sort or group by its own columns and those of the statement around it at once.");
    return true;
}

void RequireGrouped(const CheckedExpression& expression, const CheckedSelect& select) {
    GroupingCheck(select).Check(expression, 0);
}

}  // namespace quillform::sql
