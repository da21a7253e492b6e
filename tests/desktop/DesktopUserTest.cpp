#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLineEdit>
#include <QProgressBar>
#include <QTest>
#include <fstream>

#include "ScratchFolder.h"
#include "desktop/DesktopUser.h"
#include "desktop/Driver.h"
#include "desktop/FileDialogs.h"

namespace quillform {
namespace {

TEST(NameFilters, AreReadHoweverTheyAreWritten) {
    struct Case {
        const char* filter;
        const char* expected;
    };
    const Case cases[] = {
        {"", ""},
        {"Text (*.RTF)|*.RTF|Any (*.*)|*.*", "Text (*.RTF *.rtf)|Any (*)"},
        {"Text (*.RTF)|Any (*.*)|*.*", "Text (*.RTF *.rtf)|Any (*)"},
        {"Text (*.Mrg)|*.dat|Doc (*.doc)|*.doc|Any (*.*)|*.*", "Text (*.dat *.DAT)|Doc (*.doc *.DOC)|Any (*)"},
        {"Text (*.REP)", "Text (*.REP *.rep)"},
        {"*.QRY", "*.QRY (*.QRY *.qry)"},
        {"*.MDB|Access Database", "Access Database (*.MDB *.mdb)"},
        {"Word for Windows/WordPerfect Mail Merge (*.DOC)", "Word for Windows/WordPerfect Mail Merge (*.DOC *.doc)"},
        {"Pictures|*.png;*.svg", "Pictures (*.png *.PNG *.svg *.SVG)"},
        {"Everything", "Everything (*)"},
        {"|| |", ""},
        {"*.a|*.b", "*.a (*.a *.A)|*.b (*.b *.B)"},
    };
    for (const Case& c : cases) EXPECT_EQ(NameFilters(c.filter).join(u'|').toStdString(), c.expected) << c.filter;
}

QString Text(QWidget& window) { return dynamic_cast<QMessageBox&>(window).text(); }

TEST(DesktopUser, AsksAndTells) {
    struct Case {
        Qt::Key key;
        Qt::KeyboardModifiers held;
        bool answer;
        MessageIcon icon = MessageIcon::Question;
    };
    const Case cases[] = {{Qt::Key_Return, Qt::NoModifier, true},
                          {Qt::Key_Return, Qt::NoModifier, false, MessageIcon::Exclamation},
                          {Qt::Key_Y, Qt::AltModifier, true},
                          {Qt::Key_N, Qt::AltModifier, false},
                          {Qt::Key_Escape, Qt::NoModifier, false}};
    DesktopUser user;
    for (const Case& c : cases) {
        const Driver driver({[&](QWidget& box) {
            EXPECT_EQ(Text(box), "Is <b>it</b> so?");
            EXPECT_EQ(box.windowTitle(), "SURE?");
            const bool warns = c.icon == MessageIcon::Exclamation;
            EXPECT_EQ(dynamic_cast<QMessageBox&>(box).icon(), warns ? QMessageBox::Warning : QMessageBox::Question);
            EXPECT_EQ(dynamic_cast<QMessageBox&>(box).textFormat(), Qt::PlainText);
            Press(c.key, c.held);
        }});
        EXPECT_EQ(user.Ask("Is <b>it</b> so?", "SURE?", c.icon), c.answer);
    }
    const Driver driver({[](QWidget& box) {
        EXPECT_EQ(box.windowTitle(), "Quillform");
        Press(Qt::Key_Return);
    }});
    user.Message("Done.", {});
}

TEST(DesktopUser, AsksWhetherToTryAgain) {
    DesktopUser user;
    for (const auto& [key, answer] : {std::pair{Qt::Key_Return, true}, {Qt::Key_Escape, false}}) {
        const Driver driver({[&, pressed = key](QWidget& box) {
            EXPECT_EQ(dynamic_cast<QMessageBox&>(box).icon(), QMessageBox::Warning);
            Press(pressed);
        }});
        EXPECT_EQ(user.AskRetry("Once more?", "Error", MessageIcon::Exclamation), answer);
    }
}

TEST(DesktopUser, ShowsWarningsTogetherAndOnce) {
    DesktopUser user;
    user.ShowWarnings();
    user.Warn("First.");
    user.Warn("Second.");
    EXPECT_EQ(user.Warnings().size(), 2U);
    const Driver driver({[](QWidget& box) {
        EXPECT_EQ(Text(box), "First.\n\nSecond.");
        Press(Qt::Key_Return);
    }});
    user.ShowWarnings();
    user.ShowWarnings();
}

TEST(DesktopUser, FilesAreChosen) {
    const ScratchFolder folder;
    std::ofstream(folder.File("dues.rep")) << "x";
    const FileDialog dialog{"Open Report Layout...", "Text (*.REP)", "*.REP", "REP", folder.File("*.REP")};
    DesktopUser user;
    {
        const Driver driver({[](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "Open Report Layout...");
            Type("dues.rep");
            Press(Qt::Key_Return);
        }});
        EXPECT_EQ(user.OpenDialog(dialog), folder.File("dues.rep"));
    }
    for (const char* meant : {"DUES.rep", "Dues"}) {
        const Driver driver({[&](QWidget&) {
            Type(meant);
            Press(Qt::Key_Return);
        }});
        EXPECT_EQ(user.OpenDialog(dialog), folder.File("dues.rep"));
    }
    {
        const Driver driver({[](QWidget&) {
            Type("r\xC3\xA4port");  // gets the extension
            Press(Qt::Key_Return);
        }});
        EXPECT_EQ(user.SaveDialog(dialog), folder.File("r\xC3\xA4port.REP"));
    }
    const Driver driver({[](QWidget&) { Press(Qt::Key_Escape); }});
    EXPECT_EQ(user.SaveDialog(dialog), std::nullopt);
}

TEST(DesktopUser, ProgressIsCancelledByItsButton) {
    DesktopUser user;
    user.ShowProgress();
    user.SetProgressMax(5'000'000'000);
    user.SetProgress(2'500'000'000);
    QWidget* const panel = QApplication::activeModalWidget();
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(Named<QProgressBar>(*panel, "Gauge1").value(), 500);
    EXPECT_FALSE(user.YieldAndIsCancelled());
    QTimer::singleShot(0, panel, [panel] { Click(Named<QPushButton>(*panel, "CanRptCmd")); });
    while (!user.YieldAndIsCancelled()) {  // the click arrives by the yield alone
    }
    user.HideProgress();
    EXPECT_FALSE(panel->isVisible());
    user.ShowProgress();
    EXPECT_FALSE(user.YieldAndIsCancelled()) << "a cancel holds for one run";
    user.HideProgress();
}

}  // namespace
}  // namespace quillform
