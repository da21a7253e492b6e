#include "data/jet/DefinitionWriter.h"

#include <algorithm>

#include "data/jet/DataPageEdit.h"
#include "data/jet/IndexNode.h"
#include "data/jet/TextCodec.h"
#include "data/jet/UsageMap.h"
#include "platform/CodePage.h"

namespace quillform::jet {

namespace {

constexpr std::size_t continuationStart = 8;
constexpr std::uint16_t noColumn = 0xFFFF;
constexpr std::size_t partsPerTree = 10;

/// Grows by pieces whose fields are then set by offset.
class DefinitionBytes {
public:
    DefinitionBytes(const Header& header, const Layout& form) : header_(header), form_(form) {}

    std::vector<std::uint8_t> Make(const TableDefinition& table);

private:
    std::uint8_t* Add(std::size_t count) {
        bytes_.insert(bytes_.end(), count, std::uint8_t{0});
        return bytes_.data() + bytes_.size() - count;
    }
    void AddHead(const TableDefinition& table);
    void AddColumn(const Column& column);
    void AddTree(const Tree& tree);
    void AddIndex(const NamedIndex& index);
    void AddName(const std::string& name);
    void AddLongValueMaps(const TableDefinition& table);

    const Header& header_;
    const Layout& form_;
    std::vector<std::uint8_t> bytes_{};
};

void DefinitionBytes::AddHead(const TableDefinition& table) {
    std::uint8_t* head = Add(form_.defEnd);
    PutU16(head, 0x0102);
    if (form_.format == Format::Jet3) {
        head[2] = 'V';
        head[3] = 'C';
    } else {
        constexpr std::size_t markAt = 0x0C, incrementAt = 0x18;
        PutU32(head + markAt, definitionMark);
        PutU32(head + incrementAt, 1);
    }
    PutU32(head + form_.defRows, table.rows);
    PutU32(head + form_.defAutoNumber, static_cast<std::uint32_t>(table.lastAutoNumber));
    head[form_.defKind] = table.isSystem ? 'S' : 'N';
    PutU16(head + form_.defMaxColumns, table.maxColumns);
    PutU16(head + form_.defVariables, table.variableSlots);
    PutU16(head + form_.defColumns, table.columns.size());
    PutU32(head + form_.defIndexes, static_cast<std::uint32_t>(table.indexes.size()));
    PutU32(head + form_.defTrees, static_cast<std::uint32_t>(table.trees.size()));
    PutU32(head + form_.defOwnedMap, table.ownedMap.value);
    PutU32(head + form_.defFreeMap, table.freeMap.value);
}

void DefinitionBytes::AddColumn(const Column& column) {
    constexpr std::size_t jet3MarkAt = 7, jet4MarkAt = 1, sortVersionAt = 0xE, extendedFlagsAt = 0x10;
    std::uint8_t* at = Add(form_.columnSize);
    at[0] = static_cast<std::uint8_t>(column.type);
    PutU16(at + form_.columnNumber, column.number);
    PutU16(at + form_.columnVariable, column.variable);
    PutU16(at + form_.columnOrdinal, column.ordinal);
    PutU16(at + form_.columnSort, column.sortOrder);
    at[form_.columnFlags] = column.flags;
    PutU16(at + form_.columnFixed, column.fixedOffset);
    PutU16(at + form_.columnLength, column.length);
    if (form_.format == Format::Jet3) {
        PutU16(at + jet3MarkAt, header_.columnMark);
        PutU16(at + form_.columnCodePage, column.codePage);
        return;
    }
    PutU32(at + jet4MarkAt, definitionMark);
    at[sortVersionAt] = column.sortVersion;
    at[extendedFlagsAt] = column.extendedFlags;
    if (column.type != ColumnType::Numeric) return;
    at[form_.columnPrecision] = column.precision;
    at[form_.columnPrecision + 1] = column.scale;
    at[sortVersionAt] = 0;
}

void DefinitionBytes::AddTree(const Tree& tree) {
    std::uint8_t* at = Add(form_.treeSize);
    if (form_.format == Format::Jet4) PutU32(at, treeMark);
    for (std::size_t i = 0; i < partsPerTree; ++i) {
        std::uint8_t* part = at + form_.treeColumns + 3 * i;
        const bool isUsed = i < tree.parts.size();
        PutU16(part, isUsed ? tree.parts[i].column : noColumn);
        part[2] = isUsed && !tree.parts[i].descending ? 1 : 0;
    }
    PutU32(at + form_.treeMap, tree.map.value);
    PutU32(at + form_.treeRoot, tree.root);
    at[form_.treeFlags] = tree.flags;
}

void DefinitionBytes::AddIndex(const NamedIndex& index) {
    std::uint8_t* at = Add(form_.indexSize);
    if (form_.format == Format::Jet4) PutU32(at, definitionMark);
    at += form_.indexNumber;
    PutU32(at, index.number);
    PutU32(at + 4, index.tree);
    at[8] = index.role;
    PutU32(at + 9, index.otherIndex);
    PutU32(at + 0xD, index.otherTable);
    at[0x11] = index.cascadeUpdates;
    at[0x12] = index.cascadeDeletes;
    at[0x13] = static_cast<std::uint8_t>(index.kind);
}

void DefinitionBytes::AddName(const std::string& name) {
    const bool jet3 = form_.format == Format::Jet3;
    const std::string stored = jet3 ? CodePageFromUtf8(name, header_.codePage) : Utf16LeFromUtf8(name);
    if (jet3)
        *Add(1) = static_cast<std::uint8_t>(stored.size());
    else
        PutU16(Add(2), stored.size());
    std::copy(stored.begin(), stored.end(), Add(stored.size()));
}

void DefinitionBytes::AddLongValueMaps(const TableDefinition& table) {
    for (const Column& column : table.columns) {
        if (!column.IsLong()) continue;
        std::uint8_t* at = Add(10);
        PutU16(at, column.number);
        PutU32(at + 2, column.ownedMap.value);
        PutU32(at + 6, column.freeMap.value);
    }
    PutU16(Add(2), noColumn);
}

std::vector<std::uint8_t> DefinitionBytes::Make(const TableDefinition& table) {
    AddHead(table);
    Add(table.trees.size() * form_.treeCounts);
    for (const Column& column : table.columns) AddColumn(column);
    for (const Column& column : table.columns) AddName(column.name);
    for (const Tree& tree : table.trees) AddTree(tree);
    for (const NamedIndex& index : table.indexes) AddIndex(index);
    for (const NamedIndex& index : table.indexes) AddName(index.name);
    AddLongValueMaps(table);
    constexpr std::size_t lengthAt = 8;
    PutU32(bytes_.data() + lengthAt, static_cast<std::uint32_t>(bytes_.size()));
    return std::move(bytes_);
}

void WriteDefinitionPages(PageFile& file, PageAllocator& allocator, std::uint32_t firstPage,
                          const std::vector<std::uint8_t>& bytes) {
    const Layout& form = file.Form();
    std::uint32_t page = firstPage;
    std::size_t done = 0;
    while (true) {
        const std::size_t head = done == 0 ? 0 : continuationStart;
        const std::size_t count = std::min(bytes.size() - done, form.pageSize - head);
        const bool isLast = done + count == bytes.size();
        const std::uint32_t next = isLast ? 0 : allocator.Allocate();
        std::uint8_t* at = file.Modify(page);
        std::memset(at, 0, form.pageSize);
        std::memcpy(at, bytes.data(), 4);
        std::memcpy(at + head, bytes.data() + done, count);
        const std::size_t used = continuationStart + head + count;
        if (form.format == Format::Jet4) PutU16(at + 2, used < form.pageSize ? form.pageSize - used : 0);
        PutU32(at + 4, next);
        if (isLast) return;
        done += count;
        page = next;
    }
}

/// Makes usage-map rows, as many pages of them as it takes.
class MapMaker {
public:
    MapMaker(PageFile& file, PageAllocator& allocator) : file_(file), allocator_(allocator) {}

