#include "data/direct/Relation.h"

#include <algorithm>
#include <optional>

#include "data/collation/TextOrder.h"

namespace quillform::data::direct {
namespace {

/// Which rows of a relation come from a table's row.
class RowsByPosition {
public:
    RowsByPosition(const std::vector<RowPosition>& positions, std::size_t tableRows) : starts_(tableRows + 1, 0) {
        for (const RowPosition position : positions)
            if (position != noRow) ++starts_[position + 1];
        for (std::size_t i = 0; i < tableRows; ++i) starts_[i + 1] += starts_[i];
        rows_.resize(starts_.back());
        std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
        for (std::uint32_t row = 0; row < positions.size(); ++row)
            if (positions[row] != noRow) rows_[next[positions[row]]++] = row;
    }

    std::span<const RowPosition> Of(RowPosition position) const {
        return std::span(rows_).subspan(starts_[position], starts_[position + 1] - starts_[position]);
    }

private:
    std::vector<std::uint32_t> starts_;
    std::vector<RowPosition> rows_;
};

/// The equalities behind the first, which is answered by an index.
class Rest {
public:
    Rest(std::span<const Equality> equalities, const Tables& tables) {
        for (const Equality& equality : equalities.subspan(1))
            checks_.push_back({equality, tables.Get(equality.left), tables.Get(equality.right)});
    }
    bool Holds(const Relation& left, std::size_t leftRow, const Relation& right, std::size_t rightRow) const {
        return std::ranges::all_of(checks_, [&](const Check& check) {
            return Equal(check, left.Of(check.equality.left.source)[leftRow],
                         right.At(check.equality.right.source, rightRow));
        });
    }

private:
    struct Check {
        Equality equality;
        std::shared_ptr<const Column> left;
        std::shared_ptr<const Column> right;
    };
    static bool Equal(const Check& check, RowPosition left, RowPosition right) {
        if (check.left->IsNull(left) || check.right->IsNull(right)) return false;
        if (check.equality.left.compareClass == CompareClass::Text)
            return collation::Equal(check.left->Text(left), check.right->Text(right));
        return EqualityKeyAt(*check.left, left) == EqualityKeyAt(*check.right, right);
    }
    std::vector<Check> checks_;
};

void CheckCount(std::size_t count) {
    if (count >= noRow) throw RunTimeError(ErrorNumber::QueryTooComplex, "The statement gives too many rows.");
}

}  // namespace

Relation Relation::WholeTable(std::size_t sources, int source, std::size_t count) {
    Relation relation(sources);
    relation.Set(source, {});
    relation.count_ = count;
    relation.isWholeTable_ = true;
    return relation;
}

void Relation::Set(int source, std::vector<RowPosition> rows) {
    count_ = rows.size();
    sources_ |= std::uint64_t{1} << source;
    rows_[static_cast<std::size_t>(source)] = std::move(rows);
}

void Relation::Choose(std::span<const RowPosition> rows) {
    for (std::size_t source = 0; source < rows_.size(); ++source) {
        if (!Has(static_cast<int>(source))) continue;
        std::vector<RowPosition> chosen(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) chosen[i] = rows_[source][rows[i]];
        rows_[source].swap(chosen);
    }
    count_ = rows.size();
}

void Relation::Keep(std::span<const RowFilter> filters) {
    if (filters.empty()) return;
    std::vector<RowPosition> kept;
    for (std::size_t row = 0; row < count_; ++row) {
        const auto position = [&](int source) { return rows_[static_cast<std::size_t>(source)][row]; };
        if (std::ranges::all_of(filters, [&](const RowFilter& filter) { return filter.Accepts(position); }))
            kept.push_back(static_cast<RowPosition>(row));
    }
    if (kept.size() != count_) Choose(kept);
}

Relation Join(const Relation& left, const Relation& right, std::span<const Equality> equalities, bool outer,
              const Tables& tables) {
    const Equality& first = equalities.front();
    const std::shared_ptr<const Column> keys = tables.Get(first.left);
    const ColumnIndex& index = tables.At(first.right.source).Index(first.right.view);
    std::optional<RowsByPosition> rightRows;
    if (!right.isWholeTable_) rightRows.emplace(right.Of(first.right.source), tables.At(first.right.source).RowCount());
    const Rest rest(equalities, tables);
    const std::vector<RowPosition>& leftKeys = left.Of(first.left.source);

    std::vector<RowPosition> fromLeft;
    std::vector<RowPosition> fromRight;
    fromLeft.reserve(left.count_);
    fromRight.reserve(left.count_);
    std::vector<RowPosition> partners;
    for (RowPosition row = 0; row < left.count_; ++row) {
        const std::size_t before = fromLeft.size();
        const auto add = [&](RowPosition partner) {
            if (!rest.Holds(left, row, right, partner)) return;
            fromLeft.push_back(row);
            fromRight.push_back(partner);
        };
        const std::span<const RowPosition> found = index.FindAt(*keys, leftKeys[row]);
        if (!rightRows) {
            for (const RowPosition position : found) add(position);
        } else {
            partners.clear();
            for (const RowPosition position : found) {
                const auto rows = rightRows->Of(position);
                partners.insert(partners.end(), rows.begin(), rows.end());
            }
            if (found.size() > 1) std::ranges::sort(partners);
            for (const RowPosition partner : partners) add(partner);
        }
        if (outer && fromLeft.size() == before) {
            fromLeft.push_back(row);
            fromRight.push_back(noRow);
        }
        CheckCount(fromLeft.size());
    }

    Relation joined(left.rows_.size());
    for (int source = 0; source < static_cast<int>(left.rows_.size()); ++source) {
        if (!left.Has(source) && !right.Has(source)) continue;
        const Relation& from = left.Has(source) ? left : right;
        const std::vector<RowPosition>& by = left.Has(source) ? fromLeft : fromRight;
        std::vector<RowPosition> rows(by.size());
        for (std::size_t i = 0; i < by.size(); ++i) rows[i] = by[i] == noRow ? noRow : from.At(source, by[i]);
        joined.Set(source, std::move(rows));
    }
    return joined;
}

}  // namespace quillform::data::direct
