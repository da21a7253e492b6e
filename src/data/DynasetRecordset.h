#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "data/SharedFile.h"
#include "data/SnapshotRecordset.h"

namespace quillform::data {

/// Rows of one table by their identities. Each row is read when it becomes current, so what other handles changed
/// shows.
class DynasetRecordset final : public Recordset {
public:
    /// `columns[i]` is the table's column behind result column i.
    DynasetRecordset(std::shared_ptr<SharedFile> file, std::size_t table, std::vector<int> columns, ColumnNames names,
                     std::vector<RowId> rows, bool isReadOnly);

    bool IsEOF() const override { return row_ >= Count(); }
    bool IsBOF() const override { return row_ < 0 || Count() == 0; }
    void MoveFirst() override { MoveTo(0); }
    void MoveNext() override;
    void MovePrevious() override;
    void MoveLast() override { MoveTo(Count() > 0 ? Count() - 1 : 0); }
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
    void CheckColumn(int column) const;
    void CheckWritable() const;
    void Insert();
    void Change();
    const TableDef& Definition() const { return file_->storage->Tables()[table_]; }

    std::shared_ptr<SharedFile> file_;
    std::size_t table_;
    std::vector<int> columns_;
    ColumnNames names_;
    std::vector<RowId> rows_;
    bool isReadOnly_;
    std::int64_t row_ = 0;
    bool isOnDeleted_ = false;  // the current row is gone, and the one behind it has taken its place in `rows_`
    bool noMatch_ = false;
    RowId lastModified_ = -1;
    Mode mode_ = Mode::Look;
    std::vector<std::optional<quillform::Value>> edited_;  // per result column
    mutable std::unique_ptr<RowReader> reader_;
    mutable bool isRead_ = false;  // the reader stands on the current row
};

}  // namespace quillform::data
