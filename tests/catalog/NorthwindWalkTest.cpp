// A person's walk through a whole database, with Back on every kind of page, over copies of the shared samples.
#include <gtest/gtest.h>

#include <filesystem>

#include "catalog/AnswersFile.h"
#include "catalog/CatalogFixture.h"
#include "catalog/RecordingPage.h"
#include "catalog/Unattended.h"

namespace quillform {
namespace {

using testing::ScriptedPage;
using Lines = std::vector<std::string>;

class NorthwindWalk : public testing::CatalogFixture, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        const std::filesystem::path sample =
            std::filesystem::path(QUILLFORM_SOURCE_DIR "/../shared/jet/samples") / GetParam();
        if (!std::filesystem::exists(sample)) GTEST_SKIP() << "the shared sample databases aren't beside the project";
        std::filesystem::copy_file(sample, path_);
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
        std::filesystem::copy_file(path_, replayed_);
    }
    std::string replayed_ = folder_.File("replayed.db");
};

void Append(Lines& answers, const Lines& more) { answers.insert(answers.end(), more.begin(), more.end()); }
void AppendNo(Lines& answers, std::size_t count) { answers.insert(answers.end(), count, "no"); }

Lines FieldAnswers() {
    Lines answers;
    // Categories: CategoryID
    Append(answers, {"yes", "back", "yes", "yes", "back", "yes", "yes", "back", "yes", "=Category", "back", "=Category",
                     "=0", "back", "=##0"});
    Append(answers, {"yes", "back", "yes", "=Count(Field)", "back", "=Count(Field)", "=0", "back", "=#,##0",
                     "=CategoryCount", "back", "=CategoryCount", "=Number", "back", "=Categories", "=(None)"});
    // CategoryName, Description, Picture
    Append(answers, {"yes", "no", "yes", "=Left$(Field, Position)", "back", "=Mid$(Field, Position, Length)", "=1",
                     "back", "=2", "=3", "back", "=4", "=Part", "=Part of the name", "="});
    Append(answers, {"yes", "yes", "next", "=@", "no", "no"});
    // Customers: CustomerID, CompanyName, nine more
    Append(answers, {"yes", "yes", "yes", "=Code", "back", "=Code", "yes", "back", "yes", "=2", "=yyyy", "back", "=yy",
                     "=mm", "no"});
    Append(answers, {"back", "no", "yes", "yes", "=Customer", "back", "=Customer", "=>", "no"});
    AppendNo(answers, 9);
    // Employees, Order Details
    AppendNo(answers, 2);
    // Orders: three fields, OrderDate, three fields, Freight, six fields
    Append(answers, {"yes", "no", "no", "no"});
    Append(answers,
           {"yes", "yes", "=Ordered", "back", "=Ordered", "next", "=mmmm yyyy", "back", "=mmmm", "=", "=", "no"});
    AppendNo(answers, 3);
    Append(answers, {"yes", "yes", "next", "=#,##0.00", "yes", "=Sum(Field)", "=#,##0.00", "=FreightSum",
                     "=Freight in all", "=(None)"});
    AppendNo(answers, 6);
    // Products: nine fields, Discontinued
    Append(answers, {"yes"});
    AppendNo(answers, 9);
    Append(answers, {"yes", "yes", "=Gone", "back", "no"});
    // Shippers by way of Back, Suppliers
    Append(answers, {"back", "no", "no", "no", "no"});
    return answers;
}

Lines LinkAnswers() {
    Lines answers = {"back", "=", "no", "no", "no", "yes", "CategoryID=CategoryID", "no", "no"};     // Categories
    Append(answers, {"no", "no", "yes", "back", "yes", "CustomerID=CustomerID", "no", "no", "no"});  // Customers
    AppendNo(answers,
             5 + 4 + 3 + 2 + 1);  // Employees, Order Details, Orders, Products, Shippers with those behind them
    return answers;
}

const Lines expectedRows = {
    "1|Categories|CategoryID|Category|3|##0|True|False|False| |0| | | ",
    "2|Categories|CategoryID|Categories|5|#,##0|True|False|True|CategoryCount|5|  |  |  ",
    "3|Categories|CategoryName|Part of the name|4| |False|False|True|Part|1| 2| 4|  ",
    "4|Categories|Description|Description|1|@|True|False|False| |0| | | ",
    "5|Customers|CustomerID|Code(yy)|2|yy|False|True|False| |0| | | ",
    "6|Customers|CustomerID|Code(mm)|2|mm|False|True|False| |0| | | ",
    "7|Customers|CompanyName|Customer|40| >|False|False|False| |0| | | ",
    "8|Orders|OrderDate|Ordered (mm/dd/yyyy)|10|mm/dd/yyyy|False|False|False| |0| | | ",
    "9|Orders|OrderDate|Ordered (mmmm)|9|mmmm|False|False|False| |0| | | ",
    "10|Orders|Freight|Freight|8|#,##0.00|True|False|False| |0| | | ",
    "11|Orders|Freight|Freight in all|8|#,##0.00|True|False|True|FreightSum|4|  |  |  ",
    "12|Products|Discontinued|Gone|5| |False|False|False| |0| | | ",
};
const Lines expectedLinks = {"Categories|CategoryID|Products|CategoryID", "Customers|CustomerID|Orders|CustomerID"};

TEST_P(NorthwindWalk, GivesTheRowsOfItsAnswersAndSoDoesItsRecording) {
    Lines answers = FieldAnswers();
    Append(answers, LinkAnswers());
    ScriptedPage page(answers);
    RecordingPage recording(page);
    Configure(recording);
    EXPECT_EQ(user_.told, Lines{});
    EXPECT_EQ(user_.warnings, Lines{});
    EXPECT_EQ(IndexRows(), expectedRows);
    EXPECT_EQ(RelationRows(), expectedLinks);
    EXPECT_EQ(Rows("Report - Index", "[Database]"), Lines(expectedRows.size(), path_));
    EXPECT_EQ(Rows("Report - Labels", "*"), Lines{});

    const std::string file = AnswersText(recording.Recorded(*engine_->OpenDatabase(path_)));
    path_ = replayed_;
    const ConfigurationReport report =
        ConfigureByAnswers(*engine_->OpenDatabase(path_), path_, ParseAnswers(file, "answers.txt"));
    EXPECT_EQ(report.notes, Lines{});
    EXPECT_EQ(AnswersText(report.answered), file);
    EXPECT_EQ(IndexRows(), expectedRows);
    EXPECT_EQ(RelationRows(), expectedLinks);
}

INSTANTIATE_TEST_SUITE_P(Samples, NorthwindWalk, ::testing::Values("jet3-northwind.mdb", "jet4-northwind.mdb"),
                         [](const auto& sample) { return std::string(sample.param, 4); });

}  // namespace
}  // namespace quillform
