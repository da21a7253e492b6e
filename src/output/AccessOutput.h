#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/DataAccess.h"
#include "output/OutputRooms.h"
#include "platform/OutputFile.h"

namespace quillform {

/// A new Access database with one table, "Project1 Table": a row per record, a text column per data item. Headings and
/// totals add nothing to it.
///
/// The file is made aside, in transactions of some megabytes, so that the memory it takes doesn't grow with the
/// report, and is renamed when it is whole. A text longer than its column is cut; letters that the format can't hold
/// become "?". The user is told how many at the end.
class AccessOutput final : public Output {
public:
    explicit AccessOutput(OutputTarget target) : target_(std::move(target)) {}

    bool Open(const OutputContext& context) override;
    void Close(Ending ending) override;
    std::filesystem::path File() const override { return path_; }
    void BeginRecord(RunVariables& run) override;
    void EndRecord(RunVariables& run) override;
    void EndLine(RunVariables&) override {}
    bool RowsAreLines() const override { return false; }
    void StepRow(RunVariables&, std::int32_t&, const clssFields&, std::string&) override {}
    void PlaceItem(RunVariables& run, const PlacedItem& placed, std::string& line) override;

private:
    struct ExportColumn {
        int index = -1;  ///< in the table; -1: the item has no column
        std::size_t size = 0;
    };

    void CreateMDB(const std::filesystem::path& FileName, const OutputContext& context, bool& boolCreated);
    void MakeTable(DatabaseVersion version, const OutputContext& context);
    bool MayReplace(const std::filesystem::path& path, UserInterface& user) const;
    std::string_view Fitting(std::string_view text, std::size_t size);
    void WarnOfLosses() const;

    OutputTarget target_;
    std::filesystem::path path_;
    bool mayLeaveStopped_ = true;
    UserInterface* user_ = nullptr;
    std::vector<ExportColumn> columns_;  // by position, entry 0 is position 1
    bool holdsEveryLetter_ = true;
    std::size_t openBytes_ = 0;  // about what the open transaction holds
    std::size_t cut_ = 0;
    std::size_t replaced_ = 0;
    std::optional<AsidePath> aside_;
    std::unique_ptr<Database> dbExport_;
    std::unique_ptr<Recordset> rsExport_;
};

}  // namespace quillform
