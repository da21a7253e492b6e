#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "dialogs/BoundRecords.h"
#include "dialogs/StockScene.h"

namespace quillform::dialogs {
namespace {

using Texts = std::vector<std::string>;
constexpr std::size_t code = 0, quantity = 1, cost = 2;

/// Records with a log of their events: "v", "r" and "e".
struct Scene : StockScene {
    using StockScene::StockScene;
    BoundRecords Bind(DBEngine& by) {
        return {by,
                {Path(), "select * from [Stock Code Table]", {"Stock Code", "Quantity On Hand", "Total Cost"}},
                {[this] { events += 'v'; }, [this] { events += 'r'; },
                 [this](const RunTimeError& error) {
                     events += 'e';
                     errors.emplace_back(error.what());
                 }}};
    }
    BoundRecords Opened() {
        BoundRecords records = Bind(*engine);
        records.Refresh();
        return records;
    }
    std::string events;
    Texts errors;
};

Texts Shown(const BoundRecords& records) { return {records.Text(code), records.Text(quantity), records.Text(cost)}; }

TEST(BoundRecords, WalkAndStayInside) {
    Scene scene;
    BoundRecords records = scene.Opened();
    struct Step {
        void (BoundRecords::*move)();
        std::int64_t position;
        Texts texts;
    };
    const Step steps[] = {
        {&BoundRecords::MovePrevious, 0, {"C1", "10", "1.5"}}, {&BoundRecords::MoveNext, 1, {"C2", "20", "3"}},
        {&BoundRecords::MoveNext, 2, {"C3", "30", "4.5"}},     {&BoundRecords::MoveNext, 2, {"C3", "30", "4.5"}},
        {&BoundRecords::MoveFirst, 0, {"C1", "10", "1.5"}},    {&BoundRecords::MoveLast, 2, {"C3", "30", "4.5"}},
        {&BoundRecords::MovePrevious, 1, {"C2", "20", "3"}},
    };
    scene.events.clear();
    for (const Step& step : steps) {
        (records.*step.move)();
        EXPECT_EQ(records.AbsolutePosition(), step.position);
        EXPECT_EQ(Shown(records), step.texts);
        EXPECT_EQ(std::exchange(scene.events, {}), "vr");
    }
}

TEST(BoundRecords, WhateverLeavesAChangedRecordStoresIt) {
    const std::function<void(BoundRecords&)> leavings[] = {
        &BoundRecords::MoveFirst,    &BoundRecords::MovePrevious,
        &BoundRecords::MoveNext,     &BoundRecords::MoveLast,
        &BoundRecords::AddNew,       &BoundRecords::Refresh,
        &BoundRecords::UpdateRecord, [](BoundRecords& records) { EXPECT_TRUE(records.SaveChanges()); }};
    for (const auto& leave : leavings) {
        Scene scene;
        BoundRecords records = scene.Opened();
        records.MoveNext();
        records.SetText(quantity, " 1,250 ");
        records.SetText(cost, "");
        leave(records);
        EXPECT_EQ(scene.errors, Texts{});
        EXPECT_EQ(scene.Stored(), (Texts{"C1 10 1.5", "C2 1250 ", "C3 30 4.5"}));
        EXPECT_FALSE(records.IsChanged());
    }
}

TEST(BoundRecords, WhatCantBeStoredStaysTypedAndNothingMoves) {
    struct Case {
        std::size_t column;
        const char* text;
        const char* reason;
    };
    const Case cases[] = {
        {quantity, "abc", "\"abc\""},        {quantity, "99999999999", "range"}, {cost, "12.3.4", "\"12.3.4\""},
        {code, "longer than fifteen", "15"}, {code, "C1", "only once"},          {code, "", "Stock Code"},
        {cost, "12,50", "decimal point"},    {quantity, "1,0000", "decimal"},
    };
    for (const Case& c : cases) {
        for (const bool isNew : {false, true}) {
            Scene scene;
            BoundRecords records = scene.Opened();
            records.MoveNext();
            if (isNew) {
                records.AddNew();
                records.SetText(code, "N");
                records.SetText(quantity, "1");
            }
            records.SetText(c.column, c.text);
            const Texts typed = Shown(records);
            for (const auto leave : {&BoundRecords::MoveFirst, &BoundRecords::AddNew, &BoundRecords::UpdateRecord,
                                     &BoundRecords::Refresh}) {
                scene.events.clear();
                scene.errors.clear();
                (records.*leave)();
                EXPECT_EQ(scene.events, "ve") << c.text;
                ASSERT_EQ(scene.errors.size(), 1u);
                EXPECT_NE(scene.errors[0].find(c.reason), std::string::npos) << scene.errors[0];
                EXPECT_EQ(Shown(records), typed);
                EXPECT_EQ(records.IsAdding(), isNew);
                EXPECT_EQ(records.AbsolutePosition(), 1);
            }
            EXPECT_FALSE(records.SaveChanges());
            EXPECT_EQ(scene.Stored(), (Texts{"C1 10 1.5", "C2 20 3", "C3 30 4.5"}));
            records.UpdateControls();
            EXPECT_EQ(Shown(records), (Texts{"C2", "20", "3"}));
            EXPECT_TRUE(records.SaveChanges());
        }
    }
}

TEST(BoundRecords, AnAddedRecordIsCurrentOnceItIsStored) {
    Scene scene;
    BoundRecords records = scene.Opened();
    records.AddNew();
    EXPECT_EQ(Shown(records), (Texts{"", "", ""}));
    records.SetText(code, "B");
    records.UpdateRecord();
    EXPECT_FALSE(records.IsAdding());
    EXPECT_EQ(records.AbsolutePosition(), 3);
    EXPECT_EQ(Shown(records), (Texts{"B", "", ""}));
    records.SetText(quantity, "7");
    records.MovePrevious();
    EXPECT_EQ(Shown(records), (Texts{"C3", "30", "4.5"}));
    EXPECT_EQ(scene.Stored(), (Texts{"B 7 ", "C1 10 1.5", "C2 20 3", "C3 30 4.5"}));
}

TEST(BoundRecords, AnEmptyNewRecordIsNotStored) {
    for (const auto leave : {&BoundRecords::MoveLast, &BoundRecords::UpdateRecord, &BoundRecords::Delete,
                             &BoundRecords::AddNew, &BoundRecords::Refresh}) {
        Scene scene;
        BoundRecords records = scene.Opened();
        records.AddNew();
        records.SetText(code, "X");
        records.SetText(code, "");
        (records.*leave)();
        EXPECT_TRUE(records.SaveChanges());
        EXPECT_EQ(scene.Stored(), (Texts{"C1 10 1.5", "C2 20 3", "C3 30 4.5"}));
        EXPECT_EQ(scene.errors, Texts{});
    }
}

TEST(BoundRecords, DeletingLeadsToTheNextRecordAndAtTheEndToTheOneBefore) {
    Scene scene;
    BoundRecords records = scene.Opened();
    records.MoveNext();
    records.SetText(quantity, "abc");  // goes with its record
    records.Delete();
    EXPECT_EQ(Shown(records), (Texts{"C3", "30", "4.5"}));
    EXPECT_EQ(records.AbsolutePosition(), 1);
    records.Delete();
    EXPECT_EQ(Shown(records), (Texts{"C1", "10", "1.5"}));
    EXPECT_EQ(records.AbsolutePosition(), 0);
    records.Delete();
    EXPECT_FALSE(records.HasRecord());
    EXPECT_FALSE(records.HasRows());
    EXPECT_EQ(Shown(records), (Texts{"", "", ""}));
    for (const auto operation : {&BoundRecords::Delete, &BoundRecords::MoveNext, &BoundRecords::MoveFirst,
                                 &BoundRecords::UpdateRecord, &BoundRecords::Refresh})
        (records.*operation)();
    EXPECT_EQ(scene.errors, Texts{});
    records.AddNew();
    records.SetText(code, "First");
    records.MoveNext();
    EXPECT_EQ(scene.Stored(), (Texts{"First  "}));
    EXPECT_EQ(records.AbsolutePosition(), 0);
}

TEST(BoundRecords, ADatabaseThatIsGoneKeepsWhatWasTyped) {
    Scene scene;
    BoundRecords records = scene.Opened();
    std::filesystem::rename(scene.Path(), scene.Path() + "x");
    records.SetText(quantity, "77");
    for (const auto leave : {&BoundRecords::MoveNext, &BoundRecords::Refresh, &BoundRecords::UpdateRecord}) {
        (records.*leave)();
        EXPECT_EQ(Shown(records), (Texts{"C1", "77", "1.5"}));
    }
    EXPECT_EQ(scene.errors.size(), 3u);
    std::filesystem::rename(scene.Path() + "x", scene.Path());
    records.Refresh();
    EXPECT_EQ(scene.errors.size(), 3u);
    EXPECT_EQ(scene.Stored()[0], "C1 77 1.5");
}

TEST(BoundRecords, ADatabaseThatWasNeverThereIsLookedForAgain) {
    Scene scene;
    std::filesystem::rename(scene.Path(), scene.Path() + "x");
    BoundRecords records = scene.Opened();
    for (const auto operation : {&BoundRecords::AddNew, &BoundRecords::MoveNext, &BoundRecords::Refresh})
        (records.*operation)();
    EXPECT_EQ(scene.events,
              "vevevev"
              "e");
    for (const auto operation : {&BoundRecords::Delete, &BoundRecords::UpdateControls}) (records.*operation)();
    EXPECT_EQ(scene.errors.size(), 4u);
    EXPECT_NE(scene.errors[0].find("Sample.mdb"), std::string::npos) << scene.errors[0];
    std::filesystem::rename(scene.Path() + "x", scene.Path());
    records.Refresh();
    EXPECT_EQ(Shown(records), (Texts{"C1", "10", "1.5"}));
}

TEST(BoundRecords, AReadOnlyDatabaseIsReadAndSaysWhyNothingIsStored) {
    Scene scene;
    ReadingEngine reading(*scene.engine);
    BoundRecords records = scene.Bind(reading);
    records.Refresh();
    EXPECT_TRUE(records.IsReadOnly());
    records.MoveNext();
    EXPECT_EQ(Shown(records), (Texts{"C2", "20", "3"}));
    EXPECT_EQ(scene.errors, Texts{});
    records.Delete();
    records.AddNew();
    EXPECT_FALSE(records.IsAdding());
    records.SetText(code, "X");
    records.MoveNext();
    EXPECT_EQ(scene.errors.size(), 3u);
    for (const std::string& error : scene.errors) EXPECT_NE(error.find("reading only"), std::string::npos) << error;
    EXPECT_EQ(Shown(records), (Texts{"X", "20", "3"}));
}

TEST(BoundRecords, ARecordThatSomebodyDeletedIsToldAndLeft) {
    Scene scene;
    BoundRecords records = scene.Opened();
    scene.engine->OpenDatabase(scene.Path())->Execute("DELETE * FROM [Stock Code Table] WHERE [Stock Code] = 'C2'");
    records.MoveNext();
    EXPECT_EQ(scene.errors.size(), 1u);
    EXPECT_FALSE(records.HasRecord());
    EXPECT_EQ(Shown(records), (Texts{"", "", ""}));
    records.MoveNext();
    EXPECT_EQ(Shown(records), (Texts{"C3", "30", "4.5"}));
    EXPECT_EQ(scene.errors.size(), 1u);
}

}  // namespace
}  // namespace quillform::dialogs
