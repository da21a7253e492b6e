#include "data/direct/Plan.h"

#include <algorithm>
#include <cmath>

namespace quillform::data::direct {
namespace {

using sql::CheckedExpression;
using sql::CheckedFrom;
using sql::CheckedSelect;
using sql::Operator;
using Kind = CheckedExpression::Kind;

constexpr std::size_t mostSources = 64;

/// Thrown inside this file when a statement turns out to be of another shape; saves asking at every step.
struct OtherShape {};

/// A whole number as an argument of Mid, Left or Right. Numbers that those refuse are left to the other way, which
/// fails.
std::int64_t PieceArgument(const CheckedExpression& argument, std::int64_t least) {
    if (argument.kind != Kind::Constant || argument.isNull || argument.constant.IsNull()) throw OtherShape();
    const double number = NumberOf(argument.constant);
    if (std::trunc(number) != number || number < static_cast<double>(least) || number > 1e9) throw OtherShape();
    return static_cast<std::int64_t>(number);
}

Operand ColumnOperand(const CheckedExpression& expression) {
    if (expression.kind != Kind::Column || expression.outer != 0) throw OtherShape();
    return {expression.source, {expression.column}, ClassOf(KindOf(expression.type.Type))};
}

Operand PieceOperand(const CheckedExpression& call) {
    using Piece = ColumnView::Piece;
    if (call.operands.size() < 2 || call.operands.size() > 3) throw OtherShape();
    Operand operand = ColumnOperand(*call.operands[0]);
    if (KindOf(call.operands[0]->type.Type) != ValueKind::Text) throw OtherShape();
    ColumnView& view = operand.view;
    if (call.function == "qf_mid")
        view.piece = Piece::Mid;
    else if (call.function == "qf_left")
        view.piece = Piece::Left;
    else if (call.function == "qf_right")
        view.piece = Piece::Right;
    else
        throw OtherShape();
    const bool isMid = view.piece == Piece::Mid;
    if (isMid != (call.operands.size() == 3)) throw OtherShape();
    view.first = PieceArgument(*call.operands[1], isMid ? 1 : 0);
    if (isMid) view.length = PieceArgument(*call.operands[2], 0);
    return operand;
}

Operand MakeOperand(const CheckedExpression& expression) {
    return expression.kind == Kind::Call ? PieceOperand(expression) : ColumnOperand(expression);
}

bool IsComparison(Operator op) {
    return op == Operator::Equal || op == Operator::NotEqual || op == Operator::Less || op == Operator::LessOrEqual ||
           op == Operator::Greater || op == Operator::GreaterOrEqual;
}

Operator SidesChanged(Operator op) {
    if (op == Operator::Less) return Operator::Greater;
    if (op == Operator::LessOrEqual) return Operator::GreaterOrEqual;
    if (op == Operator::Greater) return Operator::Less;
    if (op == Operator::GreaterOrEqual) return Operator::LessOrEqual;
    return op;
}

Condition CompareWithConstant(Operator op, Operand operand, const CheckedExpression& constant) {
    Condition condition;
    condition.kind = Condition::Kind::WithConstant;
    condition.op = op;
    condition.left = operand;
    condition.isNull = constant.isNull || constant.constant.IsNull();
    if (condition.isNull) return condition;
    if (operand.compareClass == CompareClass::Bytes || ClassOf(constant.constant.Kind()) != operand.compareClass)
        throw OtherShape();
    if (operand.compareClass == CompareClass::Text)
        condition.text = constant.constant.View().text;
    else
        condition.number = NumberOf(constant.constant);
    return condition;
}

Condition Compare(Operator op, const CheckedExpression& left, const CheckedExpression& right) {
    if (right.kind == Kind::Constant) return CompareWithConstant(op, MakeOperand(left), right);
    if (left.kind == Kind::Constant) return CompareWithConstant(SidesChanged(op), MakeOperand(right), left);
    Condition condition;
    condition.kind = Condition::Kind::WithColumn;
    condition.op = op;
    condition.left = MakeOperand(left);
    condition.right = MakeOperand(right);
    if (condition.left.compareClass == CompareClass::Bytes ||
        condition.left.compareClass != condition.right.compareClass)
        throw OtherShape();
    return condition;
}

Condition Like(const CheckedExpression& text, const CheckedExpression& pattern) {
    Condition condition;
    condition.kind = Condition::Kind::Like;
    condition.left = MakeOperand(text);
    if (condition.left.compareClass != CompareClass::Text || pattern.kind != Kind::Constant) throw OtherShape();
    condition.isNull = pattern.isNull || pattern.constant.IsNull();
    if (!condition.isNull && pattern.constant.Kind() != ValueKind::Text) throw OtherShape();
    condition.text = pattern.constant.View().text;
    return condition;
}

Condition Combined(Condition::Kind kind, std::vector<Condition> parts) {
    Condition condition;
    condition.kind = kind;
    condition.parts = std::move(parts);
    return condition;
}

Condition Negated(bool negated, Condition condition) {
    if (!negated) return condition;
    std::vector<Condition> part;
    part.push_back(std::move(condition));
    return Combined(Condition::Kind::Not, std::move(part));
}

Condition MakeCondition(const CheckedExpression& expression);

Condition MakeOperation(const CheckedExpression& expression) {
    const Operator op = expression.op;
    const auto& operands = expression.operands;
    if (op == Operator::Not) return Negated(true, MakeCondition(*operands[0]));
    if (op == Operator::And || op == Operator::Or) {
        std::vector<Condition> parts;
        for (const auto& operand : operands) parts.push_back(MakeCondition(*operand));
        return Combined(op == Operator::And ? Condition::Kind::And : Condition::Kind::Or, std::move(parts));
    }
    if (op == Operator::Like) return Negated(expression.negated, Like(*operands[0], *operands[1]));
    if (IsComparison(op)) return Compare(op, *operands[0], *operands[1]);
    throw OtherShape();
}

/// A Boolean column by itself.
Condition IsTrue(const CheckedExpression& column) {
    Condition condition;
    condition.kind = Condition::Kind::WithConstant;
    condition.op = Operator::NotEqual;
    condition.left = MakeOperand(column);
    if (condition.left.compareClass != CompareClass::Number) throw OtherShape();
    return condition;
}

Condition MakeCondition(const CheckedExpression& expression) {
    const auto& operands = expression.operands;
    switch (expression.kind) {
        case Kind::Operation:
            return MakeOperation(expression);
        case Kind::Between: {
            std::vector<Condition> parts;
            parts.push_back(Compare(Operator::GreaterOrEqual, *operands[0], *operands[1]));
            parts.push_back(Compare(Operator::LessOrEqual, *operands[0], *operands[2]));
            return Negated(expression.negated, Combined(Condition::Kind::And, std::move(parts)));
        }
        case Kind::InList: {
            std::vector<Condition> parts;
            for (std::size_t i = 1; i < operands.size(); ++i)
                parts.push_back(Compare(Operator::Equal, *operands[0], *operands[i]));
            return Negated(expression.negated, Combined(Condition::Kind::Or, std::move(parts)));
        }
        case Kind::IsNull: {
            Condition condition;
            condition.kind = Condition::Kind::IsNull;
            condition.left = MakeOperand(*operands[0]);
            return Negated(expression.negated, std::move(condition));
        }
        case Kind::ToTruth:
            return IsTrue(*operands[0]);
        case Kind::Column:
            return IsTrue(expression);
        case Kind::Constant: {
            Condition condition;
            condition.isNull = expression.isNull || expression.constant.IsNull();
            if (!condition.isNull && ClassOf(expression.constant.Kind()) != CompareClass::Number) throw OtherShape();
            condition.number = condition.isNull ? 0 : NumberOf(expression.constant);
            return condition;
        }
        default:
            throw OtherShape();
    }
}

/// Takes the parts of an And apart, at any depth.
void AddConjuncts(Condition condition, std::vector<Condition>& out) {
    if (condition.kind != Condition::Kind::And) return out.push_back(std::move(condition));
    for (Condition& part : condition.parts) AddConjuncts(std::move(part), out);
}

bool IsEquality(const Condition& condition) {
    return condition.kind == Condition::Kind::WithColumn && condition.op == Operator::Equal;
}

void AddJoin(const CheckedFrom& from, bool mayBeMissing, JoinNode& node, std::vector<Condition>& conditions);

std::unique_ptr<JoinNode> MakeSide(const CheckedFrom& from, bool mayBeMissing, std::vector<Condition>& conditions) {
    auto node = std::make_unique<JoinNode>();
    AddJoin(from, mayBeMissing, *node, conditions);
    return node;
}

/// `mayBeMissing`: an outer join further up may put Nulls in the place of these rows, so that a condition of a join in
/// here isn't one of the whole statement.
void AddJoin(const CheckedFrom& from, bool mayBeMissing, JoinNode& node, std::vector<Condition>& conditions) {
    node.source = from.source;
    if (from.source >= 0) return;
    node.isOuter = from.outer;
    node.left = MakeSide(*from.left, mayBeMissing, conditions);
    node.right = MakeSide(*from.right, mayBeMissing || from.outer, conditions);
    const std::uint64_t left = node.left->Sources();
    const std::uint64_t right = node.right->Sources();
    std::vector<Condition> conjuncts;
    if (!from.on) throw OtherShape();
    AddConjuncts(MakeCondition(*from.on), conjuncts);
    for (Condition& conjunct : conjuncts) {
        if (IsEquality(conjunct)) {
            const std::uint64_t one = std::uint64_t{1} << conjunct.left.source;
            const std::uint64_t other = std::uint64_t{1} << conjunct.right.source;
            if ((one & left) && (other & right)) {
                node.equalities.push_back({conjunct.left, conjunct.right});
                continue;
            }
            if ((one & right) && (other & left)) {
                node.equalities.push_back({conjunct.right, conjunct.left});
                continue;
            }
        }
        if (node.isOuter || mayBeMissing) throw OtherShape();
        conditions.push_back(std::move(conjunct));
    }
    if (node.equalities.empty()) throw OtherShape();
}

bool Contains(const std::vector<Operand>& operands, const Operand& sought) {
    return std::ranges::find(operands, sought) != operands.end();
}

void AddGrouping(const CheckedSelect& select, Plan& plan) {
    for (const auto& term : select.groupBy) plan.groupBy.push_back(MakeOperand(*term));
    if (select.distinct && select.groupBy.empty()) plan.groupBy = plan.columns;
    if (select.grouped && plan.groupBy.empty()) throw OtherShape();
    if (plan.groupBy.empty()) return;
    for (const Operand& operand : plan.groupBy)
        if (operand.compareClass == CompareClass::Bytes) throw OtherShape();
    for (const Operand& column : plan.columns)
        if (!Contains(plan.groupBy, column)) throw OtherShape();
    for (const SortTerm& term : plan.orderBy)
        if (!Contains(plan.groupBy, term.operand)) throw OtherShape();
}

Plan Build(const CheckedSelect& select) {
    if (select.hasTop || select.distinctRows || select.having || !select.unions.empty() || select.from.size() != 1 ||
        select.sources.size() > mostSources || (select.distinct && select.grouped))
        throw OtherShape();
    Plan plan;
    for (const auto& source : select.sources) {
        if (source.select) throw OtherShape();
        plan.tables.push_back(source.position);
    }
    for (const auto& column : select.columns) plan.columns.push_back(MakeOperand(*column.expression));
    for (const auto& sort : select.orderBy) {
        const auto& expression =
            sort.expression ? sort.expression : select.columns[static_cast<std::size_t>(sort.column)].expression;
        plan.orderBy.push_back({MakeOperand(*expression), sort.descending});
        if (plan.orderBy.back().operand.compareClass == CompareClass::Bytes) throw OtherShape();
    }
    AddGrouping(select, plan);
    AddJoin(*select.from[0], false, plan.from, plan.conditions);
    if (select.where) AddConjuncts(MakeCondition(*select.where), plan.conditions);
    return plan;
}

}  // namespace

std::uint64_t Condition::Sources() const {
    std::uint64_t sources = 0;
    for (const Condition& part : parts) sources |= part.Sources();
    if (kind == Kind::WithConstant || kind == Kind::Like || kind == Kind::IsNull || kind == Kind::WithColumn)
        sources |= std::uint64_t{1} << left.source;
    if (kind == Kind::WithColumn) sources |= std::uint64_t{1} << right.source;
    return sources;
}

std::uint64_t JoinNode::Sources() const {
    return source >= 0 ? std::uint64_t{1} << source : left->Sources() | right->Sources();
}

bool JoinNode::IsInner() const { return source >= 0 || (!isOuter && left->IsInner() && right->IsInner()); }

std::optional<Plan> MakePlan(const sql::CheckedSelect& select) {
    try {
        return Build(select);
    } catch (const OtherShape&) {
        return std::nullopt;
    }
}

}  // namespace quillform::data::direct
