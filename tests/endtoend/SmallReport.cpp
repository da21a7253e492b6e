#include "endtoend/SmallReport.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "catalog/CatalogTables.h"
#include "data/Engine.h"
#include "persistence/LayoutFile.h"
#include "platform/CodePage.h"

namespace endtoend {

namespace {

using namespace quillform;

void PutText(Recordset& rows, int column, const std::string& text) {
    if (!text.empty()) rows.SetValue(column, {.kind = ValueKind::Text, .text = text});
}

void MakeTable(Database& database, const std::vector<Visit>& visits) {
    constexpr int textSize = 100;
    TableDef table;
    table.Name = "Visits";
    for (const char* name : {"Area", "Town", "Note"})
        table.Fields.push_back({.Name = name, .Type = FieldType::Text, .Size = textSize});
    table.Fields.push_back({.Name = "Guests", .Type = FieldType::Long, .Size = 4});
    database.AppendTable(table);
    const auto rows = database.OpenRecordset("Visits", RecordsetType::Dynaset, RecordsetOption::AppendOnly);
    for (const Visit& visit : visits) {
        rows->AddNew();
        PutText(*rows, 0, visit.area);
        PutText(*rows, 1, visit.town);
        PutText(*rows, 2, visit.note);
        rows->SetValue(3, {.kind = ValueKind::Integer, .integer = visit.guests});
        rows->Update();
    }
}

}  // namespace

std::string MakeVisits(const ScratchFolder& folder, const std::vector<Visit>& visits,
                       const std::vector<sample::ColumnPlan>& columns, const std::function<void(Layout&)>& change) {
    const SystemClock clock;
    const auto engine = data::MakeEngine(clock);
    const std::string path = folder.File("Visits.mdb");
    MakeTable(*engine->CreateDatabase(path, DatabaseVersion::Jet40), visits);
    const Outcome configured = Quillform({"configure", path, "--defaults"});
    EXPECT_EQ(configured.exitCode, 0) << configured.errors;

    const Catalog catalog = Catalog::Read(*engine->OpenDatabase(path, Access::ReadOnly));
    sample::LayoutDraft draft(catalog, path, sample::Accent{1});
    constexpr int left = 0;
    constexpr int right = 75;
    draft.TitleBlock("Visits", "by area and town", left, right);
    draft.RecordCount(3, right);
    draft.Columns(columns, 4, left, right);
    draft.Groups(20, 1, 20, 0);
    Layout layout = draft.Take();
    if (change) change(layout);
    WriteFile(folder / "VISITS.REP", Cp1252FromUtf8(LayoutText(layout)));
    return folder.File("VISITS.REP");
}

void ExpectGolden(const std::string& name, const std::string& actual) {
    const std::filesystem::path golden = std::filesystem::path(QUILLFORM_SOURCE_DIR) / "tests/golden" / name;
    if (std::getenv("QUILLFORM_ACCEPT_GOLDEN") != nullptr) WriteFile(golden, actual);
    const std::string difference = FirstDifference(ReadFile(golden), actual);
    if (!difference.empty()) WriteFile(golden.string() + ".actual", actual);
    EXPECT_EQ(difference, "") << "the whole content is in " << golden << ".actual";
}

}  // namespace endtoend
