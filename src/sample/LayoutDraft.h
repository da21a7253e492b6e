#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalog/CatalogTables.h"
#include "catalog/CommonSheets.h"
#include "model/Layout.h"

namespace quillform::sample {

/// How an item looks. Colours are numbers 0 to 15 of the 16-colour table; a back colour of 15 is none.
struct Look {
    std::string_view font = "Arial";
    double size = 9;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    int foreColour = 0;
    int backColour = 15;
    char alignment = 'L';
};

/// What a column of the detail does besides showing its value; to be joined by |.
enum Trait : unsigned {
    None = 0,
    Primary = 1,
    Secondary = 2,
    Third = 4,
    HideDuplicates = 8,
    SubTotal1 = 16,
    SubTotal2 = 32,
    GrandTotal = 64,
    AllTotals = SubTotal1 | SubTotal2 | GrandTotal,
};

/// A column of a report: a catalog row by its text, and where it stands.
struct ColumnPlan {
    std::string_view field;
    std::string_view heading;  ///< empty: none
    int left;                  ///< in cells, as all positions here
    int length;                ///< in characters
    char alignment = 'L';
    unsigned traits = None;
    int row = 0;  ///< row within the detail, from 0
};

/// What sets one report apart from another: the colour of title, band and groups (a number from 1 to 8) and the title's
/// font.
struct Accent {
    int colour = 1;
    std::string_view titleFont = "Arial";
};

/// Puts a layout together from above: title, column headings, columns, conditions.
///
/// Columns are in "Arial" 9, in which `n` capital X take n cells and a hair, so the box of an item is one cell wider
/// than its Length: neighbours stand side by side on paper and one blank apart in a text file.
class LayoutDraft {
public:
    LayoutDraft(const Catalog& catalog, std::string_view databasePath, Accent accent);

    /// Title and what stands beside and below it: the date, the page number, a line of explanation. `left` and `right`
    /// are the edges of the report.
    void TitleBlock(std::string_view title, std::string_view explanation, int left, int right);
    void RecordCount(int row, int right);
    /// The columns with their headings in a filled band at `headingRow`; the detail begins two rows below.
    /// Rows of the detail after the first are set back in grey italics.
    void Columns(const std::vector<ColumnPlan>& columns, int headingRow, int left, int right);
    /// A text of the heading, as long as it is.
    void Heading(std::string_view text, int row, int left, const Look& look);
    /// A heading item with a value of its own: date, page number.
    void Special(int code, int row, int left, int length);
    /// A data item on its own, without heading.
    clssFields& Value(std::string_view field, int row, int left, int length, const Look& look, unsigned traits = None);
    /// Each record on a label of the sheet; positions count from the label's corner.
    void UseLabels(const CommonSheet& sheet);
    /// An empty row of the detail, to set the records apart.
    void Spacer(int row, int left);
    /// A condition on a catalog row; `join` is "AND" or "OR".
    void Condition(std::string_view field, std::string_view comparison, std::string_view value,
                   std::string_view join = "AND");
    /// Characters that must change and blank lines behind, for the primary and the secondary group.
    void Groups(int characters1, int spaces1, int characters2, int spaces2);

    ReportSettings& Settings() { return layout_.settings; }
    Layout Take() { return std::move(layout_); }

private:
    void Band(const std::vector<ColumnPlan>& columns, int row, int left, int right);
    void DetailItem(const ColumnPlan& column, int row);
    clssFields& Add(int code, std::string_view text, int row, int left, int length, const Look& look);
    const CatalogRow& RowOf(std::string_view text) const;

    const Catalog& catalog_;
    Accent accent_;
    Layout layout_;
};

}  // namespace quillform::sample
