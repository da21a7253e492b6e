#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "catalog/CatalogTables.h"
#include "engine/ItemValues.h"
#include "engine/Output.h"
#include "model/DataAccess.h"
#include "platform/Paths.h"
#include "query/ReportSelect.h"

namespace quillform {

/// What a run needs from outside. All outlive the run.
struct Surroundings {
    DBEngine& engine;
    UserInterface& user;
    const Clock& clock;
    TextMeasure& measure;
};

/// The way the records are walked: all in one pass, or one statement per primary group. Measured takes whichever was
/// quicker, as long as both give the same rows.
enum class Walk { Measured, OnePass, Groups };

struct RunOptions {
    Walk walk = Walk::Measured;
};

enum class RunEnd {
    Done,
    NoItems,          ///< nothing was opened
    TargetCancelled,  ///< the user cancelled the choice of the target; nothing was opened
    NoRecords,        ///< the output is closed empty
    NoPrimarySort,    ///< one heading was printed
    NoPrimaryRow,     ///< the primary sort item has no catalog row; one heading was printed
    Cancelled,        ///< stopped by the user; the output is well-formed and short
    Failed,           ///< stopped by `failure`; the output is well-formed and short
};

/// Seconds by the run's clock.
struct RunTimes {
    double open = 0;     ///< opening database and report statement: read, join, sort
    double measure = 0;  ///< the measured choice between the walks
    double compose = 0;  ///< walking, composing and writing
    double close = 0;    ///< ending the document
};

struct RunOutcome {
    RunEnd end = RunEnd::Done;
    std::optional<RunTimeError> failure;
    std::int64_t records = 0;   ///< records of the report
    std::int32_t pages = 0;     ///< sheets of paper, or headings composed where the output counts no sheets
    Walk walk = Walk::OnePass;  ///< the way taken
    RunTimes times;
};

/// One run of a layout: owns the run's state, and is used once. The layout is changed as a run changes it: items
/// sorted, twips, values and sums set, a missing font replaced.
class ReportRun {
public:
    ReportRun(Layout& layout, Output& output, const Surroundings& surroundings, RunOptions options = {});
    ~ReportRun();

    /// The whole run, from the check that there are items to the closed output. Shows the described messages through
    /// the user interface. Failures of database, file and composition end the run and are handed back, not shown,
    /// because the one who started it knows best how to tell them. Never throws RunTimeError.
    RunOutcome ProcessReport();

private:
    using ItemRange = std::pair<int, int>;  // positions, both included

    // The driver (ReportRun.cpp)
    void SortItems();
    void ResetItems();
    void RunReport();
    void OpenRecords();
    void BindItems();
    bool FindPrimaryRow();
    void FindHeadEnd();
    void ReadRecords();
    Walk MeasureWalks();
    bool GroupsGiveTheSameRows();
    void WalkGroups();
    std::unique_ptr<Recordset> OpenGroup();
    double Seconds(double since) const { return surroundings_.clock.Timer() - since; }

    // Records (RecordProcessing.cpp)
    enum class RecordsEnd { No, Yes };
    void ProcessRecords(Recordset& shadow);
    void ReadValues(const Recordset& shadow);
    void ComposeFirstRecord(const Recordset& shadow);
    bool ComposeNextRecord(const Recordset& shadow);
    void ComposeDetail();
    void CloseGroups();
    void CheckGroupBreaks(RecordsEnd recordsEnd);
    bool GroupEnds(bool clssFields::*level, int leadingCharacters, RecordsEnd recordsEnd) const;
    void EndGroup(int spaces, bool pageBreak);
    void AnnounceGroups();
    void CountRecord();

    // Lines (LineComposition.cpp)
    void PrintItem(int position, Band band, std::string& line);
    bool Shows(const clssFields& item) const;
    bool RowShows(int position) const;
    std::string_view BandText(int position, Band band);
    std::string_view TotalText(int position, bool isShown, double total);
    std::string_view TextOnNewPage(int position);

    // Pages (PageControl.cpp)
    void AdvanceLine(int position, Band band, std::int32_t& yPos, std::string& line);
    bool RowIsReached(int position) const;
    RowPlace PlaceOf(int position) const;
    void PrintHeading();
    void ComposeHeadingItem(int position, std::int32_t& yPos, std::string& line);
    void CheckPageOverflow();
    std::string HeadingValue(const clssFields& item) const;

    // Totals (Totals.cpp)
    void PrintSubTotals1();
    void PrintSubTotals2();
    void PrintGrandTotals();
    void PrintTotalLines(bool clssFields::*flag, Band underscores, Band totals);
    std::optional<ItemRange> TotalRange(bool clssFields::*flag) const;

    clssFields& Item(int position) { return *items_[static_cast<std::size_t>(position - 1)]; }
    const clssFields& Item(int position) const { return *items_[static_cast<std::size_t>(position - 1)]; }
    int Count() const { return static_cast<int>(items_.size()); }
    int FirstDetail() const { return run_.HeadEnd + 1; }

    Layout& layout_;
    Output& output_;
    Surroundings surroundings_;
    RunOptions options_;

    RunVariables run_;
    RunOutcome outcome_;
    bool boolCancelReport_ = false;
    bool isInHeading_ = false;
    bool groupStarts_[2] = {true, true};  // a primary, a secondary group begins with the next detail row
    std::int64_t gauge_ = 0;              // records done, as the progress panel shows them

    std::vector<clssFields*> items_;   // the layout's items by position, fixed for the run
    std::vector<ItemSource> sources_;  // where each item's value comes from
    std::vector<Mask> masks_;          // each item's compiled mask, for totals
    std::vector<ItemRange> rows_;      // the items of equal TwipTop around each item
    std::string text_;                 // text of the item being composed

    std::unique_ptr<Database> database_;
    Catalog catalog_;
    ReportSelect select_;
    const CatalogRow* primary_ = nullptr;
    std::unique_ptr<Recordset> rsFull_;
    std::unique_ptr<Recordset> rsKeys_;
    std::unique_ptr<Recordset> rsGroup_;
};

/// The report database: as the layout has it, else by its file name beside the layout or in the program's folder. Empty
/// if there is none.
std::optional<ResolvedPath> FindReportDatabase(const Layout& layout);
/// The one that it would be if the layout had this path.
std::optional<ResolvedPath> FindReportDatabase(const Layout& layout, std::string_view path);
/// The same for the run that opens it: the user is warned of a substitution.
std::optional<std::string> FindReportDatabase(const Layout& layout, UserInterface& user);
/// Opens it for a form that reads; RunTimeError FileMissing if there is none, and what OpenDatabase raises.
std::unique_ptr<Database> OpenReportDatabase(const Layout& layout, DBEngine& engine);

}  // namespace quillform
