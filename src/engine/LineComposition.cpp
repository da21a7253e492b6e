#include <algorithm>

#include "engine/ReportRun.h"
#include "platform/Text.h"

namespace quillform {

/// Puts one item of one band into the output, or nothing where the item leaves none.
void ReportRun::PrintItem(int position, Band band, std::string& line) {
    const clssFields& item = Item(position);
    std::string_view text;
    if (band == Band::Normal && !Shows(item)) {
        if (output_.DropsSuppressedItems()) return;
        if (output_.RowsAreLines() && !RowShows(position)) return;
    } else {
        text = BandText(position, band);
    }
    PlacedItem placed{position, item, text, band};
    if (output_.PrepareItem(run_, placed) && !isInHeading_) {
        output_.FinishPage(run_);
        PrintHeading();
        // The heading has used the text buffer and the target's font, so both are set anew.
        placed.text = band == Band::Normal ? TextOnNewPage(position) : BandText(position, band);
        output_.PrepareItem(run_, placed);
    }
    output_.PlaceItem(run_, placed, line);
}

/// Whether a detail item has something to show in this record.
bool ReportRun::Shows(const clssFields& item) const {
    if (item.SuppressDetails) return false;
    return !item.SuppressDuplicate || run_.boolJustDidAPageBreak || item.ThisValue != item.LastValue;
}

/// Whether any detail item of the item's row shows.
bool ReportRun::RowShows(int position) const {
    const auto [first, last] = rows_[static_cast<std::size_t>(position - 1)];
    for (int i = std::max(first, FirstDetail()); i <= last; ++i)
        if (Shows(Item(i))) return true;
    return false;
}

std::string_view ReportRun::BandText(int position, Band band) {
    const clssFields& item = Item(position);
    switch (band) {
        case Band::Heading:
        case Band::Normal:
            return item.ThisValue;
        case Band::SubTotal1A:
        case Band::SubTotal2A:
        case Band::GrandA: {
            const bool isShown = band == Band::SubTotal1A   ? item.SubTotalFlag1
                                 : band == Band::SubTotal2A ? item.SubTotalFlag2
                                                            : item.GrandTotalFlag;
            text_.assign(isShown && item.Length > 0 ? static_cast<std::size_t>(item.Length) : 0, '_');
            return text_;
        }
        case Band::SubTotal1B:
            return TotalText(position, item.SubTotalFlag1, item.SubTotal1 - item.CurrentTotal);
        case Band::SubTotal2B:
            return TotalText(position, item.SubTotalFlag2, item.SubTotal2 - item.CurrentTotal);
        case Band::GrandB:
            return TotalText(position, item.GrandTotalFlag, item.GrandTotal);
    }
    return {};
}

std::string_view ReportRun::TotalText(int position, bool isShown, double total) {
    text_.clear();
    if (isShown)
        masks_[static_cast<std::size_t>(position - 1)].AppendTo({.kind = ValueKind::Double, .real = total}, text_);
    return text_;
}

/// The first row of a page shows its values, and so does every later item of the record.
std::string_view ReportRun::TextOnNewPage(int position) {
    for (int i = position + 1; i <= Count(); ++i)
        if (Item(i).SuppressDuplicate) Item(i).LastValue.clear();
    const clssFields& item = Item(position);
    return item.SuppressDetails ? std::string_view() : std::string_view(item.ThisValue);
}

}  // namespace quillform
