#include "model/DesignGrid.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/Numbers.h"

namespace quillform {

namespace {

struct PaperRow {
    int number;
    PaperInches inches;
};
constexpr PaperRow paperRows[] = {
    {1, {8.5, 11}},      {2, {8.5, 11}},   {3, {11, 17}},   {4, {17, 11}},        {5, {8.5, 14}},
    {6, {5.5, 8.5}},     {7, {7.5, 10.5}}, {16, {10, 14}},  {19, {3.875, 8.875}}, {20, {4.125, 9.5}},
    {21, {4.5, 10.375}}, {22, {4.5, 11}},  {23, {5, 11.5}}, {37, {3.875, 7.5}},   {38, {3.625, 6.5}},
    {39, {14.875, 11}},  {40, {8.5, 12}},  {41, {8.5, 13}},
};

constexpr double defaultFontSize = 10;    // points
constexpr double largestFontSize = 2160;  // points, the platform's limit

constexpr double viewportColumns = 76;  // widest viewport of the surface
constexpr double viewportInset = 0.5;   // what a narrower viewport loses of its inner width

}  // namespace

FontSpec FontOf(const clssFields& item) {
    // A size that no font can be set to leaves the item at the size that new items have.
    const bool canBeSet = item.FontSize > 0 && item.FontSize <= largestFontSize;
    return {item.FontName, canBeSet ? item.FontSize : defaultFontSize, item.FontBold, item.FontItalic,
            item.FontUnderline};
}

ItemSize MeasureItem(const clssFields& item, TextMeasure& measure) {
    const FontId font = measure.Font(FontOf(item));
    const std::size_t letters = item.Length > 0 ? static_cast<std::size_t>(item.Length) : 0;
    const double width = measure.TextWidth(font, std::string(letters, 'X'));
    const double height = measure.TextHeight(font);
    return {static_cast<float>(std::ceil(width / intColumnTwips)), static_cast<float>(std::ceil(height / intRowTwips))};
}

void SetItemTwips(clssFields& item, const ItemSize& size) {
    item.TwipStart = CInt(static_cast<double>(item.Left) * intColumnTwips);
    item.TwipEnd = CInt((static_cast<double>(item.Left) + static_cast<double>(size.columns)) * intColumnTwips);
    item.TwipTop = CInt(static_cast<double>(item.Top) * intRowTwips);
    item.TwipBottom = CInt((static_cast<double>(item.Top) + static_cast<double>(size.rows)) * intRowTwips);
}

double PageColumns(const ReportSettings& settings) {
    double columns;
    if (settings.boolLabels) {
        columns = static_cast<double>(settings.sngLabelWidth) * 12;
    } else {
        PaperInches paper;
        FindPaper(settings.intPaperSize, paper);
        columns = (settings.intOrientation == 0 ? paper.height : paper.width) * 12;
    }
    if (columns < viewportColumns) return std::max(0.0, std::floor(columns) - viewportInset);
    return std::floor(columns - viewportColumns) + viewportColumns;
}

bool FindPaper(int paperNumber, PaperInches& paper) {
    for (const PaperRow& row : paperRows)
        if (row.number == paperNumber) {
            paper = row.inches;
            return true;
        }
    return false;
}

}  // namespace quillform
