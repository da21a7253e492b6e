// The menus of the main form: files, forms, the font, the printer.

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStatusBar>
#include <filesystem>

#include "designer/FormScene.h"
#include "persistence/LayoutFile.h"
#include "platform/OutputFile.h"

namespace quillform::designer {
namespace {

using testing::FormScene;
namespace fs = std::filesystem;

class Commands : public FormScene {
protected:
    std::string Title() const { return form->windowTitle().toStdString(); }
    void Trigger(const char* entry) { form->findChild<QAction*>(QString::fromLatin1(entry))->trigger(); }
    bool IsEnabled(const char* entry) { return form->findChild<QAction*>(QString::fromLatin1(entry))->isEnabled(); }
    std::string Upper(const std::string& path) { return QString::fromStdString(path).toUpper().toStdString(); }
    void WriteLayout(const std::string& path, const char* text = "Saved item") {
        Layout saved;
        saved.ClearLayout();
        clssFields& item = saved.Fields.Add({});
        item.Text = text;
        item.Length = 10;
        saved.settings.intOrientation = 0;
        OutputFile file(path);
        file.Write(LayoutText(saved));
        file.Commit();
    }
};

TEST_F(Commands, MenusHaveTheirCaptionsIndexesAndShortcuts) {
    struct Case {
        const char* menu;
        const char* array;
        std::vector<std::pair<const char*, const char*>> entries;
    };
    const Case cases[] = {
        {"File",
         "File",
         {{"Open Layout", "Ctrl+O"},
          {"Save Layout", "Ctrl+S"},
          {"Save As...", ""},
          {"New layout", "Ctrl+N"},
          {"Delete Layout", "Ctrl+D"},
          {"", ""},
          {"Process Report", "Ctrl+R"},
          {"Printer Setup", "Ctrl+P"},
          {"", ""},
          {"Exit", "Ctrl+X"}}},
        {"Edit", "Edt", {{"Report Options", ""}, {"Record Query", ""}, {"Font", ""}}},
        {"Insert", "Ins", {{"Data Fields", ""}, {"Text Fields", ""}}},
    };
    Open();
    const QList<QAction*> menus = form->menuBar()->actions();
    ASSERT_EQ(menus.size(), 3);
    for (qsizetype i = 0; i < 3; ++i) {
        const Case& c = cases[i];
        EXPECT_EQ(menus[i]->text().remove('&'), c.menu);
        const QList<QAction*> entries = menus[i]->menu()->actions();
        ASSERT_EQ(entries.size(), static_cast<qsizetype>(c.entries.size()));
        for (qsizetype j = 0; j < entries.size(); ++j) {
            const auto& [caption, shortcut] = c.entries[static_cast<std::size_t>(j)];
            EXPECT_EQ(entries[j]->text().remove('&'), caption);
            EXPECT_EQ(entries[j]->shortcut().toString(), shortcut);
            if (entries[j]->isSeparator()) continue;
            EXPECT_EQ(entries[j]->objectName(), QStringLiteral("%1_%2").arg(c.array).arg(j));
        }
    }
}

TEST_F(Commands, StartOnceWithAnEmptyLayout) {
    Open();
    EXPECT_EQ(Title(), "Report - UnTitled");
    EXPECT_EQ(shown, (std::vector<std::string>{"checkDatabase"}));
    EXPECT_EQ(layout.settings.strDatabase[1], layout.strAppPath + "sample.mdb");
    Add(0, 0, 10);
    form->hide();
    form->show();
    QTest::qWait(1);
    EXPECT_EQ(layout.Fields.Count(), 1);
    EXPECT_EQ(shown.size(), 1u);
}

TEST_F(Commands, StartWithALayout) {
    WriteLayout(folder.File("AT START.REP"));
    Open(folder.File("AT START.REP"));
    EXPECT_EQ(Title(), "Custom Report - " + folder.File("AT START.REP"));
    EXPECT_EQ(layout.Fields.Count(), 1);
    EXPECT_EQ(Pic(1).text, "Saved item");
}

TEST_F(Commands, AFormThatIsMissingDisablesItsEntry) {
    Open({}, false);
    for (const char* entry : {"Edt_0", "Edt_1", "Ins_0", "Ins_1"}) EXPECT_FALSE(IsEnabled(entry)) << entry;
    for (const char* entry : {"File_0", "File_6", "File_7", "File_9", "Edt_2"}) EXPECT_TRUE(IsEnabled(entry)) << entry;
}

TEST_F(Commands, EntriesOpenTheirForms) {
    Open();
    shown.clear();
    for (const char* entry : {"Edt_0", "Edt_1", "Ins_0", "Ins_1"}) Trigger(entry);
    EXPECT_EQ(shown, (std::vector<std::string>{"reportOptions", "recordQuery", "dataFields", "textFields"}));
}

TEST_F(Commands, ReportOptionsCheckAnotherDatabaseAndFitThePage) {
    Open();
    shown.clear();
    inReportOptions = [this] {
        layout.settings.strDatabase[1] = "other.mdb";
        layout.settings.intPaperSize = 3;
    };
    Trigger("Edt_0");
    EXPECT_EQ(shown, (std::vector<std::string>{"reportOptions", "checkDatabase"}));
    EXPECT_EQ(Named<QScrollBar>(*form, "VScroll1").maximum(), 82);
}

TEST_F(Commands, OpenTakesThePathInCapitals) {
    WriteLayout(folder.File("stock.rep"));
    Open();
    user.chosen = folder.File("stock.rep");
    shown.clear();
    Key(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(user.titles, (std::vector<std::string>{"Open Report Layout..."}));
    EXPECT_EQ(Title(), "Custom Report - " + Upper(folder.File("stock.rep")));
    EXPECT_EQ(layout.strLayoutFile, folder.File("stock.rep"));  // a save goes to this very file
    EXPECT_EQ(layout.Fields.Count(), 1);
    EXPECT_TRUE(IsDown("Toolbar4_1"));
    EXPECT_EQ(shown, (std::vector<std::string>{"checkDatabase"}));
}

TEST_F(Commands, ACancelledOrMissingFileKeepsTheLayout) {
    Open();
    Add(0, 0, 10);
    Key(Qt::Key_O, Qt::ControlModifier);
    Key(Qt::Key_S, Qt::ControlModifier);
    Trigger("File_2");
    EXPECT_EQ(user.titles.size(), 3u);
    EXPECT_EQ(layout.strLayoutFile, "");
    user.chosen = folder.File("gone.rep");
    Key(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(user.messages, (std::vector<std::string>{"The File That you selected is no longer on file"}));
    EXPECT_EQ(layout.Fields.Count(), 1);
    EXPECT_EQ(layout.strLayoutFile, Upper(folder.File("gone.rep")));
    EXPECT_EQ(Title(), "Report - UnTitled");
}

TEST_F(Commands, SaveAsksOnceAndSaveAsAlways) {
    Open();
    Add(3, 4, 10, "My text", 0);
    user.chosen = folder.File("Mine.Rep");
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(Title(), "Custom Report - " + folder.File("Mine.Rep"));
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(user.titles.size(), 1u);
    user.chosen = folder.File("second.rep");
    Trigger("File_2");
    EXPECT_EQ(Title(), "Custom Report - " + Upper(folder.File("second.rep")));
    EXPECT_EQ(user.messages, std::vector<std::string>(3, "Report Layout Saved"));
    EXPECT_EQ(ReadWholeFile(folder.File("Mine.Rep")), ReadWholeFile(folder.File("SECOND.REP")));
    EXPECT_NE(ReadWholeFile(folder.File("Mine.Rep")).find("My text"), std::string::npos);
}

TEST_F(Commands, ASavedLayoutLoadsToTheSurfaceOfOneWrittenByHand) {
    constexpr std::string_view byHand =
        "#-1, 9, 38, 10,\"  centred \",\"Courier New\",\"10\",\"True\",\"False\",\"False\",\"4\",\" 15\",\"C\"\r\n"
        "#7,50,20,12,\"a field\",\"Arial\",\"14.5\",\"False\",\"False\",\"True\",\"0\",\" 11\",\"R\"\r\n";
    OutputFile file(folder.File("HAND.REP"));
    file.Write(byHand);
    file.Commit();
    Open(folder.File("HAND.REP"));
    std::vector<Picture> before;
    for (const auto& picture : form->Surface().Pic().FromBelow()) before.push_back(*picture);
    ASSERT_EQ(before.size(), 2u);
    EXPECT_EQ(before[0].box, (Box{38, 9, 11, 1}));  // a letter is a hair wider than a cell
    EXPECT_EQ(before[1].box.height, 2);
    user.chosen = folder.File("DESIGNED.REP");
    Trigger("File_2");
    Key(Qt::Key_N, Qt::ControlModifier);
    Key(Qt::Key_O, Qt::ControlModifier);
    const auto& after = form->Surface().Pic().FromBelow();
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(after[i]->box, before[i].box);
        EXPECT_EQ(after[i]->font, before[i].font);
        EXPECT_EQ(after[i]->text, before[i].text);
        EXPECT_EQ(after[i]->CurrentX, before[i].CurrentX);
        EXPECT_EQ(after[i]->foreColor, before[i].foreColor);
        EXPECT_EQ(after[i]->backColor, before[i].backColor);
    }
}

TEST_F(Commands, DeleteAsksAndTakesTheFileToo) {
    struct Case {
        bool answer;
        bool isNamed;
        int itemsLeft;
        bool fileLeft;
    };
    const Case cases[] = {
        {false, true, 1, true}, {false, false, 1, true}, {true, false, 0, true}, {true, true, 0, false}};
    Open();
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.answer ? "Yes" : "No") + (c.isNamed ? " named" : ""));
        WriteLayout(folder.File("stock.rep"));
        form->Surface().ClearLayout();
        Add(0, 0, 10);
        if (c.isNamed) layout.strLayoutFile = folder.File("stock.rep");
        user.answer = c.answer;
        user.questions.clear();
        Key(Qt::Key_D, Qt::ControlModifier);
        EXPECT_EQ(
            user.questions,
            (std::vector<std::string>{"ARE YOU SURE YOU WANT TO DELETE THIS REPORT LAYOUT FROM YOUR HARDDRIVE?"}));
        EXPECT_EQ(layout.Fields.Count(), c.itemsLeft);
        EXPECT_EQ(fs::exists(folder.File("stock.rep")), c.fileLeft);
    }
}

