#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "data/sql/SampleTables.h"

namespace quillform::sql {
namespace {

struct Columns {
    const char* statement;
    const char* columns;  ///< "name:type:size ..."
};

class ResultColumns : public testing::TestWithParam<Columns> {};

TEST_P(ResultColumns, HaveNamesTypesAndSizes) {
    std::string columns;
    for (const Field& field : Prepare(GetParam().statement, SampleTables(), sampleYear).columns)
        columns += (columns.empty() ? "" : " ") + field.Name + ":" + std::string(FieldTypeName(field.Type)) + ":" +
                   std::to_string(field.Size);
    EXPECT_EQ(columns, GetParam().columns);
}

INSTANTIATE_TEST_SUITE_P(
    Selects, ResultColumns,
    testing::Values(
        Columns{"SELECT [Customers].[City], [Company Name] AS Firm, Notes FROM Customers",
                "City:Text:30 Firm:Text:40 Notes:Memo:0"},
        Columns{"SELECT Orders.ID, Customers.ID FROM Orders, Customers", "ID:Long:4 ID:Long:4"},
        Columns{"SELECT ID, ID + 1, Amount * 2, Rate / 2 FROM Orders",
                "ID:Long:4 Expr1001:Long:4 Expr1002:Currency:8 Expr1003:Double:8"},
        Columns{"SELECT Count(*), Count(ID), Sum(ID), Sum(Amount), Avg(ID), Avg(Amount), Sum(Paid) FROM Orders",
                "Expr1000:Long:4 Expr1001:Long:4 Expr1002:Double:8 Expr1003:Currency:8 Expr1004:Double:8 "
                "Expr1005:Currency:8 "
                "Expr1006:Double:8"},
        Columns{"SELECT Max(Remark) AS [Max R], Min(Ordered), StdDev(ID), StdDevP(Rate), First(Paid) FROM Orders",
                "Max R:Text:50 Expr1001:Date:8 Expr1002:Double:8 Expr1003:Double:8 Expr1004:Boolean:1"},
        Columns{"SELECT Ordered + 1 AS a, Ordered - Ordered AS b, ID = 1 AS c, ID & '' AS d, Mid(Remark, 1) AS e FROM "
                "Orders",
                "a:Date:8 b:Double:8 c:Boolean:1 d:Text:255 e:Text:255"},
        Columns{"SELECT IIf(Paid, 1, 2.5) AS a, IIf(Paid, Orders.ID, Remark) AS b, Nz(Amount, 0) AS c, Left(Notes, 3) "
                "AS d FROM Orders, Customers "
                "WHERE Orders.ID = 1",
                "a:Double:8 b:Text:255 c:Currency:8 d:Memo:0"},
        Columns{"SELECT x.ID AS z FROM (SELECT ID FROM Orders) AS x", "z:Long:4"}));

TEST(Origins, TellWhichColumnIsPassedOn) {
    const PreparedStatement prepared =
        Prepare("SELECT City, ID + 1, Lines.OrderID AS o FROM Customers, Lines WHERE EXISTS (SELECT 1 FROM Orders)",
                SampleTables(), sampleYear);
    EXPECT_EQ(prepared.tables, (std::vector<std::size_t>{1, 2, 0}));
    ASSERT_EQ(prepared.origins.size(), 3U);
    EXPECT_EQ(prepared.origins[0].table, 0);
    EXPECT_EQ(prepared.origins[0].column, 2);
    EXPECT_EQ(prepared.origins[1].table, -1);
    EXPECT_EQ(prepared.origins[2].table, 1);
    EXPECT_EQ(prepared.origins[2].column, 0);
}

struct Run {
    const char* statement;
    std::vector<std::string> rows;
};

class Results : public testing::TestWithParam<Run> {};

TEST_P(Results, AreTheDialects) {
    SampleDatabase database;
    EXPECT_EQ(database.Rows(Prepare(GetParam().statement, SampleTables(), sampleYear).sqlite), GetParam().rows);
}

INSTANTIATE_TEST_SUITE_P(
    Sqlite, Results,
    testing::Values(
        Run{"SELECT ID FROM Orders WHERE Remark = 'aBc ' ORDER BY ID", {"1", "2"}},
        Run{"SELECT ID FROM Orders ORDER BY Remark DESC, ID DESC", {"3", "5", "2", "1", "4"}},
        Run{"SELECT ID FROM Orders ORDER BY Ordered", {"4", "1", "2", "3", "5"}},
        Run{"SELECT Count(*) FROM (SELECT DISTINCT City FROM Customers) AS x", {"2"}},
        Run{"SELECT Count(ID) FROM Customers GROUP BY City ORDER BY City", {"1", "2"}},
        Run{"SELECT Max(Remark), Min(ID) FROM Orders", {"b,1"}},
        Run{"SELECT Sum(Amount) FROM Orders HAVING Count(*) > 5", {}},
        Run{"SELECT CustomerID, Count(*) AS n FROM Orders GROUP BY CustomerID HAVING Count(*) > 1", {"10,2"}},
        Run{"SELECT ID = 1, Paid FROM Orders WHERE Paid = 'True' ORDER BY ID", {"-1,-1", "0,-1"}},
        Run{"SELECT ID FROM Orders WHERE Not Paid And Amount * 3 = 0.3", {"2"}},
        Run{"SELECT ID FROM Orders WHERE Rate = 0.333333333333333 OR Weight = 0.5", {"1", "2"}},
        Run{"SELECT ID FROM Orders WHERE Weight = 0.1", {"1"}},
        Run{"SELECT ID FROM Orders WHERE Ordered = '12/31/1998 10:30:15 AM'", {"2"}},
        Run{"SELECT ID FROM Orders WHERE Ordered = '12/31/1998'", {"1"}},
        Run{"SELECT Remark & '/' & City FROM Orders LEFT JOIN Customers ON CustomerID = Customers.ID ORDER BY "
            "Orders.ID",
            {"abc/Ulm", "ABC/Ulm", "b/ulm", "/", "Abd/"}},
        Run{"SELECT Remark + 'x' FROM Orders WHERE ID > 3 ORDER BY ID", {"-", "Abdx"}},
        Run{"SELECT Customers.ID, Orders.ID FROM Orders RIGHT JOIN Customers ON Orders.CustomerID = Customers.ID ORDER "
            "BY 1, 2",
            {"10,1", "10,2", "20,3", "30,-"}},
        Run{"SELECT TOP 2 ID FROM Customers ORDER BY City DESC", {"10", "20"}},
        Run{"SELECT TOP 1 City FROM Customers ORDER BY City DESC", {"Ulm", "ulm"}},
        Run{"SELECT TOP 40 PERCENT ID FROM Orders ORDER BY ID", {"1", "2"}},
        Run{"SELECT TOP 2 ID FROM Orders", {"1", "2"}},
        Run{"SELECT DISTINCT TOP 1 Remark FROM Orders WHERE ID < 4 ORDER BY Remark", {"abc"}},
        Run{"SELECT DISTINCTROW Orders.ID FROM Orders INNER JOIN Lines ON Orders.ID = Lines.OrderID ORDER BY Orders.ID",
            {"1", "2", "4"}},
        Run{"SELECT ID FROM Orders WHERE ID < 3 UNION SELECT ID FROM Customers ORDER BY ID DESC",
            {"30", "20", "10", "2", "1"}},
        Run{"SELECT Count(*) FROM (SELECT Remark FROM Orders WHERE ID < 3 UNION SELECT 'aBC' FROM Orders) AS x", {"1"}},
        Run{"SELECT ID FROM Customers WHERE Not EXISTS (SELECT * FROM Orders WHERE CustomerID = Customers.ID)", {"30"}},
        Run{"SELECT ID, (SELECT Max(Quantity) FROM Lines WHERE OrderID = Orders.ID) AS m FROM Orders WHERE ID In "
            "(SELECT OrderID FROM Lines) "
            "ORDER BY m DESC",
            {"2,7", "1,3", "4,-"}},
        Run{"SELECT a.ID FROM Orders AS a INNER JOIN Orders AS b ON a.Remark = b.Remark WHERE a.ID <> b.ID ORDER BY "
            "a.ID",
            {"1", "2"}},
        Run{"SELECT IIf(ID = 10, 'ten', 'other') FROM Customers WHERE City = 'ULM' ORDER BY ID", {"ten", "other"}},
        Run{"SELECT x.n FROM (SELECT City, Count(*) AS n FROM Customers GROUP BY City) AS x ORDER BY x.City",
            {"1", "2"}},
        Run{"SELECT City FROM Customers WHERE EXISTS (SELECT CustomerID FROM Orders WHERE CustomerID = Customers.ID "
            "ORDER BY City) ORDER BY 1",
            {"Ulm", "ulm"}},
        Run{"SELECT ID * 2 AS d, d + 1 AS e FROM Orders WHERE ID < 3 ORDER BY e DESC", {"4,5", "2,3"}},
        Run{"SELECT Quantity FROM Lines WHERE Quantity In (7, '3') Or Quantity Is Null ORDER BY Quantity",
            {"-", "3", "7"}}));

TEST(Actions, ChangeWhatTheyName) {
    SampleDatabase database;
    const auto run = [&](const char* statement) {
        database.Run(Prepare(statement, SampleTables(), sampleYear).sqlite);
    };
    run("DELETE * FROM [Report - Index] WHERE ID = 2");
    run("INSERT INTO [Report - Index] (Text, ID) VALUES ('new', '9')");
    run("INSERT INTO [Report - Index] SELECT ID, City, 'c' FROM Customers WHERE City = 'bonn'");
    run("UPDATE [Report - Index] AS r SET Text = Text + '!', r.Table = Null WHERE r.ID = 1");
    EXPECT_EQ(database.Rows("SELECT * FROM \"Report - Index\" ORDER BY ID"),
              (std::vector<std::string>{"1,order number!,-", "3,City,Customers", "9,new,-", "30,Bonn,c"}));
}

TEST(LongChains, FitIntoSqlite) {
    SampleDatabase database;
    std::string where = "ID = 0";
    std::string text = "'a'";
    for (int i = 1; i <= 300; ++i) {
        where += (i % 3 == 0 ? " AND ID = " : " OR ID = ") + std::to_string(i);
        text += " & Remark";
    }
    const std::string statement = "SELECT Count(*) FROM Orders WHERE (" + where + ") AND " + text + " <> ''";
    // Orders 1 and 4: the others would have to be two numbers at once.
    EXPECT_EQ(database.Rows(Prepare(statement, SampleTables(), sampleYear).sqlite), std::vector<std::string>{"2"});
}

}  // namespace
}  // namespace quillform::sql
