#pragma once

#include <optional>

#include "output/TargetFile.h"

namespace quillform {

/// The merge files: one record a line, detail items only, whatever the number of layout rows. The base knows the walk;
/// each file format knows its dialog, its fields and its record ends.
class MergeOutput : public Output {
public:
    bool Open(const OutputContext& context) override;
    void Close(Ending ending) override;
    std::filesystem::path File() const override { return file_->Path(); }
    void EndLine(RunVariables& run) override;
    bool RowsAreLines() const override { return false; }
    void StepRow(RunVariables&, std::int32_t&, const clssFields&, std::string&) override {}
    void PlaceItem(RunVariables& run, const PlacedItem& placed, std::string& line) override;

protected:
    explicit MergeOutput(OutputTarget target) : target_(std::move(target)) {}
    virtual FileDialog Dialog() const = 0;
    virtual void BeginFile(const Layout&) {}
    virtual void AppendField(std::string_view text, std::string& line) const = 0;
    virtual void EndFields(std::string&) const {}
    TargetFile& Target() { return *file_; }

private:
    OutputTarget target_;
    std::optional<TargetFile> file_;
    UserInterface* user_ = nullptr;
};

/// Comma separated: each field in double quotes, which are not doubled inside.
class CommaSeparatedOutput final : public MergeOutput {
public:
    explicit CommaSeparatedOutput(OutputTarget target) : MergeOutput(std::move(target)) {}
    void StepRow(RunVariables& run, std::int32_t& yPos, const clssFields& item, std::string& line) override;
    void FillPage(RunVariables& run) override;

protected:
    FileDialog Dialog() const override;
    void AppendField(std::string_view text, std::string& line) const override;
};

/// Merge data for a word processor: a header line of field names, then comma separated records.
class WordMergeOutput final : public MergeOutput {
public:
    explicit WordMergeOutput(OutputTarget target) : MergeOutput(std::move(target)) {}

protected:
    FileDialog Dialog() const override;
    void BeginFile(const Layout& layout) override;
    void AppendField(std::string_view text, std::string& line) const override;
};

/// Merge data with field marks (characters 18 and 10) and record marks (5 and 10).
class WordPerfectOutput final : public MergeOutput {
public:
    explicit WordPerfectOutput(OutputTarget target) : MergeOutput(std::move(target)) {}

protected:
    FileDialog Dialog() const override;
    void AppendField(std::string_view text, std::string& line) const override;
    void EndFields(std::string& line) const override;
};

}  // namespace quillform
