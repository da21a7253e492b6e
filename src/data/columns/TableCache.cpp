#include "data/columns/TableCache.h"

#include <algorithm>

#include "platform/Text.h"

namespace quillform::data {

void CachedTable::Load(std::span<const int> columns) {
    std::vector<int> missing;
    for (const int column : columns)
        if (!columns_.contains({column}) && std::ranges::find(missing, column) == missing.end())
            missing.push_back(column);
    if (missing.empty() && loaded_) return;

    std::vector<ColumnBuilder> builders;
    for (const int column : missing)
        builders.emplace_back(KindOf(Definition().Fields[static_cast<std::size_t>(column)].Type), store_);
    const bool first = !loaded_;
    std::size_t rows = 0;
    const std::unique_ptr<TableScan> scan = stored_.ScanColumns(missing);
    for (; scan->Next(); ++rows) {
        if (rows >= noRow)
            throw RunTimeError(ErrorNumber::QueryTooComplex,
                               "The table \"" + Definition().Name + "\" has too many rows.");
        for (std::size_t i = 0; i < missing.size(); ++i) builders[i].Append(scan->Value(missing[i]));
        if (!first) continue;
        const RowId id = scan->Id();
        idsAscend_ = idsAscend_ && (ids_.empty() || ids_.back() < id);
        ids_.push_back(id);
    }
    if (!first && rows != ids_.size())
        throw RunTimeError(ErrorNumber::DiskError,
                           "The table \"" + Definition().Name + "\" changed while it was being read; try again.");
    loaded_ = true;
    for (std::size_t i = 0; i < missing.size(); ++i) columns_[{missing[i]}] = builders[i].Finish();
}

std::size_t CachedTable::RowCount() { return Ids().size(); }

const std::vector<RowId>& CachedTable::Ids() {
    if (!loaded_) Load({});
    return ids_;
}

RowPosition CachedTable::Find(RowId id) {
    const std::vector<RowId>& ids = Ids();
    if (idsAscend_) {
        const auto at = std::ranges::lower_bound(ids, id);
        return at != ids.end() && *at == id ? static_cast<RowPosition>(at - ids.begin()) : noRow;
    }
    if (positions_.empty())
        for (RowPosition row = 0; row < ids.size(); ++row) positions_[ids[row]] = row;
    const auto at = positions_.find(id);
    return at == positions_.end() ? noRow : at->second;
}

std::shared_ptr<const Column> CachedTable::Get(const ColumnView& view) {
    if (const auto at = columns_.find(view); at != columns_.end()) return at->second;
    if (view.piece != ColumnView::Piece::Whole) return columns_[view] = MakePiece(view);
    const int column = view.column;
    Load(std::span(&column, 1));
    return columns_[view];
}

std::shared_ptr<const Column> CachedTable::MakePiece(const ColumnView& view) {
    const std::shared_ptr<const Column> base = Get({view.column});
    ColumnBuilder builder(ValueKind::Text, store_);
    std::string scratch;
    const auto first = static_cast<std::size_t>(view.first);
    for (RowPosition row = 0; row < base->Size(); ++row) {
        const ValueView value = base->At(row);
        if (value.IsNull()) {
            builder.Append({});
            continue;
        }
        std::string_view text = value.text;
        if (value.kind != ValueKind::Text) {
            scratch.clear();
            AppendGeneralText(value, scratch);
            text = scratch;
        }
        switch (view.piece) {
            case ColumnView::Piece::Whole:
                break;
            case ColumnView::Piece::Left:
                text = LeftCharacters(text, first);
                break;
            case ColumnView::Piece::Right:
                text = RightCharacters(text, first);
                break;
            case ColumnView::Piece::Mid:
                text = MidCharacters(text, first, static_cast<std::size_t>(view.length));
                break;
        }
        builder.Append({ValueKind::Text, 0, 0, text});
    }
    return builder.Finish();
}

const ColumnIndex& CachedTable::Index(const ColumnView& view) {
    auto& index = indexes_[view];
    if (!index) index = std::make_unique<ColumnIndex>(Get(view));
    return *index;
}

const ColumnIndex* CachedTable::ExistingIndex(const ColumnView& view) const {
    const auto at = indexes_.find(view);
    return at == indexes_.end() ? nullptr : at->second.get();
}

const ColumnIndex* CachedTable::IndexForLookup(const ColumnView& view) {
    if (const ColumnIndex* index = ExistingIndex(view)) return index;
    return ++lookups_[view] > 1 ? &Index(view) : nullptr;
}

const Ranks& CachedTable::RanksOf(const ColumnView& view) {
    const auto at = ranks_.find(view);
    return at != ranks_.end() ? at->second : ranks_[view] = RankAll(*Get(view));
}

const Ranks* CachedTable::ExistingRanks(const ColumnView& view) const {
    const auto at = ranks_.find(view);
    return at == ranks_.end() ? nullptr : &at->second;
}

std::shared_ptr<CachedTable> TableCache::Get(std::size_t table) {
    Refresh();
    std::shared_ptr<CachedTable>& cached = tables_[table];
    if (!cached) cached = std::make_shared<CachedTable>(storage_->Rows(table), store_);
    return cached;
}

void TableCache::Clear() {
    tables_.clear();
    seen_ = storage_->ChangeCount();
}

void TableCache::Refresh() {
    if (storage_->ChangeCount() != seen_) Clear();
}

}  // namespace quillform::data
