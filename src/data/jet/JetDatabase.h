#pragma once

#include <memory>
#include <string>
#include <vector>

#include "data/Storage.h"
#include "data/jet/Catalog.h"
#include "data/jet/JetTable.h"

namespace quillform::jet {

/// An open Jet database over whatever holds its bytes.
class JetDatabase final : public data::Storage {
public:
    /// `name` is how messages and Path() call the file.
    JetDatabase(std::unique_ptr<FileAccess> file, std::string name, Access access);

    const std::string& Path() const override { return name_; }
    const std::vector<TableDef>& Tables() const override { return definitions_; }
    data::StoredTable& Rows(std::size_t index) override;
    std::vector<Relation> Relations() const override { return ReadRelations(file_); }
    void CreateTable(const TableDef& table) override;
    void DropTable(std::string_view name) override;
    bool IsReadOnly() const override { return !mayWrite_ || file_.IsReadOnly(); }
    std::vector<std::pair<std::string, std::string>> Facts() const override;

    void Begin() override;
    void Commit() override;
    void Rollback() override;
    std::uint64_t ChangeCount() const override { return changes_; }

    /// Somebody else opened the same file for writing.
    void AllowWriting() { mayWrite_ = true; }
    const PageFile& Pages() const { return file_; }

private:
    struct Entry {
        CatalogEntry object{};
        TableDefinition table{};
        std::string fault{};  ///< why the rows can't be read, if so
        std::unique_ptr<JetTable> rows{};
    };

    void ReadTables();
    TableDef ReadTable(Entry& entry) const;

    std::string name_;
    PageFile file_;
    bool mayWrite_;
    std::vector<TableDef> definitions_{};
    std::vector<Entry> entries_{};
    std::uint64_t changes_ = 0;
};

}  // namespace quillform::jet
