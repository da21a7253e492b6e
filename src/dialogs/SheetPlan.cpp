#include "dialogs/SheetPlan.h"

#include <algorithm>
#include <cmath>

#include "dialogs/PaperSizes.h"
#include "platform/Numbers.h"
#include "print/PdfTarget.h"

namespace quillform::dialogs {

namespace {

constexpr double twipsPerInch = 1440;
/// Measures are typed with few digits, and no cutter of labels is more exact.
constexpr double tolerance = 0.01;
/// In one direction: as many as can be told apart in a picture.
constexpr double mostShown = 100;

enum Box : std::size_t { Across, Down, Height, Width, TopMargin, LeftMargin, HorizontalGap, VerticalGap };

using Measures = std::array<double, labelMeasures.size()>;

/// Whether there is anything to draw and judge yet.
bool IsIncomplete(const LabelStyle& style) {
    const auto needed = {Across, Down, Height, Width};
    return std::ranges::any_of(needed, [&](Box box) { return style.measures[box].empty(); });
}

/// From the first label's edge to the last one's.
double Extent(double margin, double count, double size, double gap) {
    return std::max(margin, 0.0) + count * size + (count - 1) * gap;
}

std::string NumbersProblem(const Measures& m) {
    if (m[Across] < 1 || m[Down] < 1) return "Labels Across and Labels Down must be 1 or more.";
    if (m[Height] <= 0 || m[Width] <= 0) return "Label Height and Label Width must be more than 0.";
    if (m[HorizontalGap] < 0 || m[VerticalGap] < 0) return "The labels overlap: a gap is less than 0.";
    if (m[TopMargin] < 0 || m[LeftMargin] < 0) return "The labels begin off the sheet: a margin is less than 0.";
    return {};
}

std::string SizeProblem(const Measures& m, const SheetPlan& plan) {
    const auto tooMuch = [](double needed, double there, std::string_view direction) {
        if (needed <= there + tolerance) return std::string();
        return "The labels need " + MeasureText(std::round(needed * 100) / 100) + " inches " + std::string(direction) +
               ", the sheet has " + MeasureText(there) + ".";
    };
    const std::string across =
        tooMuch(Extent(m[LeftMargin], m[Across], m[Width], m[HorizontalGap]), plan.paperWidth, "across");
    if (!across.empty()) return across;
    return tooMuch(Extent(m[TopMargin], m[Down], m[Height], m[VerticalGap]), plan.paperHeight, "down");
}

std::string PaperProblem(std::optional<int> paper) {
    if (!paper) return "No paper size is chosen; such labels are printed on Letter paper.";
    if (*paper == 0) return "The style is stored without a paper size; such labels are printed on Letter paper.";
    if (std::ranges::find(paperSizes, *paper, &PaperSize::number) != paperSizes.end()) return {};
    return "No paper here has the stored number " + std::to_string(*paper) +
           "; such labels are printed on Letter paper.";
}

/// Edges as reports place them: whole counts, and none before the sheet's own edge.
std::vector<double> Edges(double count, double size, double gap, double margin, double paper) {
    std::vector<double> edges;
    for (int k = 0; k < std::min(count, mostShown); ++k) {
        const double edge = std::max((size + gap) * k + margin, 0.0);
        if (edge >= paper) break;
        edges.push_back(edge);
    }
    return edges;
}

void PlaceLabels(const Measures& m, SheetPlan& plan) {
    plan.labelWidth = m[Width];
    plan.labelHeight = m[Height];
    if (m[Width] <= 0 || m[Height] <= 0) return;
    const std::vector<double> lefts = Edges(m[Across], m[Width], m[HorizontalGap], m[LeftMargin], plan.paperWidth);
    for (const double top : Edges(m[Down], m[Height], m[VerticalGap], m[TopMargin], plan.paperHeight))
        for (const double left : lefts)
            plan.labels.push_back(
                {left, top,
                 left + m[Width] <= plan.paperWidth + tolerance && top + m[Height] <= plan.paperHeight + tolerance});
}

}  // namespace

SheetPlan PlanSheet(const LabelStyle& style) {
    SheetPlan plan;
    const print::PaperSize paper = print::PaperSizeOf(style.paper.value_or(0));
    plan.paperWidth = paper.widthTwips / twipsPerInch;
    plan.paperHeight = paper.heightTwips / twipsPerInch;
    if (IsIncomplete(style)) {
        plan.sentence = "The measures of a sheet stand on its packet, in inches.";
        return plan;
    }
    Measures measures{};
    std::ranges::transform(style.measures, measures.begin(),
                           [](const std::string& text) { return StoredMeasure(text).value_or(0); });
    for (const Box count : {Across, Down}) measures[count] = RoundHalfEven(measures[count]);
    PlaceLabels(measures, plan);
    for (const std::string& problem : {ReadingProblem(style.measures), PaperProblem(style.paper),
                                       NumbersProblem(measures), SizeProblem(measures, plan)}) {
        if (problem.empty()) continue;
        plan.isWrong = true;
        plan.sentence = problem;
        return plan;
    }
    const double count = measures[Across] * measures[Down];
    plan.sentence = count == 1 ? "1 label on the sheet." : MeasureText(count) + " labels on the sheet.";
    return plan;
}

}  // namespace quillform::dialogs
