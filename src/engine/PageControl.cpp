#include <cmath>

#include "engine/ReportRun.h"
#include "platform/Dates.h"
#include "platform/Format.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr std::int32_t lastLineOfPage = 57;  // from line 58 on a page is full by its line count

}  // namespace

/// Brings the composition to the row of an item: ends the line before it, fills the gap of empty rows, starts a new
/// page when this one is full.
void ReportRun::AdvanceLine(int position, Band band, std::int32_t& yPos, std::string& line) {
    const clssFields& item = Item(position);
    const std::int32_t top = CLng(static_cast<double>(item.Top));
    if (band == Band::Normal && position > 1 && !RowIsReached(position)) {
        yPos = top;
        return;
    }
    const RowPlace place = PlaceOf(position);
    output_.StartRow(run_, yPos, place);
    if (!isInHeading_ && output_.IsPageFull(run_, place)) {
        output_.FinishPage(run_);
        PrintHeading();
    }
    const auto wholeTop = static_cast<std::int32_t>(std::floor(item.Top));
    while (wholeTop > yPos) {
        if (!isInHeading_ && output_.IsPageFullForEmptyRow()) {
            output_.FinishPage(run_);
            PrintHeading();
        }
        output_.StepRow(run_, yPos, item, line);
        ++run_.Ln;
        yPos += intGridY;
        CheckPageOverflow();
    }
    yPos = top;
}

/// False where the row before a detail item wasn't printed at all, so that the item takes its place.
bool ReportRun::RowIsReached(int position) const {
    if (Item(position).TwipTop <= Item(position - 1).TwipTop) return Shows(Item(1));
    const int first = rows_[static_cast<std::size_t>(position - 2)].first;
    for (int i = first; i < position; ++i)
        if (Shows(Item(i))) return true;
    return false;
}

/// The first detail item starts a row of its own even where it stands on the last row of the heading, because the
/// heading is written as a line by itself.
RowPlace ReportRun::PlaceOf(int position) const {
    if (position == 1) return {true, false, false};
    const clssFields& item = Item(position);
    const clssFields& before = Item(position - 1);
    const bool isFirstDetail = position == FirstDetail();
    return {false, isFirstDetail || item.Top > before.Top, isFirstDetail || item.TwipTop > before.TwipTop};
}

/// Prints the heading items at the top of a page. Inside a heading no page ends, or a heading taller than the page
/// would never come to its end.
void ReportRun::PrintHeading() {
    run_.Ln = 0;
    ++run_.Page;
    isInHeading_ = true;
    std::int32_t yPos = 0;
    std::string line;
    output_.BeginHeading(run_);
    for (int i = 1; i <= run_.HeadEnd; ++i) {
        const int code = Item(i).Code;
        if (code >= ItemCode::FirstHeadingLoose || code == ItemCode::HeadingText) ComposeHeadingItem(i, yPos, line);
    }
    if (FirstDetail() <= Count()) AdvanceLine(FirstDetail(), Band::Heading, yPos, line);
    output_.EndHeading(run_, line);
    isInHeading_ = false;
    run_.boolJustDidAPageBreak = true;
}

void ReportRun::ComposeHeadingItem(int position, std::int32_t& yPos, std::string& line) {
    clssFields& item = Item(position);
    AdvanceLine(position, Band::Heading, yPos, line);
    yPos = CLng(static_cast<double>(item.Top));
    item.LastValue = item.ThisValue;
    item.ThisValue = HeadingValue(item);
    PrintItem(position, Band::Heading, line);
}

std::string ReportRun::HeadingValue(const clssFields& item) const {
    const auto today = [this](std::string_view mask) {
        return Format(Value::Date(DatePartOf(surroundings_.clock.Now())), mask);
    };
    const auto time = [this](std::string_view mask) {
        return Format(Value::Date(TimePartOf(surroundings_.clock.Now())), mask);
    };
    switch (item.Code) {
        case ItemCode::HeadingText:
            return std::string(Trim(item.Text));
        case ItemCode::PageNumber:
            return std::to_string(run_.Page);
        case ItemCode::LongDate:
            return today("mmmm dd, yyyy");
        case ItemCode::UsDate:
            return today("mm/dd/yyyy");
        case ItemCode::YearFirstDate:
            return today("yyyy/mm/dd");
        case ItemCode::LongTime:
            return time("hh:mm:ss");
        case ItemCode::ShortTime:
            return time("hh:mm");
        case ItemCode::RecordCount:
            return Format(Value::Integer(outcome_.records), "###,###,##0");
        default:
            return item.ThisValue;
    }
}

void ReportRun::CheckPageOverflow() {
    if (isInHeading_ || (run_.Ln >= 1 && run_.Ln <= lastLineOfPage)) return;
    output_.FillPage(run_);
    PrintHeading();
}

}  // namespace quillform
