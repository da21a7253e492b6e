#include "data/DynasetRecordset.h"

#include <algorithm>
#include <unordered_set>

#include "data/columns/FieldValue.h"
#include "data/sql/Prepare.h"

namespace quillform::data {

DynasetRecordset::DynasetRecordset(std::shared_ptr<SharedFile> file, std::size_t table, std::vector<int> columns,
                                   ColumnNames names, std::vector<RowId> rows, bool isReadOnly)
    : file_(std::move(file)),
      table_(table),
      columns_(std::move(columns)),
      names_(std::move(names)),
      rows_(std::move(rows)),
      isReadOnly_(isReadOnly) {}

void DynasetRecordset::MoveTo(std::int64_t row) {
    mode_ = Mode::Look;
    isOnDeleted_ = false;
    isRead_ = false;
    row_ = row;
}

void DynasetRecordset::MoveNext() {
    if (isOnDeleted_) return MoveTo(row_);
    if (IsEOF()) FailNoCurrentRecord();
    MoveTo(row_ + 1);
}

void DynasetRecordset::MovePrevious() {
    if (!isOnDeleted_ && IsBOF()) FailNoCurrentRecord();
    MoveTo(row_ - 1);
}

RowId DynasetRecordset::CurrentId() const {
    if (isOnDeleted_ || IsEOF() || IsBOF()) FailNoCurrentRecord();
    return rows_[static_cast<std::size_t>(row_)];
}

void DynasetRecordset::CheckColumn(int column) const {
    if (column < 0 || static_cast<std::size_t>(column) >= columns_.size())
        throw RunTimeError(ErrorNumber::ItemNotFound,
                           "The record set has no column number " + std::to_string(column) + ".");
}

void DynasetRecordset::CheckWritable() const {
    if (isReadOnly_ || file_->storage->IsReadOnly())
        throw RunTimeError(ErrorNumber::ReadOnly,
                           "The database \"" + file_->storage->Path() + "\" is open for reading only.");
}

ValueView DynasetRecordset::Value(int column) const {
    CheckColumn(column);
    const auto i = static_cast<std::size_t>(column);
    if (mode_ != Mode::Look && edited_[i]) return *edited_[i];
    if (mode_ == Mode::Add) return {};
    const RowId id = CurrentId();
    if (!isRead_) {
        if (!reader_) reader_ = file_->storage->Rows(table_).Reader();
        if (!reader_->Read(id))
            throw RunTimeError(ErrorNumber::NoCurrentRecord, "The current record has been deleted.");
        isRead_ = true;
    }
    return reader_->Value(columns_[i]);
}

void DynasetRecordset::AddNew() {
    CheckWritable();
    mode_ = Mode::Add;
    edited_.assign(columns_.size(), std::nullopt);
}

void DynasetRecordset::Edit() {
    CheckWritable();
    isRead_ = false;  // the row as it is now, for what isn't changed
    static_cast<void>(CurrentId());
    mode_ = Mode::Edit;
    edited_.assign(columns_.size(), std::nullopt);
}

void DynasetRecordset::SetValue(int column, const ValueView& value) {
    CheckColumn(column);
    if (mode_ == Mode::Look)
        throw RunTimeError(ErrorNumber::NotSupported, "A value can be put only after AddNew or Edit.");
    const auto i = static_cast<std::size_t>(column);
    const Field& field = Definition().Fields[static_cast<std::size_t>(columns_[i])];
    edited_[i] = ValueForField(field, value, file_->CurrentYear());
}

void DynasetRecordset::Update() {
    if (mode_ == Mode::Look)
        throw RunTimeError(ErrorNumber::NotSupported, "Update without AddNew or Edit has nothing to store.");
    mode_ == Mode::Add ? Insert() : Change();
    mode_ = Mode::Look;
    isRead_ = false;
}

void DynasetRecordset::Insert() {
    const std::vector<Field>& fields = Definition().Fields;
    std::vector<quillform::Value> values(fields.size());
    // A Boolean column knows no Null.
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields[i].Type == FieldType::Boolean) values[i] = quillform::Value::Boolean(false);
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (edited_[i]) values[static_cast<std::size_t>(columns_[i])] = *edited_[i];
    lastModified_ = file_->cache.ChangeRows(table_, [&](StoredTable& rows) { return rows.Insert(values); });
    const bool wasEOF = IsEOF();
    rows_.push_back(lastModified_);
    if (wasEOF && rows_.size() > 1) row_ = Count();  // the current record stays what it was
}

void DynasetRecordset::Change() {
    std::vector<std::pair<int, quillform::Value>> changes;
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (edited_[i]) changes.emplace_back(columns_[i], *edited_[i]);
    const RowId id = CurrentId();
    if (!changes.empty()) file_->cache.ChangeRows(table_, [&](StoredTable& rows) { rows.Update(id, changes); });
    lastModified_ = id;
}

void DynasetRecordset::CancelUpdate() {
    mode_ = Mode::Look;
    isRead_ = false;
}

void DynasetRecordset::Delete() {
    CheckWritable();
    const RowId id = CurrentId();
    file_->cache.ChangeRows(table_, [&](StoredTable& rows) { rows.Delete(id); });
    rows_.erase(rows_.begin() + row_);
    mode_ = Mode::Look;
    isRead_ = false;
    isOnDeleted_ = true;
}

void DynasetRecordset::FindFirst(std::string_view criteria) {
    const sql::PreparedStatement statement = sql::PrepareCriteria(criteria, Definition(), file_->CurrentYear());
    const std::vector<RowId> found = file_->runner.SelectRowIds(statement, table_);
    const std::unordered_set<RowId> wanted(found.begin(), found.end());
    const auto first = std::ranges::find_if(rows_, [&](RowId id) { return wanted.contains(id); });
    noMatch_ = first == rows_.end();
    if (!noMatch_) MoveTo(first - rows_.begin());
}

void DynasetRecordset::SetBookmark(std::int64_t bookmark) {
    const auto at = std::ranges::find(rows_, bookmark);
    if (at == rows_.end())
        throw RunTimeError(ErrorNumber::NoCurrentRecord, "The bookmark leads to no record of this record set.");
    MoveTo(at - rows_.begin());
}

}  // namespace quillform::data
