#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/Layout.h"

namespace quillform {

/// The fonts of a rich text document; a font's number in the document is its place, from 1.
class RtfFontTable {
public:
    static constexpr int slots = 40;
    static constexpr std::string_view courier = "Courier New";

    /// The fonts of the items in the order of first use, then "Courier New" as "COURIER NEW" where no item has exactly
    /// that name. What comes when all slots are taken is left out.
    explicit RtfFontTable(const collFields& items);

    /// Names in the table; entry 0 is font 1. Untrimmed, as the items have them.
    const std::vector<std::string>& Names() const { return strRTFFonts_; }
    /// Names of items that found no slot.
    const std::vector<std::string>& LeftOut() const { return leftOut_; }
    /// The first font whose trimmed name is that of the item, case counting; 1 if there is none.
    int NumberOf(std::string_view fontName) const;
    /// The first font that is Courier New in any case; 1 if there is none.
    int CourierNumber() const { return SlotOfCourier().value_or(1); }
    bool HasCourier() const { return SlotOfCourier().has_value(); }
    /// The table as the document has it, with its line ends, from the opening of the document on.
    std::string Text() const;

private:
    bool Add(std::string_view name);
    std::optional<int> SlotOfCourier() const;

    std::vector<std::string> strRTFFonts_;
    std::vector<std::string> leftOut_;
    bool addsCourier_ = false;  // the last slot is no item's
};

/// The start of a rich text document up to its body, as UTF-8 with its line ends: fonts, colours, styles, what is told
/// of the document, paper and numbering. `now` is the date and time of its making.
std::string RtfFrame(const RtfFontTable& fonts, bool isLandscape, double now);

}  // namespace quillform
