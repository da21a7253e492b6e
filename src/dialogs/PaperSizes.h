#pragma once

#include <array>
#include <string_view>

namespace quillform::dialogs {

/// A sheet that can be chosen, with its captions in the two forms that offer it.
struct PaperSize {
    int number;                   ///< the printer's paper number, as layouts and label styles store it
    std::string_view optionText;  ///< report options
    std::string_view styleText;   ///< label styles
};

/// In the order in which the forms show them.
inline constexpr std::array<PaperSize, 18> paperSizes{{
    {1, "Letter, 8 1/2 x 11in.", "Letter, 8 1/2 x 11 in."},
    {2, "Letter Small, 8 1/2 x 11 in.", "Letter Small, 8 1/2 x 11 in."},
    {3, "Tabloid, 11 x 17 in.", "Tabloid, 11 x 17 in."},
    {4, "Ledger, 17 x 11 in.", "Ledger, 17 x 11 in."},
    {5, "Legal, 8 1/2 x 14 in.", "Legal, 8 1/2 x 14 in."},
    {6, "Statement, 5 1/2 x 8 1/2 in.", "Statement, 5 1/2 x 8 1/2 in."},
    {7, "Executive, 7 1/2 x 10 1/2 in.", "Executive, 7 1/2 x 10 1/2 in."},
    {16, "10 x 14 in.", "10 x 14 in."},
    {19, "Envelope #9, 3 7/8 x 8 7/8 in.", "Envelope #9, 3 7/8 x 8 7/8 in."},
    {20, "Envelope #10, 4 1/8 x 9 1/2", "Envelope #10, 4 1/8 x 9 1/2 in."},
    {21, "Envelope #11, 4 1/2 x 10 3/8 in.", "Envelope #11, 4 1/2 x 10 3/8 in."},
    {22, "Envelope #12, 4 1/2 x 11 in.", "Envelope #12, 4 1/2 x 11 in."},
    {23, "Envelope #14, 5 x 11 1/2 in.", "Envelope #14, 5 x 11 1/2 in."},
    {37, "Envelope Monarch, 3 7/8 x 7 1/2 in.", "Envelope Monarch, 3 7/8 x 7 1/2 in."},
    {38, "Envelope, 3 5/8 x 6 1/2 in.", "Envelope, 3 5/8 x 6 1/2 in."},
    {39, "US Standard Fanfold, 14 7/8 x 11 in.", "US Standard Fanfold, 14 7/8 x 11 in."},
    {40, "German Std Fanfold, 8 1/2 x 12 in.", "German Std. Fanfold, 8 1/2 x 12 in."},
    {41, "German Legal Fanfold, 8 1/2 x 13 in.", "German Legal Fanfold, 8 1/2 x 13 in."},
}};

}  // namespace quillform::dialogs
