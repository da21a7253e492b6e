#include "data/jet/RowDecoder.h"

#include <bit>

#include "data/jet/LongValue.h"
#include "data/jet/Scalars.h"
#include "data/jet/TextCodec.h"

namespace quillform::jet {

namespace {

std::string_view AsText(Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

[[noreturn]] void DamagedRow() { Damaged("a row isn't built as its table says"); }

}  // namespace

RowDecoder::RowDecoder(const PageFile& file, const RowForm& form)
    : file_(file), form_(form), rooms_(form.columns.size()) {}

void RowDecoder::Parse() const {
    const std::size_t width = form_.layout->countWidth;
    if (row_.size() < width) DamagedRow();
    columnCount_ = width == 1 ? row_[0] : GetU16(row_.data());
    const std::size_t maskBytes = (columnCount_ + 7) / 8;
    if (row_.size() < width + maskBytes) DamagedRow();
    maskAt_ = row_.size() - maskBytes;
    variableCount_ = 0;
    dataEnd_ = maskAt_;
    if (form_.hasVariables) ParseTrailer(maskAt_);
    isParsed_ = true;
}

void RowDecoder::ParseTrailer(std::size_t end) const {
    const std::size_t width = form_.layout->countWidth;
    if (end < 2 * width) DamagedRow();
    const std::size_t countAt = end - width;
    if (width == 1) {
        variableCount_ = row_[countAt];
        ParseJet3Offsets(countAt);
        return;
    }
    variableCount_ = GetU16(&row_[countAt]);
    const std::size_t offsets = 2 * (variableCount_ + 1);
    if (countAt < offsets + width) DamagedRow();
    dataEnd_ = countAt - offsets;
}

/// Offsets are kept modulo 256; the jump table between them and the count says where 256 is to be added.
void RowDecoder::ParseJet3Offsets(std::size_t countAt) const {
    std::size_t jumps = (row_.size() - 1) / 256;
    if (countAt < jumps + 1 + variableCount_ + 1) DamagedRow();
    const std::size_t lowAt = countAt - jumps - 1;
    if ((lowAt - variableCount_) / 256 < jumps) --jumps;
    dataEnd_ = lowAt - variableCount_;
    std::size_t jump = 0;
    for (std::size_t i = 0; i <= variableCount_; ++i) {
        while (jump < jumps && row_[countAt - 1 - jump] <= i) ++jump;
        offsets_[i] = static_cast<std::uint16_t>(row_[lowAt - i] + 256 * jump);
    }
}

Bytes RowDecoder::Variable(std::size_t index) const {
    std::size_t start = 0;
    std::size_t end = 0;
    if (form_.layout->countWidth == 1) {
        start = offsets_[index];
        end = offsets_[index + 1];
    } else {
        const std::uint8_t* last = row_.data() + dataEnd_;  // the end of the data, then offsets from the last column on
        start = GetU16(last + 2 * (variableCount_ - index));
        end = GetU16(last + 2 * (variableCount_ - index) - 2);
    }
    if (start > end || end > dataEnd_) DamagedRow();
    return row_.subspan(start, end - start);
}

bool RowDecoder::HasBit(const Column& column) const {
    return column.number < columnCount_ && (row_[maskAt_ + column.number / 8] >> column.number % 8 & 1) != 0;
}

std::optional<Bytes> RowDecoder::Stored(int position) const {
    if (!isParsed_) Parse();
    const Column& column = form_.columns[static_cast<std::size_t>(position)];
    if (!HasBit(column)) return std::nullopt;
    if (column.type == ColumnType::Boolean) return Bytes{};
    if (!column.IsFixed()) {
        if (column.variable >= variableCount_) return std::nullopt;
        return Variable(column.variable);
    }
    const std::size_t start = form_.layout->countWidth + column.fixedOffset;
    const std::size_t length = FixedBytes(column);
    if (start + length > dataEnd_) DamagedRow();
    return row_.subspan(start, length);
}

ValueView RowDecoder::Value(int position) const {
    const Column& column = form_.columns[static_cast<std::size_t>(position)];
    const std::optional<Bytes> stored = Stored(position);
    if (column.type == ColumnType::Boolean) return {.kind = ValueKind::Boolean, .integer = stored ? 1 : 0};
    if (!stored) return {};
    return Decode(column, *stored, rooms_[static_cast<std::size_t>(position)]);
}

ValueView RowDecoder::DecodeText(Bytes bytes, Room& room) const {
    const std::string_view text = form_.layout->format == Format::Jet4
                                      ? DecodeJet4Text(bytes, room.text)
                                      : DecodeJet3Text(bytes, form_.codePage, room.text);
    return {.kind = ValueKind::Text, .text = text};
}

ValueView RowDecoder::Decode(const Column& column, Bytes bytes, Room& room) const {
    switch (column.type) {
        case ColumnType::Text:
            return DecodeText(bytes, room);
        case ColumnType::Memo:
            return DecodeText(ReadLongValue(file_, bytes, room.pin, room.bytes), room);
        case ColumnType::Ole:
            return {.kind = ValueKind::Binary, .text = AsText(ReadLongValue(file_, bytes, room.pin, room.bytes))};
        case ColumnType::Boolean:
            return {.kind = ValueKind::Boolean, .integer = 1};
        case ColumnType::Binary:
            break;
        case ColumnType::Byte:
        case ColumnType::Integer:
        case ColumnType::Long:
        case ColumnType::Money:
        case ColumnType::Single:
        case ColumnType::Double:
        case ColumnType::DateTime:
        case ColumnType::Guid:
        case ColumnType::Numeric:
            // Variable columns of these types have no length of their own.
            if (bytes.size() < FixedBytes(column)) DamagedRow();
            return DecodeScalar(column, bytes.data(), room.text);
    }
    return {.kind = ValueKind::Binary, .text = AsText(bytes)};
}

}  // namespace quillform::jet