TEST_F(Commands, ADroppedLayoutWithChangesIsKept) {
    Open();
    EXPECT_EQ(Named<QLabel>(*form, "StatusChanges").text(), "");
    Add(0, 0, 10, "precious", 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Named<QLabel>(*form, "StatusChanges").text() == "Not saved"; }));
    Key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(layout.Fields.Count(), 0);
    EXPECT_NE(ReadWholeFile(folder.File("UNSAVED.REP")).find("precious"), std::string::npos);
    fs::remove(folder.File("UNSAVED.REP"));
    Key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_FALSE(fs::exists(folder.File("UNSAVED.REP")));
}

TEST_F(Commands, ChangesThatCannotBeKeptAreNotDroppedUnasked) {
    Open();
    fs::create_directory(folder.File("UNSAVED.REP"));  // in the way
    Add(0, 0, 10, "precious", 0);
    Key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(layout.Fields.Count(), 1);
    Key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_TRUE(form->isVisible());
    ASSERT_EQ(user.questions.size(), 2U);
    EXPECT_NE(user.questions[0].find("can't be kept.  \""), std::string::npos) << user.questions[0];
    EXPECT_NE(user.questions[0].find("UNSAVED.REP"), std::string::npos);
    user.answer = true;
    form->close();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(unloadedByExit, false);
}

