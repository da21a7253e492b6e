#include <gtest/gtest.h>

#include <fstream>

#include "ScratchFolder.h"
#include "data/Engine.h"
#include "engine/FakeSurroundings.h"
#include "output/OutputRooms.h"
#include "platform/OutputFile.h"
#include "platform/Text.h"

namespace quillform::testing {
namespace {

namespace fs = std::filesystem;

const std::vector<Field> columns = {{.Name = "City", .Type = FieldType::Text, .Size = 20},
                                    {.Name = "Amount", .Type = FieldType::Long, .Size = 4}};
constexpr int City = 1;
constexpr int Amount = 2;

std::vector<Value> Row(const std::string& city, int amount) { return {Value::Text(city), Value::Integer(amount)}; }

/// A report of towns and amounts that is exported, and what became of it.
class Export : public ::testing::Test {
protected:
    Export() : scene(columns, {Row("Bonn", 10), Row("Bonn", 20), Row("Kiel", 5)}) {
        scene.made = engine.get();
        clssFields& city = scene.Add(City, 1, 0, 8, " Town ");
        city.PrimarySort = city.SuppressDuplicate = true;
        clssFields& amount = scene.Add(Amount, 1, 10, 6, "Amount due");
        amount.Mask = "###,##0.00";
        amount.SubTotalFlag1 = amount.GrandTotalFlag = true;
    }

    RunEnd RunTo(const OutputTarget& target) {
        const std::unique_ptr<Output> output = MakeOutput(OutputType::AccessDatabase, target);
        const RunOutcome outcome = scene.Run(*output);
        failure = outcome.failure ? outcome.failure->what() : "";
        return outcome.end;
    }
    /// Column names, a "|" behind each row.
    std::string Content(const fs::path& path) {
        const auto database = engine->OpenDatabase(path.string(), Access::ReadOnly);
        const auto rows = database->OpenRecordset("SELECT * FROM [Project1 Table]", RecordsetType::Snapshot);
        std::string content;
        for (const Field& field : rows->Fields())
            content += (content.empty() ? "" : ",") + field.Name + ":" + std::to_string(field.Size);
        for (; !rows->IsEOF(); rows->MoveNext())
            for (std::size_t i = 0; i < rows->Fields().size(); ++i)
                content += (i == 0 ? "|" : ",") + rows->Text(static_cast<int>(i));
        return content;
    }
    std::string FormatOf(const fs::path& path) const { return data::FactsOf(path).front().second; }
    std::size_t CountFiles() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.Path()), {}));
    }
    std::string Put(std::string_view name, std::string_view content) const {
        std::ofstream(folder / name) << content;
        return folder.File(name);
    }

    ScratchFolder folder;
    SystemClock clock;
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    Scene scene;
    std::string failure;  ///< of the last run
};