    /// A map of no pages, or of this one.
    RowPointer Make(std::uint32_t member = 0) {
        std::vector<std::uint8_t> row(file_.Form().mapRow);
        if (member != 0) {
            PutU32(&row[1], member / 8 * 8);
            row[5] = static_cast<std::uint8_t>(1u << member % 8);
        }
        if (page_ == 0 || !HasRoom(file_, page_, row.size())) {
            page_ = allocator_.Allocate();
            InitDataPage(file_, page_, 0);
        }
        return MakePointer(page_, AddRow(file_, page_, row, 0));
    }

private:
    PageFile& file_;
    PageAllocator& allocator_;
    std::uint32_t page_ = 0;
};

bool IsOwnedIndexPage(const PageFile& file, std::uint32_t page, std::uint32_t table) {
    const PageRef bytes = file.Read(page);
    return (bytes[0] == leafNode || bytes[0] == innerNode) && GetU32(bytes.get() + 4) == table;
}

/// Bitmap pages of a map, then its row, then the page of rows if this was the last.
void FreeMap(PageFile& file, PageAllocator& allocator, RowPointer map) {
    FoundRow found;
    if (!map || !FindRow(file, map, found)) return;
    std::vector<std::uint32_t> bitmaps;
    if (!found.bytes.empty() && found.bytes[0] == 1)
        for (std::size_t at = 1; at + 4 <= found.bytes.size(); at += 4)
            if (const std::uint32_t page = GetU32(&found.bytes[at]); page != 0 && file.Read(page)[0] == bitmapPage)
                bitmaps.push_back(page);
    found = {};
    for (const std::uint32_t page : bitmaps) allocator.Free(page);
    DeleteRow(file, map);
    const DataPage page(file, map.Page());
    for (std::size_t slot = 0; slot < page.SlotCount(); ++slot)
        if ((page.Entry(slot) & slotDeleted) != slotDeleted) return;
    if (page.Owner() == 0) allocator.Free(map.Page());
}

}  // namespace

void PlaceTable(PageFile& file, PageAllocator& allocator, TableDefinition& table) {
    if (table.page == 0) table.page = allocator.Allocate();
    MapMaker maps(file, allocator);
    table.ownedMap = maps.Make();
    table.freeMap = maps.Make();
    for (Column& column : table.columns) {
        if (!column.IsLong()) continue;
        column.ownedMap = maps.Make();
        column.freeMap = maps.Make();
    }
    for (Tree& tree : table.trees) {
        tree.root = allocator.Allocate();
        tree.map = maps.Make(tree.root);
        IndexNode empty;
        empty.table = table.page;
        WriteIndexNode(file, tree.root, empty);
    }
    WriteDefinitionPages(file, allocator, table.page, DefinitionBytes(file.FileHeader(), file.Form()).Make(table));
}

void FreeTable(PageFile& file, PageAllocator& allocator, const TableDefinition& table) {
    const std::vector<std::uint32_t> definition = DefinitionPages(file, table.page);
    for (const std::uint32_t page : ReadUsageMap(file, table.ownedMap))
        if (DataPage::IsDataPage(file, page, table.page)) allocator.Free(page);
    for (const Tree& tree : table.trees)
        for (const std::uint32_t page : ReadUsageMap(file, tree.map))
            if (IsOwnedIndexPage(file, page, table.page)) allocator.Free(page);
    for (const Column& column : table.columns)
        for (const std::uint32_t page : ReadUsageMap(file, column.ownedMap))
            if (DataPage::IsDataPage(file, page, longValueOwner)) allocator.Free(page);
    FreeMap(file, allocator, table.ownedMap);
    FreeMap(file, allocator, table.freeMap);
    for (const Tree& tree : table.trees) FreeMap(file, allocator, tree.map);
    for (const Column& column : table.columns) {
        FreeMap(file, allocator, column.ownedMap);
        FreeMap(file, allocator, column.freeMap);
    }
    for (const std::uint32_t page : definition) allocator.Free(page);
}

}  // namespace quillform::jet
