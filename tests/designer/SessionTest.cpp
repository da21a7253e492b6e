// One sitting at the designer, from an empty screen to a printed report, by events alone.

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <filesystem>
#include <map>

#include "designer/FormScene.h"
#include "designer/PreviewPages.h"
#include "designer/SurfaceForms.h"
#include "designer/frmPrintWindow.h"
#include "dialogs/frmReportOptions.h"
#include "persistence/LayoutFile.h"
#include "platform/Text.h"
#include "print/PdfTools.h"
#include "sample/SampleData.h"

namespace quillform::designer {
namespace {

using testing::FormScene;
namespace fs = std::filesystem;

class Session : public FormScene {
protected:
    void Start() {
        layout.InitReportModule();
        sample::WriteSamples(*engine, layout.strAppPath);
        const DesignerServices services{layout, user, *engine, clock, printer};
        DesignerForms forms;
        OfferSurfaceForms(services, forms);
        forms.reportOptions = [this](QWidget& owner, DesignSurface&) {
            dialogs::frmReportOptions(layout, user, *engine, {}, &owner).exec();
        };
        form = std::make_unique<frmCustomReport>(services, std::move(forms));
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    }
    void Choose(const char* entry) { form->findChild<QAction*>(QString::fromLatin1(entry))->trigger(); }

