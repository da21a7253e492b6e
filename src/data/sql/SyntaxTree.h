#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quillform::sql {

/// Operators of the report dialect, in both trees.
enum class Operator {
    Negate,
    Not,
    Power,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Add,
    Subtract,
    Concatenate,  ///< &: Null counts as the empty text
    Append,       ///< + of two texts: Null gives Null. Only the checked tree has it.
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Like,
    And,
    Or,
    Xor,
    Eqv,
    Imp,
};

/// What was written, before names and types are known. Heights are bounded by the parser, so walking the tree
/// recursively is safe.
namespace syntax {

struct Select;

struct Expression {
    enum class Kind {
        Null,
        Boolean,  ///< `integer` -1 or 0
        Integer,
        Real,
        Text,
        Date,      ///< `text` between the number signs
        Name,      ///< `qualifier`, `text`
        Star,      ///< of Count(*)
        Call,      ///< `text` (without `$`), operands
        Unary,     ///< `op`, one operand
        Binary,    ///< `op`, two operands
        Between,   ///< three operands, `negated`
        InList,    ///< tested operand, then the list, `negated`
        InSelect,  ///< tested operand, `select`, `negated`
        IsNull,    ///< one operand, `negated`
        Exists,    ///< `select`
        Select,    ///< `select` as a value
    };
    Kind kind = Kind::Null;
    Operator op = Operator::Add;
    bool negated = false;
    int height = 1;
    std::int64_t integer = 0;
    double real = 0;
    std::string qualifier;
    std::string text;
    std::vector<std::unique_ptr<Expression>> operands;
    std::unique_ptr<Select> select;
};
using ExpressionPtr = std::unique_ptr<Expression>;

enum class JoinKind { Inner, Left, Right };

/// A table, a select or a join of two table expressions.
struct TableExpression {
    std::string table;  ///< empty unless this is a table
    std::string alias;
    std::unique_ptr<Select> select;
    JoinKind join = JoinKind::Inner;
    std::unique_ptr<TableExpression> left;  ///< set if this is a join
    std::unique_ptr<TableExpression> right;
    ExpressionPtr on;
};
using TableExpressionPtr = std::unique_ptr<TableExpression>;

struct SelectColumn {
    bool all = false;       ///< `*` or `qualifier.*`
    std::string qualifier;  ///< of `qualifier.*`
    ExpressionPtr expression;
    std::string alias;
};

struct SortTerm {
    ExpressionPtr expression;
    bool descending = false;
};

struct Select {
    bool distinct = false;
    bool distinctRow = false;
    bool hasTop = false;
    bool topPercent = false;
    double top = 0;
    std::vector<SelectColumn> columns;
    std::vector<TableExpressionPtr> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
    std::vector<SortTerm> orderBy;
    /// Further selects of a union; the sort of the whole union stands in this select's `orderBy`.
    struct Union {
        bool all = false;
        std::unique_ptr<Select> select;
    };
    std::vector<Union> unions;
    int height = 1;
};

struct Assignment {
    std::string column;
    ExpressionPtr value;
};

struct Statement {
    enum class Kind { Select, Delete, Insert, Update };
    Kind kind = Kind::Select;
    std::unique_ptr<Select> select;  ///< Select; Insert from a select
    std::string table;               ///< the table changed
    std::string alias;
    std::vector<std::string> columns;   ///< Insert
    std::vector<ExpressionPtr> values;  ///< Insert
    std::vector<Assignment> assignments;
    ExpressionPtr where;
};

}  // namespace syntax
}  // namespace quillform::sql
