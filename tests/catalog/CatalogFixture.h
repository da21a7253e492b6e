#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "catalog/CheckDatabase.h"
#include "catalog/ScriptedPage.h"
#include "catalog/WizardWalk.h"
#include "data/Engine.h"
#include "platform/Clock.h"

namespace quillform::testing {

/// A database file of its own for each test, and what a walk leaves in its catalog.
class CatalogFixture : public ::testing::Test {
protected:
    using Lines = std::vector<std::string>;

    /// Makes the file with these tables.
    void Make(const std::vector<TableDef>& tables, DatabaseVersion version = DatabaseVersion::Sqlite) {
        const auto database = engine_->CreateDatabase(path_, version);
        for (const TableDef& table : tables) database->AppendTable(table);
    }
    /// Configures the file by a page, as the program does; the pages that were shown, if any, are in `page`.
    void Configure(WizardPage& page) {
        WizardWalk walk(page, user_);
        ASSERT_NE(CheckDatabaseforReportData(path_, *engine_, user_, walk), nullptr);
    }
    /// The rows of a table in their order, with `columns` or all but the paths, "|" between the values.
    Lines Rows(const std::string& table, const std::string& columns) {
        const auto database = engine_->OpenDatabase(path_);
        const auto records =
            database->OpenRecordset("SELECT " + columns + " FROM [" + table + "]", RecordsetType::Snapshot);
        Lines rows;
        for (; !records->IsEOF(); records->MoveNext()) {
            std::string row;
            for (int column = 0; column < static_cast<int>(records->Fields().size()); ++column)
                row += (column > 0 ? "|" : "") + records->Text(column);
            rows.push_back(row);
        }
        return rows;
    }
    Lines IndexRows() {
        return Rows("Report - Index",
                    "ID, [Table], [Field], [Text], [Default Length], [Mask], [Numeric], [Is Text Date], "
                    "[Formula Flag], [Alias Name], [Function Code], [Parameter 1], [Parameter 2], [Parameter 3]");
    }
    Lines RelationRows() { return Rows("Report - Relation", "Table1, Field1, Table2, Field2"); }

    ScratchFolder folder_;
    FixedClock clock_{36526};
    std::unique_ptr<DBEngine> engine_ = data::MakeEngine(clock_);
    std::string path_ = folder_.File("shop.db");
    ListeningUser user_;
};

}  // namespace quillform::testing
