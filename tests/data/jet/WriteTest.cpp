// Databases that are made and changed here, read back by our own reader and by independent ones.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <optional>
#include <random>

#include "data/jet/DiskFile.h"
#include "data/jet/IndexCheck.h"
#include "data/jet/JetDatabase.h"
#include "data/jet/JetStorage.h"
#include "data/jet/JetTools.h"
#include "data/jet/Samples.h"
#include "platform/RunTimeError.h"

namespace quillform::test {
namespace {

using jet::Format;

class JetWrite : public ::testing::TestWithParam<Format> {
protected:
    std::string Name(const std::string& base) const { return base + (GetParam() == Format::Jet3 ? "3.mdb" : "4.mdb"); }
};

INSTANTIATE_TEST_SUITE_P(Formats, JetWrite, ::testing::Values(Format::Jet3, Format::Jet4), NameOfFormat);

TableDef PeopleTable(Format format) {
    TableDef table;
    table.Name = "People";
    table.Fields = {Column("Id", FieldType::Long),        Column("Name", FieldType::Text, 80),
                    Column("Active", FieldType::Boolean), Column("Age", FieldType::Byte),
                    Column("Height", FieldType::Integer), Column("Balance", FieldType::Currency),
                    Column("Ratio", FieldType::Single),   Column("Score", FieldType::Double),
                    Column("Born", FieldType::Date),      Column("Code", FieldType::Binary, 20),
                    Column("Note", FieldType::Memo),      Column("Picture", FieldType::LongBinary),
                    Column("Key", FieldType::Guid)};
    if (format == Format::Jet4) {
        table.Fields.push_back(Column("Price", FieldType::Decimal));
        table.Fields.back().Precision = 18;
        table.Fields.back().Scale = 4;
    }
    table.Fields[0].AutoNumber = true;
    table.Fields[1].Required = true;
    table.Indexes = {PrimaryKey("Id"),
                     {"ByName", {{"Name", false}, {"Age", true}}, false, false, false, false, false},
                     {"ByBorn", {{"Born", true}}, false, false, false, true, false},
                     {"Codes", {{"Code", false}}, false, true, false, true, false},
                     {"Keys",
                      {{"Key", true}, {"Active", false}, {"Balance", false}, {"Ratio", false}},
                      false,
                      false,
                      false,
                      false,
                      false}};
    return table;
}

std::string Guid(int number) {
    char text[64];
    std::snprintf(text, sizeof text, "{%08X-1234-5678-9ABC-%012X}", static_cast<unsigned>(number * 2654435761u),
                  static_cast<unsigned>(number));
    return text;
}

std::vector<Value> Person(int number, Format format) {
    const std::string names[] = {"Anna", "bert", "Cäcilie", "D'Arcy", "Smith-Jones", "ŻółćX", "Straße"};
    std::string name = names[number % 7] + " " + std::to_string(number);
    if (format == Format::Jet3 && number % 7 == 5) name = "Zolc " + std::to_string(number);
    std::vector<Value> row = {
        Value(),
        Value::Text(name),
        Value::Boolean(number % 3 == 0),
        Value::Integer(number % 256),
        number % 5 == 0 ? Value() : Value::Integer(number % 30000 - 15000),
        Value::Currency(number * 12345LL - 5000000),
        Value::Single(static_cast<float>(number) / 3 - 100),
        Value::Double(number * 1.25 - 7),
        number % 11 == 0 ? Value() : Value::Date(30000 + number / 7.0),
        number % 4 == 0 ? Value() : Value::Binary("code" + std::to_string(number)),
        number % 6 == 0 ? Value() : Value::Text(std::string(static_cast<std::size_t>(number * 37 % 9000), 'n')),
        number % 10 == 0 ? Value::Binary(std::string(static_cast<std::size_t>(number), '\x01')) : Value(),
        Value::Guid(Guid(number))};
    if (format == Format::Jet4) row.push_back(Value::Decimal(std::to_string(number - 50) + ".1250"));
    return row;
}

std::vector<int> AllColumns(const data::StoredTable& table) {
    std::vector<int> order(table.Definition().Fields.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int>(i);
    return order;
}

std::string Dump(data::Storage& storage, std::string_view name) {
    const data::StoredTable& table = Table(storage, name);
    return CanonicalDump(table, AllColumns(table));
}

IndexFindings Check(const std::filesystem::path& path) {
    return CheckAllIndexes(jet::PageFile(std::make_unique<jet::DiskFile>(path), path.string()));
}

TEST_P(JetWrite, EmptyDatabase) {
    const ScratchFile file(Name("empty"));
    {
        const auto storage = jet::Create(file.Path(), GetParam());
        EXPECT_EQ(storage->Tables().size(), 4u);
        for (const TableDef& table : storage->Tables()) EXPECT_TRUE(table.IsSystem);
        EXPECT_EQ(NumberOf([&] { jet::Create(file.Path(), GetParam()); }), ErrorNumber::PermissionDenied);
    }
    EXPECT_TRUE(jet::LooksLikeJet(file.Path()));
    EXPECT_EQ(std::filesystem::file_size(file.Path()), GetParam() == Format::Jet3 ? 20u * 2048 : 19u * 4096);
    const IndexFindings findings = Check(file.Path());
    EXPECT_EQ(findings.fault, "");
    EXPECT_EQ(findings.entries, 8u + 8u + 16u);
}

TEST_P(JetWrite, AllTypesComeBack) {
    const ScratchFile file(Name("types"));
    std::string before;
    {
        const auto storage = jet::Create(file.Path(), GetParam());
        storage->CreateTable(PeopleTable(GetParam()));
        data::StoredTable& people = Table(*storage, "People");
        storage->Begin();
        for (int i = 1; i <= 600; ++i) people.Insert(Person(i, GetParam()));
        storage->Commit();
        before = Dump(*storage, "People");
    }
    const auto storage = jet::Open(file.Path(), Access::ReadOnly);
    EXPECT_EQ(Dump(*storage, "People"), before);
    const TableDef& table = storage->Tables()[static_cast<std::size_t>(FindTable(*storage, "People"))];
    TableDef expected = PeopleTable(GetParam());
    ASSERT_EQ(table.Fields.size(), expected.Fields.size());
    for (std::size_t i = 0; i < table.Fields.size(); ++i) {
        EXPECT_EQ(table.Fields[i].Name, expected.Fields[i].Name);
        EXPECT_EQ(table.Fields[i].Type, expected.Fields[i].Type);
        EXPECT_EQ(table.Fields[i].Required, expected.Fields[i].Required);
        EXPECT_EQ(table.Fields[i].AutoNumber, expected.Fields[i].AutoNumber);
    }
    EXPECT_EQ(table.Indexes.size(), expected.Indexes.size());
    int number = 0;
    for (const auto scan = Table(*storage, "People").Scan(); scan->Next();) {
        ++number;
        std::vector<Value> wanted = Person(number, GetParam());
        wanted[0] = Value::Integer(number);
        for (std::size_t i = 0; i < wanted.size(); ++i)
            ASSERT_EQ(Value(scan->Value(static_cast<int>(i))), wanted[i]) << number << " " << table.Fields[i].Name;
    }
    EXPECT_EQ(number, 600);
    const IndexFindings findings = Check(file.Path());
    EXPECT_EQ(findings.fault, "");
    EXPECT_GE(findings.levels, 2u);
}

TEST_P(JetWrite, OtherReadersAgree) {
    if (!HasMdbExport()) GTEST_SKIP() << "mdb-export is not installed";
    const ScratchFile file(Name("judged"));
    {
        const auto storage = jet::Create(file.Path(), GetParam());
        storage->CreateTable(PeopleTable(GetParam()));
        data::StoredTable& people = Table(*storage, "People");
        storage->Begin();
        for (int i = 1; i <= 3000; ++i) people.Insert(Person(i, GetParam()));
        storage->Commit();
    }
    const std::string path = Quoted(file.Path());
    EXPECT_EQ(OutputOf("mdb-tables -1 " + path), "People\n");
    EXPECT_EQ(OutputOf("mdb-count " + path + " People"), "3000\n");
    const std::string exported = OutputOf("mdb-export -H -d '|' -Q -b strip " + path + " People");
    std::size_t line = 0;
    int number = 0;
    while (line < exported.size() && number < 3000) {
        ++number;
        const std::size_t end = exported.find('\n', line);
        const std::string text = exported.substr(line, end - line);
        const std::vector<Value> wanted = Person(number, GetParam());
        const std::string start = std::to_string(number) + "|" + std::string(wanted[1].View().text) + "|";
        ASSERT_EQ(text.substr(0, start.size()), start);
        if (!wanted[10].IsNull()) {
            ASSERT_NE(text.find("|" + std::string(wanted[10].View().text) + "|"), std::string::npos);
        }
        line = end + 1;
    }
    EXPECT_EQ(number, 3000);
}

/// Random inserts, updates and deletes against a plain map; after each transaction the file holds what the map holds.
TEST_P(JetWrite, RandomChangesAgainstModel) {
    const ScratchFile file(Name("random"));
    std::map<data::RowId, std::vector<Value>> model;
    std::mt19937 random(7);
    const auto pick = [&] { return std::next(model.begin(), static_cast<std::ptrdiff_t>(random() % model.size())); };
    {
        const auto storage = jet::Create(file.Path(), GetParam());
        storage->CreateTable(PeopleTable(GetParam()));
    }
    int next = 1;
    for (int round = 0; round < 25; ++round) {
        const auto storage = jet::Open(file.Path(), Access::ReadWrite);
        data::StoredTable& people = Table(*storage, "People");
        const auto kept = model;
        storage->Begin();
        for (int step = 0; step < (round % 4 == 3 ? 400 : 12); ++step) {
            const auto what = random() % 10;
            if (model.empty() || what < 5) {
                std::vector<Value> row = Person(next, GetParam());
                row[0] = Value::Integer(next++);
                const data::RowId id = people.Insert(row);
                ASSERT_TRUE(model.emplace(id, std::move(row)).second);
            } else if (what < 8) {
                const auto row = pick();
                const std::vector<Value> other = Person(next++, GetParam());
                const std::pair<int, Value> changes[] = {{1, other[1]}, {8, other[8]}, {9, other[9]}, {10, other[10]}};
                const std::size_t count = 1 + random() % 4;
                people.Update(row->first, {changes, count});
                for (std::size_t i = 0; i < count; ++i)
                    row->second[static_cast<std::size_t>(changes[i].first)] = changes[i].second;
            } else {
                const auto row = pick();
                people.Delete(row->first);
                model.erase(row);
            }
        }
        if (round % 5 == 4) {
            storage->Rollback();
            model = kept;
        } else {
            storage->Commit();
        }
        std::size_t rows = 0;
        for (const auto scan = people.Scan(); scan->Next(); ++rows) {
            const auto found = model.find(scan->Id());
            ASSERT_NE(found, model.end());
            for (std::size_t i = 0; i < found->second.size(); ++i)
                ASSERT_EQ(Value(scan->Value(static_cast<int>(i))), found->second[i]) << round << " column " << i;
        }
        ASSERT_EQ(rows, model.size());
        ASSERT_EQ(people.RowEstimate(), static_cast<std::int64_t>(rows));
        ASSERT_EQ(CheckAllIndexes(dynamic_cast<jet::JetDatabase&>(*storage).File()).fault, "") << round;
    }
    EXPECT_EQ(Check(file.Path()).fault, "");
    if (HasMdbExport()) {
        EXPECT_EQ(OutputOf("mdb-count " + Quoted(file.Path()) + " People"), std::to_string(model.size()) + "\n");
    }
}

/// An inner transaction that is taken back leaves what the outer one did before it.
TEST_P(JetWrite, InnerRollbackKeepsTheOuterChanges) {
    const ScratchFile file(Name("inner"));
    {
        const auto storage = jet::Create(file.Path(), GetParam());
        storage->Begin();
        storage->CreateTable(SmallTable());
        InsertRows(*storage, 300);
        data::StoredTable& rows = Table(*storage, "T");
        storage->Begin();
        std::vector<data::RowId> ids;
        for (const auto scan = rows.Scan(); scan->Next();) ids.push_back(scan->Id());
        for (std::size_t i = 0; i < ids.size(); i += 2) rows.Delete(ids[i]);
        storage->Begin();
        TableDef other = SmallTable();
        other.Name = "Other";
        storage->CreateTable(other);
        InsertRows(*storage, 500);
        storage->Rollback();
        EXPECT_EQ(FindTable(*storage, "Other"), -1);
        EXPECT_EQ(rows.RowEstimate(), 150);
        storage->Rollback();
        EXPECT_EQ(&Table(*storage, "T"), &rows) << "who holds the table may go on";
        EXPECT_EQ(rows.RowEstimate(), 300);
        InsertRows(*storage, 7);
        storage->Commit();
        EXPECT_EQ(NumberOf([&] { storage->Commit(); }), ErrorNumber::InvalidProcedureCall);
    }
    EXPECT_EQ(CountRows(file.Path()), 307u);
    EXPECT_EQ(Check(file.Path()).fault, "");
}

TEST_P(JetWrite, NumbersCountOn) {
    const ScratchFile file(Name("counting"));
    TableDef table;
    table.Name = "T";
    table.Fields = {Column("Id", FieldType::Long), Column("Mark", FieldType::Guid)};
    for (Field& field : table.Fields) field.AutoNumber = true;
    table.Indexes = {PrimaryKey("Id"), {"Mark", {{"Mark", false}}, false, true, false, false, true}};
    jet::Create(file.Path(), GetParam())->CreateTable(table);
    std::vector<std::int64_t> ids;
    const auto insert = [&ids](data::Storage& storage, Value id) {
        data::StoredTable& rows = Table(storage, "T");
        const auto reader = rows.Reader();
        ASSERT_TRUE(reader->Read(rows.Insert(std::vector<Value>{std::move(id), Value()})));
        ids.push_back(reader->Value(0).integer);
        EXPECT_EQ(reader->Value(1).text.size(), 38u);
    };
    for (int round = 0; round < 2; ++round) {
        const auto storage = jet::Open(file.Path(), Access::ReadWrite);
        insert(*storage, Value());
        insert(*storage, Value());
        storage->Begin();
        insert(*storage, Value());
        storage->Rollback();
        insert(*storage, Value());
        insert(*storage, Value::Integer(ids.back() + 100));
    }
    EXPECT_EQ(ids, (std::vector<std::int64_t>{1, 2, 3, 3, 103, 104, 105, 106, 106, 206}));
    EXPECT_EQ(Check(file.Path()).fault, "");
}

/// The catalogue is a table too: whoever changes it must not pull a table away from under the transaction.
TEST_P(JetWrite, CatalogueChangedInsideTransaction) {
    jet::JetDatabase database(std::make_unique<jet::MemoryFile>(jet::JetDatabase::MakeEmpty(GetParam(), 40000)),
                              "memory", Access::ReadWrite);
    TableDef table;
    table.Name = "Old";
    table.Fields = {Column("Id", FieldType::Long)};
    table.Indexes = {PrimaryKey("Id")};
    database.CreateTable(table);
    database.Begin();
    Table(database, "Old").Insert(std::vector<Value>{Value::Integer(1)});
    data::StoredTable& objects = Table(database, "MSysObjects");
    const int name = objects.Definition().FindField("Name");
    data::RowId row = 0;
    for (const auto scan = objects.Scan(); scan->Next();)
        if (scan->Value(name).text == "Old") row = scan->Id();
    const std::pair<int, Value> change[] = {{name, Value::Text("Renamed")}};
    objects.Update(row, change);
    table.Name = "Another";
    database.CreateTable(table);
    EXPECT_EQ(FindTable(database, "Old"), -1);
    EXPECT_EQ(NumberOf([&] { database.DropTable("MSysACEs"); }), ErrorNumber::NotSupported);
    database.Commit();
    EXPECT_EQ(Dump(database, "Renamed"), "1\n");
    EXPECT_EQ(CheckAllIndexes(database.File()).fault, "");
}

/// A table is replaced by another one of its name, which gets its pages too; then all is taken back.
TEST_P(JetWrite, ReplacedTableComesBackOnRollback) {
    jet::JetDatabase database(std::make_unique<jet::MemoryFile>(jet::JetDatabase::MakeEmpty(GetParam(), 40000)),
                              "memory", Access::ReadWrite);
    TableDef table;
    table.Name = "T";
    table.Fields = {Column("Id", FieldType::Long), Column("Name", FieldType::Text, 20)};
    table.Indexes = {PrimaryKey("Id")};
    database.CreateTable(table);
    Table(database, "T").Insert(std::vector<Value>{Value::Integer(7), Value::Text("seven")});
    database.Begin();
    database.DropTable("T");
    table.Fields = {Column("Other", FieldType::Double)};
    table.Indexes.clear();
    database.CreateTable(table);
    Table(database, "T").Insert(std::vector<Value>{Value::Double(1.5)});
    database.Rollback();
    EXPECT_EQ(Dump(database, "T"), "7\tseven\n");
    Table(database, "T").Insert(std::vector<Value>{Value::Integer(8), Value::Text("eight")});
    EXPECT_EQ(Dump(database, "T"), "7\tseven\n8\teight\n");
    EXPECT_EQ(CheckAllIndexes(database.File()).fault, "");
}

TEST_P(JetWrite, RefusalsChangeNothing) {
    const ScratchFile file(Name("refused"));
    const auto storage = jet::Create(file.Path(), GetParam());
    TableDef table;
    table.Name = "T";
    table.Fields = {Column("A", FieldType::Long), Column("B", FieldType::Text, 5), Column("C", FieldType::Byte)};
    table.Fields[1].Required = true;
    table.Indexes = {PrimaryKey("A"), {"B", {{"B", false}}, false, true, false, false, false}};
    storage->CreateTable(table);
    data::StoredTable& rows = Table(*storage, "T");
    const auto row = [](Value a, Value b, Value c) {
        return std::vector<Value>{std::move(a), std::move(b), std::move(c)};
    };
    const data::RowId first = rows.Insert(row(Value::Integer(1), Value::Text("one"), Value()));
    const data::RowId second = rows.Insert(row(Value::Integer(2), Value::Text("two"), Value::Integer(255)));
    const std::string before = Dump(*storage, "T");
    const std::pair<std::vector<Value>, ErrorNumber> refused[] = {
        {row(Value::Integer(1), Value::Text("x"), Value()), ErrorNumber::DuplicateKey},
        {row(Value::Integer(3), Value::Text("ONE  "), Value()), ErrorNumber::DuplicateKey},
        {row(Value(), Value::Text("x"), Value()), ErrorNumber::FieldRequired},
        {row(Value::Integer(3), Value(), Value()), ErrorNumber::FieldRequired},
        {row(Value::Integer(3), Value::Text("sixsix"), Value()), ErrorNumber::ValueTooLong},
        {row(Value::Integer(3), Value::Text("x"), Value::Integer(256)), ErrorNumber::Overflow},
        {row(Value::Integer(3), Value::Integer(4), Value()), ErrorNumber::DataTypeMismatch},
        {{Value::Integer(3)}, ErrorNumber::InvalidArgument},
    };
    storage->Begin();
    for (const auto& refusal : refused) EXPECT_EQ(NumberOf([&] { rows.Insert(refusal.first); }), refusal.second);
    const std::pair<int, Value> duplicate[] = {{1, Value::Text("One")}};
    EXPECT_EQ(NumberOf([&] { rows.Update(second, duplicate); }), ErrorNumber::DuplicateKey);
    rows.Update(first, duplicate);  // its own value isn't in its way
    rows.Delete(second);
    EXPECT_EQ(NumberOf([&] { rows.Delete(second); }), ErrorNumber::NoCurrentRecord);
    rows.Insert(row(Value::Integer(2), Value::Text("two"), Value()));
    EXPECT_EQ(NumberOf([&] { rows.Insert(row(Value::Integer(2), Value::Text("three"), Value())); }),
              ErrorNumber::DuplicateKey);
    storage->Rollback();
    EXPECT_EQ(Dump(*storage, "T"), before);
    EXPECT_EQ(NumberOf([&] { storage->CreateTable(table); }), ErrorNumber::TableExists);
    EXPECT_EQ(NumberOf([&] { storage->DropTable("U"); }), ErrorNumber::TableNotFound);
    EXPECT_EQ(NumberOf([&] { storage->DropTable("MSysObjects"); }), ErrorNumber::NotSupported);
    table.Name = "a.b";
    EXPECT_EQ(NumberOf([&] { storage->CreateTable(table); }), ErrorNumber::InvalidName);
    EXPECT_EQ(Check(file.Path()).fault, "");
}

TEST_P(JetWrite, TablesComeAndGo) {
    const ScratchFile file(Name("tables"));
    const auto storage = jet::Create(file.Path(), GetParam());
    TableDef table = PeopleTable(GetParam());
    std::uintmax_t size = 0;
    for (int round = 0; round < 6; ++round) {
        storage->CreateTable(table);
        data::StoredTable& people = Table(*storage, "People");
        storage->Begin();
        for (int i = 1; i <= 200; ++i) people.Insert(Person(i, GetParam()));
        storage->Commit();
        storage->DropTable("people");
        EXPECT_EQ(FindTable(*storage, "People"), -1);
        if (round == 1) size = std::filesystem::file_size(file.Path());
        if (round > 1) {
            EXPECT_EQ(std::filesystem::file_size(file.Path()), size) << "pages of dropped tables are used again";
        }
    }
    storage->Begin();
    storage->CreateTable(table);
    Table(*storage, "People").Insert(Person(1, GetParam()));
    storage->Rollback();
    EXPECT_EQ(FindTable(*storage, "People"), -1);
    EXPECT_EQ(Check(file.Path()).fault, "");
}

TEST_P(JetWrite, WideTableAndManyPages) {
    const ScratchFile file(Name("wide"));
    const auto storage = jet::Create(file.Path(), GetParam());
    TableDef table;
    table.Name = "Wide";
    for (int i = 0; i < 200; ++i)
        table.Fields.push_back(Column(("A column with a rather long name, number " + std::to_string(i)).c_str(),
                                      i % 3 == 0 ? FieldType::Long : FieldType::Text, 30));
    storage->CreateTable(table);
    data::StoredTable& rows = Table(*storage, "Wide");
    storage->Begin();
    for (int number = 0; number < 6000; ++number) {
        std::vector<Value> values;
        for (int i = 0; i < 200; ++i)
            values.push_back(i % 3 == 0 ? Value::Integer(number * i)
                                        : Value::Text(i % 7 == 0 ? "ab" + std::to_string(number) : ""));
        rows.Insert(values);
    }
    storage->Commit();
    int number = 0;
    for (const auto scan = rows.Scan(); scan->Next(); ++number) {
        ASSERT_EQ(scan->Value(198).integer, number * 198);
        ASSERT_EQ(scan->Value(7).text, "ab" + std::to_string(number));
        ASSERT_EQ(scan->Value(196).text, "ab" + std::to_string(number));
    }
    EXPECT_EQ(number, 6000);
    EXPECT_GT(std::filesystem::file_size(file.Path()), 3u << 20) << "so that the maps outgrow their rows";
    if (HasMdbExport()) {
        EXPECT_EQ(OutputOf("mdb-count " + Quoted(file.Path()) + " Wide"), "6000\n");
    }
    EXPECT_EQ(Check(file.Path()).fault, "");
}

}  // namespace
}  // namespace quillform::test
