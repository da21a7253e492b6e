#pragma once

#include <span>
#include <vector>

#include "data/direct/RowFilter.h"

namespace quillform::data::direct {

/// Rows put together from several sources: for each row and source the position in the source's table.
class Relation {
public:
    explicit Relation(std::size_t sources) : rows_(sources) {}
    /// All rows of one source's table, without a list of them: good for the right side of a join only.
    static Relation WholeTable(std::size_t sources, int source, std::size_t count);

    std::size_t Count() const { return count_; }
    bool Has(int source) const { return sources_ >> source & 1; }
    const std::vector<RowPosition>& Of(int source) const { return rows_[static_cast<std::size_t>(source)]; }
    RowPosition At(int source, std::size_t row) const {
        return isWholeTable_ ? static_cast<RowPosition>(row) : rows_[static_cast<std::size_t>(source)][row];
    }
    std::vector<RowPosition> Take(int source) { return std::move(rows_[static_cast<std::size_t>(source)]); }

    void Set(int source, std::vector<RowPosition> rows);
    /// Puts the rows into another order, or leaves some out.
    void Choose(std::span<const RowPosition> rows);
    /// Keeps the rows that all filters accept.
    void Keep(std::span<const RowFilter> filters);

    friend Relation Join(const Relation& left, const Relation& right, std::span<const Equality> equalities, bool outer,
                         const Tables& tables);

private:
    std::vector<std::vector<RowPosition>> rows_;
    std::uint64_t sources_ = 0;
    std::size_t count_ = 0;
    bool isWholeTable_ = false;
};

/// The rows of `left` with their partners of `right`, by all equalities (at least one); an outer join keeps rows of
/// `left` without one. In the order of `left`, and for each row of it in the order of `right`.
Relation Join(const Relation& left, const Relation& right, std::span<const Equality> equalities, bool outer,
              const Tables& tables);

}  // namespace quillform::data::direct
