// The query builder by mouse and keys.

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>
#include <fstream>

#include "ScratchFolder.h"
#include "ScriptedUser.h"
#include "data/Engine.h"
#include "desktop/Driver.h"
#include "dialogs/SmallCatalog.h"
#include "dialogs/frmReportQuery.h"

namespace quillform::dialogs {
namespace {

using testing::RowOf;
using Texts = std::vector<std::string>;

class QueryForm : public ::testing::Test {
protected:
    QueryForm() {
        layout.strAppPath = folder.Path().string() + "/";
        layout.settings.strDatabase[1] = folder.File("report.mdb");
        QApplication::setKeyboardInputInterval(0);
    }
    void MakeDatabase() {
        testing::MakeCatalog(
            *engine, layout.settings.strDatabase[1],
            {RowOf(3, "Customers", "Company", 40), RowOf(4, "Customers", "City", 8), RowOf(9, "Orders", "Freight", 0)});
    }
    /// Shows the form over the database, and does the steps, the last of which closes it.
    void Show(std::vector<Driver::Step> steps) {
        frmReportQuery shown(layout, user, *engine, clock);
        form = &shown;
        const Driver driver(std::move(steps));
        shown.exec();
    }
    void Show(const Driver::Step& step) { Show(std::vector{step}); }

    template <typename Control>
    Control& Part(const char* name) const {
        return Named<Control>(*form, name);
    }
    void Press(const char* button) const { Click(Part<QPushButton>(button)); }
    std::string Text(const char* box) const { return Part<QLineEdit>(box).text().toStdString(); }
    QComboBox& Operation() const { return Part<QComboBox>("Operation"); }
    QComboBox& Join() const { return Part<QComboBox>("Join"); }
    QListWidget& Formulas() const { return Part<QListWidget>("Formulas"); }
    std::string Focus() const { return QApplication::focusWidget()->objectName().toStdString(); }
    Texts Shown() const {
        Texts texts;
        for (int row = 0; row < Formulas().count(); ++row) texts.push_back(Formulas().item(row)->text().toStdString());
        return texts;
    }
    int SelectedCount() const { return static_cast<int>(Formulas().selectedItems().size()); }
    void ClickLine(int row) const { ClickRow(Formulas(), row); }
    QTreeWidgetItem* Node(const char* text) const { return &NodeOf(Part<QTreeWidget>("SSTree1"), text); }
    void ClickNode(const char* text) const { quillform::ClickNode(Part<QTreeWidget>("SSTree1"), *Node(text)); }
    /// A line by the keyboard alone, from the box of the field on.
    void EnterLine(const char* operation, const char* value, const char* join) const {
        Part<QLineEdit>("Field").setFocus();
        quillform::Press(Qt::Key_Return);
        Type(operation);
        quillform::Press(Qt::Key_Return);
        Part<QLineEdit>("Value").selectAll();
        Type(value);
        quillform::Press(Qt::Key_Return);
        QTest::qWait(2);  // letters of one moment are one word to a combo box
        Type(join);
        quillform::Press(Qt::Key_Return);
        quillform::Press(Qt::Key_Return);  // Add
    }
    void AddLine(const char* value) {
        layout.Queries.Add({.Key = "", .Text = "City", .Join = "AND", .Value = value, .Operator = "=", .Code = 4});
    }
    Texts Values() const {
        Texts values;
        for (const clssQuery& line : layout.Queries) values.push_back(line.Value);
        return values;
    }

