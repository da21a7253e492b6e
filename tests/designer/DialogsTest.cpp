// The forms that the designer opens over the surface, by mouse and keys.

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QToolBar>
#include <QTreeWidget>

#include "designer/FormScene.h"
#include "designer/PreviewPages.h"
#include "designer/PrintText.h"
#include "designer/frmDataFields.h"
#include "designer/frmFieldOptions.h"
#include "designer/frmPrintWindow.h"
#include "designer/frmTextFields.h"
#include "platform/OutputFile.h"
#include "sample/SampleData.h"

namespace quillform::designer {
namespace {

using testing::FormScene;

class Dialogs : public FormScene {
protected:
    /// The main form is out of the way: the offscreen windows don't hand the keyboard on.
    void OpenHidden() {
        Open();
        form->hide();
    }
    DesignerServices Services() { return {layout, user, *engine, clock, printer}; }
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const clssFields& item : layout.Fields) texts.push_back(item.Text);
        return texts;
    }
};

TEST_F(Dialogs, ALeafOfTheTreePutsItsFieldOnTheLayoutAndTakesItOff) {
    OpenHidden();
    sample::WriteSamples(*engine, layout.strAppPath);
    frmDataFields dialog(form->Surface(), Services());
    const Driver driver({[&](QWidget& window) {
        auto& tree = Named<QTreeWidget>(window, "SSTree1");
        QTreeWidgetItem* const root = &NodeOf(tree, "Customers");
        ClickNode(tree, *root);  // opens and nothing else
        EXPECT_TRUE(root->isExpanded());
        EXPECT_EQ(layout.Fields.Count(), 0);

        QTreeWidgetItem* const leaf = root->child(0);
        ClickNode(tree, *leaf);
        ASSERT_EQ(layout.Fields.Count(), 1);
        EXPECT_EQ(layout.Fields.Item(1).Text, leaf->text(0).toStdString());
        EXPECT_TRUE(leaf->font(0).bold());
        ClickNode(tree, *leaf);
        EXPECT_EQ(layout.Fields.Count(), 0);
        EXPECT_FALSE(leaf->font(0).bold());

        tree.setCurrentItem(leaf);  // by keys
        quillform::Press(tree, Qt::Key_Return);
        EXPECT_EQ(layout.Fields.Count(), 1);

        QTreeWidgetItem* const loose = &NodeOf(tree, "Date/Time/Page");
        ASSERT_EQ(loose->childCount(), 7);
        EXPECT_EQ(tree.topLevelItem(tree.topLevelItemCount() - 1), loose);
        loose->setExpanded(true);
        ClickNode(tree, *loose->child(1));
        EXPECT_EQ(layout.Fields.Item(2).Code, ItemCode::LongDate);
        EXPECT_EQ(layout.Fields.Item(2).Mask, "mmm dd, yyyy");
        EXPECT_EQ(layout.Fields.Item(2).Length, 18);

        Named<QLineEdit>(window, "find").setFocus();
        Type("record c");
        EXPECT_TRUE(root->isHidden());
        EXPECT_FALSE(loose->isHidden());
        EXPECT_TRUE(loose->child(0)->isHidden());
        EXPECT_FALSE(loose->child(6)->isHidden());
        quillform::Press(Qt::Key_Return);
        EXPECT_TRUE(tree.hasFocus());
        EXPECT_EQ(tree.currentItem(), loose->child(6));
        quillform::Click(Named<QPushButton>(window, "DoneCmd"));
    }});
    dialog.exec();
    EXPECT_TRUE(user.messages.empty());
}

/// Other hands may have made more rows than reports can select, with the numbers of dates among them.
TEST_F(Dialogs, ARowThatReportsCannotSelectSaysSo) {
    OpenHidden();
    sample::WriteSamples(*engine, layout.strAppPath);
    const auto database = engine->OpenDatabase(layout.strAppPath + "Sample.mdb");
    for (const char* row : {"899, 'a'", "900, 'b'", "9001, 'c'", "32767, 'd'"})
        database->Execute("INSERT INTO [Report - Index] (ID, Text, Table) SELECT TOP 1 " + std::string(row) +
                          ", 'Far' FROM [Report - Index]");
    frmDataFields dialog(form->Surface(), Services());
    const Driver driver({[&](QWidget& window) {
        auto& tree = Named<QTreeWidget>(window, "SSTree1");
        QTreeWidgetItem& far = NodeOf(tree, "Far");
        ClickNode(tree, far);
        for (int i = 0; i < 4; ++i) ClickNode(tree, *far.child(i));
        EXPECT_EQ(layout.Fields.Count(), 1);
        QTreeWidgetItem& loose = NodeOf(tree, "Date/Time/Page");
        loose.setExpanded(true);
        ClickNode(tree, *loose.child(1));  // number 9001 too
        EXPECT_EQ(layout.Fields.Count(), 2);
        quillform::Click(Named<QPushButton>(window, "DoneCmd"));
    }});
    dialog.exec();
    ASSERT_EQ(user.messages.size(), 3u);
    EXPECT_EQ(user.messages[1],
              "c can't be put on a report: it is number 9001 of the catalog, and reports select the numbers 1 to 899.");
}

