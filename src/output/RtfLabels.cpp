#include "output/RtfLabels.h"

#include "output/RtfText.h"
#include "platform/Numbers.h"

namespace quillform {

namespace {

constexpr double twipsPerInch = 1440;

// A cell ends with its mark also where the row ends behind it, and a row ends before its sheet does: readers drop what
// stands in a cell or a row that is left open. The line that breaks the page, and the one that every document ends
// with, are hidden: below a sheet of labels there is often no room for another line, and they would go to a page of
// their own. A line without a character can't be hidden.
constexpr std::string_view cellEnd = "}\\cell \r\n";
constexpr std::string_view rowEnd = "\\row ";
constexpr std::string_view sheetEnd =
    "\\row \\pard{\\v\r\n"
    " {\\page}\r\n"
    "}";
constexpr std::string_view tableEnd =
    "\\row \\pard\\v\r\n"
    " ";

/// Whole twips: what follows the whole part of a number would be read as text of the cell.
void AppendTwips(double twips, std::string& out) { AppendRtfNumber(static_cast<long>(RoundHalfEven(twips)), out); }

std::string RowDefinition(const LabelSheet& sheet, const ReportSettings& settings) {
    std::string row = "\\trowd \\trgaph180\\trrh-";
    AppendTwips(static_cast<double>(settings.sngLabelHeight) * twipsPerInch, row);
    row += "\\trleft-180\\trkeep ";
    for (std::size_t k = 1; k < sheet.Across(); ++k) {
        row += "\\cellx";
        AppendTwips(sheet.LeftOf(k), row);
    }
    row += "\\cellx";
    AppendTwips(sheet.LeftOf(sheet.Across() - 1) + static_cast<double>(settings.sngLabelWidth) * twipsPerInch, row);
    return row + " \\pard \\li198\\ri198\\widctlpar\\intbl \r\n";
}

}  // namespace

RtfLabels::RtfLabels(const ReportSettings& settings)
    : sheet_(settings), rowDefinition_(RowDefinition(sheet_, settings)) {}

void RtfLabels::BeginLabel(int tabTwips, std::string& out) {
    isBegun_ = true;
    switch (sheet_.Advance()) {
        case LabelSheet::Step::First:
            out += rowDefinition_;
            break;
        case LabelSheet::Step::NextColumn:
            out += cellEnd;
            break;
        case LabelSheet::Step::NextRow:
            out += cellEnd;
            out += rowEnd;
            out += rowDefinition_;
            break;
        case LabelSheet::Step::NextSheet:
            out += cellEnd;
            out += sheetEnd;
            out += rowDefinition_;
            break;
    }
    out += "{\\tx";
    AppendRtfNumber(tabTwips, out);
    out += "\r\n";
}

void RtfLabels::End(std::string& out) {
    if (!isBegun_) return;
    out += cellEnd;
    for (std::size_t column = sheet_.Column() + 1; column < sheet_.Across(); ++column) out += "\\cell ";
    out += tableEnd;
}

}  // namespace quillform
