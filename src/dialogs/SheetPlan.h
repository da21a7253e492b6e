#pragma once

#include <string>
#include <vector>

#include "dialogs/LabelStyles.h"

namespace quillform::dialogs {

/// Where the labels of a style stand on its sheet, and what is wrong with it; lengths in inches from the sheet's upper
/// left corner.
struct SheetPlan {
    struct Label {
        double left = 0;
        double top = 0;
        bool isOnSheet = false;  ///< whole
    };
    double paperWidth = 0;
    double paperHeight = 0;
    double labelWidth = 0;
    double labelHeight = 0;
    std::vector<Label> labels;  ///< in the order in which records fill them; no more than a picture can show
    bool isWrong = false;
    std::string sentence;  ///< the first thing that is wrong; else how many labels there are
};

/// The plan of a style as it is typed, by the rules that reports place labels by. Of labels that stand wholly beside
/// the sheet none are listed.
SheetPlan PlanSheet(const LabelStyle& style);

}  // namespace quillform::dialogs
