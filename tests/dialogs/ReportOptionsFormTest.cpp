// The report options by mouse and keys.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>

#include "ScriptedUser.h"
#include "desktop/Driver.h"
#include "dialogs/OptionScene.h"
#include "dialogs/frmReportOptions.h"

namespace quillform::dialogs {
namespace {

using testing::OptionScene;
using Texts = std::vector<std::string>;

enum Tab { OutputType, Grouping, DatabaseTab, PaperSizeTab, LabelType };

/// Notes how databases are opened.
class NotingEngine final : public DBEngine {
public:
    explicit NotingEngine(DBEngine& engine) : engine_(engine) {}
    std::unique_ptr<Database> OpenDatabase(std::string_view path, Access access) override {
        opened.push_back(access);
        return engine_.OpenDatabase(path, access);
    }
    std::unique_ptr<Database> CreateDatabase(std::string_view path, DatabaseVersion version) override {
        return engine_.CreateDatabase(path, version);
    }

    std::vector<Access> opened;

private:
    DBEngine& engine_;
};

class OptionsForm : public ::testing::Test {
protected:
    using Step = std::function<void()>;

    /// Shows the form and does the step, which closes it.
    void Show(const Step& step) {
        frmReportOptions shown(scene.layout, user, engine, labelStyles);
        form = &shown;
        const Driver driver({[&](QWidget&) { step(); }});
        shown.exec();
    }
    template <typename Control>
    Control& Part(const std::string& name) const {
        return Named<Control>(*form, name.c_str());
    }
    QLineEdit& Box(const std::string& name) const { return Part<QLineEdit>(name); }
    QRadioButton& Option(const std::string& name) const { return Part<QRadioButton>(name); }
    QListWidget& List() const { return Part<QListWidget>("lstLabels"); }
    void Go(Tab tab) const { Part<QTabWidget>("SSTab1").setCurrentIndex(tab); }
    void PressButton(const char* button) const { Click(Part<QPushButton>(button)); }
    void Mark(QAbstractButton& button) const { QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, 8)); }
    void Enter(const std::string& box, const char* text) const {
        Box(box).setFocus();
        Box(box).selectAll();
        Type(text);
    }
    std::string Focus() const { return QApplication::focusWidget()->objectName().toStdString(); }
    Texts Rows() const {
        Texts texts;
        for (int row = 0; row < List().count(); ++row) texts.push_back(List().item(row)->text().toStdString());
        return texts;
    }
    void Choose(const char* style) const {
        Go(LabelType);
        const auto found = List().findItems(QString::fromUtf8(style), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << style;
        ClickRow(List(), List().row(found.front()));
        QCoreApplication::processEvents();
    }
    std::string Selected() const {
        const auto selected = List().selectedItems();
        return selected.isEmpty() ? "" : selected.front()->text().toStdString();
    }
    Texts Custom() const {
        Texts texts;
        for (std::size_t i = 0; i < labelMeasures.size(); ++i)
            texts.push_back(Box("Custom_" + std::to_string(i)).text().toStdString());
        return texts;
    }
    /// How many outputs can be chosen.
    int Offered() const {
        int count = 0;
        for (int i = 0; i < 11; ++i) count += Option("RptOpt_" + std::to_string(i)).isEnabled() ? 1 : 0;
        return count;
    }

    OptionScene scene;
    ReportSettings& settings = scene.layout.settings;
    ScriptedUser user;
    NotingEngine engine{*scene.engine};
    std::function<void(QWidget&)> labelStyles;
    frmReportOptions* form = nullptr;
};

/// 1024 by 768 pixels at double scale, less a title and a task bar.
TEST_F(OptionsForm, ASmallScreenScrollsAndALargeOneDoesNot) {
    Show([&] {
        EXPECT_LE(form->minimumSizeHint().width(), 512);
        EXPECT_LE(form->minimumSizeHint().height(), 340);
        const auto scrolls = [&](Tab tab) {
            Go(tab);
            QCoreApplication::processEvents();
            const auto& page = dynamic_cast<QScrollArea&>(*Part<QTabWidget>("SSTab1").currentWidget());
            return page.verticalScrollBar()->maximum() > 0 || page.horizontalScrollBar()->maximum() > 0;
        };
        for (const Tab tab : {OutputType, Grouping, DatabaseTab, PaperSizeTab, LabelType}) EXPECT_FALSE(scrolls(tab));
        form->resize(512, 340);
        EXPECT_TRUE(scrolls(Grouping));
        Box("CharChange_1").setFocus();
        EXPECT_TRUE(Box("CharChange_1").visibleRegion().boundingRect() == Box("CharChange_1").rect());
        PressButton("XitCmd");
    });
}

TEST_F(OptionsForm, TheKeyboardChoosesFromTheOptionThatIsSet) {
    settings.intOutputType = 4;
    settings.boolLabels = false;
    Show([&] {
        Part<QTabWidget>("SSTab1").tabBar()->setFocus();
        Press(Qt::Key_Tab);
        EXPECT_EQ(Focus(), "RptOpt_4");
        Press(Qt::Key_Up);
        EXPECT_TRUE(Option("RptOpt_3").isChecked());
        Press(Qt::Key_Tab);
        EXPECT_EQ(Focus(), "cmdBrowse");  // past the other options
        PressButton("XitCmd");
    });
    settings.boolLabels = true;  // what is set can't be chosen any more
    Show([&] {
        Part<QTabWidget>("SSTab1").tabBar()->setFocus();
        Press(Qt::Key_Tab);
        EXPECT_EQ(Focus(), "RptOpt_0");
        PressButton("XitCmd");
    });
}

TEST_F(OptionsForm, EveryTabIsShownAndStored) {
    scene.MakeDatabase();
    Show([&] {
        EXPECT_EQ(form->windowTitle(), QStringLiteral("Custom Report Options"));
        EXPECT_FALSE(Part<QPushButton>("cmdLabels").isEnabled());  // there is no form for it
        EXPECT_TRUE(Option("RptOpt_0").isChecked());
        EXPECT_EQ(Box("Database_0").text().toStdString(), scene.DatabasePath());
        EXPECT_EQ(Box("NumSpc_0").text(), QStringLiteral(" 0"));
        Mark(Option("RptOpt_3"));
        Go(Grouping);
        EXPECT_EQ(Part<QCheckBox>("Chk_1").text(), QStringLiteral(" Page Break after Primary Group"));
        Mark(Part<QCheckBox>("Chk_1"));
        Enter("NumSpc_1", "2");
        Enter("CharChange_0", "5");
        Mark(Option("optJoin_2"));
        Go(DatabaseTab);
        Enter("Database_3", "C:\\Old.mdb ");
        Go(PaperSizeTab);
        Mark(Option("optPaperSize_41"));
        Choose("O'Neill's");
        EXPECT_EQ(settings.intOutputType, 0);  // until Save
        PressButton("SaveCmd");
        EXPECT_FALSE(form->isVisible());
    });
    EXPECT_EQ(settings.intOutputType, 3);
    EXPECT_TRUE(settings.boolPageBreak2 && !settings.boolPageBreak1);
    EXPECT_EQ(settings.intSpaces2, 2);
    EXPECT_EQ(settings.intCharChange1, 5);
    EXPECT_EQ(settings.intJoinType, 2);
    EXPECT_EQ(settings.strDatabase[4], "C:\\Old.mdb ");
    EXPECT_EQ(settings.intDatabaseCount, 4);
    EXPECT_EQ(settings.intPaperSize, 5);  // the style's
    EXPECT_TRUE(settings.boolLabels);
    EXPECT_EQ(settings.sngLabelHeight, 1.333333F);
    EXPECT_EQ(
        engine.opened,
        std::vector<Access>(2, Access::ReadOnly));  // the list and the style, also of a database that can only be read
    EXPECT_EQ(user.messages, Texts{});

    ReportSettings stored = settings;
    Show([&] { PressButton("SaveCmd"); });
    EXPECT_EQ(settings, stored);
}

TEST_F(OptionsForm, NumbersWithoutAButtonStay) {
    settings.intPaperSize = 9;
    settings.intOutputType = 20;
    settings.intJoinType = -4;
    settings.sngLabelHeight = 4.0F / 3;  // its text has more characters than can be typed
    const ReportSettings before = settings;
    Show([&] {
        for (const auto* const option : form->findChildren<QRadioButton*>()) EXPECT_FALSE(option->isChecked());
        EXPECT_EQ(Custom()[2], " 1.333333");
        PressButton("SaveCmd");
    });
    EXPECT_EQ(settings, before);
}

TEST_F(OptionsForm, CourierGoesWithTheScreen) {
    settings.intOutputType = 1;
    settings.boolCourier = true;
    Show([&] {
        auto& courier = Part<QCheckBox>("chkDisplayOption");
        EXPECT_TRUE(courier.isEnabled() && courier.isChecked());
        Mark(Option("RptOpt_2"));
        EXPECT_FALSE(courier.isEnabled() || courier.isChecked());
        Mark(Option("RptOpt_1"));
        EXPECT_TRUE(courier.isEnabled() && !courier.isChecked());
        Press(Qt::Key_Up);  // by the keyboard too
        EXPECT_TRUE(Option("RptOpt_0").isChecked());
        EXPECT_FALSE(courier.isEnabled());
        Mark(Option("RptOpt_1"));
        Mark(courier);
        PressButton("SaveCmd");
    });
    EXPECT_EQ(settings.intOutputType, 1);
    EXPECT_TRUE(settings.boolCourier);
    settings.intOutputType = 0;
    Show([&] {
        EXPECT_FALSE(Part<QCheckBox>("chkDisplayOption").isChecked());
        PressButton("SaveCmd");
    });
    EXPECT_FALSE(settings.boolCourier);
}

TEST_F(OptionsForm, LabelsTakeOutputsAway) {
    scene.MakeDatabase();
    settings.intOutputType = 5;
    Show([&] {
        EXPECT_EQ(Offered(), 11);
        Choose("Small");
        EXPECT_EQ(Custom(), (Texts{"4", "20", "0.5", "1.75", "0.5", "0.28125", "0.3", "0"}));
        EXPECT_EQ(Offered(), 2);
        EXPECT_TRUE(Option("RptOpt_5").isChecked());
        EXPECT_NE(Part<QLabel>("hint").text(), QString());
        PressButton("SaveCmd");
    });
    EXPECT_EQ(settings.intOutputType, 5);
    EXPECT_TRUE(settings.boolLabels);
    Show([&] {
        EXPECT_EQ(Offered(), 2);
        EXPECT_EQ(Selected(), "");
        Choose("Empty");  // none across
        EXPECT_EQ(Custom()[0], "0");
        PressButton("SaveCmd");
    });
    EXPECT_FALSE(settings.boolLabels);
    settings.boolLabels = true;
    Show([&] {
        Choose("(None)");
        EXPECT_EQ(Custom(), Texts(8));
        EXPECT_EQ(Offered(), 11);
        PressButton("SaveCmd");
    });
    EXPECT_FALSE(settings.boolLabels);
    EXPECT_EQ(settings.sngLabelWidth, 0);
}

TEST_F(OptionsForm, KeysOfTheNumberBoxes) {
    settings.intSpaces1 = 12;
    Show([&] {
        Go(Grouping);
        auto& first = Box("NumSpc_0");
        Part<QCheckBox>("Chk_0").setFocus();
        Press(Qt::Key_Tab);
        EXPECT_EQ(Focus(), "NumSpc_0");
        EXPECT_TRUE(QTest::qWaitFor([&] { return first.selectedText() == QStringLiteral("12"); }));
        Type("3x 4");
        EXPECT_EQ(first.text(), QStringLiteral("34"));
        Press(Qt::Key_Backspace);
        EXPECT_EQ(first.text(), QStringLiteral("3"));
        for (const Qt::Key forward : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down}) {
            first.setFocus();
            Press(forward);
            EXPECT_EQ(Focus(), "CharChange_0") << forward;
        }
        Type("a");  // takes anything
        EXPECT_TRUE(Box("CharChange_0").text().contains(u'a'));
        Box("NumSpc_1").setFocus();
        Press(Qt::Key_Up);
        EXPECT_EQ(Focus(), "Chk_1");
        EXPECT_TRUE(form->isVisible());
        PressButton("SaveCmd");
    });
    EXPECT_EQ(settings.intSpaces1, 3);
}

