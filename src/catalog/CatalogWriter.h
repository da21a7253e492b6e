#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "catalog/CatalogTables.h"
#include "model/DataAccess.h"

namespace quillform {

/// The number that the next row of `Report - Index` gets: the highest so far and 1; 1 in an empty table.
std::int32_t NextCatalogId(Database& database);

/// Appends rows to `Report - Index`.
class IndexWriter {
public:
    /// `records` is the open table and outlives the writer; `databasePath` goes into every row, cut to what its column
    /// holds.
    IndexWriter(Recordset& records, std::string_view databasePath);

    /// Stores the row as it is, its ID with it. RunTimeError ValueTooLong for a text longer than its column; nothing is
    /// stored then.
    void Write(const CatalogRow& row);

private:
    Recordset& records_;
    std::string databasePath_;
    std::array<int, 15> columns_;
};

/// Appends rows to `Report - Relation`; as IndexWriter.
class RelationWriter {
public:
    RelationWriter(Recordset& records, std::string_view databasePath1, std::string_view databasePath2);

    void Write(const CatalogRelation& relation);

private:
    Recordset& records_;
    std::array<std::string, 2> databasePaths_;
    std::array<int, 6> columns_;
};

}  // namespace quillform
