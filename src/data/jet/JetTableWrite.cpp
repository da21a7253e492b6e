#include <algorithm>
#include <random>

#include "data/jet/DataPageEdit.h"
#include "data/jet/JetTable.h"

namespace quillform::jet {

struct JetTable::NewRow {
    const std::vector<ValueView>& values;
    ValueView Value(int position) const { return values[static_cast<std::size_t>(position)]; }
};

/// A stored row as it will be.
struct JetTable::ChangedRow {
    const RowFetch& old;
    Changes changes;
    ValueView Value(int position) const {
        for (const auto& [column, value] : changes)
            if (column == position) return value;
        return old.Value(position);
    }
};

namespace {

std::string RandomGuid() {
    std::random_device source;
    std::string text = "{";
    for (int digit = 0; digit < 32; ++digit) {
        if (digit == 8 || digit == 12 || digit == 16 || digit == 20) text.push_back('-');
        unsigned value = source() & 15;
        if (digit == 12) value = 4;                // made at random
        if (digit == 16) value = 8 | (value & 3);  // the common variant
        text.push_back("0123456789ABCDEF"[value]);
    }
    return text + "}";
}

Bytes AsBytes(std::string_view text) { return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}; }

std::string PointerBytes(RowPointer pointer) {
    std::string bytes(4, '\0');
    PutU32(reinterpret_cast<std::uint8_t*>(bytes.data()), pointer.value);
    return bytes;
}

}  // namespace

LongValueWriter& JetTable::LongValues(std::size_t position) {
    auto& writer = longValues_[position];
    if (!writer)
        writer = std::make_unique<LongValueWriter>(host_.Pages(), host_.Allocator(), ColumnAt(position).ownedMap,
                                                   ColumnAt(position).freeMap);
    return *writer;
}

/// The values of a new row, numbers that count up among them.
std::vector<ValueView> JetTable::FillIn(std::span<const Value> values, std::string& guid) const {
    if (values.size() != table_.columns.size())
        throw RunTimeError(ErrorNumber::InvalidArgument, "A row of \"" + definition_.Name + "\" has " +
                                                             std::to_string(table_.columns.size()) + " values, not " +
                                                             std::to_string(values.size()) + ".");
    std::vector<ValueView> views(values.begin(), values.end());
    for (std::size_t i = 0; i < views.size(); ++i) {
        if (!views[i].IsNull()) continue;
        if (ColumnAt(i).IsAutoNumber()) {
            const auto next = static_cast<std::int32_t>(static_cast<std::uint32_t>(table_.lastAutoNumber) + 1u);
            views[i] = {.kind = ValueKind::Integer, .integer = next};
        }
        if (ColumnAt(i).IsAutoGuid()) {
            guid = RandomGuid();
            views[i] = {.kind = ValueKind::Guid, .text = guid};
        }
    }
    return views;
}

void JetTable::NoteAutoNumber(const std::vector<ValueView>& values) {
    for (std::size_t i = 0; i < values.size(); ++i)
        if (ColumnAt(i).IsAutoNumber() && values[i].integer > table_.lastAutoNumber)
            table_.lastAutoNumber = static_cast<std::int32_t>(values[i].integer);
}

void JetTable::CheckRequired(std::size_t position, const ValueView& value) const {
    if (!value.IsNull() || !definition_.Fields[position].Required) return;
    throw RunTimeError(ErrorNumber::FieldRequired, "The field \"" + definition_.Name + "." +
                                                       definition_.Fields[position].Name + "\" must have a value.");
}

void JetTable::EncodeInto(Prepared& row, std::size_t position, const ValueView& value) const {
    const Column& column = ColumnAt(position);
    const int codePage = host_.Pages().FileHeader().codePage;
    CheckRequired(position, value);
    if (!column.IsLong() || value.IsNull()) {
        row.stored[position] =
            column.IsLong() ? std::nullopt : EncodeValue(column, value, host_.Pages().Form(), codePage);
        return;
    }
    row.longValues.emplace_back(position, EncodeLongContent(column, value, host_.Pages().Form(), codePage));
}

/// Short long values stay in the row, but not where it would grow over its limit for that.
void JetTable::CheckSize(Prepared& row) const {
    const Layout& form = host_.Pages().Form();
    for (const std::size_t limit : {form.maxInlineLong, std::size_t{0}}) {
        row.inlineLimit = limit;
        for (const auto& [position, content] : row.longValues)
            row.stored[position] = std::string(longValueHead + (content.size() <= limit ? content.size() : 0), '\0');
        row.encoded = EncodeRow(table_, form, row.stored);
        if (row.encoded.size() <= form.maxRow) return;
        if (row.longValues.empty()) break;
    }
    throw RunTimeError(ErrorNumber::ValueTooLong, "A row of \"" + definition_.Name + "\" can hold " +
                                                      std::to_string(form.maxRow) +
                                                      " bytes beside long texts; this one is longer.");
}

