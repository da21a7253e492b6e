#pragma once

#include <memory>

#include "data/Storage.h"
#include "data/jet/Properties.h"
#include "data/jet/RowScan.h"
#include "data/jet/TableDefinition.h"

namespace quillform::jet {

/// The definition as readers of tables see it.
TableDef MakeTableDef(const std::string& name, const TableDefinition& table,
                      const std::vector<ColumnProperties>& properties, const Layout& layout);

/// The rows of one table of the file.
class JetTable final : public data::StoredTable {
public:
    JetTable(PageFile& file, const TableDef& definition, TableDefinition table);

    const TableDef& Definition() const override { return definition_; }
    std::unique_ptr<data::TableScan> Scan() const override;
    std::unique_ptr<data::RowReader> Reader() const override;
    std::int64_t RowEstimate() const override { return table_.rows; }
    data::RowId Insert(std::span<const Value> values) override;
    void Update(data::RowId id, std::span<const std::pair<int, Value>> changes) override;
    void Delete(data::RowId id) override;

private:
    PageFile& file_;
    TableDef definition_;
    TableDefinition table_;
    RowForm form_;
};

}  // namespace quillform::jet
