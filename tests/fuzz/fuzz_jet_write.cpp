// Opens bytes as a Jet database and changes it: copies, changes and deletes rows of each table, makes and drops tables.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "JetMutator.h"
#include "data/jet/JetDatabase.h"

using namespace quillform;

namespace {

template <typename Action>
void Try(Action action) {
    try {
        action();
    } catch (const RunTimeError&) {
    }
}

std::vector<Value> RowOf(const data::TableScan& scan, std::size_t columns) {
    std::vector<Value> row;
    for (std::size_t i = 0; i < columns; ++i) row.emplace_back(scan.Value(static_cast<int>(i)));
    return row;
}

void ChangeRows(data::StoredTable& table) {
    constexpr std::size_t enough = 12;
    std::vector<data::RowId> ids;
    std::vector<std::vector<Value>> rows;
    Try([&] {
        for (const auto scan = table.Scan(); scan->Next() && rows.size() < enough;) {
            ids.push_back(scan->Id());
            rows.push_back(RowOf(*scan, table.Definition().Fields.size()));
        }
    });
    for (std::size_t i = 0; i < rows.size(); ++i) {
        Try([&] { table.Insert(rows[i]); });
        const std::vector<Value>& other = rows[(i * 7 + 3) % rows.size()];
        std::vector<std::pair<int, Value>> changes;
        for (std::size_t column = i % 3; column < other.size(); column += 3)
            changes.emplace_back(static_cast<int>(column), other[column]);
        Try([&] { table.Update(ids[i], changes); });
        if (i % 3 == 0) Try([&] { table.Delete(ids[i]); });
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Try([&] {
        jet::JetDatabase database(std::make_unique<jet::MemoryFile>(std::vector<std::uint8_t>(data, data + size)),
                                  "fuzz", Access::ReadWrite);
        database.Begin();
        const std::vector<TableDef> tables = database.Tables();
        for (std::size_t i = 0; i < tables.size(); ++i) Try([&] { ChangeRows(database.Rows(i)); });
        Try([&] { database.Commit(); });
        int made = 0;
        for (TableDef table : tables) {
            constexpr int enough = 4;
            if (table.IsSystem || ++made > enough) continue;
            table.Name = "Copy";
            Try([&] { database.CreateTable(table); });
            Try([&] { database.DropTable(tables.front().Name); });
            Try([&] { database.DropTable("Copy"); });
        }
    });
    return 0;
}
