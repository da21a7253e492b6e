#include "designer/SurfaceGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "model/DesignGrid.h"
#include "platform/Numbers.h"

namespace quillform::designer {

namespace {

constexpr double columnsPerInch = 12;
constexpr double rowsPerInch = 6;
constexpr double fullColumns = 76;
constexpr double fullRows = 20;
constexpr double gapBeforeScrollBar = 0.1;

/// A broken label size may be any number; what a scroll bar can't count to is its end.
int ScrollRange(double cells) {
    return static_cast<int>(std::clamp(cells, 0.0, static_cast<double>(std::numeric_limits<std::int16_t>::max())));
}

double WholeCells(double cells) { return std::max(1.0, std::floor(cells)); }

void Narrow(Viewport& viewport, double columns) {
    viewport.box.width = WholeCells(columns);
    viewport.ScaleWidth = viewport.box.width - 0.5;
}

void FitToPaper(SurfaceGeometry& surface, const ReportSettings& settings) {
    PaperInches paper;
    if (!FindPaper(settings.intPaperSize, paper)) return;
    if (settings.intOrientation == 0) std::swap(paper.width, paper.height);
    const double columns = columnsPerInch * paper.width;
    const double rows = rowsPerInch * paper.height;
    if (columns < fullColumns) Narrow(surface.Picture2, columns);
    surface.HScroll1.Max = ScrollRange(std::floor(columns - fullColumns));
    surface.VScroll1.Max = ScrollRange(std::floor(rows - fullRows));
}

void FitToLabel(SurfaceGeometry& surface, const ReportSettings& settings) {
    const double columns = columnsPerInch * static_cast<double>(settings.sngLabelWidth);
    const double rows = rowsPerInch * static_cast<double>(settings.sngLabelHeight);
    if (rows < fullRows) {
        surface.Picture2.box.height = WholeCells(rows);
        surface.Picture2.ScaleHeight = surface.Picture2.box.height - 0.25;
    }
    if (columns < fullColumns) Narrow(surface.Picture2, columns);
    surface.VScroll1.Max = ScrollRange(RoundHalfEven(rows - fullRows));
    surface.HScroll1.Max = ScrollRange(RoundHalfEven(columns - fullColumns));
}

}  // namespace

void SurfaceGeometry::SetPageSize(const ReportSettings& settings) {
    Picture2.box.width = fullColumns;
    Picture2.box.height = 19.75;
    Picture2.ScaleWidth = 75.5;
    Picture2.ScaleHeight = fullRows;
    if (settings.boolLabels)
        FitToLabel(*this, settings);
    else
        FitToPaper(*this, settings);
    HScroll1.Value = std::min(HScroll1.Value, HScroll1.Max);
    VScroll1.Value = std::min(VScroll1.Value, VScroll1.Max);

    HScroll1.box.width = Picture2.box.width;
    VScroll1.box.height = Picture2.box.height;
    HScroll1.box.top = Picture2.box.Bottom() + gapBeforeScrollBar;
    VScroll1.box.left = Picture2.box.Right() + gapBeforeScrollBar;
}

}  // namespace quillform::designer
