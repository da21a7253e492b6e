// The report options without their form: what the controls show, what Save stores, and the list of label styles.

#include <gtest/gtest.h>

#include <functional>

#include "dialogs/LabelList.h"
#include "dialogs/OptionScene.h"
#include "dialogs/ReportOptions.h"

namespace quillform::dialogs {
namespace {

using testing::OptionScene;
using Texts = std::vector<std::string>;

/// Every setting with a value of its own.
ReportSettings AllSettings() {
    ReportSettings settings;
    settings.boolPageBreak2 = true;
    settings.intSpaces1 = 2;
    settings.intSpaces2 = 3;
    settings.intCharChange1 = 4;
    settings.intCharChange2 = -5;
    settings.intOutputType = 1;
    settings.strDatabase = {"", "a.mdb", "b.mdb", "c.mdb", "", "", "", ""};
    settings.intDatabaseCount = 2;
    settings.intJoinType = 2;
    settings.intPaperSize = 16;
    settings.boolLabels = true;
    settings.intLabelsAcross = 3;
    settings.intLabelsDown = 10;
    settings.sngLabelHeight = 1;
    settings.sngLabelWidth = 2.625F;
    settings.sngTopMargin = 0.5F;
    settings.sngLeftMargin = 0.19F;
    settings.sngHorizontalGap = 0.123456789F;  // more digits than its text has
    settings.sngVerticalGap = -0.25F;
    settings.boolCourier = true;
    return settings;
}

TEST(ReportOptions, ControlsShowTheSettings) {
    OptionControls expected;
    expected.RptOpt = 1;
    expected.chkDisplayOption = true;
    expected.Chk = {false, true};
    expected.NumSpc = {" 2", " 3"};
    expected.CharChange = {" 4", "-5"};
    expected.optJoin = 2;
    expected.Database = {"a.mdb", "b.mdb", "", "", "", "", ""};  // up to the count
    expected.optPaperSize = 16;
    expected.Custom = {" 3", " 10", " 1", " 2.625", " .5", " .19", " .1234568", "-.25"};
    EXPECT_EQ(ShowSettings(AllSettings()), expected);
}

TEST(ReportOptions, SaveWithoutAChangeKeepsEverySetting) {
    struct Case {
        const char* name;
        std::function<void(ReportSettings&)> change;
    };
    const Case cases[] = {
        {"all", [](ReportSettings&) {}},
        {"a paper without a button", [](ReportSettings& settings) { settings.intPaperSize = 9; }},
        {"an output type without a button", [](ReportSettings& settings) { settings.intOutputType = 11; }},
        {"a negative one", [](ReportSettings& settings) { settings.intOutputType = -1; }},
        {"a join rule without a button", [](ReportSettings& settings) { settings.intJoinType = 7; }},
        {"no database", [](ReportSettings& settings) { settings.intDatabaseCount = 0; }},
    };
    for (const Case& test : cases) {
        ReportSettings settings = AllSettings();
        test.change(settings);
        settings.boolCourier = settings.intOutputType == 1;
        ReportSettings stored = settings;
        EXPECT_FALSE(StoreSettings(ShowSettings(settings), stored)) << test.name;
        EXPECT_EQ(stored, settings) << test.name;
    }
    ReportSettings broken = AllSettings();
    broken.intDatabaseCount = 30000;  // of a damaged layout
    EXPECT_EQ(ShowSettings(broken).Database[2], "c.mdb");
    broken.intDatabaseCount = -3;
    EXPECT_EQ(ShowSettings(broken).Database[0], "");
}

TEST(ReportOptions, DatabasesAreStoredByTheirBoxes) {
    struct Case {
        const char* name;
        Texts boxes;
        Texts entries;
        int count;
    };
    const Case cases[] = {
        {"an emptied box leaves its entry", {"a", "", "", "", "", "", ""}, {"a", "b.mdb", "c.mdb"}, 1},
        {"the last filled box counts", {"a", "", "", "d", "", "", ""}, {"a", "b.mdb", "c.mdb", "d"}, 4},
        {"all empty", {"", " ", "", "", "", "", ""}, {"a.mdb", "b.mdb", "c.mdb"}, 2},
        {"untrimmed", {" a ", "", "", "", "", "", "g"}, {" a ", "b.mdb", "c.mdb", "", "", "", "g"}, 7},
    };
    for (const Case& test : cases) {
        ReportSettings settings = AllSettings();
        OptionControls controls = ShowSettings(settings);
        std::copy(test.boxes.begin(), test.boxes.end(), controls.Database.begin());
        StoreSettings(controls, settings);
        EXPECT_EQ(settings.intDatabaseCount, test.count) << test.name;
        Texts entries(settings.strDatabase.begin() + 1, settings.strDatabase.end());
        entries.resize(test.entries.size());
        EXPECT_EQ(entries, test.entries) << test.name;
    }
}

TEST(ReportOptions, NumbersAreTheValuesOfTheirTexts) {
    struct Case {
        const char* text;
        int whole;
        float inches;
    };
    const Case cases[] = {
        {"", 0, 0},    {" 12", 12, 12},    {"4 5", 45, 45}, {"2.5", 2, 2.5F},    {"3.5", 4, 3.5F},        {"abc", 0, 0},
        {"7in", 7, 7}, {".125", 0, .125F}, {"-1", -1, -1},  {"1E3", 1000, 1000}, {"32767", 32767, 32767},
    };
    for (const Case& test : cases) {
        ReportSettings settings = AllSettings();
        OptionControls controls = ShowSettings(settings);
        controls.NumSpc[1] = controls.Custom[0] = controls.Custom[7] = test.text;
        EXPECT_FALSE(StoreSettings(controls, settings)) << test.text;
        EXPECT_EQ(settings.intSpaces2, test.whole) << test.text;
        EXPECT_EQ(settings.intLabelsAcross, test.whole) << test.text;
        EXPECT_EQ(settings.sngVerticalGap, test.inches) << test.text;
    }
}

TEST(ReportOptions, ANumberThatNoSettingHoldsStoresNothing) {
    struct Case {
        std::function<std::string&(OptionControls&)> box;
        const char* text;
        const char* name;
        const char* message;
    };
    const Case cases[] = {
        {[](OptionControls& c) -> std::string& { return c.NumSpc[1]; }, "99999", "NumSpc_1",
         "\"99999\" is too large for \"# of spaces after group\" of \"Secondary Group\" on the tab \"Grouping\": it "
         "takes a whole number from -32768 to 32767."},
        {[](OptionControls& c) -> std::string& { return c.CharChange[0]; }, "32768", "CharChange_0", nullptr},
        {[](OptionControls& c) -> std::string& { return c.CharChange[1]; }, "&HFFFFFFFFF", "CharChange_1", nullptr},
        {[](OptionControls& c) -> std::string& { return c.Custom[0]; }, "99999", "Custom_0",
         "\"99999\" is too large for \"Labels Across\" on the tab \"Label Type\": it takes a whole number from -32768 "
         "to 32767."},
        {[](OptionControls& c) -> std::string& { return c.Custom[3]; }, "1E99", "Custom_3",
         "\"1E99\" is too large for \"Label Width\" on the tab \"Label Type\": it takes a number below 3.4E+38."},
        {[](OptionControls& c) -> std::string& { return c.Custom[7]; }, "1E999", "Custom_7", nullptr},
    };
    for (const Case& test : cases) {
        ReportSettings settings = AllSettings();
        OptionControls controls = ShowSettings(settings);
        controls.RptOpt = 4;
        controls.NumSpc[0] = "8";
        test.box(controls) = test.text;
        const auto refusal = StoreSettings(controls, settings);
        ASSERT_TRUE(refusal) << test.name;
        EXPECT_EQ(refusal->box, test.name);
        if (test.message != nullptr) {
            EXPECT_EQ(refusal->message, test.message);
        }
        EXPECT_EQ(settings, AllSettings()) << test.name;
    }
}

TEST(ReportOptions, TheLabelsSwitchFollowsFromTheMeasures) {
    struct Case {
        std::size_t box;
        const char* text;
        bool isOn;
    };
    const Case cases[] = {{0, "0", false}, {0, "-3", false}, {1, "", false}, {2, "0", false},
                          {2, "-1", true}, {3, "x", false},  {4, "0", true}, {7, "0", true}};
    for (const Case& test : cases) {
        ReportSettings settings = AllSettings();
        OptionControls controls = ShowSettings(settings);
        EXPECT_EQ(LabelHint(controls, settings), "");
        controls.Custom[test.box] = test.text;
        EXPECT_EQ(LabelHint(controls, settings).empty(), test.isOn) << test.box << test.text;
        StoreSettings(controls, settings);
        EXPECT_EQ(settings.boolLabels, test.isOn) << test.box << test.text;
        EXPECT_EQ(LabelHint(ShowSettings(settings), settings), "");
    }
    const ReportSettings settings = AllSettings();
    OptionControls controls = ShowSettings(settings);
    controls.Custom[2] = "2,5";
    EXPECT_NE(LabelHint(controls, settings).find("Label Height: \"2,5\" counts as 2."), std::string::npos);
    // A new layout keeps the measures of the last one and has no labels.
    Layout layout;
    layout.settings = AllSettings();
    layout.ClearLayout();
    EXPECT_NE(LabelHint(ShowSettings(layout.settings), layout.settings), "");
}

TEST(LabelList, HasTheDescriptionsInTheirOrder) {
    OptionScene scene;
    LabelList list(scene.layout, *scene.engine);
    EXPECT_TRUE(list.Read(scene.DatabasePath()));
    EXPECT_EQ(list.Descriptions(), Texts{});  // no such file
    scene.MakeDatabase();
    EXPECT_TRUE(list.Read(scene.DatabasePath()));
    EXPECT_EQ(list.Descriptions(), (Texts{"A4", "Empty", "O'Neill's", "Small"}));
    EXPECT_FALSE(list.Read(scene.DatabasePath()));
    list.Forget();
    EXPECT_TRUE(list.Read(scene.DatabasePath()));
    EXPECT_TRUE(list.Read(scene.DatabasePath() + "x"));
    EXPECT_EQ(list.Descriptions(), Texts{});
}

TEST(LabelList, FindsTheDatabaseAsARunDoes) {
    OptionScene scene;
    scene.MakeDatabase();
    LabelList list(scene.layout, *scene.engine);
    for (const std::string& path : {scene.folder.File("LABELS.MDB"), std::string("C:\\OLD\\Labels.mdb")}) {
        list.Read("");
        list.Read(path);
        EXPECT_EQ(list.Descriptions().size(), 4U) << path;
        EXPECT_TRUE(list.Find(path, "small")) << path;
    }
}

TEST(LabelList, LeavesOutWhatCantBeRead) {
    OptionScene scene;
    const std::string other = scene.folder.File("other.mdb");
    const std::string broken = scene.folder.File("broken.mdb");
    scene.engine->CreateDatabase(other, DatabaseVersion::Jet40);
    std::filesystem::copy_file(other, broken);
    std::filesystem::resize_file(broken, 5000);
    LabelList list(scene.layout, *scene.engine);
    for (const std::string& path : {other, broken}) {
        EXPECT_TRUE(list.Read(path));
        EXPECT_EQ(list.Descriptions(), Texts{});
        EXPECT_THROW(list.Find(path, "Small"), RunTimeError);
    }
    EXPECT_THROW(list.Find("gone.mdb", "Small"), RunTimeError);
}

TEST(LabelList, AStyleIsFoundByItsDescription) {
    OptionScene scene;
    scene.MakeDatabase();
    const LabelList list(scene.layout, *scene.engine);
    const auto style = list.Find(scene.DatabasePath(), "O'Neill's");
    ASSERT_TRUE(style);
    EXPECT_EQ(Texts(style->measures.begin(), style->measures.end()),
              (Texts{"2", "7", "1.333333", "4", "0.83", "0.16", "0.19", "0"}));
    EXPECT_EQ(style->paper, 5);
    EXPECT_EQ(list.Find(scene.DatabasePath(), "Empty")->paper, std::nullopt);
    EXPECT_FALSE(list.Find(scene.DatabasePath(), "' OR '1' = '1"));
}

}  // namespace
}  // namespace quillform::dialogs
