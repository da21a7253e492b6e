#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/Layout.h"
#include "output/RtfFrame.h"

namespace quillform {

/// Moves TwipStart and TwipEnd of the items onto tab stops, every one past the end of the item before it on its row.
/// The items are sorted. RunTimeError Overflow where an item leaves the page's 32767 twips.
void FitItemsToTabs(collFields& items);

/// How items are kept in their places.
enum class RtfPlacing {
    Tabs,     ///< by tab characters and measured texts
    Courier,  ///< by texts of as many fixed-width characters as the items are long
};

/// Composes the groups of a document's items: each sets its font and looks, and steps to its place. What doesn't change
/// from record to record is made once, here.
class RtfItems {
public:
    /// `measure` outlives this; the layout is not needed any more. Positions are the items' as they stand now.
    RtfItems(const Layout& layout, const RtfFontTable& fonts, RtfPlacing placing, TextMeasure& measure);

    /// Appends the group of the item at a position (from 1).
    void AppendGroup(int position, std::string_view text, std::string& out);
    /// Texts so far that hold a backslash or a brace.
    std::size_t TextsWithCommands() const { return textsWithCommands_; }

private:
    struct Item {
        std::string opening;  // the group up to its text
        FontId font{};
        int start = 0;      // twips
        int nextStart = 0;  // of the next item, where it stands on the same row
        bool hasNext = false;
        bool hasNextOnRow = false;
        std::string alignment;
        int length = 0;
    };

    std::string_view FittedText(const Item& item, std::string_view text, double& width);
    void AppendOnTabs(const Item& item, std::string_view text, std::string& out);
    void AppendInCourier(const Item& item, std::string_view text, std::string& out);
    void AppendText(std::string_view text, std::string& out);

    RtfPlacing placing_;
    TextMeasure& measure_;
    std::vector<Item> items_;  // entry 0 is position 1
    std::size_t textsWithCommands_ = 0;
    std::string text_;
    std::vector<std::size_t> cuts_;
};

}  // namespace quillform
