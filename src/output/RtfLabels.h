#pragma once

#include <optional>
#include <string>

#include "output/LabelSheet.h"

namespace quillform {

/// The table whose cells are the labels of a rich text document: one row of the table is a row of the sheet, and each
/// label's items stand in a group of its cell. Every cell and every row that was begun is closed again.
class RtfLabels {
public:
    explicit RtfLabels(const ReportSettings& settings);

    /// Moves on to the label of the next record. `tabTwips` is where the first detail item begins.
    void BeginLabel(int tabTwips, std::string& out);
    /// Closes the cell and the row that the report ends in, and leaves the table.
    void End(std::string& out);
    std::int32_t Sheets() const { return sheet_.Sheets(); }

private:
    LabelSheet sheet_;
    std::string rowDefinition_;
    bool isBegun_ = false;
};

}  // namespace quillform
