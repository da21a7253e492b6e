#include <gtest/gtest.h>

#include <algorithm>

#include "catalog/CommonSheets.h"
#include "dialogs/LabelScene.h"
#include "dialogs/SheetPlan.h"

namespace quillform::dialogs {
namespace {

LabelStyle Sheet(std::array<std::string, 8> measures, std::optional<int> paper = 1) {
    return {"A", std::move(measures), paper};
}
const LabelStyle address = Sheet({"3", "10", "1", "2.625", "0.5", "0.188", "0.125", "0"});

TEST(SheetPlan, PutsTheLabelsWhereReportsPutThem) {
    const SheetPlan plan = PlanSheet(address);
    EXPECT_EQ(plan.sentence, "30 labels on the sheet.");
    EXPECT_FALSE(plan.isWrong);
    ASSERT_EQ(plan.labels.size(), 30U);
    EXPECT_NEAR(plan.labels[4].left, 0.188 + 2.75, 1e-9);  // second in the second row
    EXPECT_NEAR(plan.labels[4].top, 1.5, 1e-9);
    EXPECT_EQ(plan.paperWidth, 8.5);
    EXPECT_EQ(PlanSheet(Sheet(address.measures, 4)).paperWidth, 17);
}

TEST(SheetPlan, AllCommonSheetsAreSoundAsTheyAreShown) {
    const LabelScene scene({});
    AddSheets(*scene.engine->OpenDatabase(scene.Path()), commonSheets);
    LabelStyles styles(*scene.engine, scene.Path());
    for (std::size_t i = 0; i < commonSheets.size(); ++i) {
        const SheetPlan plan = PlanSheet(styles.Current());
        EXPECT_FALSE(plan.isWrong) << styles.Current().description << ": " << plan.sentence;
        for (const SheetPlan::Label& label : plan.labels) EXPECT_TRUE(label.isOnSheet);
        styles.MoveNext();
    }
}

TEST(SheetPlan, SaysTheFirstThingThatIsWrong) {
    struct Case {
        LabelStyle style;
        const char* sentence;
        std::size_t whole;   ///< labels that are whole on the sheet
        std::size_t listed;  ///< and those that are cut, too
    };
    const Case cases[] = {
        {Sheet({"3", "10", "1", "3", ".5", ".2", "0", ""}), "The labels need 9.2 inches across, the sheet has 8.5.", 20,
         30},
        {Sheet({"3", "11", "1", "2", ".5", ".2", "0", ""}), "The labels need 11.5 inches down, the sheet has 11.", 30,
         33},
        {Sheet({"99999", "99", "1", "2", ".5", ".2", "0", ""}), "Labels Across: \"99999\" is too large.", 40, 55},
        {Sheet({"2", "2", "1 1/3", "2", ".5", ".2", "0", ""}),
         "Label Height: \"1 1/3\" counts as 11.  Write the number with a point, such as 1.333.", 0, 2},
        {Sheet({"2", "2", "1", "2,5", ".5", ".2", "0", ""}),
         "Label Width: \"2,5\" counts as 2.  Write the number with a point, such as 1.333.", 4, 4},
        {Sheet({"2", "2", "1", "2", "9e999", ".2", "0", ""}), "Top Margin: \"9e999\" is too large.", 4, 4},
        {Sheet({"0", "2", "1", "2", ".5", ".2", "0", ""}), "Labels Across and Labels Down must be 1 or more.", 0, 0},
        {Sheet({"2", "2", "0", "2", ".5", ".2", "0", ""}), "Label Height and Label Width must be more than 0.", 0, 0},
        {Sheet({"2", "2", "1", "2", ".5", ".2", "-1", ""}), "The labels overlap: a gap is less than 0.", 4, 4},
        {Sheet({"2", "2", "1", "2", "-.5", ".2", "0", ""}), "The labels begin off the sheet: a margin is less than 0.",
         4, 4},
        {Sheet({"2", "2", "1", "2", ".5", ".2", "0", ""}, {}),
         "No paper size is chosen; such labels are printed on Letter paper.", 4, 4},
        {Sheet({"2", "2", "1", "2", ".5", ".2", "0", ""}, 9),
         "No paper here has the stored number 9; such labels are printed on Letter paper.", 4, 4},
    };
    for (const Case& wrong : cases) {
        const SheetPlan plan = PlanSheet(wrong.style);
        EXPECT_EQ(plan.sentence, wrong.sentence);
        EXPECT_TRUE(plan.isWrong);
        EXPECT_EQ(plan.labels.size(), wrong.listed) << wrong.sentence;
        EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(plan.labels, true, &SheetPlan::Label::isOnSheet)),
                  wrong.whole)
            << wrong.sentence;
    }
}

TEST(SheetPlan, HasNoFaultsBeforeItIsTyped) {
    EXPECT_FALSE(PlanSheet({}).isWrong);
    EXPECT_FALSE(PlanSheet(Sheet({"3", "10", "1", "", "", "", "", ""})).isWrong);
    LabelStyle begun = address;
    begun.measures[7] = ".";
    EXPECT_FALSE(PlanSheet(begun).isWrong);
}

}  // namespace
}  // namespace quillform::dialogs
