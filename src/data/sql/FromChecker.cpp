// The FROM clause of the select checker.

#include "data/sql/SelectChecker.h"
#include "data/sql/TypeRules.h"
#include "platform/Text.h"

namespace quillform::sql {

using Kind = CheckedExpression::Kind;

void SelectChecker::CheckFrom(const syntax::Select& select) {
    // Conditions are checked once all sources stand, so that a name outside a join can be told from an unknown one.
    for (const auto& table : select.from) AddTables(*table);
    std::size_t first = 0;
    for (const auto& table : select.from) checked_->from.push_back(LeftNested(MakeFrom(*table, first)));
}

void SelectChecker::AddSource(CheckedSource source) {
    for (const CheckedSource& before : checked_->sources)
        if (EqualCaseBlind(before.name, source.name))
            throw RunTimeError(
                ErrorNumber::SameTableTwice,
                "The statement can't join more than one table with the same name (" + source.name + ").");
    checked_->sources.push_back(std::move(source));
}

void SelectChecker::AddTables(const syntax::TableExpression& table) {
    if (table.left) {
        AddTables(*table.left);
        AddTables(*table.right);
        return;
    }
    if (!table.select) return AddSource(checker_.SourceOf(checker_.TableNamed(table.table), table.alias));
    CheckedSource source;
    source.name = table.alias;
    source.select = checker_.CheckSelect(*table.select, nullptr);
    for (const CheckedColumn& column : source.select->columns) source.fields.push_back(column.field);
    AddSource(std::move(source));
}

std::shared_ptr<const CheckedFrom> SelectChecker::MakeFrom(const syntax::TableExpression& table, std::size_t& next) {
    auto from = std::make_shared<CheckedFrom>();
    if (!table.left) {
        from->source = static_cast<int>(next++);
        return from;
    }
    Scope scope = MakeScope(Clause::Join);
    scope.first = next;
    from->left = MakeFrom(*table.left, next);
    from->right = MakeFrom(*table.right, next);
    scope.end = next;
    from->on = AsCondition(ExpressionChecker(scope, checker_.currentYear_, nested_).Check(*table.on));
    from->outer = table.join != syntax::JoinKind::Inner;
    if (table.join == syntax::JoinKind::Right) std::swap(from->left, from->right);
    return from;
}

namespace {

using FromRef = std::shared_ptr<const CheckedFrom>;

bool Holds(const CheckedFrom& from, int source) {
    if (from.source >= 0) return from.source == source;
    return Holds(*from.left, source) || Holds(*from.right, source);
}

/// Whether the expression names a column of the sources below `from`. Sub-selects could name any.
bool Mentions(const CheckedExpression& expression, const CheckedFrom& from) {
    if (expression.select) return true;
    if (expression.kind == Kind::Column && expression.outer == 0 && Holds(from, expression.source)) return true;
    for (const ExpressionRef& operand : expression.operands)
        if (Mentions(*operand, from)) return true;
    return false;
}

/// Whether the condition can't be true where all columns of `from` are Null: one of its ANDed parts compares such a
/// column itself.
bool RejectsNull(const CheckedExpression& condition, const CheckedFrom& from) {
    if (condition.kind != Kind::Operation) return false;
    switch (condition.op) {
        case Operator::And:
            return RejectsNull(*condition.operands[0], from) || RejectsNull(*condition.operands[1], from);
        case Operator::Equal:
        case Operator::NotEqual:
        case Operator::Less:
        case Operator::LessOrEqual:
        case Operator::Greater:
        case Operator::GreaterOrEqual:
            for (const ExpressionRef& operand : condition.operands)
                if (operand->kind == Kind::Column && Mentions(*operand, from)) return true;
            return false;
        default:
            return false;
    }
}

FromRef MakeJoin(bool outer, FromRef left, FromRef right, ExpressionRef on) {
    auto made = std::make_shared<CheckedFrom>();
    made->outer = outer;
    made->left = std::move(left);
    made->right = std::move(right);
    made->on = std::move(on);
    return made;
}

/// X join (Y join Z): whether it equals (X join Y) join Z with each condition kept.
bool CanTurn(const CheckedFrom& from) {
    const CheckedFrom& inner = *from.right;
    if (inner.source >= 0 || Mentions(*from.on, *inner.right)) return false;
    if (!from.outer) return true;
    return inner.outer && RejectsNull(*inner.on, *inner.left);
}

}  // namespace

FromRef LeftNested(FromRef from) {
    if (from->source >= 0) return from;
    FromRef left = LeftNested(from->left);
    FromRef right = LeftNested(from->right);
    FromRef joined = MakeJoin(from->outer, std::move(left), std::move(right), from->on);
    if (!CanTurn(*joined)) return joined;
    const CheckedFrom& inner = *joined->right;
    return MakeJoin(inner.outer, LeftNested(MakeJoin(joined->outer, joined->left, inner.left, joined->on)), inner.right,
                    inner.on);
}

}  // namespace quillform::sql
