#include "output/PrinterOutput.h"

#include <algorithm>

#include "model/DesignGrid.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr int noFill = 15;            // back colours from here on draw no box
constexpr std::size_t pageText = 40;  // blanks that fill up a short text on a page
constexpr std::string_view defaultFont = "Times New Roman";

bool IsPresent(const std::vector<std::string>& fonts, std::string_view wanted) {
    return std::any_of(fonts.begin(), fonts.end(),
                       [wanted](const std::string& font) { return EqualCaseBlind(Trim(font), wanted); });
}

PageRole RoleOf(Band band) {
    switch (band) {
        case Band::Heading:
            return PageRole::Heading;
        case Band::Normal:
            return PageRole::Detail;
        case Band::SubTotal1A:
        case Band::SubTotal1B:
        case Band::SubTotal2A:
        case Band::SubTotal2B:
            return PageRole::SubTotal;
        case Band::GrandA:
        case Band::GrandB:
            return PageRole::GrandTotal;
    }
    return PageRole::Detail;
}

/// A report on other paper than its layout asks for is told, not found out at the printer.
void WarnOfPaper(int paperNumber, UserInterface& user) {
    PaperInches known;
    if (FindPaper(paperNumber, known)) return;
    user.Warn("The layout's paper number " + std::to_string(paperNumber) + " isn't known; Letter is used instead.");
}

std::string TitleOf(const Layout& layout) {
    if (layout.strLayoutFile.empty()) return "Report";
    return std::filesystem::path(std::string(FileNameOf(layout.strLayoutFile))).stem().string();
}

}  // namespace

bool PrinterOutput::ChooseFile(UserInterface& user) {
    const std::optional<std::filesystem::path> path = ChooseTarget(file_,
                                                                   {.title = "Save PDF File as...",
                                                                    .filter = "PDF (*.PDF)|*.pdf",
                                                                    .fileName = "*.PDF",
                                                                    .defaultExtension = "PDF",
                                                                    .initialFolder = {}},
                                                                   user);
    if (!path) return false;
    path_ = *path;
    mayLeaveStopped_ = file_.keepsStopped && MayLeaveStoppedFile(path_);
    return true;
}

void PrinterOutput::ChoosePrinter(UserInterface& user) {
    printer_ = print::FindPrinter(file_.printer->name);
    if (printer_->state == print::PrinterState::Stopped)
        user.Warn("The printer \"" + printer_->name + "\" prints nothing just now (" + print::StateInWords(*printer_) +
                  "); the report will wait for it.");
    path_ = spool_.emplace().Path();
    mayLeaveStopped_ = false;
}

bool PrinterOutput::Open(const OutputContext& context) {
    if (file_.printer)
        ChoosePrinter(context.user);
    else if (!ChooseFile(context.user))
        return false;
    user_ = &context.user;
    layout_ = &context.layout;
    target_ = make_(path_, {.title = TitleOf(context.layout), .created = context.clock.Now()});
    target_->SetOrientation(context.layout.settings.intOrientation == 0);
    target_->SetPaperSize(context.layout.settings.intPaperSize);
    // A label sheet is measured by its maker from the edges of the paper, whatever a printer can reach.
    if (context.layout.settings.boolLabels) target_->SetOrigin(PageOrigin::Sheet);
    WarnOfPaper(context.layout.settings.intPaperSize, context.user);
    ReplaceMissingFonts(context);
    for (const clssFields& item : context.layout.Fields) {
        const FontId font = target_->Font(FontOf(item));
        fonts_.push_back({font, target_->TextHeight(font)});
    }
    if (context.layout.settings.boolLabels) labels_.emplace(context.layout.settings);
    return true;
}

/// A font that the target lacks becomes "Times New Roman" in the layout, and stays so.
void PrinterOutput::ReplaceMissingFonts(const OutputContext& context) {
    const std::vector<std::string>& present = target_->Fonts();
    std::vector<std::string> told;
    for (clssFields& item : context.layout.Fields) {
        const std::string name(Trim(item.FontName));
        if (IsPresent(present, name)) continue;
        item.FontName = defaultFont;
        if (std::find(told.begin(), told.end(), name) != told.end()) continue;
        context.user.Warn("The font \"" + name + "\" is not installed; \"" + std::string(defaultFont) +
                          "\" is used instead.");
        told.push_back(name);
    }
}

void PrinterOutput::Close(Ending ending) {
    if (ending == Ending::Stopped && !mayLeaveStopped_) {
        target_.reset();
        return;
    }
    const bool hasPages = target_->PageCount() > 0;
    target_->EndDoc();
    pages_ = target_->PageCount();
    for (const std::string& note : target_->FontSubstitutions()) user_->Note(note);
    WarnOfCharacters(path_, target_->MissingCharacters(), " that no installed font has", "became an empty box",
                     "became empty boxes", *user_);
    target_.reset();
    if (printer_ && hasPages) SendToPrinter();
}

void PrinterOutput::SendToPrinter() {
    const ReportSettings& settings = layout_->settings;
    const int job = print::SendJob(*printer_, path_,
                                   {.title = TitleOf(*layout_),
                                    .paper = print::PaperSizeOf(settings.intPaperSize),
                                    .isLandscape = settings.intOrientation == 0,
                                    .copies = file_.printer->copies},
                                   [this] { return user_->YieldAndIsCancelled(); });
    user_->Note("Sent to the printer \"" + printer_->name + "\" as job " + std::to_string(job) + ".");
    spool_.reset();
}