TEST_F(Commands, FontNeedsAnItem) {
    Open();
    Add(0, 0, 10);
    Trigger("Edt_2");
    Click(2, 0.5);
    Key(Qt::Key_Delete);
    Trigger("Edt_2");
    EXPECT_EQ(user.messages,
              std::vector<std::string>(2, "You must first select the data/text you want to edit the font for."));
}

TEST_F(Commands, FontChangesItemPictureAndToolbars) {
    Open();
    clssFields& item = Add(0, 0, 10);
    item.FontUnderline = true;
    Click(2, 0.5);
    {
        const Driver cancelled({[](QWidget& dialog) {
            Named<QComboBox>(dialog, "FontSize").setEditText("14");
            quillform::Press(dialog, Qt::Key_Escape);
        }});
        Trigger("Edt_2");
    }
    EXPECT_EQ(item.FontSize, 10);
    const Driver changed({[](QWidget& dialog) {
        auto& families = Named<QListWidget>(dialog, "FontName");
        EXPECT_EQ(families.currentItem()->text(), "Courier New");
        families.setCurrentItem(families.findItems("Arial", Qt::MatchExactly).value(0));
        Named<QComboBox>(dialog, "FontSize").setEditText("72");
        for (QCheckBox* style : dialog.findChildren<QCheckBox*>())
            if (style->text() == "&Bold") style->click();
        quillform::Press(dialog, Qt::Key_Return);
    }});
    Trigger("Edt_2");
    EXPECT_EQ(item.FontName, "Arial");
    EXPECT_LT(item.FontSize, 24);  // two rows are 24 points
    EXPECT_GT(item.FontSize, 18);
    EXPECT_TRUE(item.FontBold && item.FontUnderline);
    EXPECT_EQ(Pic(1).box.height, 2);
    EXPECT_GT(Pic(1).box.width, 10);
    EXPECT_TRUE(IsDown("Toolbar3_0_1"));
}