    ScratchFolder folder;
    ScriptedUser user;
    SystemClock clock;
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    Layout layout;
    frmReportQuery* form = nullptr;
};

TEST_F(QueryForm, LinesAreBuiltFromTheTreeByMouseAndKeys) {
    MakeDatabase();
    Show([&](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), QStringLiteral("BUILD QUERY"));
        EXPECT_EQ(Operation().currentIndex(), -1);
        EXPECT_EQ(Join().currentIndex(), -1);
        Press("AddCmd");
        EXPECT_EQ(user.messages.size(), 1U);

        ClickNode("Customers");  // opens and no more
        EXPECT_TRUE(Node("Customers")->isExpanded());
        EXPECT_EQ(Text("Field"), "");
        ClickNode("City");
        EXPECT_EQ(Text("Field"), "City");
        EXPECT_EQ(Part<QLineEdit>("Field").cursorPosition(), 0);  // a long one is read from its beginning
        EXPECT_EQ(Part<QLineEdit>("Value").maxLength(), 8);

        EnterLine("LIKE", "Aberdeenshire", "O");
        EXPECT_EQ(Shown(), (Texts{"City LIKE 'Aberdeen'"}));
        EXPECT_EQ(Focus(), "AddCmd");
        EXPECT_EQ(Text("Value"), "Aberdeen");  // the entry stays

        Part<QTreeWidget>("SSTree1").setCurrentItem(Node("Freight"));
        Part<QTreeWidget>("SSTree1").setFocus();
        quillform::Press(Qt::Key_Space);
        EXPECT_EQ(Text("Field"), "Freight");
        EXPECT_EQ(Part<QLineEdit>("Value").maxLength(), 35);
        EnterLine(">", "5", "O");
        EXPECT_EQ(Shown(), (Texts{"City LIKE 'Aberdeen'", "OR Freight > '5'"}));

        ClickLine(0);
        Press("EdtCmd");
        EXPECT_EQ(Text("Field"), "City");
        EXPECT_EQ(Operation().currentText(), QStringLiteral("LIKE"));
        EXPECT_EQ(Part<QLabel>("hint").text(), QStringLiteral("Add>> replaces the selected line."));
        EXPECT_EQ(Part<QLineEdit>("Value").maxLength(), 35);
        EnterLine("", "Aberdeenshire", "A");
        EXPECT_EQ(Shown(), (Texts{"City LIKE 'Aberdeenshire'", "OR Freight > '5'"}));
        EXPECT_EQ(SelectedCount(), 0);
        EXPECT_EQ(Part<QLabel>("hint").text(), QString());

        ClickNode("City");  // what is typed stays whole under the shorter limit
        EXPECT_EQ(Text("Value"), "Aberdeenshire");
        Press("ClrCmd");
        EXPECT_EQ(Text("Field") + Text("Value"), "");
        EXPECT_EQ(Part<QLineEdit>("Value").maxLength(), 8);
        EXPECT_EQ(Operation().currentText() + Join().currentText(), QStringLiteral("=AND"));
        Press("XitCmd");
    });
    ASSERT_EQ(layout.Queries.Count(), 2);
    const clssQuery& first = layout.Queries.Item(1);
    EXPECT_EQ((Texts{first.Key, first.Text, first.Operator, first.Value, first.Join}),
              (Texts{" 1", "City", "LIKE", "Aberdeenshire", "AND"}));
    EXPECT_EQ(first.Code, 4);
    EXPECT_EQ(layout.Queries.Item(2).Code, 9);
}

TEST_F(QueryForm, KeysLeadThroughTheEntryForwardAndBack) {
    MakeDatabase();
    Show([&](QWidget& window) {
        const Texts order{"Field", "Operation", "Value", "Join"};
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down}) {
            Part<QLineEdit>("Field").setFocus();
            for (const std::string& name : order) {
                EXPECT_EQ(Focus(), name);
                quillform::Press(key);
            }
            EXPECT_EQ(Focus(), "AddCmd");
        }
        Join().setFocus();
        for (auto name = order.rbegin(); name != order.rend(); ++name) {
            EXPECT_EQ(Focus(), *name);
            quillform::Press(Qt::Key_Up);
        }
        EXPECT_EQ(Focus(), "SSTree1");
        EXPECT_EQ(Operation().currentIndex(), -1);  // the arrows chose nothing on their way

        for (const char* typed : {"<", ">", "<=", "=", ">=", "<>"}) {
            Part<QLineEdit>("Field").setFocus();
            Operation().setFocus();
            Type(typed);
            EXPECT_EQ(Operation().currentText(), QString::fromLatin1(typed));
        }
        quillform::Press(window, Qt::Key_Escape);
    });
    EXPECT_TRUE(user.messages.empty());
}

