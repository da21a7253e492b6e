#include "data/direct/RowFilter.h"

#include "data/collation/TextOrder.h"
#include "data/columns/LikePattern.h"

namespace quillform::data::direct {
namespace {

void AddViews(const Condition& condition, std::vector<const Operand*>& operands) {
    for (const Condition& part : condition.parts) AddViews(part, operands);
    if (condition.Sources() == 0 || !condition.parts.empty()) return;
    operands.push_back(&condition.left);
    if (condition.kind == Condition::Kind::WithColumn) operands.push_back(&condition.right);
}

void AddViews(const JoinNode& node, std::vector<const Operand*>& operands) {
    for (const Equality& equality : node.equalities) {
        operands.push_back(&equality.left);
        operands.push_back(&equality.right);
    }
    if (node.left) AddViews(*node.left, operands);
    if (node.right) AddViews(*node.right, operands);
}

}  // namespace

Tables::Tables(const Plan& plan, TableCache& cache) {
    for (const std::size_t table : plan.tables) tables_.push_back(cache.Get(table));
    std::vector<const Operand*> operands;
    for (const Condition& condition : plan.conditions) AddViews(condition, operands);
    AddViews(plan.from, operands);
    for (const Operand& operand : plan.columns) operands.push_back(&operand);
    for (const Operand& operand : plan.groupBy) operands.push_back(&operand);
    for (const SortTerm& term : plan.orderBy) operands.push_back(&term.operand);
    for (std::size_t source = 0; source < tables_.size(); ++source) {
        std::vector<int> columns;
        for (const Operand* operand : operands)
            if (static_cast<std::size_t>(operand->source) == source) columns.push_back(operand->view.column);
        tables_[source]->Load(columns);
    }
}

RowFilter::RowFilter(const Condition& condition, const Tables& tables) : condition_(condition) {
    for (const Condition& part : condition.parts) parts_.emplace_back(part, tables);
    if (!condition.parts.empty() || condition.kind == Condition::Kind::Constant) return;
    left_ = tables.Get(condition.left);
    if (condition.kind == Condition::Kind::WithColumn) right_ = tables.Get(condition.right);
}

RowFilter::Truth RowFilter::Outcome(int order) const {
    switch (condition_.op) {
        case sql::Operator::Equal:
            return Of(order == 0);
        case sql::Operator::NotEqual:
            return Of(order != 0);
        case sql::Operator::Less:
            return Of(order < 0);
        case sql::Operator::LessOrEqual:
            return Of(order <= 0);
        case sql::Operator::Greater:
            return Of(order > 0);
        case sql::Operator::GreaterOrEqual:
            return Of(order >= 0);
        default:
            return Truth::Unknown;
    }
}

RowFilter::Truth RowFilter::CompareConstant(RowPosition row) const {
    if (condition_.isNull || left_->IsNull(row)) return Truth::Unknown;
    if (condition_.left.compareClass == CompareClass::Text)
        return Outcome(collation::Compare(left_->Text(row), condition_.text));
    const double number = left_->Number(row);
    return Outcome(number < condition_.number ? -1 : number > condition_.number ? 1 : 0);
}

RowFilter::Truth RowFilter::CompareColumns(RowPosition left, RowPosition right) const {
    if (left_->IsNull(left) || right_->IsNull(right)) return Truth::Unknown;
    if (condition_.left.compareClass == CompareClass::Text)
        return Outcome(collation::Compare(left_->Text(left), right_->Text(right)));
    const double one = left_->Number(left);
    const double other = right_->Number(right);
    return Outcome(one < other ? -1 : one > other ? 1 : 0);
}

RowFilter::Truth RowFilter::MatchPattern(RowPosition row) const {
    if (condition_.isNull || left_->IsNull(row)) return Truth::Unknown;
    return Of(MatchesPattern(left_->Text(row), condition_.text));
}

}  // namespace quillform::data::direct
