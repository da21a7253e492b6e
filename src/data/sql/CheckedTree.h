#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "data/sql/SyntaxTree.h"
#include "model/DataAccess.h"
#include "platform/Value.h"

namespace quillform::sql {

struct CheckedSelect;
struct CheckedExpression;
/// Shared because a sort position and an alias stand for the column they name.
using ExpressionRef = std::shared_ptr<const CheckedExpression>;

/// An expression whose names are resolved and whose types agree: every conversion that the dialect makes silently is a
/// node of its own, and a text literal compared with a date, number or Boolean is already a constant of that type.
struct CheckedExpression {
    enum class Kind {
        Constant,   ///< `constant`
        Column,     ///< `column` of source `source` of the select `outer` levels further out
        RowId,      ///< identity of the row of source `source`
        Operation,  ///< `op`, one or two operands. Concatenate: two or more, all texts
        Between,    ///< three operands, `negated`
        InList,     ///< tested operand, then the list, `negated`
        InSelect,   ///< tested operand, `select`, `negated`
        IsNull,     ///< one operand, `negated`
        Exists,     ///< `select`
        Case,  ///< condition, value, condition, value, ... and perhaps a last value for otherwise: IIf, Switch, Choose
        Coalesce,   ///< the first operand that isn't Null: Nz
        Call,       ///< `function`, operands
        Aggregate,  ///< `function`; no operand: Count(*)
        Select,     ///< the value of `select`'s one column in its first row
        ToText,     ///< general text of the operand
        ToNumber,   ///< a text read as a number; DataTypeMismatch while running where it is none
        ToDate,     ///< a text read as a date; likewise
        ToTruth,    ///< a number: -1 where it isn't 0
    };
    Kind kind = Kind::Constant;
    Operator op = Operator::Add;
    bool negated = false;
    bool isNull = false;  ///< the literal Null, which goes with every type
    int outer = 0;
    int source = -1;
    int column = -1;
    std::string_view function;  ///< name in SQLite; lives as long as the program
    Field type;                 ///< type, size, precision and scale of the result; for a column its whole definition
    Value constant;
    std::vector<ExpressionRef> operands;
    std::shared_ptr<const CheckedSelect> select;
};

/// Whether both always give the same.
bool Same(const CheckedExpression& left, const CheckedExpression& right);

/// RunTimeError QueryTooComplex where the expression, written out, is too large or nests too deeply: shared parts count
/// as often as they are used.
void RequireSize(const CheckedExpression& expression);

/// A join of two table expressions, or one source. The dialect's right joins stand here as left joins, sides changed.
struct CheckedFrom {
    int source = -1;  ///< -1: a join
    bool outer = false;
    std::shared_ptr<const CheckedFrom> left;
    std::shared_ptr<const CheckedFrom> right;
    ExpressionRef on;
};

/// A table or select in FROM. Its columns stand under `fields`.
struct CheckedSource {
    std::string name;  ///< alias or else the table's name
    std::string table;
    std::size_t position = 0;                     ///< of the table in the schema
    std::shared_ptr<const CheckedSelect> select;  ///< null for a table
    std::vector<Field> fields;
    int contributed = 0;  ///< number of select columns that pass on or use a column of this source
};

struct CheckedColumn {
    Field field;  ///< name, type and size of the result
    ExpressionRef expression;
};

struct CheckedSort {
    ExpressionRef expression;  ///< null: by select column `column`, as unions sort
    int column = -1;
    bool descending = false;
};

struct CheckedSelect {
    bool distinct = false;
    /// DISTINCTROW where it matters: rows that agree in the row identities of the contributing sources count once.
    bool distinctRows = false;
    bool hasTop = false;  ///< rows that tie with the last one are given too
    bool topPercent = false;
    double top = 0;
    bool grouped = false;                                  ///< has GROUP BY or an aggregate
    std::vector<CheckedSource> sources;                    ///< in written order; what Column::source counts
    std::vector<std::shared_ptr<const CheckedFrom>> from;  ///< joined by comma
    std::vector<CheckedColumn> columns;
    ExpressionRef where;
    std::vector<ExpressionRef> groupBy;
    ExpressionRef having;
    std::vector<CheckedSort> orderBy;
    struct Union {
        bool all = false;
        std::shared_ptr<const CheckedSelect> select;
    };
    std::vector<Union> unions;
};

/// Calls `visit` with each expression of the select itself, those of its unions among them, not those of selects in
/// FROM.
template <typename Visit>
void ForEachExpression(const CheckedSelect& select, const Visit& visit);

/// A Delete, Insert or Update. `rows` has the changed table as its only source, its condition, and (Update) the new
/// values as columns.
struct CheckedAction {
    CheckedSelect rows;
    std::vector<int> columns;                     ///< Insert, Update: columns of the changed table that get the values
    std::vector<ExpressionRef> values;            ///< Insert of one row
    std::shared_ptr<const CheckedSelect> select;  ///< Insert from a select
};

namespace detail {

template <typename Visit>
void ForEachCondition(const CheckedFrom& from, const Visit& visit) {
    if (from.source >= 0) return;
    ForEachCondition(*from.left, visit);
    ForEachCondition(*from.right, visit);
    if (from.on) visit(*from.on);
}

}  // namespace detail

template <typename Visit>
void ForEachExpression(const CheckedSelect& select, const Visit& visit) {
    for (const auto& from : select.from) detail::ForEachCondition(*from, visit);
    for (const CheckedColumn& column : select.columns) visit(*column.expression);
    if (select.where) visit(*select.where);
    for (const ExpressionRef& group : select.groupBy) visit(*group);
    if (select.having) visit(*select.having);
    for (const CheckedSort& sort : select.orderBy)
        if (sort.expression) visit(*sort.expression);
    for (const CheckedSelect::Union& further : select.unions) ForEachExpression(*further.select, visit);
}

}  // namespace quillform::sql