TEST_F(Commands, PrinterSetupOffersPrintersAndAFile) {
    Open();
    const auto rows = [](QWidget& dialog) { return &Named<QListWidget>(dialog, "Printers"); };
    const Driver driver({
        [&](QWidget& dialog) {
            ASSERT_EQ(rows(dialog)->count(), 2);
            EXPECT_EQ(rows(dialog)->currentRow(), 0);
            EXPECT_EQ(rows(dialog)->item(1)->text(), "Office (default): Laser, 2nd floor; idle");
            rows(dialog)->setCurrentRow(1);
            quillform::Press(dialog, Qt::Key_Return);
        },
        [&](QWidget& dialog) {
            EXPECT_EQ(rows(dialog)->currentRow(), 1);
            rows(dialog)->setCurrentRow(0);
            quillform::Press(dialog, Qt::Key_Escape);
        },
        [&](QWidget& dialog) {
            EXPECT_EQ(rows(dialog)->count(), 1);
            EXPECT_EQ(Named<QLabel>(dialog, "Note").text(), "The print service doesn't answer.");
            quillform::Press(dialog, Qt::Key_Escape);
        },
    });
    Key(Qt::Key_P, Qt::ControlModifier);
    Key(Qt::Key_P, Qt::ControlModifier);
    hasPrintService = false;
    Key(Qt::Key_P, Qt::ControlModifier);
}

TEST_F(Commands, ExitAndCloseSayHowTheFormWasLeft) {
    Open();
    Add(0, 0, 10, "precious", 0);
    layout.Queries.Add({});
    Key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(unloadedByExit, true);
    Open();
    EXPECT_EQ(layout.Fields.Count() + layout.Queries.Count(), 0);
    EXPECT_NE(ReadWholeFile(folder.File("UNSAVED.REP")).find("precious"), std::string::npos);
    EXPECT_TRUE(form->statusBar()->currentMessage().contains(QStringLiteral(", are kept in UNSAVED.REP, folder ")));
    form->close();
    EXPECT_EQ(unloadedByExit, false);
}

}  // namespace
}  // namespace quillform::designer
