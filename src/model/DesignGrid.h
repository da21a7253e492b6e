#pragma once

#include <cstdint>

#include "model/ReportSettings.h"
#include "model/TextMeasure.h"
#include "model/clssFields.h"

namespace quillform {

/// The design grid: 12 columns and 6 rows to the inch.
inline constexpr std::int16_t intGridX = 1;          ///< horizontal step, in cells
inline constexpr std::int16_t intGridY = 1;          ///< vertical step, in cells; row step of the composition
inline constexpr std::int16_t intRowTwips = 240;     ///< twips in a row
inline constexpr std::int16_t intColumnTwips = 120;  ///< twips in a column

/// Size of an item's box on the surface, in cells.
struct ItemSize {
    float columns = 0;
    float rows = 0;
    friend bool operator==(const ItemSize&, const ItemSize&) = default;
};

FontSpec FontOf(const clssFields& item);

/// The box of an item as a load gives it: `Length` capital X wide and one high in the item's font, each raised to whole
/// cells.
ItemSize MeasureItem(const clssFields& item, TextMeasure& measure);

/// Sets TwipStart, TwipEnd, TwipTop, TwipBottom from Left, Top and the box. Overflow (RunTimeError) past 32767 twips.
void SetItemTwips(clssFields& item, const ItemSize& size);

/// Width of the page in columns as the surface reckons it: the farthest scroll position and the viewport's inner width.
/// No run of blanks before an item is longer.
double PageColumns(const ReportSettings& settings);

/// Paper width and height in inches of the paper numbers the program knows; false for others.
struct PaperInches {
    double width = 8.5;
    double height = 11;
};
bool FindPaper(int paperNumber, PaperInches& paper);

}  // namespace quillform
