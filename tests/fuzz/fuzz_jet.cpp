// Opens bytes as a Jet database and reads all that is in it: tables, rows both ways, relations, indexes.
// Good seeds are small real databases.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "JetMutator.h"
#include "data/jet/IndexTree.h"
#include "data/jet/JetDatabase.h"
#include "data/jet/UsageMap.h"

using namespace quillform;

namespace {

/// Damage must show as an error of ours; anything else ends the run.
template <typename Action>
void Try(Action action) {
    try {
        action();
    } catch (const RunTimeError&) {
    }
}

void ReadRows(const data::StoredTable& table) {
    constexpr int enough = 3000;
    const int columns = static_cast<int>(table.Definition().Fields.size());
    const auto reader = table.Reader();
    int rows = 0;
    for (const auto scan = table.Scan(); scan->Next() && rows < enough; ++rows) {
        reader->Read(scan->Id());
        for (int column = 0; column < columns; ++column) {
            Try([&] { scan->Value(column); });
            Try([&] { reader->Value(column); });
        }
    }
}

void ReadIndexes(const jet::PageFile& file, const jet::TableDefinition& table) {
    for (const jet::Tree& tree : table.trees) {
        Try([&] { jet::ReadUsageMap(file, tree.map); });
        Try([&] { jet::FindKey(file, tree.root, {}); });
        Try([&] {
            const std::vector<std::string> entries = jet::ReadAllEntries(file, tree.root);
            for (std::size_t i = 0; i < entries.size(); i += entries.size() / 8 + 1)
                jet::FindKey(file, tree.root, entries[i].substr(0, entries[i].size() - jet::rowPointerBytes));
        });
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Try([&] {
        jet::JetDatabase database(std::make_unique<jet::MemoryFile>(std::vector<std::uint8_t>(data, data + size)),
                                  "fuzz", Access::ReadOnly);
        Try([&] { database.Relations(); });
        Try([&] { jet::ReadFreePages(database.File()); });
        database.Facts();
        for (std::size_t i = 0; i < database.Tables().size(); ++i) {
            Try([&] {
                data::StoredTable& table = database.Rows(i);
                ReadIndexes(database.File(), dynamic_cast<jet::JetTable&>(table).Stored());
                ReadRows(table);
            });
        }
    });
    return 0;
}
