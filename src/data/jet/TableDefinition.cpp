#include "data/jet/TableDefinition.h"

#include <algorithm>

#include "data/jet/TextCodec.h"

namespace quillform::jet {

namespace {

constexpr std::size_t continuationStart = 8;
constexpr std::uint16_t noColumn = 0xFFFF;
constexpr std::size_t partsPerTree = 10;

/// The joined bytes of a definition, read front to back.
class Cursor {
public:
    Cursor(Bytes bytes, std::size_t at, std::uint32_t page) : bytes_(bytes), at_(at), page_(page) {}

    const std::uint8_t* Take(std::size_t count) {
        if (count > bytes_.size() - at_)
            Damaged("the table definition on page " + std::to_string(page_) + " is cut off");
        at_ += count;
        return bytes_.data() + at_ - count;
    }
    std::size_t Remaining() const { return bytes_.size() - at_; }

private:
    Bytes bytes_;
    std::size_t at_;
    std::uint32_t page_;
};

std::vector<std::uint8_t> JoinPages(const PageFile& file, const std::vector<std::uint32_t>& pages) {
    std::vector<std::uint8_t> joined;
    for (const std::uint32_t page : pages) {
        const PageRef bytes = file.Read(page);
        const std::size_t start = joined.empty() ? 0 : continuationStart;
        joined.insert(joined.end(), bytes.get() + start, bytes.get() + file.Form().pageSize);
    }
    return joined;
}

Column ReadColumn(const std::uint8_t* at, const Layout& form) {
    Column column;
    column.type = static_cast<ColumnType>(at[0]);
    column.number = GetU16(at + form.columnNumber);
    column.variable = GetU16(at + form.columnVariable);
    column.ordinal = GetU16(at + form.columnOrdinal);
    column.flags = at[form.columnFlags];
    column.fixedOffset = GetU16(at + form.columnFixed);
    column.length = GetU16(at + form.columnLength);
    if (column.type == ColumnType::Numeric) {
        column.precision = at[form.columnPrecision];
        column.scale = at[form.columnPrecision + 1];
    } else {
        column.sortOrder = GetU16(at + form.columnSort);
    }
    if (form.format == Format::Jet4) {
        constexpr std::size_t sortVersionAt = 0xE, extendedFlagsAt = 0x10;
        column.sortVersion = at[sortVersionAt];
        column.extendedFlags = at[extendedFlagsAt];
    } else {
        column.codePage = GetU16(at + form.columnCodePage);
    }
    return column;
}

Tree ReadTree(const std::uint8_t* at, const Layout& form) {
    Tree tree;
    for (std::size_t i = 0; i < partsPerTree; ++i) {
        const std::uint8_t* part = at + form.treeColumns + 3 * i;
        if (GetU16(part) != noColumn) tree.parts.push_back({GetU16(part), part[2] == 0});
    }
    tree.map.value = GetU32(at + form.treeMap);
    tree.root = GetU32(at + form.treeRoot);
    tree.flags = at[form.treeFlags];
    return tree;
}

NamedIndex ReadNamedIndex(const std::uint8_t* at) {
    NamedIndex index;
    index.number = GetU32(at);
    index.tree = GetU32(at + 4);
    index.role = at[8];
    index.otherIndex = GetU32(at + 9);
    index.otherTable = GetU32(at + 0xD);
    index.cascadeUpdates = at[0x11];
    index.cascadeDeletes = at[0x12];
    index.kind = static_cast<NamedIndex::Kind>(at[0x13]);
    return index;
}

std::string ReadName(Cursor& cursor, const Layout& form, int codePage) {
    std::string buffer;
    if (form.format == Format::Jet3) {
        const std::size_t length = *cursor.Take(1);
        return std::string(DecodeJet3Text({cursor.Take(length), length}, codePage, buffer));
    }
    const std::size_t length = GetU16(cursor.Take(2));
    AppendUtf16({cursor.Take(length), length}, buffer);
    return buffer;
}

void ReadLongValueMaps(Cursor& cursor, TableDefinition& table) {
    constexpr std::size_t entrySize = 10;
    while (cursor.Remaining() >= 2) {
        const std::uint16_t number = GetU16(cursor.Take(2));
        if (number == noColumn || cursor.Remaining() < entrySize - 2) return;
        const std::uint8_t* maps = cursor.Take(entrySize - 2);
        const int position = table.FindNumber(number);
        if (position < 0) continue;
        Column& column = table.columns[static_cast<std::size_t>(position)];
        column.ownedMap.value = GetU32(maps);
        column.freeMap.value = GetU32(maps + 4);
    }
}

void CheckDefinition(const TableDefinition& table) {
    const std::string name = "the table definition on page " + std::to_string(table.page);
    std::vector<bool> seen(table.maxColumns);
    for (const Column& column : table.columns) {
        if (column.number >= table.maxColumns) Damaged(name + " numbers its columns wrongly");
        if (seen[column.number]) Damaged(name + " has two columns of one number");
        seen[column.number] = true;
    }
    for (const NamedIndex& index : table.indexes)
        if (index.tree >= table.trees.size()) Damaged(name + " names an index that it doesn't have");
}

}  // namespace

int TableDefinition::FindNumber(std::uint16_t number) const {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].number == number) return static_cast<int>(i);
    return -1;
}

