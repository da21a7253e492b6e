#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "model/DataAccess.h"
#include "model/Layout.h"
#include "model/UserInterface.h"
#include "platform/Clock.h"

namespace quillform {

/// What is composed: the bands of a report, in the order of a page.
enum class Band { Heading, Normal, SubTotal1A, SubTotal1B, SubTotal2A, SubTotal2B, GrandA, GrandB };

/// Everything that changes while records are walked and lines are composed.
struct RunVariables {
    std::int16_t HeadEnd = 0;            ///< position of the last heading item, 0 if there is none
    std::int32_t Ln = 0;                 ///< lines used on the page; set to 0 by each heading
    std::int32_t Page = 0;               ///< page number; 0 before the first heading
    std::int32_t YPos = 0;               ///< grid row that the composition has reached
    double LineHolder = 0;               ///< print target Y of the current row
    double NextLineHolder = 0;           ///< print target Y of the next row
    std::string OutLine;                 ///< text line under construction
    bool boolJustDidAPageBreak = false;  ///< from the end of a heading until the first record row is done
};

/// How a document came to its end.
enum class Ending {
    Whole,    ///< all records, or none because there are none
    Stopped,  ///< cancelled, failed, or without a sort field to go by: well-formed, but short
};

/// What an output needs of its surroundings when it opens.
struct OutputContext {
    Layout& layout;
    DBEngine& engine;
    UserInterface& user;
    const Clock& clock;
    TextMeasure& measure;
};

/// An item about to be placed.
struct PlacedItem {
    int position;  ///< in the layout, from 1
    const clssFields& item;
    std::string_view text;  ///< text of the band, untrimmed
    Band band;
};

/// How an item stands to the one before it.
struct RowPlace {
    bool isFirst;        ///< position 1
    bool newRowByTop;    ///< its Top is below that of the item before
    bool newRowByTwips;  ///< the same by TwipTop
};

/// One place that a report can go to: all that is particular to it, and nothing else. The engine asks no output what it
/// is. Pages and rows that only some outputs have are questions with a quiet default.
class Output {
public:
    virtual ~Output() = default;

    // The document.
    /// Chooses the target, asking the user where it must, and begins the document. The items are sorted and have their
    /// twips. False: the user cancelled or the choice can't be; the run ends without a word.
    virtual bool Open(const OutputContext& context) = 0;
    /// Ends the document.
    virtual void Close(Ending ending) = 0;
    /// Pages of the document, asked when it is closed: as many as headings where the output keeps no count of its own.
    virtual std::int32_t Pages(const RunVariables& run) const { return run.Page; }
    /// The file that a whole document is in once it is closed; empty where it isn't in a file to keep.
    virtual std::filesystem::path File() const { return {}; }

    // Records.
    virtual void BeginRecord(RunVariables&) {}
    virtual void EndRecord(RunVariables&) {}
    /// The groups that the record ended are closed; its detail rows come next.
    virtual void BeginDetail(RunVariables&) {}
    /// Ends the line of the record just composed.
    virtual void EndLine(RunVariables& run) = 0;
    /// A group begins with the record about to be composed; level 1 primary, 2 secondary.
    virtual void BeginGroup(int, std::string_view) {}
    /// Blank lines that a group option asks for.
    virtual void SkipLines(RunVariables&, int) {}
    /// The page break that a group option asks for; a heading follows.
    virtual void BreakPageAfterGroup(RunVariables&) {}
    /// The heading of that page is done.
    virtual void SettleAfterGroupHeading(RunVariables&) {}

    // Headings.
    virtual void BeginHeading(RunVariables&) {}
    /// `line` is the heading's own line, which holds what was composed and not written yet.
    virtual void EndHeading(RunVariables&, std::string&) {}

    // Rows and pages.
    /// Whether every row of the layout is a line of its own, so that a row with nothing to show can be left out.
    virtual bool RowsAreLines() const = 0;
    /// Whether a suppressed detail item leaves no trace at all, instead of a blank in its place.
    virtual bool DropsSuppressedItems() const { return false; }
    /// The item may start a row; moves to it. `yPos` is the counter of the band that is composed.
    virtual void StartRow(RunVariables&, std::int32_t&, const RowPlace&) {}
    /// Whether the page is full for a new row at this item; then FinishPage and a heading follow.
    virtual bool IsPageFull(const RunVariables&, const RowPlace&) const { return false; }
    virtual void FinishPage(RunVariables&) {}
    /// Whether an empty row needs a new page first.
    virtual bool IsPageFullForEmptyRow() const { return false; }
    /// One step of empty rows down to `item`. Whatever `line` holds is the row just ended.
    virtual void StepRow(RunVariables& run, std::int32_t& yPos, const clssFields& item, std::string& line) = 0;
    /// The page is full by its line count; a heading follows.
    virtual void FillPage(RunVariables&) {}

    // Items.
    /// Readies the item's look and row; true if the item doesn't fit on the page any more and a new one must start.
    virtual bool PrepareItem(RunVariables&, const PlacedItem&) { return false; }
    /// Puts the item on the row, or into `line`.
    virtual void PlaceItem(RunVariables& run, const PlacedItem& placed, std::string& line) = 0;
};

}  // namespace quillform
