#include "data/sql/SelectChecker.h"

#include <algorithm>

#include "data/sql/TypeRules.h"
#include "platform/Text.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

namespace {

constexpr std::size_t mostColumns = 2000;  // SQLite's own bound
constexpr int firstExpressionNumber = 1000;

}  // namespace

SelectChecker::SelectChecker(const Checker& checker, const Scope* enclosing)
    : checker_(checker), enclosing_(enclosing), nested_([&checker](const syntax::Select& select, const Scope& scope) {
          return checker.CheckSelect(select, &scope);
      }) {}

std::shared_ptr<const CheckedSelect> SelectChecker::Check(const syntax::Select& select) {
    CheckCore(select);
    if (select.unions.empty()) {
        CheckOrderBy(select);
    } else {
        CheckUnions(select);
        CheckUnionOrderBy(select);
    }
    CheckGrouping(select);
    CheckDistinctOrder();
    return checked_;
}

void SelectChecker::CheckCore(const syntax::Select& select) {
    checked_->distinct = select.distinct;
    checked_->hasTop = select.hasTop;
    checked_->topPercent = select.topPercent;
    checked_->top = select.top;
    CheckFrom(select);
    CheckColumns(select);
    if (select.where) checked_->where = AsCondition(CheckIn(Clause::Where, *select.where));
    CheckGroups(select);
    CountContributions();
    checked_->distinctRows = select.distinctRow && !checked_->grouped && !checked_->distinct && SomeContribute();
}

Scope SelectChecker::MakeScope(Clause clause) const {
    Scope scope;
    scope.enclosing = enclosing_;
    scope.sources = &checked_->sources;
    scope.end = checked_->sources.size();
    scope.clause = clause;
    if (clause == Clause::Columns || clause == Clause::OrderBy)
        scope.alias = [this](const std::string& name) { return ColumnUnderAlias(name); };
    return scope;
}

ExpressionRef SelectChecker::CheckIn(Clause clause, const syntax::Expression& expression) {
    const Scope scope = MakeScope(clause);
    return ExpressionChecker(scope, checker_.currentYear_, nested_).Check(expression);
}

void SelectChecker::CheckColumns(const syntax::Select& select) {
    for (const syntax::SelectColumn& column : select.columns) {
        if (column.all)
            AddAll(column.qualifier);
        else
            AddColumn(column);
        if (checked_->columns.size() > mostColumns)
            throw RunTimeError(ErrorNumber::TooManyFields, "The statement selects too many columns.");
    }
}

void SelectChecker::AddAll(const std::string& qualifier) {
    if (checked_->sources.empty())
        throw RunTimeError(ErrorNumber::SyntaxError, "The statement selects * but names no table.");
    bool found = qualifier.empty();
    for (const CheckedSource& source : checked_->sources) {
        if (!qualifier.empty() && !EqualCaseBlind(source.name, qualifier)) continue;
        found = true;
        Scope scope = MakeScope(Clause::Columns);
        for (const Field& field : source.fields) {
            checked_->columns.push_back({field, Resolve(scope, source.name, field.Name)});
            aliases_.emplace_back();
        }
    }
    if (!found)
        throw RunTimeError(ErrorNumber::TooFewParameters, "The statement selects [" + qualifier + "].*, but no table " +
                                                              qualifier + " stands in its FROM clause.");
}

void SelectChecker::AddColumn(const syntax::SelectColumn& column) {
    CheckedColumn made;
    made.expression = CheckIn(Clause::Columns, *column.expression);
    made.field = made.expression->type;
    if (!column.alias.empty())
        made.field.Name = column.alias;
    else if (made.expression->kind != Kind::Column || column.expression->kind != syntax::Expression::Kind::Name)
        made.field.Name = "Expr" + std::to_string(firstExpressionNumber + checked_->columns.size());
    checked_->columns.push_back(std::move(made));
    aliases_.push_back(column.alias);
}

ExpressionRef SelectChecker::ColumnUnderAlias(const std::string& name) const {
    for (std::size_t i = 0; i < aliases_.size(); ++i)
        if (!aliases_[i].empty() && EqualCaseBlind(aliases_[i], name)) return checked_->columns[i].expression;
    return nullptr;
}

namespace {

void Contribute(const CheckedExpression& expression, CheckedSelect& select) {
    if (expression.kind == Kind::Column && expression.outer == 0)
        ++select.sources[static_cast<std::size_t>(expression.source)].contributed;
    for (const ExpressionRef& operand : expression.operands) Contribute(*operand, select);
}

}  // namespace

void SelectChecker::CountContributions() {
    for (const CheckedColumn& column : checked_->columns) Contribute(*column.expression, *checked_);
}

/// Whether some sources but not all have a part in the result. Rows of a select have no identity to go by.
bool SelectChecker::SomeContribute() const {
    std::size_t contributing = 0;
    for (const CheckedSource& source : checked_->sources) {
        if (source.contributed == 0) continue;
        if (source.select) return false;
        ++contributing;
    }
    return contributing > 0 && contributing < checked_->sources.size();
}