int TableDefinition::FindName(std::string_view name) const {
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].name == name) return static_cast<int>(i);
    return -1;
}

std::vector<std::uint32_t> DefinitionPages(const PageFile& file, std::uint32_t page) {
    constexpr std::size_t mostPages = 64;  // 255 columns and 32 indexes with the longest names need about 20
    std::vector<std::uint32_t> pages;
    while (page != 0) {
        const PageRef bytes = file.Read(page);
        if (bytes[0] != definitionPage)
            Damaged("page " + std::to_string(page) + " should hold a table definition and doesn't");
        if (pages.size() == mostPages)
            Damaged("the table definition on page " + std::to_string(pages[0]) + " has no end");
        pages.push_back(page);
        page = GetU32(bytes.get() + 4);
    }
    return pages;
}

TableDefinition ReadTableDefinition(const PageFile& file, std::uint32_t page) {
    const Layout& form = file.Form();
    if (page == 0) Damaged("a table has no definition");
    const std::vector<std::uint8_t> bytes = JoinPages(file, DefinitionPages(file, page));
    const std::uint8_t* head = bytes.data();
    TableDefinition table;
    table.page = page;
    table.rows = GetU32(head + form.defRows);
    table.lastAutoNumber = static_cast<std::int32_t>(GetU32(head + form.defAutoNumber));
    table.isSystem = head[form.defKind] == 'S';
    table.maxColumns = GetU16(head + form.defMaxColumns);
    table.variableSlots = GetU16(head + form.defVariables);
    table.ownedMap.value = GetU32(head + form.defOwnedMap);
    table.freeMap.value = GetU32(head + form.defFreeMap);
    const std::size_t columnCount = GetU16(head + form.defColumns);
    const std::size_t indexCount = GetU32(head + form.defIndexes);
    const std::size_t treeCount = GetU32(head + form.defTrees);
    // A count that the bytes can't hold ends in Take before anything of its size is allocated.
    Cursor cursor(bytes, form.defEnd, page);
    if (treeCount > bytes.size() || indexCount > bytes.size())
        Damaged("the table definition on page " + std::to_string(page) + " claims too many indexes");
    const std::uint8_t* counts = cursor.Take(treeCount * form.treeCounts);
    for (std::size_t i = 0; i < columnCount; ++i)
        table.columns.push_back(ReadColumn(cursor.Take(form.columnSize), form));
    for (Column& column : table.columns) column.name = ReadName(cursor, form, file.FileHeader().codePage);
    for (std::size_t i = 0; i < treeCount; ++i) {
        table.trees.push_back(ReadTree(cursor.Take(form.treeSize), form));
        table.trees[i].entries = GetU32(counts + i * form.treeCounts);
        table.trees[i].distinctKeys = GetU32(counts + i * form.treeCounts + 4);
    }
    for (std::size_t i = 0; i < indexCount; ++i)
        table.indexes.push_back(ReadNamedIndex(cursor.Take(form.indexSize) + form.indexNumber));
    for (NamedIndex& index : table.indexes) index.name = ReadName(cursor, form, file.FileHeader().codePage);
    ReadLongValueMaps(cursor, table);
    CheckDefinition(table);
    return table;
}

}  // namespace quillform::jet
