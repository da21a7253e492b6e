#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "data/columns/Column.h"

namespace quillform::data {

/// A number in the form in which equal numbers are equal bits, whatever kind they came from.
std::uint64_t EqualityKey(double number);
std::uint64_t EqualityKey(std::int64_t number);
/// Key of a value of class Number in a column. The row must not be Null.
std::uint64_t EqualityKeyAt(const Column& column, RowPosition row);

/// Finds the rows of a column that are equal to a value: numbers as numbers, texts by the collation. Nulls are equal to
/// nothing and aren't in it. Built in one pass, kept as long as the column. Not for columns of class Bytes.
class ColumnIndex {
public:
    explicit ColumnIndex(std::shared_ptr<const Column> column);

    /// Rows in ascending order; empty where there is none.
    std::span<const RowPosition> FindKey(std::uint64_t key) const;
    std::span<const RowPosition> FindText(std::string_view text) const;
    /// The rows equal to the value in `row` of `other`, a column of the same class; empty for Null.
    std::span<const RowPosition> FindAt(const Column& other, RowPosition row) const;

    /// Number of different values.
    std::size_t Groups() const { return groups_; }
    std::size_t Rows() const { return rows_.size(); }
    /// Rows of the group-th value, in order of first appearance (or of the numbers, where they lie dense).
    std::span<const RowPosition> Group(std::size_t group) const {
        return std::span(rows_).subspan(starts_[group], starts_[group + 1] - starts_[group]);
    }
    std::size_t GroupSlots() const { return starts_.size() - 1; }

private:
    bool BuildDense();
    void BuildHashed();
    void Scatter(const std::vector<std::uint32_t>& groupOfRow, std::size_t groupSlots);
    std::uint32_t GroupOf(std::uint64_t hash, RowPosition row);
    void Grow();

    std::shared_ptr<const Column> column_;
    bool isText_ = false;
    bool dense_ = false;  // whole numbers of a narrow range: the number less `least_` is the group
    std::int64_t least_ = 0;
    std::size_t groups_ = 0;
    std::vector<std::uint32_t> slots_;      // open addressing; group + 1, 0 is free
    std::vector<std::uint64_t> groupHash_;  // numbers: the key itself; texts: the collation's hash
    std::vector<RowPosition> groupFirst_;
    std::vector<std::uint32_t> starts_;
    std::vector<RowPosition> rows_;
};

}  // namespace quillform::data