void SelectChecker::CheckGroups(const syntax::Select& select) {
    for (const auto& group : select.groupBy) {
        ExpressionRef expression = CheckIn(Clause::GroupBy, *group);
        // A constant makes no groups, and a number would be a position to SQLite.
        if (!IsSameForAllRows(*expression)) checked_->groupBy.push_back(std::move(expression));
    }
    if (select.having) checked_->having = AsCondition(CheckIn(Clause::Having, *select.having));
    checked_->grouped = !select.groupBy.empty() || checked_->having;
    for (const CheckedColumn& column : checked_->columns)
        checked_->grouped = checked_->grouped || HasAggregate(*column.expression);
}

ExpressionRef SelectChecker::SortedBy(const syntax::Expression& expression) {
    if (expression.kind != syntax::Expression::Kind::Integer) return CheckIn(Clause::OrderBy, expression);
    if (expression.integer < 1 || expression.integer > static_cast<std::int64_t>(checked_->columns.size()))
        throw RunTimeError(ErrorNumber::SyntaxInOrderBy, "The statement sorts by column " +
                                                             std::to_string(expression.integer) + ", but selects " +
                                                             std::to_string(checked_->columns.size()) + ".");
    return checked_->columns[static_cast<std::size_t>(expression.integer - 1)].expression;
}

void SelectChecker::CheckOrderBy(const syntax::Select& select) {
    for (const syntax::SortTerm& term : select.orderBy) {
        ExpressionRef expression = SortedBy(*term.expression);
        if (HasAggregate(*expression) && !checked_->grouped)
            throw RunTimeError(ErrorNumber::AggregateInOrderBy,
                               "An ORDER BY clause can't hold an aggregate function where the select has none.");
        if (IsSameForAllRows(*expression)) continue;
        if (FamilyOf(*expression) == TypeFamily::Bytes)
            throw RunTimeError(ErrorNumber::CannotSort, "The statement can't sort by " + Described(*expression) + ".");
        checked_->orderBy.push_back({std::move(expression), -1, term.descending});
    }
}

void SelectChecker::CheckUnionOrderBy(const syntax::Select& select) {
    for (const syntax::SortTerm& term : select.orderBy) {
        const syntax::Expression& written = *term.expression;
        CheckedSort sort;
        sort.descending = term.descending;
        const auto& columns = checked_->columns;
        for (std::size_t i = 0; i < columns.size() && sort.column < 0; ++i) {
            const bool named =
                written.kind == syntax::Expression::Kind::Name && EqualCaseBlind(columns[i].field.Name, written.text);
            const bool counted = written.kind == syntax::Expression::Kind::Integer &&
                                 written.integer == static_cast<std::int64_t>(i) + 1;
            if (named || counted) sort.column = static_cast<int>(i);
        }
        if (sort.column < 0)
            throw RunTimeError(ErrorNumber::SyntaxInOrderBy,
                               "A union sorts by the names or positions of its first select's columns only.");
        checked_->orderBy.push_back(sort);
    }
}

void SelectChecker::CheckGrouping(const syntax::Select& select) const {
    if (!checked_->grouped) return;
    for (const syntax::SelectColumn& column : select.columns)
        if (column.all)
            throw RunTimeError(
                ErrorNumber::NotPartOfAggregate,
                "The statement groups its rows, so it can't select *: name each column, grouped or as part of an "
                "aggregate function.");
    for (const CheckedColumn& column : checked_->columns) RequireGrouped(*column.expression, *checked_);
    if (checked_->having) RequireGrouped(*checked_->having, *checked_);
    for (const CheckedSort& sort : checked_->orderBy)
        if (sort.expression) RequireGrouped(*sort.expression, *checked_);
}

void SelectChecker::CheckDistinctOrder() const {
    if (!checked_->distinct) return;
    for (const CheckedSort& sort : checked_->orderBy) {
        if (!sort.expression) continue;
        const auto selected = [&](const CheckedColumn& column) { return Same(*column.expression, *sort.expression); };
        if (std::none_of(checked_->columns.begin(), checked_->columns.end(), selected))
            throw RunTimeError(ErrorNumber::DistinctOrder,
                               "The ORDER BY clause sorts by " + Described(*sort.expression) +
                                   ", which conflicts with DISTINCT because it isn't selected.");
    }
}

void SelectChecker::CheckUnions(const syntax::Select& select) {
    for (const syntax::Select::Union& further : select.unions) {
        SelectChecker part(checker_, enclosing_);
        std::shared_ptr<const CheckedSelect> checked = part.Check(*further.select);
        if (checked->columns.size() != checked_->columns.size())
            throw RunTimeError(ErrorNumber::UnionColumns,
                               "The selects of a union must give the same number of columns.");
        for (std::size_t i = 0; i < checked->columns.size(); ++i) {
            Field& field = checked_->columns[i].field;
            const CheckedExpression& other = *checked->columns[i].expression;
            if (other.isNull || other.type.Type == field.Type) {
                field.Size = std::max(field.Size, other.type.Size);
                continue;
            }
            Field common = TypeOf(checked_->columns[i].expression->isNull ? other.type.Type
                                                                          : CommonType(field.Type, other.type.Type));
            common.Name = field.Name;
            field = common;
        }
        checked_->unions.push_back({further.all, std::move(checked)});
    }
}

}  // namespace quillform::sql
