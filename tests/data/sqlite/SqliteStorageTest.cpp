#include <gtest/gtest.h>
#include <unistd.h>

#include "data/sqlite/Connection.h"
#include "data/sqlite/SqliteStorage.h"

namespace quillform::sqlite {
namespace {

class SqliteStorageTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (std::filesystem::temp_directory_path() / "quillform-sqlite-XXXXXX").string();
        folder_ = mkdtemp(name.data());
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::shared_ptr<data::Storage> Make(const std::string& statements) {
        Connection(Path(), Connection::Mode::Create).Execute(statements);
        return OpenStorage(Path(), Access::ReadWrite, clock_);
    }
    std::string Path() const { return (folder_ / "test.db").string(); }
    static std::string Column(data::Storage& storage, std::size_t table, int column) {
        std::string text;
        for (const auto rows = storage.Rows(table).Scan(); rows->Next();) {
            const ValueView value = rows->Value(column);
            text += (text.empty() ? "" : " / ") + (value.IsNull() ? "-" : GeneralText(value));
        }
        return text;
    }

    FixedClock clock_{36161.5};
    std::filesystem::path folder_;
};

TEST_F(SqliteStorageTest, ReadsDatesInEveryForm) {
    const auto storage = Make(
        "CREATE TABLE t(d DATETIME);"
        "INSERT INTO t VALUES('1998-12-31'), ('1998-12-31 10:30:00'), ('1998-12-31T10:30:00Z'), ('12/31/1998'),"
        "(915062400), (915062400000), (2451178.5), (36160), (NULL), ('soon')");
    EXPECT_EQ(Column(*storage, 0, 0),
              "12/31/1998 / 12/31/1998 10:30:00 AM / 12/31/1998 10:30:00 AM / 12/31/1998 / 12/31/1998 / 12/31/1998 / "
              "12/31/1998 / 12/31/1998 / - / -");
}

TEST_F(SqliteStorageTest, MapsDeclaredTypes) {
    const auto storage = Make(
        "CREATE TABLE t(a INTEGER PRIMARY KEY, b BOOLEAN, c MONEY, d VARCHAR(40), e TEXT, f REAL, g NUMERIC, h BLOB, "
        "i, "
        "j DECIMAL(10,2), k TEXT NOT NULL);"
        "INSERT INTO t VALUES(9007199254740993, 'true', 12.5, 'x', 7, '2.5', 18, x'00ff', 3, 1.005, '')");
    const TableDef& table = storage->Tables()[0];
    const FieldType types[] = {FieldType::Long, FieldType::Boolean, FieldType::Currency, FieldType::Text,
                               FieldType::Text, FieldType::Double,  FieldType::Double,   FieldType::LongBinary,
                               FieldType::Long, FieldType::Decimal, FieldType::Text};
    for (std::size_t i = 0; i < std::size(types); ++i)
        EXPECT_EQ(table.Fields[i].Type, types[i]) << table.Fields[i].Name;
    EXPECT_TRUE(table.Fields[0].AutoNumber);
    EXPECT_TRUE(table.Fields[10].Required);
    EXPECT_EQ(table.Fields[3].Size, 40);
    EXPECT_TRUE(table.Indexes.at(0).Primary);
    const char* texts[] = {"9007199254740993", "True", "12.5", "x", "7", "2.5", "18"};
    for (int i = 0; i < 7; ++i) EXPECT_EQ(Column(*storage, 0, i), texts[i]);
}

TEST_F(SqliteStorageTest, FindsRelationsAndIndexes) {
    const auto storage = Make(
        "CREATE TABLE towns(id INTEGER PRIMARY KEY, name TEXT);"
        "CREATE TABLE members(id INTEGER PRIMARY KEY, town INTEGER REFERENCES towns, name TEXT);"
        "CREATE UNIQUE INDEX byName ON members(name DESC)");
    const std::vector<Relation> relations = storage->Relations();
    ASSERT_EQ(relations.size(), 1U);
    EXPECT_EQ(relations[0].Table, "towns");
    EXPECT_EQ(relations[0].ForeignTable, "members");
    EXPECT_EQ(relations[0].Fields, std::vector<std::string>{"id"});
    EXPECT_EQ(relations[0].ForeignFields, std::vector<std::string>{"town"});
    const auto& indexes = storage->Tables()[0].Indexes;
    ASSERT_EQ(indexes.size(), 2U);
    EXPECT_TRUE(indexes[1].Unique && indexes[1].Columns[0].Descending);
}

TEST_F(SqliteStorageTest, TablesWithoutRowIdsCanOnlyBeRead) {
    const auto storage =
        Make("CREATE TABLE t(a TEXT PRIMARY KEY, b) WITHOUT ROWID; INSERT INTO t VALUES('x', 1), ('y', 2)");
    EXPECT_EQ(Column(*storage, 0, 1), "1 / 2");
    const auto reader = storage->Rows(0).Reader();
    EXPECT_TRUE(reader->Read(1));
    EXPECT_EQ(GeneralText(reader->Value(0)), "y");
    EXPECT_THROW(storage->Rows(0).Delete(0), RunTimeError);
}

TEST_F(SqliteStorageTest, ChangesOfOtherProgramsRaiseTheCount) {
    const auto storage = Make("CREATE TABLE t(a INTEGER)");
    const std::uint64_t before = storage->ChangeCount();
    EXPECT_EQ(storage->ChangeCount(), before);
    Connection(Path(), Connection::Mode::ReadWrite).Execute("INSERT INTO t VALUES(1)");
    EXPECT_NE(storage->ChangeCount(), before);
    const std::uint64_t after = storage->ChangeCount();
    const Value two[] = {Value::Integer(2)};
    storage->Rows(0).Insert(two);
    EXPECT_NE(storage->ChangeCount(), after);
}

TEST_F(SqliteStorageTest, DuplicateKeysAndMissingValuesAreRefused) {
    const auto storage = Make("CREATE TABLE t(a TEXT PRIMARY KEY, b TEXT NOT NULL)");
    const Value row[] = {Value::Text("x"), Value::Text("y")};
    const Value missing[] = {Value::Text("z"), Value()};
    storage->Rows(0).Insert(row);
    const auto errorOf = [&](std::span<const Value> values) {
        try {
            storage->Rows(0).Insert(values);
        } catch (const RunTimeError& error) {
            return error.Number();
        }
        return ErrorNumber::Overflow;
    };
    EXPECT_EQ(errorOf(row), ErrorNumber::DuplicateKey);
    EXPECT_EQ(errorOf(missing), ErrorNumber::FieldRequired);
}

}  // namespace
}  // namespace quillform::sqlite
