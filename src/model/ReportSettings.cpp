#include "model/ReportSettings.h"

namespace quillform {

OutputType OutputTypeOfOption(int reportOption) {
    switch (reportOption) {
        case 1:
            return OutputType::Screen;
        case 2:
            return OutputType::Text;
        case 3:
            return OutputType::RichText;
        case 4:
            return OutputType::CommaSeparated;
        case 5:
        case 6:
        case 7:
        case 8:
            return OutputType::AccessDatabase;
        case 9:
            return OutputType::WordMerge;
        case 10:
            return OutputType::WordPerfectMerge;
        default:
            return OutputType::Printer;
    }
}

JoinRule JoinRuleOf(int joinType) {
    if (joinType == 0) return JoinRule::Inner;
    return joinType == 1 ? JoinRule::Left : JoinRule::Right;
}

}  // namespace quillform
