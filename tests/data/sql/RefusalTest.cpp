#include <gtest/gtest.h>

#include <string>

#include "data/sql/SampleTables.h"

namespace quillform::sql {
namespace {

struct Refusal {
    std::string statement;
    ErrorNumber number;
    const char* says;
};

class Refusals : public testing::TestWithParam<Refusal> {};

TEST_P(Refusals, NameTheirCause) {
    const Refusal& c = GetParam();
    try {
        const PreparedStatement prepared = Prepare(c.statement, SampleTables(), sampleYear);
        FAIL() << "became " << prepared.sqlite;
    } catch (const RunTimeError& error) {
        EXPECT_EQ(static_cast<int>(error.Number()), static_cast<int>(c.number)) << error.what();
        EXPECT_NE(std::string(error.what()).find(c.says), std::string::npos) << error.what();
    }
}

using Number = ErrorNumber;

INSTANTIATE_TEST_SUITE_P(
    Names, Refusals,
    testing::Values(Refusal{"SELECT * FROM Nowhere", Number::InputTableNotFound, "Nowhere"},
                    Refusal{"SELECT * FROM Far", Number::NotSupported, "link"},
                    Refusal{"SELECT Colour FROM Orders", Number::TooFewParameters, "[Colour]"},
                    Refusal{"SELECT [Orders].[Colour] FROM Orders", Number::TooFewParameters, "no column Colour"},
                    Refusal{"SELECT [Customers].[City] FROM Orders", Number::TooFewParameters, "no table Customers"},
                    Refusal{"SELECT Orders.ID FROM Orders AS o", Number::TooFewParameters, "no table Orders"},
                    Refusal{"SELECT \"ID\" & Colour FROM Orders", Number::TooFewParameters, "[Colour]"},
                    Refusal{"SELECT Amount AS a FROM Orders WHERE a = 1", Number::TooFewParameters, "[a]"},
                    Refusal{"SELECT ID FROM Orders, Customers", Number::AmbiguousField, "[Customers].[ID]"},
                    Refusal{"SELECT * FROM Orders, Orders", Number::SameTableTwice, "Orders"},
                    Refusal{"SELECT Orders.ID FROM ((Orders INNER JOIN Customers ON Orders.CustomerID = Customers.ID) "
                            "INNER JOIN Customers "
                            "ON Orders.ID = Customers.ID)",
                            Number::SameTableTwice, "Customers"},
                    Refusal{"SELECT Orders.ID FROM (Orders INNER JOIN Lines ON [Customers].[ID] = [Lines].[OrderID])",
                            Number::JoinSyntax, "Customers"},
                    Refusal{"SELECT Orders.ID FROM Customers, Orders INNER JOIN Lines ON Customers.ID = Lines.OrderID",
                            Number::JoinSyntax, "Customers"},
                    Refusal{"INSERT INTO Customers (Town) VALUES ('x')", Number::UnknownTargetField, "Town"},
                    Refusal{"INSERT INTO Customers (ID, City) VALUES (1)", Number::ValueCount, "1 values for 2"},
                    Refusal{"UPDATE Customers SET City = 'a', CITY = 'b'", Number::DuplicateTarget, "twice"}));

INSTANTIATE_TEST_SUITE_P(
    Aggregates, Refusals,
    testing::Values(
        Refusal{"SELECT  Count([Orders].[ID])  AS [A] , [Orders].[Remark] FROM [Orders]", Number::NotPartOfAggregate,
                "[Orders].[Remark] as part of an aggregate function"},
        Refusal{"SELECT Count(ID) FROM Orders ORDER BY Remark", Number::NotPartOfAggregate, "[Remark]"},
        Refusal{"SELECT Remark FROM Orders GROUP BY Paid", Number::NotPartOfAggregate, "[Remark]"},
        Refusal{"SELECT ID + 1 FROM Orders GROUP BY ID + 2", Number::NotPartOfAggregate, "[ID]"},
        Refusal{"SELECT * FROM Orders GROUP BY ID", Number::NotPartOfAggregate, "*"},
        Refusal{"SELECT Paid FROM Orders GROUP BY Paid HAVING ID > 1", Number::NotPartOfAggregate, "[ID]"},
        Refusal{"SELECT Paid, (SELECT Max(Quantity) FROM Lines WHERE OrderID = ID) FROM Orders GROUP BY Paid",
                Number::NotPartOfAggregate, "[ID]"},
        Refusal{"SELECT ID FROM Orders WHERE  Sum([Orders].[Amount]) > 5", Number::AggregateInWhere, "Sum"},
        Refusal{"SELECT Orders.ID FROM Orders INNER JOIN Lines ON Max(OrderID) = ID", Number::AggregateInJoin, "Max"},
        Refusal{"SELECT 1 FROM Orders GROUP BY Count(*)", Number::AggregateInGroupBy, "Count"},
        Refusal{"SELECT Sum(Count(ID)) FROM Orders", Number::NestedAggregate, "Count"},
        Refusal{"SELECT City FROM Customers WHERE EXISTS (SELECT 1 FROM Orders GROUP BY Remark & City)",
                Number::NotSupported, "around it"},
        Refusal{"SELECT ID FROM Orders ORDER BY Count(ID)", Number::AggregateInOrderBy, "ORDER BY"},
        Refusal{"SELECT Sum(Remark) FROM Orders", Number::DataTypeMismatch, "Text column [Remark]"},
        Refusal{"SELECT DISTINCT Remark FROM Orders ORDER BY ID", Number::DistinctOrder, "[ID]"}));

INSTANTIATE_TEST_SUITE_P(
    Types, Refusals,
    testing::Values(
        Refusal{"SELECT ID FROM Orders WHERE Remark = 5", Number::DataTypeMismatch, "[Remark]"},
        Refusal{"SELECT ID FROM Orders WHERE Ordered = 'soon'", Number::DataTypeMismatch, "'soon'"},
        Refusal{"SELECT ID FROM Orders WHERE Ordered = ''", Number::DataTypeMismatch, "[Ordered]"},
        Refusal{"SELECT ID FROM Orders WHERE Paid = 'perhaps'", Number::DataTypeMismatch, "'perhaps'"},
        Refusal{"SELECT ID FROM Orders WHERE ID In (1, 'two')", Number::DataTypeMismatch, "'two'"},
        Refusal{"SELECT ID FROM Orders WHERE Amount Between 1 And 'x'", Number::DataTypeMismatch, "'x'"},
        Refusal{"SELECT ID FROM Orders WHERE Remark", Number::DataTypeMismatch, "condition"},
        Refusal{"SELECT ID FROM Orders WHERE Scan Like 'a'", Number::DataTypeMismatch, "[Scan]"},
        Refusal{"SELECT ID FROM Orders WHERE ID In (SELECT City FROM Customers)", Number::DataTypeMismatch, "[City]"},
        Refusal{"SELECT ID FROM Orders ORDER BY Scan", Number::CannotSort, "[Scan]"},
        Refusal{"SELECT 'x' * 2 FROM Orders", Number::DataTypeMismatch, "'x'"},
        Refusal{"SELECT Soundex(Remark) FROM Orders", Number::UnknownFunction, "Soundex"},
        Refusal{"SELECT Rnd() FROM Orders", Number::UnknownFunction, "Rnd"},
        Refusal{"SELECT Mid(Remark) FROM Orders", Number::SyntaxInExpression, "takes 2 to 3, but 1 is given"},
        Refusal{"SELECT Switch(Paid, 1, Paid) FROM Orders", Number::SyntaxInExpression, "pairs"},
        Refusal{"SELECT Sum(*) FROM Orders", Number::SyntaxInExpression, "Count"},
        Refusal{"SELECT ID FROM Orders WHERE ID In (SELECT ID, City FROM Customers)", Number::SubselectColumns,
                "one column"},
        Refusal{"SELECT ID FROM Orders UNION SELECT ID, City FROM Customers", Number::UnionColumns, "same number"}));

std::string Repeated(const char* text, int count) {
    std::string repeated;
    for (int i = 0; i < count; ++i) repeated += text;
    return repeated;
}

/// Each alias stands twice in the next column.
std::string Doubled(int count) {
    std::string statement = "SELECT 1 + ID AS a0";
    for (int i = 1; i <= count; ++i) {
        const std::string before = "a" + std::to_string(i - 1);
        statement += ", " + before + " + " + before + " AS a" + std::to_string(i);
    }
    return statement + " FROM Orders";
}

INSTANTIATE_TEST_SUITE_P(Growth, Refusals,
                         testing::Values(Refusal{Doubled(60), Number::QueryTooComplex, "too long"},
                                         Refusal{"SELECT " + Repeated("Choose(", 40) + "ID" +
                                                     Repeated(", 1, 2, 3)", 40) + " FROM Orders",
                                                 Number::QueryTooComplex, "too long"}));

INSTANTIATE_TEST_SUITE_P(
    Syntax, Refusals,
    testing::Values(Refusal{"", Number::InvalidStatement, "SELECT"},
                    Refusal{"DROP TABLE Orders", Number::InvalidStatement, "DROP"},
                    Refusal{"SELECT  FROM ", Number::SyntaxError, "No column"},
                    Refusal{"SELECT * FROM", Number::SyntaxInFrom, "table's name"},
                    Refusal{"SELECT ID FROM Orders WHERE ID = ", Number::SyntaxInExpression, "statement's end"},
                    Refusal{"SELECT ID FROM Orders WHERE Remark = 'O'Hara'", Number::SyntaxInExpression, "quote"},
                    Refusal{"SELECT ID FROM Orders WHERE Remark = 'O'Hara", Number::SyntaxInExpression,
                            "\"Hara\" (character 41)"},
                    Refusal{"SELECT ID Remark FROM Orders", Number::SyntaxError, "operator or a comma"},
                    Refusal{"SELECT (ID FROM Orders", Number::SyntaxInExpression, "\")\" is missing"},
                    Refusal{"SELECT [ID FROM Orders", Number::SyntaxInExpression, "bracket"},
                    Refusal{"SELECT * FROM Orders INNER Customers", Number::JoinSyntax, "Join"},
                    Refusal{"SELECT * FROM Orders INNER JOIN Customers", Number::JoinSyntax, "On"},
                    Refusal{"SELECT * FROM Orders ORDER ID", Number::SyntaxInOrderBy, "By"},
                    Refusal{"SELECT * FROM Orders ORDER BY 10", Number::SyntaxInOrderBy, "column 10"},
                    Refusal{"SELECT #1/1/19# FROM Orders WHERE Ordered > #then#", Number::SyntaxInExpression, "#then#"},
                    Refusal{"SELECT 1E999 FROM Orders", Number::Overflow, "1E999"},
                    Refusal{"SELECT 1a FROM Orders", Number::SyntaxInExpression, "1a"},
                    Refusal{"SELECT ID INTO Copy FROM Orders", Number::NotSupported, "INTO"},
                    Refusal{"SELECT ID FROM Orders; DELETE FROM Orders", Number::SyntaxInExpression, "\"DELETE\""},
                    Refusal{std::string("SELECT 'a\0b' FROM Orders", 24), Number::SyntaxInExpression, "can't be"},
                    Refusal{"SELECT " + Repeated("(", 100000), Number::QueryTooComplex, "deeply"},
                    Refusal{"SELECT " + Repeated("- ", 100000) + "1", Number::QueryTooComplex, "deeply"},
                    Refusal{"SELECT 1 FROM " + Repeated("(", 100000), Number::QueryTooComplex, "deeply"},
                    Refusal{"SELECT 1" + Repeated("+1", 100000), Number::QueryTooComplex, "too long"},
                    Refusal{"SELECT 1 FROM Orders AS a" + Repeated(", Orders AS b", 100), Number::QueryTooComplex,
                            "too many tables"},
                    Refusal{Repeated("SELECT 1 UNION ALL ", 5000) + "SELECT 1", Number::QueryTooComplex, "too many"}));

}  // namespace
}  // namespace quillform::sql
