#pragma once

#include <memory>
#include <string>

#include "data/sql/Checker.h"
#include "data/sql/ExpressionChecker.h"

namespace quillform::sql {

/// Checks one select, union parts included.
class SelectChecker {
public:
    SelectChecker(const Checker& checker, const Scope* enclosing);
    std::shared_ptr<const CheckedSelect> Check(const syntax::Select& select);

private:
    void CheckCore(const syntax::Select& select);
    // FROM
    void CheckFrom(const syntax::Select& select);
    void AddTables(const syntax::TableExpression& table);
    void AddSource(CheckedSource source);
    /// `next` is the source that comes next.
    std::shared_ptr<const CheckedFrom> MakeFrom(const syntax::TableExpression& table, std::size_t& next);
    // Columns
    void CheckColumns(const syntax::Select& select);
    void AddAll(const std::string& qualifier);
    void AddColumn(const syntax::SelectColumn& column);
    ExpressionRef ColumnUnderAlias(const std::string& name) const;
    void CountContributions();
    bool SomeContribute() const;
    // Sorting and grouping
    void CheckGroups(const syntax::Select& select);
    void CheckOrderBy(const syntax::Select& select);
    ExpressionRef SortedBy(const syntax::Expression& expression);
    void CheckUnionOrderBy(const syntax::Select& select);
    void CheckGrouping(const syntax::Select& select) const;
    void CheckDistinctOrder() const;
    void CheckUnions(const syntax::Select& select);

    Scope MakeScope(Clause clause) const;
    ExpressionRef CheckIn(Clause clause, const syntax::Expression& expression);

    const Checker& checker_;
    const Scope* enclosing_;
    ExpressionChecker::SelectChecker nested_;
    std::shared_ptr<CheckedSelect> checked_ = std::make_shared<CheckedSelect>();
    std::vector<std::string> aliases_;  ///< of the columns so far; empty where none was written
};

/// Rewrites joins so that they nest to the left where that keeps their meaning: SQLite plans those, and materialises
/// the others.
std::shared_ptr<const CheckedFrom> LeftNested(std::shared_ptr<const CheckedFrom> from);

/// Whether a term of GROUP BY or ORDER BY is a constant or comes from a select around this one: it makes no groups and
/// no order, and SQLite takes none such. NotSupported where it also names a column of this select.
bool IsSameForAllRows(const CheckedExpression& expression);

/// Whether the expression or a part of it is an aggregate of its own select.
bool HasAggregate(const CheckedExpression& expression);
/// RunTimeError NotPartOfAggregate for a column that is neither grouped nor inside an aggregate.
void RequireGrouped(const CheckedExpression& expression, const CheckedSelect& select);

}  // namespace quillform::sql
