#include "data/jet/CatalogWriter.h"

#include <set>

#include "data/jet/Catalog.h"

namespace quillform::jet {

namespace {

constexpr std::int32_t tablesContainer = 0x0F000001;

int PositionOf(const JetTable& table, std::string_view column) {
    const int position = table.Stored().FindName(column);
    if (position < 0) Damaged("a system table has no column " + std::string(column));
    return position;
}

/// The container of tables goes by its name; its number is the same in every file that was ever seen.
std::int32_t FindContainer(const JetTable& objects) {
    constexpr std::int32_t root = 0x0F000000;
    const int id = PositionOf(objects, "Id"), parent = PositionOf(objects, "ParentId"),
              name = PositionOf(objects, "Name");
    for (const auto scan = objects.Scan(); scan->Next();)
        if (scan->Value(parent).integer == root && scan->Value(name).text == "Tables")
            return static_cast<std::int32_t>(scan->Value(id).integer);
    return tablesContainer;
}

/// New objects belong to whom the database belongs.
Value FindOwner(const JetTable& objects) {
    const int name = PositionOf(objects, "Name"), owner = PositionOf(objects, "Owner");
    for (const auto scan = objects.Scan(); scan->Next();)
        if (scan->Value(name).text == "MSysDb") return Value(scan->Value(owner));
    return {};
}

std::set<std::string> AccountsOn(const JetTable& permissions, std::int32_t object) {
    const int id = PositionOf(permissions, "ObjectId"), account = PositionOf(permissions, "SID");
    std::set<std::string> found;
    for (const auto scan = permissions.Scan(); scan->Next();)
        if (scan->Value(id).integer == object) found.emplace(scan->Value(account).text);
    return found;
}

void DeleteRowsOf(JetTable& table, std::string_view column, std::int32_t id) {
    const int position = PositionOf(table, column);
    std::vector<data::RowId> rows;
    for (const auto scan = table.Scan(); scan->Next();)
        if (!scan->Value(position).IsNull() && scan->Value(position).integer == id) rows.push_back(scan->Id());
    for (const data::RowId row : rows) table.Delete(row);
}

}  // namespace

NamedRow& NamedRow::Set(std::string_view column, Value value) {
    values_[static_cast<std::size_t>(PositionOf(table_, column))] = std::move(value);
    return *this;
}

void EnterTable(JetTable& objects, JetTable& permissions, const std::string& name, std::uint32_t page,
                const std::string& properties, double now) {
    constexpr std::int32_t everything = 0xFFFFF;
    const std::int32_t container = FindContainer(objects);
    NamedRow object(objects);
    object.Set("Id", Value::Integer(page)).Set("ParentId", Value::Integer(container)).Set("Name", Value::Text(name));
    object.Set("Type", Value::Integer(CatalogEntry::LocalTable)).Set("Flags", Value::Integer(0));
    object.Set("DateCreate", Value::Date(now)).Set("DateUpdate", Value::Date(now)).Set("Owner", FindOwner(objects));
    if (!properties.empty()) object.Set("LvProp", Value::Binary(properties));
    objects.Insert(object.Values());
    for (const std::string& account : AccountsOn(permissions, container)) {
        NamedRow permission(permissions);
        permission.Set("ObjectId", Value::Integer(page)).Set("SID", Value::Binary(account));
        permission.Set("ACM", Value::Integer(everything)).Set("FInheritable", Value::Boolean(false));
        permissions.Insert(permission.Values());
    }
}

void RemoveObject(JetTable& objects, JetTable& permissions, std::int32_t id) {
    DeleteRowsOf(objects, "Id", id);
    DeleteRowsOf(permissions, "ObjectId", id);
}

}  // namespace quillform::jet
