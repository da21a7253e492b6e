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

void SnapshotRecordset::MoveNext() {
    if (IsEOF()) FailNoCurrentRecord();
    ++row_;
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
