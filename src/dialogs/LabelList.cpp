#include "dialogs/LabelList.h"

#include <system_error>
#include <utility>

#include "catalog/CatalogTables.h"
#include "engine/ReportRun.h"
#include "platform/Numbers.h"

namespace quillform::dialogs {

namespace {

std::vector<std::string> ReadDescriptions(Database& database) {
    std::vector<std::string> descriptions;
    if (database.FindTable(catalogLabelsTable) == nullptr) return descriptions;
    const auto rows =
        database.OpenRecordset("SELECT * FROM [Report - Labels] ORDER BY [Label Description]", RecordsetType::Snapshot);
    const int column = rows->FindField("Label Description");
    descriptions.reserve(static_cast<std::size_t>(rows->RecordCount()));
    for (; !rows->IsEOF(); rows->MoveNext()) descriptions.push_back(rows->Text(column));
    return descriptions;
}

std::string InApostrophes(std::string_view text) {
    std::string quoted = "'";
    for (const char letter : text) quoted.append(letter == '\'' ? 2 : 1, letter);
    return quoted + "'";
}

}  // namespace

LabelList::Look LabelList::LookAt(std::string_view path) const {
    const auto found = FindReportDatabase(layout_, path);
    if (!found) return {};
    std::error_code gone;  // since it was found; then there is nothing to compare, and the open says the rest
    return {found->path, std::filesystem::last_write_time(found->path, gone),
            std::filesystem::file_size(found->path, gone)};
}

bool LabelList::Read(std::string_view path) {
    Look look = LookAt(path);
    if (looked_ == look) return false;
    looked_ = std::move(look);
    descriptions_.clear();
    if (looked_->path.empty()) return true;
    try {
        descriptions_ = ReadDescriptions(*engine_.OpenDatabase(looked_->path.string(), Access::ReadOnly));
    } catch (const RunTimeError&) {
        // The list is an offer: a database that can't be read has none, and the run tells what is wrong with it.
    }
    return true;
}

std::optional<LabelStyle> LabelList::Find(std::string_view path, std::string_view description) const {
    const auto found = FindReportDatabase(layout_, path);
    if (!found)
        throw RunTimeError(ErrorNumber::FileMissing, "The database \"" + std::string(path) + "\" does not exist.");
    const auto database = engine_.OpenDatabase(found->path.string(), Access::ReadOnly);
    const auto row = database->OpenRecordset(
        "SELECT * FROM [Report - Labels] WHERE [Label Description] = " + InApostrophes(description),
        RecordsetType::Snapshot);
    if (!row->HasRows()) return std::nullopt;
    LabelStyle style;
    style.description = row->Text("Label Description");
    for (std::size_t i = 0; i < labelMeasures.size(); ++i) style.measures[i] = row->Text(labelMeasures[i].column);
    if (const std::string paper = row->Text("Paper Size"); !paper.empty()) style.paper = CInt(Val(paper));
    return style;
}

}  // namespace quillform::dialogs
