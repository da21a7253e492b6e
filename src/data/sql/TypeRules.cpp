#include "data/sql/TypeRules.h"

#include <cmath>
#include <optional>

#include "platform/Dates.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

TypeFamily FamilyOf(FieldType type) {
    switch (type) {
        case FieldType::Text:
        case FieldType::Memo:
        case FieldType::Guid:
            return TypeFamily::Text;
        case FieldType::Boolean:
            return TypeFamily::Truth;
        case FieldType::Byte:
        case FieldType::Integer:
        case FieldType::Long:
        case FieldType::Currency:
        case FieldType::Single:
        case FieldType::Double:
        case FieldType::Decimal:
            return TypeFamily::Number;
        case FieldType::Date:
            return TypeFamily::Date;
        case FieldType::Binary:
        case FieldType::LongBinary:
            return TypeFamily::Bytes;
    }
    return TypeFamily::Text;
}

Field TypeOf(FieldType type) {
    Field field;
    field.Type = type;
    switch (type) {
        case FieldType::Boolean:
        case FieldType::Byte:
            field.Size = 1;
            break;
        case FieldType::Integer:
            field.Size = 2;
            break;
        case FieldType::Long:
        case FieldType::Single:
            field.Size = 4;
            break;
        case FieldType::Currency:
        case FieldType::Double:
        case FieldType::Date:
            field.Size = 8;
            break;
        case FieldType::Text:
        case FieldType::Binary:
            field.Size = 255;
            break;
        case FieldType::Guid:
            field.Size = 16;
            break;
        case FieldType::Decimal:
            field.Size = 17;
            field.Precision = 28;
            break;
        case FieldType::Memo:
        case FieldType::LongBinary:
            break;
    }
    return field;
}

namespace {

bool IsWhole(FieldType type) {
    return type == FieldType::Boolean || type == FieldType::Byte || type == FieldType::Integer ||
           type == FieldType::Long;
}

/// Type of a sum, difference or product of two numbers.
FieldType NumberType(FieldType left, FieldType right) {
    if (IsWhole(left) && IsWhole(right)) return FieldType::Long;
    const auto either = [&](FieldType type) { return left == type || right == type; };
    if (either(FieldType::Double)) return FieldType::Double;
    if (either(FieldType::Decimal)) return either(FieldType::Single) ? FieldType::Double : FieldType::Decimal;
    if (either(FieldType::Currency)) return either(FieldType::Single) ? FieldType::Double : FieldType::Currency;
    // A Long has more digits than a Single can hold.
    return either(FieldType::Long) ? FieldType::Double : FieldType::Single;
}

}  // namespace

FieldType ArithmeticType(Operator op, FieldType left, FieldType right) {
    if (op == Operator::Divide || op == Operator::Power) return FieldType::Double;
    if (op == Operator::IntegerDivide || op == Operator::Modulo) return FieldType::Long;
    const bool leftDate = left == FieldType::Date;
    const bool rightDate = right == FieldType::Date;
    if (leftDate && rightDate) return op == Operator::Add ? FieldType::Date : FieldType::Double;
    if (leftDate || rightDate) return op == Operator::Multiply ? FieldType::Double : FieldType::Date;
    return NumberType(left, right);
}

FieldType CommonType(FieldType left, FieldType right) {
    if (left == right) return left;
    const TypeFamily leftFamily = FamilyOf(left);
    const TypeFamily rightFamily = FamilyOf(right);
    if (leftFamily == TypeFamily::Text || rightFamily == TypeFamily::Text)
        return left == FieldType::Memo || right == FieldType::Memo ? FieldType::Memo : FieldType::Text;
    if (leftFamily == TypeFamily::Bytes || rightFamily == TypeFamily::Bytes) return FieldType::LongBinary;
    if (leftFamily == TypeFamily::Date || rightFamily == TypeFamily::Date) return FieldType::Date;
    return NumberType(left, right);
}

ExpressionRef MakeNull() {
    auto made = std::make_shared<CheckedExpression>();
    made->isNull = true;
    made->type = TypeOf(FieldType::Text);
    return made;
}

ExpressionRef MakeConstant(Value value, FieldType type) {
    auto made = std::make_shared<CheckedExpression>();
    made->constant = std::move(value);
    made->type = TypeOf(type);
    return made;
}

ExpressionRef MakeConversion(Kind kind, ExpressionRef operand, FieldType type) {
    auto made = std::make_shared<CheckedExpression>();
    made->kind = kind;
    made->type = TypeOf(type);
    made->operands.push_back(std::move(operand));
    return made;
}

ExpressionRef MakeNumber(double number) {
    constexpr double most = 2147483647;
    if (std::trunc(number) != number || std::abs(number) > most)
        return MakeConstant(Value::Double(number), FieldType::Double);
    return MakeConstant(Value::Integer(static_cast<std::int64_t>(number)), FieldType::Long);
}

std::string Described(const CheckedExpression& expression) {
    if (expression.isNull) return "Null";
    const std::string type(FieldTypeName(expression.type.Type));
    if (expression.kind == Kind::Column) return "the " + type + " column [" + expression.type.Name + "]";
    if (expression.kind != Kind::Constant) return "an expression of type " + type;
    const std::string text = GeneralText(expression.constant);
    switch (FamilyOf(expression)) {
        case TypeFamily::Text:
            return "the text '" + std::string(LeftCharacters(text, 60)) + "'";
        case TypeFamily::Date:
            return "the date #" + text + "#";
        case TypeFamily::Number:
            return "the number " + text;
        case TypeFamily::Truth:
        case TypeFamily::Bytes:
            break;
    }
    return text;
}

