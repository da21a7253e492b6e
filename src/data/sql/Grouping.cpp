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
        if (expression.select) CheckSelect(*expression.select, depth + 1);
    }

private:
    bool IsGrouped(const CheckedExpression& expression, int depth) const {
        return std::any_of(select_.groupBy.begin(), select_.groupBy.end(), [&](const ExpressionRef& group) {
            if (depth == 0) return Same(*group, expression);
            return group->kind == Kind::Column && expression.kind == Kind::Column && expression.outer == depth &&
                   group->source == expression.source && group->column == expression.column;
        });
    }

    void CheckSelect(const CheckedSelect& select, int depth) const {
        for (const CheckedColumn& column : select.columns) Check(*column.expression, depth);
        if (select.where) Check(*select.where, depth);
        for (const ExpressionRef& group : select.groupBy) Check(*group, depth);
        if (select.having) Check(*select.having, depth);
        for (const CheckedSort& sort : select.orderBy)
            if (sort.expression) Check(*sort.expression, depth);
        for (const CheckedSelect::Union& further : select.unions) CheckSelect(*further.select, depth);
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

void RequireGrouped(const CheckedExpression& expression, const CheckedSelect& select) {
    GroupingCheck(select).Check(expression, 0);
}

}  // namespace quillform::sql
