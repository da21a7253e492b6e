#pragma once

#include <memory>
#include <string>
#include <vector>

#include "data/Storage.h"
#include "data/jet/Catalog.h"
#include "data/jet/JetTable.h"
#include "data/jet/PageAllocator.h"

namespace quillform::jet {

/// An open Jet database over whatever holds its bytes.
class JetDatabase final : public data::Storage, private TableHost {
public:
    /// `name` is how messages and Path() call the file.
    JetDatabase(std::unique_ptr<FileAccess> file, std::string name, Access access);
    ~JetDatabase() override;

    const std::string& Path() const override { return name_; }
    const std::vector<TableDef>& Tables() const override { return definitions_; }
    data::StoredTable& Rows(std::size_t index) override;
    std::vector<Relation> Relations() const override { return ReadRelations(file_); }
    void CreateTable(const TableDef& table) override;
    void DropTable(std::string_view name) override;
    bool IsReadOnly() const override { return !mayWrite_ || file_.IsReadOnly(); }
    void CheckThere() const override { file_.CheckThere(); }
    void CheckWritable() const override;
    std::vector<std::pair<std::string, std::string>> Facts() const override;

    void Begin() override;
    void Commit() override;
    void Rollback() override;
    std::uint64_t ChangeCount() const override { return changes_; }
    std::uint64_t TablesChangeCount() const override { return tablesChanges_; }

    /// The bytes of a database without tables of its own. `created` is in days since 1899-12-30.
    static std::vector<std::uint8_t> MakeEmpty(Format format, double created);

    /// Somebody else opened the same file for writing.
    void AllowWriting() { mayWrite_ = true; }
    const PageFile& File() const { return file_; }

private:
    struct Entry {
        CatalogEntry object{};
        TableDefinition table{};
        std::string fault{};  ///< why the rows can't be read, if so
        std::unique_ptr<JetTable> rows{};
    };

    PageFile& Pages() override { return file_; }
    PageAllocator& Allocator() override { return allocator_; }
    void Run(const std::function<void()>& change) override;
    void Write(JetTable& table, const std::function<void()>& work) override;

    void FinishTables();
    void RollbackInner();
    void ForgetTouched(std::size_t firstMade);
    void ReadTables();
    TableDef ReadTable(Entry& entry) const;
    int Find(std::string_view name) const;
    JetTable& SystemTable(std::string_view name);
    void CheckRelations(std::string_view table) const;
    void Refuse(ErrorNumber number, std::string_view table, const char* why) const;

    std::string name_;
    PageFile file_;
    PageAllocator allocator_;
    bool mayWrite_;
    std::vector<TableDef> definitions_{};
    std::vector<Entry> entries_{};
    /// What an inner level of the open transaction goes back to, beside the pages.
    struct Level {
        bool wasBroken;
        std::size_t madeTables;
    };

    std::vector<JetTable*> touched_{};        // by the open transaction
    std::vector<Level> inner_{};              // its inner levels
    bool isBroken_ = false;                   // a change of the open transaction stopped half-way
    std::vector<std::int32_t> madeTables_{};  // by the open transaction
    bool tablesChanged_ = false;              // the open transaction made or dropped tables
    std::uint64_t changes_ = 0;
    std::uint64_t tablesChanges_ = 0;
};

}  // namespace quillform::jet
