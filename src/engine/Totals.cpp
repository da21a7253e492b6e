#include <cmath>

#include "engine/ReportRun.h"
#include "platform/Numbers.h"

namespace quillform {

// The sums already hold the first record of the next group when a group ends, so the bands show them less CurrentTotal,
// and they restart from CurrentTotal.

void ReportRun::PrintSubTotals1() {
    if (!TotalRange(&clssFields::SubTotalFlag1)) return;
    PrintTotalLines(&clssFields::SubTotalFlag1, Band::SubTotal1A, Band::SubTotal1B);
    for (clssFields* item : items_) {
        item->SubTotal1 = item->CurrentTotal;
        item->CurrentTotal = 0;
    }
}

/// CurrentTotal stays, since the primary totals may come next and need it.
void ReportRun::PrintSubTotals2() {
    if (!TotalRange(&clssFields::SubTotalFlag2)) return;
    PrintTotalLines(&clssFields::SubTotalFlag2, Band::SubTotal2A, Band::SubTotal2B);
    for (clssFields* item : items_) item->SubTotal2 = item->CurrentTotal;
}

void ReportRun::PrintGrandTotals() { PrintTotalLines(&clssFields::GrandTotalFlag, Band::GrandA, Band::GrandB); }

/// From the start of the row of the first flagged item to the last flagged item; none if no item is flagged.
std::optional<ReportRun::ItemRange> ReportRun::TotalRange(bool clssFields::*flag) const {
    int first = 0;
    int last = 0;
    for (int i = 1; i <= Count(); ++i) {
        if (!(Item(i).*flag)) continue;
        if (first == 0) first = i;
        last = i;
    }
    if (first == 0) return std::nullopt;
    const float top = Item(first).Top;
    while (first > 1 && Item(first - 1).Top == top) --first;
    return ItemRange{first, last};
}

void ReportRun::PrintTotalLines(bool clssFields::*flag, Band underscores, Band totals) {
    const std::optional<ItemRange> range = TotalRange(flag);
    if (!range) return;
    const auto [first, last] = *range;
    const auto top = static_cast<double>(Item(first).Top);
    std::int32_t yPos = CLng(top);
    std::string line;
    for (const Band band : {underscores, totals}) {
        run_.LineHolder = run_.NextLineHolder;
        for (int i = first; i <= last; ++i) {
            AdvanceLine(i, band, yPos, line);
            PrintItem(i, band, line);
        }
        // One row to go at `first`: the next visit there ends the line.
        yPos = CLng(top - 1);
    }
    AdvanceLine(first, totals, yPos, line);
}

}  // namespace quillform
