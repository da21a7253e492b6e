#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <filesystem>
#include <set>

#include "catalog/AnswersFile.h"
#include "catalog/CatalogFixture.h"
#include "catalog/RecordingPage.h"
#include "catalog/Unattended.h"
#include "catalog/frmRptWizard.h"
#include "desktop/Driver.h"

namespace quillform {
namespace {

using testing::CatalogFixture;
using testing::ScriptedPage;
using Lines = std::vector<std::string>;

void operator+=(Lines& all, const Lines& more) { all.insert(all.end(), more.begin(), more.end()); }

/// Goes back once from every kind of page, in the words of ScriptedPage. Only Orders and Products take part.
Lines OrdersScript() {
    const std::string mid = "=Mid$(Field, Position, Length)";
    Lines script = {"yes", "back", "yes"};  // table, first field back, table
    script += {"yes",           "back",
               "yes",           "yes",
               "back",          "yes",
               "=Order",        "back",
               "=Order number",  // OrderID
               "next",          "back",
               "next",          "yes",
               "back",          "yes",
               "=Count(Field)", "back",
               "=Count(Field)", "next",
               "back",          "next",
               "=Orders",       "back",
               "=Orders",       "=Number of orders",
               "back",          "=Number of orders",
               "next"};
    script += {"back",
               "=Count of orders",
               "next",  // back from CustomerID into OrderID's formula
               "yes",
               "yes",
               "=Customer",
               "back",
               "=Customer",
               "no",
               "back",
               "=Customer",
               "no",
               "next",
               "yes",
               mid,
               "back",
               mid,
               "=1",
               "back",
               "=1",
               "=2",
               "back",
               "=2",
               "=Customer Letters",
               "=First letters",
               "=(None)"};
    script += {"no",  // EmployeeID
               "yes",  "yes",  "=Ordered", "back", "=Ordered", "next", "back",
               "next", "next", "=",        "=",    "back",     "=",    "no"};  // OrderDate
    script += {"no", "no", "no"};                                              // RequiredDate, ShippedDate, ShipVia
    script += {"yes", "no", "back", "no", "no"};                               // Freight
    script += {"no", "no", "no", "no"};                                        // ShipName to ShipRegion
    script += {"yes",  "yes", "=Code", "yes",  "back",  "yes", "=2",
               "back", "=2",  "=yyyy", "back", "=yyyy", "=mm", "no"};  // ShipPostalCode
    script += {"no"};                                                  // ShipCountry
    return script;
}

Lines NorthwindScript() {
    Lines script = {"back", "back", "no", "no", "no", "no"};  // Categories, Customers, Employees, Order Details
    script += OrdersScript();
    script += {"yes"};  // Products
    script += Lines(9, "no");
    script += {"yes", "yes", "=Gone", "back", "no"};                        // Discontinued
    script += {"no", "no"};                                                 // Shippers, Suppliers
    script += {"back", "next"};                                             // Categories with Customers: nothing picked
    script += Lines(6, "no");                                               // Categories with the others
    script += {"no", "no", "yes", "back", "yes", "CustomerID=CustomerID"};  // Customers with Orders
    script += Lines(18, "no");
    return script;
}

/// Gives the answer to the page that is shown, with keys and mouse.
void Answer(QWidget& form, const std::string& answer) {
    auto& reply = Named<QLineEdit>(form, "txtResponse");
    const auto pick = [&](const char* name, const std::string& entry) {
        auto& list = Named<QComboBox>(form, name);
        list.setFocus();
        for (int i = 0; i < list.count() && list.currentText().toStdString() != entry; ++i) Press(list, Qt::Key_Down);
        EXPECT_EQ(list.currentText().toStdString(), entry);
    };
    const std::size_t middle = answer.find('=');
    if (answer == "yes" || answer == "no") return Click(Named<QPushButton>(form, answer == "yes" ? "cmdYes" : "cmdNo"));
    if (answer == "back") return Click(Named<QPushButton>(form, "cmdBack"));
    if (middle > 0 && middle != std::string::npos) {
        pick("cmbTable1", answer.substr(0, middle));
        pick("cmbTable2", answer.substr(middle + 1));
    } else if (answer != "next" && reply.isVisible()) {
        Press(Qt::Key_Delete);  // what is proposed is selected
        Type(answer.c_str() + 1);
    } else if (answer != "next") {
        pick("cmbTable1", answer.substr(1));
    }
    Press(Qt::Key_Return);
}

class NorthwindWizard : public CatalogFixture {
protected:
    bool Copy(const char* name) {
        const auto source = std::filesystem::path(QUILLFORM_SOURCE_DIR) / "../shared/jet/samples/jet4-northwind.mdb";
        if (!std::filesystem::exists(source)) return false;
        path_ = folder_.File(name);
        std::filesystem::copy_file(source, path_);
        std::filesystem::permissions(path_, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
        return true;
    }
};

TEST_F(NorthwindWizard, WalkByEventsGivesTheRowsOfTheScript) {
    if (!Copy("form.mdb")) GTEST_SKIP() << "the shared sample databases aren't here";
    std::string recorded;
    {
        std::vector<Driver::Step> steps;
        for (const std::string& answer : NorthwindScript())
            steps.emplace_back([answer](QWidget& form) { Answer(form, answer); });
        const Driver driver(std::move(steps));
        frmRptWizard form(*engine_, path_);
        RecordingPage recording(form);
        Configure(recording);
        EXPECT_TRUE(recording.GivesAllRows());
        recorded = AnswersText(recording.Recorded(*engine_->OpenDatabase(path_)));
    }
    const Lines byForm = IndexRows();
    EXPECT_EQ(byForm, (Lines{
                          "1|Orders|OrderID|Order number|11|###,###,##0|True|False|False| |0| | | ",
                          "2|Orders|OrderID|Count of orders|11|###,###,##0|True|False|True|Orders|5|  |  |  ",
                          "3|Orders|CustomerID|Customer|5| |False|False|False| |0| | | ",
                          "4|Orders|CustomerID|First letters|2| |False|False|True|Customer Letters|1| 1| 2|  ",
                          "5|Orders|OrderDate|Ordered (mm/dd/yyyy)|10|mm/dd/yyyy|False|False|False| |0| | | ",
                          "6|Orders|ShipPostalCode|Code(yyyy)|4|yyyy|False|True|False| |0| | | ",
                          "7|Orders|ShipPostalCode|Code(mm)|2|mm|False|True|False| |0| | | ",
                          "8|Products|Discontinued|Gone|5| |False|False|False| |0| | | ",
                      }));
    const Lines linksByForm = RelationRows();
    EXPECT_EQ(linksByForm, Lines{"Customers|CustomerID|Orders|CustomerID"});

    ASSERT_TRUE(Copy("script.mdb"));
    ScriptedPage page(NorthwindScript());
    Configure(page);
    EXPECT_EQ(IndexRows(), byForm);
    EXPECT_EQ(RelationRows(), linksByForm);
    std::set<std::string> kinds;  // of the pages that Back was pressed on
    const Lines script = NorthwindScript();
    for (std::size_t i = 0; i < script.size(); ++i)
        if (script[i] == "back") kinds.insert(page.shown[i].substr(0, page.shown[i].find(' ')));
    EXPECT_EQ(kinds.size(), static_cast<std::size_t>(WizardQuestion::LinkColumns) + 1);

    ASSERT_TRUE(Copy("replayed.mdb"));
    ConfigureByAnswers(*engine_->OpenDatabase(path_), path_, ParseAnswers(recorded, "recorded"));
    EXPECT_EQ(IndexRows(), byForm);
    EXPECT_EQ(RelationRows(), linksByForm);
}

}  // namespace
}  // namespace quillform