TEST_F(OptionsForm, TabsAreTurnedFromTheButtonsToo) {
    Show([&] {
        const auto& tabs = Part<QTabWidget>("SSTab1");
        for (const char* const name : {"XitCmd", "NumSpc_0"}) {
            Go(Grouping);
            Part<QWidget>(name).setFocus();
            Press(Qt::Key_Tab, Qt::ControlModifier);
            EXPECT_EQ(tabs.currentIndex(), Grouping + 1) << name;
            Go(OutputType);
            Part<QWidget>("XitCmd").setFocus();
            Press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
            EXPECT_EQ(tabs.currentIndex(), LabelType) << name;
        }
        PressButton("XitCmd");
    });
}

TEST_F(OptionsForm, LeavingStoresNothing) {
    scene.MakeDatabase();
    const ReportSettings before = settings;
    const Step ways[] = {[&] { PressButton("XitCmd"); }, [&] { Press(*form, Qt::Key_Escape); }, [&] { form->close(); },
                         [&] {
                             Part<QWidget>("XitCmd").setFocus();
                             Press(Qt::Key_Return);
                         }};
    for (const Step& leave : ways) {
        Show([&] {
            Mark(Option("RptOpt_4"));
            Enter("Database_1", "other.mdb");
            Choose("Small");
            leave();
            EXPECT_FALSE(form->isVisible());
        });
        EXPECT_EQ(settings, before);
    }
}

