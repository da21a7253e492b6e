// Every table of every sample file against what independent readers found in it.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "data/jet/DiskFile.h"
#include "data/jet/IndexCheck.h"
#include "data/jet/JetDatabase.h"
#include "data/jet/JetStorage.h"
#include "data/jet/Samples.h"
#include "data/jet/Sha256.h"
#include "platform/RunTimeError.h"

namespace quillform::test {
namespace {

using Key = std::pair<std::string, std::string>;  // file, table

std::map<Key, std::vector<Line>> ByTable(const std::string& list) {
    std::map<Key, std::vector<Line>> found;
    for (Line& line : ReadList(list)) found[{line[0], line[1]}].push_back(std::move(line));
    return found;
}

/// Below the door that asks for passwords: two samples have one.
std::shared_ptr<data::Storage> OpenSample(const std::string& file) {
    const std::filesystem::path path = SampleFolder() / file;
    return std::make_shared<jet::JetDatabase>(std::make_unique<jet::DiskFile>(path), path.string(), Access::ReadOnly);
}

/// Positions of the columns by ascending column number.
std::vector<int> StorageOrder(const std::vector<Line>& columns) {
    std::map<int, int> byNumber;
    for (const Line& line : columns) byNumber[std::stoi(line[2])] = std::stoi(line[3]);
    std::vector<int> order;
    for (const auto& [number, position] : byNumber) order.push_back(position);
    return order;
}

TEST(Samples, RowsAreThoseOfOtherReaders) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    const auto columns = ByTable("expected-columns.tsv");
    std::size_t tables = 0;
    for (const Line& line : ReadList("expected-rows.tsv")) {
        SCOPED_TRACE(line[0] + ": " + line[1]);
        const auto storage = OpenSample(line[0]);
        const int index = FindTable(*storage, line[1]);
        ASSERT_GE(index, 0);
        std::size_t rows = 0;
        const std::string dump = CanonicalDump(storage->Rows(static_cast<std::size_t>(index)),
                                               StorageOrder(columns.at({line[0], line[1]})), &rows);
        EXPECT_EQ(std::to_string(rows), line[2]);
        EXPECT_EQ(Sha256(dump), line[3]);
        ++tables;
    }
    EXPECT_GT(tables, 140u);
}

std::string TypeName(const Field& field) {
    switch (field.Type) {
        case FieldType::Boolean:
            return "BOOLEAN";
        case FieldType::Byte:
            return "BYTE";
        case FieldType::Integer:
            return "INT";
        case FieldType::Long:
            return "LONG";
        case FieldType::Currency:
            return "MONEY";
        case FieldType::Single:
            return "FLOAT";
        case FieldType::Double:
            return "DOUBLE";
        case FieldType::Date:
            return "SHORT_DATE_TIME";
        case FieldType::Binary:
            return "BINARY";
        case FieldType::Text:
            return "TEXT";
        case FieldType::LongBinary:
            return "OLE";
        case FieldType::Memo:
            return "MEMO";
        case FieldType::Guid:
            return "GUID";
        case FieldType::Decimal:
            return "NUMERIC";
    }
    return "?";
}

TEST(Samples, ColumnsAreThoseOfOtherReaders) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    for (const auto& [key, lines] : ByTable("expected-columns.tsv")) {
        SCOPED_TRACE(key.first + ": " + key.second);
        const auto storage = OpenSample(key.first);
        const int index = FindTable(*storage, key.second);
        ASSERT_GE(index, 0);
        const TableDef& table = storage->Tables()[static_cast<std::size_t>(index)];
        ASSERT_EQ(table.Fields.size(), lines.size());
        const int unit = key.first.starts_with("jet4") ? 2 : 1;
        for (const Line& line : lines) {
            SCOPED_TRACE(line[4]);
            const Field& field = table.Fields[std::stoul(line[3])];
            EXPECT_EQ(field.Name, line[4]);
            EXPECT_EQ(TypeName(field), line[6]);
            EXPECT_EQ(field.Type == FieldType::Text ? field.Size * unit : field.Size, std::stoi(line[7]));
            EXPECT_EQ(field.AutoNumber, line[9] == "1");
            if (field.Type != FieldType::Decimal) continue;
            EXPECT_EQ(std::to_string(field.Precision), line[10]);
            EXPECT_EQ(std::to_string(field.Scale), line[11]);
        }
    }
}

