#include <gtest/gtest.h>

#include <string>

#include "data/sql/SampleTables.h"

namespace quillform::sql {
namespace {

struct Case {
    const char* statement;
    const char* sqlite;
};

/// Expressions of one column list over Orders, as they are written out.
class Expressions : public testing::TestWithParam<Case> {};

TEST_P(Expressions, AreWrittenForSqlite) {
    const Case& c = GetParam();
    const PreparedStatement prepared =
        Prepare("SELECT " + std::string(c.statement) + " FROM Orders AS o", SampleTables(), sampleYear);
    EXPECT_EQ(prepared.sqlite, "SELECT " + std::string(c.sqlite) + " FROM \"Orders\" AS \"o\"");
}

INSTANTIATE_TEST_SUITE_P(
    Dialect, Expressions,
    testing::Values(
        // Precedence
        Case{"1 + 2 * 3 - 4", "1 + 2 * 3 - 4"}, Case{"(1 + 2) * 3", "(1 + 2) * 3"}, Case{"1 - (2 - 3)", "1 - (2 - 3)"},
        Case{"-2 ^ 2", "-(qf_power(2, 2))"}, Case{"2 ^ -1", "qf_power(2, -1)"}, Case{"- -5", "5"},
        Case{"7 / 2 \\ 2 Mod 3", "qf_mod(qf_intdiv(qf_divide(7, 2), 2), 3)"},
        Case{"ID = 1 Or ID = 2 And Not Paid", "-(\"o\".\"ID\" = 1 OR \"o\".\"ID\" = 2 AND NOT \"o\".\"Paid\")"},
        Case{"(ID = 1 Or ID = 2) And Paid", "-((\"o\".\"ID\" = 1 OR \"o\".\"ID\" = 2) AND \"o\".\"Paid\")"},
        Case{"Not ID = 1", "-(NOT (\"o\".\"ID\" = 1))"},
        Case{"Paid Imp ID = 1 Eqv Paid", "qf_imp(\"o\".\"Paid\", qf_eqv(-(\"o\".\"ID\" = 1), \"o\".\"Paid\"))"},
        Case{"ID - -(ID)", "\"o\".\"ID\" - -(\"o\".\"ID\")"},
        // Literals
        Case{".5", "0.5"}, Case{"1E3", "1000.0"}, Case{"1e-400", "0.0"}, Case{"&H1F + &HFFFF", "31 + -1"},
        Case{"3000000000", "3e+09"}, Case{"12345678901234567890", "12345678901234567168.0"}, Case{"True", "-1"},
        Case{"#12/31/1998#", "36160.0"}, Case{"#1998-12-31#", "36160.0"},
        Case{"'it''s' & \"a \"\"b\"\"\"", "'it''s' || 'a \"b\"'"},
        // Texts
        Case{"ID & Remark", "qf_concat(qf_text(\"o\".\"ID\", 4), \"o\".\"Remark\")"},
        Case{"ID & '-' & Ordered",
             "coalesce(qf_text(\"o\".\"ID\", 4), '') || '-' || coalesce(qf_text(\"o\".\"Ordered\", 8), '')"},
        Case{"Remark + 'x'", "\"o\".\"Remark\" || 'x'"}, Case{"Remark + 1", "qf_cdbl(\"o\".\"Remark\") + 1"},
        Case{"'5' + 1", "5 + 1"}, Case{"Remark = 'A'", "-(\"o\".\"Remark\" = 'A' COLLATE QFTEXT)"},
        Case{"Remark & '' <> 'a'", "-(coalesce(\"o\".\"Remark\", '') || '' <> 'a' COLLATE QFTEXT)"},
        Case{"Remark Like 'A*'", "qf_like(\"o\".\"Remark\", 'A*')"},
        Case{"Ordered Not Like '*1998'", "-(NOT qf_like(qf_text(\"o\".\"Ordered\", 8), '*1998'))"},
        Case{"Remark In ('a', 'b')", "-(\"o\".\"Remark\" COLLATE QFTEXT IN ('a', 'b'))"},
        Case{"Remark Not Between 'a' And 'c'", "-(\"o\".\"Remark\" COLLATE QFTEXT NOT BETWEEN 'a' AND 'c')"},
        // Quoted literals beside other types
        Case{"Ordered = '12/31/1998'", "-(\"o\".\"Ordered\" = 36160.0)"},
        Case{"'31 Dec 1998' < Ordered", "-(36160.0 < \"o\".\"Ordered\")"},
        Case{"Ordered Between '1/1/1998' And '12/31'", "-(\"o\".\"Ordered\" BETWEEN 35796.0 AND 45657.0)"},
        Case{"Ordered In ('1/1/1998', #1/2/1998#)", "-(\"o\".\"Ordered\" IN (35796.0, 35797.0))"},
        Case{"Paid = 'True'", "-(\"o\".\"Paid\" = -1)"}, Case{"Paid = 'no'", "-(\"o\".\"Paid\" = 0)"},
        Case{"ID = '5'", "-(\"o\".\"ID\" = 5)"}, Case{"Amount >= '$1,000.50'", "-(\"o\".\"Amount\" >= 1000.5)"},
        // A literal of all the digits that a text shows
        Case{"Rate = 0.333333333333333", "-(\"o\".\"Rate\" BETWEEN 0.3333333333333325 AND 0.3333333333333335)"},
        Case{"Rate = 0.3", "-(\"o\".\"Rate\" = 0.3)"},
        Case{"Weight = 0.1", "-(\"o\".\"Weight\" = 0.10000000149011612)"},
        // Nulls, tests, choices
        Case{"ID Is Null", "-(\"o\".\"ID\" IS NULL)"}, Case{"Not ID Is Not Null", "-(NOT (\"o\".\"ID\" IS NOT NULL))"},
        Case{"IsNull(ID)", "-(\"o\".\"ID\" IS NULL)"}, Case{"ID = Null", "-(\"o\".\"ID\" = NULL)"},
        Case{"IIf(ID > 1, ID, 'none')", "CASE WHEN \"o\".\"ID\" > 1 THEN qf_text(\"o\".\"ID\", 4) ELSE 'none' END"},
        Case{"Nz(Rate)", "coalesce(\"o\".\"Rate\", 0)"},
        Case{"Nz(Remark, ID)", "coalesce(\"o\".\"Remark\", qf_text(\"o\".\"ID\", 4))"},
        Case{"Switch(ID = 1, 'a', Paid, 'b')",
             "CASE WHEN \"o\".\"ID\" = 1 THEN 'a' WHEN \"o\".\"Paid\" THEN 'b' ELSE NULL END"},
        Case{"Choose(ID, 1, 2)",
             "CASE WHEN qf_int(\"o\".\"ID\") = 1 THEN 1 WHEN qf_int(\"o\".\"ID\") = 2 THEN 2 ELSE NULL END"},
        // Functions
        Case{"Mid$(Remark,  1,  2)", "qf_mid(\"o\".\"Remark\", 1, 2)"},
        Case{"Left(ID, 1)", "qf_left(qf_text(\"o\".\"ID\", 4), 1)"},
        Case{"RIGHT$([Remark], 1)", "qf_right(\"o\".\"Remark\", 1)"},
        Case{"InStr(Remark, 'x')", "qf_instr(1, \"o\".\"Remark\", 'x')"},
        Case{"Format(Ordered, 'yyyy')", "qf_format(\"o\".\"Ordered\", 'yyyy', 8)"},
        Case{"DateAdd('m', 1, '1/31/2000')", "qf_dateadd('m', 1, 36556.0)"},
        Case{"Year(Remark)", "qf_year(qf_cdate(\"o\".\"Remark\"))"},
        Case{"IsDate(Ordered)", "-(\"o\".\"Ordered\" IS NOT NULL)"},
        Case{"IsNumeric(Remark)", "qf_isnumeric(\"o\".\"Remark\")"}, Case{"Date()", "qf_date()"},
        // Computed amounts lose their binary rest before they are compared
        Case{"Amount * 3 = 0.3", "-(round(\"o\".\"Amount\" * 3, 4) = 0.3)"}));

class Statements : public testing::TestWithParam<Case> {};

TEST_P(Statements, AreWrittenForSqlite) {
    EXPECT_EQ(Prepare(GetParam().statement, SampleTables(), sampleYear).sqlite, GetParam().sqlite);
}

INSTANTIATE_TEST_SUITE_P(
    Dialect, Statements,
    testing::Values(
        Case{"SELECT ID, Text, Table FROM [Report - Index] ORDER BY Table, Text",
             "SELECT \"Report - Index\".\"ID\", \"Report - Index\".\"Text\", \"Report - Index\".\"Table\" FROM "
             "\"Report - Index\" "
             "ORDER BY \"Report - Index\".\"Table\" COLLATE QFTEXT, \"Report - Index\".\"Text\" COLLATE QFTEXT"},
        Case{"[report - index]",
             "SELECT \"Report - Index\".\"ID\", \"Report - Index\".\"Text\", \"Report - Index\".\"Table\" FROM "
             "\"Report - Index\""},
        Case{"SELECT City FROM Customers GROUP BY [Customers].[City];",
             "SELECT \"Customers\".\"City\" FROM \"Customers\" GROUP BY \"Customers\".\"City\" COLLATE QFTEXT"},
        Case{"SELECT ID FROM Customers WHERE City = [Company Name] ORDER BY 1 DESC",
             "SELECT \"Customers\".\"ID\" FROM \"Customers\" WHERE \"Customers\".\"City\" = \"Customers\".\"Company "
             "Name\" COLLATE "
             "QFTEXT ORDER BY \"Customers\".\"ID\" DESC"},
        Case{"DELETE * FROM [Report - Index] WHERE ID = 7",
             "DELETE FROM \"Report - Index\" WHERE \"Report - Index\".\"ID\" = 7"},
        Case{"DELETE FROM Customers", "DELETE FROM \"Customers\""},
        Case{"INSERT INTO Orders (ID, Ordered, Paid, Remark) VALUES (1, '1/2/2003', 'True', 5)",
             "INSERT INTO \"Orders\" (\"ID\", \"Ordered\", \"Paid\", \"Remark\") VALUES (1, 37623.0, -1, '5')"},
        Case{"UPDATE Customers SET [Company Name] = ID, City = Null WHERE ID In (SELECT CustomerID FROM Orders WHERE "
             "Remark = City)",
             "UPDATE \"Customers\" SET \"Company Name\" = qf_text(\"Customers\".\"ID\", 4), \"City\" = NULL WHERE "
             "\"Customers\".\"ID\" IN (SELECT \"Orders\".\"CustomerID\" FROM \"Orders\" WHERE \"Orders\".\"Remark\" = "
             "\"Customers\".\"City\" COLLATE QFTEXT)"},
        // An inner table of the same name as an outer one
        Case{"SELECT ID FROM Lines AS x, Customers WHERE EXISTS (SELECT * FROM [Report - Index] AS x WHERE x.Text = "
             "City AND OrderID = 1)",
             "SELECT \"Customers\".\"ID\" FROM \"Lines\" AS \"x\", \"Customers\" WHERE EXISTS (SELECT \"x~1\".\"ID\", "
             "\"x~1\".\"Text\", \"x~1\".\"Table\" FROM \"Report - Index\" AS \"x~1\" WHERE \"x~1\".\"Text\" = "
             "\"Customers\".\"City\" COLLATE QFTEXT AND \"x\".\"OrderID\" = 1)"}));

TEST(Criteria, GiveRowIdentities) {
    const TableDef& customers = SampleTables()[1];
    EXPECT_EQ(PrepareCriteria("[City] = 'Ulm' And ID > 3", customers, sampleYear).sqlite,
              "SELECT \"Customers\".rowid FROM \"Customers\" WHERE \"Customers\".\"City\" = 'Ulm' COLLATE QFTEXT AND "
              "\"Customers\".\"ID\" > 3");
}

TEST(Criteria, PassColumnsThatHaveTheIdentitysName) {
    TableDef table = SampleTables()[1];
    table.Fields[0].Name = "ROWID";
    EXPECT_EQ(PrepareCriteria("rowid = 1", table, sampleYear).sqlite,
              "SELECT \"Customers\"._rowid_ FROM \"Customers\" WHERE \"Customers\".\"ROWID\" = 1");
    table.Fields[1].Name = "_rowid_";
    EXPECT_NE(PrepareCriteria("rowid = 1", table, sampleYear).sqlite.find(".oid "), std::string::npos);
}

}  // namespace
}  // namespace quillform::sql