TEST_F(Export, HoldsTheDetailOfEveryRecordAndNothingElse) {
    scene.Add(-1, 0, 0, 8, "Heading");
    scene.Add(9000, 0, 10, 4, "Page");
    scene.Add(0, 1, 20, 8, "words");
    scene.Add(900, 1, 30, 8, "Formula");
    for (int id = 3; id <= 899; ++id) scene.data.catalog.push_back(scene.data.catalog.back());
    scene.data.catalog.back().id = 899;
    scene.Add(899, 1, 18, 4, "Last");
    EXPECT_EQ(RunTo({folder.File("out.mdb")}), RunEnd::Done) << failure;
    EXPECT_EQ(Content(folder / "out.mdb"), "Town:8,Amount due:6,Last:4|Bonn,10.00,10|,20.00,20|Kiel,5.00,5");
    EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(Export, IsAskedForAndRefusedByTheDialog) {
    struct Case {
        std::optional<std::string> answer;
        bool answersYes;
        RunEnd end;
        std::string message;
        bool isAsked;
    };
    scene.layout.settings.strDatabase[2] = folder.File("MINE.MDB");
    const std::string extension = "You must save the Access Database to a file with an extension of 'MDB'";
    const Case cases[] = {
        {std::nullopt, true, RunEnd::TargetCancelled, "", false},
        {"new.txt", true, RunEnd::TargetCancelled, extension, false},
        {"mdb", true, RunEnd::TargetCancelled, extension, false},
        {"old.mdb", false, RunEnd::TargetCancelled, "", true},
        {"old.mdb", true, RunEnd::Done, "", true},
        {"new.mdb", true, RunEnd::Done, "", false},
        {"mine.mdb", true, RunEnd::TargetCancelled,
         "You cannot use the '" + UpperCase(folder.File("mine.mdb")) + "' Database to Export the Data to.", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.answer.value_or("cancel"));
        const std::string old = Put("OLD.MDB", "old");
        scene.user = {};
        scene.user.answersYes = c.answersYes;
        if (c.answer) scene.user.chosenFile = folder.File(*c.answer);
        EXPECT_EQ(RunTo({}), c.end);
        EXPECT_EQ(scene.user.messages, c.message.empty() ? std::vector<std::string>{} : std::vector{c.message});
        EXPECT_EQ(scene.user.dialogs,
                  std::vector<std::string>{"Save To Microsoft Access MDB...|Microsoft Access (*.MDB)|*.MDB|MDB"});
        const std::string question =
            "Warning!!!|DataBase Already Exists.  Do you want to overwrite the existing Database?";
        EXPECT_EQ(scene.user.questions, c.isAsked ? std::vector{question} : std::vector<std::string>{});
        const bool isReplaced = c.end == RunEnd::Done && c.isAsked;
        EXPECT_EQ(ReadWholeFile(old) == "old", !isReplaced);
    }
    EXPECT_TRUE(fs::exists(folder / "NEW.MDB"));
    EXPECT_EQ(CountFiles(), 2U);
}

TEST_F(Export, TakesTheFormatOfTheReportOptionOrOfTheCommand) {
    struct Case {
        int option;
        std::optional<DatabaseVersion> named;
        std::string format;
    };
    const Case cases[] = {
        {0, {}, "Jet 4"},
        {5, {}, "Jet 3"},
        {6, {}, "Jet 3"},
        {7, {}, "Jet 3"},
        {8, {}, "Jet 3"},
        {8, DatabaseVersion::Jet40, "Jet 4"},
        {0, DatabaseVersion::Jet30, "Jet 3"},
    };
    for (const Case& c : cases) {
        scene.layout.settings.intOutputType = static_cast<std::int16_t>(c.option);
        EXPECT_EQ(RunTo({.file = folder.File("out.mdb"), .format = c.named}), RunEnd::Done);
        EXPECT_TRUE(FormatOf(folder / "out.mdb").starts_with(c.format)) << c.option << FormatOf(folder / "out.mdb");
    }
}

TEST_F(Export, SaysWhyTheTableCannotBeMade) {
    struct Case {
        std::string text;
        int length;
        std::string number;
    };
    const Case cases[] = {
        {"town", 8, "3191"},    {"  ", 8, "3125"},     {std::string(65, 'x'), 8, "3125"},
        {"Dr. Who", 8, "3125"}, {"[Town]", 8, "3125"}, {"a!b", 8, "3125"},
        {"Long", 256, "3001"},
    };
    const std::string file = Put("out.mdb", "old");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        scene.user = {};
        clssFields& item = scene.layout.Fields.Item(2);
        item.Text = c.text;
        item.Length = static_cast<std::int16_t>(c.length);
        EXPECT_EQ(RunTo({file}), RunEnd::TargetCancelled);
        EXPECT_EQ(scene.user.messages,
                  std::vector<std::string>{"An error has occurred in Module 'CreateMDB'.  Unable to create the Access "
                                           "MDB. Error #:  " +
                                           c.number});
        EXPECT_EQ(scene.user.warnings.size(), 1U);
        EXPECT_EQ(ReadWholeFile(file), "old");
        EXPECT_EQ(CountFiles(), 1U);
    }
    scene.user = {};
    EXPECT_EQ(RunTo({folder.File("missing/out.mdb")}), RunEnd::TargetCancelled);
    EXPECT_TRUE(scene.user.messages.at(0).ends_with(" 76"));
}

TEST_F(Export, RefusesATableWithoutColumnsAndOneWithTooMany) {
    struct Case {
        std::size_t items;  // data items, all of names of their own
        std::string number;
        std::string reason;
    };
    const Case cases[] = {{0, "3264", "must have a column"}, {255, "", ""}, {256, "3190", "255 columns"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.items);
        scene.user = {};
        scene.layout.Fields = {};
        scene.Add(-1, 0, 0, 8, "Heading");
        for (std::size_t i = 0; i < c.items; ++i)
            scene.Add(City, 1, 0, 5, "Town " + std::to_string(i)).PrimarySort = i == 0;
        EXPECT_EQ(RunTo({folder.File("out.mdb")}), c.number.empty() ? RunEnd::Done : RunEnd::TargetCancelled)
            << failure;
        ASSERT_EQ(scene.user.messages.size(), c.number.empty() ? 0U : 1U);
        EXPECT_EQ(CountFiles(), c.number.empty() ? 1U : 0U);
        fs::remove(folder / "out.mdb");
        if (c.number.empty()) continue;
        EXPECT_TRUE(scene.user.messages[0].ends_with(" " + c.number)) << scene.user.messages[0];
        EXPECT_NE(scene.user.warnings.at(0).find(c.reason), std::string::npos) << scene.user.warnings.at(0);
    }
}

