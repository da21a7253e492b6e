#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "data/Engine.h"
#include "platform/Clock.h"

namespace quillform::dialogs {

/// A stock table of a few records in a folder of its own.
class StockScene {
public:
    explicit StockScene(int records = 3) {
        const auto database = engine->CreateDatabase(Path(), DatabaseVersion::Jet40);
        const auto column = [](const char* name, FieldType type, int size) {
            Field field;
            field.Name = name;
            field.Type = type;
            field.Size = size;
            return field;
        };
        TableDef table;
        table.Name = "Stock Code Table";
        table.Fields = {column("Stock Code", FieldType::Text, 15),
                        column("Stock Code Description", FieldType::Text, 30),
                        column("Quantity On Hand", FieldType::Long, 4), column("Total Cost", FieldType::Currency, 8),
                        column("Account #", FieldType::Text, 7)};
        table.Indexes = {{"PrimaryKey", {{"Stock Code", false}}, true, true, false, false, true}};
        database->AppendTable(table);
        const auto rows = database->OpenRecordset(table.Name, RecordsetType::Dynaset);
        for (int i = 1; i <= records; ++i) {
            rows->AddNew();
            rows->SetValue("Stock Code", Value::Text("C" + std::to_string(i)));
            rows->SetValue("Quantity On Hand", Value::Integer(10 * i));
            rows->SetValue("Total Cost", Value::Currency(15000 * i));
            rows->Update();
        }
    }

    std::string Path() const { return folder.File("Sample.mdb"); }
    /// Code, quantity and cost of each record, by code.
    std::vector<std::string> Stored() const {
        const auto rows =
            data::MakeEngine(clock)
                ->OpenDatabase(Path(), Access::ReadOnly)
                ->OpenRecordset("SELECT * FROM [Stock Code Table] ORDER BY [Stock Code]", RecordsetType::Snapshot);
        std::vector<std::string> stored;
        for (; !rows->IsEOF(); rows->MoveNext())
            stored.push_back(rows->Text(0) + " " + rows->Text(2) + " " + rows->Text(3));
        return stored;
    }

    SystemClock clock;
    ScratchFolder folder;
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
};

/// As for somebody who may read and not write.
class ReadingEngine final : public DBEngine {
public:
    explicit ReadingEngine(DBEngine& engine) : engine_(engine) {}
    std::unique_ptr<Database> OpenDatabase(std::string_view path, Access) override {
        return engine_.OpenDatabase(path, Access::ReadOnly);
    }
    std::unique_ptr<Database> CreateDatabase(std::string_view path, DatabaseVersion version) override {
        return engine_.CreateDatabase(path, version);
    }

private:
    DBEngine& engine_;
};

}  // namespace quillform::dialogs
