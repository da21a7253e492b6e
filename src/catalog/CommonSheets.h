#pragma once

#include <array>
#include <span>
#include <string_view>

#include "model/DataAccess.h"
#include "model/ReportSettings.h"

namespace quillform {

/// A sheet of labels as it is sold; lengths in inches, on paper number 1, Letter.
struct CommonSheet {
    std::string_view description = {};  ///< kind, labels per sheet, height x width of a label, number of the format
    int across = 0;
    int down = 0;
    float height = 0;
    float width = 0;
    float topMargin = 0;
    float leftMargin = 0;
    float horizontalGap = 0;
    float verticalGap = 0;
};

/// The formats that most address labels and cards on Letter paper are sold in, whoever makes them. The measures are
/// those that manufacturers print on the packets and publish with their templates, and the numbers are those by which
/// packets name the format that they fit (5160 and so on, of Avery's US list). Published tables round to a thousandth;
/// here stand the fractions behind them, with which each sheet comes out exactly: margins, labels and gaps are 8 1/2
/// inches across and 11 down, with equal margins on both sides.
inline constexpr std::array commonSheets = std::to_array<CommonSheet>({
    {"Address, 30/sheet, 1 x 2 5/8 in., as 5160", 3, 10, 1, 2.625F, 0.5F, 0.1875F, 0.125F, 0},
    {"Address, 20/sheet, 1 x 4 in., as 5161", 2, 10, 1, 4, 0.5F, 0.15625F, 0.1875F, 0},
    {"Address, 14/sheet, 1 1/3 x 4 in., as 5162", 2, 7, 4.0F / 3, 4, 5.0F / 6, 0.15625F, 0.1875F, 0},
    {"Address, 14/sheet, 1 1/2 x 4 in., as 5159", 2, 7, 1.5F, 4, 0.25F, 0.15625F, 0.1875F, 0},
    {"Shipping, 10/sheet, 2 x 4 in., as 5163", 2, 5, 2, 4, 0.5F, 0.15625F, 0.1875F, 0},
    {"Shipping, 6/sheet, 3 1/3 x 4 in., as 5164", 2, 3, 10.0F / 3, 4, 0.5F, 0.15625F, 0.1875F, 0},
    {"Shipping, 4/sheet, 5 x 3 1/2 in., as 5168", 2, 2, 5, 3.5F, 0.5F, 0.5F, 0.5F, 0},
    {"Half sheet, 2/sheet, 5 1/2 x 8 1/2 in., as 5126", 1, 2, 5.5F, 8.5F, 0, 0, 0, 0},
    {"Full sheet, 1/sheet, 11 x 8 1/2 in., as 5165", 1, 1, 11, 8.5F, 0, 0, 0, 0},
    {"Return address, 80/sheet, 1/2 x 1 3/4 in., as 5167", 4, 20, 0.5F, 1.75F, 0.5F, 0.28125F, 0.3125F, 0},
    {"Return address, 60/sheet, 2/3 x 1 3/4 in., as 5195", 4, 15, 2.0F / 3, 1.75F, 0.5F, 0.28125F, 0.3125F, 0},
    {"File folder, 30/sheet, 2/3 x 3 7/16 in., as 5366", 2, 15, 2.0F / 3, 3.4375F, 0.5F, 0.53125F, 0.5625F, 0},
    {"Name badge, 8/sheet, 2 1/3 x 3 3/8 in., as 5395", 2, 4, 7.0F / 3, 3.375F, 7.0F / 12, 0.6875F, 0.375F, 1.0F / 6},
    {"Name badge, 6/sheet, 3 x 4 in., as 5384", 2, 3, 3, 4, 1, 0.25F, 0, 0},
    {"Business card, 10/sheet, 2 x 3 1/2 in., as 5371", 2, 5, 2, 3.5F, 0.5F, 0.75F, 0, 0},
    {"Postcard, 2/sheet, 4 x 6 in., as 5389", 1, 2, 4, 6, 1.5F, 1.25F, 0, 0},
    {"Postcard, 4/sheet, 5 1/2 x 4 1/4 in., as 8387", 2, 2, 5.5F, 4.25F, 0, 0, 0, 0},
});

/// The common address label, which the sample's labels are printed on.
inline constexpr const CommonSheet& addressSheet = commonSheets[0];

/// Makes a report one of labels on that sheet; its paper and orientation stay as they are.
void UseLabels(const CommonSheet& sheet, ReportSettings& settings);

/// Adds a row for each sheet to `Report - Labels`. RunTimeError of the data layer; where all or none are wanted, a
/// transaction is the caller's.
void AddSheets(Database& database, std::span<const CommonSheet> sheets);

}  // namespace quillform
