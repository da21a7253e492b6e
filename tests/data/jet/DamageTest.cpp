// Database files that lie: each lie ends in an error, soon, and does no harm.

#include <gtest/gtest.h>

#include <random>

#include "data/jet/DataPage.h"
#include "data/jet/IndexCheck.h"
#include "data/jet/IndexTree.h"
#include "data/jet/JetDatabase.h"
#include "data/jet/JetTools.h"
#include "data/jet/Samples.h"
#include "data/jet/UsageMap.h"

namespace quillform::test {
namespace {

using jet::Format;
using FileBytes = std::vector<std::uint8_t>;

/// A database with one table of 3,000 rows, and where its parts lie in the file.
struct KnownFile {
    explicit KnownFile(Format format) : form(jet::LayoutOf(format)) {
        const auto content = std::make_shared<FileBytes>(jet::JetDatabase::MakeEmpty(format, 40000));
        {
            jet::JetDatabase database(std::make_unique<jet::MemoryFile>(content), "good", Access::ReadWrite);
            TableDef plan = SmallTable();
            plan.Fields.push_back(Column("Note", FieldType::Memo));
            database.CreateTable(plan);
            data::StoredTable& rows = Table(database, "T");
            database.Begin();
            for (int i = 0; i < 3000; ++i)
                rows.Insert(std::vector<Value>{Value(), Value::Text("row " + std::to_string(i)),
                                               i == 0 ? Value::Text(std::string(9000, 'n')) : Value()});
            database.Commit();
            const jet::TableDefinition& table = dynamic_cast<jet::JetTable&>(rows).Stored();
            definition = Place(table.page);
            data = Place(jet::ReadUsageMap(database.File(), table.ownedMap).front());
            longValue = Place(jet::ReadUsageMap(database.File(), table.columns[2].ownedMap).back());
            root = Place(table.trees[0].root);
            const std::uint32_t child =
                jet::ChildOf(jet::ReadIndexNode(database.File(), table.trees[0].root).entries[0]);
            leaf = Place(child);
            treeRootField = definition + form.defEnd + form.treeCounts + 3 * form.columnSize;
            for (const jet::Column& column : table.columns)
                treeRootField += column.name.size() * form.textUnit + form.countWidth;
            treeRootField += form.treeRoot;
        }
        bytes = *content;
    }
    std::size_t Place(std::uint32_t page) const { return page * form.pageSize; }
    std::uint32_t PageOf(std::size_t place) const { return static_cast<std::uint32_t>(place / form.pageSize); }
    std::size_t Slot(std::size_t slot) const { return data + form.dataCount + 2 + 2 * slot; }
    std::size_t RowStart(std::size_t page) const {
        return page + (jet::GetU16(&bytes[page + form.dataCount + 2]) & jet::slotOffset);
    }

