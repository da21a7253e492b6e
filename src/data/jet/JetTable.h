#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "data/Storage.h"
#include "data/jet/IndexKeys.h"
#include "data/jet/IndexTree.h"
#include "data/jet/LongValueWriter.h"
#include "data/jet/Properties.h"
#include "data/jet/RoomFinder.h"
#include "data/jet/RowEncoder.h"
#include "data/jet/RowScan.h"
#include "data/jet/TableDefinition.h"

namespace quillform::jet {

class JetTable;

/// What a table needs of the database around it.
class TableHost {
public:
    virtual ~TableHost() = default;
    virtual PageFile& Pages() = 0;
    virtual PageAllocator& Allocator() = 0;
    /// Runs one change, inside the open transaction or in one of its own.
    virtual void Run(const std::function<void()>& change) = 0;
    /// The part of a change that writes: if it fails, the open transaction can't be committed any more.
    virtual void Write(JetTable& table, const std::function<void()>& work) = 0;
};

/// The definition as readers of tables see it.
TableDef MakeTableDef(const std::string& name, const TableDefinition& table,
                      const std::vector<ColumnProperties>& properties, const Layout& layout);

/// The rows of one table of the file.
///
/// Rows are changed in the pages at once; what the transaction does to the indexes is collected and brought into the
/// trees at its end, when it is clear whether it pays to build them anew.
class JetTable final : public data::StoredTable {
public:
    JetTable(TableHost& host, const TableDef& definition, TableDefinition table);

    const TableDef& Definition() const override { return definition_; }
    std::unique_ptr<data::TableScan> Scan() const override;
    std::unique_ptr<data::RowReader> Reader() const override;
    std::int64_t RowEstimate() const override { return table_.rows; }
    data::RowId Insert(std::span<const Value> values) override;
    void Update(data::RowId id, std::span<const std::pair<int, Value>> changes) override;
    void Delete(data::RowId id) override;

    const TableDefinition& Stored() const { return table_; }
    /// Brings indexes and counts into the pages: the transaction is about to be committed.
    void Finish();
    /// The transaction was rolled back: reads everything again.
    void Forget();

private:
    using Changes = std::span<const std::pair<int, Value>>;

    /// A row that passed all checks, ready to be written.
    struct Prepared {
        StoredValues stored{};
        std::vector<std::pair<std::size_t, std::string>> longValues{};  ///< content by position
        std::size_t inlineLimit = 0;
        std::string encoded{};               ///< the whole row, with room for long values that aren't stored yet
        std::vector<std::string> newKeys{};  ///< by tree; empty: the tree isn't touched
    };
    struct NewRow;
    struct ChangedRow;

    const Column& ColumnAt(std::size_t position) const { return table_.columns[position]; }
    std::vector<ValueView> FillIn(std::span<const Value> values, std::string& guid) const;
    void CheckRequired(std::size_t position, const ValueView& value) const;
    void EncodeInto(Prepared& row, std::size_t position, const ValueView& value) const;
    void CheckSize(Prepared& row) const;
    template <typename Row>
    std::string CheckedKey(std::size_t tree, const Row& row, std::optional<RowPointer> self) const;
    bool IsTaken(std::size_t tree, std::string_view key, std::optional<RowPointer> self) const;
    template <typename Row>
    std::string OldKey(std::size_t tree, const Row& row) const;
    bool IsTouched(std::size_t tree, Changes changes) const;
    RowFetch FetchExisting(data::RowId id) const;

    std::string Finished(Prepared& row);
    void StoreChanged(RowPointer home, RowPointer place, const std::string& row);
    void EraseLongValues(const std::vector<std::pair<std::size_t, std::string>>& stored);
    LongValueWriter& LongValues(std::size_t position);
    void NoteAutoNumber(const std::vector<ValueView>& values);

    TableHost& host_;
    TableDef definition_;
    TableDefinition table_;
    RowForm form_;
    std::vector<KeyMaker> keys_{};            // by tree
    std::vector<TreeChanges> treeChanges_{};  // likewise
    RoomFinder room_;
    std::vector<std::unique_ptr<LongValueWriter>> longValues_{};  // by position
};

}  // namespace quillform::jet