TEST_F(OptionsForm, ANumberThatIsTooLargeIsToldAndShown) {
    const ReportSettings before = settings;
    Show([&] {
        Mark(Option("RptOpt_4"));
        Enter("Custom_0", "999999");
        EXPECT_EQ(Custom()[0], "99999");
        PressButton("SaveCmd");
        ASSERT_EQ(user.messages.size(), 1U);
        EXPECT_NE(user.messages[0].find("\"Labels Across\" on the tab \"Label Type\""), std::string::npos);
        EXPECT_TRUE(form->isVisible());
        EXPECT_EQ(Part<QTabWidget>("SSTab1").currentIndex(), LabelType);
        EXPECT_EQ(Focus(), "Custom_0");
        EXPECT_EQ(settings, before);
        Type("3");
        Press(Qt::Key_Return);  // Save, the default
    });
    EXPECT_EQ(settings.intOutputType, 4);
    EXPECT_EQ(settings.intLabelsAcross, 3);
}

TEST_F(OptionsForm, TheListIsChosenFromByKeysToo) {
    scene.MakeDatabase();
    settings.intLabelsAcross = 6;
    Show([&] {
        EXPECT_EQ(Rows(), (Texts{"(None)", "A4", "Empty", "O'Neill's", "Small"}));
        Go(LabelType);
        Part<QTabWidget>("SSTab1").setFocus();
        List().setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        EXPECT_EQ(Custom()[0], " 6");  // to come to the list isn't to choose "(None)"
        Press(Qt::Key_End);
        QCoreApplication::processEvents();
        EXPECT_EQ(Custom()[0], "4");
        Enter("Custom_0", "9");
        Choose("Small");  // once more
        EXPECT_EQ(Custom()[0], "4");
        Choose("A4");
        EXPECT_EQ(Custom()[0], "3");
        EXPECT_EQ(user.messages.size(), 1U);
        EXPECT_TRUE(Option("optPaperSize_1").isChecked());
        scene.engine->OpenDatabase(scene.DatabasePath())->Execute("DELETE FROM [Report - Labels] WHERE Across = 2");
        Choose("O'Neill's");  // gone
        QCoreApplication::processEvents();
        EXPECT_EQ(Selected(), "(None)");
        EXPECT_EQ(Custom(), Texts(8));
        PressButton("XitCmd");
    });
}

