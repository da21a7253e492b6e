#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "data/Storage.h"
#include "data/columns/Column.h"
#include "data/columns/ColumnIndex.h"
#include "data/columns/Sorting.h"

namespace quillform::data {

/// What a column that is looked at holds: a column of the table, or a piece of the texts of one.
struct ColumnView {
    enum class Piece : std::uint8_t { Whole, Left, Right, Mid };
    int column = 0;
    Piece piece = Piece::Whole;
    std::int64_t first = 0;   ///< Mid: the 1-based start; Left and Right: the number of characters
    std::int64_t length = 0;  ///< Mid: the number of characters

    friend auto operator<=>(const ColumnView&, const ColumnView&) = default;
};

/// One state of a stored table, decoded column by column as they are asked for, with the indexes and sort ranks that
/// statements left behind. A repeated statement finds them there.
class CachedTable {
public:
    CachedTable(StoredTable& stored, std::shared_ptr<SpillStore> store) : stored_(stored), store_(std::move(store)) {}

    const TableDef& Definition() const { return stored_.Definition(); }
    /// Decodes the columns that aren't there yet, all in one pass over the table.
    void Load(std::span<const int> columns);
    std::size_t RowCount();
    std::int64_t RowEstimate() const {
        return loaded_ ? static_cast<std::int64_t>(ids_.size()) : stored_.RowEstimate();
    }
    RowId IdAt(RowPosition row) { return Ids()[row]; }
    const std::vector<RowId>& Ids();
    /// noRow if there is no such row.
    RowPosition Find(RowId id);

    std::shared_ptr<const Column> Get(const ColumnView& view);
    const ColumnIndex& Index(const ColumnView& view);
    /// Null where no statement built it.
    const ColumnIndex* ExistingIndex(const ColumnView& view) const;
    /// For a single question: null until the question has come up before, as building the index costs more than walking
    /// the rows once.
    const ColumnIndex* IndexForLookup(const ColumnView& view);
    /// Ranks of all rows.
    const Ranks& RanksOf(const ColumnView& view);
    const Ranks* ExistingRanks(const ColumnView& view) const;

private:
    std::shared_ptr<const Column> MakePiece(const ColumnView& view);

    StoredTable& stored_;
    std::shared_ptr<SpillStore> store_;
    bool loaded_ = false;
    std::vector<RowId> ids_;
    bool idsAscend_ = true;
    std::map<RowId, RowPosition> positions_;  // only where the ids don't ascend
    std::map<ColumnView, std::shared_ptr<const Column>> columns_;
    std::map<ColumnView, std::unique_ptr<ColumnIndex>> indexes_;
    std::map<ColumnView, int> lookups_;  // how often an index would have served
    std::map<ColumnView, Ranks> ranks_;
};

/// The decoded tables of one storage. A change drops what it makes stale; who holds columns keeps the old state.
class TableCache {
public:
    TableCache(std::shared_ptr<Storage> storage, std::shared_ptr<SpillStore> store)
        : storage_(std::move(storage)), store_(std::move(store)), seen_(storage_->ChangeCount()) {}

    Storage& Stored() { return *storage_; }
    const std::shared_ptr<SpillStore>& Store() const { return store_; }
    /// The present state of a table, by its position in Storage::Tables().
    std::shared_ptr<CachedTable> Get(std::size_t table);
    /// Drops everything, as after a table was made or dropped.
    void Clear();
    /// Runs a change of one table's rows, after which only that table is read anew.
    template <class Change>
    auto ChangeRows(std::size_t table, Change change) {
        Refresh();
        struct Note {
            TableCache& cache;
            std::size_t table;
            ~Note() {
                cache.tables_.erase(table);
                cache.seen_ = cache.storage_->ChangeCount();
            }
        } note{*this, table};
        return change(storage_->Rows(table));
    }

private:
    void Refresh();

    std::shared_ptr<Storage> storage_;
    std::shared_ptr<SpillStore> store_;
    std::uint64_t seen_;
    std::map<std::size_t, std::shared_ptr<CachedTable>> tables_;
};

}  // namespace quillform::data
