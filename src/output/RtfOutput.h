#pragma once

#include <optional>
#include <string>

#include "output/RtfItems.h"
#include "output/RtfLabels.h"
#include "output/TargetFile.h"

namespace quillform {

/// A rich text document: a file that the user names, or the fixed file that the preview shows. Each item is written at
/// once as a group of its own, so that a document of any length takes the same memory. With the labels switch on, the
/// items stand in the cells of a table.
class RtfOutput final : public Output {
public:
    enum class Use {
        Document,  ///< a file to keep
        Screen,  ///< the preview's file, replaced by every run; its items stand on tab stops or are set in Courier New
    };
    RtfOutput(OutputTarget target, Use use) : target_(std::move(target)), use_(use) {}

    bool Open(const OutputContext& context) override;
    void Close(Ending ending) override;
    std::filesystem::path File() const override { return path_; }
    std::int32_t Pages(const RunVariables& run) const override { return labels_ ? labels_->Sheets() : run.Page; }
    void BeginRecord(RunVariables& run) override;
    void EndLine(RunVariables& run) override;
    void SkipLines(RunVariables& run, int count) override;
    void BreakPageAfterGroup(RunVariables& run) override;
    bool RowsAreLines() const override { return true; }
    bool DropsSuppressedItems() const override { return true; }
    bool IsPageFull(const RunVariables& run, const RowPlace& place) const override;
    void FinishPage(RunVariables& run) override;
    void StepRow(RunVariables& run, std::int32_t& yPos, const clssFields& item, std::string& line) override;
    void FillPage(RunVariables& run) override;
    void PlaceItem(RunVariables& run, const PlacedItem& placed, std::string& line) override;

private:
    std::optional<std::filesystem::path> ChooseFile(const OutputContext& context) const;
    void CreateRTF(const RtfFontTable& fonts, const OutputContext& context);
    void WarnOfFonts(const RtfFontTable& fonts) const;
    void WarnOfCommands() const;
    void Write(std::string_view bytes) { file_->Write(bytes); }

    OutputTarget target_;
    Use use_;
    std::filesystem::path path_;
    bool mayLeaveStopped_ = true;
    std::optional<OutputFile> file_;
    UserInterface* user_ = nullptr;
    const Layout* layout_ = nullptr;
    std::optional<RtfItems> items_;
    std::optional<RtfLabels> labels_;
    bool hasOpenLine_ = false;  // something stands on the line that no mark has ended yet
    std::string bytes_;
};

}  // namespace quillform
