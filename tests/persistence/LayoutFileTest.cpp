#include <gtest/gtest.h>

#include "ScratchFolder.h"
#include "engine/FakeSurroundings.h"
#include "persistence/LayoutFile.h"
#include "persistence/QueryFile.h"
#include "platform/OutputFile.h"

namespace quillform::testing {
namespace {

constexpr std::string_view exampleItem =
    "#12, 3, 10, 20,\"Stock Code\",\"Times New Roman\",\"10\",\"False\",\"False\",\"True\",\"0\",\" "
    "15\",\"L\",\"True\","
    "\"False\",\"False\",\"False\",\"False\",\"False\",\"\",\"False\",\"False\"";

class LayoutFile : public ::testing::Test {
protected:
    void Write(const std::string& text) {
        OutputFile file(path_);
        file.Write(text);
        file.Commit();
    }
    Layout Load(const std::string& text) {
        Write(text);
        Layout layout;
        layout.ClearLayout();
        problems_.clear();
        EXPECT_TRUE(LoadLayout(path_, layout, measure_, user_, {.checkDatabase = {}, .problems = &problems_}));
        return layout;
    }

    ScratchFolder folder_;
    std::string path_ = folder_.File("TEST.REP");
    CellMeasure measure_;
    FakeUser user_;
    std::vector<LayoutProblem> problems_;
};

TEST_F(LayoutFile, AnItemReadsAndWritesToTheLetter) {
    const Layout layout = Load(std::string(exampleItem) + "\r\n");
    ASSERT_EQ(layout.Fields.Count(), 1);
    const clssFields& item = layout.Fields.Item(1);
    EXPECT_EQ(item.Code, 12);
    EXPECT_EQ(item.Top, 3);
    EXPECT_EQ(item.Left, 10);
    EXPECT_EQ(item.Length, 20);
    EXPECT_EQ(item.Text, "Stock Code");
    EXPECT_TRUE(item.FontBold);
    EXPECT_EQ(item.FontBackColor, 15);
    EXPECT_TRUE(item.PrimarySort);
    EXPECT_EQ(item.Key, " 1");
    EXPECT_EQ(item.Index, 1);
    EXPECT_EQ(layout.PictureOf(item), (ItemSize{20, 1}));
    EXPECT_EQ(ItemRecord(item), exampleItem);
    EXPECT_TRUE(problems_.empty());
}

TEST_F(LayoutFile, MissingAndBrokenValuesTakeTheirFallback) {
    struct Case {
        std::string_view line;
        int code;
        float top;
        int length;
        std::string_view text;
        std::string_view font;
        bool bold;
        int backColor;
    };
    const Case cases[] = {
        {"#1, 2, 3, 4,", 1, 2, 4, "", "Times New Roman", false, 15},
        {"#1, 2, 3, 4,\"a,b\"", 1, 2, 4, "a,b", "Times New Roman", false, 15},
        {"#1, 2, 3, 4,\"a\",\"Arial\",\"8\",\"x\",\"x\",\" true \",\"0\",\" 7\"", 1, 2, 4, "a", "Arial", true, 7},
        {"#1, 2, 3, 4,\"a\",\"Arial\",\"8\",\"x\",\"x\",\"Yes\",\"0\",\"99999999999\"", 1, 2, 4, "a", "Arial", false,
         15},
        {"#1, 2, 3, 4,\"never closed", 1, 2, 4, "", "Times New Roman", false, 15},
        {"#99999, .5, 3, 2.5,\"a\"", 0, 0.5F, 2, "a", "Times New Roman", false, 15},
        {"#1e999, 1e999, &HFFFFFFFFF, 4,\"a\",\"Arial\",\"1e999\",\"\",\"\",\"True\",\"0\",\"1e999\"", 0, 0, 4, "a",
         "Arial", true, 15},
        {"#1", 0, 0, 0, "", "Times New Roman", false, 15},
        {"#", 0, 0, 0, "", "Times New Roman", false, 15},
        {"#,,,,,,,,\"\"\"\"", 0, 0, 0, ",,,", "", false, 15},
    };
    for (const Case& c : cases) {
        const Layout layout = Load(std::string(c.line));
        ASSERT_EQ(layout.Fields.Count(), 1) << c.line;
        const clssFields& item = layout.Fields.Item(1);
        EXPECT_EQ(item.Code, c.code) << c.line;
        EXPECT_EQ(item.Top, c.top) << c.line;
        EXPECT_EQ(item.Length, c.length) << c.line;
        EXPECT_EQ(item.Text, c.text) << c.line;
        EXPECT_EQ(item.FontName, c.font) << c.line;
        EXPECT_EQ(item.FontBold, c.bold) << c.line;
        EXPECT_EQ(item.FontBackColor, c.backColor) << c.line;
        EXPECT_FALSE(problems_.empty()) << c.line;
    }
}

TEST_F(LayoutFile, EverythingSurvivesSaveAndLoad) {
    Layout layout;
    layout.ClearLayout();
    clssFields item;
    item.Code = -1;
    item.Top = 2.5F;
    item.Left = 0.25F;
    item.Length = 7;
    item.Text = "a, b; \xC3\xBC \xE2\x82\xAC";
    item.FontName = "Courier New";
    item.FontSize = 9.75;
    item.FontItalic = item.FontUnderline = item.SecondarySort = item.SubTotalFlag2 = item.SuppressDetails = true;
    item.FontForeColor = 4;
    item.FontBackColor = 11;
    item.FontAllignment = "C";
    item.Mask = "#,##0.00;(#,##0.00)";
    item.Index = 1;
    item.Key = " 1";
    layout.Fields.Add(item);
    layout.Queries.Add(
        {.Key = " 1", .Text = "Freight >= 5", .Join = "AND", .Value = " 5,5 ", .Operator = ">=", .Code = 812});
    ReportSettings& settings = layout.settings;
    settings.boolPageBreak1 = settings.boolLabels = settings.boolCourier = true;
    settings.intSpaces2 = 3;
    settings.intOutputType = 10;
    settings.intCharChange1 = 5;
    settings.strDatabase[1] = "C:\\data\\a, b.mdb";
    settings.intOrientation = 0;
    settings.intLabelsAcross = 3;
    settings.sngLabelWidth = 2.625F;
    settings.sngTopMargin = -0.5F;
    ASSERT_TRUE(SaveLayout(path_, layout, user_));
    EXPECT_EQ(user_.messages, std::vector<std::string>{"Report Layout Saved"});
    const std::string bytes = ReadWholeFile(path_);
    EXPECT_TRUE(bytes.starts_with("^1.000.000\r\n#-1, 2.5, .25, 7,\"a, b; \xFC \x80\",\"Courier New\",\"9.75\","));
    EXPECT_NE(bytes.find("\r\n& 812,\"Freight >= 5\",\" 5,5 \",\">=\",\"AND\"\r\n"), std::string::npos);
    EXPECT_TRUE(
        bytes.ends_with("*1,0,10,\"5\",\"0\",\"3\",\"0\",\"0\",\"C:\\data\\a, b.mdb\",\"0\",\"1\",\"True\",\"3\",\"0\","
                        "\"0\",\"2.625\",\"-.5\",\"0\",\"0\",\"0\",\"True\"\r\n"));

    const Layout loaded = Load(bytes);
    EXPECT_EQ(loaded.Fields.Item(1), item);
    EXPECT_EQ(loaded.Queries.Item(1), layout.Queries.Item(1));
    EXPECT_EQ(loaded.settings, settings);
    EXPECT_EQ(LayoutText(loaded), LayoutText(layout));
}

TEST_F(LayoutFile, NumbersBeyondEveryRangeKeepWhatTheLayoutHad) {
    const Layout layout =
        Load("*1e999,2,1e999,\"7\",\"1e999\"\r\n& 1e999,\"t\",\"v\",\"=\",\"OR\"\r\n" + std::string(exampleItem));
    EXPECT_FALSE(layout.settings.boolPageBreak1);
    EXPECT_EQ(layout.settings.intSpaces1, 2);
    EXPECT_EQ(layout.settings.intOutputType, 0);
    EXPECT_EQ(layout.settings.intCharChange1, 7);
    ASSERT_EQ(layout.Queries.Count(), 1);
    EXPECT_EQ(layout.Queries.Item(1).Code, 0);
    EXPECT_EQ(layout.Queries.Item(1).Value, "v");
    EXPECT_EQ(layout.Fields.Count(), 1);
    EXPECT_EQ(problems_.size(), 2U);
}

TEST_F(LayoutFile, OnlyKnownRecordsCount) {
    const Layout layout = Load(
        "\xEF\xBB\xBF^1.000.000\n~ a remark\n\nhello\n& 5,\"t\",\"v\",\"=\",\"OR\"\n&5,\"\",\"\",\"\",\"\"\n"
        "*1,2,3,\"4\"\n" +
        std::string(exampleItem));
    EXPECT_EQ(layout.Fields.Count(), 1);
    ASSERT_EQ(layout.Queries.Count(), 2);
    EXPECT_EQ(layout.Queries.Item(1).Code, 5);
    EXPECT_EQ(layout.Queries.Item(2).Code, 0);  // the number begins at the third character
    EXPECT_EQ(layout.settings.intOutputType, 3);
    EXPECT_EQ(layout.settings.intCharChange1, 4);
    EXPECT_EQ(layout.settings.intOrientation, 1);  // not in the line, so as on a new layout
    ASSERT_EQ(problems_.size(), 2U);
    EXPECT_EQ(problems_[0].line, 4);
    EXPECT_EQ(problems_[1].line, 7);
}

TEST_F(LayoutFile, AMissingFileLeavesTheLayoutAlone) {
    Layout layout = Load(std::string(exampleItem));
    EXPECT_FALSE(LoadLayout(folder_.File("none.REP"), layout, measure_, user_));
    EXPECT_EQ(layout.Fields.Count(), 1);
    EXPECT_EQ(user_.messages, std::vector<std::string>{"The File That you selected is no longer on file"});
}

TEST_F(LayoutFile, WhatTheFormatCannotHoldIsReplacedAndSaid) {
    Layout layout;
    layout.ClearLayout();
    clssFields item;
    item.Text = "5\" \xD0\x96\r\nx";
    layout.Fields.Add(item);
    ASSERT_TRUE(SaveLayout(path_, layout, user_));
    EXPECT_EQ(user_.warnings.size(), 2U);
    EXPECT_EQ(Load(ReadWholeFile(path_)).Fields.Item(1).Text, "5' ?  x");
}

TEST_F(LayoutFile, AnUpperCasedPathIsSavedInTheFolderThatIsThere) {
    std::filesystem::create_directory(folder_.File("Layouts"));
    Layout layout;
    layout.ClearLayout();
    ASSERT_TRUE(SaveLayout(folder_.File("LAYOUTS\\A.REP"), layout, user_));
    EXPECT_TRUE(std::filesystem::exists(folder_.File("Layouts/A.REP")));
}

TEST_F(LayoutFile, AFailedSaveSaysSoAndLosesNothing) {
    Layout layout;
    layout.ClearLayout();
    EXPECT_FALSE(SaveLayout(folder_.File("no/such/folder.REP"), layout, user_));
    ASSERT_EQ(user_.messages.size(), 1U);
    EXPECT_TRUE(user_.messages[0].starts_with("The report layout was not saved.  "));
}

TEST_F(LayoutFile, QueryFilesAppendTheirLines) {
    Write("12,\">=\",\" a,b \",\"AND\",\"shown\"\r\nno comma here\r\n7,\"=\",\"cut\"short\",\"x\",\"y\"\r\n");
    collQuery queries;
    EXPECT_EQ(LoadQueries(path_, queries), 2);
    EXPECT_EQ(LoadQueries(path_, queries), 2);
    ASSERT_EQ(queries.Count(), 4);
    EXPECT_EQ(queries.Item(1),
              (clssQuery{.Key = " 1", .Text = "shown", .Join = "AND", .Value = "a,b", .Operator = ">=", .Code = 12}));
    EXPECT_EQ(queries.Item(3).Key, " 3");
    EXPECT_EQ(queries.Item(2).Value, "cut");
    EXPECT_THROW(LoadQueries(folder_.File("none.qry"), queries), RunTimeError);
    Write("12,\"=\",\"a\",\"AND\",\"x\"\r\n1e999,\"=\",\"a\",\"AND\",\"x\"\r\n");
    EXPECT_THROW(LoadQueries(path_, queries), RunTimeError);
    EXPECT_EQ(queries.Count(), 4);  // whole or not at all
    EXPECT_THROW(SaveQueries(folder_.File("x.txt"), queries), RunTimeError);
    const std::string saved = folder_.File("x.qry");
    SaveQueries(saved, queries);
    EXPECT_TRUE(ReadWholeFile(saved).starts_with("12,\">=\",\"a,b\",\"AND\",\"shown\"\r\n7,"));
}

}  // namespace
}  // namespace quillform::testing