TEST_F(OptionsForm, TheListFollowsThePath) {
    scene.MakeDatabase();
    scene.MakeDatabase(scene.folder.File("b.mdb"), {{"Other", {1, 1, 1, 1}, 1}});
    Show([&] {
        Choose("Small");
        engine.opened.clear();
        Go(DatabaseTab);
        Enter("Database_1", "nothing.mdb");
        EXPECT_EQ(engine.opened.size(), 0U);  // nothing is read again
        Enter("Database_0", (scene.folder.Path() / "B.MDB").c_str());
        EXPECT_EQ(engine.opened.size(), 1U);  // only at the last letter
        EXPECT_EQ(Rows(), (Texts{"(None)", "Other"}));
        EXPECT_EQ(Custom()[0], "4");  // nobody has clicked
        Press(Qt::Key_Backspace);
        EXPECT_EQ(Rows(), Texts{"(None)"});
        PressButton("SaveCmd");
    });
    EXPECT_EQ(settings.strDatabase[1], scene.folder.File("B.MD"));
}

TEST_F(OptionsForm, BrowsePutsThePathIntoTheFirstBox) {
    scene.MakeDatabase();
    settings.strDatabase[1] = "gone.mdb";
    Show([&] {
        EXPECT_EQ(Rows(), Texts{"(None)"});
        PressButton("cmdBrowse");  // cancelled
        EXPECT_EQ(Box("Database_0").text(), QStringLiteral("gone.mdb"));
        EXPECT_EQ(user.lastDialog.filter, "*.MDB|Access Database");
        EXPECT_EQ(user.lastDialog.fileName, "*.MDB");
        EXPECT_EQ(user.lastDialog.defaultExtension, "MDB");
        EXPECT_EQ(user.lastDialog.initialFolder, scene.layout.strAppPath);
        user.chosen = scene.DatabasePath();
        PressButton("cmdBrowse");
        EXPECT_EQ(Rows().size(), 5U);
        EXPECT_TRUE(Box("Database_0").isVisible());
        PressButton("SaveCmd");
    });
    EXPECT_EQ(settings.strDatabase[1], scene.DatabasePath());
    EXPECT_EQ(user.titles.size(), 2U);
}

