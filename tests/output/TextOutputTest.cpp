#include <gtest/gtest.h>

#include "output/RunToFile.h"
#include "output/TextOutput.h"

namespace quillform::testing {
namespace {

/// Lines that end as they must, without their trailing blanks, joined by "|".
std::string Lines(const std::string& file) {
    std::string joined;
    std::size_t start = 0;
    while (start < file.size()) {
        const std::size_t end = file.find("\r\n", start);
        if (end == std::string::npos) return "line without end: " + file.substr(start);
        const std::size_t last = file.find_last_not_of(' ', end - 1);
        if (end > start && last != std::string::npos && last >= start) joined += file.substr(start, last - start + 1);
        joined += '|';
        start = end + 2;
    }
    return joined;
}

Scene Grouped() {
    Scene scene(columns, {Row("A", "x", 10), Row("A", "x", 20), Row("A", "y", 5), Row("B", "y", 7)});
    clssFields& city = scene.Add(City, 1, 0, 4);
    city.PrimarySort = true;
    city.SuppressDuplicate = true;
    scene.Add(Name, 1, 5, 4).SecondarySort = true;
    clssFields& amount = scene.Add(Amount, 1, 10, 6);
    amount.FontAllignment = "R";
    amount.SubTotalFlag1 = amount.SubTotalFlag2 = amount.GrandTotalFlag = true;
    return scene;
}

TEST(TextOutput, GroupsSubtotalsAndGrandTotal) {
    Scene scene = Grouped();
    scene.Add(-1, 0, 0, 8, " Report ");
    scene.Add(9000, 0, 12, 4);
    const std::string expected =
        "Report      1|"
        "A    x        10|"
        "     x        20|"
        "          ______|              30|"
        "     y         5|"
        "          ______|               5|"
        "          ______|              35|"
        "B    y         7|"
        "          ______|               7|"
        "          ______|               7|"
        "          ______|              42|";
    EXPECT_EQ(Lines(RunTo(scene, OutputType::Text)), expected);
    scene.GroupBy(0);
    EXPECT_EQ(Lines(RunTo(scene, OutputType::Text, {.walk = Walk::Groups})), expected);
}

TEST(TextOutput, ColumnsAreExactlyAsLongAsTheirItems) {
    Scene scene(columns, {Row("abcdefgh", "wx", 12345)});
    scene.Add(City, 0, 2, 4).PrimarySort = true;
    scene.Add(Name, 0, 10, 5).FontAllignment = "C";
    scene.Add(Amount, 0, 16, 3).FontAllignment = "R";
    scene.Add(0, 0, 5, 3,
              "far");  // begins inside the item before it, so no blank comes between and what follows is pushed on
    EXPECT_EQ(RunTo(scene, OutputType::Text), "  abcdfar   wx   345\r\n");
}

TEST(TextOutput, BreaksCompareTheLeadingCharacters) {
    struct Case {
        int charChange;
        std::vector<std::string> cities;
        int breaks;
    };
    const Case cases[] = {
        {0, {"A", "B"}, 0},     {3, {"ABC1", "ABC2", "ABD1"}, 2},
        {9, {"AB", "ABC"}, 2},  {3, {" ABC", "ABC"}, 1},
        {3, {"abc", "ABC"}, 2}, {5, {""}, 1},
        {5, {"A", ""}, 2},      {5, {"", ""}, 1},
    };
    for (const Case& c : cases) {
        Scene scene(columns, {});
        for (const std::string& city : c.cities) scene.data.rows.push_back(Row(city, "", 1));
        scene.layout.settings.intCharChange1 = static_cast<std::int16_t>(c.charChange);
        scene.Add(City, 0, 0, 5).PrimarySort = true;
        scene.Add(Amount, 0, 6, 3).SubTotalFlag1 = true;
        const std::string lines = Lines(RunTo(scene, OutputType::Text));
        EXPECT_EQ(std::count(lines.begin(), lines.end(), '_'), c.breaks * 3) << c.charChange << " " << c.cities.front();
    }
}

TEST(TextOutput, HiddenRowsLeaveNothingBehind) {
    // Row 0 is never printed, row 1 shows its duplicates once, row 2 always shows.
    Scene scene(columns, {Row("A", "x", 1), Row("A", "y", 2)});
    scene.Add(City, 0, 3, 3).SuppressDetails = true;
    scene.layout.Fields.Item(1).PrimarySort = true;
    scene.Add(City, 1, 0, 3).SuppressDuplicate = true;
    scene.Add(Name, 2, 0, 3);
    clssFields& total = scene.Add(Amount, 2, 4, 3);
    total.GrandTotalFlag = true;
    EXPECT_EQ(Lines(RunTo(scene, OutputType::Text)), "A|x   1|y   2|    ___|    3|");

    Scene totalsOnly(columns, {Row("A", "x", 1), Row("A", "y", 2), Row("B", "y", 3)});
    clssFields& city = totalsOnly.Add(City, 0, 0, 3);
    city.PrimarySort = city.SuppressDetails = true;
    clssFields& amount = totalsOnly.Add(Amount, 0, 4, 3);
    amount.SuppressDetails = amount.SubTotalFlag1 = true;
    EXPECT_EQ(Lines(RunTo(totalsOnly, OutputType::Text)), "    ___|    3|    ___|    3|");
}

TEST(TextOutput, HeadingsReachTheFileWhereverTheDetailStands) {
    struct Case {
        float headingTop;
        float detailTop;
        std::string_view lines;
    };
    const Case cases[] = {
        {0, 1, "Head|A|B|"},
        {0, 0, "Head|A|B|"},
        {1, 4, "|Head|||A|B|"},
        {3, 1, "|||Head|"},  // a heading below: the detail item belongs to the heading's range and prints nowhere
    };
    for (const Case& c : cases) {
        Scene scene(columns, {Row("A", "", 1), Row("B", "", 1)});
        scene.Add(-1, c.headingTop, 0, 6, "Head");
        scene.Add(City, c.detailTop, 8, 3).PrimarySort = true;
        std::string lines = Lines(RunTo(scene, OutputType::Text));
        std::erase(lines, ' ');
        EXPECT_EQ(lines, c.lines) << c.headingTop;
    }
}

TEST(TextOutput, PagesOfTwoRowDetailsHaveSixtyLines) {
    Scene scene(columns, {});
    for (int i = 0; i < 100; ++i) scene.data.rows.push_back(Row("A", "n" + std::to_string(i), i));
    scene.Add(-1, 0, 0, 6, "Head");
    scene.Add(9000, 0, 8, 3);
    scene.Add(City, 1, 0, 3).PrimarySort = true;
    scene.Add(Name, 2, 0, 5);
    const std::string file = RunTo(scene, OutputType::Text);
    std::vector<std::size_t> heads;
    std::size_t line = 0;
    for (std::size_t at = 0; at < file.size(); at = file.find("\r\n", at) + 2, ++line)
        if (file.compare(at, 4, "Head") == 0) heads.push_back(line);
    ASSERT_EQ(heads.size(), 4U);
    EXPECT_EQ(heads[1] % 60, 0U);
    EXPECT_EQ(heads[2] % 60, 0U);
    EXPECT_NE(file.find("Head    2"), std::string::npos);
}

TEST(TextOutput, OneRowDetailsHaveOneHeading) {
    Scene scene(columns, {});
    for (int i = 0; i < 1000; ++i) scene.data.rows.push_back(Row("A", "", i));
    scene.Add(9006, 0, 0, 6);
    scene.Add(Amount, 1, 0, 6).PrimarySort = true;
    scene.layout.settings.intCharChange1 = 0;
    const std::string lines = Lines(RunTo(scene, OutputType::Text));
    EXPECT_TRUE(lines.starts_with("1,000|0|1|2|"));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '|'), 1001);
}

