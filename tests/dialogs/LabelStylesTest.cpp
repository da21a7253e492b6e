#include <gtest/gtest.h>

#include <filesystem>

#include "ScriptedUser.h"
#include "catalog/CommonSheets.h"
#include "dialogs/LabelScene.h"
#include "dialogs/LabelStyles.h"
#include "dialogs/SheetOffer.h"
#include "dialogs/StockScene.h"

namespace quillform::dialogs {
namespace {

using Texts = std::vector<std::string>;

LabelStyle Style(std::string description, std::string height = "1", std::optional<int> paper = 1) {
    return {std::move(description), {"2", "3", std::move(height), "", "x", ".5", "-1", "0"}, paper};
}

template <typename Step>
std::string Failure(Step step) {
    try {
        step();
    } catch (const RunTimeError& error) {
        return error.what();
    }
    return {};
}

TEST(LabelStyles, AreWalkedToTheirEnds) {
    const LabelScene scene({"B", "A", "C"});
    LabelStyles styles(*scene.engine, scene.Path());
    Texts seen;
    const auto see = [&] { seen.push_back(styles.Current().description + std::to_string(styles.Position())); };
    styles.MovePrevious();
    see();
    for (int i = 0; i < 3; ++i) {
        styles.MoveNext();
        see();
    }
    styles.MovePrevious();
    see();
    EXPECT_EQ(seen, (Texts{"A0", "B1", "C2", "C2", "B1"}));
}

TEST(LabelStyles, AreStoredAsTheirTextsBegin) {
    const LabelScene scene({});
    LabelStyles styles(*scene.engine, scene.Path());
    EXPECT_FALSE(styles.HasRows());
    styles.MoveNext();
    styles.Add();
    styles.Save({"Mine", {"2x", "1 0", "1.5in", "", "abc", "-.25", "1e-1", "&H10"}, 7});
    EXPECT_EQ(styles.Current(), (LabelStyle{"Mine", {"2", "10", "1.5", "0", "0", "-0.25", "0.1", "16"}, 7}));
    styles.Add();
    styles.Save(Style("", "2", {}));
    EXPECT_EQ(styles.Current().paper, 0);
    EXPECT_EQ(styles.Current().measures[2], "2");
}

TEST(LabelStyles, OfOneDescriptionAreStoredAndTheFirstIsShown) {
    const LabelScene scene({"A", "Sam's \"best\"", "Sam's \"best\""});
    LabelStyles styles(*scene.engine, scene.Path());
    styles.Add();
    styles.Save(Style("Sam's \"best\"", "9"));
    EXPECT_EQ(styles.Position(), 1);
    EXPECT_EQ(styles.Current().measures[2], "1.333333");
    EXPECT_EQ(styles.Count(), 4);
}

// The digits that are shown are fewer than those that are stored, and a paper may be one that no list has.
TEST(LabelStyles, WhatIsntTouchedStaysAsItWas) {
    const LabelScene scene({"A"});
    scene.Execute("UPDATE [Report - Labels] SET [Paper Size] = 9");
    LabelStyles styles(*scene.engine, scene.Path());
    styles.Edit();
    LabelStyle entered = styles.Current();
    entered.measures[0] = "4";
    entered.paper = {};
    styles.Save(entered);
    const auto rows = scene.Rows();
    EXPECT_EQ(rows->Value("Height").real, static_cast<double>(LabelScene::height));
    EXPECT_EQ(rows->Text("Paper Size"), "9");
    EXPECT_EQ(rows->Text("Across"), "4");
    EXPECT_EQ(rows->Text("Width"), "0");  // was Null, which shows as an empty text
}

TEST(LabelStyles, DeletingTheLastShowsTheFirst) {
    const LabelScene scene({"A", "B", "C"});
    LabelStyles styles(*scene.engine, scene.Path());
    Texts shown;
    styles.MoveNext();
    for (int i = 0; i < 3; ++i) {
        styles.Delete();
        shown.push_back(styles.Current().description);
    }
    EXPECT_EQ(shown, (Texts{"C", "A", ""}));
    EXPECT_FALSE(styles.HasRows());
    EXPECT_EQ(styles.Position(), -1);
    styles.Add();
    styles.Save(Style("D"));
    EXPECT_EQ(styles.Current().description, "D");
}

TEST(LabelStyles, AFailedSaveCanBeRepeated) {
    TableDef table = LabelsTableDef();
    for (Field& field : table.Fields)
        if (field.Name == "Across") field = {"Across", FieldType::Integer, 2};
    const LabelScene scene({}, table);
    LabelStyles styles(*scene.engine, scene.Path());
    styles.Add();
    LabelStyle style = Style("A");
    style.measures[0] = "99999";
    EXPECT_NE(Failure([&] { styles.Save(style); }).find("99999 is out of the range"), std::string::npos);
    style.measures[0] = "1e999";
    EXPECT_NE(Failure([&] { styles.Save(style); }), "");
    style.measures[0] = "3";
    style.description = std::string(51, 'x');
    EXPECT_NE(Failure([&] { styles.Save(style); }).find("too small"), std::string::npos);
    EXPECT_TRUE(styles.IsEntering());
    EXPECT_EQ(scene.Stored(), Texts{});
    style.description.resize(50);
    styles.Save(style);
    EXPECT_FALSE(styles.IsEntering());
    EXPECT_EQ(scene.Stored(), Texts{style.description});
}

TEST(LabelStyles, ThatOthersChangedAreStoredOverOnlyWhenAsked) {
    const LabelScene scene({"A", "B"});
    LabelStyles styles(*scene.engine, scene.Path());
    styles.Edit();
    LabelStyle entered = styles.Current();
    entered.measures[0] = "5";
    scene.Execute("UPDATE [Report - Labels] SET [Down] = 7 WHERE [Label Description] = 'A'");
    EXPECT_NE(Failure([&] { styles.Save(entered); }).find("\"A\" was changed by another program"), std::string::npos);
    EXPECT_EQ(scene.Stored("Down"), (Texts{"7", "10"}));
    styles.Save(entered);
    EXPECT_EQ(scene.Stored("Across"), (Texts{"5", "2"}));
    EXPECT_EQ(scene.Stored("Down"), (Texts{"10", "10"}));
}

TEST(LabelStyles, ThatOthersDeletedAreAddedAnewOrPassedOver) {
    const LabelScene scene({"A", "B", "C", "D"});
    LabelStyles styles(*scene.engine, scene.Path());
    scene.Execute("DELETE FROM [Report - Labels] WHERE [Label Description] = 'B'");
    styles.MoveNext();
    EXPECT_EQ(styles.Current().description, "C");

    styles.Edit();
    const LabelStyle entered = styles.Current();
    scene.Execute("DELETE FROM [Report - Labels] WHERE [Label Description] = 'C'");
    EXPECT_NE(Failure([&] { styles.Save(entered); }).find("another program deleted it"), std::string::npos);
    EXPECT_TRUE(styles.IsEntering());
    styles.Save(entered);
    EXPECT_EQ(scene.Stored(), (Texts{"A", "C", "D"}));

    scene.Execute("DELETE FROM [Report - Labels]");
    EXPECT_NE(Failure([&] { styles.Delete(); }).find("\"C\" isn't there any more"), std::string::npos);
    styles.MoveFirst();
    EXPECT_FALSE(styles.HasRows());
    EXPECT_NE(Failure([&] { styles.Edit(); }), "");
}

TEST(LabelStyles, AddedByOthersAreSeenAtTheEnd) {
    const LabelScene scene({});
    LabelStyles styles(*scene.engine, scene.Path());
    scene.Execute("INSERT INTO [Report - Labels] ([Label Description]) VALUES ('New')");
    styles.MoveNext();
    EXPECT_EQ(styles.Current().description, "New");
}

TEST(LabelStyles, OfAReadOnlyDatabaseAreLookedAt) {
    const LabelScene scene({"A", "B"});
    ReadingEngine reading(*scene.engine);
    LabelStyles styles(reading, scene.Path());
    styles.MoveNext();
    EXPECT_EQ(styles.Current().description, "B");
    EXPECT_NE(Failure([&] { styles.Add(); }).find("reading only"), std::string::npos);
    EXPECT_NE(Failure([&] { styles.Edit(); }).find("reading only"), std::string::npos);
    EXPECT_NE(Failure([&] { styles.Delete(); }).find("reading only"), std::string::npos);
    EXPECT_FALSE(styles.IsEntering());
    EXPECT_EQ(styles.Current().description, "B");
}

TEST(LabelStyles, ADatabaseThatGoesAwayKeepsWhatIsEntered) {
    const LabelScene scene({"A", "B"});
    LabelStyles styles(*scene.engine, scene.Path());
    styles.Add();
    std::filesystem::remove(scene.Path());
    EXPECT_NE(Failure([&] { styles.Save(Style("C")); }), "");
    EXPECT_NE(Failure([&] { styles.Save(Style("C")); }), "");
    EXPECT_TRUE(styles.IsEntering());
}

TEST(LabelStyles, WithoutATableOrColumnOpenNothing) {
    TableDef narrow = LabelsTableDef();
    std::erase_if(narrow.Fields, [](const Field& field) { return field.Name == "Vertical Gap"; });
    TableDef other = LabelsTableDef();
    other.Name = "Labels";
    for (const auto& [table, words] : {std::pair(narrow, "no column \"Vertical Gap\""), {other, "Report - Labels"}}) {
        const LabelScene scene({}, table);
        EXPECT_NE(Failure([&] { LabelStyles(*scene.engine, scene.Path()); }).find(words), std::string::npos);
    }
    const LabelScene scene({});
    EXPECT_NE(Failure([&] { LabelStyles(*scene.engine, scene.folder.File("none.mdb")); }), "");
}

TEST(SheetOffer, FillsAnEmptyTableWhereItIsWanted) {
    for (const bool isWanted : {false, true}) {
        const LabelScene scene({});
        ScriptedUser user;
        user.answer = isWanted;
        EXPECT_EQ(OfferCommonSheets(scene.Path(), user, *scene.engine), isWanted);
        EXPECT_EQ(user.questions.size(), 1U);
        EXPECT_EQ(scene.Stored().size(), isWanted ? commonSheets.size() : 0U);
        LabelStyles styles(*scene.engine, scene.Path());
        EXPECT_EQ(styles.Current().description, isWanted ? "Address, 14/sheet, 1 1/2 x 4 in., as 5159" : "");
    }
}

TEST(SheetOffer, AsksNothingWhereNothingCanOrNeedBeAdded) {
    ScriptedUser user;
    user.answer = true;
    const LabelScene filled({"A"});
    EXPECT_FALSE(OfferCommonSheets(filled.Path(), user, *filled.engine));
    const LabelScene empty({});
    ReadingEngine reading(*empty.engine);
    EXPECT_FALSE(OfferCommonSheets(empty.Path(), user, reading));
    EXPECT_TRUE(user.questions.empty());
    EXPECT_TRUE(user.messages.empty());
}

// As in a configuration, whose own handle made the table a moment ago and stays open.
TEST(SheetOffer, FillsATableThatAnotherHandleJustMade) {
    for (const DatabaseVersion version : {DatabaseVersion::Sqlite, DatabaseVersion::Jet30, DatabaseVersion::Jet40}) {
        const LabelScene scene({});
        const std::string path = scene.folder.File("new.mdb");
        const auto database = scene.engine->CreateDatabase(path, version);
        database->AppendTable(LabelsTableDef());
        ScriptedUser user;
        user.answer = true;
        EXPECT_TRUE(OfferCommonSheets(path, user, *scene.engine));
        const auto rows = database->OpenRecordset("SELECT * FROM [Report - Labels]", RecordsetType::Snapshot);
        EXPECT_EQ(rows->RecordCount(), static_cast<std::int64_t>(commonSheets.size()));
    }
}

TEST(SheetOffer, AddsAllOrNone) {
    TableDef table = LabelsTableDef();
    table.Fields[0].Size = 45;  // too small for some of the descriptions
    const LabelScene scene({}, table);
    ScriptedUser user;
    user.answer = true;
    EXPECT_FALSE(OfferCommonSheets(scene.Path(), user, *scene.engine));
    EXPECT_EQ(user.messages.size(), 1U);
    EXPECT_EQ(scene.Stored(), Texts{});
}

}  // namespace
}  // namespace quillform::dialogs
