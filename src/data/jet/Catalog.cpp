#include "data/jet/Catalog.h"

#include <algorithm>
#include <map>

#include "data/jet/RowScan.h"

namespace quillform::jet {

namespace {

/// A system table, its columns found by name.
class SystemTable {
public:
    SystemTable(const PageFile& file, std::uint32_t page)
        : table_(ReadTableDefinition(file, page)),
          form_(table_, file.Form(), file.FileHeader().codePage),
          scan_(file, table_, form_) {}

    int Find(std::string_view name) const {
        const int position = table_.FindName(name);
        if (position < 0) Damaged("a system table has no column " + std::string(name));
        return position;
    }
    RowScan& Scan() { return scan_; }

private:
    TableDefinition table_;
    RowForm form_;
    RowScan scan_;
};

std::int32_t LongOf(const ValueView& value) { return static_cast<std::int32_t>(value.integer); }

}  // namespace

bool CatalogEntry::IsHidden() const {
    constexpr std::uint32_t systemFlags = 0x80000002, hiddenFlag = 8;
    return (flags & (systemFlags | hiddenFlag)) != 0 || name.starts_with("MSys") || name.starts_with("~");
}

std::vector<CatalogEntry> ReadCatalog(const PageFile& file) {
    SystemTable objects(file, objectsTable);
    const int id = objects.Find("Id"), parent = objects.Find("ParentId"), name = objects.Find("Name");
    const int type = objects.Find("Type"), flags = objects.Find("Flags"), properties = objects.Find("LvProp");
    std::vector<CatalogEntry> entries;
    for (RowScan& row = objects.Scan(); row.Next();) {
        CatalogEntry entry;
        entry.name = row.Value(name).text;
        entry.kind = LongOf(row.Value(type));
        entry.id = LongOf(row.Value(id));
        entry.parent = LongOf(row.Value(parent));
        entry.flags = static_cast<std::uint32_t>(LongOf(row.Value(flags)));
        if (entry.kind == CatalogEntry::LocalTable) {
            const std::string_view stored = row.Value(properties).text;
            entry.properties = ReadProperties({reinterpret_cast<const std::uint8_t*>(stored.data()), stored.size()},
                                              file.Form().format, file.FileHeader().codePage);
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::vector<Relation> ReadRelations(const PageFile& file) {
    SystemTable relations(file, relationsTable);
    const int name = relations.Find("szRelationship"), place = relations.Find("icolumn");
    const int foreignTable = relations.Find("szObject"), foreignField = relations.Find("szColumn");
    const int table = relations.Find("szReferencedObject"), field = relations.Find("szReferencedColumn");
    struct Pair {
        std::int32_t place;
        std::string field, foreignField;
    };
    struct Parts {
        Relation relation;
        std::vector<Pair> pairs;
    };
    std::map<std::string, Parts> byName;  // in the order of the names, as their own index has them
    for (RowScan& row = relations.Scan(); row.Next();) {
        const std::string key(row.Value(name).text);
        Parts& parts = byName[key];
        parts.relation = {key, std::string(row.Value(table).text), std::string(row.Value(foreignTable).text), {}, {}};
        parts.pairs.push_back(
            {LongOf(row.Value(place)), std::string(row.Value(field).text), std::string(row.Value(foreignField).text)});
    }
    std::vector<Relation> found;
    for (auto& [key, parts] : byName) {
        std::stable_sort(parts.pairs.begin(), parts.pairs.end(),
                         [](const Pair& left, const Pair& right) { return left.place < right.place; });
        for (Pair& pair : parts.pairs) {
            parts.relation.Fields.push_back(std::move(pair.field));
            parts.relation.ForeignFields.push_back(std::move(pair.foreignField));
        }
        found.push_back(std::move(parts.relation));
    }
    return found;
}

}  // namespace quillform::jet