void PrinterOutput::BeginRecord(RunVariables&) {
    if (labels_ && labels_->Advance() == LabelSheet::Step::NextSheet) target_->NewPage();
}

void PrinterOutput::BeginDetail(RunVariables& run) {
    if (!labels_) return;
    const int count = layout_->Fields.Count();
    run.LineHolder = labels_->Top();
    double height = lineHeight_;
    if (count > 0) {
        const clssFields& item = layout_->Fields.Item(run.HeadEnd >= 1 && run.HeadEnd <= count ? run.HeadEnd : 1);
        height = item.TwipBottom - item.TwipTop;
    }
    run.NextLineHolder = run.LineHolder + height;
}

void PrinterOutput::BeginGroup(int level, std::string_view title) {
    if (!labels_) groups_.emplace_back(level, std::string(title));
}

void PrinterOutput::SkipLines(RunVariables& run, int count) {
    for (int i = 0; i < count; ++i) target_->Print();
    SettleAfterGroupHeading(run);
}

void PrinterOutput::BreakPageAfterGroup(RunVariables&) { target_->NewPage(); }

/// The rows go on below the last thing printed. Where a taller item stands on that row, they go on below it: the line
/// of the item printed last may end above.
void PrinterOutput::SettleAfterGroupHeading(RunVariables& run) {
    run.LineHolder = run.NextLineHolder = std::max(target_->CurrentY(), run.NextLineHolder);
}

void PrinterOutput::BeginHeading(RunVariables& run) { run.LineHolder = run.NextLineHolder = target_->CurrentY(); }

void PrinterOutput::StartRow(RunVariables& run, std::int32_t& yPos, const RowPlace& place) {
    if (!place.isFirst && !place.newRowByTop) return;
    run.LineHolder = run.NextLineHolder;
    yPos += intGridY;
    target_->BeginRow();
}

bool PrinterOutput::LinesLeft(int lines) const {
    return target_->ScaleHeight() - lines * lineHeight_ >= target_->CurrentY();
}

bool PrinterOutput::IsPageFull(const RunVariables&, const RowPlace& place) const {
    return !labels_ && (place.isFirst || place.newRowByTop) && !LinesLeft(1);
}

void PrinterOutput::FinishPage(RunVariables&) { target_->NewPage(); }

bool PrinterOutput::IsPageFullForEmptyRow() const { return !labels_ && !LinesLeft(1); }

void PrinterOutput::StepRow(RunVariables& run, std::int32_t&, const clssFields&, std::string&) {
    target_->Print();
    SettleAfterGroupHeading(run);
    target_->SetCurrentY(run.LineHolder);
}

void PrinterOutput::FillPage(RunVariables& run) {
    target_->NewPage();
    run.LineHolder = target_->CurrentY();
}

bool PrinterOutput::PrepareItem(RunVariables& run, const PlacedItem& placed) {
    const ItemFont& font = fonts_[static_cast<std::size_t>(placed.position - 1)];
    target_->SetFont(font.id);
    lineHeight_ = font.height;
    target_->SetForeColor(placed.item.FontForeColor);
    target_->SetCurrentY(run.LineHolder);
    return !labels_ && !LinesLeft(2);
}

double PrinterOutput::AlignedX(const PlacedItem& placed) const {
    const clssFields& item = placed.item;
    const bool isCentred = item.FontAllignment == "C";
    if (!isCentred && item.FontAllignment != "R") return item.TwipStart;
    const double width = target_->TextWidth(Trim(placed.text));
    const double spare = item.TwipEnd - item.TwipStart - width;
    const double shift = isCentred ? (item.TwipEnd - item.TwipStart) / 2.0 - width / 2 : spare;
    return item.TwipStart + std::max(shift, 0.0);
}

void PrinterOutput::DrawText(const PlacedItem& placed) {
    const auto length = static_cast<std::size_t>(std::max<int>(placed.item.Length, 0));
    if (!placed.item.FontUnderline) {
        // The blanks that fill up the text can't be seen, and would only be in the way of whoever copies the text.
        target_->Print(RTrim(LeftCharacters(placed.text, length)));
        return;
    }
    padded_ = placed.text;
    padded_.append(labels_ ? length : pageText, ' ');
    target_->Print(LeftCharacters(padded_, length));
}

void PrinterOutput::PlaceItem(RunVariables& run, const PlacedItem& placed, std::string&) {
    const clssFields& item = placed.item;
    target_->SetRole(RoleOf(placed.band));
    if (placed.band == Band::Normal && !groups_.empty()) AnnounceGroups();
    const int height = item.TwipBottom - item.TwipTop;
    run.NextLineHolder = std::max(run.NextLineHolder, target_->CurrentY() + height);
    target_->SetCurrentX(AlignedX(placed) + LabelLeft());
    DrawText(placed);
    if (item.FontBackColor < noFill)
        target_->FillBox(LabelLeft() + item.TwipStart, run.LineHolder, LabelLeft() + item.TwipEnd,
                         run.LineHolder + height, item.FontBackColor + 1);
}

void PrinterOutput::AnnounceGroups() {
    for (const auto& [level, title] : groups_) target_->AddOutlineEntry(level, title);
    groups_.clear();
}

}  // namespace quillform
