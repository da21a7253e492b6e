#include "data/sql/SqliteExpression.h"

#include <charconv>

#include "data/sql/Prepare.h"
#include "data/sql/SqliteWriter.h"
#include "data/sql/TypeRules.h"
#include "platform/Text.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

namespace {

constexpr std::string_view collation = " COLLATE QFTEXT";

/// Whether the node is written as something true or false (1, 0 or Null), not as -1 or 0.
bool IsConditionNode(const CheckedExpression& expression) {
    switch (expression.kind) {
        case Kind::Between:
        case Kind::InList:
        case Kind::InSelect:
        case Kind::IsNull:
        case Kind::Exists:
            return true;
        case Kind::Operation:
            break;
        default:
            return false;
    }
    switch (expression.op) {
        case Operator::Like:
            return expression.negated;
        case Operator::Not:
        case Operator::And:
        case Operator::Or:
        case Operator::Equal:
        case Operator::NotEqual:
        case Operator::Less:
        case Operator::LessOrEqual:
        case Operator::Greater:
        case Operator::GreaterOrEqual:
            return true;
        default:
            return false;
    }
}

const char* ComparisonSign(Operator op) {
    switch (op) {
        case Operator::NotEqual:
            return " <> ";
        case Operator::Less:
            return " < ";
        case Operator::LessOrEqual:
            return " <= ";
        case Operator::Greater:
            return " > ";
        case Operator::GreaterOrEqual:
            return " >= ";
        default:
            return " = ";
    }
}

std::string_view OperatorFunction(Operator op) {
    switch (op) {
        case Operator::Divide:
            return "qf_divide";
        case Operator::IntegerDivide:
            return "qf_intdiv";
        case Operator::Modulo:
            return "qf_mod";
        case Operator::Power:
            return "qf_power";
        case Operator::Like:
            return "qf_like";
        case Operator::Xor:
            return "qf_xor";
        case Operator::Eqv:
            return "qf_eqv";
        case Operator::Imp:
            return "qf_imp";
        default:
            return {};
    }
}

void AppendReal(double number, std::string& out) {
    char digits[40];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    const std::string_view written(digits, static_cast<std::size_t>(end - digits));
    out += written;
    if (written.find_first_of(".e") == written.npos) out += ".0";
}

/// A computed amount has a binary rest behind its fourth decimal that must not count.
bool IsComputedAmount(const CheckedExpression& expression) {
    return expression.type.Type == FieldType::Currency && expression.kind != Kind::Column &&
           expression.kind != Kind::Constant;
}

}  // namespace

std::string SourceName(const SelectStack& stack, std::size_t depth, std::size_t source) {
    const std::string& name = stack[depth]->sources[source].name;
    std::size_t repeated = 0;
    for (std::size_t i = 0; i < depth; ++i)
        for (const CheckedSource& other : stack[i]->sources)
            if (EqualCaseBlind(other.name, name)) ++repeated;
    return repeated == 0 ? name : name + "~" + std::to_string(repeated);
}

std::string ColumnName(int column) { return "c" + std::to_string(column); }

SqliteExpression::Level SqliteExpression::ValueLevel(const CheckedExpression& expression) {
    if (expression.kind == Kind::Constant) {
        const ValueView value = expression.constant.View();
        const bool negative = value.kind == ValueKind::Integer ? value.integer < 0 : value.real < 0;
        return negative || (value.kind == ValueKind::Boolean && value.integer != 0) ? multiplyLevel : tightLevel;
    }
    if (expression.kind == Kind::ToTruth || IsConditionNode(expression)) return multiplyLevel;
    if (expression.kind != Kind::Operation) return tightLevel;
    switch (expression.op) {
        case Operator::Add:
        case Operator::Subtract:
            return addLevel;
        case Operator::Multiply:
        case Operator::Negate:
            return multiplyLevel;
        case Operator::Append:
            return joinLevel;
        case Operator::Concatenate:
            return joinLevel;
        default:
            return tightLevel;
    }
}

SqliteExpression::Level SqliteExpression::ConditionLevel(const CheckedExpression& expression) {
    if (!IsConditionNode(expression)) return ValueLevel(expression);
    if (expression.kind == Kind::Exists) return expression.negated ? notLevel : tightLevel;
    if (expression.kind != Kind::Operation) return compareLevel;
    switch (expression.op) {
        case Operator::Or:
            return orLevel;
        case Operator::And:
            return andLevel;
        case Operator::Not:
        case Operator::Like:
            return notLevel;
        default:
            return compareLevel;
    }
}

void SqliteExpression::ValueAt(Level least, const CheckedExpression& expression) {
    const bool enclosed = ValueLevel(expression) < least;
    if (enclosed) out_ += '(';
    Value(expression);
    if (enclosed) out_ += ')';
}

void SqliteExpression::ConditionAt(Level least, const CheckedExpression& expression) {
    const bool enclosed = ConditionLevel(expression) < least;
    if (enclosed) out_ += '(';
    Condition(expression);
    if (enclosed) out_ += ')';
}