TEST(TextOutput, RunsThatEndEarly) {
    Scene none(columns, {});
    none.Add(City, 0, 0, 3).PrimarySort = true;
    EXPECT_EQ(RunTo(none, OutputType::Text), "");
    EXPECT_EQ(none.user.messages, std::vector<std::string>{"There is no data to print on the report."});

    Scene unsorted(columns, {Row("A", "", 1)});
    unsorted.Add(-1, 0, 0, 6, "Head");
    unsorted.Add(City, 1, 0, 3);
    EXPECT_EQ(Lines(RunTo(unsorted, OutputType::Text)), "Head|");
    EXPECT_EQ(unsorted.user.messages, std::vector<std::string>{"You need to specify a primary sort field."});

    Scene empty(columns, {Row("A", "", 1)});
    const std::unique_ptr<Output> output = MakeOutput(OutputType::Text, {"unused"});
    EXPECT_EQ(empty.Run(*output).end, RunEnd::NoItems);
    EXPECT_EQ(empty.user.messages.size(), 1U);
}

TEST(TextOutput, CancelKeepsTheGrandTotalOfOnePassOnly) {
    for (const Walk walk : {Walk::OnePass, Walk::Groups}) {
        Scene scene(columns, {Row("A", "", 1), Row("A", "", 2), Row("A", "", 4), Row("B", "", 8)});
        scene.Add(City, 0, 0, 3).PrimarySort = true;
        scene.Add(Amount, 0, 4, 3).GrandTotalFlag = true;
        scene.GroupBy(0);
        scene.user.cancelAtYield = 1;
        const std::string lines = Lines(RunTo(scene, OutputType::Text, {.walk = walk}));
        EXPECT_EQ(lines, walk == Walk::OnePass ? "A   1|    ___|    3|" : "A   1|");
    }
}

