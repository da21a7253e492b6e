#pragma once

#include <string>

#include "data/sql/CheckedTree.h"

namespace quillform::sql {

/// Types as far as comparing and converting goes.
enum class TypeFamily { Text, Number, Date, Truth, Bytes };
TypeFamily FamilyOf(FieldType type);
inline TypeFamily FamilyOf(const CheckedExpression& expression) { return FamilyOf(expression.type.Type); }
inline bool IsText(const CheckedExpression& expression) { return FamilyOf(expression) == TypeFamily::Text; }

/// A result type with the size that goes with it. Text has 255 characters.
Field TypeOf(FieldType type);
/// Type of `left op right` for arithmetic.
FieldType ArithmeticType(Operator op, FieldType left, FieldType right);
/// Type in which both can be given, for the branches of IIf and for unions.
FieldType CommonType(FieldType left, FieldType right);

ExpressionRef MakeNull();
ExpressionRef MakeConstant(Value value, FieldType type);
/// A Long where the number is one, else a Double.
ExpressionRef MakeNumber(double number);
/// A node of one operand that has a type of its own.
ExpressionRef MakeConversion(CheckedExpression::Kind kind, ExpressionRef operand, FieldType type);

/// How a sentence names an expression: "the Date column [Orders].[Ordered]", "the text 'x'", "a number".
std::string Described(const CheckedExpression& expression);

/// Conversions of the dialect. `currentYear` completes dates. RunTimeError DataTypeMismatch where there is none.
ExpressionRef AsText(ExpressionRef expression);
ExpressionRef AsNumber(ExpressionRef expression, int currentYear);
ExpressionRef AsDate(ExpressionRef expression, int currentYear);
/// Something that is true or false: a Boolean or a number.
ExpressionRef AsCondition(ExpressionRef expression);
/// For a column that is given the value.
ExpressionRef AsType(ExpressionRef expression, const Field& field, int currentYear);

/// Makes two sides comparable: a text literal becomes a constant of the other side's type.
/// RunTimeError DataTypeMismatch where they can't be compared.
void MakeComparable(ExpressionRef& left, ExpressionRef& right, int currentYear);

}  // namespace quillform::sql
