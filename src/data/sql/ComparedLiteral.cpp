#include "data/sql/ComparedLiteral.h"

#include <charconv>
#include <cmath>
#include <string_view>

#include "data/sql/TypeRules.h"
#include "platform/Dates.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

namespace {

constexpr int doubleDigits = 15;
constexpr int singleDigits = 7;
constexpr double halfSecond = 0.5 / 86400;

struct Decimal {
    int digits = 0;    ///< significant ones of the shortest text
    int exponent = 0;  ///< of the first digit
};

Decimal DecimalOf(double number) {
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, std::abs(number), std::chars_format::scientific).ptr;
    const std::string_view written(text, static_cast<std::size_t>(end - text));
    const std::size_t e = written.find('e');
    Decimal decimal;
    decimal.digits = static_cast<int>(e > 1 ? e - 1 : e);  // without the point
    const std::size_t sign = written[e + 1] == '+' ? 1 : 0;
    std::from_chars(text + e + 1 + sign, end, decimal.exponent);
    return decimal;
}

/// How far a value may lie from the literal and still have its text; 0: not at all.
double Tolerance(FieldType type, double literal) {
    if (type == FieldType::Date) return TimePartOf(literal) == 0 ? 0 : halfSecond;
    const int digits = type == FieldType::Single ? singleDigits : doubleDigits;
    const Decimal decimal = DecimalOf(literal);
    return decimal.digits == digits ? 0.5 * std::pow(10.0, decimal.exponent - digits + 1) : 0;
}

bool IsNumberOrDate(const CheckedExpression& expression) {
    return expression.kind == Kind::Constant && !expression.isNull &&
           (FamilyOf(expression) == TypeFamily::Number || FamilyOf(expression) == TypeFamily::Date);
}

ExpressionRef MakeOperation(Operator op, ExpressionRef left, ExpressionRef right) {
    auto made = std::make_shared<CheckedExpression>();
    made->kind = Kind::Operation;
    made->op = op;
    made->type = TypeOf(FieldType::Boolean);
    made->operands = {std::move(left), std::move(right)};
    return made;
}

ExpressionRef MakeNear(const ExpressionRef& column, double literal, double tolerance, bool negated) {
    auto made = std::make_shared<CheckedExpression>();
    made->kind = Kind::Between;
    made->negated = negated;
    made->type = TypeOf(FieldType::Boolean);
    made->operands = {column, MakeConstant(Value::Double(literal - tolerance), FieldType::Double),
                      MakeConstant(Value::Double(literal + tolerance), FieldType::Double)};
    return made;
}

}  // namespace

ExpressionRef ByGeneralText(Operator op, const ExpressionRef& left, const ExpressionRef& right) {
    const bool columnFirst = left->kind == Kind::Column;
    const ExpressionRef& column = columnFirst ? left : right;
    const ExpressionRef& literal = columnFirst ? right : left;
    if (column->kind != Kind::Column || !IsNumberOrDate(*literal)) return nullptr;
    const FieldType type = column->type.Type;
    if (type != FieldType::Single && type != FieldType::Double && type != FieldType::Date) return nullptr;

    const double number = NumberOf(literal->constant);
    if (op == Operator::Equal || op == Operator::NotEqual) {
        const double tolerance = Tolerance(type, number);
        if (tolerance > 0) return MakeNear(column, number, tolerance, op == Operator::NotEqual);
    }
    const auto rounded = static_cast<double>(static_cast<float>(number));
    if (type != FieldType::Single || rounded == number || !std::isfinite(rounded)) return nullptr;
    ExpressionRef single = MakeConstant(Value::Double(rounded), FieldType::Double);
    return columnFirst ? MakeOperation(op, column, std::move(single)) : MakeOperation(op, std::move(single), column);
}

}  // namespace quillform::sql