bool JetTable::IsTaken(std::size_t tree, std::string_view key, std::optional<RowPointer> self) const {
    const TreeChanges& changes = treeChanges_[tree];
    const auto isOther = [self](std::string_view entry) { return !self || RowPointerOf(entry) != *self; };
    for (auto added = changes.added.lower_bound(std::string(key)); added != changes.added.end(); ++added) {
        if (!HasKey(*added, key)) break;
        if (isOther(*added)) return true;
    }
    for (const std::string& entry : FindKey(host_.Pages(), table_.trees[tree].root, key))
        if (isOther(entry) && changes.removed.count(entry) == 0) return true;
    return false;
}

/// The key that a row will have in a tree; empty if it will have none. All refusals of the index come from here.
template <typename Row>
std::string JetTable::CheckedKey(std::size_t number, const Row& row, std::optional<RowPointer> self) const {
    const Tree& tree = table_.trees[number];
    if (!keys_[number].IsOrderKnown())
        throw RunTimeError(
            ErrorNumber::NotSupported,
            "The table \"" + definition_.Name +
                "\" has an index over texts in a sort order that isn't known here, so it can't be changed.");
    std::string key;
    const KeyMaker::Nulls nulls = keys_[number].Make(row, key);
    if (tree.IsRequired() && nulls != KeyMaker::Nulls::None)
        throw RunTimeError(ErrorNumber::FieldRequired,
                           "An index of the table \"" + definition_.Name + "\" doesn't allow an empty value.");
    if (tree.IgnoresNulls() && nulls == KeyMaker::Nulls::All) return {};
    if (key.size() + rowPointerBytes > LongestEntry(host_.Pages().Form()))
        throw RunTimeError(ErrorNumber::ValueTooLong,
                           "The values for an index of the table \"" + definition_.Name + "\" are too long together.");
    if (tree.IsUnique() && nulls == KeyMaker::Nulls::None && IsTaken(number, key, self))
        throw RunTimeError(ErrorNumber::DuplicateKey,
                           "The table \"" + definition_.Name +
                               "\" already has a row with this value in an index that allows each value only once.");
    return key;
}

template <typename Row>
std::string JetTable::OldKey(std::size_t number, const Row& row) const {
    std::string key;
    const KeyMaker::Nulls nulls = keys_[number].Make(row, key);
    return table_.trees[number].IgnoresNulls() && nulls == KeyMaker::Nulls::All ? std::string() : key;
}

bool JetTable::IsTouched(std::size_t number, Changes changes) const {
    return std::any_of(changes.begin(), changes.end(), [&](const auto& change) {
        const std::uint16_t column = ColumnAt(static_cast<std::size_t>(change.first)).number;
        const auto& parts = table_.trees[number].parts;
        return std::any_of(parts.begin(), parts.end(),
                           [column](const Tree::Part& part) { return part.column == column; });
    });
}

/// The bytes of the row, once its long values are stored.
std::string JetTable::Finished(Prepared& row) {
    if (row.longValues.empty()) return std::move(row.encoded);
    for (const auto& [position, content] : row.longValues)
        row.stored[position] = LongValues(position).Write(content, row.inlineLimit);
    return EncodeRow(table_, host_.Pages().Form(), row.stored);
}

data::RowId JetTable::Insert(std::span<const Value> values) {
    RowPointer place{};
    host_.Run([&] {
        std::string guid;
        const std::vector<ValueView> views = FillIn(values, guid);
        Prepared row;
        row.stored.resize(views.size());
        for (std::size_t i = 0; i < views.size(); ++i) EncodeInto(row, i, views[i]);
        CheckSize(row);
        for (std::size_t i = 0; i < table_.trees.size(); ++i)
            row.newKeys.push_back(CheckedKey(i, NewRow{views}, std::nullopt));
        host_.Write(*this, [&] {
            place = room_.Add(AsBytes(Finished(row)), 0);
            for (std::size_t i = 0; i < row.newKeys.size(); ++i) {
                if (row.newKeys[i].empty()) continue;
                AppendRowPointer(row.newKeys[i], place);
                treeChanges_[i].Add(std::move(row.newKeys[i]));
            }
            NoteAutoNumber(views);
            ++table_.rows;
        });
    });
    return place.value;
}

RowFetch JetTable::FetchExisting(data::RowId id) const {
    RowFetch row(host_.Pages(), table_, form_);
    if (!row.Read(id))
        throw RunTimeError(ErrorNumber::NoCurrentRecord,
                           "The row of \"" + definition_.Name + "\" doesn't exist any more.");
    return row;
}

