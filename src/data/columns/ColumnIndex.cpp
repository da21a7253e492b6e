#include "data/columns/ColumnIndex.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "data/collation/TextOrder.h"

namespace quillform::data {
namespace {

constexpr std::uint32_t noGroup = 0xFFFFFFFF;

std::size_t Spread(std::uint64_t key) {
    key ^= key >> 32;
    key *= 0x9E3779B97F4A7C15ULL;
    return static_cast<std::size_t>(key ^ (key >> 29));
}

bool IsWholeKind(ValueKind kind) { return kind == ValueKind::Boolean || kind == ValueKind::Integer; }

std::int64_t WholeNumberAt(const Column& column, RowPosition row) {
    const std::int64_t number = column.Whole(row);
    return column.Kind() == ValueKind::Boolean && number != 0 ? -1 : number;
}

}  // namespace

std::uint64_t EqualityKey(std::int64_t number) { return static_cast<std::uint64_t>(number); }

std::uint64_t EqualityKey(double number) {
    constexpr double limit = 9.2e18;
    if (number > -limit && number < limit && std::trunc(number) == number)
        return static_cast<std::uint64_t>(static_cast<std::int64_t>(number));
    // Fractions get bits that no whole number of a real table has.
    return std::bit_cast<std::uint64_t>(number) ^ 0x8000000000000000ULL;
}

std::uint64_t EqualityKeyAt(const Column& column, RowPosition row) {
    if (IsWholeKind(column.Kind())) return EqualityKey(WholeNumberAt(column, row));
    return EqualityKey(column.Number(row));
}

ColumnIndex::ColumnIndex(std::shared_ptr<const Column> column) : column_(std::move(column)) {
    isText_ = ClassOf(column_->Kind()) == CompareClass::Text;
    if (!isText_ && IsWholeKind(column_->Kind()) && BuildDense()) return;
    BuildHashed();
}

bool ColumnIndex::BuildDense() {
    const auto size = static_cast<RowPosition>(column_->Size());
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    std::int64_t most = std::numeric_limits<std::int64_t>::min();
    for (RowPosition row = 0; row < size; ++row) {
        if (column_->IsNull(row)) continue;
        const std::int64_t number = WholeNumberAt(*column_, row);
        least = std::min(least, number);
        most = std::max(most, number);
    }
    if (least > most) return false;
    const std::uint64_t range = static_cast<std::uint64_t>(most) - static_cast<std::uint64_t>(least);
    if (range > std::uint64_t{size} * 4 + 1024) return false;
    dense_ = true;
    least_ = least;
    std::vector<std::uint32_t> groupOfRow(size, noGroup);
    for (RowPosition row = 0; row < size; ++row)
        if (!column_->IsNull(row)) groupOfRow[row] = static_cast<std::uint32_t>(WholeNumberAt(*column_, row) - least);
    Scatter(groupOfRow, static_cast<std::size_t>(range) + 1);
    for (std::size_t group = 0; group < GroupSlots(); ++group) groups_ += starts_[group] != starts_[group + 1];
    return true;
}

void ColumnIndex::BuildHashed() {
    const auto size = static_cast<RowPosition>(column_->Size());
    slots_.assign(std::size_t{1024}, 0);
    std::vector<std::uint32_t> groupOfRow(size, noGroup);
    for (RowPosition row = 0; row < size; ++row) {
        if (column_->IsNull(row)) continue;
        const std::uint64_t hash = isText_ ? collation::Hash(column_->Text(row)) : EqualityKeyAt(*column_, row);
        groupOfRow[row] = GroupOf(hash, row);
    }
    groups_ = groupHash_.size();
    Scatter(groupOfRow, groups_);
}

std::uint32_t ColumnIndex::GroupOf(std::uint64_t hash, RowPosition row) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = Spread(hash) & mask;
    for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
        const std::uint32_t group = slots_[slot] - 1;
        if (groupHash_[group] != hash) continue;
        if (!isText_ || collation::Equal(column_->Text(groupFirst_[group]), column_->Text(row))) return group;
    }
    const auto group = static_cast<std::uint32_t>(groupHash_.size());
    slots_[slot] = group + 1;
    groupHash_.push_back(hash);
    if (isText_) groupFirst_.push_back(row);
    if (groupHash_.size() * 2 > slots_.size()) Grow();
    return group;
}

void ColumnIndex::Grow() {
    slots_.assign(slots_.size() * 4, 0);
    const std::size_t mask = slots_.size() - 1;
    for (std::uint32_t group = 0; group < groupHash_.size(); ++group) {
        std::size_t slot = Spread(groupHash_[group]) & mask;
        while (slots_[slot] != 0) slot = (slot + 1) & mask;
        slots_[slot] = group + 1;
    }
}

void ColumnIndex::Scatter(const std::vector<std::uint32_t>& groupOfRow, std::size_t groupSlots) {
    starts_.assign(groupSlots + 1, 0);
    for (const std::uint32_t group : groupOfRow)
        if (group != noGroup) ++starts_[group + 1];
    for (std::size_t group = 0; group < groupSlots; ++group) starts_[group + 1] += starts_[group];
    rows_.resize(starts_.back());
    std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
    for (RowPosition row = 0; row < groupOfRow.size(); ++row)
        if (groupOfRow[row] != noGroup) rows_[next[groupOfRow[row]]++] = row;
}

std::span<const RowPosition> ColumnIndex::FindKey(std::uint64_t key) const {
    if (dense_) {
        const std::uint64_t group = key - static_cast<std::uint64_t>(least_);
        return group < GroupSlots() ? Group(static_cast<std::size_t>(group)) : std::span<const RowPosition>{};
    }
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = Spread(key) & mask; slots_[slot] != 0; slot = (slot + 1) & mask)
        if (groupHash_[slots_[slot] - 1] == key) return Group(slots_[slot] - 1);
    return {};
}

std::span<const RowPosition> ColumnIndex::FindText(std::string_view text) const {
    const std::uint64_t hash = collation::Hash(text);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = Spread(hash) & mask; slots_[slot] != 0; slot = (slot + 1) & mask) {
        const std::uint32_t group = slots_[slot] - 1;
        if (groupHash_[group] == hash && collation::Equal(column_->Text(groupFirst_[group]), text)) return Group(group);
    }
    return {};
}

std::span<const RowPosition> ColumnIndex::FindAt(const Column& other, RowPosition row) const {
    if (other.IsNull(row)) return {};
    return isText_ ? FindText(other.Text(row)) : FindKey(EqualityKeyAt(other, row));
}

}  // namespace quillform::data
