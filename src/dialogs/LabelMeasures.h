#pragma once

#include <array>
#include <string_view>

namespace quillform::dialogs {

/// One of the numbers that describe a label sheet: the box `Custom` of its position, the column of `Report - Labels`.
struct LabelMeasure {
    std::string_view caption;
    std::string_view column;
    bool isWhole;  ///< a count; the others are inches
};

/// In the order of the boxes.
inline constexpr std::array<LabelMeasure, 8> labelMeasures{{
    {"Labels Across:", "Across", true},
    {"Labels Down:", "Down", true},
    {"Label Height:", "Height", false},
    {"Label Width:", "Width", false},
    {"Top Margin:", "Top Margin", false},
    {"Left Margin", "Left Margin", false},
    {"Horizontal Gap:", "Horizontal Gap", false},
    {"Vertical Gap:", "Vertical Gap", false},
}};
inline constexpr int longestMeasure = 5;  ///< characters that can be typed into a box

}  // namespace quillform::dialogs
