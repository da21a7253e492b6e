#pragma once

#include <memory>
#include <span>
#include <vector>

#include "data/direct/Plan.h"

namespace quillform::data::direct {

/// The tables of a plan as they are now, with the columns that the plan looks at decoded.
class Tables {
public:
    Tables(const Plan& plan, TableCache& cache);

    CachedTable& At(int source) const { return *tables_[static_cast<std::size_t>(source)]; }
    std::shared_ptr<const Column> Get(const Operand& operand) const { return At(operand.source).Get(operand.view); }

private:
    std::vector<std::shared_ptr<CachedTable>> tables_;
};

/// A condition bound to decoded columns.
class RowFilter {
public:
    RowFilter(const Condition& condition, const Tables& tables);

    /// `row(source)` gives the source's row position, or noRow.
    template <class Row>
    bool Accepts(const Row& row) const {
        return Evaluate(row) == Truth::True;
    }

private:
    enum class Truth : signed char { False, True, Unknown };

    static Truth Of(bool truth) { return truth ? Truth::True : Truth::False; }

    template <class Row>
    Truth Evaluate(const Row& row) const {
        switch (condition_.kind) {
            case Condition::Kind::And:
                return Combine(row, Truth::False);
            case Condition::Kind::Or:
                return Combine(row, Truth::True);
            case Condition::Kind::Not: {
                const Truth part = parts_[0].Evaluate(row);
                return part == Truth::Unknown ? part : Of(part == Truth::False);
            }
            case Condition::Kind::WithConstant:
                return CompareConstant(row(condition_.left.source));
            case Condition::Kind::WithColumn:
                return CompareColumns(row(condition_.left.source), row(condition_.right.source));
            case Condition::Kind::Like:
                return MatchPattern(row(condition_.left.source));
            case Condition::Kind::IsNull:
                return Of(left_->IsNull(row(condition_.left.source)));
            case Condition::Kind::Constant:
                return condition_.isNull ? Truth::Unknown : Of(condition_.number != 0);
        }
        return Truth::Unknown;
    }

    /// The first part that is `decisive` decides; else one that is unknown.
    template <class Row>
    Truth Combine(const Row& row, Truth decisive) const {
        bool unknown = false;
        for (const RowFilter& part : parts_) {
            const Truth truth = part.Evaluate(row);
            if (truth == decisive) return decisive;
            unknown = unknown || truth == Truth::Unknown;
        }
        return unknown ? Truth::Unknown : Of(decisive == Truth::False);
    }

    Truth CompareConstant(RowPosition row) const;
    Truth CompareColumns(RowPosition left, RowPosition right) const;
    Truth MatchPattern(RowPosition row) const;
    Truth Outcome(int order) const;

    const Condition& condition_;
    std::vector<RowFilter> parts_;
    std::shared_ptr<const Column> left_;
    std::shared_ptr<const Column> right_;
};

}  // namespace quillform::data::direct