TEST_F(QueryForm, KeysChooseInAListThatIsOpenInsteadOfLeavingIt) {
    MakeDatabase();
    Show([&](QWidget&) {
        struct Case {
            QComboBox& box;
            const char* second;
        };
        for (const auto& [box, second] : {Case{Operation(), ">="}, {Join(), "OR"}}) {
            const QString name = box.objectName();
            box.setFocus();
            box.setCurrentIndex(0);
            quillform::Press(Qt::Key_Down, Qt::AltModifier);
            QWidget* const list = QApplication::activePopupWidget();
            ASSERT_NE(list, nullptr) << name.toStdString();
            quillform::Press(*box.view(), Qt::Key_Down);
            EXPECT_EQ(QApplication::activePopupWidget(), list);
            quillform::Press(*box.view(), Qt::Key_Return);
            EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
            EXPECT_EQ(box.currentText(), QString::fromLatin1(second));
            EXPECT_EQ(Focus(), name.toStdString());
            quillform::Press(Qt::Key_Down);  // closed, the same key leaves it
            EXPECT_NE(Focus(), name.toStdString());
            EXPECT_EQ(box.currentText(), QString::fromLatin1(second));
        }
        Press("XitCmd");
    });
}

TEST_F(QueryForm, KeysOfTheFormPressTheirButtonsOnceFromWhereverTheyArePressed) {
    MakeDatabase();
    AddLine("a");
    user.chosen = std::nullopt;
    for (const Qt::KeyboardModifier held : {Qt::ControlModifier, Qt::AltModifier}) {
        for (const Qt::Key closing : {Qt::Key_S, Qt::Key_X}) {
            user.titles.clear();
            Show([&](QWidget&) {
                for (const char* name : {"Field", "Operation", "Formulas", "XitCmd"}) {
                    Part<QWidget>(name).setFocus();
                    quillform::Press(Qt::Key_F, held | Qt::ShiftModifier);
                    quillform::Press(Qt::Key_F, held);
                    quillform::Press(Qt::Key_L, held);
                }
                QTest::qWait(200);  // a mnemonic would press its button by now
                EXPECT_EQ(user.titles.size(), 8U);
                ClickLine(0);
                Part<QLineEdit>("Value").setFocus();
                Type("text");
                Part<QLineEdit>("Value").selectAll();
                quillform::Press(closing, held);
                EXPECT_FALSE(form->isVisible());
            });
        }
    }
}

TEST_F(QueryForm, MovesAreKeptBySaveAndDroppedByExit) {
    MakeDatabase();
    for (const char* value : {"a", "b", "c"}) AddLine(value);
    const auto moveFirstDown = [&](const char* leave) {
        Show([&, leave](QWidget&) {
            Press("UpCmd");  // with nothing selected
            ClickLine(0);
            Press("UpCmd");
            EXPECT_EQ(SelectedCount(), 1);
            Press("DownCmd");
            EXPECT_EQ(Shown(), (Texts{"City = 'b'", "AND City = 'a'", "AND City = 'c'"}));
            EXPECT_EQ(SelectedCount(), 0);
            Formulas().setFocus();
            quillform::Press(Qt::Key_Space);  // the line that was moved
            EXPECT_TRUE(Formulas().item(1)->isSelected());
            Press(leave);
        });
    };
    moveFirstDown("XitCmd");
    EXPECT_EQ(Values(), (Texts{"a", "b", "c"}));
    moveFirstDown("SaveCmd");
    EXPECT_EQ(Values(), (Texts{"b", "a", "c"}));

    Show([&](QWidget& window) {
        Press("DelCmd");
        Formulas().setFocus();  // the keyboard stands on the first line, and none is selected
        quillform::Press(Qt::Key_Delete);
        Press("EdtCmd");
        EXPECT_EQ(user.messages, (Texts{"You Must Select the Query from the List that you want to delete.",
                                        "You Must Select the Query from the List that you want to delete.",
                                        "You Must Select the Query From the list that you want to edit."}));
        ClickLine(0);
        Press("DelCmd");
        EXPECT_EQ(Shown(), (Texts{"City = 'a'", "AND City = 'c'"}));
        quillform::Press(window, Qt::Key_Escape);
    });
    EXPECT_EQ(Values(), (Texts{"a", "c"}));  // without a move, Exit keeps everything
}

