#include "output/MergeOutput.h"

#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr int linesOfPage = 60;
constexpr std::string_view fieldMark = "\x12\n";
constexpr std::string_view recordMark = "\x05\n";

void AppendQuoted(std::string_view text, std::string& line) {
    if (!Trim(line).empty()) line += ',';
    line += '"';
    line += text;
    line += '"';
}

FileDialog DocumentDialog() {
    return {.title = "Save Merge File as...",
            .filter = "Word for Windows/WordPerfect Mail Merge (*.DOC)",
            .fileName = "*.DOC",
            .defaultExtension = "DOC",
            .initialFolder = {}};
}

}  // namespace

bool MergeOutput::Open(const OutputContext& context) {
    const std::optional<std::filesystem::path> path = ChooseTarget(target_, Dialog(), context.user);
    if (!path) return false;
    file_.emplace(*path, target_.keepsStopped);
    user_ = &context.user;
    BeginFile(context.layout);
    return true;
}

void MergeOutput::Close(Ending ending) {
    file_->Finish(ending);
    WarnOfReplaced(*file_, *user_);
}

void MergeOutput::EndLine(RunVariables& run) {
    EndFields(run.OutLine);
    file_->WriteLine(run.OutLine);
    run.OutLine.clear();
    ++run.Ln;
}

void MergeOutput::PlaceItem(RunVariables&, const PlacedItem& placed, std::string& line) {
    AppendField(Trim(placed.text), line);
}

FileDialog CommaSeparatedOutput::Dialog() const {
    return {.title = "Save Merge File as...",
            .filter = "Text (*.Mrg)|*.dat|Doc (*.doc)|*.doc|Any (*.*)|*.*",
            .fileName = "*.MRG",
            .defaultExtension = "MRG",
            .initialFolder = {}};
}

void CommaSeparatedOutput::AppendField(std::string_view text, std::string& line) const { AppendQuoted(text, line); }

/// All items of a record end up in the one line, so the rest of the gap is skipped.
void CommaSeparatedOutput::StepRow(RunVariables&, std::int32_t& yPos, const clssFields& item, std::string&) {
    yPos = CLng(static_cast<double>(item.Top));
}

void CommaSeparatedOutput::FillPage(RunVariables& run) {
    for (int line = run.Ln; line < linesOfPage; ++line) Target().WriteLine({});
}

FileDialog WordMergeOutput::Dialog() const { return DocumentDialog(); }

void WordMergeOutput::BeginFile(const Layout& layout) {
    std::string header;
    for (const clssFields& item : layout.Fields) {
        if (!header.empty()) header += ',';
        header.append("\"").append(item.Text).append("\"");
    }
    Target().WriteLine(header);
}

void WordMergeOutput::AppendField(std::string_view text, std::string& line) const { AppendQuoted(text, line); }

FileDialog WordPerfectOutput::Dialog() const { return DocumentDialog(); }

/// The first field of a record opens with a field that holds one double quote.
void WordPerfectOutput::AppendField(std::string_view text, std::string& line) const {
    if (Trim(line).empty()) line = "\"";
    line.append(fieldMark).append(text).append(fieldMark);
}

void WordPerfectOutput::EndFields(std::string& line) const {
    if (line.ends_with(fieldMark)) line.resize(line.size() - fieldMark.size());
    line += recordMark;
}

}  // namespace quillform
