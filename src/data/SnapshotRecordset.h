#pragma once

#include <string>
#include <vector>

#include "data/columns/Result.h"
#include "model/DataAccess.h"

namespace quillform::data {

/// Names of result columns: plain field name or alias, or "Table.Field".
struct ColumnNames {
    std::vector<Field> fields;
    std::vector<std::string> tables;  ///< per column, the table it comes from; empty for a computed one

    int Find(std::string_view name) const;
};

/// Rows that a statement gave, at rest.
class SnapshotRecordset final : public Recordset {
public:
    SnapshotRecordset(Result result, ColumnNames names);

    bool IsEOF() const override { return row_ >= Count(); }
    bool IsBOF() const override { return row_ < 0 || Count() == 0; }
    void MoveFirst() override { row_ = 0; }
    void MoveNext() override;
    void MovePrevious() override;
    void MoveLast() override { row_ = Count() > 0 ? Count() - 1 : 0; }
    std::int64_t RecordCount() const override { return Count(); }

    const std::vector<Field>& Fields() const override { return names_.fields; }
    int FindField(std::string_view name) const override { return names_.Find(name); }
    ValueView Value(int column) const override;

    void AddNew() override { Refuse(); }
    void Edit() override { Refuse(); }
    void SetValue(int, const ValueView&) override { Refuse(); }
    void Update() override { Refuse(); }
    void CancelUpdate() override { Refuse(); }
    void Delete() override { Refuse(); }
    void FindFirst(std::string_view) override { Refuse(); }
    bool NoMatch() const override { return false; }
    std::int64_t Bookmark() const override { return row_; }
    void SetBookmark(std::int64_t bookmark) override;
    std::int64_t LastModified() const override { return -1; }
    std::int64_t AbsolutePosition() const override { return IsEOF() || IsBOF() ? -1 : row_; }

private:
    std::int64_t Count() const { return static_cast<std::int64_t>(result_.count); }
    void Prefetch() const;
    [[noreturn]] static void Refuse();

    Result result_;
    ColumnNames names_;
    std::vector<std::size_t> scattered_;  // columns whose rows lie elsewhere, and many of them
    std::int64_t row_ = 0;                // -1 before the first, Count() behind the last
};

[[noreturn]] void FailNoCurrentRecord();

}  // namespace quillform::data
