#pragma once

#include <vector>

#include "data/Storage.h"
#include "data/jet/DataPage.h"
#include "data/jet/RowDecoder.h"
#include "data/jet/TableDefinition.h"

namespace quillform::jet {

/// Walks the rows of a table page by page, in the order of the map of its pages. Rows of a page are seen as they were
/// when the walk came to the page.
class RowScan final : public data::TableScan {
public:
    RowScan(const PageFile& file, const TableDefinition& table, const RowForm& form);

    bool Next() override;
    data::RowId Id() const override { return Place().value; }
    ValueView Value(int column) const override { return decoder_.Value(column); }

    RowPointer Place() const { return MakePointer(page_.Number(), slot_); }
    const RowDecoder& Row() const { return decoder_; }

private:
    bool NextPage();
    bool TakeSlot();

    const PageFile& file_;
    std::uint32_t owner_;
    std::vector<std::uint32_t> pages_;
    std::size_t nextPage_ = 0;
    DataPage page_{};
    std::size_t slot_ = 0;
    FoundRow moved_{};
    RowDecoder decoder_;
};

/// Reads rows of a table by their identity.
class RowFetch final : public data::RowReader {
public:
    RowFetch(const PageFile& file, const TableDefinition& table, const RowForm& form)
        : file_(file), owner_(table.page), decoder_(file, form) {}

    bool Read(data::RowId id) override;
    ValueView Value(int column) const override { return decoder_.Value(column); }
    const RowDecoder& Row() const { return decoder_; }
    /// Where the row really lies and its bytes.
    const FoundRow& Found() const { return found_; }

private:
    const PageFile& file_;
    std::uint32_t owner_;
    FoundRow found_{};
    RowDecoder decoder_;
};

}  // namespace quillform::jet
