// Reports that run from the main form.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <filesystem>
#include <functional>

#include "designer/FormScene.h"
#include "platform/OutputFile.h"
#include "sample/SampleData.h"

namespace quillform::designer {
namespace {

using testing::FormScene;
namespace fs = std::filesystem;

class Runs : public FormScene {
protected:
    void SetUp() override {
        FormScene::SetUp();
        sample::WriteSamples(*engine, folder.Path());
        Open(folder.File("STOCK.REP"));
        layout.settings.intOutputType = 2;  // a text file
        user.chosen = folder.File("report.txt");
    }
    /// Does something as soon as the panel is up.
    void DuringRun(const std::function<void()>& step) {
        QTimer::singleShot(0, form.get(), [this, step] {
            QWidget& panel = Control("Picture1");
            panel.isVisible() ? step() : DuringRun(step);
        });
    }
};

TEST_F(Runs, WriteTheReport) {
    Key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(user.messages.empty());
    EXPECT_GT(fs::file_size(folder.File("REPORT.TXT")), 1000u);
    EXPECT_FALSE(Control("Picture1").isVisible());
    EXPECT_TRUE(form->menuBar()->isEnabled());
    EXPECT_EQ(form->statusBar()->currentMessage(),
              QString::fromStdString("The report is in REPORT.TXT, folder " + folder.Path().string()));
}

TEST_F(Runs, ReplaceNoFileOfAnotherCaseUnasked) {
    OutputFile file(folder.File("REPORT.TXT"));
    file.Write("yesterday's");
    file.Commit();
    user.answer = false;
    Key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(ReadWholeFile(folder.File("REPORT.TXT")), "yesterday's");
    user.answer = true;
    Key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_GT(fs::file_size(folder.File("REPORT.TXT")), 1000u);
}

TEST_F(Runs, TakeNothingButACancel) {
    Key(Qt::Key_R, Qt::ControlModifier);
    const auto whole = fs::file_size(folder.File("REPORT.TXT"));
    const int items = layout.Fields.Count();
    Click(6, 0.5);
    ASSERT_NE(form->Surface().SelectedItem(), nullptr);
    fs::remove(folder.File("REPORT.TXT"));
    const std::function<void()> cancels[] = {
        [this] { quillform::Click(Control("CanRptCmd")); },
        [this] { Key(Qt::Key_Escape); },
        [this] { form->close(); },
    };
    for (const auto& cancel : cancels) {
        bool wasShown = false;
        DuringRun([&] {
            wasShown = true;
            EXPECT_FALSE(form->menuBar()->isEnabled());
            quillform::Click(Control("Toolbar4_1"));
            Key(Qt::Key_N, Qt::ControlModifier);
            Key(Qt::Key_Delete);
            EXPECT_EQ(layout.Fields.Count(), items);
            EXPECT_EQ(layout.settings.intOrientation, 1);
            cancel();
        });
        Key(Qt::Key_R, Qt::ControlModifier);
        EXPECT_TRUE(wasShown);
        if (fs::exists(folder.File("REPORT.TXT"))) {
            EXPECT_LT(fs::file_size(folder.File("REPORT.TXT")), whole);
        }
        fs::remove(folder.File("REPORT.TXT"));
    }
    EXPECT_EQ(unloadedByExit, false);  // the close came after the run
}

TEST_F(Runs, ShowWhereTheScreenReportIs) {
    layout.settings.intOutputType = 1;
    Key(Qt::Key_R, Qt::ControlModifier);
    ASSERT_EQ(user.messages.size(), 1u);
    EXPECT_NE(user.messages[0].find("DISPLY1.RTF"), std::string::npos);
    EXPECT_TRUE(fs::exists(folder.File("DISPLY1.RTF")));
}

TEST_F(Runs, OfAFormThatIsClosedShowNothing) {
    layout.settings.intOutputType = 1;
    DuringRun([this] {
        EXPECT_FALSE(QGuiApplication::overrideCursor());  // the button can be pressed
        form->close();
    });
    Key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(user.messages.empty());
    EXPECT_EQ(unloadedByExit, false);
    EXPECT_FALSE(QGuiApplication::overrideCursor());
}

TEST_F(Runs, TellOfAFailure) {
    fs::remove(folder.File("Sample.mdb"));
    Key(Qt::Key_R, Qt::ControlModifier);
    ASSERT_EQ(user.messages.size(), 1u);
    EXPECT_NE(user.messages[0].find("does not exist"), std::string::npos);
    EXPECT_TRUE(form->menuBar()->isEnabled());
}

}  // namespace
}  // namespace quillform::designer
