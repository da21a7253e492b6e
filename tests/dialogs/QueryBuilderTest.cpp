// The query builder without its form: lines, fields, files.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <fstream>

#include "ScratchFolder.h"
#include "ScriptedUser.h"
#include "data/Engine.h"
#include "dialogs/QueryBuilder.h"
#include "dialogs/QueryFields.h"
#include "dialogs/QueryFileCommands.h"
#include "dialogs/SmallCatalog.h"
#include "platform/Dates.h"
#include "platform/OutputFile.h"

namespace quillform::dialogs {
namespace {

using testing::RowOf;
using Texts = std::vector<std::string>;

const QueryEntry company{"Company", "=", "A", "AND"};
const QueryEntry city{"City", ">=", "B", "OR"};
const QueryEntry phone{"Phone", "LIKE", "C*", "AND"};

class QueryBuilderTest : public ::testing::Test {
protected:
    void StoreThree() {
        for (const QueryEntry& entry : {company, city, phone}) builder.Store(entry, 0);
    }
    Texts Values() const {
        Texts values;
        for (const clssQuery& line : queries) values.push_back(line.Value);
        return values;
    }

    collQuery queries;
    QueryBuilder builder{queries};
};

TEST_F(QueryBuilderTest, EntriesThatAreNotWholeAreRefusedInTheOrderOfTheControls) {
    const std::string_view field = "You cannot save a query line without selecting the 'Field' for the Query.";
    const std::string_view operation = "You cannot save a query line without an operation";
    const std::string_view join = "You cannot save a query line without entering a 'Join'.";
    const struct {
        QueryEntry entry;
        std::string_view refusal;
    } cases[] = {{{}, field},
                 {{"  ", "=", "v", "AND"}, field},
                 {{"f", "", "v", ""}, operation},
                 {{"f", "=", "v", " "}, join},
                 {{"f", "=", "", "OR"}, {}}};
    for (const auto& c : cases) EXPECT_EQ(RefusalOf(c.entry), c.refusal);
}

TEST_F(QueryBuilderTest, ALineIsAddedOrReplacedAndShownWithItsJoinWordButInFirstPlace) {
    builder.PickField(12);
    StoreThree();
    EXPECT_EQ(builder.Texts(), (Texts{"Company = 'A'", "OR City >= 'B'", "AND Phone LIKE 'C*'"}));
    EXPECT_EQ(queries.Item(2),
              (clssQuery{.Key = " 2", .Text = "City", .Join = "OR", .Value = "B", .Operator = ">=", .Code = 12}));
    builder.PickField(7);
    builder.Store({"Zip", "<", " 9 ", "OR"}, 1);
    builder.Store({"Zip", "<", " 9 ", "OR"}, 0);
    builder.Store({"Zip", "<", " 9 ", "OR"}, 0);
    EXPECT_EQ(builder.Texts(),
              (Texts{"Zip < ' 9 '", "OR City >= 'B'", "AND Phone LIKE 'C*'", "OR Zip < ' 9 '", "OR Zip < ' 9 '"}));
    EXPECT_EQ(builder.Texts(QueryBuilder::Blanks::Trimmed)[4], "OR Zip < '9'");
    EXPECT_EQ(queries.Item(1).Key, " 1");
    EXPECT_EQ(queries.Item(1).Code, 7);

    builder.Delete(1);  // the word of the new first line isn't shown, and stays
    EXPECT_EQ(builder.Texts()[0], "City >= 'B'");
    EXPECT_EQ(queries.Item(1).Join, "OR");
}

TEST_F(QueryBuilderTest, ALineComesBackForEditingAsTheControlsCanShowIt) {
    queries.Add({.Key = "k", .Text = "Shown", .Join = "AND", .Value = " v ", .Operator = " <> ", .Code = 5});
    queries.Add({.Key = "", .Text = "", .Join = "and", .Value = "", .Operator = "BETWEEN", .Code = 6});
    EXPECT_EQ(builder.Edit(2), (QueryEntry{"", "LIKE", "", "OR"}));
    const QueryEntry entry = builder.Edit(1);
    EXPECT_EQ(entry, (QueryEntry{"Shown", "<>", " v ", "AND"}));
    builder.Store(entry, 1);  // with the line's own field
    EXPECT_EQ(queries.Item(1).Code, 5);
    EXPECT_EQ(queries.Item(1).Key, "k");
}

TEST_F(QueryBuilderTest, MovedLinesAreACopyUntilTheyAreHandedOver) {
    StoreThree();
    EXPECT_FALSE(builder.MoveUp(0));
    EXPECT_FALSE(builder.MoveDown(0));
    EXPECT_FALSE(builder.MoveUp(1));
    EXPECT_FALSE(builder.MoveDown(3));
    builder.Store({"Fax", "=", "D", "AND"}, 0);
    EXPECT_EQ(queries.Count(), 4);  // moves that don't are no copy

    EXPECT_TRUE(builder.MoveDown(1));
    EXPECT_TRUE(builder.MoveUp(4));
    EXPECT_EQ(builder.Texts(), (Texts{"City >= 'B'", "AND Company = 'A'", "AND Fax = 'D'", "AND Phone LIKE 'C*'"}));
    builder.Store({"City", "=", "E", "OR"}, 1);
    builder.Delete(4);
    builder.Store(company, 0);
    EXPECT_EQ(Values(), (Texts{"A", "B", "C*", "D"}));
    EXPECT_EQ(builder.Lines().Item(2).Key, " 1");

    builder.HandOver();
    EXPECT_EQ(Values(), (Texts{"E", "A", "D", "A"}));
    builder.Delete(1);  // on the layout's own lines again
    EXPECT_EQ(Values(), (Texts{"A", "D", "A"}));
}

TEST_F(QueryBuilderTest, WhatReportsWillNotDoAsWrittenIsHintedAt) {
    builder.KnowFields({{"Customers", {{3, "Company"}, {4, "City"}}}});
    const struct {
        int code;
        const char* text;
        const char* value;
        const char* hint;  // a piece of it; empty: none at all
    } cases[] = {{3, "Company", "O''Brien", ""},
                 {3, "", "''''", ""},
                 {3, " Company ", "", ""},
                 {0, "Typed", "", "No field is picked"},
                 {5, "Zip", "", "no such field"},
                 {4, "Company", "", "the field \"City\""},
                 {3, "Company", "O'Brien", "O''Brien"},
                 {3, "Company", "a''b'", "twice"},
                 {5, "Zip", "'", "leave the line out.\nWrite"}};
    for (const auto& c : cases) {
        builder.PickField(static_cast<std::int16_t>(c.code));
        const QueryEntry entry{c.text, "=", c.value, "AND"};
        const std::string hint = builder.Hint(entry);
        EXPECT_EQ(hint.empty(), *c.hint == '\0') << hint;
        EXPECT_NE(hint.find(c.hint), std::string::npos) << hint;
        builder.Store(entry, 0);
        if (*c.text == '\0') continue;  // see below
        EXPECT_EQ(builder.LineHint(queries.Count()), hint);
    }
    // An entry may be without a field yet; a line that came from a damaged file will not get one.
    builder.PickField(0);
    builder.Store({"", "", "", ""}, 0);
    EXPECT_NE(builder.LineHint(queries.Count()).find("leave the line out"), std::string::npos);
}

/// A folder that is the program's, with a report database.
class QueryProgramTest : public ::testing::Test {
protected:
    QueryProgramTest() {
        layout.strAppPath = folder.Path().string() + "/";
        layout.settings.strDatabase[1] = folder.File("report.mdb");
        testing::MakeCatalog(
            *engine, layout.settings.strDatabase[1],
            {RowOf(9, "Orders", "Freight", 8), RowOf(5, "customers", "Zip", 0), RowOf(4, "Customers", "City", -3),
             RowOf(3, "CUSTOMERS", "Company", 40), RowOf(30, "x5 and more", "Count", 4)});
    }

