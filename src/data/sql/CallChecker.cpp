// Function calls of the expression checker.

#include <algorithm>

#include "data/sql/ExpressionChecker.h"
#include "data/sql/TypeRules.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

namespace {

void CheckCount(const FunctionEntry& entry, std::size_t count) {
    const int given = static_cast<int>(count);
    if (given >= entry.least && (entry.most < 0 || given <= entry.most)) return;
    std::string wanted = std::to_string(entry.least);
    if (entry.most < 0)
        wanted += " or more";
    else if (entry.most > entry.least)
        wanted += " to " + std::to_string(entry.most);
    throw RunTimeError(ErrorNumber::SyntaxInExpression, "Wrong number of arguments: " + std::string(entry.name) +
                                                            " takes " + wanted + ", but " + std::to_string(given) +
                                                            (given == 1 ? " is given." : " are given."));
}

std::shared_ptr<CheckedExpression> MakeNode(Kind kind, FieldType type) {
    auto made = std::make_shared<CheckedExpression>();
    made->kind = kind;
    made->type = TypeOf(type);
    return made;
}

FieldType WholeOf(FieldType type) {
    return type == FieldType::Boolean || type == FieldType::Byte ? FieldType::Integer : type;
}

FieldType SumType(FieldType type) {
    return type == FieldType::Currency || type == FieldType::Decimal ? type : FieldType::Double;
}

/// A column's own marks don't pass through a function.
Field Unmarked(Field type) {
    type.Name.clear();
    type.AutoNumber = false;
    type.Required = false;
    return type;
}

Field ResultOf(const FunctionEntry& entry, const std::vector<ExpressionRef>& arguments) {
    if (arguments.empty()) return TypeOf(entry.type);
    const Field& first = arguments.front()->type;
    switch (entry.rule) {
        case ResultRule::Fixed:
            return TypeOf(entry.type);
        case ResultRule::NumberOfFirst:
            return TypeOf(WholeOf(first.Type));
        case ResultRule::FirstAsItIs:
            return Unmarked(first);
        case ResultRule::TextOfFirst:
            return TypeOf(first.Type == FieldType::Memo ? FieldType::Memo : FieldType::Text);
        case ResultRule::Sum:
            return TypeOf(SumType(first.Type));
        case ResultRule::Average:
            return TypeOf(first.Type == FieldType::Currency ? FieldType::Currency : FieldType::Double);
    }
    return TypeOf(entry.type);
}

}  // namespace

ExpressionRef ExpressionChecker::CheckCall(const Syntax& expression) {
    const FunctionEntry* entry = FindFunction(expression.text);
    if (!entry)
        throw RunTimeError(ErrorNumber::UnknownFunction,
                           "The function " + expression.text + " in the statement is not known.");
    CheckCount(*entry, expression.operands.size());
    if (entry->aggregate) return CheckAggregate(expression, *entry);
    Arguments arguments;
    for (const auto& operand : expression.operands) arguments.push_back(CheckPart(*operand));
    return entry->special == SpecialFunction::None ? MakeCall(*entry, std::move(arguments))
                                                   : CheckSpecial(*entry, std::move(arguments));
}

void ExpressionChecker::RefuseAggregate(const Syntax& expression) const {
    const std::string function = "the aggregate function " + expression.text;
    if (inAggregate_)
        throw RunTimeError(ErrorNumber::NestedAggregate,
                           "Aggregate functions can't stand in one another, as " + function + " does.");
    switch (scope_.clause) {
        case Clause::Where:
            throw RunTimeError(ErrorNumber::AggregateInWhere, "A WHERE clause can't hold " + function + ".");
        case Clause::Join:
            throw RunTimeError(ErrorNumber::AggregateInJoin, "A join can't hold " + function + ".");
        case Clause::GroupBy:
            throw RunTimeError(ErrorNumber::AggregateInGroupBy, "A GROUP BY clause can't hold " + function + ".");
        case Clause::Values:
            throw RunTimeError(ErrorNumber::NestedAggregate, "A new value can't hold " + function + ".");
        case Clause::Columns:
        case Clause::Having:
        case Clause::OrderBy:
            return;
    }
}

