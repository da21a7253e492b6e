// The form for label styles by mouse and keys.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <filesystem>

#include "ScriptedUser.h"
#include "catalog/CommonSheets.h"
#include "desktop/Driver.h"
#include "dialogs/LabelScene.h"
#include "dialogs/StockScene.h"
#include "dialogs/frmLabelMaintenance.h"

namespace quillform::dialogs {
namespace {

using Texts = std::vector<std::string>;

class LabelMaintenance : public testing::Test {
protected:
    void Fill(const Texts& descriptions) { scene = std::make_unique<LabelScene>(descriptions); }
    void Open(DBEngine& by) {
        form = std::make_unique<frmLabelMaintenance>(scene->Path(), user, by);
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        QTest::qWait(1);
    }
    void Open(const Texts& descriptions) {
        Fill(descriptions);
        Open(*scene->engine);
    }
    QLineEdit& Box(int index) { return Named<QLineEdit>(*form, ("Custom_" + std::to_string(index)).c_str()); }
    QComboBox& Paper() { return Named<QComboBox>(*form, "cmbPaperSize"); }
    bool IsEnabled(const char* name) { return Named<QWidget>(*form, name).isEnabled(); }
    void ClickOn(const char* name) { Click(Named<QPushButton>(*form, name)); }
    std::string Description() { return Box(8).text().toStdString(); }
    void Retype(int index, const char* text) {
        Box(index).setFocus();
        Box(index).selectAll();
        Type(text);
    }
    bool IsEntering() {
        EXPECT_NE(IsEnabled("cmdSave"), IsEnabled("cmdAdd"));
        EXPECT_EQ(IsEnabled("cmdSave"), Box(0).isEnabled());
        return IsEnabled("cmdSave");
    }

