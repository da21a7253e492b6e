#include "output/TextOutput.h"

#include <algorithm>

#include "model/DesignGrid.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr int linesOfPage = 60;

/// Blanks between the item before and the item at a position. An item left of the page moves to its edge and stays
/// there.
int SpacesBeforeItem(collFields& items, int position, double pageColumns) {
    clssFields& item = items.Item(position);
    item.Left = std::max(item.Left, 0.0F);
    double spaces = static_cast<double>(item.Left);
    if (position > 1 && items.Item(position - 1).Top == item.Top)
        spaces -= static_cast<double>(items.Item(position - 1).Left) + items.Item(position - 1).Length;
    spaces = std::max(RoundHalfEven(spaces), 0.0);
    return static_cast<int>(std::min(spaces, pageColumns));
}

}  // namespace

void AppendAligned(std::string_view text, std::string_view alignment, int length, std::string& out) {
    const std::string_view trimmed = Trim(text);
    const auto width = static_cast<std::size_t>(std::max(length, 0));
    const std::size_t characters = CountCharacters(trimmed);
    if (alignment == "R") {
        if (characters < width) out.append(width - characters, ' ');
        out += RightCharacters(trimmed, width);
        return;
    }
    const std::size_t spare = characters < width ? width - characters : 0;
    const std::size_t before = alignment == "L" ? 0 : spare / 2;
    out.append(before, ' ');
    out += LeftCharacters(trimmed, width);
    out.append(spare - before, ' ');
}

bool TextOutput::Open(const OutputContext& context) {
    const std::optional<std::filesystem::path> path = ChooseTarget(target_,
                                                                   {.title = "Save Text File as...",
                                                                    .filter = "Text (*.TXT)|Any (*.*)|*.*",
                                                                    .fileName = "*.TXT",
                                                                    .defaultExtension = "TXT",
                                                                    .initialFolder = {}},
                                                                   context.user);
    if (!path) return false;
    file_.emplace(*path, target_.keepsStopped);
    user_ = &context.user;
    const double pageColumns = PageColumns(context.layout.settings);
    for (int i = 1; i <= context.layout.Fields.Count(); ++i)
        spaces_.push_back(SpacesBeforeItem(context.layout.Fields, i, pageColumns));
    return true;
}

void TextOutput::Close(Ending ending) {
    file_->Finish(ending);
    WarnOfReplaced(*file_, *user_);
}

void TextOutput::EndLine(RunVariables& run) {
    // A record whose last row was left out has nothing on the line.
    if (hasDetailLine_) {
        file_->WriteLine(run.OutLine);
        ++run.Ln;
    }
    run.OutLine.clear();
    hasDetailLine_ = false;
}

void TextOutput::EndHeading(RunVariables& run, std::string& line) {
    if (line.empty()) return;
    file_->WriteLine(line);
    line.clear();
    ++run.Ln;
}

void TextOutput::StepRow(RunVariables&, std::int32_t&, const clssFields&, std::string& line) {
    file_->WriteLine(line);
    line.clear();
    hasDetailLine_ = false;
}

void TextOutput::FillPage(RunVariables& run) {
    for (int line = run.Ln; line < linesOfPage; ++line) file_->WriteLine({});
}

void TextOutput::PlaceItem(RunVariables&, const PlacedItem& placed, std::string& line) {
    line.append(static_cast<std::size_t>(spaces_[static_cast<std::size_t>(placed.position - 1)]), ' ');
    AppendAligned(placed.text, placed.item.FontAllignment, placed.item.Length, line);
    if (placed.band == Band::Normal) hasDetailLine_ = true;
}

}  // namespace quillform
