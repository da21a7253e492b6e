#pragma once

#include <cstdint>
#include <string>

namespace quillform {

/// What an item is, by its `Code`; 1 to 899 are catalog rows.
namespace ItemCode {
inline constexpr int HeadingText = -1;
inline constexpr int Text = 0;
inline constexpr int FirstCatalog = 1;
inline constexpr int LastCatalog = 899;
inline constexpr int FirstHeadingLoose = 900;  ///< from here an item inside the heading is printed as a heading item
inline constexpr int FirstComputed = 9000;
inline constexpr int PageNumber = 9000;
inline constexpr int LongDate = 9001;       ///< "mmmm dd, yyyy"
inline constexpr int UsDate = 9002;         ///< "mm/dd/yyyy"
inline constexpr int YearFirstDate = 9003;  ///< "yyyy/mm/dd"
inline constexpr int LongTime = 9004;       ///< "hh:mm:ss"
inline constexpr int ShortTime = 9005;      ///< "hh:mm"
inline constexpr int RecordCount = 9006;
}  // namespace ItemCode

/// One placed item of a layout: where it stands, how it looks, and what a run leaves on it. A plain record; every rule
/// that reads or writes it lives with its user. A cell of `Top`, `Left`, `Length` is 240 twips high and 120 wide.
struct clssFields {
    std::string Key;  ///< own key text, the item's number at adding in plain form (" 3"); not the collection's key
    bool SuppressDuplicate = false;  ///< in a detail row, nothing is printed when the text equals the previous record's
    bool SuppressDetails = false;    ///< never printed in a detail row; still drives groups and totals
    std::string Mask;
    std::string ThisValue;  ///< text of the current record
    std::string LastValue;  ///< text of the previous record
    double GrandTotal = 0;  ///< sum of the run
    bool GrandTotalFlag = false;
    double SubTotal2 = 0;     ///< sum of the secondary group, the current record in it
    double SubTotal1 = 0;     ///< sum of the primary group, the current record in it
    double CurrentTotal = 0;  ///< number of the current record
    bool SubTotalFlag2 = false;
    bool SubTotalFlag1 = false;
    bool TriarySort = false;     ///< third sort level
    bool SecondarySort = false;  ///< second sort level and secondary group
    bool PrimarySort = false;    ///< first sort level and primary group
    std::string FontAllignment;  ///< "L", "C" or "R"
    std::int16_t TwipBottom = 0;
    std::int16_t TwipTop = 0;
    std::int16_t TwipEnd = 0;
    std::int16_t TwipStart = 0;
    bool FontItalic = false;
    bool FontBold = false;
    bool FontUnderline = false;
    std::int32_t FontBackColor = 0;  ///< 0 to 15; 15 means no fill on the print target
    std::int32_t FontForeColor = 0;  ///< 0 to 15
    double FontSize = 0;             ///< points
    std::string FontName;
    float Top = 0;            ///< row, from 0
    float Left = 0;           ///< column, from 0
    std::int16_t Index = 0;   ///< element of the picture array that shows the item
    std::int16_t Length = 0;  ///< width in characters
    std::string Text;         ///< caption; for items without data the text printed
    std::int16_t Code = 0;

    friend bool operator==(const clssFields&, const clssFields&) = default;
};

/// Whether the item belongs to the page heading: heading text, page number, dates, times, record count.
inline bool IsHeadingItem(const clssFields& item) {
    return item.Code == ItemCode::HeadingText || item.Code >= ItemCode::FirstComputed;
}
/// Whether the item shows a catalog row.
inline bool IsDataItem(const clssFields& item) {
    return item.Code >= ItemCode::FirstCatalog && item.Code <= ItemCode::LastCatalog;
}

}  // namespace quillform
