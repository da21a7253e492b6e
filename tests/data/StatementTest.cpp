#include <gtest/gtest.h>

#include "data/SmallDatabase.h"

namespace quillform::data {
namespace {

class StatementTest : public testing::TestWithParam<DatabaseVersion> {
protected:
    void SetUp() override {
        engine_ = MakeEngine(clock_);
        database_ = engine_->CreateDatabase(folder_.File("small.db"), GetParam());
        FillSmall(*database_);
    }

    FixedClock clock_{36161.5};  // 1999-01-01 12:00
    ScratchFolder folder_;
    std::unique_ptr<DBEngine> engine_;
    std::unique_ptr<Database> database_;
};

struct Case {
    const char* statement;
    const char* rows;
};

const Case cases[] = {
    // Sorting is case-blind, Nulls come first, equal rows keep the order of the file.
    {"SELECT [Members].[Last Name], [Members].[ID] FROM [Members] ORDER BY [Members].[Last Name]",
     "adams|2 / Adams|4 / Miller|1 / O'Neill|3 / Zürn|5"},
    {"SELECT ID FROM Members ORDER BY Fee DESC, ID", "5 / 1 / 2 / 4 / 3"},
    {"SELECT ID FROM Members ORDER BY Town, [Last Name] DESC", "4 / 1 / 2 / 3 / 5"},
    // Conditions and Null.
    {"SELECT ID FROM Members WHERE Town = 'bonn'", "1 / 2"},
    {"SELECT ID FROM Members WHERE Town <> 'bonn'", "3 / 5"},
    {"SELECT ID FROM Members WHERE NOT (Town = 'bonn')", "3 / 5"},
    {"SELECT ID FROM Members WHERE Town = 'bonn' OR Fee > 50", "1 / 2 / 5"},
    {"SELECT ID FROM Members WHERE Town = 'bonn' OR Fee > 50 AND Active", "1 / 2 / 5"},
    {"SELECT ID FROM Members WHERE Town IS NULL", "4"},
    {"SELECT ID FROM Members WHERE Town IS NOT NULL AND Fee IS NULL", "3"},
    {"SELECT ID FROM Members WHERE Fee = 12.5", "1"},
    {"SELECT ID FROM Members WHERE Fee BETWEEN 1 AND 20", "1 / 2"},
    {"SELECT ID FROM Members WHERE ID IN (5, 3, 99)", "3 / 5"},
    {"SELECT ID FROM Members WHERE ID NOT IN (5, 3)", "1 / 2 / 4"},
    {"SELECT ID FROM Members WHERE Active", "1 / 3 / 5"},
    {"SELECT ID FROM Members WHERE Active = False", "2 / 4"},
    {"SELECT ID FROM Members WHERE Notes = ''", "3"},
    // Quoted dates.
    {"SELECT ID FROM Members WHERE Joined = '12/31/1998'", "1"},
    {"SELECT ID FROM Members WHERE Joined >= '1/1/1999'", "2 / 5"},
    {"SELECT ID FROM Members WHERE Joined = #1/1/1999#", "5"},
    {"SELECT Joined FROM Members WHERE ID < 4", "12/31/1998 / 1/2/1999 10:30:00 AM / -"},
    // LIKE has the dialect's own wildcards.
    {"SELECT ID FROM Members WHERE [Last Name] LIKE 'a*'", "2 / 4"},
    {"SELECT ID FROM Members WHERE [Last Name] LIKE '%'", ""},
    {"SELECT ID FROM Members WHERE [Last Name] LIKE '?[d-i]*' AND NOT Town LIKE 'B*'", ""},
    {"SELECT ID FROM Members WHERE [Last Name] NOT LIKE '[a-m]*'", "3 / 5"},
    // Pieces of texts, which group statements ask for again and again.
    {"SELECT Mid$([Members].[Last Name],  2,  3)  AS [Piece]  FROM [Members] WHERE ID < 3", "ill / dam"},
    {"SELECT ID FROM Members WHERE Left$([Last Name], 2) = 'AD' ORDER BY ID DESC", "4 / 2"},
    {"SELECT ID FROM Members WHERE Right$(Town, 1) = 'n'", "1 / 2"},
    // Joins.
    {"SELECT [Members].[ID], [Towns].[Zip] FROM ([Members] INNER JOIN [Towns] ON [Members].[Town] = [Towns].[Town])",
     "1|53111 / 2|53111 / 3|54290"},
    {"SELECT ID, Zip FROM ([Towns] INNER JOIN [Members] ON [Members].[Town] = [Towns].[Town])",
     "1|53111 / 2|53111 / 3|54290"},
    {"SELECT ID, Zip FROM ([Members] LEFT JOIN [Towns] ON [Members].[Town] = [Towns].[Town])",
     "1|53111 / 2|53111 / 3|54290 / 4|- / 5|-"},
    {"SELECT ID, Zip FROM ([Members] RIGHT JOIN [Towns] ON [Members].[Town] = [Towns].[Town])",
     "1|53111 / 2|53111 / 3|54290 / -|24103"},
    {"SELECT ID, Zip, Amount FROM (([Members] INNER JOIN [Towns] ON [Members].[Town] = [Towns].[Town]) INNER JOIN "
     "[Payments] ON [Payments].[Member] = [Members].[ID])",
     "1|53111|10 / 1|53111|2.5 / 3|54290|20"},
    {"SELECT ID, Zip, Amount FROM (([Members] LEFT JOIN [Towns] ON [Members].[Town] = [Towns].[Town]) LEFT JOIN "
     "[Payments] ON [Payments].[Member] = [Members].[ID]) WHERE [Members].[ID] <> 2 ORDER BY [Towns].[Zip]",
     "4|-|- / 5|-|- / 1|53111|10 / 1|53111|2.5 / 3|54290|20"},
    {"SELECT ID, Zip FROM ([Members] LEFT JOIN [Towns] ON [Members].[Town] = [Towns].[Town]) WHERE Zip IS NULL",
     "4|- / 5|-"},
    {"SELECT ID, Zip FROM ([Members] INNER JOIN [Towns] ON [Members].[Town] = [Towns].[Town]) WHERE Zip = '54290'",
     "3|54290"},
    // Groups are case-blind and give each value once, in order.
    {"SELECT [Members].[Town] FROM [Members] GROUP BY [Members].[Town]", "- / Bonn / Trier / Ulm"},
    {"SELECT DISTINCT Big FROM Towns", "0 / 1"},
    {"SELECT Town, Count(ID) AS N FROM Members GROUP BY Town ORDER BY Town", "-|1 / Bonn|2 / Trier|1 / Ulm|1"},
    // Aggregates pass over Null.
    {"SELECT  Count([Members].[Fee])  AS [N]  FROM [Members]", "4"},
    {"SELECT Count(*) AS N FROM Members", "5"},
    {"SELECT  Sum([Members].[Fee])  AS [S]  FROM [Members]", "119.5001"},
    {"SELECT  Avg([Payments].[Amount])  AS [A]  FROM [Payments]", "8.375"},
    {"SELECT StdDev(Score) AS D FROM Members", "2.10158670215308"},
    {"SELECT StdDevP(Score) AS D FROM Members", "1.82002747232013"},
    {"SELECT StdDev(Fee) AS D FROM Members WHERE ID = 1", "-"},
    {"SELECT Max([Last Name]) AS M FROM Members", "Zürn"},
    {"SELECT Sum(Fee) AS S FROM Members WHERE ID = 77", "-"},
    // Functions and operators.
    {"SELECT [Last Name] & ', ' & Town AS T FROM Members WHERE ID = 4", "Adams, "},
    {"SELECT 7 / 2 AS A, 7 \\ 2 AS B, 7 Mod 2 AS C, 2 ^ 3 AS D FROM Towns WHERE Zip = '24103'", "3.5|3|1|8"},
    {"SELECT Format(Joined, 'yyyy-mm-dd') AS F FROM Members WHERE ID = 1", "1998-12-31"},
    {"SELECT IIf(Fee > 10, 'much', 'little') AS I FROM Members ORDER BY ID", "much / little / little / little / much"},
    {"SELECT Nz(Town, 'none') AS T FROM Members WHERE ID > 3", "none / Ulm"},
    {"SELECT DateAdd('m', 2, Joined) AS D FROM Members WHERE ID = 1", "2/28/1999"},
    {"SELECT Year(Joined) AS Y, Month(Joined) AS M FROM Members WHERE ID IN (1, 3)", "1998|12 / -|-"},
    {"SELECT Date() AS D FROM Towns WHERE Zip = '24103'", "1/1/1999"},
    {"SELECT Fee * 2 AS F FROM Members WHERE ID = 1", "25"},
    {"SELECT Len([Last Name]) AS L, UCase([Last Name]) AS U FROM Members WHERE ID = 5", "4|ZÜRN"},
    {"SELECT InStr([Last Name], 'NEI') AS P FROM Members WHERE ID = 3", "3"},
    {"SELECT Round(2.5) AS A, Round(3.5) AS B, Int(-1.5) AS C, Fix(-1.5) AS D FROM Towns WHERE Zip = '24103'",
     "2|4|-2|-1"},
    {"SELECT TOP 2 ID FROM Members ORDER BY ID DESC", "5 / 4"},
    {"Towns", "Bonn|53111|1 / Trier|54290|0 / Kiel|24103|1"},
};

TEST_P(StatementTest, GivesTheRows) {
    for (const Case& c : cases) {
        // Three times: the first run reads the tables, later ones find decoded columns, indexes and ranks.
        for (int round = 0; round < 3; ++round) {
            try {
                EXPECT_EQ(Dump(*database_, c.statement), c.rows) << c.statement << " round " << round;
            } catch (const std::exception& error) {
                ADD_FAILURE() << c.statement << ": " << error.what();
                break;
            }
        }
    }
}

TEST_P(StatementTest, RefusesWhatCannotBeRun) {
    struct Refusal {
        const char* statement;
        ErrorNumber number;
    };
    const Refusal refusals[] = {
        {"SELECT [Members].[ID] FROM [Members] WHERE [Members].[Town] = 'O'Neill'", ErrorNumber::SyntaxInExpression},
        {"SELECT [Members].[ID], [Towns].[Zip] FROM [Members]", ErrorNumber::TooFewParameters},
        {"SELECT Count([Members].[ID])  AS [N]  FROM [Members] WHERE  Count([Members].[ID]) > 1",
         ErrorNumber::AggregateInWhere},
        {"SELECT [Members].[Town],  Count([Members].[ID])  AS [N]  FROM [Members]", ErrorNumber::NotPartOfAggregate},
        {"SELECT [Nobody].[ID] FROM [Nobody]", ErrorNumber::InputTableNotFound},
        {"SELECT 1 / (ID - ID) AS X FROM Members", ErrorNumber::DivisionByZero},
        {"SELECT CDbl([Last Name]) AS X FROM Members", ErrorNumber::DataTypeMismatch},
    };
    for (const Refusal& refusal : refusals)
        EXPECT_EQ(ErrorOf(*database_, refusal.statement), static_cast<int>(refusal.number)) << refusal.statement;
}

TEST_P(StatementTest, ActionsTouchTheRowsTheyName) {
    EXPECT_EQ(database_->Execute("DELETE * FROM [Members] WHERE ID = 3"), 1);
    EXPECT_EQ(Dump(*database_, "SELECT ID FROM Members"), "1 / 2 / 4 / 5");
    EXPECT_EQ(database_->Execute("UPDATE Members SET Town = 'Köln', Fee = Fee * 2 WHERE Town = 'bonn'"), 2);
    EXPECT_EQ(Dump(*database_, "SELECT Town, Fee FROM Members WHERE ID < 3"), "Köln|25 / Köln|14");
    EXPECT_EQ(database_->Execute("INSERT INTO Towns (Town, Zip) VALUES ('Ulm', '89073')"), 1);
    EXPECT_EQ(Dump(*database_, "SELECT * FROM Towns WHERE Town = 'ulm'"), "Ulm|89073|-");
    EXPECT_EQ(database_->Execute("DELETE * FROM [Members] WHERE ID = 3"), 0);
    EXPECT_THROW(database_->Execute("SELECT ID FROM Members"), RunTimeError);
    EXPECT_THROW(database_->OpenRecordset("DELETE * FROM Members", RecordsetType::Snapshot), RunTimeError);
}

TEST_P(StatementTest, AFailedActionChangesNothing) {
    // The third row doesn't fit: 300 characters into 20.
    EXPECT_THROW(database_->Execute("UPDATE Members SET Town = IIf(ID = 4, String(300, 'x'), 'Rom')"), RunTimeError);
    EXPECT_EQ(Dump(*database_, "SELECT Town FROM Members ORDER BY ID"), "Bonn / BONN / Trier / - / Ulm");
}

TEST_P(StatementTest, SnapshotsKeepTheirRowsWhenTheTableChanges) {
    const auto rows = database_->OpenRecordset("SELECT ID, Town FROM Members ORDER BY ID", RecordsetType::Snapshot);
    database_->Execute("DELETE * FROM Members");
    EXPECT_EQ(rows->RecordCount(), 5);
    EXPECT_EQ(Dump(*rows), "1|Bonn / 2|BONN / 3|Trier / 4|- / 5|Ulm");
    rows->MovePrevious();
    EXPECT_EQ(rows->Text("Town"), "Ulm");
    rows->MoveFirst();
    EXPECT_EQ(rows->Text("Members.Town"), "Bonn");
    rows->MovePrevious();
    EXPECT_TRUE(rows->IsBOF());
    EXPECT_FALSE(rows->IsEOF());
    EXPECT_THROW(static_cast<void>(rows->Value(0)), RunTimeError);
    EXPECT_THROW(rows->AddNew(), RunTimeError);
    const auto none = database_->OpenRecordset("Members", RecordsetType::Snapshot);
    EXPECT_TRUE(none->IsEOF() && none->IsBOF());
    EXPECT_FALSE(none->HasRows());
}

INSTANTIATE_TEST_SUITE_P(Formats, StatementTest,
                         testing::Values(DatabaseVersion::Jet30, DatabaseVersion::Jet40, DatabaseVersion::Sqlite),
                         [](const auto& format) {
                             return format.param == DatabaseVersion::Sqlite  ? "Sqlite"
                                    : format.param == DatabaseVersion::Jet30 ? "Jet3"
                                                                             : "Jet4";
                         });

}  // namespace
}  // namespace quillform::data
