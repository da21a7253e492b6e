#pragma once

#include <string_view>

namespace quillform::sample {

/// A label sheet of the sample catalog; lengths in inches, on paper number 1, Letter.
struct LabelSheet {
    std::string_view description;
    float leftMargin, topMargin, height, width, across, down, horizontalGap, verticalGap;
};

/// Sheets as they are sold for laser printers; the first is the common address label.
inline constexpr LabelSheet labelSheets[] = {
    {"Address, 30 to the sheet", 0.1875F, 0.5F, 1.0F, 2.625F, 3, 10, 0.125F, 0},
    {"Shipping, 10 to the sheet", 0.1563F, 0.5F, 2.0F, 4.0F, 2, 5, 0.1875F, 0},
    {"Folder tab, 20 to the sheet", 0.5F, 0.5F, 1.0F, 3.4375F, 2, 10, 0.4375F, 0},
};
inline constexpr const LabelSheet& addressSheet = labelSheets[0];

}  // namespace quillform::sample
