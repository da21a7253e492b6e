#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "data/SharedFile.h"
#include "data/SnapshotRecordset.h"

namespace quillform::data {

/// Rows of one table by their identities. Each row is read when it becomes current, so what other handles changed
/// shows. MoveFirst, MoveLast and FindFirst also take in the rows that others added since, behind those that were
/// there, and let go of those that others deleted.
class DynasetRecordset final : public Recordset {
public:
    using Select = std::function<std::vector<RowId>()>;

    /// `columns[i]` is the table's column behind result column i. `select` gives the rows; without it the record set
    /// begins empty and holds only what is added through it.
    DynasetRecordset(std::shared_ptr<SharedFile> file, std::size_t table, std::vector<int> columns, ColumnNames names,
                     Select select, bool isReadOnly);

    bool IsEOF() const override { return row_ >= Count(); }
    bool IsBOF() const override { return row_ < 0 || Count() == 0; }
    void MoveFirst() override;
    void MoveNext() override;
    void MovePrevious() override;
    void MoveLast() override;
    std::int64_t RecordCount() const override { return Count(); }

    const std::vector<Field>& Fields() const override { return names_.fields; }
    int FindField(std::string_view name) const override { return names_.Find(name); }
    ValueView Value(int column) const override;

    void AddNew() override;
    void Edit() override;
    void SetValue(int column, const ValueView& value) override;
    void Update() override;
    void CancelUpdate() override;
    void Delete() override;
    void FindFirst(std::string_view criteria) override;
    bool NoMatch() const override { return noMatch_; }
    std::int64_t Bookmark() const override { return CurrentId(); }
    void SetBookmark(std::int64_t bookmark) override;
    std::int64_t LastModified() const override { return lastModified_; }
    std::int64_t AbsolutePosition() const override { return IsEOF() || IsBOF() ? -1 : row_; }

private:
    enum class Mode { Look, Add, Edit };

    std::int64_t Count() const { return static_cast<std::int64_t>(rows_.size()); }
    RowId CurrentId() const;
    void MoveTo(std::int64_t row);
    void TakeInOthers();
    void FindTable() const;
    template <class Work>
    auto ChangeRows(Work work);
    void CheckColumn(int column) const;
    void CheckWritable() const;
    void StartEditing(Mode mode);
    void Insert();
    void Change();
    const TableDef& Definition() const;

    std::shared_ptr<SharedFile> file_;
    mutable std::size_t table_;  // moves when other tables are made or dropped
    std::string tableName_;
    std::vector<Field> tableFields_;
    mutable std::uint64_t tablesSeen_;
    std::vector<int> columns_;
    ColumnNames names_;
    Select select_;
    std::uint64_t changesSeen_;
    std::vector<RowId> rows_;
    bool isReadOnly_;
    std::int64_t row_ = 0;
    bool isOnDeleted_ = false;  // the current row is gone, and the one behind it has taken its place in `rows_`
    bool noMatch_ = false;
    RowId lastModified_ = -1;
    Mode mode_ = Mode::Look;
    std::vector<quillform::Value> edited_;  // by column of the table
    std::vector<bool> isEdited_;            // by result column
    mutable std::unique_ptr<RowReader> reader_;
    mutable bool isRead_ = false;  // the reader stands on the current row
};

}  // namespace quillform::data