TEST(TextOutput, AStoppedRunLeavesAnOlderReportAlone) {
    ScratchFolder folder;
    const std::string file = folder.File("old.txt");
    OutputFile old(file);
    old.Write("old");
    old.Commit();
    Scene scene(columns, {Row("A", "", 1), Row("B", "", 2)});
    scene.Add(City, 0, 0, 3).PrimarySort = true;
    scene.user.cancelAtYield = 1;
    EXPECT_EQ(scene.Run(*MakeOutput(OutputType::Text, {file})).end, RunEnd::Cancelled);
    EXPECT_EQ(ReadWholeFile(file), "old");
    scene.user.cancelAtYield = -1;
    EXPECT_EQ(scene.Run(*MakeOutput(OutputType::Text, {file})).end, RunEnd::Done);
    EXPECT_EQ(ReadWholeFile(file), "A  \r\nB  \r\n");
}

TEST(MeasuredWalk, TakesTheCheaperWayOnlyWhereBothGiveTheSameRows) {
    struct Case {
        std::string city;
        std::string join;
        Walk walk;
    };
    // With a clock that ticks at every look each step takes one second, so the one pass is the cheaper; a single group
    // with nothing to open would be the other. What matters is that a key that can't be asked for never goes by groups.
    const Case cases[] = {{"A", "", Walk::OnePass}, {"O'Hara", "", Walk::OnePass}, {" A", "", Walk::OnePass}};
    for (const Case& c : cases) {
        Scene scene(columns, {Row(c.city, "", 1)});
        SteppingClock ticking;
        scene.runClock = &ticking;
        scene.Add(City, 0, 0, 6).PrimarySort = true;
        scene.GroupBy(0);
        ScratchFolder folder;
        const RunOutcome outcome =
            scene.Run(*MakeOutput(OutputType::Text, {folder.File("x")}), {.walk = Walk::Measured});
        EXPECT_EQ(outcome.walk, c.walk);
        const bool askedForGroup = scene.data.statements.size() > 2;
        EXPECT_EQ(askedForGroup, c.city == "A") << c.city;
    }
}

TEST(MergeOutput, RecordsAreLinesOfFields) {
    struct Case {
        OutputType type;
        std::string_view file;
    };
    const Case cases[] = {
        {OutputType::CommaSeparated, "\"A\",\"x, \"y\"\",\"1\"\r\n\"\",\"z\",\"2\"\r\n"},
        {OutputType::WordMerge,
         "\"Head\",\"Town\",\"Who\",\"Sum\"\r\n\"A\",\"x, \"y\"\",\"1\"\r\n\"\",\"z\",\"2\"\r\n"},
        {OutputType::WordPerfectMerge,
         "\"\x12\nA\x12\n\x12\nx, \"y\"\x12\n\x12\n1\x05\n\r\n\"\x12\n\x12\n\x12\nz\x12\n\x12\n2\x05\n\r\n"},
    };
    for (const Case& c : cases) {
        Scene scene(columns, {Row("A", "x, \"y\"", 1), Row("A", "z", 2)});
        scene.Add(-1, 0, 0, 6, "Head");
        clssFields& city = scene.Add(City, 1, 0, 3, "Town");
        city.PrimarySort = city.SuppressDuplicate = true;
        scene.Add(Name, 1, 4, 3, "Who");
        scene.Add(Amount, 2, 0, 3, "Sum").GrandTotalFlag = true;
        EXPECT_EQ(RunTo(scene, c.type), c.file);
    }
}

TEST(TextOutput, CharactersThatTheFileLacksAreCountedAndSaid) {
    Scene scene(columns, {Row("\xC3\xBC\xE2\x82\xAC", "\xD0\x96\xD0\x96", 1)});
    scene.Add(City, 0, 0, 2).PrimarySort = true;
    scene.Add(Name, 0, 2, 2);
    EXPECT_EQ(RunTo(scene, OutputType::Text), "\xFC\x80??\r\n");
    ASSERT_EQ(scene.user.warnings.size(), 1U);
    EXPECT_NE(scene.user.warnings[0].find("2 characters"), std::string::npos);
}

}  // namespace
}  // namespace quillform::testing
