// What every form of the dialogs says, to the letter, and where Tab leads in it.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <memory>

#include "ScriptedUser.h"
#include "desktop/Driver.h"
#include "dialogs/LabelScene.h"
#include "dialogs/OptionScene.h"
#include "dialogs/SmallCatalog.h"
#include "dialogs/StockScene.h"
#include "dialogs/frmLabelMaintenance.h"
#include "dialogs/frmReportOptions.h"
#include "dialogs/frmReportQuery.h"
#include "dialogs/frmStockCodeTable.h"

namespace quillform::dialogs {
namespace {

using Texts = std::vector<std::string>;

struct Caption {
    const char* name;  // of the control
    const char* text;
};

std::string TextOf(const QWidget& control) { return control.property("text").toString().toStdString(); }

/// The label that stands before a control.
std::string LabelOf(const QWidget& form, const QWidget& control) {
    for (const auto* const label : form.findChildren<QLabel*>())
        if (label->buddy() == &control) return label->text().toStdString();
    return "no label";
}

Texts ItemsOf(const QComboBox& box) {
    Texts items;
    for (int i = 0; i < box.count(); ++i) items.push_back(box.itemText(i).toStdString());
    return items;
}

template <std::size_t count>
void ExpectCaptions(QWidget& form, const Caption (&captions)[count]) {
    for (const auto& [name, text] : captions) EXPECT_EQ(TextOf(Named<QWidget>(form, name)), text) << name;
}

template <std::size_t count>
void ExpectLabels(QWidget& form, const Caption (&captions)[count]) {
    for (const auto& [name, text] : captions) EXPECT_EQ(LabelOf(form, Named<QWidget>(form, name)), text) << name;
}

constexpr Caption measureLabels[] = {{"Custom_0", "Labels Across:"},  {"Custom_1", "Labels Down:"},
                                     {"Custom_2", "Label Height:"},   {"Custom_3", "Label Width:"},
                                     {"Custom_4", "Top Margin:"},     {"Custom_5", "Left Margin"},
                                     {"Custom_6", "Horizontal Gap:"}, {"Custom_7", "Vertical Gap:"}};

/// Where the focus stands after each press of Tab, from `first` until it is there again.
std::string TabOrder(QWidget& form, const char* first) {
    const auto focus = [&] { return form.focusWidget()->objectName().toStdString(); };
    Named<QWidget>(form, first).setFocus();
    std::string order = focus();
    for (int presses = 0; presses < 60; ++presses) {
        Press(*form.focusWidget(), Qt::Key_Tab);
        if (focus() == first) return order;
        order += " " + focus();
    }
    return order + " and no end";
}

class Forms : public ::testing::Test {
protected:
    void Show(QWidget& form) {
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        QTest::qWait(1);
    }
    ScriptedUser user;
    SystemClock clock;
};

class OptionsCaptions : public Forms {
protected:
    OptionsCaptions() {
        form = std::make_unique<frmReportOptions>(scene.layout, user, *scene.engine, [](QWidget&) {});
    }
    testing::OptionScene scene;
    std::unique_ptr<frmReportOptions> form;
};

TEST_F(OptionsCaptions, AreToTheLetter) {
    constexpr Caption captions[] = {
        {"cmdLabels", "Labels"},
        {"cmdBrowse", "Browse"},
        {"SaveCmd", "Save"},
        {"XitCmd", "Exit"},
        {"RptOpt_0", "Print Report to Printer"},
        {"RptOpt_1", "Display Report to Screen"},
        {"RptOpt_2", "Save Report to File (TXT)"},
        {"RptOpt_3", "Rich Text File (RTF)"},
        {"RptOpt_4", "Offload Merge File (CSV)"},
        {"RptOpt_5", "Microsoft Access 1.0 Format (MDB)"},
        {"RptOpt_6", "Microsoft Access 1.1 Format (MDB)"},
        {"RptOpt_7", "Microsoft Access 2.0/2.5 Format(MDB)"},
        {"RptOpt_8", "Microsoft Access 3.0 Format(MDB)"},
        {"RptOpt_9", "Word for Windows Mail Merge (DOC)"},
        {"RptOpt_10", "WordPerfect Mail Merge (DOC)"},
        {"chkDisplayOption",
         "When displaying to screen use 'Courier New' font.  If you select this option you will loose your font"},
        {"Chk_0", " Page Break after Primary Group"},
        {"Chk_1", " Page Break after Primary Group"},
        {"optJoin_0", "Contained in both tables"},
        {"optJoin_1", "Contained in 1st tables"},
        {"optJoin_2", "Contained in 2nd tables"},
        {"optPaperSize_1", "Letter, 8 1/2 x 11in."},
        {"optPaperSize_2", "Letter Small, 8 1/2 x 11 in."},
        {"optPaperSize_3", "Tabloid, 11 x 17 in."},
        {"optPaperSize_4", "Ledger, 17 x 11 in."},
        {"optPaperSize_5", "Legal, 8 1/2 x 14 in."},
        {"optPaperSize_6", "Statement, 5 1/2 x 8 1/2 in."},
        {"optPaperSize_7", "Executive, 7 1/2 x 10 1/2 in."},
        {"optPaperSize_16", "10 x 14 in."},
        {"optPaperSize_19", "Envelope #9, 3 7/8 x 8 7/8 in."},
        {"optPaperSize_20", "Envelope #10, 4 1/8 x 9 1/2"},
        {"optPaperSize_21", "Envelope #11, 4 1/2 x 10 3/8 in."},
        {"optPaperSize_22", "Envelope #12, 4 1/2 x 11 in."},
        {"optPaperSize_23", "Envelope #14, 5 x 11 1/2 in."},
        {"optPaperSize_37", "Envelope Monarch, 3 7/8 x 7 1/2 in."},
        {"optPaperSize_38", "Envelope, 3 5/8 x 6 1/2 in."},
        {"optPaperSize_39", "US Standard Fanfold, 14 7/8 x 11 in."},
        {"optPaperSize_40", "German Std Fanfold, 8 1/2 x 12 in."},
        {"optPaperSize_41", "German Legal Fanfold, 8 1/2 x 13 in."},
    };
    constexpr Caption labels[] = {
        {"NumSpc_0", " # of spaces after group"},
        {"NumSpc_1", " # of spaces after group"},
        {"CharChange_0", "# of characters to change before group breaks"},
        {"CharChange_1", "# of characters to change before group breaks"},
        {"Database_0", "#1."},
        {"Database_6", "#7."},
    };
    ExpectCaptions(*form, captions);
    ExpectLabels(*form, labels);
    ExpectLabels(*form, measureLabels);
    Texts frames;
    for (const auto* const frame : form->findChildren<QGroupBox*>()) frames.push_back(frame->title().toStdString());
    EXPECT_EQ(frames, (Texts{"Primary Group...", "Secondary Group", "Include records if there is data.."}));
    const auto& tabs = *Named<QTabWidget>(*form, "SSTab1").tabBar();
    Texts tabTexts;
    for (int i = 0; i < tabs.count(); ++i) tabTexts.push_back(tabs.tabText(i).toStdString());
    EXPECT_EQ(tabTexts, (Texts{"Output Type", "Grouping", "Database", "Paper Size", "Label Type"}));
}

TEST_F(OptionsCaptions, TabLeadsThroughEveryTab) {
    constexpr const char* parts[] = {
        "RptOpt_0",
        "Chk_0 NumSpc_0 CharChange_0 Chk_1 NumSpc_1 CharChange_1 optJoin_0",
        "Database_0 Database_1 Database_2 Database_3 Database_4 Database_5 Database_6",
        "optPaperSize_1",
        "lstLabels Custom_0 Custom_1 Custom_2 Custom_3 Custom_4 Custom_5 Custom_6 Custom_7",
    };
    Show(*form);
    auto& tabs = Named<QTabWidget>(*form, "SSTab1");
    for (int tab = 0; tab < tabs.count(); ++tab) {
        tabs.setCurrentIndex(tab);
        EXPECT_EQ(TabOrder(*form, "cmdLabels"),
                  std::string("cmdLabels cmdBrowse SaveCmd XitCmd qt_tabwidget_tabbar ") + parts[tab]);
    }
}

TEST_F(Forms, TheQueryBuilderSaysWhatItDoes) {
    const ScratchFolder folder;
    const auto engine = data::MakeEngine(clock);
    Layout layout;
    layout.strAppPath = folder.Path().string() + "/";
    frmReportQuery form(layout, user, *engine, clock);
    constexpr Caption captions[] = {
        {"AddCmd", "Add>>"},  {"EdtCmd", "<<Edit"}, {"DelCmd", "<Delete>"},          {"ClrCmd", "<New>"},
        {"UpCmd", "Up"},      {"DownCmd", "Down"},  {"LFileCmd", "&Load from File"}, {"SFileCmd", "Save to &File"},
        {"SaveCmd", "&Save"}, {"XitCmd", "E&xit"},
    };
    constexpr Caption labels[] = {
        {"Field", "Query Field"}, {"Operation", "Operation"}, {"Value", "Value"}, {"Join", "Join"}};
    ExpectCaptions(form, captions);
    ExpectLabels(form, labels);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("BUILD QUERY"));
    EXPECT_EQ(ItemsOf(Named<QComboBox>(form, "Operation")), (Texts{"=", ">=", "<=", "<>", "<", ">", "LIKE"}));
    EXPECT_EQ(ItemsOf(Named<QComboBox>(form, "Join")), (Texts{"AND", "OR"}));
    EXPECT_EQ(Named<QLineEdit>(form, "Value").maxLength(), 35);
    Show(form);
    EXPECT_EQ(TabOrder(form, "SSTree1"),
              "SSTree1 Field Operation Value Join AddCmd EdtCmd DelCmd ClrCmd Formulas UpCmd DownCmd LFileCmd SFileCmd "
              "SaveCmd XitCmd find");
}

TEST_F(Forms, TheLabelStylesSayWhatTheyHold) {
    const LabelScene scene({"A"});
    frmLabelMaintenance form(scene.Path(), user, *scene.engine);
    constexpr Caption captions[] = {
        {"cmdAdd", "Add"},   {"cmdUpdate", "Update"}, {"cmdDelete", "Delete"}, {"cmdExit", "Exit"},
        {"cmdSave", "Save"}, {"cmdPrev", "Prev>>"},   {"cmdNext", "<<Next"},
    };
    constexpr Caption labels[] = {{"Custom_8", "Label Description:"}, {"cmbPaperSize", "Paper Size:"}};
    ExpectCaptions(form, captions);
    ExpectLabels(form, labels);
    ExpectLabels(form, measureLabels);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Add/Edit/Delete Label Styles"));
    // Not the texts of the report options, which differ in some letters.
    EXPECT_EQ(
        ItemsOf(Named<QComboBox>(form, "cmbPaperSize")),
        (Texts{"Letter, 8 1/2 x 11 in.", "Letter Small, 8 1/2 x 11 in.", "Tabloid, 11 x 17 in.", "Ledger, 17 x 11 in.",
               "Legal, 8 1/2 x 14 in.", "Statement, 5 1/2 x 8 1/2 in.", "Executive, 7 1/2 x 10 1/2 in.", "10 x 14 in.",
               "Envelope #9, 3 7/8 x 8 7/8 in.", "Envelope #10, 4 1/8 x 9 1/2 in.", "Envelope #11, 4 1/2 x 10 3/8 in.",
               "Envelope #12, 4 1/2 x 11 in.", "Envelope #14, 5 x 11 1/2 in.", "Envelope Monarch, 3 7/8 x 7 1/2 in.",
               "Envelope, 3 5/8 x 6 1/2 in.", "US Standard Fanfold, 14 7/8 x 11 in.",
               "German Std. Fanfold, 8 1/2 x 12 in.", "German Legal Fanfold, 8 1/2 x 13 in."}));
    Show(form);
    EXPECT_EQ(TabOrder(form, "cmdAdd"), "cmdAdd cmdUpdate cmdDelete cmdExit cmdPrev cmdNext");
    Click(Named<QWidget>(form, "cmdUpdate"));
    EXPECT_EQ(TabOrder(form, "Custom_8"),
              "Custom_8 Custom_0 Custom_1 Custom_2 Custom_3 Custom_4 Custom_5 Custom_6 Custom_7 cmbPaperSize cmdSave "
              "cmdExit");
}

TEST_F(Forms, TheStartFormSaysWhatItHolds) {
    StockScene scene;
    frmStockCodeTable form(scene.Path(), user, *scene.engine);
    constexpr Caption captions[] = {
        {"cmdAdd", "&Add"},
        {"cmdDelete", "&Delete"},
        {"cmdRefresh", "&Refresh"},
        {"cmdUpdate", "&Update"},
        {"cmdClose", "&Close"},
        {"frmReports", "Reports"},
        {"lblLabels_0", "Stock Code:"},
        {"lblLabels_1", "Stock Code Description:"},
        {"lblLabels_2", "Quantity On Hand:"},
        {"lblLabels_3", "Total Cost:"},
        {"lblLabels_4", "Account #:"},
    };
    ExpectCaptions(form, captions);
    constexpr int limits[] = {15, 30, 32767, 32767, 7};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Named<QLineEdit>(form, ("txtFields_" + std::to_string(i)).c_str()).maxLength(), limits[i]) << i;
    Show(form);
    EXPECT_EQ(TabOrder(form, "txtFields_0"),
              "txtFields_0 txtFields_1 txtFields_2 txtFields_3 txtFields_4 first previous next last frmReports cmdAdd "
              "cmdDelete cmdRefresh cmdUpdate cmdClose");
}

}  // namespace
}  // namespace quillform::dialogs
