#include "engine/ReportRun.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "platform/Numbers.h"
#include "platform/Paths.h"

namespace quillform {

namespace {

RunTimeError NoReportDatabase(const Layout& layout) {
    return {ErrorNumber::FileMissing, "The report database \"" + layout.settings.strDatabase[1] + "\" does not exist."};
}

/// SetItemTwips with a sentence that names the item.
void SetTwips(clssFields& item, const ItemSize& size) {
    try {
        SetItemTwips(item, size);
    } catch (const RunTimeError& error) {
        throw RunTimeError(error.Number(),
                           "Item \"" + item.Text +
                               "\" stands or reaches past the largest position on a page (32767 twips, 22.7 inches).");
    }
}

}  // namespace

ReportRun::ReportRun(Layout& layout, Output& output, const Surroundings& surroundings, RunOptions options)
    : layout_(layout), output_(output), surroundings_(surroundings), options_(options) {}

ReportRun::~ReportRun() = default;

RunOutcome ReportRun::ProcessReport() {
    if (layout_.Fields.Count() < 1) {
        surroundings_.user.Message(
            "You must select the fields that you want to appear on the report.  There are currently no fields selected "
            "so you cannot print");
        outcome_.end = RunEnd::NoItems;
        return std::move(outcome_);
    }
    bool isOpen = false;
    try {
        SortItems();
        ResetItems();
        isOpen = output_.Open(
            {layout_, surroundings_.engine, surroundings_.user, surroundings_.clock, surroundings_.measure});
        if (!isOpen) {
            outcome_.end = RunEnd::TargetCancelled;
            return std::move(outcome_);
        }
        surroundings_.user.ShowProgress();
        RunReport();
    } catch (const RunTimeError& error) {
        outcome_.end = RunEnd::Failed;
        outcome_.failure = error;
    }
    surroundings_.user.HideProgress();
    if (!isOpen) return std::move(outcome_);

    const double start = surroundings_.clock.Timer();
    try {
        const bool isWhole = outcome_.end == RunEnd::Done || outcome_.end == RunEnd::NoRecords;
        output_.Close(isWhole ? Ending::Whole : Ending::Stopped);
    } catch (const RunTimeError& error) {
        if (!outcome_.failure) outcome_.failure = error;
        outcome_.end = RunEnd::Failed;
    }
    outcome_.times.close = Seconds(start);
    outcome_.pages = output_.Pages(run_);
    return std::move(outcome_);
}

/// Reading order, by row and then by column. The order stays in the layout, and items of the same place keep theirs.
void ReportRun::SortItems() {
    std::vector<clssFields> sorted;
    sorted.reserve(static_cast<std::size_t>(layout_.Fields.Count()));
    for (clssFields& item : layout_.Fields) sorted.push_back(std::move(item));
    std::stable_sort(sorted.begin(), sorted.end(), [](const clssFields& left, const clssFields& right) {
        return left.Top != right.Top ? left.Top < right.Top : left.Left < right.Left;
    });
    std::size_t next = 0;
    for (clssFields& item : layout_.Fields) item = std::move(sorted[next++]);
}

void ReportRun::ResetItems() {
    items_.clear();
    masks_.clear();
    for (clssFields& item : layout_.Fields) {
        SetTwips(item, layout_.PictureOf(item));
        item.SubTotal1 = item.SubTotal2 = item.GrandTotal = 0;
        item.LastValue.clear();
        item.ThisValue.clear();
        items_.push_back(&item);
        masks_.emplace_back(item.Mask);
    }
    rows_.assign(items_.size(), {});
    for (int first = 1; first <= Count();) {
        int last = first;
        while (last < Count() && Item(last + 1).TwipTop == Item(first).TwipTop) ++last;
        for (int i = first; i <= last; ++i) rows_[static_cast<std::size_t>(i - 1)] = {first, last};
        first = last + 1;
    }
}

void ReportRun::RunReport() {
    OpenRecords();
    if (!rsFull_->HasRows()) {
        surroundings_.user.Message("There is no data to print on the report.");
        outcome_.end = RunEnd::NoRecords;
        return;
    }
    outcome_.records = rsFull_->RecordCount();
    FindHeadEnd();
    PrintHeading();
    // The heading has made the gap down to the first detail row already, on page 1 as on every other.
    run_.YPos = FirstDetail() <= Count() ? CLng(static_cast<double>(Item(FirstDetail()).Top)) : 0;
    output_.SettleAfterGroupHeading(run_);
    run_.OutLine.clear();
    if (!FindPrimaryRow()) return;
    BindItems();
    ReadRecords();
}

void ReportRun::OpenRecords() {
    const double start = surroundings_.clock.Timer();
    const std::optional<std::string> path = FindReportDatabase(layout_, surroundings_.user);
    if (!path) throw NoReportDatabase(layout_);
    database_ = surroundings_.engine.OpenDatabase(*path, Access::ReadOnly);
    catalog_ = Catalog::Read(*database_);
    select_ = BuildReportSelect(layout_.Fields, layout_.Queries, catalog_, JoinRuleOf(layout_.settings.intJoinType));
    if (select_.strColumns.empty())
        throw RunTimeError(ErrorNumber::SyntaxError,
                           "The layout has no data field that the catalog of \"" + *path + "\" knows.");
    rsFull_ = database_->OpenRecordset(ReportStatement(select_), RecordsetType::Snapshot);
    outcome_.times.open = Seconds(start);
}

void ReportRun::FindHeadEnd() {
    run_.HeadEnd = 0;
    for (int i = 1; i <= Count(); ++i)
        if (IsHeadingItem(Item(i))) run_.HeadEnd = static_cast<std::int16_t>(i);
}

/// Finds the catalog row of the first item that sorts first.
bool ReportRun::FindPrimaryRow() {
    const auto primary =
        std::find_if(items_.begin(), items_.end(), [](const clssFields* item) { return item->PrimarySort; });
    if (primary == items_.end()) {
        surroundings_.user.Message("You need to specify a primary sort field.");
        outcome_.end = RunEnd::NoPrimarySort;
        return false;
    }
    primary_ = catalog_.Find((*primary)->Code);
    if (!primary_) outcome_.end = RunEnd::NoPrimaryRow;
    return primary_ != nullptr;
}

void ReportRun::BindItems() {
    sources_.clear();
    for (int i = 1; i <= Count(); ++i) {
        const clssFields& item = Item(i);
        if (i <= run_.HeadEnd) {
            sources_.emplace_back();
            continue;
        }
        sources_.push_back(
            BindItem(item, catalog_.Find(item.Code), select_.itemColumns[static_cast<std::size_t>(i - 1)], *rsFull_));
    }
}

void ReportRun::ReadRecords() {
    Walk walk = options_.walk;
    if (walk != Walk::OnePass) {
        rsKeys_ = database_->OpenRecordset(GroupListStatement(select_, *primary_), RecordsetType::Snapshot);
        if (!rsKeys_->HasRows()) return;
    }
    if (walk == Walk::Measured) {
        const double start = surroundings_.clock.Timer();
        walk = MeasureWalks();
        outcome_.times.measure = Seconds(start);
    }
    outcome_.walk = walk;
    surroundings_.user.SetProgressMax(outcome_.records);

    const double start = surroundings_.clock.Timer();
    if (walk == Walk::Groups)
        WalkGroups();
    else
        ProcessRecords(*rsFull_);
    const bool endsWithoutTotals = boolCancelReport_ && walk == Walk::Groups && !rsKeys_->IsEOF();
    if (!endsWithoutTotals) PrintGrandTotals();
    if (boolCancelReport_) outcome_.end = RunEnd::Cancelled;
    outcome_.times.compose = Seconds(start);
}

/// Times opening one group, and walking the keys, one group and all records, and takes the quicker way. Where the group
/// statements wouldn't give the same rows there is no choice to make.
Walk ReportRun::MeasureWalks() {
    if (!GroupsGiveTheSameRows()) return Walk::OnePass;
    const auto timedWalk = [this](Recordset& records) {
        const double start = surroundings_.clock.Timer();
        if (records.HasRows())
            for (records.MoveFirst(); !records.IsEOF(); records.MoveNext()) {
            }
        return Seconds(start);
    };
    rsKeys_->MoveFirst();
    const double openStart = surroundings_.clock.Timer();
    rsGroup_ = OpenGroup();
    const double openTime = Seconds(openStart);
    const double keysTime = timedWalk(*rsKeys_);
    const double groupTime = timedWalk(*rsGroup_);
    const double fullTime = timedWalk(*rsFull_);
    const auto groups = static_cast<double>(rsKeys_->RecordCount());
    return groups * openTime + groups * groupTime + keysTime >= fullTime ? Walk::OnePass : Walk::Groups;
}

bool ReportRun::GroupsGiveTheSameRows() {
    if (select_.hasOr) return false;
    const int column = rsKeys_->FindField(primary_->field);
    for (rsKeys_->MoveFirst(); !rsKeys_->IsEOF(); rsKeys_->MoveNext())
        if (!GroupStatementIsExact(*primary_, rsKeys_->Value(column))) return false;
    return true;
}

std::unique_ptr<Recordset> ReportRun::OpenGroup() {
    const ValueView key = rsKeys_->Value(rsKeys_->FindField(primary_->field));
    const auto refusal = [&](ErrorNumber number, const char* reason) {
        return RunTimeError(number, "The group \"" + GeneralText(key) + "\" of [" + primary_->table + "].[" +
                                        primary_->field + "] " + reason + "; run the report in one pass.");
    };
    std::unique_ptr<Recordset> group;
    try {
        group = database_->OpenRecordset(GroupStatement(select_, *primary_, key), RecordsetType::Snapshot);
    } catch (const RunTimeError& error) {
        if (GeneralText(key).find('\'') == std::string::npos) throw;
        // Where in the statement the value did its harm says nothing to who has never seen the statement.
        throw refusal(error.Number(), "can't be asked for, because its value holds a single quote");
    }
    if (!group->HasRows()) throw refusal(ErrorNumber::NoCurrentRecord, "has no records");
    return group;
}

void ReportRun::WalkGroups() {
    rsKeys_->MoveFirst();
    if (!rsGroup_) rsGroup_ = OpenGroup();
    while (!rsKeys_->IsEOF()) {
        if (boolCancelReport_) return;
        ProcessRecords(*rsGroup_);
        rsKeys_->MoveNext();
        if (!rsKeys_->IsEOF()) rsGroup_ = OpenGroup();
    }
}

std::optional<ResolvedPath> FindReportDatabase(const Layout& layout) {
    return FindReportDatabase(layout, layout.settings.strDatabase[1]);
}

std::optional<ResolvedPath> FindReportDatabase(const Layout& layout, std::string_view path) {
    std::vector<std::filesystem::path> folders;
    if (!layout.strLayoutFile.empty()) {
        const std::filesystem::path folder = std::filesystem::path(layout.strLayoutFile).parent_path();
        folders.push_back(folder.empty() ? std::filesystem::path(".") : folder);
    }
    if (!layout.strAppPath.empty()) folders.emplace_back(layout.strAppPath);
    return FindFile(path, folders);
}

std::optional<std::string> FindReportDatabase(const Layout& layout, UserInterface& user) {
    const std::optional<ResolvedPath> found = FindReportDatabase(layout);
    if (!found) return std::nullopt;
    if (found->substituted)
        user.Warn("The database \"" + layout.settings.strDatabase[1] + "\" was not found; \"" + found->path.string() +
                  "\" is used instead.");
    return found->path.string();
}

std::unique_ptr<Database> OpenReportDatabase(const Layout& layout, DBEngine& engine) {
    const std::optional<ResolvedPath> found = FindReportDatabase(layout);
    if (!found) throw NoReportDatabase(layout);
    return engine.OpenDatabase(found->path.string(), Access::ReadOnly);
}

}  // namespace quillform
