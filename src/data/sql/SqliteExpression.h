#pragma once

#include <string>
#include <vector>

#include "data/sql/CheckedTree.h"

namespace quillform::sql {

/// The selects around the place that is written, the innermost last.
using SelectStack = std::vector<const CheckedSelect*>;

/// Name under which a source stands in the text: its own, made different where a select around it has the same.
std::string SourceName(const SelectStack& stack, std::size_t depth, std::size_t source);
/// Name of a column of a select in FROM, by position: names of result columns may repeat.
std::string ColumnName(int column);

/// Appends expressions in SQLite's dialect.
class SqliteExpression {
public:
    SqliteExpression(SelectStack& stack, std::string& out) : stack_(stack), out_(out) {}

    /// As a value: truth is -1 or 0.
    void Value(const CheckedExpression& expression);
    /// As a condition: any number but 0 is true.
    void Condition(const CheckedExpression& expression);
    /// As what is sorted, grouped or told apart.
    void Key(const CheckedExpression& expression);

private:
    /// How tightly the sign that ends up outermost binds.
    enum Level { orLevel, andLevel, notLevel, compareLevel, addLevel, multiplyLevel, joinLevel, tightLevel };
    static Level ValueLevel(const CheckedExpression& expression);
    static Level ConditionLevel(const CheckedExpression& expression);
    void ValueAt(Level least, const CheckedExpression& expression);
    void ConditionAt(Level least, const CheckedExpression& expression);

    void Constant(const CheckedExpression& expression);
    void Column(const CheckedExpression& expression);
    void OperationValue(const CheckedExpression& expression);
    void OperationCondition(const CheckedExpression& expression);
    void Comparison(const CheckedExpression& expression);
    void Compared(const CheckedExpression& expression, bool collate);
    void Test(const CheckedExpression& expression);
    void Infix(Level level, const CheckedExpression& expression, const char* sign);
    void Call(std::string_view function, const std::vector<ExpressionRef>& operands);
    void Concatenation(const CheckedExpression& expression, std::size_t first, std::size_t end);
    void Case(const CheckedExpression& expression);
    void AggregateCall(const CheckedExpression& expression);
    void Conversion(const CheckedExpression& expression);
    void Nested(const CheckedSelect& select);

    SelectStack& stack_;
    std::string& out_;
};

/// Appends a select; `stack` holds the selects around it.
void AppendSelect(SelectStack& stack, const CheckedSelect& select, std::string& out, bool namedColumns = false);

}  // namespace quillform::sql
