#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "data/SmallDatabase.h"

namespace quillform::data {
namespace {

class EngineTest : public testing::Test {
protected:
    int ErrorOfOpening(const std::string& path) {
        try {
            engine_->OpenDatabase(path);
        } catch (const RunTimeError& error) {
            return static_cast<int>(error.Number());
        }
        return 0;
    }
    std::string Written(const std::string& name, const std::string& bytes) {
        std::ofstream(folder_.File(name), std::ios::binary) << bytes;
        return folder_.File(name);
    }

    FixedClock clock_{36161.5};
    ScratchFolder folder_;
    std::unique_ptr<DBEngine> engine_ = MakeEngine(clock_);
};

TEST_F(EngineTest, SaysWhyAFileCannotBeOpened) {
    EXPECT_EQ(ErrorOfOpening(folder_.File("none.mdb")), static_cast<int>(ErrorNumber::FileMissing));
    EXPECT_EQ(ErrorOfOpening(Written("empty.mdb", "")), static_cast<int>(ErrorNumber::UnrecognizedFormat));
    EXPECT_EQ(ErrorOfOpening(Written("text.mdb", std::string(5000, 'x'))),
              static_cast<int>(ErrorNumber::UnrecognizedFormat));
    const std::string broken = Written("broken.db", std::string("SQLite format 3\0", 16) + std::string(4000, '\7'));
    EXPECT_EQ(ErrorOfOpening(broken), static_cast<int>(ErrorNumber::UnrecognizedFormat));
    EXPECT_THROW(engine_->CreateDatabase(broken, DatabaseVersion::Sqlite), RunTimeError);
    EXPECT_THROW(FactsOf(folder_.File("none.mdb")), RunTimeError);
}

TEST_F(EngineTest, MakesWhatTodaysProgramsRead) {
    const std::pair<int, char> versions[] = {{1, 0}, {8, 0}, {16, 0}, {32, 0}, {64, 1}};
    for (const auto& [version, format] : versions) {
        const std::string path = folder_.File(std::to_string(version) + ".mdb");
        engine_->CreateDatabase(path, static_cast<DatabaseVersion>(version));
        std::ifstream file(path, std::ios::binary);
        file.seekg(0x14);
        EXPECT_EQ(file.get(), format) << version;
        EXPECT_TRUE(std::ranges::all_of(engine_->OpenDatabase(path)->TableDefs(), &TableDef::IsSystem));
    }
    const std::string path = folder_.File("other.mdb");
    EXPECT_THROW(engine_->CreateDatabase(path, static_cast<DatabaseVersion>(2)), RunTimeError);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(EngineTest, TellsFactsAndRelationsOfASqliteFile) {
    const auto database = engine_->CreateDatabase(folder_.File("a.sqlite"), DatabaseVersion::Sqlite);
    FillSmall(*database);
    const auto facts = FactsOf(folder_.File("a.sqlite"));
    EXPECT_EQ(facts.front(), (std::pair<std::string, std::string>("format", "SQLite 3")));
    EXPECT_TRUE(database->Relations().empty());
}

TEST_F(EngineTest, FollowsAFileThatIsReplaced) {
    const std::string path = folder_.File("a.sqlite");
    auto first = engine_->CreateDatabase(path, DatabaseVersion::Sqlite);
    first->AppendTable(MakeTable("Old", {MakeField("X", FieldType::Long)}));
    std::filesystem::remove(path);
    auto second = engine_->CreateDatabase(path, DatabaseVersion::Sqlite);
    EXPECT_EQ(second->FindTable("Old"), nullptr);
    EXPECT_EQ(engine_->OpenDatabase(path)->FindTable("Old"), nullptr);
}

/// Real databases that lie beside the project on some machines.
class SharedSampleTest : public EngineTest {
protected:
    std::unique_ptr<Database> Open(const char* name) {
        const std::string path = QUILLFORM_SOURCE_DIR "/../shared/jet/samples/" + std::string(name);
        return std::filesystem::exists(path) ? engine_->OpenDatabase(path, Access::ReadOnly) : nullptr;
    }
};

/// The results were computed by sqlite3 over the same tables as mdb-export gives them.
TEST_F(SharedSampleTest, Northwind) {
    struct Case {
        const char* statement;
        const char* rows;
    };
    const Case cases[] = {
        {"SELECT Count(*) AS N FROM Orders", "830"},
        {"SELECT Count(*) AS N, Sum([Orders].[OrderID]) AS S FROM (([Orders] INNER JOIN [Customers] ON "
         "[Orders].[CustomerID] = "
         "[Customers].[CustomerID]) INNER JOIN [Employees] ON [Employees].[EmployeeID] = [Orders].[EmployeeID]) WHERE "
         "[Customers].[Country] = 'germany'",
         "122|1298401"},
        {"SELECT [Customers].[CustomerID] FROM ([Customers] LEFT JOIN [Orders] ON [Customers].[CustomerID] = "
         "[Orders].[CustomerID]) WHERE [Orders].[OrderID] IS NULL ORDER BY [Customers].[CustomerID]",
         "FISSA / PARIS"},
        {"SELECT [Categories].[CategoryName], Sum([Order Details].[Quantity]) AS Q FROM (([Categories] INNER JOIN "
         "[Products] "
         "ON [Products].[CategoryID] = [Categories].[CategoryID]) INNER JOIN [Order Details] ON "
         "[Order Details].[ProductID] = [Products].[ProductID]) GROUP BY [Categories].[CategoryName] ORDER BY "
         "[Categories].[CategoryName]",
         "Beverages|9532 / Condiments|5298 / Confections|7906 / Dairy Products|9149 / Grains/Cereals|4562 / "
         "Meat/Poultry|4199 / Produce|2990 / Seafood|7681"},
        {"SELECT Sum(Freight) AS S FROM Orders", "64942.69"},
        {"SELECT Count(*) AS N FROM Orders WHERE ShippedDate IS NULL", "21"},
        {"SELECT Count(*) AS N FROM Products WHERE ProductName LIKE '*ch*'", "14"},
    };
    for (const char* name : {"jet3-northwind.mdb", "jet4-northwind.mdb"}) {
        const auto database = Open(name);
        if (!database) GTEST_SKIP() << "the shared sample " << name << " isn't here";
        for (const Case& c : cases) EXPECT_EQ(Dump(*database, c.statement), c.rows) << name << ": " << c.statement;
        const auto countries = database->OpenRecordset(
            "SELECT [Orders].[ShipCountry] FROM [Orders] GROUP BY [Orders].[ShipCountry]", RecordsetType::Snapshot);
        EXPECT_EQ(countries->RecordCount(), 21);
        const auto spread = database->OpenRecordset("SELECT StdDev(Freight) AS D FROM Orders", RecordsetType::Snapshot);
        EXPECT_NEAR(spread->Value(0).real, 116.779293630242, 1e-9);
    }
}

/// The whole report and its group statements must print the same lines: every group's rows, in group order, are the
/// report's rows.
TEST_F(SharedSampleTest, GroupStatementsGiveTheReportsRows) {
    const auto database = Open("jet4-northwind.mdb");
    if (!database) GTEST_SKIP() << "the shared samples aren't here";
    const std::string select =
        "SELECT [Orders].[OrderID], [Customers].[CompanyName], [Orders].[ShipCity] FROM ([Customers] "
        "INNER JOIN [Orders] ON [Orders].[CustomerID] = [Customers].[CustomerID])";
    const std::string order = " ORDER BY [Customers].[CompanyName], [Orders].[ShipCity]";
    std::string grouped;
    const auto groups = database->OpenRecordset(
        "SELECT [Customers].[CompanyName] FROM ([Customers] INNER JOIN [Orders] ON "
        "[Orders].[CustomerID] = [Customers].[CustomerID]) GROUP BY "
        "[Customers].[CompanyName]",
        RecordsetType::Snapshot);
    EXPECT_EQ(groups->RecordCount(), 89);
    for (; !groups->IsEOF(); groups->MoveNext()) {
        std::string name = groups->Text(0);
        if (name.find('\'') != name.npos) continue;
        if (!grouped.empty()) grouped += " / ";
        grouped += Dump(*database, select + " WHERE [Customers].[CompanyName] = '" + name + "'" + order);
    }
    EXPECT_EQ(grouped, Dump(*database, select + " WHERE InStr([Customers].[CompanyName], Chr(39)) = 0" + order));
}

}  // namespace
}  // namespace quillform::data