ExpressionRef ExpressionChecker::CheckAggregate(const Syntax& expression, const FunctionEntry& entry) {
    RefuseAggregate(expression);
    auto made = MakeNode(Kind::Aggregate, entry.type);
    made->function = entry.sqlite;
    if (expression.operands[0]->kind == Syntax::Kind::Star) {
        if (entry.sqlite != "count") return CheckPart(*expression.operands[0]);  // refuses it
        return made;
    }
    inAggregate_ = true;
    ExpressionRef argument = CheckPart(*expression.operands[0]);
    inAggregate_ = false;
    // A column of texts can't be summed even where all of them read as numbers.
    if (entry.arguments == "N" && !argument->isNull && (IsText(*argument) || FamilyOf(*argument) == TypeFamily::Bytes))
        throw RunTimeError(ErrorNumber::DataTypeMismatch, "Data types don't match: " + std::string(entry.name) +
                                                              " needs numbers, but is given " + Described(*argument) +
                                                              ".");
    made->operands.push_back(std::move(argument));
    made->type = ResultOf(entry, made->operands);
    return made;
}

ExpressionRef ExpressionChecker::Convert(char letter, ExpressionRef argument) {
    switch (letter) {
        case 'T':
            return AsText(std::move(argument));
        case 'N':
            return AsNumber(std::move(argument), currentYear_);
        case 'D':
            return AsDate(std::move(argument), currentYear_);
        default:
            return argument;
    }
}

ExpressionRef ExpressionChecker::MakeCall(const FunctionEntry& entry, Arguments arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i)
        arguments[i] = Convert(entry.arguments[std::min(i, entry.arguments.size() - 1)], std::move(arguments[i]));
    auto made = MakeNode(Kind::Call, entry.type);
    made->function = entry.sqlite;
    made->type = ResultOf(entry, arguments);
    made->operands = std::move(arguments);
    return made;
}

ExpressionRef ExpressionChecker::CheckSpecial(const FunctionEntry& entry, Arguments arguments) {
    const TypeFamily first = FamilyOf(*arguments[0]);
    const bool text = arguments[0]->isNull || first == TypeFamily::Text;
    switch (entry.special) {
        case SpecialFunction::IIf:
            return MakeIIf(std::move(arguments));
        case SpecialFunction::Nz:
            return MakeNz(std::move(arguments));
        case SpecialFunction::Switch:
            return MakeSwitch(arguments);
        case SpecialFunction::Choose:
            return MakeChoose(arguments);
        case SpecialFunction::InStr:
            return MakeInStr(entry, std::move(arguments));
        case SpecialFunction::Format:
            return MakeFormat(entry, std::move(arguments));
        case SpecialFunction::CStr:
            return AsText(std::move(arguments[0]));
        case SpecialFunction::CBool:
            if (text) return MakeCall(entry, std::move(arguments));
            return AsType(std::move(arguments[0]), TypeOf(FieldType::Boolean), currentYear_);
        case SpecialFunction::IsNumeric:
        case SpecialFunction::IsDate: {
            if (text) return MakeCall(entry, std::move(arguments));
            const bool wanted = entry.special == SpecialFunction::IsDate
                                    ? first == TypeFamily::Date
                                    : first == TypeFamily::Number || first == TypeFamily::Truth;
            if (!wanted) return MakeConstant(Value::Boolean(false), FieldType::Boolean);
            break;
        }
        case SpecialFunction::IsNull:
        case SpecialFunction::None:
            break;
    }
    auto made = MakeNode(Kind::IsNull, FieldType::Boolean);
    made->negated = entry.special != SpecialFunction::IsNull;
    made->operands.push_back(std::move(arguments[0]));
    return made;
}

/// The place to start may be left out in front: InStr([start,] text, wanted[, mode]).
ExpressionRef ExpressionChecker::MakeInStr(const FunctionEntry& entry, Arguments arguments) {
    const bool startGiven = arguments.size() == 4 || (arguments.size() == 3 && !IsText(*arguments[0]));
    if (!startGiven) arguments.insert(arguments.begin(), MakeConstant(Value::Integer(1), FieldType::Long));
    const std::string_view letters = "NTTN";
    for (std::size_t i = 0; i < arguments.size(); ++i) arguments[i] = Convert(letters[i], std::move(arguments[i]));
    auto made = MakeNode(Kind::Call, entry.type);
    made->function = entry.sqlite;
    made->operands = std::move(arguments);
    return made;
}

