#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <fstream>

#include "catalog/CatalogFixture.h"
#include "catalog/MemoryDatabase.h"
#include "catalog/frmRptWizard.h"
#include "desktop/Configuration.h"
#include "desktop/Driver.h"

namespace quillform {
namespace {

using testing::CatalogFixture;
using testing::Column;
using testing::Table;

class Wizard : public CatalogFixture {
public:
    void SetUp() override {
        Make({Table("Goods", {Column("No", FieldType::Long), Column("Na&me", FieldType::Text, 20)}),
              Table("\xC3\x84pfel <b>", {Column("Gr\xC3\xB6\xC3\x9F"
                                                "e",
                                                FieldType::Double)})});
        form = std::make_unique<frmRptWizard>(*engine_, path_);
    }
    template <typename Control>
    Control& Get(const char* name) {
        return Named<Control>(*form, name);
    }
    /// Shows the page and does something on it.
    void ShowAnd(Driver::Step step) {
        const Driver driver({std::move(step)});
        form->Show();
    }

    std::unique_ptr<frmRptWizard> form;
};

QString Items(const QComboBox& list) {
    QStringList items;
    for (int i = 0; i < list.count(); ++i) items << list.itemText(i);
    return items.join(u'|');
}

TEST_F(Wizard, ButtonTypeLaysOutThePage) {
    struct Case {
        int type;
        bool question, next, reply, list1, list2;
    };
    const Case cases[] = {
        {0, false, true, true, false, false}, {1, true, false, false, false, false},
        {2, false, true, false, true, true},  {3, false, true, false, true, false},
        {4, false, true, false, true, false}, {7, false, true, false, true, false}};  // no type: only the value is kept
    for (const Case& c : cases) {
        SCOPED_TRACE(c.type);
        form->SetButtonType(static_cast<WizardButtonType>(c.type));
        form->SetTextLabel("label");
        EXPECT_EQ(static_cast<int>(form->ButtonType()), c.type);
        ShowAnd([&](QWidget&) {
            for (const char* name : {"cmdYes", "cmdNo"}) EXPECT_EQ(Get<QWidget>(name).isVisible(), c.question) << name;
            EXPECT_EQ(Get<QWidget>("cmdOkay").isEnabled(), c.next);
            EXPECT_EQ(Get<QWidget>("txtResponse").isVisible(), c.reply);
            for (const char* name : {"lblTable1", "cmbTable1"}) EXPECT_EQ(Get<QWidget>(name).isVisible(), c.list1);
            for (const char* name : {"lblTable2", "cmbTable2", "PicLink"})
                EXPECT_EQ(Get<QWidget>(name).isVisible(), c.list2) << name;
            for (const char* name : {"lblTextLabel", "lblExplaination", "Picture1", "cmdOkay", "cmdBack"})
                EXPECT_TRUE(Get<QWidget>(name).isVisible()) << name;
            EXPECT_TRUE(Get<QWidget>("cmdBack").isEnabled());
            Click(Get<QWidget>("cmdBack"));
        });
    }
    EXPECT_EQ(form->windowTitle(), "Quillform Wizard");
}

TEST_F(Wizard, QuestionsAnswerToMouseAndKeys) {
    struct Case {
        WizardResponse focus;
        std::function<void(Wizard&)> act;
        WizardResponse answer;
    };
    const auto key = [](Qt::Key pressed, Qt::KeyboardModifiers held = Qt::NoModifier) {
        return [pressed, held](Wizard&) { Press(pressed, held); };
    };
    using enum WizardResponse;
    const Case cases[] = {
        {Yes, key(Qt::Key_Return), Yes},
        {No, key(Qt::Key_Enter), No},
        {No, key(Qt::Key_Space), No},
        {No, key(Qt::Key_Y, Qt::AltModifier), Yes},
        {Yes, key(Qt::Key_N, Qt::AltModifier), No},
        {Yes, key(Qt::Key_B, Qt::AltModifier), Back},
        {Yes, [](Wizard& w) { Click(w.Get<QWidget>("cmdNo")); }, No},
        {No, [](Wizard& w) { Click(w.Get<QWidget>("cmdYes")); }, Yes},
        {Yes,
         [](Wizard&) {
             Press(Qt::Key_Tab);
             Press(Qt::Key_Return);
         },
         No},
        {Yes,
         [](Wizard&) {
             Press(Qt::Key_Tab);
             Press(Qt::Key_Tab);
             Press(Qt::Key_Return);
         },
         Back},
    };
    form->SetButtonType(WizardButtonType::Question);
    for (const Case& c : cases) {
        form->SetButtonResponse(c.focus);
        ShowAnd([&](QWidget&) {
            EXPECT_TRUE(Get<QWidget>(c.focus == Yes ? "cmdYes" : "cmdNo").hasFocus());
            c.act(*this);
        });
        EXPECT_EQ(form->ButtonResponse(), c.answer);
    }
}

TEST_F(Wizard, ButtonResponseMovesTheFocusOfAVisiblePage) {
    form->SetButtonType(WizardButtonType::Question);
    form->SetButtonResponse(WizardResponse::Yes);
    ShowAnd([&](QWidget&) {
        form->SetButtonResponse(WizardResponse::No);
        EXPECT_TRUE(Get<QWidget>("cmdNo").hasFocus());
        form->SetButtonResponse(WizardResponse::Yes);
        EXPECT_TRUE(Get<QWidget>("cmdYes").hasFocus());
        Press(Qt::Key_Return);
    });
}

TEST_F(Wizard, RepliesAreTakenByNextAlone) {
    form->SetButtonType(WizardButtonType::TextReply);
    form->SetTextResponse(" old ");
    const auto typeAnd = [&](const char* text, const char* button) {
        ShowAnd([&, text, button](QWidget&) {
            EXPECT_TRUE(Get<QWidget>("txtResponse").hasFocus());
            Type(text);  // replaces what is proposed
            Click(Get<QWidget>(button));
        });
    };
    typeAnd("typed", "cmdBack");
    EXPECT_EQ(form->ButtonResponse(), WizardResponse::Back);
    EXPECT_EQ(form->TextResponse(), " old ");
    typeAnd("\xC3\x84\xE6\x97\xA5\xD0\x96 <i>&x", "cmdOkay");
    EXPECT_EQ(form->ButtonResponse(), WizardResponse::Next);
    EXPECT_EQ(form->TextResponse(), "\xC3\x84\xE6\x97\xA5\xD0\x96 <i>&x");
    ShowAnd([](QWidget&) { Press(Qt::Key_Return); });  // Next is what Enter presses in the box
    EXPECT_EQ(form->ButtonResponse(), WizardResponse::Next);
    ShowAnd([&](QWidget&) {
        EXPECT_EQ(Get<QLineEdit>("txtResponse").text(), QString::fromUtf8("\xC3\x84\xE6\x97\xA5\xD0\x96 <i>&x"));
        Press(Qt::Key_X, Qt::AltModifier);
    });
    EXPECT_EQ(form->ButtonResponse(), WizardResponse::Next);
}

TEST_F(Wizard, ColumnListsComeFromTheDatabase) {
    form->SetButtonType(WizardButtonType::ColumnLists);
    form->SetTable1("Goods");
    form->SetTable2("\xC3\x84pfel <b>");
    EXPECT_EQ(Items(Get<QComboBox>("cmbTable1")), "No|Na&me");
    EXPECT_EQ(Items(Get<QComboBox>("cmbTable2")), QString::fromUtf8("Gr\xC3\xB6\xC3\x9F"
                                                                    "e"));
    EXPECT_EQ(Get<QLabel>("lblTable2").text(), QString::fromUtf8("\xC3\x84pfel <b>"));
    EXPECT_EQ(form->Table1(), "Goods");
    ShowAnd([](QWidget&) { Press(Qt::Key_Return); });
    EXPECT_EQ(form->Field1(), "") << "nothing is picked by itself";
    EXPECT_EQ(form->Field2(), "");
    ShowAnd([&](QWidget&) {
        EXPECT_TRUE(Get<QWidget>("cmbTable1").hasFocus());
        Press(Qt::Key_Down);
        Press(Qt::Key_Down);
        Press(Qt::Key_Tab);
        Press(Qt::Key_Down);
        Press(Qt::Key_Return);
    });
    EXPECT_EQ(form->Field1(), "Na&me");
    EXPECT_EQ(form->Field2(),
              "Gr\xC3\xB6\xC3\x9F"
              "e");
    EXPECT_THROW(form->SetTable1("None"), RunTimeError);
    EXPECT_EQ(form->Table1(), "Goods");
}

TEST_F(Wizard, FormulaListsAreFixed) {
    form->SetTable1("Goods");  // a page of another type: nothing happens
    EXPECT_EQ(form->Table1(), "");
    form->SetButtonType(WizardButtonType::TextFormulaList);
    form->SetTable1("Formula Type");
    EXPECT_EQ(Items(Get<QComboBox>("cmbTable1")),
              "(None)|Mid$(Field, Position, Length)|Right$(Field, Position)|Left$(Field, Position)");
    EXPECT_EQ(Get<QLabel>("lblTable1").text(), "Select Formula Type:");
    form->SetButtonType(WizardButtonType::NumberFormulaList);
    form->SetTable1("Formula Type");
    EXPECT_EQ(Items(Get<QComboBox>("cmbTable1")),
              "(None)|Sum(Field)|Count(Field)|Avg(Field)|StDev(Field)|stDevP(Field)");
    ShowAnd([](QWidget&) {
        Type("a");  // the list is searched by typing
        Press(Qt::Key_Return);
    });
    EXPECT_EQ(form->Field1(), "Avg(Field)");
}

TEST_F(Wizard, ClosingAsksAndLosesNothing) {
    form->SetButtonType(WizardButtonType::TextReply);
    const auto typeAndClose = [](QWidget& window) {
        Type("kept");
        window.close();
    };
    const Driver::Step goOn = [](QWidget&) { Press(Qt::Key_Return); };
    const Driver::Step leave = [](QWidget&) { Press(Qt::Key_L, Qt::AltModifier); };
    {
        const Driver driver({typeAndClose, goOn, [](QWidget&) { Press(Qt::Key_Escape); }, goOn,
                             [](QWidget&) { Press(Qt::Key_Return); }});
        form->Show();
        EXPECT_EQ(form->TextResponse(), "kept");
    }
    const Driver driver({typeAndClose, leave});
    EXPECT_THROW(form->Show(), WizardLeft);
}

TEST_F(Wizard, EveryTextIsReadableInFull) {
    const std::string name(64, 'W');
    form->SetButtonType(WizardButtonType::TextReply);
    form->SetTextLabel("Position Parameter in Mid$(Field, Position, Length):");
    std::string text;
    for (int i = 0; i < 12; ++i) text += "What mask do you want to use when printing the data for " + name + "? ";
    form->SetExplaination(text);
    ShowAnd([&](QWidget& window) {
        const auto& label = Get<QLabel>("lblExplaination");
        EXPECT_GE(label.height(), label.heightForWidth(label.width()));
        for (const QWidget* control : window.findChildren<QWidget*>()) {
            if (!control->isVisible() || control->parentWidget() == nullptr) continue;
            EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()))
                << control->objectName().toStdString();
        }
        Press(Qt::Key_Return);
    });
}