TEST_F(QueryForm, QueryFilesAreSavedAndLoadedBehindTheLinesThatAreThere) {
    MakeDatabase();
    AddLine(" a ");
    user.chosen = folder.File("dues.qry");
    Show([&](QWidget&) {
        EXPECT_EQ(Shown(), (Texts{"City = ' a '"}));
        EXPECT_EQ(Formulas().item(0)->toolTip(), QString());
        Press("SFileCmd");
        Press("LFileCmd");
        Press("LFileCmd");
        EXPECT_EQ(Shown(), (Texts{"City = 'a'", "AND City = 'a'", "AND City = 'a'"}));
        Press("XitCmd");
    });
    EXPECT_TRUE(std::filesystem::exists(folder / "DUES.QRY"));
    EXPECT_EQ(Values(), (Texts{" a ", "a", "a"}));
    EXPECT_TRUE(user.messages.empty());

    std::ofstream(folder.File("OTHER.QRY")) << "77,\"=\",\"1\",\"AND\",\"Field of another database\"\r\n";
    user.chosen = folder.File("OTHER.QRY");
    Show([&](QWidget&) {
        Press("LFileCmd");
        EXPECT_NE(Formulas().item(3)->toolTip().indexOf(QStringLiteral("no such field")), -1);
        Press("XitCmd");
    });
}

TEST_F(QueryForm, AnErrorThatEndsTheProgramLosesNoLineAndClosesItsWindows) {
    MakeDatabase();
    for (const char* value : {"a", "b"}) AddLine(value);
    user.chosen = folder.File("missing/X.QRY");
    QWidget mainForm;
    mainForm.show();
    Show([&](QWidget&) {
        ClickLine(0);
        Press("DownCmd");
        Press("SFileCmd");
        EXPECT_FALSE(form->isVisible());
        EXPECT_FALSE(mainForm.isVisible());
    });
    EXPECT_EQ(Values(), (Texts{"b", "a"}));
    EXPECT_TRUE(std::filesystem::exists(folder / "ERROR.LOG"));
}

TEST_F(QueryForm, ADatabaseThatIsGoneIsToldAndChangesNothing) {
    AddLine("a");
    Show(std::vector<Driver::Step>{});
    EXPECT_EQ(user.messages, (Texts{"Cannot locate the database.  Select [Edit], [Report Options], and go to the "
                                    "[Database] folder.  Locate your Brindlemark database."}));
    user.messages.clear();
    MakeDatabase();
    Show([&](QWidget&) {
        ClickNode("Customers");
        ClickNode("City");
        std::filesystem::remove(layout.settings.strDatabase[1]);
        ClickNode("Company");
        ASSERT_EQ(user.messages.size(), 1U);
        EXPECT_NE(user.messages[0].find("report.mdb"), std::string::npos);
        EXPECT_EQ(Text("Field"), "City");
        EXPECT_EQ(Part<QLineEdit>("Value").maxLength(), 8);
        EnterLine("=", "b", "A");  // building goes on
        Press("SaveCmd");
    });
    EXPECT_EQ(Values(), (Texts{"a", "b"}));
    EXPECT_EQ(layout.Queries.Item(2).Code, 4);
}

TEST_F(QueryForm, ADatabaseWithoutItsCatalogIsToldAsSuch) {
    engine->CreateDatabase(layout.settings.strDatabase[1], DatabaseVersion::Jet30);
    Show(std::vector<Driver::Step>{});
    ASSERT_EQ(user.messages.size(), 1U);
    EXPECT_NE(user.messages[0].find("Report - Index"), std::string::npos) << user.messages[0];
}

TEST_F(QueryForm, AnEmptyCatalogOffersNothing) {
    testing::MakeCatalog(*engine, layout.settings.strDatabase[1], {});
    Show([&](QWidget&) {
        EXPECT_EQ(Part<QTreeWidget>("SSTree1").topLevelItemCount(), 0);
        EnterLine("=", "b", "A");
        EXPECT_EQ(user.messages.size(), 1U);
        EXPECT_EQ(Formulas().count(), 0);
        Press("XitCmd");
    });
}

TEST_F(QueryForm, TheSearchLineLeavesTheFieldsThatMatch) {
    MakeDatabase();
    Show([&](QWidget&) {
        Part<QLineEdit>("find").setFocus();
        Type("comp");
        EXPECT_TRUE(Node("Customers")->isExpanded());
        EXPECT_TRUE(Node("City")->isHidden());
        EXPECT_TRUE(Node("Orders")->isHidden());
        ClickNode("Company");
        EXPECT_EQ(Text("Field"), "Company");
        Part<QLineEdit>("Value").setFocus();
        Type("O'Brien");
        EXPECT_NE(Part<QLabel>("hint").text().indexOf(QStringLiteral("O''Brien")), -1);
        Part<QLineEdit>("find").clear();
        EXPECT_FALSE(Node("City")->isHidden());
        Press("XitCmd");
    });
}

}  // namespace
}  // namespace quillform::dialogs
