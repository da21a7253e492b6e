#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "catalog/CatalogDefinitions.h"
#include "data/Engine.h"
#include "platform/Clock.h"

namespace quillform::dialogs {

/// A table of label styles in a folder of its own.
class LabelScene {
public:
    /// A style of each description: two across, 10 down, a height that has more digits than are shown.
    explicit LabelScene(const std::vector<std::string>& descriptions, const TableDef& table = LabelsTableDef()) {
        const auto database = engine->CreateDatabase(Path(), DatabaseVersion::Jet40);
        database->AppendTable(table);
        database->BeginTrans();
        const auto rows = database->OpenRecordset(table.Name, RecordsetType::Dynaset);
        for (const std::string& description : descriptions) {
            rows->AddNew();
            rows->SetValue("Label Description", Value::Text(description));
            rows->SetValue("Across", Value::Integer(2));
            rows->SetValue("Down", Value::Integer(10));
            rows->SetValue("Height", Value::Single(height));
            rows->SetValue("Paper Size", Value::Integer(5));
            rows->Update();
        }
        database->CommitTrans();
    }

    std::string Path() const { return folder.File("Labels.mdb"); }
    void Execute(const std::string& statement) const { engine->OpenDatabase(Path())->Execute(statement); }
    std::unique_ptr<Recordset> Rows(const std::string& order = "[Label Description]") const {
        return data::MakeEngine(clock)
            ->OpenDatabase(Path(), Access::ReadOnly)
            ->OpenRecordset("SELECT * FROM [Report - Labels] ORDER BY " + order, RecordsetType::Snapshot);
    }
    std::vector<std::string> Stored(const std::string& column = "Label Description") const {
        std::vector<std::string> stored;
        for (const auto rows = Rows(); !rows->IsEOF(); rows->MoveNext()) stored.push_back(rows->Text(column));
        return stored;
    }

    static constexpr float height = 4.0F / 3;
    SystemClock clock;
    ScratchFolder folder;
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
};

}  // namespace quillform::dialogs
