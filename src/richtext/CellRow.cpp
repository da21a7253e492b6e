#include "richtext/CellRow.h"

#include <algorithm>

namespace quillform::richtext {

void CellRow::Lay(const Document& document, const Row& row, LineBreaker& breaker) {
    const RowFormat& format = document.rowFormats[row.format];
    height_ = format.height;
    isDone_ = false;
    cellCount_ = row.cellCount;
    if (cells_.size() < cellCount_) cells_.resize(cellCount_);
    double edge = format.left;
    for (std::size_t i = 0; i < cellCount_; ++i) {
        LaidCell& laid = cells_[i];
        const Cell& cell = document.cells[row.firstCell + i];
        const double width = format.edges[i] - edge - 2.0 * format.gap;
        laid.left = edge + format.gap;
        laid.next = 0;
        laid.list.Clear();
        for (std::uint32_t p = 0; p < cell.paragraphCount; ++p)
            breaker.Break(document.paragraphs[cell.firstParagraph + p], width, laid.list);
        edge = format.edges[i];
    }
}

double CellRow::Height() const {
    if (height_ < 0) return -height_;
    double most = height_;
    for (std::size_t i = 0; i < cellCount_; ++i) {
        const LaidCell& cell = cells_[i];
        double needed = 0;
        for (std::size_t line = cell.next; line < cell.list.lines.size(); ++line)
            needed += cell.list.lines[line].height;
        most = std::max(most, needed);
    }
    return most;
}

double CellRow::Place(double top, double bottom, const LinePlacer& place) {
    const double height = Height();
    const bool isExact = height_ < 0;
    const bool isWhole = isExact || top + height <= bottom;
    const double end = isExact ? top + height : bottom;
    isDone_ = true;
    for (std::size_t i = 0; i < cellCount_; ++i) {
        LaidCell& cell = cells_[i];
        double y = top;
        for (; cell.next < cell.list.lines.size(); ++cell.next) {
            const Line& line = cell.list.lines[cell.next];
            const bool fits = isExact ? y + line.baseline <= end : isWhole || y == top || y + line.height <= end;
            if (!fits) break;
            place(cell.list, line, cell.left, y);
            y += line.height;
        }
        if (!isExact && cell.next < cell.list.lines.size()) isDone_ = false;
    }
    height_ = isDone_ ? height_ : std::min(height_, 0);
    return isWhole ? height : bottom - top;
}

}  // namespace quillform::richtext
