#include "data/jet/RowEncoder.h"

#include <algorithm>

#include "data/jet/Scalars.h"
#include "data/jet/TextCodec.h"
#include "platform/AsciiRun.h"
#include "platform/CodePage.h"
#include "platform/Text.h"

namespace quillform::jet {

namespace {

void AppendNumber(std::string& row, std::size_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) row.push_back(static_cast<char>(value >> 8 * i));
}

std::size_t FixedArea(const TableDefinition& table) {
    std::size_t end = 0;
    for (const Column& column : table.columns)
        if (column.IsFixed() && column.type != ColumnType::Boolean)
            end = std::max(end, column.fixedOffset + FixedBytes(column));
    return end;
}

std::string NullMask(const TableDefinition& table, const StoredValues& values) {
    std::string mask((table.maxColumns + 7u) / 8u, '\0');
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::uint16_t number = table.columns[i].number;
        if (values[i]) mask[number / 8] = static_cast<char>(mask[number / 8] | 1 << number % 8);
    }
    return mask;
}

/// Jet 3: which entry is the first to begin at or behind each multiple of 256, the last multiple first. The table is
/// part of the row whose length decides how long the table is.
std::string JumpTable(const std::vector<std::size_t>& offsets, std::size_t lengthWithout) {
    std::size_t jumps = 0;
    while ((lengthWithout + jumps - 1) / 256 > jumps) ++jumps;
    std::string table;
    for (std::size_t jump = jumps; jump-- > 0;) {
        const auto first = std::find_if(offsets.begin(), offsets.end(),
                                        [jump](std::size_t offset) { return offset >= 256 * (jump + 1); });
        table.push_back(first == offsets.end() ? '\xFF' : static_cast<char>(first - offsets.begin()));
    }
    return table;
}

/// The variable columns by their place; empty where there is no value.
std::vector<std::string_view> VariableValues(const TableDefinition& table, const StoredValues& values) {
    std::vector<std::string_view> ordered(table.variableSlots);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Column& column = table.columns[i];
        if (column.IsFixed() || column.type == ColumnType::Boolean || !values[i]) continue;
        if (column.variable >= ordered.size()) Damaged("a column of a table has no place in its rows");
        ordered[column.variable] = *values[i];
    }
    return ordered;
}

[[noreturn]] void RefuseLength(const Column& column, std::size_t most, const char* units) {
    throw RunTimeError(ErrorNumber::ValueTooLong, "The value for the column \"" + column.name +
                                                      "\" is too long: it takes " + std::to_string(most) + " " + units +
                                                      " at most.");
}

[[noreturn]] void RefuseKind(const Column& column) {
    throw RunTimeError(ErrorNumber::DataTypeMismatch,
                       "The value for the column \"" + column.name + "\" is of another kind.");
}

std::string EncodeText(const Column& column, std::string_view text, const Layout& form, int codePage) {
    if (form.format == Format::Jet3) return CodePageFromUtf8(text, codePage);
    return EncodeJet4Text(text, (column.extendedFlags & Column::compressFlag) != 0);
}

std::string EncodeShortText(const Column& column, std::string_view text, const Layout& form, int codePage) {
    const std::size_t most = column.length / form.textUnit;
    std::string stored = form.format == Format::Jet3 ? CodePageFromUtf8(text, codePage) : std::string();
    const std::size_t length = form.format == Format::Jet3        ? stored.size()
                               : AsciiRun(text, 0) == text.size() ? text.size()
                                                                  : Utf16FromUtf8(text).size();
    if (length > most) RefuseLength(column, most, "characters");
    if (!column.IsFixed()) return form.format == Format::Jet3 ? stored : EncodeText(column, text, form, codePage);
    if (form.format == Format::Jet4) stored = Utf16LeFromUtf8(text);
    while (stored.size() + form.textUnit <= column.length) AppendNumber(stored, ' ', form.textUnit);
    stored.resize(column.length);
    return stored;
}

}  // namespace

std::string EncodeRow(const TableDefinition& table, const Layout& form, const StoredValues& values) {
    const std::size_t width = form.countWidth;
    std::string row;
    AppendNumber(row, table.maxColumns, width);
    row.resize(width + FixedArea(table), '\0');
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Column& column = table.columns[i];
        if (!values[i] || !column.IsFixed() || column.type == ColumnType::Boolean) continue;
        values[i]->copy(row.data() + width + column.fixedOffset, FixedBytes(column));
    }
    const std::string mask = NullMask(table, values);
    if (table.variableSlots == 0) return row + mask;
    std::vector<std::size_t> offsets;
    offsets.reserve(table.variableSlots + 1u);
    for (const std::string_view value : VariableValues(table, values)) {
        offsets.push_back(row.size());
        row += value;
    }
    offsets.push_back(row.size());
    for (std::size_t i = offsets.size(); i-- > 0;) AppendNumber(row, offsets[i], width);
    if (row.size() > form.maxRow) return row;  // too long already, whatever follows
    if (form.format == Format::Jet3) row += JumpTable(offsets, row.size() + width + mask.size());
    AppendNumber(row, table.variableSlots, width);
    return row + mask;
}

std::optional<std::string> EncodeValue(const Column& column, const ValueView& value, const Layout& form, int codePage) {
    if (column.type == ColumnType::Boolean) {
        if (!value.IsNull() && value.kind != ValueKind::Boolean) RefuseKind(column);
        return value.integer != 0 ? std::optional<std::string>("") : std::nullopt;
    }
    if (value.IsNull()) return std::nullopt;
    if (column.type == ColumnType::Text) {
        if (value.kind != ValueKind::Text) RefuseKind(column);
        return EncodeShortText(column, value.text, form, codePage);
    }
    std::string stored;
    if (column.type == ColumnType::Binary) {
        if (value.kind != ValueKind::Binary) RefuseKind(column);
        if (value.text.size() > column.length) RefuseLength(column, column.length, "bytes");
        stored = value.text;
        if (column.IsFixed()) stored.resize(column.length);
        return stored;
    }
    AppendScalar(column, value, stored);
    return stored;
}

std::string EncodeLongContent(const Column& column, const ValueView& value, const Layout& form, int codePage) {
    const bool isMemo = column.type == ColumnType::Memo;
    if (value.kind != (isMemo ? ValueKind::Text : ValueKind::Binary)) RefuseKind(column);
    return isMemo ? EncodeText(column, value.text, form, codePage) : std::string(value.text);
}

}  // namespace quillform::jet
