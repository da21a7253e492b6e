#include "data/SnapshotRecordset.h"

#include "platform/Text.h"

namespace quillform::data {

void FailNoCurrentRecord() { throw RunTimeError(ErrorNumber::NoCurrentRecord, "There is no current record."); }

int ColumnNames::Find(std::string_view name) const {
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (EqualCaseBlind(fields[i].Name, name)) return static_cast<int>(i);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::size_t prefix = tables[i].size();
        if (prefix == 0 || name.size() <= prefix || name[prefix] != '.') continue;
        if (EqualCaseBlind(name.substr(0, prefix), tables[i]) &&
            EqualCaseBlind(name.substr(prefix + 1), fields[i].Name))
            return static_cast<int>(i);
    }
    return -1;
}

SnapshotRecordset::SnapshotRecordset(Result result, ColumnNames names)
    : result_(std::move(result)), names_(std::move(names)) {
    // Below this number of rows all of them lie in the processor's caches anyway.
    constexpr std::size_t manyRows = 4096;
    for (std::size_t i = 0; i < result_.columns.size() && result_.count > manyRows; ++i)
        if (result_.columns[i].rows >= 0) scattered_.push_back(i);
}

void SnapshotRecordset::MoveNext() {
    if (IsEOF()) FailNoCurrentRecord();
    ++row_;
    if (!scattered_.empty()) Prefetch();
}

void SnapshotRecordset::Prefetch() const {
    constexpr std::size_t farRows = 16;
    constexpr std::size_t nearRows = 8;
    const auto row = static_cast<std::size_t>(row_);
    if (row + farRows >= result_.count) return;
    for (const std::size_t i : scattered_) {
        const Result::ResultColumn& column = result_.columns[i];
        const std::vector<RowPosition>& rows = result_.rows[static_cast<std::size_t>(column.rows)];
        column.values->PrefetchFixed(rows[row + farRows]);
        column.values->PrefetchText(rows[row + nearRows]);
    }
}

void SnapshotRecordset::MovePrevious() {
    if (IsBOF()) FailNoCurrentRecord();
    --row_;
}

ValueView SnapshotRecordset::Value(int column) const {
    if (IsEOF() || IsBOF()) FailNoCurrentRecord();
    if (column < 0 || static_cast<std::size_t>(column) >= result_.columns.size())
        throw RunTimeError(ErrorNumber::ItemNotFound,
                           "The record set has no column number " + std::to_string(column) + ".");
    return result_.At(static_cast<std::size_t>(row_), static_cast<std::size_t>(column));
}

void SnapshotRecordset::SetBookmark(std::int64_t bookmark) {
    if (bookmark < 0 || bookmark >= Count()) FailNoCurrentRecord();
    row_ = bookmark;
}

void SnapshotRecordset::Refuse() {
    throw RunTimeError(ErrorNumber::NotSupported, "A snapshot can't be changed or searched; open a dynaset instead.");
}

}  // namespace quillform::data