    std::unique_ptr<LabelScene> scene;
    ScriptedUser user;
    std::unique_ptr<frmLabelMaintenance> form;
};

TEST_F(LabelMaintenance, AnEmptyTableOpensInTheEnteringState) {
    Open({});
    EXPECT_EQ(user.messages, Texts{"You must add a new label or exit."});
    EXPECT_TRUE(IsEntering());
    for (int i = 0; i <= 8; ++i) EXPECT_EQ(Box(i).text(), QString());
    EXPECT_EQ(form->focusWidget(), &Box(8));

    Type("Bob's labels");
    const char* const measures[] = {"3", "10", "1", "2.625", ".5", "0.188", ".125", "x"};
    for (const char* measure : measures) {
        Press(Qt::Key_Tab);
        Type(measure);
    }
    Press(Qt::Key_Tab);
    EXPECT_EQ(form->focusWidget(), &Paper());
    Press(Qt::Key_Home);
    Press(Qt::Key_Return);
    EXPECT_FALSE(IsEntering());
    EXPECT_EQ(scene->Stored(), Texts{"Bob's labels"});
    EXPECT_EQ(scene->Stored("Width"), Texts{"2.625"});
    EXPECT_EQ(scene->Stored("Paper Size"), Texts{"1"});
    EXPECT_EQ(Box(7).text(), QStringLiteral("0"));
    EXPECT_EQ(Box(4).text(), QStringLiteral("0.5"));
    EXPECT_EQ(form->focusWidget(), &Named<QWidget>(*form, "cmdAdd"));  // and not Exit, for one Enter too many
    Press(Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(LabelMaintenance, PrevAndNextGoToTheEnds) {
    Open({"B", "A", "C"});
    EXPECT_TRUE(user.messages.empty());
    EXPECT_FALSE(IsEntering());
    EXPECT_EQ(Description(), "A");
    EXPECT_EQ(Paper().currentText(), QStringLiteral("Legal, 8 1/2 x 14 in."));
    ClickOn("cmdPrev");
    EXPECT_EQ(Description(), "A");
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Description(), "B");
    ClickOn("cmdNext");
    ClickOn("cmdNext");
    EXPECT_EQ(Description(), "C");
    EXPECT_EQ(Named<QLabel>(*form, "position").text(), QStringLiteral("3 of 3"));
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Description(), "B");
}

/// 1024 by 768 pixels at double scale, less a title and a task bar.
TEST_F(LabelMaintenance, ASmallScreenHasRoom) {
    Open({"A"});
    EXPECT_LE(form->minimumSizeHint().width(), 512);
    EXPECT_LE(form->minimumSizeHint().height(), 340);
    EXPECT_GE(Box(8).width(), Box(8).fontMetrics().averageCharWidth() * 50);  // where there is more
}

TEST_F(LabelMaintenance, BoxesTakeTheirLimitAndShowWhatIsLonger) {
    Open({"A"});
    EXPECT_EQ(Box(2).text(), QStringLiteral("1.333333"));
    ClickOn("cmdUpdate");
    ClickOn("cmdSave");
    EXPECT_EQ(scene->Rows()->Value("Height").real, static_cast<double>(LabelScene::height));
    ClickOn("cmdAdd");
    Type(std::string(60, 'x').c_str());
    EXPECT_EQ(Description(), std::string(50, 'x'));
    Retype(2, "1234567");
    EXPECT_EQ(Box(2).text(), QStringLiteral("12345"));
}

TEST_F(LabelMaintenance, APaperThatIsNotInTheListStays) {
    Fill({"A", "B"});
    scene->Execute("UPDATE [Report - Labels] SET [Paper Size] = 9, Width = 2 WHERE [Label Description] = 'B'");
    Open(*scene->engine);
    ClickOn("cmdNext");
    EXPECT_EQ(Paper().currentText(), QStringLiteral("Legal, 8 1/2 x 14 in."));  // as it was
    EXPECT_TRUE(
        Named<QLabel>(*form, "sheetNote").text().startsWith(QStringLiteral("No paper here has the stored number 9")));
    ClickOn("cmdUpdate");
    ClickOn("cmdSave");
    EXPECT_EQ(scene->Stored("Paper Size"), (Texts{"5", "9"}));
    ClickOn("cmdUpdate");
    Paper().setFocus();
    Press(Qt::Key_Home);
    ClickOn("cmdSave");
    EXPECT_EQ(scene->Stored("Paper Size"), (Texts{"5", "1"}));
}

TEST_F(LabelMaintenance, DeletingAsksAndShowsTheNextTheFirstOrAnEmptyForm) {
    Open({"A", "B"});
    ClickOn("cmdDelete");
    EXPECT_EQ(user.questions, Texts{"Are you sure you want to delete this label?"});
    EXPECT_EQ(user.questionTitle, "Delete Label");
    EXPECT_EQ(scene->Stored().size(), 2U);
    user.answer = true;
    ClickOn("cmdNext");
    ClickOn("cmdDelete");
    EXPECT_EQ(Description(), "A");
    ClickOn("cmdDelete");
    EXPECT_EQ(user.messages, Texts{"You must add a new label or exit"});
    EXPECT_TRUE(IsEntering());
    EXPECT_EQ(Description(), "");
    ClickOn("cmdExit");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(scene->Stored(), Texts{});
}

TEST_F(LabelMaintenance, WhatIsHalfEnteredOutlivesALookAtAnotherWindow) {
    Open({"A", "B"});
    ClickOn("cmdNext");
    ClickOn("cmdAdd");
    Type("Half");
    QWidget other;
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    form->activateWindow();
    form->hide();
    form->show();
    QTest::qWait(1);
    EXPECT_EQ(Description(), "Half");
    EXPECT_TRUE(IsEntering());
    EXPECT_FALSE(IsEnabled("cmdNext"));
}

TEST_F(LabelMaintenance, AFailedSaveKeepsTheTexts) {
    Open({"A"});
    ClickOn("cmdAdd");
    Type("B");
    Retype(2, "9e999");
    ClickOn("cmdSave");
    EXPECT_EQ(user.messages.size(), 1U);
    EXPECT_TRUE(IsEntering());
    EXPECT_EQ(Description(), "B");
    Retype(2, "9");
    const std::filesystem::path kept = scene->folder / "kept";
    std::filesystem::rename(scene->Path(), kept);
    ClickOn("cmdSave");
    EXPECT_EQ(user.messages.size(), 2U);
    EXPECT_TRUE(IsEntering());
    EXPECT_EQ(Box(2).text(), QStringLiteral("9"));
    std::filesystem::rename(kept, scene->Path());
    ClickOn("cmdSave");
    EXPECT_EQ(scene->Stored(), (Texts{"A", "B"}));
}

TEST_F(LabelMaintenance, AStyleThatAnotherDeletedIsTold) {
    Open({"A", "B"});
    scene->Execute("DELETE FROM [Report - Labels] WHERE [Label Description] = 'A'");
    ClickOn("cmdUpdate");
    ASSERT_EQ(user.messages.size(), 1U);
    EXPECT_NE(user.messages[0].find("\"A\" isn't there any more"), std::string::npos);
    EXPECT_EQ(Description(), "B");
    EXPECT_FALSE(IsEntering());
}

TEST_F(LabelMaintenance, AReadOnlyTableIsLookedAt) {
    for (const Texts& styles : {Texts{}, {"A"}}) {
        Fill(styles);
        ReadingEngine reading(*scene->engine);
        Open(reading);
        ClickOn("cmdAdd");
        EXPECT_NE(user.messages.back().find("reading only"), std::string::npos);
        EXPECT_FALSE(IsEntering());
        EXPECT_EQ(IsEnabled("cmdUpdate"), !styles.empty());
        ClickOn("cmdExit");
        EXPECT_FALSE(form->isVisible());
    }
}

TEST_F(LabelMaintenance, IsNotShownWithoutItsTable) {
    Fill({});
    scene->engine->OpenDatabase(scene->Path())->DropTable("Report - Labels");
    ShowLabelStyles(scene->Path(), user, *scene->engine, nullptr);
    std::filesystem::remove(scene->Path());
    ShowLabelStyles(scene->Path(), user, *scene->engine, nullptr);
    EXPECT_EQ(user.messages.size(), 2U);
    EXPECT_TRUE(user.questions.empty());
}

TEST_F(LabelMaintenance, AnEmptyTableIsOfferedTheCommonSheets) {
    for (const bool isWanted : {false, true}) {
        Fill({});
        user.answer = isWanted;
        const Driver driver({[&](QWidget& window) {
            EXPECT_EQ(Named<QPushButton>(window, "cmdSave").isEnabled(), !isWanted);
            EXPECT_EQ(Named<QLineEdit>(window, "Custom_0").text(), isWanted ? QStringLiteral("2") : QString());
            Press(Qt::Key_Escape);
        }});
        EXPECT_EQ(ShowLabelStyles(scene->Path(), user, *scene->engine, nullptr), isWanted);
        EXPECT_EQ(scene->Stored().size(), isWanted ? commonSheets.size() : 0U);
    }
    EXPECT_EQ(user.questions.size(), 2U);
    EXPECT_EQ(user.messages.size(), 1U);
}

TEST_F(LabelMaintenance, ThePictureFollowsWhatIsTyped) {
    Fill({});
    AddSheets(*scene->engine->OpenDatabase(scene->Path()), commonSheets);
    Open(*scene->engine);
    const auto note = [&] { return Named<QLabel>(*form, "sheetNote").text().toStdString(); };
    const auto hasRed = [&] {
        const QImage picture = Named<QWidget>(*form, "sheetPicture").grab().toImage();
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (qRed(picture.pixel(x, y)) > 180 && qGreen(picture.pixel(x, y)) < 40) return true;
        return false;
    };
    EXPECT_EQ(note(), "14 labels on the sheet.");
    EXPECT_FALSE(hasRed());
    ClickOn("cmdUpdate");
    Retype(3, "5.2");
    EXPECT_EQ(note(), "The labels need 10.74 inches across, the sheet has 8.5.");
    EXPECT_TRUE(hasRed());
    Paper().setFocus();
    Press(Qt::Key_End);  // German Legal Fanfold is no wider
    EXPECT_EQ(note(), "The labels need 10.74 inches across, the sheet has 8.5.");
    Press(Qt::Key_Home);
    Retype(3, "4");
    EXPECT_FALSE(hasRed());
}

TEST_F(LabelMaintenance, AThousandStylesAreBrowsed) {
    Texts descriptions;
    for (int i = 0; i < 1000; ++i) descriptions.push_back("Style " + std::to_string(10000 + i));
    Open(descriptions);
    for (int i = 1; i < 1000; ++i) Press(Qt::Key_PageDown);
    EXPECT_EQ(Description(), "Style 10999");
    EXPECT_EQ(Named<QLabel>(*form, "position").text(), QStringLiteral("1000 of 1000"));
}

}  // namespace
}  // namespace quillform::dialogs
