#include "output/LabelSheet.h"

#include <algorithm>

#include "platform/RunTimeError.h"

namespace quillform {

namespace {

constexpr double twipsPerInch = 1440;

std::vector<double> Edges(int count, float size, float gap, float margin) {
    std::vector<double> edges;
    for (int k = 0; k < count; ++k) {
        const double inches = (static_cast<double>(size) + static_cast<double>(gap)) * k + static_cast<double>(margin);
        edges.push_back(std::max(inches, 0.0) * twipsPerInch);
    }
    return edges;
}

}  // namespace

LabelSheet::LabelSheet(const ReportSettings& settings)
    : left_(Edges(settings.intLabelsAcross, settings.sngLabelWidth, settings.sngHorizontalGap, settings.sngLeftMargin)),
      top_(Edges(settings.intLabelsDown, settings.sngLabelHeight, settings.sngVerticalGap, settings.sngTopMargin)) {
    if (left_.empty() || top_.empty())
        throw RunTimeError(ErrorNumber::SubscriptOutOfRange,
                           "The label sheet has no labels: labels across and labels down must be 1 or more.");
}

LabelSheet::Step LabelSheet::Advance() {
    if (sheets_ == 0) {
        sheets_ = 1;
        return Step::First;
    }
    if (++column_ < left_.size()) return Step::NextColumn;
    column_ = 0;
    if (++row_ < top_.size()) return Step::NextRow;
    row_ = 0;
    ++sheets_;
    return Step::NextSheet;
}

}  // namespace quillform
