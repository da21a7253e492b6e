#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "data/columns/TableCache.h"
#include "data/sql/CheckedTree.h"

namespace quillform::data::direct {

/// A column, or a piece of a text column, of one source of the statement.
struct Operand {
    int source = 0;
    ColumnView view;
    CompareClass compareClass = CompareClass::Number;
    friend bool operator==(const Operand&, const Operand&) = default;
};

/// Something true, false or unknown about the rows of the sources.
struct Condition {
    enum class Kind { And, Or, Not, WithConstant, WithColumn, Like, IsNull, Constant };
    Kind kind = Kind::Constant;
    std::vector<Condition> parts;             // And, Or, Not
    sql::Operator op = sql::Operator::Equal;  // WithConstant, WithColumn
    Operand left;
    Operand right;        // WithColumn
    double number = 0;    // WithConstant; Constant: 0 is false
    std::string text;     // WithConstant, Like: the pattern
    bool isNull = false;  // the constant is Null

    std::uint64_t Sources() const;  ///< a bit for each source it looks at
};

struct Equality {
    Operand left;
    Operand right;
};

/// The tree of FROM: a source, or a join by equalities.
struct JoinNode {
    int source = -1;       ///< -1: a join
    bool isOuter = false;  ///< keeps the rows of the left side that have no partner
    std::unique_ptr<JoinNode> left;
    std::unique_ptr<JoinNode> right;
    std::vector<Equality> equalities;

    std::uint64_t Sources() const;
    bool IsInner() const;  ///< no outer join in it
};

struct SortTerm {
    Operand operand;
    bool descending = false;
};

/// A statement of the common shape: tables joined by equalities, conditions on their columns, columns out, sorted by
/// columns; grouped only to give each combination once.
struct Plan {
    std::vector<std::size_t> tables;  ///< per source, its position in the storage
    JoinNode from;
    std::vector<Condition> conditions;  ///< all must be true
    std::vector<Operand> columns;
    std::vector<Operand> groupBy;
    std::vector<SortTerm> orderBy;
};

/// None where the statement isn't of that shape.
std::optional<Plan> MakePlan(const sql::CheckedSelect& select);

}  // namespace quillform::data::direct
