// The way through the program's main forms.

#include <QLabel>
#include <QLineEdit>
#include <filesystem>

#include "desktop/ProgramScene.h"

namespace quillform {
namespace {

class Program : public ProgramScene {
protected:
    std::string Title() const { return program->Form()->windowTitle().toStdString(); }
};

TEST_F(Program, FirstMakesTheSamplesAndShowsTheStartForm) {
    Start();
    auto& form = StartForm();
    EXPECT_TRUE(std::filesystem::exists(folder / "Sample.mdb"));
    EXPECT_TRUE(std::filesystem::exists(folder / "LABELS.REP"));
    EXPECT_EQ(Named<QLabel>(form, "caption").text(), QStringLiteral("Record: 1"));
    EXPECT_FALSE(Named<QLineEdit>(form, "txtFields_0").text().isEmpty());
    EXPECT_TRUE(user.messages.empty());
    EXPECT_TRUE(user.warnings.empty());
}

TEST_F(Program, ReportsLeadsToAFreshDesignerAndExitBack) {
    Start();
    for (int round = 0; round < 2; ++round) {
        Click(Named<QPushButton>(StartForm(), "frmReports"));
        auto& designer = Designer();
        EXPECT_FALSE(designer.isModal());
        EXPECT_EQ(Title(), "Report - UnTitled");
        EXPECT_TRUE(checked && checked->ends_with("Sample.mdb")) << checked.value_or("-");
        EXPECT_EQ(designer.Surface().Report().Fields.Count(), 0);
        user.chosen = folder.File("STOCK.REP");
        Press(designer, Qt::Key_O, Qt::ControlModifier);
        EXPECT_GT(designer.Surface().Report().Fields.Count(), 0);
        Press(designer, Qt::Key_X, Qt::ControlModifier);
    }
    StartForm();
    EXPECT_FALSE(hasEnded);
    Press(StartForm(), Qt::Key_Escape);
    EXPECT_TRUE(Ends());
}

// As when the wizard is left behind and its database is gone.
TEST_F(Program, ACheckThatFailsIsToldAndTheDesignerStays) {
    checkFails = true;
    Start();
    Click(Named<QPushButton>(StartForm(), "frmReports"));
    auto& designer = Designer();
    EXPECT_EQ(user.messages, std::vector<std::string>{"The database is gone."});
    EXPECT_EQ(Title(), "Report - UnTitled");
    Press(designer, Qt::Key_X, Qt::ControlModifier);
    StartForm();
}

TEST_F(Program, ClosingTheDesignerEndsIt) {
    Start();
    Click(Named<QPushButton>(StartForm(), "frmReports"));
    Designer().close();
    EXPECT_TRUE(Ends());
}

TEST_F(Program, WithALayoutBeginsAtTheDesigner) {
    Start();
    Click(Named<QPushButton>(StartForm(), "cmdClose"));
    ASSERT_TRUE(Ends());
    hasEnded = false;
    Start(folder.File("STOCK.REP"));
    auto& designer = Designer();
    EXPECT_NE(Title().find("STOCK.REP"), std::string::npos) << Title();
    Press(designer, Qt::Key_X, Qt::ControlModifier);
    StartForm();
}

TEST_F(Program, AnUnreadableSampleLeavesTheWayToTheReportsOpen) {
    std::filesystem::create_directory(folder / "Sample.mdb");
    Start();
    auto& form = StartForm();
    ASSERT_EQ(user.messages.size(), 1u);
    EXPECT_TRUE(user.messages[0].starts_with("Data error event hit err:")) << user.messages[0];
    Click(Named<QPushButton>(form, "frmReports"));
    Designer().close();
    EXPECT_TRUE(Ends());
}

}  // namespace
}  // namespace quillform
