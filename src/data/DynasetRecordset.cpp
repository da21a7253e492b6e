#include "data/DynasetRecordset.h"

#include <algorithm>
#include <unordered_set>

#include "data/columns/FieldValue.h"
#include "data/sql/Prepare.h"

namespace quillform::data {

DynasetRecordset::DynasetRecordset(std::shared_ptr<SharedFile> file, std::size_t table, std::vector<int> columns,
                                   ColumnNames names, Select select, bool isReadOnly)
    : file_(std::move(file)),
      table_(table),
      tableName_(file_->storage->Tables()[table].Name),
      tableFields_(file_->storage->Tables()[table].Fields),
      tablesSeen_(file_->storage->TablesChangeCount()),
      columns_(std::move(columns)),
      names_(std::move(names)),
      select_(std::move(select)),
      changesSeen_(file_->storage->ChangeCount()),
      isReadOnly_(isReadOnly) {
    if (select_) rows_ = select_();
}

/// Tables move, and some go, when others are made or dropped.
void DynasetRecordset::FindTable() const {
    const Storage& storage = *file_->storage;
    if (tablesSeen_ == storage.TablesChangeCount()) return;
    reader_.reset();
    isRead_ = false;
    const auto found = std::ranges::find_if(storage.Tables(), [this](const TableDef& table) {
        return table.Name == tableName_ && table.Fields == tableFields_;
    });
    if (found == storage.Tables().end())
        throw RunTimeError(ErrorNumber::TableNotFound,
                           "The table \"" + tableName_ + "\" of an open record set isn't there any more.");
    table_ = static_cast<std::size_t>(found - storage.Tables().begin());
    tablesSeen_ = storage.TablesChangeCount();
}

const TableDef& DynasetRecordset::Definition() const {
    FindTable();
    return file_->storage->Tables()[table_];
}

/// Runs a change of this record set's own, which it need not look for afterwards.
template <class Work>
auto DynasetRecordset::ChangeRows(Work work) {
    FindTable();
    struct Note {
        DynasetRecordset& rows;
        bool wasSeen;
        ~Note() {
            if (wasSeen) rows.changesSeen_ = rows.file_->storage->ChangeCount();
        }
    } note{*this, select_ && changesSeen_ == file_->storage->ChangeCount()};
    return file_->cache.ChangeRows(table_, work);
}

void DynasetRecordset::TakeInOthers() {
    if (!select_ || changesSeen_ == file_->storage->ChangeCount()) return;
    FindTable();
    const RowId current = isOnDeleted_ || IsEOF() || IsBOF() ? RowId{-1} : CurrentId();
    const std::vector<RowId> chosen = select_();
    const std::shared_ptr<CachedTable> table = file_->cache.Get(table_);
    // A row that no longer meets the conditions stays as long as it is there.
    std::erase_if(rows_, [&](RowId id) { return id != current && table->Find(id) == noRow; });
    const std::unordered_set<RowId> known(rows_.begin(), rows_.end());
    std::ranges::copy_if(chosen, std::back_inserter(rows_), [&known](RowId id) { return !known.contains(id); });
    if (current != -1) row_ = std::ranges::find(rows_, current) - rows_.begin();
    changesSeen_ = file_->storage->ChangeCount();
}

void DynasetRecordset::MoveFirst() {
    TakeInOthers();
    MoveTo(0);
}

void DynasetRecordset::MoveLast() {
    TakeInOthers();
    MoveTo(Count() > 0 ? Count() - 1 : 0);
}

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
    if (isReadOnly_)
        throw RunTimeError(ErrorNumber::ReadOnly,
                           "The database \"" + file_->storage->Path() + "\" was opened for reading only.");
    file_->storage->CheckWritable();
}

ValueView DynasetRecordset::Value(int column) const {
    CheckColumn(column);
    const auto i = static_cast<std::size_t>(column);
    if (mode_ != Mode::Look && isEdited_[i]) return edited_[static_cast<std::size_t>(columns_[i])];
    if (mode_ == Mode::Add) return {};
    const RowId id = CurrentId();
    FindTable();
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
    StartEditing(Mode::Add);
    // A Boolean column knows no Null.
    for (std::size_t i = 0; i < tableFields_.size(); ++i)
        if (tableFields_[i].Type == FieldType::Boolean) edited_[i] = quillform::Value::Boolean(false);
}

void DynasetRecordset::StartEditing(Mode mode) {
    mode_ = mode;
    edited_.assign(tableFields_.size(), {});
    isEdited_.assign(columns_.size(), false);
}

void DynasetRecordset::Edit() {
    CheckWritable();
    isRead_ = false;  // the row as it is now, for what isn't changed
    static_cast<void>(CurrentId());
    StartEditing(Mode::Edit);
}

void DynasetRecordset::SetValue(int column, const ValueView& value) {
    CheckColumn(column);
    if (mode_ == Mode::Look)
        throw RunTimeError(ErrorNumber::NotSupported, "A value can be put only after AddNew or Edit.");
    const auto stored = static_cast<std::size_t>(columns_[static_cast<std::size_t>(column)]);
    const Field& field = tableFields_[stored];
    // Only dates ask for the year, and the clock takes its time to tell it.
    edited_[stored] = ValueForField(field, value, field.Type == FieldType::Date ? file_->CurrentYear() : 0);
    isEdited_[static_cast<std::size_t>(column)] = true;
}

void DynasetRecordset::Update() {
    if (mode_ == Mode::Look)
        throw RunTimeError(ErrorNumber::NotSupported, "Update without AddNew or Edit has nothing to store.");
    mode_ == Mode::Add ? Insert() : Change();
    mode_ = Mode::Look;
    isRead_ = false;
}

void DynasetRecordset::Insert() {
    lastModified_ = ChangeRows([&](StoredTable& rows) { return rows.Insert(edited_); });
    const bool wasEOF = IsEOF();
    rows_.push_back(lastModified_);
    if (wasEOF && rows_.size() > 1) row_ = Count();  // the current record stays what it was
}

void DynasetRecordset::Change() {
    std::vector<std::pair<int, quillform::Value>> changes;
    for (std::size_t i = 0; i < columns_.size(); ++i)
        if (isEdited_[i]) changes.emplace_back(columns_[i], edited_[static_cast<std::size_t>(columns_[i])]);
    const RowId id = CurrentId();
    if (!changes.empty()) ChangeRows([&](StoredTable& rows) { rows.Update(id, changes); });
    lastModified_ = id;
}

void DynasetRecordset::CancelUpdate() {
    mode_ = Mode::Look;
    isRead_ = false;
}

void DynasetRecordset::Delete() {
    CheckWritable();
    const RowId id = CurrentId();
    ChangeRows([&](StoredTable& rows) { rows.Delete(id); });
    rows_.erase(rows_.begin() + row_);
    mode_ = Mode::Look;
    isRead_ = false;
    isOnDeleted_ = true;
}

void DynasetRecordset::FindFirst(std::string_view criteria) {
    const sql::PreparedStatement statement = sql::PrepareCriteria(criteria, Definition(), file_->CurrentYear());
    TakeInOthers();
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
