#include "data/sql/ExpressionChecker.h"

#include <limits>

#include "data/sql/ComparedLiteral.h"
#include "data/sql/TypeRules.h"
#include "platform/Dates.h"
#include "platform/Text.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

namespace {

bool IsComparison(Operator op) {
    switch (op) {
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

std::shared_ptr<CheckedExpression> MakeOperation(Operator op, FieldType type, std::vector<ExpressionRef> operands) {
    auto made = std::make_shared<CheckedExpression>();
    made->kind = Kind::Operation;
    made->op = op;
    made->type = TypeOf(type);
    made->operands = std::move(operands);
    return made;
}

/// One more text at the end of a chain of &, which stays flat.
ExpressionRef Concatenated(const ExpressionRef& left, ExpressionRef right) {
    const bool memo = left->type.Type == FieldType::Memo || right->type.Type == FieldType::Memo;
    auto made = MakeOperation(Operator::Concatenate, memo ? FieldType::Memo : FieldType::Text, {});
    if (left->kind == Kind::Operation && left->op == Operator::Concatenate)
        made->operands = left->operands;
    else
        made->operands.push_back(left);
    made->operands.push_back(std::move(right));
    return made;
}

ExpressionRef IntegerConstant(std::int64_t number) {
    if (number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<std::int32_t>::max())
        return MakeConstant(Value::Integer(number), FieldType::Long);
    return MakeConstant(Value::Double(static_cast<double>(number)), FieldType::Double);
}

}  // namespace

ExpressionRef ExpressionChecker::Check(const Syntax& expression) {
    ExpressionRef checked = CheckPart(expression);
    RequireSize(*checked);
    return checked;
}

ExpressionRef ExpressionChecker::CheckCondition(const Syntax& expression) { return AsCondition(CheckPart(expression)); }

ExpressionRef ExpressionChecker::CheckPart(const Syntax& expression) {
    switch (expression.kind) {
        case Syntax::Kind::Null:
        case Syntax::Kind::Boolean:
        case Syntax::Kind::Integer:
        case Syntax::Kind::Real:
        case Syntax::Kind::Text:
        case Syntax::Kind::Date:
            return CheckLiteral(expression);
        case Syntax::Kind::Name:
            return Resolve(scope_, expression.qualifier, expression.text);
        case Syntax::Kind::Star:
            throw RunTimeError(ErrorNumber::SyntaxInExpression, "Only Count can have * for its argument.");
        case Syntax::Kind::Call:
            return CheckCall(expression);
        case Syntax::Kind::Unary:
            return CheckUnary(expression);
        case Syntax::Kind::Binary:
            return CheckBinary(expression);
        case Syntax::Kind::Between:
        case Syntax::Kind::InList:
        case Syntax::Kind::IsNull:
            return CheckTest(expression);
        case Syntax::Kind::InSelect:
            return CheckInSelect(expression);
        case Syntax::Kind::Exists:
        case Syntax::Kind::Select:
            return CheckSelect(expression);
    }
    return MakeNull();
}

ExpressionRef ExpressionChecker::CheckLiteral(const Syntax& expression) {
    switch (expression.kind) {
        case Syntax::Kind::Boolean:
            return MakeConstant(Value::Boolean(expression.integer != 0), FieldType::Boolean);
        case Syntax::Kind::Integer:
            return IntegerConstant(expression.integer);
        case Syntax::Kind::Real:
            return MakeConstant(Value::Double(expression.real), FieldType::Double);
        case Syntax::Kind::Text:
            return MakeConstant(Value::Text(expression.text), FieldType::Text);
        case Syntax::Kind::Date: {
            const auto serial = ParseDate(expression.text, currentYear_);
            if (!serial)
                throw RunTimeError(ErrorNumber::SyntaxInExpression,
                                   "The date #" + expression.text + "# can't be read.");
            return MakeConstant(Value::Date(*serial), FieldType::Date);
        }
        default:
            return MakeNull();
    }
}

ExpressionRef ExpressionChecker::CheckUnary(const Syntax& expression) {
    if (expression.op == Operator::Not)
        return MakeOperation(Operator::Not, FieldType::Boolean, {CheckCondition(*expression.operands[0])});
    ExpressionRef operand = AsNumber(CheckPart(*expression.operands[0]), currentYear_);
    if (operand->isNull) return operand;
    if (operand->kind == Kind::Constant) {
        const ValueView value = operand->constant.View();
        if (value.kind == ValueKind::Integer) return IntegerConstant(-value.integer);
        if (value.kind == ValueKind::Double) return MakeConstant(Value::Double(-value.real), FieldType::Double);
    }
    const FieldType type = operand->type.Type;
    return MakeOperation(Operator::Negate,
                         type == FieldType::Boolean || type == FieldType::Byte ? FieldType::Integer : type,
                         {std::move(operand)});
}

ExpressionRef ExpressionChecker::CheckBinary(const Syntax& expression) {
    const Operator op = expression.op;
    if (op == Operator::And || op == Operator::Or || op == Operator::Xor || op == Operator::Eqv ||
        op == Operator::Imp) {
        ExpressionRef left = CheckCondition(*expression.operands[0]);
        return MakeOperation(op, FieldType::Boolean, {std::move(left), CheckCondition(*expression.operands[1])});
    }
    ExpressionRef left = CheckPart(*expression.operands[0]);
    ExpressionRef right = CheckPart(*expression.operands[1]);
    if (op == Operator::Concatenate) return Concatenated(AsText(std::move(left)), AsText(std::move(right)));
    if (op == Operator::Like) {
        auto made = MakeOperation(op, FieldType::Boolean, {AsText(std::move(left)), AsText(std::move(right))});
        made->negated = expression.negated;
        return made;
    }
    if (IsComparison(op)) {
        MakeComparable(left, right, currentYear_);
        if (ExpressionRef near = ByGeneralText(op, left, right)) return near;
        return MakeOperation(op, FieldType::Boolean, {std::move(left), std::move(right)});
    }
    return CheckArithmetic(op, std::move(left), std::move(right));
}

ExpressionRef ExpressionChecker::CheckArithmetic(Operator op, ExpressionRef left, ExpressionRef right) {
    if (op == Operator::Add && (IsText(*left) || left->isNull) && (IsText(*right) || right->isNull))
        return MakeOperation(Operator::Append, FieldType::Text, {std::move(left), std::move(right)});
    left = AsNumber(std::move(left), currentYear_);
    right = AsNumber(std::move(right), currentYear_);
    const FieldType leftType = left->isNull ? right->type.Type : left->type.Type;
    const FieldType rightType = right->isNull ? leftType : right->type.Type;
    return MakeOperation(op, ArithmeticType(op, leftType, rightType), {std::move(left), std::move(right)});
}

/// Between, In and Is Null: every further operand is made comparable with the first.
ExpressionRef ExpressionChecker::CheckTest(const Syntax& expression) {
    auto made = std::make_shared<CheckedExpression>();
    made->kind = expression.kind == Syntax::Kind::Between  ? Kind::Between
                 : expression.kind == Syntax::Kind::InList ? Kind::InList
                                                           : Kind::IsNull;
    made->negated = expression.negated;
    made->type = TypeOf(FieldType::Boolean);
    for (const auto& operand : expression.operands) {
        ExpressionRef checked = CheckPart(*operand);
        if (!made->operands.empty()) MakeComparable(made->operands.front(), checked, currentYear_);
        made->operands.push_back(std::move(checked));
    }
    return made;
}

ExpressionRef ExpressionChecker::CheckInSelect(const Syntax& expression) {
    auto made = std::make_shared<CheckedExpression>();
    made->kind = Kind::InSelect;
    made->negated = expression.negated;
    made->type = TypeOf(FieldType::Boolean);
    made->select = select_(*expression.select, scope_);
    if (made->select->columns.size() != 1)
        throw RunTimeError(ErrorNumber::SubselectColumns, "The select behind In must give exactly one column.");
    ExpressionRef tested = CheckPart(*expression.operands[0]);
    ExpressionRef given = made->select->columns[0].expression;
    // A conversion of the select's column has no place in it, so only the tested side can give way.
    const ExpressionRef before = given;
    MakeComparable(tested, given, currentYear_);
    if (given != before)
        throw RunTimeError(ErrorNumber::DataTypeMismatch, "Data types don't match in the condition: " +
                                                              Described(*tested) + " can't be looked up among texts.");
    made->operands.push_back(std::move(tested));
    return made;
}

ExpressionRef ExpressionChecker::CheckSelect(const Syntax& expression) {
    auto made = std::make_shared<CheckedExpression>();
    made->select = select_(*expression.select, scope_);
    if (expression.kind == Syntax::Kind::Exists) {
        made->kind = Kind::Exists;
        made->type = TypeOf(FieldType::Boolean);
        return made;
    }
    made->kind = Kind::Select;
    if (made->select->columns.size() != 1)
        throw RunTimeError(ErrorNumber::SubselectColumns,
                           "A select that stands for a value must give exactly one column.");
    made->type = made->select->columns[0].field;
    return made;
}

}  // namespace quillform::sql
