#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "data/columns/SpillStore.h"
#include "model/DataAccess.h"
#include "platform/Value.h"

namespace quillform::data {

/// Position of a row in a decoded table or result, from 0 in storage order.
using RowPosition = std::uint32_t;
/// Stands for the row of Nulls that an outer join adds.
constexpr RowPosition noRow = 0xFFFFFFFF;

/// The kind of value that a column of this type gives.
ValueKind KindOf(FieldType type);

/// How values of a kind are compared: as numbers, by the collation, byte by byte.
enum class CompareClass { Number, Text, Bytes };
CompareClass ClassOf(ValueKind kind);

/// The values of one column, packed and typed, in blocks of `blockRows` rows: any value is reached in constant time and
/// without conversion. Immutable, so that caches and record sets share it. Whole numbers take the bytes that the widest
/// of their block needs; a block without Nulls has no Null bits.
class Column {
public:
    static constexpr unsigned blockShift = 14;
    static constexpr std::size_t blockRows = std::size_t{1} << blockShift;

    ValueKind Kind() const { return kind_; }
    std::size_t Size() const { return size_; }

    /// The text in the view lives as long as the column.
    ValueView At(RowPosition row) const;
    bool IsNull(RowPosition row) const;
    /// Value as a number for comparing: Boolean true is -1, Currency the amount. 0 for Null.
    double Number(RowPosition row) const;
    /// Boolean, Integer, Currency as they are kept.
    std::int64_t Whole(RowPosition row) const;
    /// Texts, bytes, Decimal digits. Empty for Null.
    std::string_view Text(RowPosition row) const;

    /// Ask for the memory of a row that will be looked at soon, so that walking rows in another order than they lie
    /// doesn't wait for each: first the fixed part, some rows later (it is read for this) the text.
    void PrefetchFixed(RowPosition row) const;
    void PrefetchText(RowPosition row) const;

private:
    friend class ColumnBuilder;
    struct Block {
        Chunk memory;
        const std::byte* fixed = nullptr;  // numbers, or 32-bit ends of the texts in `texts`
        const char* texts = nullptr;
        const std::uint64_t* nulls = nullptr;  // a set bit is a Null; no array where there is none
        std::uint8_t width = 0;                // bytes of one whole number
        std::uint8_t stride = 0;               // bytes from one row's fixed part to the next
    };

    static bool NullBit(const Block& block, std::size_t index) {
        return block.nulls && (block.nulls[index >> 6] >> (index & 63) & 1);
    }
    static std::int64_t WholeIn(const Block& block, std::size_t index);
    static std::string_view TextIn(const Block& block, std::size_t index);
    double RealIn(const Block& block, std::size_t index) const;

    ValueKind kind_ = ValueKind::Null;
    std::size_t size_ = 0;
    std::vector<Block> blocks_;
};

/// Fills a column, value by value.
class ColumnBuilder {
public:
    ColumnBuilder(ValueKind kind, std::shared_ptr<SpillStore> store);

    /// Appends a value of the column's kind or Null. A value of another kind is converted by its number or text.
    void Append(const ValueView& value);
    std::size_t Size() const { return column_.size_; }
    /// The builder is empty afterwards.
    std::shared_ptr<const Column> Finish();

private:
    void AppendBytes(std::string_view bytes);
    void FinishBlock();
    void PackWhole(std::string& out, Column::Block& block) const;
    void Put(std::string& out, const void* bytes, std::size_t size) const;

    std::shared_ptr<SpillStore> store_;
    Column column_;
    std::size_t inBlock_ = 0;
    bool hasNulls_ = false;
    std::vector<std::uint64_t> nulls_;
    std::vector<std::int64_t> whole_;
    std::vector<double> real_;
    std::vector<float> single_;
    std::vector<std::uint32_t> ends_;
    std::string texts_;
    std::string scratch_;
};

}  // namespace quillform::data
