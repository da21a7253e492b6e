#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/ReportSettings.h"

namespace quillform {

/// A sheet of labels and the label that the report is on: across the sheet first, then down, then a new sheet.
class LabelSheet {
public:
    /// RunTimeError SubscriptOutOfRange where labels across or down are below 1.
    explicit LabelSheet(const ReportSettings& settings);

    enum class Step { First, NextColumn, NextRow, NextSheet };
    /// Moves on to the label of the next record. The first call stays on the first label.
    Step Advance();

    std::size_t Across() const { return left_.size(); }
    /// Edges in twips; columns count from 0. No edge is below 0.
    double LeftOf(std::size_t column) const { return left_[column]; }
    double Left() const { return left_[column_]; }
    double Top() const { return top_[row_]; }
    std::size_t Column() const { return column_; }
    /// Sheets begun so far.
    std::int32_t Sheets() const { return sheets_; }

private:
    std::vector<double> left_;
    std::vector<double> top_;
    std::size_t row_ = 0;
    std::size_t column_ = 0;
    std::int32_t sheets_ = 0;
};

}  // namespace quillform