TEST_F(Dialogs, ADatabaseThatIsGoneEndsTheTreeWithItsMessage) {
    OpenHidden();
    layout.settings.strDatabase[1] = folder.File("gone.mdb");
    frmDataFields dialog(form->Surface(), Services());
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
    EXPECT_EQ(user.messages,
              (std::vector<std::string>{"Cannot locate the database.  Select [Edit], [Report Options], and go to the "
                                        "[Database] folder.  Locate your Brindlemark database."}));
}

TEST_F(Dialogs, TextsAreEnteredEditedAndDeletedByKeys) {
    OpenHidden();
    Add(0, 0, 10, "Data", 1);
    frmTextFields dialog(form->Surface(), user);
    const Driver driver({[&](QWidget& window) {
        auto& Add = Named<QPushButton>(window, "AddCmd");
        auto& Edit = Named<QPushButton>(window, "EditCmd");
        const auto begin = [&](Qt::Key mnemonic) {
            quillform::Press(mnemonic, Qt::AltModifier);  // the button shows that it is pressed, and acts then
            EXPECT_TRUE(QTest::qWaitFor([&] { return Add.isEnabled(); }));
        };
        EXPECT_FALSE(Add.isEnabled());
        EXPECT_FALSE(Edit.isEnabled());
        EXPECT_TRUE(Named<QRadioButton>(window, "Opt_0").isChecked());

        begin(Qt::Key_N);
        EXPECT_TRUE(Named<QRadioButton>(window, "Opt_1").isChecked());
        quillform::Click(Add);  // a blank text
        EXPECT_EQ(user.messages.size(), 1u);
        EXPECT_FALSE(Add.isEnabled());
        EXPECT_FALSE(Edit.isEnabled());

        begin(Qt::Key_N);
        Type("Umsätze");
        quillform::Press(Qt::Key_Return);
        EXPECT_EQ(Named<QListWidget>(window, "List1").count(), 1);
        EXPECT_EQ(Texts(), (std::vector<std::string>{"Data"}));
        EXPECT_EQ(Pic(2).text, "Umsätze");

        begin(Qt::Key_E);
        EXPECT_EQ(Named<QLineEdit>(window, "Text").text(), QStringLiteral("Umsätze"));
        Named<QLineEdit>(window, "Text").selectAll();
        Type("Sales");
        Named<QRadioButton>(window, "Opt_0").setChecked(true);
        quillform::Click(Add);
        EXPECT_EQ(Pic(2).text, "Sales");
        EXPECT_EQ(Pic(2).foreColor, 1);

        begin(Qt::Key_N);
        Type("Second");
        quillform::Click(Add);
        Named<QListWidget>(window, "List1").setCurrentRow(0);
        quillform::Click(Named<QPushButton>(window, "DelCmd"));
        EXPECT_EQ(Texts(), (std::vector<std::string>{"Data", "Second"}));
        begin(Qt::Key_N);
        Type("Third");
        quillform::Click(Add);
        quillform::Press(window, Qt::Key_Escape);
    }});
    dialog.exec();
    EXPECT_EQ(Texts(), (std::vector<std::string>{"Data", "Second", "Third"}));
}

TEST_F(Dialogs, EscGivesATextUpBeforeItClosesTheForm) {
    OpenHidden();
    Add(0, 0, 10, "Text", 0);
    frmTextFields dialog(form->Surface(), user);
    const Driver driver({[&](QWidget& window) {
        auto& Text = Named<QLineEdit>(window, "Text");
        EXPECT_FALSE(Text.isEnabled());
        Named<QListWidget>(window, "List1").setFocus();
        quillform::Press(Qt::Key_Return);  // edits what is selected
        EXPECT_TRUE(Text.hasFocus());
        Type("Other");
        quillform::Press(Qt::Key_Escape);
        EXPECT_FALSE(Text.isEnabled());
        EXPECT_TRUE(Named<QPushButton>(window, "NewCmd").hasFocus());
        EXPECT_EQ(Named<QListWidget>(window, "List1").item(0)->text(), "Text");
        Named<QListWidget>(window, "List1").setFocus();
        quillform::Press(Qt::Key_Delete);
        EXPECT_EQ(layout.Fields.Count(), 0);
        quillform::Press(window, Qt::Key_Escape);
    }});
    dialog.exec();
}

