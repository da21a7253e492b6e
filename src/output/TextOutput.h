#pragma once

#include <optional>
#include <vector>

#include "output/TargetFile.h"

namespace quillform {

/// Lays a text in exactly `length` characters: "L" left, "R" right keeping the last characters, anything else centred
/// keeping the first ones. Outer blanks of the text don't count.
void AppendAligned(std::string_view text, std::string_view alignment, int length, std::string& out);

/// A text file laid out in columns like the page: pages of 60 lines, no fonts.
class TextOutput final : public Output {
public:
    explicit TextOutput(OutputTarget target) : target_(std::move(target)) {}

    bool Open(const OutputContext& context) override;
    void Close(Ending ending) override;
    std::filesystem::path File() const override { return file_->Path(); }
    void EndLine(RunVariables& run) override;
    void EndHeading(RunVariables& run, std::string& line) override;
    bool RowsAreLines() const override { return true; }
    void StepRow(RunVariables& run, std::int32_t& yPos, const clssFields& item, std::string& line) override;
    void FillPage(RunVariables& run) override;
    void PlaceItem(RunVariables& run, const PlacedItem& placed, std::string& line) override;

private:
    OutputTarget target_;
    std::optional<TargetFile> file_;
    UserInterface* user_ = nullptr;
    std::vector<int> spaces_;     // blanks before each item, entry 0 is position 1
    bool hasDetailLine_ = false;  // the line under construction holds a detail row
};

}  // namespace quillform