void SqliteExpression::Condition(const CheckedExpression& expression) {
    if (!IsConditionNode(expression)) return Value(expression);
    if (expression.kind == Kind::Operation)
        OperationCondition(expression);
    else
        Test(expression);
}

void SqliteExpression::Value(const CheckedExpression& expression) {
    if (IsConditionNode(expression)) {
        out_ += "-(";
        Condition(expression);
        out_ += ')';
        return;
    }
    switch (expression.kind) {
        case Kind::Constant:
            return Constant(expression);
        case Kind::Column:
        case Kind::RowId:
            return Column(expression);
        case Kind::Operation:
            return OperationValue(expression);
        case Kind::Case:
            return Case(expression);
        case Kind::Coalesce:
            return Call("coalesce", expression.operands);
        case Kind::Call:
            return Call(expression.function, expression.operands);
        case Kind::Aggregate:
            return AggregateCall(expression);
        case Kind::Select:
            return Nested(*expression.select);
        case Kind::ToText:
        case Kind::ToNumber:
        case Kind::ToDate:
        case Kind::ToTruth:
            return Conversion(expression);
        case Kind::Between:
        case Kind::InList:
        case Kind::InSelect:
        case Kind::IsNull:
        case Kind::Exists:
            return;  // conditions, written above
    }
}

void SqliteExpression::Key(const CheckedExpression& expression) { Compared(expression, IsText(expression)); }

void SqliteExpression::Constant(const CheckedExpression& expression) {
    const ValueView value = expression.constant.View();
    switch (value.kind) {
        case ValueKind::Null:
            out_ += "NULL";
            break;
        case ValueKind::Boolean:
            out_ += value.integer != 0 ? "-1" : "0";
            break;
        case ValueKind::Integer:
            out_ += std::to_string(value.integer);
            break;
        case ValueKind::Single:
        case ValueKind::Double:
        case ValueKind::Date:
            AppendReal(value.real, out_);
            break;
        case ValueKind::Currency:
        case ValueKind::Decimal:
            AppendReal(NumberOf(value), out_);
            break;
        case ValueKind::Text:
        case ValueKind::Guid:
        case ValueKind::Binary:
            out_ += QuotedText(value.text);
            break;
    }
}

void SqliteExpression::Column(const CheckedExpression& expression) {
    const std::size_t depth = stack_.size() - 1 - static_cast<std::size_t>(expression.outer);
    const auto position = static_cast<std::size_t>(expression.source);
    const CheckedSource& source = stack_[depth]->sources[position];
    out_ += QuotedName(SourceName(stack_, depth, position));
    out_ += '.';
    if (expression.kind == Kind::RowId) {
        // The table's own columns go before the names of the row's identity.
        std::string_view name = "rowid";
        for (const std::string_view tried : {"oid", "_rowid_", "rowid"}) {
            bool taken = false;
            for (const Field& field : source.fields) taken = taken || EqualCaseBlind(field.Name, tried);
            if (!taken) name = tried;
        }
        out_ += name;
        return;
    }
    if (source.select)
        out_ += QuotedName(ColumnName(expression.column));
    else
        out_ += QuotedName(source.fields[static_cast<std::size_t>(expression.column)].Name);
}

void SqliteExpression::Infix(Level level, const CheckedExpression& expression, const char* sign) {
    ValueAt(level, *expression.operands[0]);
    out_ += sign;
    ValueAt(static_cast<Level>(level + 1), *expression.operands[1]);
}

void SqliteExpression::OperationValue(const CheckedExpression& expression) {
    switch (expression.op) {
        case Operator::Add:
            return Infix(addLevel, expression, " + ");
        case Operator::Subtract:
            return Infix(addLevel, expression, " - ");
        case Operator::Multiply:
            return Infix(multiplyLevel, expression, " * ");
        case Operator::Append:
            return Infix(joinLevel, expression, " || ");
        case Operator::Negate:
            out_ += "-(";
            Value(*expression.operands[0]);
            out_ += ')';
            return;
        case Operator::Concatenate:
            return Concatenation(expression, 0, expression.operands.size());
        default:
            return Call(OperatorFunction(expression.op), expression.operands);
    }
}

namespace {

bool IsNeverNull(const CheckedExpression& expression) {
    return expression.kind == Kind::Constant && !expression.isNull;
}

}  // namespace