    const jet::Layout& form;
    std::size_t definition = 0, data = 0, longValue = 0, root = 0, leaf = 0, treeRootField = 0;
    FileBytes bytes{};
};

struct Lie {
    const char* what;
    std::function<void(const KnownFile&, FileBytes&)> tell;
};

const Lie lies[] = {
    {"a definition that goes on with itself",
     [](const KnownFile& file, FileBytes& bytes) {
         jet::PutU32(&bytes[file.definition + 4], file.PageOf(file.definition));
     }},
    {"a definition that goes on behind the file",
     [](const KnownFile& file, FileBytes& bytes) { jet::PutU32(&bytes[file.definition + 4], 0xFFFFFF); }},
    {"more columns than there is room for",
     [](const KnownFile& file, FileBytes& bytes) {
         jet::PutU16(&bytes[file.definition + file.form.defColumns], 0xFFFF);
     }},
    {"more indexes than there is room for",
     [](const KnownFile& file, FileBytes& bytes) {
         jet::PutU32(&bytes[file.definition + file.form.defTrees], 0x7FFFFFFF);
     }},
    {"a list of pages that isn't there",
     [](const KnownFile& file, FileBytes& bytes) {
         jet::PutU32(&bytes[file.definition + file.form.defOwnedMap], 0xFFFFFF00);
     }},
    {"more rows than a page holds",
     [](const KnownFile& file, FileBytes& bytes) { jet::PutU16(&bytes[file.data + file.form.dataCount], 0xFFFF); }},
    {"a row behind the end of its page",
     [](const KnownFile& file, FileBytes& bytes) { jet::PutU16(&bytes[file.Slot(1)], 0x1FFF); }},
    {"a row that moved to where it is",
     [](const KnownFile& file, FileBytes& bytes) {
         jet::PutU16(&bytes[file.Slot(0)], jet::GetU16(&bytes[file.Slot(0)]) | jet::slotMoved);
         jet::PutU32(&bytes[file.RowStart(file.data)], file.PageOf(file.data) << 8);
     }},
    {"a row that moved out of the file",
     [](const KnownFile& file, FileBytes& bytes) {
         jet::PutU16(&bytes[file.Slot(0)], jet::GetU16(&bytes[file.Slot(0)]) | jet::slotMoved);
         jet::PutU32(&bytes[file.RowStart(file.data)], 0xFFFFFF00);
     }},
    {"a long value that goes on behind the file",
     [](const KnownFile& file, FileBytes& bytes) { jet::PutU32(&bytes[file.RowStart(file.longValue)], 0xFFFFFF00); }},
    {"leaves of an index in a circle",
     [](const KnownFile& file, FileBytes& bytes) {
         jet::PutU32(&bytes[file.leaf + file.form.nodeNext], file.PageOf(file.leaf));
     }},
    {"an index page that is its own child",
     [](const KnownFile& file, FileBytes& bytes) {
         for (std::size_t i = 0; i + 4 <= file.form.pageSize - file.form.nodeEntries; ++i) {
             std::uint8_t* at = &bytes[file.root + file.form.nodeEntries + i];
             const std::uint32_t leaf = file.PageOf(file.leaf), root = file.PageOf(file.root);
             if ((std::uint32_t{at[0]} << 24 | at[1] << 16 | at[2] << 8 | at[3]) != leaf) continue;
             for (int k = 0; k < 4; ++k) at[k] = static_cast<std::uint8_t>(root >> (24 - 8 * k));
         }
     }},
    {"an index without pages",
     [](const KnownFile& file, FileBytes& bytes) { jet::PutU32(&bytes[file.treeRootField], 0xFFFFFF); }},
    {"entries of an index behind the end of their page",
     [](const KnownFile& file, FileBytes& bytes) { bytes[file.leaf + file.form.nodeEntries - 1] = 0x80; }},
};

/// Reads the table's rows by themselves and by its index; the first error that this ends in.
ErrorNumber ReadTable(FileBytes bytes) {
    return NumberOf([&] {
        jet::JetDatabase database(std::make_unique<jet::MemoryFile>(std::move(bytes)), "lying", Access::ReadOnly);
        const data::StoredTable& table = Table(database, "T");
        for (const auto scan = table.Scan(); scan->Next();)
            for (int column = 0; column < 3; ++column) scan->Value(column);
        for (const jet::Tree& tree : dynamic_cast<const jet::JetTable&>(table).Stored().trees)
            jet::ReadAllEntries(database.File(), tree.root);
    });
}

class JetDamage : public ::testing::TestWithParam<Format> {};

INSTANTIATE_TEST_SUITE_P(Formats, JetDamage, ::testing::Values(Format::Jet3, Format::Jet4), NameOfFormat);

TEST_P(JetDamage, EachLieEndsInAnError) {
    const KnownFile file(GetParam());
    ASSERT_EQ(ReadTable(file.bytes), ErrorNumber{});
    for (const Lie& lie : lies) {
        FileBytes bytes = file.bytes;
        lie.tell(file, bytes);
        EXPECT_NE(bytes, file.bytes) << lie.what;
        EXPECT_EQ(ReadTable(std::move(bytes)), ErrorNumber::UnrecognizedFormat) << lie.what;
    }
}

/// A report over half of the rows would look like one over all of them.
TEST_P(JetDamage, AFileThatWasCutOffMissesNoRowInSilence) {
    const KnownFile file(GetParam());
    int errors = 0;
    for (std::size_t size = file.bytes.size() - 1; size > file.form.pageSize; size -= file.form.pageSize) {
        int rows = 0;
        const ErrorNumber error = NumberOf([&] {
            const FileBytes bytes(file.bytes.begin(), file.bytes.begin() + static_cast<std::ptrdiff_t>(size));
            jet::JetDatabase database(std::make_unique<jet::MemoryFile>(bytes), "cut off", Access::ReadOnly);
            for (const auto scan = Table(database, "T").Scan(); scan->Next();) ++rows;
        });
        errors += error == ErrorNumber::UnrecognizedFormat;
        EXPECT_TRUE(rows == 3000 || error == ErrorNumber::UnrecognizedFormat) << size << " bytes, " << rows << " rows";
    }
    EXPECT_GT(errors, 20);
}

/// Reads everything that there is to read.
void ReadEverything(std::vector<std::uint8_t> bytes) {
    jet::JetDatabase database(std::make_unique<jet::MemoryFile>(std::move(bytes)), "damaged", Access::ReadWrite);
    NumberOf([&] { database.Relations(); });
    for (std::size_t i = 0; i < database.Tables().size(); ++i) {
        NumberOf([&] {
            const data::StoredTable& table = database.Rows(i);
            std::size_t rows = 0;
            for (const auto scan = table.Scan(); scan->Next() && rows < 20000; ++rows)
                for (int column = 0; column < static_cast<int>(table.Definition().Fields.size()); ++column)
                    NumberOf([&] { scan->Value(column); });
        });
    }
    NumberOf([&] { CheckAllIndexes(database.File()); });
}

/// Damaged files give errors, or rows with wrong values, but nothing worse; the sanitizers watch in their build.
TEST(JetRandomDamage, RandomBytesAreReadWithoutHarm) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    std::mt19937 random(20260102);
    for (const char* name : {"jet3-deleted-rows.mdb", "jet3-wide-74.mdb", "jet4-minimal-a.mdb",
                             "jet4-overflow-rows.mdb", "jet4-unicode-compression.mdb"}) {
        const std::string good = Content(SampleFolder() / name);
        const std::size_t pageSize = good[0x14] == 0 ? 2048 : 4096;
        for (int round = 0; round < 60; ++round) {
            std::vector<std::uint8_t> bytes(good.begin(), good.end());
            for (auto flips = 1 + random() % 20; flips > 0; --flips) {
                // Mostly where pages have their heads: damage in the middle of a text says nothing.
                const std::size_t page = random() % (bytes.size() / pageSize);
                const std::size_t at = page * pageSize + random() % (random() % 3 ? 80 : pageSize);
                bytes[at] = static_cast<std::uint8_t>(random() % 2 ? bytes[at] ^ 1u << random() % 8 : random());
            }
            if (round % 10 == 0) bytes.resize(random() % bytes.size());
            NumberOf([&] { ReadEverything(std::move(bytes)); });
        }
    }
}

/// Writing into a damaged file ends in an error or in a file that can still be read; never in harm.
TEST(JetRandomDamage, RandomBytesAreWrittenWithoutHarm) {
    std::mt19937 random(5);
    for (const Format format : {Format::Jet3, Format::Jet4}) {
        const auto content = std::make_shared<std::vector<std::uint8_t>>(jet::JetDatabase::MakeEmpty(format, 40000));
        {
            jet::JetDatabase database(std::make_unique<jet::MemoryFile>(content), "good", Access::ReadWrite);
            database.CreateTable(SmallTable());
            InsertRows(database, 600);
        }
        const std::size_t pageSize = format == Format::Jet3 ? 2048 : 4096;
        for (int round = 0; round < 60; ++round) {
            std::vector<std::uint8_t> bytes = *content;
            for (auto flips = 1 + random() % 8; flips > 0; --flips) {
                const std::size_t at = (1 + random() % (bytes.size() / pageSize - 1)) * pageSize + random() % 100;
                bytes[at] = static_cast<std::uint8_t>(random());
            }
            NumberOf([&] {
                jet::JetDatabase database(std::make_unique<jet::MemoryFile>(bytes), "damaged", Access::ReadWrite);
                NumberOf([&] { InsertRows(database, 50); });
                NumberOf([&] {
                    data::StoredTable& table = Table(database, "T");
                    std::vector<data::RowId> rows;
                    for (const auto scan = table.Scan(); scan->Next() && rows.size() < 50;) rows.push_back(scan->Id());
                    const std::pair<int, Value> change[] = {{1, Value::Text("another text, somewhat longer")}};
                    for (const data::RowId row : rows) table.Update(row, change);
                    for (const data::RowId row : rows) table.Delete(row);
                });
                NumberOf([&] { database.DropTable("T"); });
            });
        }
    }
}

}  // namespace
}  // namespace quillform::test
