#include "data/columns/Column.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>

#include "platform/RunTimeError.h"

namespace quillform::data {
namespace {

template <class T>
T Load(const std::byte* at, std::size_t index) {
    T value;
    std::memcpy(&value, at + index * sizeof(T), sizeof(T));
    return value;
}

enum class Packing { Whole, Single, Real, Bytes };

Packing PackingOf(ValueKind kind) {
    switch (kind) {
        case ValueKind::Null:
        case ValueKind::Boolean:
        case ValueKind::Integer:
        case ValueKind::Currency:
            return Packing::Whole;
        case ValueKind::Single:
            return Packing::Single;
        case ValueKind::Double:
        case ValueKind::Date:
            return Packing::Real;
        case ValueKind::Decimal:
        case ValueKind::Text:
        case ValueKind::Binary:
        case ValueKind::Guid:
            return Packing::Bytes;
    }
    return Packing::Bytes;
}

std::uint8_t WidthFor(std::int64_t least, std::int64_t most) {
    if (least >= std::numeric_limits<std::int8_t>::min() && most <= std::numeric_limits<std::int8_t>::max()) return 1;
    if (least >= std::numeric_limits<std::int16_t>::min() && most <= std::numeric_limits<std::int16_t>::max()) return 2;
    if (least >= std::numeric_limits<std::int32_t>::min() && most <= std::numeric_limits<std::int32_t>::max()) return 4;
    return 8;
}

template <class Narrow>
void PutNarrowed(const std::vector<std::int64_t>& numbers, std::string& out) {
    const std::size_t at = out.size();
    out.resize(at + numbers.size() * sizeof(Narrow));
    char* to = out.data() + at;
    for (const std::int64_t number : numbers) {
        const auto narrow = static_cast<Narrow>(number);
        std::memcpy(to, &narrow, sizeof narrow);
        to += sizeof narrow;
    }
}

}  // namespace

ValueKind KindOf(FieldType type) {
    switch (type) {
        case FieldType::Boolean:
            return ValueKind::Boolean;
        case FieldType::Byte:
        case FieldType::Integer:
        case FieldType::Long:
            return ValueKind::Integer;
        case FieldType::Currency:
            return ValueKind::Currency;
        case FieldType::Single:
            return ValueKind::Single;
        case FieldType::Double:
            return ValueKind::Double;
        case FieldType::Date:
            return ValueKind::Date;
        case FieldType::Binary:
        case FieldType::LongBinary:
            return ValueKind::Binary;
        case FieldType::Text:
        case FieldType::Memo:
            return ValueKind::Text;
        case FieldType::Guid:
            return ValueKind::Guid;
        case FieldType::Decimal:
            return ValueKind::Decimal;
    }
    return ValueKind::Text;
}

CompareClass ClassOf(ValueKind kind) {
    if (kind == ValueKind::Text || kind == ValueKind::Guid) return CompareClass::Text;
    return kind == ValueKind::Binary ? CompareClass::Bytes : CompareClass::Number;
}

std::int64_t Column::WholeIn(const Block& block, std::size_t index) {
    switch (block.width) {
        case 1:
            return Load<std::int8_t>(block.fixed, index);
        case 2:
            return Load<std::int16_t>(block.fixed, index);
        case 4:
            return Load<std::int32_t>(block.fixed, index);
        default:
            return Load<std::int64_t>(block.fixed, index);
    }
}

std::string_view Column::TextIn(const Block& block, std::size_t index) {
    const std::uint32_t begin = index == 0 ? 0 : Load<std::uint32_t>(block.fixed, index - 1);
    return {block.texts + begin, Load<std::uint32_t>(block.fixed, index) - begin};
}

double Column::RealIn(const Block& block, std::size_t index) const {
    return kind_ == ValueKind::Single ? static_cast<double>(Load<float>(block.fixed, index))
                                      : Load<double>(block.fixed, index);
}

ValueView Column::At(RowPosition row) const {
    ValueView view;
    if (row == noRow) return view;
    const Block& block = blocks_[row >> blockShift];
    const std::size_t index = row & (blockRows - 1);
    if (NullBit(block, index)) return view;
    view.kind = kind_;
    switch (PackingOf(kind_)) {
        case Packing::Whole:
            view.integer = WholeIn(block, index);
            break;
        case Packing::Single:
        case Packing::Real:
            view.real = RealIn(block, index);
            break;
        case Packing::Bytes:
            view.text = TextIn(block, index);
            break;
    }
    return view;
}

bool Column::IsNull(RowPosition row) const {
    return row == noRow || NullBit(blocks_[row >> blockShift], row & (blockRows - 1));
}

double Column::Number(RowPosition row) const {
    if (IsNull(row)) return 0;
    const Block& block = blocks_[row >> blockShift];
    const std::size_t index = row & (blockRows - 1);
    switch (kind_) {
        case ValueKind::Boolean:
            return WholeIn(block, index) != 0 ? -1 : 0;
        case ValueKind::Integer:
            return static_cast<double>(WholeIn(block, index));
        case ValueKind::Currency:
            return static_cast<double>(WholeIn(block, index)) / 10000;
        case ValueKind::Single:
        case ValueKind::Double:
        case ValueKind::Date:
            return RealIn(block, index);
        case ValueKind::Null:
            return 0;
        case ValueKind::Decimal:
        case ValueKind::Text:
        case ValueKind::Binary:
        case ValueKind::Guid:
            return NumberOf(At(row));
    }
    return 0;
}

std::int64_t Column::Whole(RowPosition row) const {
    return IsNull(row) ? 0 : WholeIn(blocks_[row >> blockShift], row & (blockRows - 1));
}

std::string_view Column::Text(RowPosition row) const {
    if (IsNull(row)) return {};
    return TextIn(blocks_[row >> blockShift], row & (blockRows - 1));
}

void Column::PrefetchFixed(RowPosition row) const {
    if (row == noRow) return;
    const Block& block = blocks_[row >> blockShift];
    const std::size_t index = row & (blockRows - 1);
    __builtin_prefetch(block.fixed + index * block.stride);
    if (block.nulls) __builtin_prefetch(block.nulls + (index >> 6));
}

void Column::PrefetchText(RowPosition row) const {
    if (row == noRow || PackingOf(kind_) != Packing::Bytes) return;
    __builtin_prefetch(TextIn(blocks_[row >> blockShift], row & (blockRows - 1)).data());
}

ColumnBuilder::ColumnBuilder(ValueKind kind, std::shared_ptr<SpillStore> store) : store_(std::move(store)) {
    column_.kind_ = kind;
}

void ColumnBuilder::Append(const ValueView& value) {
    if (nulls_.empty()) nulls_.assign(Column::blockRows / 64, 0);
    const bool isNull = value.IsNull();
    if (isNull) {
        nulls_[inBlock_ >> 6] |= std::uint64_t{1} << (inBlock_ & 63);
        hasNulls_ = true;
    }
    const bool sameKind = value.kind == column_.kind_;
    switch (PackingOf(column_.kind_)) {
        case Packing::Whole:
            if (sameKind || isNull)
                whole_.push_back(value.integer);
            else if (column_.kind_ == ValueKind::Integer && value.kind == ValueKind::Boolean)
                whole_.push_back(value.integer ? -1 : 0);
            else if (column_.kind_ == ValueKind::Currency)
                whole_.push_back(std::llround(NumberOf(value) * 10000));
            else
                whole_.push_back(static_cast<std::int64_t>(NumberOf(value)));
            break;
        case Packing::Single:
            single_.push_back(static_cast<float>(sameKind || isNull ? value.real : NumberOf(value)));
            break;
        case Packing::Real:
            real_.push_back(sameKind || isNull ? value.real : NumberOf(value));
            break;
        case Packing::Bytes:
            if (sameKind || isNull) {
                AppendBytes(value.text);
            } else {
                scratch_.clear();
                AppendGeneralText(value, scratch_);
                AppendBytes(scratch_);
            }
            break;
    }
    ++column_.size_;
    if (++inBlock_ == Column::blockRows) FinishBlock();
}

void ColumnBuilder::AppendBytes(std::string_view bytes) {
    if (texts_.size() + bytes.size() > std::numeric_limits<std::uint32_t>::max())
        throw RunTimeError(ErrorNumber::OutOfMemory,
                           "The query reads more than 4 GiB of texts or pictures in 16,384 neighbouring rows.");
    texts_.append(bytes);
    ends_.push_back(static_cast<std::uint32_t>(texts_.size()));
}

void ColumnBuilder::Put(std::string& out, const void* bytes, std::size_t size) const {
    out.append(static_cast<const char*>(bytes), size);
}

void ColumnBuilder::PackWhole(std::string& out, Column::Block& block) const {
    const auto [least, most] = std::minmax_element(whole_.begin(), whole_.end());
    block.width = WidthFor(*least, *most);
    switch (block.width) {
        case 1:
            PutNarrowed<std::int8_t>(whole_, out);
            break;
        case 2:
            PutNarrowed<std::int16_t>(whole_, out);
            break;
        case 4:
            PutNarrowed<std::int32_t>(whole_, out);
            break;
        default:
            Put(out, whole_.data(), whole_.size() * sizeof whole_[0]);
            break;
    }
}

void ColumnBuilder::FinishBlock() {
    if (inBlock_ == 0) return;
    Column::Block block;
    std::string packed;
    if (hasNulls_) Put(packed, nulls_.data(), nulls_.size() * sizeof nulls_[0]);
    const std::size_t fixedAt = packed.size();
    switch (PackingOf(column_.kind_)) {
        case Packing::Whole:
            PackWhole(packed, block);
            break;
        case Packing::Single:
            Put(packed, single_.data(), single_.size() * sizeof single_[0]);
            break;
        case Packing::Real:
            Put(packed, real_.data(), real_.size() * sizeof real_[0]);
            break;
        case Packing::Bytes:
            Put(packed, ends_.data(), ends_.size() * sizeof ends_[0]);
            break;
    }
    const std::size_t textsAt = packed.size();
    block.stride = static_cast<std::uint8_t>((textsAt - fixedAt) / inBlock_);
    packed += texts_;
    block.memory = store_->Keep(std::as_bytes(std::span(packed)));
    const std::byte* base = block.memory.Data();
    block.nulls = hasNulls_ ? reinterpret_cast<const std::uint64_t*>(base) : nullptr;
    block.fixed = base + fixedAt;
    block.texts = reinterpret_cast<const char*>(base) + textsAt;
    column_.blocks_.push_back(std::move(block));
    inBlock_ = 0;
    hasNulls_ = false;
    nulls_.clear();
    whole_.clear();
    single_.clear();
    real_.clear();
    ends_.clear();
    texts_.clear();
}

std::shared_ptr<const Column> ColumnBuilder::Finish() {
    FinishBlock();
    auto column = std::make_shared<Column>(std::move(column_));
    column_ = Column{};
    column_.kind_ = column->kind_;
    return column;
}

}  // namespace quillform::data