/// The type goes along behind the mask, because a date and a number look alike in SQLite.
ExpressionRef ExpressionChecker::MakeFormat(const FunctionEntry& entry, Arguments arguments) {
    if (arguments.size() == 1) return AsText(std::move(arguments[0]));
    if (FamilyOf(*arguments[0]) == TypeFamily::Bytes) return AsText(std::move(arguments[0]));  // refuses it
    auto made = MakeNode(Kind::Call, entry.type);
    made->function = entry.sqlite;
    const auto type = static_cast<std::int64_t>(arguments[0]->type.Type);
    made->operands = {arguments[0], AsText(arguments[1]), MakeConstant(Value::Integer(type), FieldType::Long)};
    return made;
}

/// Brings the values of a choice to one type. The values are the operands behind a condition and a last odd one.
ExpressionRef ExpressionChecker::MakeChoice(Kind kind, Arguments operands) {
    const auto isValue = [&](std::size_t i) {
        return kind == Kind::Coalesce || i % 2 == 1 || i + 1 == operands.size();
    };
    const CheckedExpression* first = nullptr;
    FieldType type = FieldType::Text;
    bool alike = true;
    for (std::size_t i = 0; i < operands.size(); ++i) {
        if (!isValue(i) || operands[i]->isNull) continue;
        alike = alike && (!first || operands[i]->type == first->type);
        type = first ? CommonType(type, operands[i]->type.Type) : operands[i]->type.Type;
        if (!first) first = operands[i].get();
    }
    if (!first) return MakeNull();
    auto made = MakeNode(kind, type);
    if (alike) made->type = Unmarked(first->type);
    for (std::size_t i = 0; i < operands.size(); ++i)
        if (isValue(i) && FamilyOf(type) == TypeFamily::Text) operands[i] = AsText(std::move(operands[i]));
    made->operands = std::move(operands);
    return made;
}

ExpressionRef ExpressionChecker::MakeIIf(Arguments arguments) {
    arguments[0] = AsCondition(std::move(arguments[0]));
    if (arguments.size() == 2) arguments.push_back(MakeNull());
    return MakeChoice(Kind::Case, std::move(arguments));
}

ExpressionRef ExpressionChecker::MakeNz(Arguments arguments) {
    if (arguments.size() == 1) {
        const TypeFamily family = FamilyOf(*arguments[0]);
        const bool number = family == TypeFamily::Number || family == TypeFamily::Truth;
        arguments.push_back(number ? MakeConstant(Value::Integer(0), FieldType::Byte)
                                   : MakeConstant(Value::Text({}), FieldType::Text));
    }
    return MakeChoice(Kind::Coalesce, std::move(arguments));
}

ExpressionRef ExpressionChecker::MakeSwitch(const Arguments& arguments) {
    if (arguments.size() % 2 != 0)
        throw RunTimeError(ErrorNumber::SyntaxInExpression,
                           "Wrong number of arguments: Switch takes pairs of a condition and a value.");
    Arguments operands;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        operands.push_back(i % 2 == 0 ? AsCondition(arguments[i]) : arguments[i]);
    operands.push_back(MakeNull());
    return MakeChoice(Kind::Case, std::move(operands));
}

/// Choose(n, first, second, ...): n loses its fraction.
ExpressionRef ExpressionChecker::MakeChoose(const Arguments& arguments) {
    const FunctionEntry& whole = *FindFunction("Int");
    const ExpressionRef index = MakeCall(whole, {arguments[0]});
    Arguments operands;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        auto test = MakeNode(Kind::Operation, FieldType::Boolean);
        test->op = Operator::Equal;
        test->operands = {index, MakeConstant(Value::Integer(static_cast<std::int64_t>(i)), FieldType::Long)};
        operands.push_back(std::move(test));
        operands.push_back(arguments[i]);
    }
    operands.push_back(MakeNull());
    return MakeChoice(Kind::Case, std::move(operands));
}

}  // namespace quillform::sql
