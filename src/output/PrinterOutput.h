#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "output/LabelSheet.h"
#include "output/TargetFile.h"
#include "print/PdfTarget.h"
#include "print/Printers.h"

namespace quillform {

/// The printed page, as a PDF file or on a printer, which gets the very same file when the run has come to its end.
/// With the labels switch on, each record is placed on a label of its sheet.
class PrinterOutput final : public Output {
public:
    using MakeTarget = decltype(&print::MakePdfTarget);
    explicit PrinterOutput(OutputTarget target,
                           std::function<std::remove_pointer_t<MakeTarget>> make = print::MakePdfTarget)
        : file_(std::move(target)), make_(std::move(make)) {}

    bool Open(const OutputContext& context) override;
    void Close(Ending ending) override;
    std::filesystem::path File() const override { return printer_ ? std::filesystem::path() : path_; }
    std::int32_t Pages(const RunVariables&) const override { return pages_; }
    void BeginRecord(RunVariables& run) override;
    void BeginDetail(RunVariables& run) override;
    void EndLine(RunVariables&) override {}
    void BeginGroup(int level, std::string_view title) override;
    void SkipLines(RunVariables& run, int count) override;
    void BreakPageAfterGroup(RunVariables& run) override;
    void SettleAfterGroupHeading(RunVariables& run) override;
    void BeginHeading(RunVariables& run) override;
    bool RowsAreLines() const override { return true; }
    void StartRow(RunVariables& run, std::int32_t& yPos, const RowPlace& place) override;
    bool IsPageFull(const RunVariables& run, const RowPlace& place) const override;
    void FinishPage(RunVariables& run) override;
    bool IsPageFullForEmptyRow() const override;
    void StepRow(RunVariables& run, std::int32_t& yPos, const clssFields& item, std::string& line) override;
    void FillPage(RunVariables& run) override;
    bool PrepareItem(RunVariables& run, const PlacedItem& placed) override;
    void PlaceItem(RunVariables& run, const PlacedItem& placed, std::string& line) override;

private:
    bool ChooseFile(UserInterface& user);
    void ChoosePrinter(UserInterface& user);
    void SendToPrinter();
    void ReplaceMissingFonts(const OutputContext& context);
    bool LinesLeft(int lines) const;
    double AlignedX(const PlacedItem& placed) const;
    void DrawText(const PlacedItem& placed);
    void AnnounceGroups();
    double LabelLeft() const { return labels_ ? labels_->Left() : 0; }

    struct ItemFont {
        FontId id{};
        double height = 0;  // of a line of text, twips
    };

    OutputTarget file_;
    std::function<std::remove_pointer_t<MakeTarget>> make_;
    std::filesystem::path path_;
    bool mayLeaveStopped_ = true;
    std::optional<print::Printer> printer_;
    std::optional<print::SpoolFile> spool_;  // where the pages wait for the printer
    std::unique_ptr<print::PdfTarget> target_;
    UserInterface* user_ = nullptr;
    const Layout* layout_ = nullptr;
    std::vector<ItemFont> fonts_;  // by position, entry 0 is position 1
    double lineHeight_ = 0;        // of the current font
    std::optional<LabelSheet> labels_;
    std::vector<std::pair<int, std::string>> groups_;  // groups that begin with the next row drawn
    std::string padded_;
    std::int32_t pages_ = 0;  // of the closed document
};

}  // namespace quillform