void JetTable::Update(data::RowId id, Changes changes) {
    host_.Run([&] {
        const RowFetch old = FetchExisting(id);
        const RowPointer home{static_cast<std::uint32_t>(id)};
        Prepared row;
        std::vector<std::pair<std::size_t, std::string>> replaced;
        for (std::size_t i = 0; i < table_.columns.size(); ++i) {
            const auto stored = old.Row().Stored(static_cast<int>(i));
            row.stored.push_back(stored ? std::optional<std::string>(std::string(stored->begin(), stored->end()))
                                        : std::nullopt);
        }
        for (const auto& [column, value] : changes) {
            const auto position = static_cast<std::size_t>(column);
            if (position >= table_.columns.size())
                throw RunTimeError(ErrorNumber::ItemNotFound,
                                   "The table \"" + definition_.Name + "\" has no such column.");
            if (ColumnAt(position).IsLong() && row.stored[position])
                replaced.emplace_back(position, *row.stored[position]);
            EncodeInto(row, position, value);
        }
        CheckSize(row);
        std::vector<std::string> oldKeys(table_.trees.size());
        row.newKeys.resize(table_.trees.size());
        for (std::size_t i = 0; i < table_.trees.size(); ++i) {
            if (!IsTouched(i, changes)) continue;
            row.newKeys[i] = CheckedKey(i, ChangedRow{old, changes}, home);
            oldKeys[i] = OldKey(i, old);
        }
        const RowPointer place = old.Found().place;
        host_.Write(*this, [&] {
            StoreChanged(home, place, Finished(row));
            EraseLongValues(replaced);
            for (std::size_t i = 0; i < oldKeys.size(); ++i) {
                if (oldKeys[i] == row.newKeys[i]) continue;
                AppendRowPointer(oldKeys[i], home);
                AppendRowPointer(row.newKeys[i], home);
                if (oldKeys[i].size() > rowPointerBytes) treeChanges_[i].Remove(std::move(oldKeys[i]));
                if (row.newKeys[i].size() > rowPointerBytes) treeChanges_[i].Add(std::move(row.newKeys[i]));
            }
        });
    });
}

/// A row that outgrows its page moves; its slot stays and points to the new place.
void JetTable::StoreChanged(RowPointer home, RowPointer place, const std::string& row) {
    PageFile& file = host_.Pages();
    const bool wasMoved = home != place;
    if (ReplaceRow(file, place, AsBytes(row), wasMoved ? slotTarget : 0)) {
        room_.NoteRoom(place.Page());
        return;
    }
    const RowPointer target = room_.Add(AsBytes(row), slotTarget);
    if (wasMoved) {
        DeleteRow(file, place);
        room_.NoteRoom(place.Page());
    }
    if (!ReplaceRow(file, home, AsBytes(PointerBytes(target)), slotMoved))
        Damaged("a row is shorter than any row can be");
}

void JetTable::EraseLongValues(const std::vector<std::pair<std::size_t, std::string>>& stored) {
    for (const auto& [position, head] : stored) LongValues(position).Erase(AsBytes(head));
}

void JetTable::Delete(data::RowId id) {
    host_.Run([&] {
        const RowPointer home{static_cast<std::uint32_t>(id)};
        std::vector<std::pair<std::size_t, std::string>> longValues;
        std::vector<std::string> keys;
        RowPointer place{};
        {
            const RowFetch old = FetchExisting(id);
            place = old.Found().place;
            for (std::size_t i = 0; i < table_.columns.size(); ++i) {
                const auto stored = old.Row().Stored(static_cast<int>(i));
                if (stored && ColumnAt(i).IsLong())
                    longValues.emplace_back(i, std::string(stored->begin(), stored->end()));
            }
            for (std::size_t i = 0; i < table_.trees.size(); ++i) {
                if (!keys_[i].IsOrderKnown()) CheckedKey(i, old, home);  // refuses
                keys.push_back(OldKey(i, old));
            }
        }
        host_.Write(*this, [&] {
            DeleteRow(host_.Pages(), home);
            if (place != home) DeleteRow(host_.Pages(), place);
            room_.NoteRoom(home.Page());
            if (place != home) room_.NoteRoom(place.Page());
            EraseLongValues(longValues);
            for (std::size_t i = 0; i < keys.size(); ++i) {
                if (keys[i].empty()) continue;
                AppendRowPointer(keys[i], home);
                treeChanges_[i].Remove(std::move(keys[i]));
            }
            if (table_.rows > 0) --table_.rows;
        });
    });
}

void JetTable::Finish() {
    PageFile& file = host_.Pages();
    for (std::size_t i = 0; i < table_.trees.size(); ++i) {
        IndexTree(file, host_.Allocator(), table_.page, table_.trees[i]).Apply(treeChanges_[i]);
        treeChanges_[i] = {};
    }
    const Layout& form = file.Form();
    std::uint8_t* bytes = file.Modify(table_.page);
    PutU32(bytes + form.defRows, table_.rows);
    PutU32(bytes + form.defAutoNumber, static_cast<std::uint32_t>(table_.lastAutoNumber));
    for (std::size_t i = 0; i < table_.trees.size(); ++i) {
        std::uint8_t* counts = bytes + form.defEnd + i * form.treeCounts;
        PutU32(counts, table_.trees[i].entries);
        PutU32(counts + 4, table_.trees[i].distinctKeys);
    }
}

void JetTable::Forget() {
    table_ = ReadTableDefinition(host_.Pages(), table_.page);
    for (TreeChanges& changes : treeChanges_) changes = {};
    room_.Forget();
    for (auto& writer : longValues_)
        if (writer) writer->Forget();
}

}  // namespace quillform::jet
