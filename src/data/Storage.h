#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/DataAccess.h"

namespace quillform::data {

/// Identity of a row in its table, stable while the row lives. Jet: page << 8 | slot. SQLite: the rowid.
using RowId = std::int64_t;

/// One pass over the rows of a table in storage order.
class TableScan {
public:
    virtual ~TableScan() = default;
    virtual bool Next() = 0;  ///< moves to the next row; false behind the last
    virtual RowId Id() const = 0;
    /// Value of a column of the current row, by position in `TableDef::Fields`; valid until the next Next. Decoded on
    /// demand, so a column that nobody asks for costs nothing.
    virtual ValueView Value(int column) const = 0;
};

/// Reads single rows by identity.
class RowReader {
public:
    virtual ~RowReader() = default;
    virtual bool Read(RowId id) = 0;  ///< false if there is no such row
    virtual ValueView Value(int column) const = 0;
};

/// The rows of one table. Columns are positions in `Definition().Fields`.
class StoredTable {
public:
    virtual ~StoredTable() = default;
    virtual const TableDef& Definition() const = 0;
    virtual std::unique_ptr<TableScan> Scan() const = 0;
    /// The same for a caller who promises to ask for these columns only, where a storage can make use of that.
    virtual std::unique_ptr<TableScan> ScanColumns(std::span<const int> columns) const {
        static_cast<void>(columns);
        return Scan();
    }
    virtual std::unique_ptr<RowReader> Reader() const = 0;
    /// As the file has it noted, which may be wrong: good for planning only.
    virtual std::int64_t RowEstimate() const = 0;

    // Each is whole or not there, and keeps the table's indexes right; DuplicateKey, FieldRequired, ValueTooLong and
    // ReadOnly before anything is written. Values are already of the column's kind; one per column for Insert.
    virtual RowId Insert(std::span<const Value> values) = 0;
    virtual void Update(RowId id, std::span<const std::pair<int, Value>> changes) = 0;
    virtual void Delete(RowId id) = 0;
};

/// One open database file, whatever its format. Handles on one file in one process share one Storage.
class Storage {
public:
    virtual ~Storage() = default;
    virtual const std::string& Path() const = 0;
    virtual const std::vector<TableDef>& Tables() const = 0;
    /// The rows of `Tables()[index]`; owned by the storage, valid until the table is dropped.
    /// NotSupported for a linked table.
    virtual StoredTable& Rows(std::size_t index) = 0;
    virtual std::vector<Relation> Relations() const = 0;
    virtual void CreateTable(const TableDef& table) = 0;
    virtual void DropTable(std::string_view name) = 0;
    virtual bool IsReadOnly() const = 0;
    /// FileMissing if the path of the open file leads nowhere by now, or to another file; NoPermission or DiskError if
    /// that can't be found out. What is at hand can be read all the same.
    virtual void CheckThere() const = 0;
    /// The same, and ReadOnly with the reason, if nothing can be stored. Every outermost Begin and every change outside
    /// a transaction ask this first; within one it costs next to nothing.
    virtual void CheckWritable() const = 0;
    /// Facts about the file for people: format, version, code page, ... one "name: value" per entry.
    virtual std::vector<std::pair<std::string, std::string>> Facts() const = 0;

    // Nested calls count: the outermost commit writes, a rollback drops what came since the Begin that it belongs to.
    virtual void Begin() = 0;
    virtual void Commit() = 0;
    virtual void Rollback() = 0;
    /// Raised by each change, so that caches over the tables know when they are stale.
    virtual std::uint64_t ChangeCount() const = 0;
    /// Raised when tables are made or dropped, or may come back by a rollback: positions in Tables() and what Rows()
    /// gave must be asked for again.
    virtual std::uint64_t TablesChangeCount() const = 0;
};

}  // namespace quillform::data