    ScratchFolder folder;
    SystemClock clock;
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    ScriptedUser user;
    Layout layout;
};

TEST_F(QueryProgramTest, TheTreeHasARootForEachTable) {
    const auto database = engine->OpenDatabase(layout.settings.strDatabase[1]);
    Texts nodes;
    for (const QueryTable& table : ReadQueryFields(*database)) {
        nodes.push_back(table.name);
        for (const QueryTable::Row& row : table.rows) nodes.push_back(row.Key() + " " + row.text);
    }
    ASSERT_EQ(nodes.size(), 8U);
    EXPECT_EQ(std::vector(nodes.begin() + 1, nodes.end()),
              (Texts{"C4 City", "C3 Company", "C5 Zip", "Orders", "C9 Freight", "x5 and more", "C30 Count"}));
}

TEST_F(QueryProgramTest, AKeyNamesARowByItsNumberAndATablesNameMayBeOne) {
    const struct {
        const char* key;
        const char* text;  // null: nothing is picked
        int length;
    } cases[] = {{"C3", "Company", 40},     {"C9", "Freight", 8},       {"C5", "Zip", 35},
                 {"C4", "City", 35},        {"x5 and more", "Zip", 35}, {"x77", nullptr, 0},
                 {"Customers", nullptr, 0}, {"", nullptr, 0},           {"x0.9", nullptr, 0},
                 {"x3.5", nullptr, 0},      {"C-3", nullptr, 0},        {"x1E999", nullptr, 0},
                 {"x40000", nullptr, 0},    {"ä3 Räder", "Company", 40}};
    for (const auto& c : cases) {
        const auto field = FindQueryField(layout, *engine, c.key);
        ASSERT_EQ(field.has_value(), c.text != nullptr) << c.key;
        if (!field) continue;
        EXPECT_EQ(field->text, c.text) << c.key;
        EXPECT_EQ(field->longestValue, c.length) << c.key;
    }
    layout.settings.strDatabase[1] = folder.File("gone.mdb");
    EXPECT_FALSE(FindQueryField(layout, *engine, "Customers"));  // a table asks nothing
    EXPECT_THROW(FindQueryField(layout, *engine, "C3"), RunTimeError);
}

/// As long as it lives, no file of this process grows beyond a size: a disk that fills while it is written.
class ShortFiles {
public:
    explicit ShortFiles(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~ShortFiles() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }
    ShortFiles(const ShortFiles&) = delete;
    ShortFiles& operator=(const ShortFiles&) = delete;

private:
    rlimit before_{};
    void (*signal_)(int);
};

class QueryFileTest : public QueryProgramTest {
protected:
    QueryFileTest() {
        lines.Add({.Key = " 1", .Text = "City", .Join = "OR", .Value = "a,b", .Operator = "=", .Code = 4});
    }
    StepEnd Save(const std::string& name) {
        user.chosen = folder.File(name);
        return commands.Save(lines);
    }
    StepEnd Load(const std::string& name) {
        user.chosen = folder.File(name);
        return commands.Load(lines);
    }
    void Write(const std::string& name, const std::string& text) {
        std::ofstream(folder.File(name), std::ios::binary) << text;
    }
    std::string Read(const std::string& name) const { return ReadWholeFile(folder.File(name)); }
    bool IsThere(const std::string& name) const { return std::filesystem::exists(folder.File(name)); }