TEST_F(Wizard, EveryControlTellsItsName) {
    form->SetButtonType(WizardButtonType::ColumnLists);
    form->SetTable1("Goods");
    form->SetTable2("Goods");
    form->SetTextLabel("Field Mask:");
    for (const char* name : {"txtResponse", "cmbTable1", "cmbTable2", "cmdYes", "cmdNo", "cmdOkay", "cmdBack"})
        EXPECT_FALSE(Get<QWidget>(name).accessibleName().isEmpty()) << name;
}

// The whole way: the box that asks first, the pages, the box at the end, and the file of answers.
TEST_F(Wizard, ConfiguresAndRecords) {
    form.reset();
    DesktopUser user;
    const Driver::Step enter = [](QWidget&) { Press(Qt::Key_Return); };
    const Driver::Step no = [](QWidget& window) { Click(Named<QPushButton>(window, "cmdNo")); };
    const Driver driver({enter,                // alter the database?
                         enter, enter, enter,  // Goods, No, raw
                         [](QWidget&) {
                             Type("Number");
                             Press(Qt::Key_Return);
                         },
                         enter, no,  // its mask, formulas?
                         no,         // Na&me
                         no,         // the other table
                         enter, no,  // alter the database? are they linked?
                         enter,      // alter the database?
                         enter,      // the common label sheets?
                         [](QWidget& window) {
                             EXPECT_EQ(Named<QLineEdit>(window, "Custom_8").text(),
                                       "Address, 14/sheet, 1 1/2 x 4 in., as 5159");
                             Press(Qt::Key_Escape);
                         },
                         enter});  // done
    quillform::Configure(path_, *engine_, user, folder_.File("answers.txt"));
    EXPECT_EQ(IndexRows(), Lines{"1|Goods|No|Number|11|###,###,##0|True|False|False| |0| | | "});
    const std::string recorded = (std::stringstream() << std::ifstream(folder_.File("answers.txt")).rdbuf()).str();
    EXPECT_NE(recorded.find("description Number"), std::string::npos) << recorded;
    EXPECT_EQ(recorded.find("label sheets"), std::string::npos) << recorded;
}

TEST_F(Wizard, LeavingKeepsWhatWasAnswered) {
    form.reset();
    DesktopUser user;
    const Driver::Step enter = [](QWidget&) { Press(Qt::Key_Return); };
    const Driver driver({enter, enter, enter, enter, enter, enter, [](QWidget&) { Press(Qt::Key_Escape); },
                         [](QWidget&) { Press(Qt::Key_L, Qt::AltModifier); }});
    EXPECT_THROW(quillform::Configure(path_, *engine_, user, folder_.File("answers.txt")), RunTimeError);
    EXPECT_EQ(IndexRows().size(), 1U);
    EXPECT_TRUE(std::filesystem::exists(folder_.File("answers.txt")));
}

}  // namespace
}  // namespace quillform