TEST_F(OptionsForm, StylesThatWereChangedAreListed) {
    scene.MakeDatabase();
    const char* statement = "UPDATE [Report - Labels] SET [Label Description] = 'New' WHERE Across = 2";
    labelStyles = [&](QWidget& owner) {
        EXPECT_EQ(&owner, form);
        scene.engine->OpenDatabase(scene.DatabasePath())->Execute(statement);
    };
    Show([&] {
        Choose("Small");
        Enter("Custom_0", "7");
        PressButton("cmdLabels");
        EXPECT_EQ(Rows(), (Texts{"(None)", "A4", "Empty", "New", "Small"}));
        QCoreApplication::processEvents();
        EXPECT_EQ(Selected(), "Small");
        EXPECT_EQ(Custom()[0], "7");  // nobody has clicked
        statement = "DELETE FROM [Report - Labels] WHERE Across = 4";
        PressButton("cmdLabels");
        EXPECT_EQ(Selected(), "");
        EXPECT_EQ(Custom()[0], "7");
        Enter("Database_0", "other.mdb");
        PressButton("cmdLabels");
        EXPECT_EQ(user.messages.size(), 1U);  // whose styles these are
        PressButton("XitCmd");
    });
}

TEST_F(OptionsForm, ADatabaseThatGoesAwayLeavesTheBoxes) {
    scene.MakeDatabase();
    settings.intLabelsAcross = 6;
    Show([&] {
        std::filesystem::remove(scene.DatabasePath());
        Choose("Small");
        ASSERT_EQ(user.messages.size(), 1U);
        EXPECT_NE(user.messages[0].find("labels.mdb"), std::string::npos);
        EXPECT_EQ(Custom()[0], " 6");
        EXPECT_EQ(Selected(), "");
        EXPECT_EQ(Offered(), 11);
        PressButton("SaveCmd");  // the path stays, and a run tells of it
    });
    EXPECT_EQ(settings.strDatabase[1], scene.DatabasePath());
}

}  // namespace
}  // namespace quillform::dialogs