    FixedClock fixed{DateSerial(1998, 3, 7)};
    collQuery lines;
    QueryFileCommands commands{user, fixed, folder.Path().string() + "/", [](std::int32_t) {}};
    const std::string line = "4,\"=\",\"a,b\",\"OR\",\"City\"\r\n";
};

TEST_F(QueryFileTest, ASavedFileHasANameInCapitalsAndComesBack) {
    EXPECT_EQ(Save("my query.qry"), StepEnd::Done);
    EXPECT_EQ(Read("MY QUERY.QRY"), line);
    EXPECT_FALSE(IsThere("my query.qry"));
    EXPECT_EQ(Load("my query.qry"), StepEnd::Done);
    EXPECT_EQ(Load("MY QUERY.QRY"), StepEnd::Done);
    ASSERT_EQ(lines.Count(), 3);
    EXPECT_EQ(lines.Item(3).Value, "a,b");
    EXPECT_EQ(lines.Item(3).Key, " 3");
    EXPECT_EQ(user.titles, (Texts{"Save Query As...", "Load Query...", "Load Query..."}));
    EXPECT_TRUE(user.messages.empty());

    lines.ClearAll();
    EXPECT_EQ(Save("EMPTY.QRY"), StepEnd::Done);
    EXPECT_EQ(Read("EMPTY.QRY"), "");
    EXPECT_EQ(Load("EMPTY.QRY"), StepEnd::Done);
    EXPECT_EQ(lines.Count(), 0);
}

TEST_F(QueryFileTest, TheFileThatWasChosenIsTheOneThatIsReplaced) {
    Write("old.qry", "old");
    EXPECT_EQ(Save("old.qry"), StepEnd::Done);  // the dialog has asked
    EXPECT_EQ(Read("old.qry"), line);
    EXPECT_FALSE(IsThere("OLD.QRY"));

    Write("OTHER.QRY", "other");
    EXPECT_EQ(Save("Other.qry"), StepEnd::Left);  // the dialog couldn't know
    EXPECT_EQ(user.questions.size(), 1U);
    EXPECT_EQ(Read("OTHER.QRY"), "other");
    user.answer = true;
    EXPECT_EQ(Save("Other.qry"), StepEnd::Done);
    EXPECT_EQ(Read("OTHER.QRY"), line);

    Write("Old.QRY", "7,\"=\",\"x\",\"OR\",\"Y\"\r\n");  // beside old.qry
    EXPECT_EQ(Load("Old.QRY"), StepEnd::Done);
    EXPECT_EQ(lines.Item(2).Code, 7);
}

TEST_F(QueryFileTest, TheDialogsFolderIsMadeOnceInWhateverCase) {
    user.chosen = std::nullopt;
    const std::string files = folder.Path().string() + "/QUERIES\\*.QRY";
    EXPECT_EQ(commands.Save(lines), StepEnd::Left);
    EXPECT_EQ(user.lastDialog.initialFolder, files);
    EXPECT_EQ(user.lastDialog.filter, "*.QRY");
    EXPECT_EQ(user.lastDialog.defaultExtension, "QRY");
    EXPECT_TRUE(IsThere("QUERIES"));
    std::filesystem::rename(folder / "QUERIES", folder / "Queries");
    EXPECT_EQ(commands.Load(lines), StepEnd::Left);
    EXPECT_EQ(user.lastDialog.initialFolder, files);
    EXPECT_EQ(user.lastDialog.filter, "*.QRY");
    EXPECT_EQ(user.lastDialog.fileName, "*.QRY");
    EXPECT_FALSE(IsThere("QUERIES"));
    EXPECT_TRUE(user.messages.empty());
    EXPECT_EQ(lines.Count(), 1);
}

TEST_F(QueryFileTest, KnownFailuresAreToldAndChangeNothing) {
    EXPECT_EQ(Save("query.txt"), StepEnd::Left);
    EXPECT_EQ(Save(".QR"), StepEnd::Left);
    EXPECT_EQ(Load("none.qry"), StepEnd::Left);
    EXPECT_EQ(Load("QUERIES"), StepEnd::Left);
    Write("PICTURE.QRY", "GIF89a" + std::string(3, '\0') + "1,2\r\n");
    EXPECT_EQ(Load("PICTURE.QRY"), StepEnd::Left);
    const std::string extension = "You must save the Query with an extension of .QRY";
    const std::string path = "You've entered an invalid path or filename.";
    ASSERT_EQ(user.messages.size(), 5U);
    EXPECT_NE(user.messages.back().find("PICTURE.QRY\" is no query file"), std::string::npos);
    user.messages.pop_back();
    EXPECT_EQ(user.messages, (Texts{extension, extension, path, path}));
    EXPECT_FALSE(IsThere("QUERY.TXT"));
    EXPECT_FALSE(IsThere("ERROR.LOG"));
    EXPECT_EQ(lines.Count(), 1);
}

TEST_F(QueryFileTest, UnexpectedFailuresGoToTheLogAndEndTheProgramWithGoodFilesUntouched) {
    Write("BROKEN.QRY", line + "1e999,\"=\",\"a\",\"AND\",\"x\"\r\n");
    EXPECT_EQ(Load("BROKEN.QRY"), StepEnd::EndProgram);
    EXPECT_EQ(lines.Count(), 1);  // all or none
    EXPECT_EQ(Save("no folder/X.QRY"), StepEnd::EndProgram);
    ASSERT_EQ(user.messages.size(), 2U);
    EXPECT_NE(user.messages[0].find("Error Number: 6\r\nIn Procedure: QUERY:LFileCmd_Click\r\n"), std::string::npos);
    EXPECT_NE(Read("ERROR.LOG").find("WHERE: QUERY:LFileCmd_Click\r\n"), std::string::npos);
    EXPECT_NE(Read("ERROR.LOG").find("ERROR NUMBER: 76\r\n"), std::string::npos);

    Write("KEPT.QRY", "good");
    lines.Item(1).Value.assign(10'000, 'v');
    const ShortFiles disk(4096);
    EXPECT_EQ(Save("KEPT.QRY"), StepEnd::EndProgram);
    EXPECT_EQ(Read("KEPT.QRY"), "good");
}

TEST_F(QueryFileTest, WhatAFileCannotHoldIsSaid) {
    lines.Item(1).Value = "12\" \xE6\xBC\xA2";
    EXPECT_EQ(Save("X.QRY"), StepEnd::Done);
    EXPECT_EQ(user.messages.size(), 2U);
    EXPECT_EQ(lines.Item(1).Value, "12\" \xE6\xBC\xA2");
}

TEST(HandledStep, EachAnswerOfTheErrorHandlerHasItsWay) {
    const ScratchFolder folder;
    const FixedClock clock(DateSerial(1998, 3, 7));
    const struct {
        ErrorNumber number;
        StepEnd end;
    } cases[] = {{ErrorNumber::ObjectNotSet, StepEnd::Done},
                 {ErrorNumber::FileNotFound, StepEnd::Left},
                 {ErrorNumber::DuplicateKey, StepEnd::Left},
                 {ErrorNumber::Locked, StepEnd::Left},  // Cancel
                 {ErrorNumber::DiskFull, StepEnd::EndProgram}};
    for (const auto& c : cases) {
        ScriptedUser user;
        RunTimeErrors errors(user, clock, folder.Path(), [](std::int32_t) {});
        int runs = 0;
        const auto fails = [&] {
            ++runs;
            throw RunTimeError(c.number, "It failed.");
        };
        EXPECT_EQ(RunHandled(errors, "QUERY:LFileCmd_Click", fails), c.end) << static_cast<int>(c.number);
        EXPECT_EQ(runs, 1);
    }

    ScriptedUser user;
    user.retries = true;
    RunTimeErrors errors(user, clock, folder.Path(), [](std::int32_t) {});
    int runs = 0;
    const auto succeedsLate = [&] {
        if (++runs < 3) throw RunTimeError(ErrorNumber::Locked, "It is locked.");
    };
    EXPECT_EQ(RunHandled(errors, "QUERY:LFileCmd_Click", succeedsLate), StepEnd::Done);
    EXPECT_EQ(runs, 3);
}

}  // namespace
}  // namespace quillform::dialogs