Line Described(const std::string& file, const std::string& table, const IndexDef& index) {
    const auto flag = [](bool set) { return std::string(set ? "1" : "0"); };
    std::string columns;
    for (const IndexDef::Column& column : index.Columns)
        columns += (columns.empty() ? "" : ",") + column.Name + (column.Descending ? " desc" : " asc");
    return {file,
            table,
            index.Name,
            flag(index.Primary),
            flag(index.Foreign),
            flag(index.Unique),
            flag(index.IgnoreNulls),
            flag(index.Required),
            columns};
}

TEST(Samples, IndexesAreThoseOfOtherReaders) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    for (auto& [key, lines] : ByTable("expected-indexes.tsv")) {
        const auto storage = OpenSample(key.first);
        const int index = FindTable(*storage, key.second);
        ASSERT_GE(index, 0);
        std::vector<Line> found;
        for (const IndexDef& definition : storage->Tables()[static_cast<std::size_t>(index)].Indexes)
            found.push_back(Described(key.first, key.second, definition));
        std::vector<Line> expected = lines;
        std::sort(expected.begin(), expected.end());
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, expected);
    }
}

TEST(Samples, ReaderFindsEachScannedRow) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    for (const auto& path : SampleFiles()) {
        SCOPED_TRACE(path.filename().string());
        const auto storage = OpenSample(path.filename().string());
        for (std::size_t i = 0; i < storage->Tables().size(); ++i) {
            if (storage->Tables()[i].IsLinked) continue;
            const data::StoredTable& table = storage->Rows(i);
            const auto reader = table.Reader();
            for (auto scan = table.Scan(); scan->Next();) {
                ASSERT_TRUE(reader->Read(scan->Id()));
                for (int column = 0; column < static_cast<int>(table.Definition().Fields.size()); ++column)
                    ASSERT_EQ(Value(scan->Value(column)), Value(reader->Value(column)));
            }
            EXPECT_FALSE(reader->Read(-1));
            EXPECT_FALSE(reader->Read(0));
            EXPECT_FALSE(reader->Read(0xFFFFFF00));
        }
    }
}

/// Computes the key of every row for every index of every table and compares with what the engine stored.
TEST(Samples, IndexKeysAreThoseOfTheEngine) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    IndexFindings all;
    for (const auto& path : SampleFiles()) {
        const jet::PageFile file(std::make_unique<jet::DiskFile>(path), path.string());
        const IndexFindings findings = CheckAllIndexes(file);
        EXPECT_EQ(findings.fault, "") << path.filename();
        all.trees += findings.trees;
        all.entries += findings.entries;
        all.unknownOrders += findings.unknownOrders;
    }
    EXPECT_GT(all.trees, 500u);
    EXPECT_GT(all.entries, 40000u);
    std::cout << all.trees << " trees, " << all.entries << " entries, " << all.unknownOrders << " of unknown order\n";
}

TEST(Samples, RelationsOfNorthwind) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    for (const char* file : {"jet3-northwind.mdb", "jet4-northwind.mdb"}) {
        const auto relations = OpenSample(file)->Relations();
        const auto found = std::find_if(relations.begin(), relations.end(), [](const Relation& relation) {
            return relation.Name == "OrdersOrder Details";
        });
        ASSERT_NE(found, relations.end()) << file;
        EXPECT_EQ(found->Table, "Orders");
        EXPECT_EQ(found->ForeignTable, "Order Details");
        EXPECT_EQ(found->Fields, std::vector<std::string>{"OrderID"});
        EXPECT_EQ(found->ForeignFields, std::vector<std::string>{"OrderID"});
    }
}

TEST(Samples, PasswordIsRespected) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    try {
        jet::Open(SampleFolder() / "jet4-password.mdb", Access::ReadOnly);
        FAIL() << "opened without its password";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::PasswordRequired);
        EXPECT_NE(std::string(error.what()).find("jet4-password.mdb"), std::string::npos);
    }
}

}  // namespace
}  // namespace quillform::test
