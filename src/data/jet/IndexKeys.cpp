#include "data/jet/IndexKeys.h"

#include <bit>

#include "data/jet/Scalars.h"
#include "platform/CodePage.h"

namespace quillform::jet {

namespace {

constexpr std::uint16_t generalOrder = 0x0409;
constexpr std::uint16_t buildThatCountsPairsOnce = 4518;
constexpr char present = 0x7F;

void AppendBigEndian(std::string& key, std::uint64_t value, int bytes) {
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) key.push_back(static_cast<char>(value >> shift));
}

/// Signed numbers sort as unsigned ones when the sign bit is turned round.
void AppendSigned(std::string& key, std::int64_t value, int bytes) {
    AppendBigEndian(key, static_cast<std::uint64_t>(value) ^ std::uint64_t{1} << (8 * bytes - 1), bytes);
}

/// Floating-point numbers sort as their bits do once negative ones are turned round whole.
void AppendFloating(std::string& key, std::uint64_t bits, int bytes) {
    const std::uint64_t sign = std::uint64_t{1} << (8 * bytes - 1);
    AppendBigEndian(key, bits & sign ? ~bits : bits ^ sign, bytes);
}

void Complement(std::string& key, std::size_t from) {
    for (std::size_t i = from; i < key.size(); ++i) key[i] = static_cast<char>(~key[i]);
}

/// Groups of eight bytes; a count behind each says how many of them count, or that more follow. The mark of more isn't
/// complemented in descending keys.
void AppendGroups(std::string& key, std::string_view bytes, bool descending) {
    constexpr std::size_t group = 8;
    constexpr char moreFollows = 9;
    while (!bytes.empty()) {
        const std::size_t start = key.size();
        const std::string_view part = bytes.substr(0, group);
        bytes.remove_prefix(part.size());
        key.append(part);
        key.append(group - part.size(), '\0');
        if (bytes.empty()) key.push_back(static_cast<char>(part.size()));
        if (descending) Complement(key, start);
        if (!bytes.empty()) key.push_back(moreFollows);
    }
}

/// The stored bytes of a GUID in the order of its text.
std::string GuidInTextOrder(const Column& column, const ValueView& value) {
    std::string stored;
    AppendScalar(column, value, stored);
    std::swap(stored[0], stored[3]);
    std::swap(stored[1], stored[2]);
    std::swap(stored[4], stored[5]);
    std::swap(stored[6], stored[7]);
    return stored;
}

/// A sign byte, then the magnitude most significant byte first. The sign byte is the same in descending keys.
void AppendNumeric(std::string& key, const Column& column, const ValueView& value, bool descending) {
    std::string stored;
    AppendScalar(column, value, stored);
    const bool negative = (stored[0] & 0x80) != 0;
    key.push_back(negative ? '\0' : '\xFF');
    const std::size_t start = key.size();
    for (std::size_t word = 1; word < stored.size(); word += 4)
        for (std::size_t i = 4; i-- > 0;) key.push_back(stored[word + i]);
    if (negative != descending) Complement(key, start);
}

}  // namespace

KeyMaker::KeyMaker(const TableDefinition& table, const Tree& tree, const Header& header)
    : format_(header.format),
      pairs_(header.build == buildThatCountsPairsOnce ? collation::PairedLetters::CountOne
                                                      : collation::PairedLetters::CountTwo) {
    for (const Tree::Part& part : tree.parts) {
        const int position = table.FindNumber(part.column);
        if (position < 0) Damaged("an index is over a column that doesn't exist");
        const Column& column = table.columns[static_cast<std::size_t>(position)];
        parts_.push_back({position, column, part.descending});
        const bool isText = column.type == ColumnType::Text || column.type == ColumnType::Memo;
        const bool isPlainCodePage = format_ == Format::Jet4 || header.codePage == 1252;
        if (isText && (column.sortOrder != generalOrder || column.sortVersion != 0 || !isPlainCodePage))
            isOrderKnown_ = false;
    }
}

void KeyMaker::Append(const Part& part, const ValueView& value, std::string& key) const {
    const std::size_t start = key.size();
    const ColumnType type = part.column.type;
    if (value.IsNull()) {
        key.push_back(part.descending ? '\xFF' : '\0');
        return;
    }
    key.push_back(present);
    if (part.descending) key[start] = static_cast<char>(~present);
    if (type == ColumnType::Binary) return AppendGroups(key, value.text, part.descending);
    if (type == ColumnType::Guid) return AppendGroups(key, GuidInTextOrder(part.column, value), part.descending);
    if (type == ColumnType::Numeric) return AppendNumeric(key, part.column, value, part.descending);
    AppendAscending(part.column, value, key);
    if (!part.descending) return;
    Complement(key, start + 1);
    const bool isText = type == ColumnType::Text || type == ColumnType::Memo;
    if (isText && format_ == Format::Jet4) key.push_back('\0');
}

void KeyMaker::AppendAscending(const Column& column, const ValueView& value, std::string& key) const {
    switch (column.type) {
        case ColumnType::Boolean:
            key.push_back(value.integer != 0 ? '\0' : '\xFF');
            return;
        case ColumnType::Byte:
            key.push_back(static_cast<char>(value.integer));
            return;
        case ColumnType::Integer:
            AppendSigned(key, value.integer, 2);
            return;
        case ColumnType::Long:
            AppendSigned(key, value.integer, 4);
            return;
        case ColumnType::Money:
            AppendSigned(key, value.integer, 8);
            return;
        case ColumnType::Single:
            AppendFloating(key, std::bit_cast<std::uint32_t>(static_cast<float>(value.real)), 4);
            return;
        case ColumnType::Double:
        case ColumnType::DateTime:
            AppendFloating(key, std::bit_cast<std::uint64_t>(value.real), 8);
            return;
        case ColumnType::Text:
        case ColumnType::Memo:
            AppendText(value, key);
            return;
        case ColumnType::Binary:
        case ColumnType::Guid:
        case ColumnType::Numeric:
        case ColumnType::Ole:
            break;
    }
    throw RunTimeError(ErrorNumber::NotSupported, "The column \"" + column.name + "\" can't be part of an index.");
}

void KeyMaker::AppendText(const ValueView& value, std::string& key) const {
    if (format_ == Format::Jet3) {
        collation::AppendJet3IndexKey(CodePageFromUtf8(value.text, 1252), key);
        return;
    }
    const std::u16string units = Utf16FromUtf8(value.text);
    if (!collation::HasKnownOrder(units))
        throw RunTimeError(ErrorNumber::NotSupported,
                           "An indexed text holds a character that the sort order of the database doesn't know.");
    collation::AppendJet4IndexKey(units, pairs_, key);
}

}  // namespace quillform::jet
