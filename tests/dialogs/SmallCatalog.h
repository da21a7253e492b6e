#pragma once

#include <string>
#include <vector>

#include "catalog/CatalogDefinitions.h"
#include "catalog/CatalogWriter.h"
#include "model/DataAccess.h"

namespace quillform::dialogs::testing {

inline CatalogRow RowOf(int id, std::string table, std::string text, int defaultLength = 20) {
    CatalogRow row;
    row.id = id;
    row.table = std::move(table);
    row.field = text;
    row.text = std::move(text);
    row.defaultLength = defaultLength;
    return row;
}

/// A database that holds nothing but a catalog of these rows.
inline void MakeCatalog(DBEngine& engine, const std::string& path, const std::vector<CatalogRow>& rows,
                        DatabaseVersion version = DatabaseVersion::Jet30) {
    const auto database = engine.CreateDatabase(path, version);
    database->BeginTrans();
    database->AppendTable(IndexTableDef());
    database->AppendTable(RelationTableDef());
    const auto records =
        database->OpenRecordset(catalogIndexTable, RecordsetType::Dynaset, RecordsetOption::AppendOnly);
    IndexWriter writer(*records, path);
    for (const CatalogRow& row : rows) writer.Write(row);
    database->CommitTrans();
}

}  // namespace quillform::dialogs::testing