/// Null & Null is Null, and otherwise Null counts as an empty text. Where one operand can't be Null the chain is flat;
/// else calls are nested in halves, because SQLite reads only so deep.
void SqliteExpression::Concatenation(const CheckedExpression& expression, std::size_t first, std::size_t end) {
    const auto& operands = expression.operands;
    if (end - first == 1) return Value(*operands[first]);
    bool flat = false;
    for (std::size_t i = first; i < end; ++i) flat = flat || IsNeverNull(*operands[i]);
    if (!flat) {
        const std::size_t middle = first + (end - first) / 2;
        out_ += "qf_concat(";
        Concatenation(expression, first, middle);
        out_ += ", ";
        Concatenation(expression, middle, end);
        out_ += ')';
        return;
    }
    for (std::size_t i = first; i < end; ++i) {
        if (i > first) out_ += " || ";
        if (IsNeverNull(*operands[i])) {
            Value(*operands[i]);
            continue;
        }
        out_ += "coalesce(";
        Value(*operands[i]);
        out_ += ", '')";
    }
}

void SqliteExpression::OperationCondition(const CheckedExpression& expression) {
    switch (expression.op) {
        case Operator::And:
        case Operator::Or: {
            const Level level = expression.op == Operator::And ? andLevel : orLevel;
            ConditionAt(level, *expression.operands[0]);
            out_ += expression.op == Operator::And ? " AND " : " OR ";
            ConditionAt(static_cast<Level>(level + 1), *expression.operands[1]);
            return;
        }
        case Operator::Not:
            out_ += "NOT ";
            ConditionAt(tightLevel, *expression.operands[0]);
            return;
        case Operator::Like:  // negated
            out_ += "NOT ";
            Call("qf_like", expression.operands);
            return;
        default:
            return Comparison(expression);
    }
}

void SqliteExpression::Comparison(const CheckedExpression& expression) {
    const CheckedExpression& left = *expression.operands[0];
    const CheckedExpression& right = *expression.operands[1];
    Compared(left, false);
    out_ += ComparisonSign(expression.op);
    Compared(right, IsText(left) && IsText(right));
}

void SqliteExpression::Compared(const CheckedExpression& expression, bool collate) {
    if (IsComputedAmount(expression)) {
        out_ += "round(";
        Value(expression);
        out_ += ", 4)";
        return;
    }
    ValueAt(collate ? tightLevel : addLevel, expression);
    if (collate) out_ += collation;
}

void SqliteExpression::Test(const CheckedExpression& expression) {
    if (expression.kind == Kind::Exists) {
        if (expression.negated) out_ += "NOT ";
        out_ += "EXISTS ";
        return Nested(*expression.select);
    }
    const CheckedExpression& tested = *expression.operands[0];
    if (expression.kind == Kind::IsNull) {
        ValueAt(addLevel, tested);
        out_ += expression.negated ? " IS NOT NULL" : " IS NULL";
        return;
    }
    Key(tested);
    if (expression.negated) out_ += " NOT";
    if (expression.kind == Kind::Between) {
        out_ += " BETWEEN ";
        Compared(*expression.operands[1], false);
        out_ += " AND ";
        Compared(*expression.operands[2], false);
        return;
    }
    out_ += " IN ";
    if (expression.kind == Kind::InSelect) return Nested(*expression.select);
    out_ += '(';
    for (std::size_t i = 1; i < expression.operands.size(); ++i) {
        if (i > 1) out_ += ", ";
        Compared(*expression.operands[i], false);
    }
    out_ += ')';
}

void SqliteExpression::Call(std::string_view function, const std::vector<ExpressionRef>& operands) {
    out_ += function;
    out_ += '(';
    for (std::size_t i = 0; i < operands.size(); ++i) {
        if (i > 0) out_ += ", ";
        Value(*operands[i]);
    }
    out_ += ')';
}

void SqliteExpression::Case(const CheckedExpression& expression) {
    const auto& operands = expression.operands;
    out_ += "CASE";
    for (std::size_t i = 0; i + 1 < operands.size(); i += 2) {
        out_ += " WHEN ";
        Condition(*operands[i]);
        out_ += " THEN ";
        Value(*operands[i + 1]);
    }
    out_ += " ELSE ";
    Value(*operands.back());
    out_ += " END";
}

void SqliteExpression::AggregateCall(const CheckedExpression& expression) {
    out_ += expression.function;
    out_ += '(';
    if (expression.operands.empty())
        out_ += '*';
    else if (expression.function == "min" || expression.function == "max")
        Key(*expression.operands[0]);
    else
        Value(*expression.operands[0]);
    out_ += ')';
}

void SqliteExpression::Conversion(const CheckedExpression& expression) {
    const CheckedExpression& operand = *expression.operands[0];
    switch (expression.kind) {
        case Kind::ToText:
            out_ += "qf_text(";
            Value(operand);
            out_ += ", " + std::to_string(static_cast<int>(operand.type.Type)) + ")";
            return;
        case Kind::ToNumber:
            return Call("qf_cdbl", expression.operands);
        case Kind::ToDate:
            return Call("qf_cdate", expression.operands);
        default:
            out_ += "-(";
            ValueAt(addLevel, operand);
            out_ += " <> 0)";
            return;
    }
}

void SqliteExpression::Nested(const CheckedSelect& select) {
    out_ += '(';
    AppendSelect(stack_, select, out_);
    out_ += ')';
}

}  // namespace quillform::sql