TEST_F(Dialogs, OptionsOfAnItemLeaveASortLevelToTheOneThatHasIt) {
    OpenHidden();
    Add(0, 0, 5).PrimarySort = true;
    Add(10, 0, 5).SuppressDuplicate = true;
    struct Case {
        int position;
        const char* toCheck;
        bool isDone;
        bool isPrimaryEnabled;
    };
    const Case cases[] = {{1, "Chk_1", true, true}, {2, "Chk_3", true, false}, {2, "Chk_7", false, false}};
    for (const Case& c : cases) {
        layout.intOptionItem = static_cast<std::int16_t>(c.position);
        frmFieldOptions dialog(layout);
        const Driver driver({[&](QWidget& window) {
            EXPECT_EQ(Named<QCheckBox>(window, "Chk_2").isEnabled(), c.isPrimaryEnabled);
            EXPECT_EQ(Named<QCheckBox>(window, "Chk_2").isChecked(), c.position == 1);
            EXPECT_EQ(Named<QCheckBox>(window, "Chk_6").isChecked(), c.position == 2);
            Named<QCheckBox>(window, c.toCheck).setFocus();
            quillform::Press(Qt::Key_Space);
            if (c.isDone)
                quillform::Click(Named<QPushButton>(window, "DoneCmd"));
            else
                quillform::Press(window, Qt::Key_Escape);
        }});
        dialog.exec();
    }
    EXPECT_TRUE(Item(1).PrimarySort);
    EXPECT_TRUE(Item(1).GrandTotalFlag);
    EXPECT_TRUE(Item(2).SecondarySort);
    EXPECT_TRUE(Item(2).SuppressDuplicate);
    EXPECT_FALSE(Item(2).SuppressDetails);
}

TEST_F(Dialogs, ThePreviewShowsAllPagesAndPrintsTheTextAlone) {
    OpenHidden();
    const std::string file = folder.File("DISPLY1.RTF");
    std::string document = "{\\rtf1\\ansi{\\fonttbl{\\f1 Arial;}}";
    for (int page = 1; page <= 40; ++page)
        document += "{\\f1\\fs20\\b\\tab page " + std::to_string(page) + "}\\par\r\n {\\page}\r\n";
    OutputFile out(file);
    out.Write(document + "{\\f1 end}\\par}");
    out.Commit();

    std::string printed;
    frmPrintWindow window(
        file, [&](const std::string& text) { printed = text; }, user);
    const Driver driver({[&](QWidget&) {
        PreviewPages& pages = window.Text1();
        EXPECT_TRUE(QTest::qWaitFor([&] { return pages.IsLaidOut(); }));
        EXPECT_EQ(pages.PageCount(), 41);
        EXPECT_EQ(pages.CurrentPage(), 1);
        quillform::Press(pages, Qt::Key_End);
        EXPECT_EQ(pages.CurrentPage(), 41);
        EXPECT_EQ(Named<QLabel>(window, "pageText").text().trimmed(), QStringLiteral("Page 41 of 41"));
        Named<QAction>(window, "Print").trigger();
        quillform::Press(window, Qt::Key_Escape);
    }});
    window.exec();
    EXPECT_NE(printed.find("page 40"), std::string::npos);
    EXPECT_EQ(printed.find('\\'), std::string::npos);

    user.chosen = folder.File("text.pdf");
    PrintText(printed, Services());
    EXPECT_TRUE(std::filesystem::exists(*user.chosen));
}

TEST_F(Dialogs, APreviewWithoutItsFileSaysSo) {
    OpenHidden();
    frmPrintWindow window(
        folder.File("gone.rtf"), [](const std::string&) {}, user);
    const Driver driver({[&](QWidget&) { quillform::Press(window, Qt::Key_Escape); }});
    window.exec();
    ASSERT_EQ(user.messages.size(), 1u);
    EXPECT_NE(user.messages[0].find("gone.rtf"), std::string::npos);
}

}  // namespace
}  // namespace quillform::designer
