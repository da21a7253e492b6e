#pragma once

#include <array>
#include <optional>
#include <string>
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

/// What stands in the boxes, in their order.
using MeasureTexts = std::array<std::string, labelMeasures.size()>;

/// A caption as it reads inside a sentence: without its colon and outer blanks.
std::string_view Bare(std::string_view caption);
/// The number that a text is stored as; none if it is beyond all numbers.
std::optional<double> StoredMeasure(const std::string& text);
/// A number in the digits that a measure has.
std::string MeasureText(double number);
/// The first measure that is stored as another number than it looks like, such as 1 1/3 or 1,333, which are copied from
/// a packet; empty if there is none.
std::string ReadingProblem(const MeasureTexts& texts);

}  // namespace quillform::dialogs
