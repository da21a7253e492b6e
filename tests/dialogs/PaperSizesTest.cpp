#include <gtest/gtest.h>

#include "dialogs/PaperSizes.h"
#include "model/DesignGrid.h"

namespace quillform::dialogs {
namespace {

TEST(PaperSizes, EverySheetThatCanBeChosenHasItsMeasures) {
    for (const PaperSize& size : paperSizes) {
        PaperInches paper;
        EXPECT_TRUE(FindPaper(size.number, paper)) << size.optionText;
    }
}

}  // namespace
}  // namespace quillform::dialogs
