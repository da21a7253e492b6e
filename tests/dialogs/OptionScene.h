#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "catalog/CatalogDefinitions.h"
#include "data/Engine.h"
#include "dialogs/LabelMeasures.h"
#include "model/Layout.h"
#include "platform/Clock.h"

namespace quillform::dialogs::testing {

/// A row of `Report - Labels`, its measures in the order of the boxes.
struct LabelRow {
    std::string description;
    std::vector<double> measures;
    int paper = 1;
};

/// A layout whose report database holds label styles, in a folder of its own.
class OptionScene {
public:
    OptionScene() {
        layout.strAppPath = folder.Path().string() + "/";
        layout.ClearLayout();
        layout.settings.strDatabase[1] = folder.File("labels.mdb");
    }
    void MakeDatabase(const std::string& path, const std::vector<LabelRow>& rows) {
        const auto database = engine->CreateDatabase(path, DatabaseVersion::Jet40);
        database->BeginTrans();
        database->AppendTable(LabelsTableDef());
        const auto records =
            database->OpenRecordset("Report - Labels", RecordsetType::Dynaset, RecordsetOption::AppendOnly);
        for (const LabelRow& row : rows) {
            records->AddNew();
            records->SetValue("Label Description", Value::Text(row.description));
            for (std::size_t i = 0; i < row.measures.size(); ++i)
                records->SetValue(labelMeasures[i].column, Value::Double(row.measures[i]));
            if (row.paper != 0) records->SetValue("Paper Size", Value::Integer(row.paper));
            records->Update();
        }
        database->CommitTrans();
    }
    void MakeDatabase() { MakeDatabase(DatabasePath(), Styles()); }
    static std::vector<LabelRow> Styles() {
        return {{"Small", {4, 20, 0.5, 1.75, 0.5, 0.28125, 0.3, 0}, 1},
                {"O'Neill's", {2, 7, 1.3333334, 4, 0.83, 0.16, 0.19, 0}, 5},
                {"Empty", {0, 10, 1, 2.5, 0, 0, 0, 0}, 0},
                {"A4", {3, 8, 1.3, 2.5, 0.6, 0.28, 0.1, 0}, 9}};
    }
    std::string DatabasePath() const { return folder.File("labels.mdb"); }

    ScratchFolder folder;
    SystemClock clock;
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    Layout layout;
};

}  // namespace quillform::dialogs::testing
