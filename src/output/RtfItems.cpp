#include "output/RtfItems.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "model/DesignGrid.h"
#include "output/RtfText.h"
#include "output/TextOutput.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr int tabTwips = 720;
constexpr double smallRest = 0.15;  // of a tab step; a text that ends so soon behind a stop gets a blank
constexpr double largestHalfPoints = 32767;

bool IsOnRowOf(const clssFields& item, const clssFields& before) { return item.Top == before.Top; }

/// Tab characters from `x` until `target` is reached or passed.
void AppendTabs(double x, double target, std::string& out) {
    while (x < target) {
        out += "\\tab";
        x = (std::floor(x / tabTwips) + 1) * tabTwips;
    }
}

/// The group up to the item's place: its font and its looks.
std::string Opening(const clssFields& item, int font) {
    const double size = std::isfinite(item.FontSize) ? item.FontSize : 0;
    const double halfPoints = std::clamp(std::floor(size * 2), -largestHalfPoints, largestHalfPoints);
    std::string opening = "{\\f";
    AppendRtfNumber(font, opening);
    opening += "\\fs";
    AppendRtfNumber(static_cast<long>(halfPoints), opening);
    opening += "\\cf";
    AppendRtfNumber(long{item.FontForeColor} + 1, opening);
    opening += "\\cb";
    AppendRtfNumber(long{item.FontBackColor} + 1, opening);
    if (item.FontItalic) opening += "\\i";
    if (item.FontBold) opening += "\\b";
    if (item.FontUnderline) opening += "\\ul";
    return opening;
}

void AppendPlace(const clssFields& item, const clssFields* before, RtfPlacing placing, std::string& opening) {
    switch (placing) {
        case RtfPlacing::Tabs:
            if (!before || !IsOnRowOf(item, *before)) AppendTabs(0, item.TwipStart, opening);
            return;
        case RtfPlacing::Courier:
            if (before && before->TwipTop == item.TwipTop) opening += "\\tab ";
            if (item.FontAllignment == "R") opening += "\\tqr";
            if (item.FontAllignment == "C") opening += "\\tqc";
            return;
    }
}

}  // namespace

void FitItemsToTabs(collFields& items) {
    double x = 0;
    for (int i = 1; i <= items.Count(); ++i) {
        clssFields& item = items.Item(i);
        const int width = item.TwipEnd - item.TwipStart;
        double gap = static_cast<double>(item.Left);
        if (i > 1 && IsOnRowOf(item, items.Item(i - 1)))
            gap -= static_cast<double>(items.Item(i - 1).Left) + items.Item(i - 1).Length;
        else
            x = 0;
        const double start = std::ceil((x + RoundHalfEven(gap) * intColumnTwips) / tabTwips) * tabTwips;
        x = start + width;
        try {
            item.TwipStart = CInt(start);
            item.TwipEnd = CInt(x);
        } catch (const RunTimeError& error) {
            throw RunTimeError(error.Number(), "Item \"" + item.Text +
                                                   "\" is moved past the largest position on a page (32767 twips, 22.7 "
                                                   "inches) by the tab stops of the items before it.");
        }
    }
}

RtfItems::RtfItems(const Layout& layout, const RtfFontTable& fonts, RtfPlacing placing, TextMeasure& measure)
    : placing_(placing), measure_(measure) {
    const collFields& fields = layout.Fields;
    for (int i = 1; i <= fields.Count(); ++i) {
        const clssFields& field = fields.Item(i);
        const clssFields* before = i > 1 ? &fields.Item(i - 1) : nullptr;
        const clssFields* next = i < fields.Count() ? &fields.Item(i + 1) : nullptr;
        Item item;
        item.opening =
            Opening(field, placing == RtfPlacing::Courier ? fonts.CourierNumber() : fonts.NumberOf(field.FontName));
        AppendPlace(field, before, placing, item.opening);
        item.font = measure.Font(FontOf(field));
        item.start = field.TwipStart;
        item.hasNext = next != nullptr;
        item.hasNextOnRow = next && IsOnRowOf(*next, field);
        if (item.hasNextOnRow) item.nextStart = next->TwipStart;
        item.alignment = field.FontAllignment;
        item.length = std::max<int>(field.Length, 0);
        items_.push_back(std::move(item));
    }
}

void RtfItems::AppendGroup(int position, std::string_view text, std::string& out) {
    const Item& item = items_[static_cast<std::size_t>(position - 1)];
    const std::size_t start = out.size();
    const std::size_t before = textsWithCommands_;
    out += item.opening;
    switch (placing_) {
        case RtfPlacing::Tabs:
            AppendOnTabs(item, text, out);
            break;
        case RtfPlacing::Courier:
            AppendInCourier(item, text, out);
            break;
    }
    out += '}';
    if (textsWithCommands_ != before) BalanceRtfGroup(out, start);
}

void RtfItems::AppendText(std::string_view text, std::string& out) {
    if (AppendRtfText(text, out)) ++textsWithCommands_;
}

/// As many leading characters of the text as end before the next item on the row; `width` becomes theirs.
std::string_view RtfItems::FittedText(const Item& item, std::string_view text, double& width) {
    width = measure_.TextWidth(item.font, text);
    const int room = item.nextStart - item.start;
    if (!item.hasNextOnRow || width < room) return text;
    cuts_.clear();
    for (std::size_t at = 0; at < text.size(); NextCodePoint(text, at)) cuts_.push_back(at);
    // Widths grow with the text, so the longest start that fits is found by halving.
    const auto isTooWide = [&](std::size_t cut) { return measure_.TextWidth(item.font, text.substr(0, cut)) >= room; };
    const auto firstTooWide = std::partition_point(cuts_.begin(), cuts_.end(), std::not_fn(isTooWide));
    const std::string_view fitted = text.substr(0, firstTooWide == cuts_.begin() ? 0 : *(firstTooWide - 1));
    width = measure_.TextWidth(item.font, fitted);
    return fitted;
}

void RtfItems::AppendOnTabs(const Item& item, std::string_view text, std::string& out) {
    text_ = ' ';
    text_ += Trim(text);
    if (!item.hasNext) {
        AppendText(text_, out);
        return;
    }
    double width = 0;
    AppendText(FittedText(item, text_, width), out);
    const double steps = width / tabTwips;
    if (steps - std::floor(steps) < smallRest) out += ' ';
    if (item.hasNextOnRow) AppendTabs(item.start + width, item.nextStart, out);
}

void RtfItems::AppendInCourier(const Item& item, std::string_view text, std::string& out) {
    text_ = ' ';
    if (item.alignment == "L") {
        // Unlike the other two, a text on the left keeps its leading blanks.
        const auto length = static_cast<std::size_t>(item.length);
        text_ += LeftCharacters(text, length);
        const std::size_t characters = CountCharacters(text);
        if (characters < length) text_.append(length - characters, ' ');
    } else {
        AppendAligned(text, item.alignment, item.length, text_);
    }
    AppendText(text_, out);
}

}  // namespace quillform
