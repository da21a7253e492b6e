#include "output/RtfOutput.h"

#include "output/RtfText.h"
#include "platform/Paths.h"

namespace quillform {

namespace {

constexpr std::int32_t fullPage = 50;  // lines; one more, and a new row goes to a new page
constexpr std::string_view rowMark = " \\par\r\n";
constexpr std::string_view lineMark = "\\par\r\n";
constexpr std::string_view pageMark = " {\\page}\r\n";
constexpr std::string_view documentEnd = "\\par}\r\n";

bool UsesCourier(const Layout& layout, RtfOutput::Use use) {
    return use == RtfOutput::Use::Screen && layout.settings.boolCourier;
}

}  // namespace

bool RtfOutput::Open(const OutputContext& context) {
    const std::optional<std::filesystem::path> path = ChooseFile(context);
    if (!path) return false;
    user_ = &context.user;
    layout_ = &context.layout;
    path_ = *path;
    // What the screen showed before is of no worth, but a whole report of yesterday is.
    mayLeaveStopped_ = target_.keepsStopped && (use_ == Use::Screen || MayLeaveStoppedFile(path_));
    if (context.layout.settings.boolLabels) labels_.emplace(context.layout.settings);
    const RtfFontTable fonts(context.layout.Fields);
    if (use_ == Use::Screen) FitItemsToTabs(context.layout.Fields);
    const bool isCourier = UsesCourier(context.layout, use_);
    items_.emplace(context.layout, fonts, isCourier ? RtfPlacing::Courier : RtfPlacing::Tabs, context.measure);
    file_.emplace(path_);
    CreateRTF(fonts, context);
    WarnOfFonts(fonts);
    return true;
}

std::optional<std::filesystem::path> RtfOutput::ChooseFile(const OutputContext& context) const {
    if (use_ == Use::Screen) return TargetPath(target_.file.value_or(ScreenFileOf(context.layout)));
    return ChooseTarget(target_,
                        {.title = "Save Rich Text File File as...",
                         .filter = "Text (*.RTF)|Any (*.*)|*.*",
                         .fileName = "*.RTF",
                         .defaultExtension = "RTF",
                         .initialFolder = {}},
                        context.user);
}

/// Writes the document up to its body.
void RtfOutput::CreateRTF(const RtfFontTable& fonts, const OutputContext& context) {
    const bool isLandscape = context.layout.settings.intOrientation == 0;
    bytes_.clear();
    AppendRtfText(RtfFrame(fonts, isLandscape, context.clock.Now()), bytes_);
    Write(bytes_);
}

void RtfOutput::WarnOfFonts(const RtfFontTable& fonts) const {
    std::vector<std::string> lost = fonts.LeftOut();
    if (UsesCourier(*layout_, use_))
        lost = fonts.HasCourier() ? std::vector<std::string>() : std::vector{std::string(RtfFontTable::courier)};
    if (lost.empty()) return;
    std::string sentence = "Rich text holds " + std::to_string(RtfFontTable::slots) + " fonts; \"" + lost.front() + '"';
    if (lost.size() > 1) sentence += " and " + std::to_string(lost.size() - 1) + " more";
    user_->Warn(sentence + " became \"" + fonts.Names().front() + "\".");
}

void RtfOutput::WarnOfCommands() const {
    const std::size_t count = items_->TextsWithCommands();
    if (count == 0) return;
    user_->Warn("\"" + path_.string() + "\": " + std::to_string(count) + (count == 1 ? " text holds" : " texts hold") +
                " a backslash or a brace, which readers of rich text take for commands.");
}

void RtfOutput::Close(Ending ending) {
    bytes_.clear();
    if (labels_) labels_->End(bytes_);
    bytes_ += documentEnd;
    Write(bytes_);
    const bool isLeft = ending == Ending::Whole || mayLeaveStopped_;
    if (isLeft) file_->Commit();
    file_.reset();
    WarnOfCommands();
    if (isLeft && use_ == Use::Screen) user_->ShowPrintWindow(path_.string());
}

void RtfOutput::BeginRecord(RunVariables& run) {
    if (!labels_) return;
    const int first = run.HeadEnd + 1;
    bytes_.clear();
    labels_->BeginLabel(first <= layout_->Fields.Count() ? layout_->Fields.Item(first).TwipStart : 0, bytes_);
    Write(bytes_);
}

/// A record whose last row was left out has nothing on the line, and the next one takes its place.
void RtfOutput::EndLine(RunVariables& run) {
    if (labels_ || !hasOpenLine_) return;
    Write(lineMark);
    ++run.Ln;
    hasOpenLine_ = false;
}

void RtfOutput::SkipLines(RunVariables& run, int count) {
    for (int i = 0; i < count; ++i) Write(lineMark);
    run.Ln += count;
}

void RtfOutput::BreakPageAfterGroup(RunVariables&) { Write(pageMark); }

bool RtfOutput::IsPageFull(const RunVariables& run, const RowPlace& place) const {
    return run.Ln > fullPage && (place.newRowByTwips || (place.isFirst && !labels_));
}

void RtfOutput::FinishPage(RunVariables&) { Write(pageMark); }

void RtfOutput::StepRow(RunVariables&, std::int32_t&, const clssFields& item, std::string&) {
    hasOpenLine_ = false;
    // A label begins on a line of its own already.
    if (labels_ && &item == &layout_->Fields.Item(1)) return;
    Write(rowMark);
}

void RtfOutput::FillPage(RunVariables&) { Write(pageMark); }

void RtfOutput::PlaceItem(RunVariables&, const PlacedItem& placed, std::string&) {
    bytes_.clear();
    items_->AppendGroup(placed.position, placed.text, bytes_);
    Write(bytes_);
    hasOpenLine_ = true;
}

}  // namespace quillform