namespace {

bool IsTextConstant(const CheckedExpression& expression) {
    return expression.kind == Kind::Constant && !expression.isNull && IsText(expression);
}

std::optional<bool> TruthFromText(std::string_view text) {
    const std::string_view word = Trim(text);
    for (const std::string_view yes : {"True", "Yes", "On"})
        if (EqualCaseBlind(word, yes)) return true;
    for (const std::string_view no : {"False", "No", "Off"})
        if (EqualCaseBlind(word, no)) return false;
    if (const std::optional<double> number = ParseNumber(word)) return *number != 0;
    return std::nullopt;
}

/// A text literal as a constant of another family; null where it doesn't read as one.
ExpressionRef LiteralAs(const CheckedExpression& literal, TypeFamily family, int currentYear) {
    const std::string_view text = literal.constant.View().text;
    switch (family) {
        case TypeFamily::Number:
            if (const auto number = ParseNumber(text)) return MakeNumber(*number);
            break;
        case TypeFamily::Date:
            if (const auto serial = ParseDate(text, currentYear))
                return MakeConstant(Value::Date(*serial), FieldType::Date);
            break;
        case TypeFamily::Truth:
            if (const auto truth = TruthFromText(text)) return MakeConstant(Value::Boolean(*truth), FieldType::Boolean);
            break;
        case TypeFamily::Text:
        case TypeFamily::Bytes:
            break;
    }
    return nullptr;
}

[[noreturn]] void RefuseComparison(const CheckedExpression& left, const CheckedExpression& right) {
    throw RunTimeError(ErrorNumber::DataTypeMismatch, "Data types don't match in the condition: " + Described(left) +
                                                          " can't be compared with " + Described(right) + ".");
}

[[noreturn]] void RefuseConversion(const CheckedExpression& expression, const char* wanted) {
    throw RunTimeError(ErrorNumber::DataTypeMismatch,
                       "Data types don't match: " + Described(expression) + " stands where " + wanted + " is needed.");
}

}  // namespace

ExpressionRef AsText(ExpressionRef expression) {
    if (expression->isNull || IsText(*expression)) return expression;
    if (FamilyOf(*expression) == TypeFamily::Bytes) RefuseConversion(*expression, "a text");
    if (expression->kind == Kind::Constant)
        return MakeConstant(Value::Text(GeneralText(expression->constant)), FieldType::Text);
    return MakeConversion(Kind::ToText, std::move(expression), FieldType::Text);
}

ExpressionRef AsNumber(ExpressionRef expression, int currentYear) {
    if (expression->isNull) return expression;
    if (IsTextConstant(*expression)) {
        if (ExpressionRef number = LiteralAs(*expression, TypeFamily::Number, currentYear)) return number;
        RefuseConversion(*expression, "a number");
    }
    if (IsText(*expression)) return MakeConversion(Kind::ToNumber, std::move(expression), FieldType::Double);
    if (FamilyOf(*expression) == TypeFamily::Bytes) RefuseConversion(*expression, "a number");
    return expression;
}

ExpressionRef AsDate(ExpressionRef expression, int currentYear) {
    if (expression->isNull) return expression;
    if (IsTextConstant(*expression)) {
        if (ExpressionRef date = LiteralAs(*expression, TypeFamily::Date, currentYear)) return date;
        RefuseConversion(*expression, "a date");
    }
    if (IsText(*expression)) return MakeConversion(Kind::ToDate, std::move(expression), FieldType::Date);
    if (FamilyOf(*expression) == TypeFamily::Bytes) RefuseConversion(*expression, "a date");
    return expression;
}

ExpressionRef AsCondition(ExpressionRef expression) {
    if (expression->isNull) return expression;
    const TypeFamily family = FamilyOf(*expression);
    if (family == TypeFamily::Text || family == TypeFamily::Bytes) RefuseConversion(*expression, "a condition");
    return expression;
}

ExpressionRef AsType(ExpressionRef expression, const Field& field, int currentYear) {
    if (expression->isNull) return expression;
    switch (FamilyOf(field.Type)) {
        case TypeFamily::Text:
            return AsText(std::move(expression));
        case TypeFamily::Date:
            return AsDate(std::move(expression), currentYear);
        case TypeFamily::Number:
            return AsNumber(std::move(expression), currentYear);
        case TypeFamily::Truth:
            if (expression->type.Type == FieldType::Boolean) return expression;
            if (IsTextConstant(*expression)) {
                if (ExpressionRef truth = LiteralAs(*expression, TypeFamily::Truth, currentYear)) return truth;
                RefuseConversion(*expression, "True or False");
            }
            return MakeConversion(Kind::ToTruth, AsNumber(std::move(expression), currentYear), FieldType::Boolean);
        case TypeFamily::Bytes:
            if (FamilyOf(*expression) != TypeFamily::Bytes) RefuseConversion(*expression, "bytes");
            return expression;
    }
    return expression;
}

void MakeComparable(ExpressionRef& left, ExpressionRef& right, int currentYear) {
    if (left->isNull || right->isNull) return;
    const TypeFamily leftFamily = FamilyOf(*left);
    const TypeFamily rightFamily = FamilyOf(*right);
    if (leftFamily == rightFamily) return;
    if (leftFamily == TypeFamily::Bytes || rightFamily == TypeFamily::Bytes) RefuseComparison(*left, *right);
    if (leftFamily != TypeFamily::Text && rightFamily != TypeFamily::Text) return;
    ExpressionRef& text = leftFamily == TypeFamily::Text ? left : right;
    const TypeFamily other = leftFamily == TypeFamily::Text ? rightFamily : leftFamily;
    ExpressionRef converted = IsTextConstant(*text) ? LiteralAs(*text, other, currentYear) : nullptr;
    if (!converted) RefuseComparison(*left, *right);
    text = std::move(converted);
}

}  // namespace quillform::sql