TEST_F(Export, CutsAndReplacesWhatTheFormatCannotHoldAndSaysSo) {
    scene.data.rows = {Row("Überlingen", 1), Row("Łódź", 2), Row("12345678", 3), Row("\U0001F600\U0001F600 12345", 4)};
    struct Case {
        DatabaseVersion version;
        std::string content;
        std::vector<std::string> warnings;
    };
    const std::string file = folder.File("out.mdb");
    const std::string two = "\"" + file + "\": 2 values were longer than their columns and were cut.";
    const std::string one = "\"" + file + "\": 1 value was longer than its column and was cut.";
    const Case cases[] = {
        {DatabaseVersion::Jet40, "|Überling,1.00|Łódź,2.00|12345678,3.00|\U0001F600\U0001F600 123,4.00", {two}},
        {DatabaseVersion::Jet30,
         "|Überling,1.00|?ód?,2.00|12345678,3.00|?? 12345,4.00",
         {one, "\"" + file + "\": 4 characters that the Windows character set 1252 lacks became \"?\"."}},
    };
    for (const Case& c : cases) {
        scene.user = {};
        EXPECT_EQ(RunTo({.file = file, .format = c.version}), RunEnd::Done);
        EXPECT_EQ(Content(file), "Town:8,Amount due:6" + c.content);
        EXPECT_EQ(scene.user.warnings, c.warnings);
    }
}

TEST_F(Export, AStoppedRunLeavesAnOlderDatabaseAloneAndNothingBeside) {
    for (const bool keepsStopped : {false, true}) {
        const std::string old = Put("old.mdb", "old");
        for (const std::string& file : {old, folder.File("new.mdb")}) {
            scene.user = {};
            scene.user.cancelAtYield = 1;  // on the second record, which is lost
            EXPECT_EQ(RunTo({.file = file, .keepsStopped = keepsStopped}), RunEnd::Cancelled);
        }
        EXPECT_EQ(ReadWholeFile(old), "old");
        EXPECT_EQ(CountFiles(), keepsStopped ? 2U : 1U);
    }
    EXPECT_EQ(Content(folder / "new.mdb"), "Town:8,Amount due:6|Bonn,10.00");
}

TEST_F(Export, ARowLongerThanAPageEndsTheRun) {
    scene.data.rows = {Row(std::string(255, 'x'), 1)};
    for (int i = 0; i < 16; ++i) scene.Add(City, 1, 0, 255, "Copy " + std::to_string(i));
    const std::string file = folder.File("out.mdb");
    EXPECT_EQ(RunTo({.file = file, .keepsStopped = false}), RunEnd::Failed);
    EXPECT_NE(failure.find("A row of \"Project1 Table\" can hold"), std::string::npos) << failure;
    EXPECT_EQ(CountFiles(), 0U);
}

TEST_F(Export, NeverReplacesADatabaseOfTheReport) {
    fs::create_symlink(FakeEngine::reportDatabase, folder / "link.mdb");
    scene.layout.settings.strDatabase[2] = folder.File("Other.mdb");
    for (const char* name : {"link.mdb", "OTHER.MDB"}) {
        scene.user = {};
        EXPECT_EQ(RunTo({folder.File(name)}), RunEnd::TargetCancelled);
        EXPECT_EQ(scene.user.messages.size(), 1U);
        EXPECT_TRUE(scene.user.messages.at(0).starts_with("You cannot use the '/"));
    }
    EXPECT_EQ(CountFiles(), 1U);
}

TEST_F(Export, ManyRecordsTakeSeveralTransactions) {
    scene.layout.Fields.Item(1).Length = 20;
    for (int i = 0; i < 12; ++i) scene.Add(City, 1, 0, 255, "Copy " + std::to_string(i));
    scene.data.rows.clear();
    const std::string filler(240, 'x');
    for (int i = 1; i <= 4000; ++i) scene.data.rows.push_back(Row("T" + std::to_string(i) + filler, i));
    EXPECT_EQ(RunTo({folder.File("out.mdb")}), RunEnd::Done) << failure;
    const auto database = engine->OpenDatabase(folder.File("out.mdb"), Access::ReadOnly);
    const auto rows = database->OpenRecordset("SELECT * FROM [Project1 Table]", RecordsetType::Snapshot);
    int next = 1;
    for (; !rows->IsEOF(); rows->MoveNext(), ++next) ASSERT_EQ(rows->Text(2), "T" + std::to_string(next) + filler);
    EXPECT_EQ(next, 4001);
    EXPECT_EQ(CountFiles(), 1U);
}

}  // namespace
}  // namespace quillform::testing
