#include "data/jet/CreateDatabase.h"

#include <algorithm>

#include "data/jet/CatalogWriter.h"
#include "data/jet/DataPageEdit.h"
#include "data/jet/DefinitionWriter.h"
#include "data/jet/Rc4.h"
#include "data/jet/RowForm.h"
#include "data/jet/UsageMap.h"

namespace quillform::jet {

namespace {

struct SystemColumn {
    const char* name;
    ColumnType type;
    bool isAccount = false;
};

struct SystemIndex {
    const char* name;
    std::vector<const char*> columns;
    std::uint8_t flags;
    NamedIndex::Kind kind;
};

struct SystemTablePlan {
    std::uint32_t page;
    std::vector<SystemColumn> columns;
    std::vector<SystemIndex> indexes;
};

std::vector<SystemTablePlan> SystemTables(Format format) {
    using enum ColumnType;
    using Kind = NamedIndex::Kind;
    std::vector<SystemTablePlan> plans = {
        {objectsTable,
         {{"Id", Long},
          {"ParentId", Long},
          {"Name", Text},
          {"Type", Integer},
          {"DateCreate", DateTime},
          {"DateUpdate", DateTime},
          {"Owner", Binary, true},
          {"Flags", Long},
          {"Database", Memo},
          {"Connect", Memo},
          {"ForeignName", Text},
          {"RmtInfoShort", Binary},
          {"RmtInfoLong", Ole},
          {"Lv", Ole},
          {"LvProp", Ole},
          {"LvModule", Ole},
          {"LvExtra", Ole}},
         {{"ParentIdName", {"ParentId", "Name"}, Tree::uniqueFlag, Kind::Ordinary},
          {"Id", {"Id"}, Tree::uniqueFlag, Kind::Primary}}},
        {permissionsTable,
         {{"ObjectId", Long}, {"SID", Binary, true}, {"ACM", Long}, {"FInheritable", Boolean}},
         {{"ObjectId", {"ObjectId"}, Tree::requiredFlag, Kind::Ordinary}}},
        {queriesTable,
         {{"ObjectId", Long},
          {"Attribute", Byte},
          {"Order", Binary},
          {"Name1", Text},
          {"Name2", Text},
          {"Expression", Memo},
          {"Flag", Integer}},
         {{"ObjectIdAttribute", {"ObjectId", "Attribute", "Order"}, Tree::uniqueFlag, Kind::Primary}}},
        {relationsTable,
         {{"szRelationship", Text},
          {"grbit", Long},
          {"ccolumn", Long},
          {"icolumn", Long},
          {"szObject", Text},
          {"szColumn", Text},
          {"szReferencedObject", Text},
          {"szReferencedColumn", Text}},
         {{"szRelationship", {"szRelationship"}, Tree::ignoreNullsFlag, Kind::Ordinary},
          {"szObject", {"szObject"}, Tree::ignoreNullsFlag, Kind::Ordinary},
          {"szReferencedObject", {"szReferencedObject"}, Tree::ignoreNullsFlag, Kind::Ordinary}}},
    };
    if (format == Format::Jet4) plans[2].columns.push_back({"LvExtra", Long});
    return plans;
}

Column PlanSystemColumn(const SystemColumn& wanted, const Header& header, const Layout& form) {
    constexpr std::size_t longestText = 255;
    Column column;
    column.name = wanted.name;
    column.type = wanted.type;
    column.flags = Column::systemFlag | Column::updatableFlag;
    if (wanted.isAccount) column.flags |= Column::accountFlag;
    const bool isVariable = column.IsLong() || wanted.type == ColumnType::Text || wanted.type == ColumnType::Binary;
    if (!isVariable) column.flags |= Column::fixedFlag;
    column.length = static_cast<std::uint16_t>(FixedBytes(column));
    if (wanted.type == ColumnType::Boolean) column.length = 1;
    if (wanted.type == ColumnType::Text) column.length = static_cast<std::uint16_t>(longestText * form.textUnit);
    if (wanted.type == ColumnType::Binary) column.length = static_cast<std::uint16_t>(form.maxSystemBinary);
    column.sortOrder = header.sortOrder;
    column.codePage = static_cast<std::uint16_t>(header.codePage);
    return column;
}

void PlaceSystemColumns(TableDefinition& table) {
    for (Column& column : table.columns) {
        column.number = table.maxColumns++;
        column.variable = table.variableSlots;
        if (!column.IsFixed()) ++table.variableSlots;
    }
    std::uint16_t fixedEnd = 0;
    for (Column& column : table.columns) {
        if (!column.IsFixed() || column.type == ColumnType::Boolean) continue;
        column.fixedOffset = fixedEnd;
        fixedEnd = static_cast<std::uint16_t>(fixedEnd + FixedBytes(column));
    }
}

TableDefinition PlanSystemTable(const SystemTablePlan& plan, const Header& header) {
    const Layout& form = LayoutOf(header.format);
    TableDefinition table;
    table.page = plan.page;
    table.isSystem = true;
    for (const SystemColumn& column : plan.columns) table.columns.push_back(PlanSystemColumn(column, header, form));
    PlaceSystemColumns(table);
    for (const SystemIndex& wanted : plan.indexes) {
        Tree tree;
        tree.flags = static_cast<std::uint8_t>(wanted.flags | (header.format == Format::Jet4 ? Tree::jet4Flag : 0));
        for (const char* name : wanted.columns)
            tree.parts.push_back({table.columns[static_cast<std::size_t>(table.FindName(name))].number, false});
        NamedIndex index;
        index.name = wanted.name;
        index.number = index.tree = static_cast<std::uint32_t>(table.trees.size());
        index.kind = wanted.kind;
        table.trees.push_back(std::move(tree));
        table.indexes.push_back(std::move(index));
    }
    const auto byName = [](const auto& left, const auto& right) { return left.name < right.name; };
    std::sort(table.indexes.begin(), table.indexes.end(), byName);
    // As the engine has it: Jet 4 lists the columns of system tables by name.
    if (header.format == Format::Jet4) std::sort(table.columns.begin(), table.columns.end(), byName);
    return table;
}

constexpr std::int64_t systemObject = -0x80000000LL;

struct SystemObject {
    std::int64_t id, parent;
    const char* name;
    int type;
};

constexpr SystemObject systemObjects[] = {
    {0x0F000001, 0x0F000000, "Tables", 3},
    {0x0F000002, 0x0F000000, "Databases", 3},
    {0x0F000003, 0x0F000000, "Relationships", 3},
    {0x10000000, 0x0F000002, "MSysDb", 2},
    {2, 0x0F000001, "MSysObjects", 1},
    {3, 0x0F000001, "MSysACEs", 1},
    {4, 0x0F000001, "MSysQueries", 1},
    {5, 0x0F000001, "MSysRelationships", 1},
};

// Built-in accounts.
constexpr std::string_view engineAccount("\x02\x03", 2), adminUser("\x03\x01", 2), usersGroup("\x02\x01", 2),
    creator("\x02\x04", 2);

struct Permission {
    std::int64_t object, rights;
    std::string_view account;
    bool isInherited;
};

constexpr Permission permissions[] = {
    {2, 0x60000, adminUser, false},           {3, 0x60000, adminUser, false},
    {4, 0x60000, adminUser, false},           {5, 0xE0000, adminUser, false},
    {0x0F000001, 0xF00FE, creator, true},     {0x0F000001, 0x60001, adminUser, false},
    {0x0F000003, 0xF00FE, creator, true},     {0x0F000003, 0x60001, adminUser, false},
    {0x0F000002, 0x60000, adminUser, false},  {0x10000000, 0xE0000, adminUser, false},
    {0x10000000, 0xE0000, usersGroup, false}, {2, 0x140000, usersGroup, false},
    {4, 0x140000, usersGroup, false},         {5, 0x140000, usersGroup, false},
    {0x0F000001, 0xFFEFF, usersGroup, true},  {0x0F000003, 0xFFFFF, usersGroup, true},
};

/// Jet 4 keeps account numbers encoded with a key that depends on the header.
Value Account(std::string_view account, const Header& header) {
    std::string bytes(account);
    if (header.format == Format::Jet4)
        ApplyRc4(header.accountKey, {reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()});
    return Value::Binary(bytes);
}

}  // namespace

/// The header, the two global maps with every page free, and room for the four definitions.
std::vector<std::uint8_t> FirstPages(const Header& header) {
    const Layout& form = LayoutOf(header.format);
    const std::string headerPage = MakeHeaderPage(header);
    std::vector<std::uint8_t> bytes(headerPage.begin(), headerPage.end());
    bytes.resize((relationsTable + 1) * form.pageSize);
    std::uint8_t* maps = bytes.data() + form.pageSize;
    const std::size_t first = form.pageSize - form.mapRow, second = first - form.mapRow;
    PutU16(maps, 0x0101);
    PutU16(maps + 2, second - (form.dataCount + 6));
    PutU32(maps + 4, 1);
    PutU16(maps + form.dataCount, 2);
    PutU16(maps + form.dataCount + 2, first);
    PutU16(maps + form.dataCount + 4, second);
    std::memset(maps + first + 5, 0xFF, form.mapRow - 5);
    return bytes;
}

void InstallSystemTables(PageFile& file, PageAllocator& allocator) {
    for (std::uint32_t page = 0; page <= relationsTable; ++page) MarkUsed(file, page);
    for (const SystemTablePlan& plan : SystemTables(file.Form().format)) {
        TableDefinition table = PlanSystemTable(plan, file.FileHeader());
        PlaceTable(file, allocator, table);
    }
}

void EnterSystemObjects(JetTable& objects, JetTable& aces, const Header& header) {
    for (const SystemObject& entry : systemObjects) {
        NamedRow row(objects);
        row.Set("Id", Value::Integer(entry.id)).Set("ParentId", Value::Integer(entry.parent));
        row.Set("Name", Value::Text(entry.name)).Set("Type", Value::Integer(entry.type));
        row.Set("DateCreate", Value::Date(header.created)).Set("DateUpdate", Value::Date(header.created));
        row.Set("Owner", Account(engineAccount, header)).Set("Flags", Value::Integer(systemObject));
        objects.Insert(row.Values());
    }
    for (const Permission& entry : permissions) {
        NamedRow row(aces);
        row.Set("ObjectId", Value::Integer(entry.object)).Set("SID", Account(entry.account, header));
        row.Set("ACM", Value::Integer(entry.rights)).Set("FInheritable", Value::Boolean(entry.isInherited));
        aces.Insert(row.Values());
    }
}

}  // namespace quillform::jet
