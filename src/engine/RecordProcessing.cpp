#include "engine/ReportRun.h"
#include "platform/Text.h"

namespace quillform {

namespace {

// The progress panel can't show more steps than this anyway; a call for each record would.
constexpr std::int64_t recordsPerProgressStep = 64;

std::string_view Leading(std::string_view text, int characters) {
    return LeftCharacters(Trim(text), static_cast<std::size_t>(characters));
}

}  // namespace

void ReportRun::ProcessRecords(Recordset& shadow) {
    shadow.MoveFirst();
    ComposeFirstRecord(shadow);
    shadow.MoveNext();
    while (!shadow.IsEOF()) {
        if (!ComposeNextRecord(shadow)) return;
        shadow.MoveNext();
    }
    CloseGroups();
}

void ReportRun::ReadValues(const Recordset& shadow) {
    for (int i = FirstDetail(); i <= Count(); ++i)
        GetItemValue(sources_[static_cast<std::size_t>(i - 1)], shadow, Item(i), text_);
}

void ReportRun::ComposeFirstRecord(const Recordset& shadow) {
    output_.BeginRecord(run_);
    groupStarts_[0] = groupStarts_[1] = true;
    ReadValues(shadow);
    ComposeDetail();
    output_.EndRecord(run_);
}

/// False when the user cancelled.
bool ReportRun::ComposeNextRecord(const Recordset& shadow) {
    output_.BeginRecord(run_);
    ReadValues(shadow);
    CheckGroupBreaks(RecordsEnd::No);
    ComposeDetail();
    if (surroundings_.user.YieldAndIsCancelled()) boolCancelReport_ = true;
    if (boolCancelReport_) return false;
    CountRecord();
    output_.EndRecord(run_);
    return true;
}

void ReportRun::ComposeDetail() {
    AnnounceGroups();
    output_.BeginDetail(run_);
    for (int i = FirstDetail(); i <= Count(); ++i) {
        AdvanceLine(i, Band::Normal, run_.YPos, run_.OutLine);
        PrintItem(i, Band::Normal, run_.OutLine);
    }
    run_.boolJustDidAPageBreak = false;
}

void ReportRun::CountRecord() {
    if (gauge_ + 1 > outcome_.records) return;
    ++gauge_;
    if (gauge_ % recordsPerProgressStep == 0) surroundings_.user.SetProgress(gauge_);
}

/// The open groups end with their records. The numbers of 0 make their totals whole, and the empty texts let the first
/// record of a later group show what it would have suppressed.
void ReportRun::CloseGroups() {
    for (clssFields* item : items_) {
        item->CurrentTotal = 0;
        item->ThisValue.clear();
    }
    CheckGroupBreaks(RecordsEnd::Yes);
}

void ReportRun::CheckGroupBreaks(RecordsEnd recordsEnd) {
    output_.EndLine(run_);
    const ReportSettings& settings = layout_.settings;
    const bool primaryEnds = GroupEnds(&clssFields::PrimarySort, settings.intCharChange1, recordsEnd);
    if (primaryEnds || GroupEnds(&clssFields::SecondarySort, settings.intCharChange2, recordsEnd)) {
        PrintSubTotals2();
        EndGroup(settings.intSpaces2, settings.boolPageBreak2);
        groupStarts_[1] = true;
    }
    if (primaryEnds) {
        PrintSubTotals1();
        EndGroup(settings.intSpaces1, settings.boolPageBreak1);
        groupStarts_[0] = true;
    }
}

/// Whether a level's group ends. At the end of the records it does in any case, because the values to compare with say
/// nothing then: they are empty after a single record, and may be empty by themselves.
bool ReportRun::GroupEnds(bool clssFields::*level, int leadingCharacters, RecordsEnd recordsEnd) const {
    if (leadingCharacters <= 0) return false;
    for (const clssFields* item : items_) {
        if (!(item->*level)) continue;
        if (recordsEnd == RecordsEnd::Yes) return true;
        if (Leading(item->LastValue, leadingCharacters) != Leading(item->ThisValue, leadingCharacters)) return true;
    }
    return false;
}

void ReportRun::EndGroup(int spaces, bool pageBreak) {
    if (spaces > 0) output_.SkipLines(run_, spaces);
    if (!pageBreak) return;
    output_.BreakPageAfterGroup(run_);
    run_.Ln = 0;
    PrintHeading();
    output_.SettleAfterGroupHeading(run_);
}

/// Tells the output which groups begin with the record about to be composed.
void ReportRun::AnnounceGroups() {
    const auto announce = [this](int level, bool clssFields::*flag) {
        bool& starts = groupStarts_[level - 1];
        if (!starts) return;
        starts = false;
        for (const clssFields* item : items_)
            if (item->*flag) {
                output_.BeginGroup(level, Trim(item->ThisValue));
                return;
            }
    };
    announce(1, &clssFields::PrimarySort);
    announce(2, &clssFields::SecondarySort);
}

}  // namespace quillform