    static void ClickLeaves(QWidget& window, std::initializer_list<const char*> leaves) {
        auto& tree = Named<QTreeWidget>(window, "SSTree1");
        for (const char* const leaf : leaves) ClickNode(tree, NodeOf(tree, leaf));
        quillform::Click(Named<QPushButton>(window, "DoneCmd"));
    }
    static void EnterText(QWidget& window, const char* text, bool isHeading) {
        quillform::Click(Named<QPushButton>(window, "NewCmd"));
        QTest::keyClicks(&Named<QLineEdit>(window, "Text"), QString::fromUtf8(text));
        QTest::mouseClick(&Named<QRadioButton>(window, isHeading ? "Opt_0" : "Opt_1"), Qt::LeftButton, {}, {8, 8});
        quillform::Click(Named<QPushButton>(window, "AddCmd"));
        quillform::Click(Named<QPushButton>(window, "XitCmd"));
    }
    /// Drags an item from its left part so that its corner comes to a cell.
    void MoveTo(int index, double left, double top) {
        const Box box = Pic(index).box;
        Drag(box.left + 0.5, box.top + 0.5, left + 0.5, top + 0.5);
    }
    /// Where each text stands. A load measures the widths anew, and a run sorts the items.
    std::map<std::string, std::pair<double, double>> Places() const {
        std::map<std::string, std::pair<double, double>> places;
        for (const clssFields& item : layout.Fields)
            places[item.Text] = {Pic(item.Index).box.left, Pic(item.Index).box.top};
        return places;
    }
    clssFields& ItemCalled(const char* text) {
        for (clssFields& item : layout.Fields)
            if (item.Text == text) return item;
        throw std::runtime_error(std::string("no item ") + text);
    }
};

TEST_F(Session, FromAnEmptyScreenToAPrintedReport) {
    Start();
    Key(Qt::Key_N, Qt::ControlModifier);
    {
        const Driver driver({[](QWidget& window) {
            ClickLeaves(window, {"Country", "Company", "Page #", "Credit Limit"});
        }});
        Choose("Ins_0");
    }
    ASSERT_EQ(layout.Fields.Count(), 4);
    MoveTo(ItemCalled("Credit Limit").Index, 2, 8);
    {
        const Driver driver({[](QWidget& window) { EnterText(window, "Customers by country", true); }});
        Choose("Ins_1");
    }
    ASSERT_EQ(layout.Fields.Count(), 5);

    // Heading above, data below.
    const int country = ItemCalled("Country").Index;
    const int company = ItemCalled("Company").Index;
    const int heading = ItemCalled("Customers by country").Index;
    const int page = ItemCalled("Page #").Index;
    MoveTo(company, 24, 4);
    MoveTo(country, 2, 4);
    MoveTo(page, 60, 0);
    MoveTo(heading, 2, 0);
    MoveTo(ItemCalled("Credit Limit").Index, 66, 4);
    EXPECT_EQ(ItemCalled("Company").Left, 24);
    EXPECT_EQ(ItemCalled("Company").Top, 4);
    EXPECT_EQ(ItemCalled("Customers by country").Top, 0);

    // Wider by its right edge, then in another colour and bold.
    const Box box = Pic(company).box;
    Drag(box.Right() - 0.2, box.top + 0.5, box.left + 30, box.top + 0.5);
    EXPECT_EQ(ItemCalled("Company").Length, 30);
    Click(24.5, 4.5);
    quillform::Click(Control("Toolbar3_0_1"));
    quillform::Click(Control("ColorPic1"));
    EXPECT_TRUE(ItemCalled("Company").FontBold);
    EXPECT_EQ(ItemCalled("Company").FontForeColor, 1);

    // Sorted by country, companies by name, limits added up; the options open by the other button.
    const std::pair<double, std::vector<const char*>> options[] = {
        {2.5, {"Chk_2"}}, {24.5, {"Chk_3"}}, {66.5, {"Chk_0", "Chk_1"}}};
    for (const auto& [left, checks] : options) {
        const Driver driver({[&checks = checks](QWidget& window) {
            for (const char* const check : checks)
                QTest::mouseClick(&Named<QCheckBox>(window, check), Qt::LeftButton, {}, {8, 8});
            quillform::Click(Named<QPushButton>(window, "DoneCmd"));
        }});
        Click(left, 4.5, Qt::RightButton);
    }
    EXPECT_TRUE(ItemCalled("Country").PrimarySort);
    EXPECT_TRUE(ItemCalled("Company").SecondarySort);
    EXPECT_TRUE(ItemCalled("Credit Limit").SubTotalFlag1);
    EXPECT_TRUE(ItemCalled("Credit Limit").GrandTotalFlag);

    user.chosen = folder.File("CUSTOMERS.REP");
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(user.messages, (std::vector<std::string>{"Report Layout Saved"}));
    Layout saved;
    saved.ClearLayout();
    const auto measure = print::MakeTextMeasure();
    ASSERT_TRUE(LoadLayout(folder.File("CUSTOMERS.REP"), saved, *measure, user));
    EXPECT_EQ(saved.Fields.Count(), 5);

    // The printer's pages, in a file.
    user.messages.clear();
    user.chosen = folder.File("CUSTOMERS.PDF");
    Key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(user.messages.empty()) << user.messages.front();
    ASSERT_TRUE(fs::exists(folder.File("CUSTOMERS.PDF")));
    const std::string text = print::RunTool("pdftotext -layout '" + folder.File("CUSTOMERS.PDF") + "' -").output;
    EXPECT_NE(text.find("Customers by country"), std::string::npos);

    // The same on the screen, from the saved layout.
    const auto places = Places();
    user.chosen = folder.File("CUSTOMERS.REP");
    Key(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(form->windowTitle().toStdString(), "Custom Report - " + UpperCase(*user.chosen));
    EXPECT_EQ(Places(), places);
    {
        const Driver driver({[](QWidget& window) {
            QTest::mouseClick(&Named<QRadioButton>(window, "RptOpt_1"), Qt::LeftButton, {}, {8, 8});
            quillform::Click(Named<QPushButton>(window, "SaveCmd"));
        }});
        Choose("Edt_0");
    }
    std::string preview;
    {
        const Driver driver({[&](QWidget& window) {
            auto& printWindow = dynamic_cast<frmPrintWindow&>(window);
            EXPECT_TRUE(QTest::qWaitFor([&] { return printWindow.Text1().IsLaidOut(); }));
            preview = printWindow.Text1().Text();
            quillform::Press(window, Qt::Key_Escape);
        }});
        Key(Qt::Key_R, Qt::ControlModifier);
    }
    EXPECT_NE(preview.find("Customers by country"), std::string::npos);

    // Both show every customer of the database.
    const auto database = engine->OpenDatabase(layout.strAppPath + "Sample.mdb", Access::ReadOnly);
    const auto limits = database->OpenRecordset("SELECT Sum([Credit Limit]) FROM Customers", RecordsetType::Snapshot);
    std::string digits = text;
    std::erase(digits, ',');
    EXPECT_NE(digits.find(limits->Text(0)), std::string::npos) << limits->Text(0);
    const auto customers = database->OpenRecordset("SELECT [Company Name] FROM Customers", RecordsetType::Snapshot);
    ASSERT_TRUE(customers->HasRows());
    for (; !customers->IsEOF(); customers->MoveNext()) {
        EXPECT_NE(text.find(customers->Text(0)), std::string::npos) << customers->Text(0);
        EXPECT_NE(preview.find(customers->Text(0)), std::string::npos) << customers->Text(0);
    }
}

}  // namespace
}  // namespace quillform::designer
