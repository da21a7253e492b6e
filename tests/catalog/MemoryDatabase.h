#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "model/DataAccess.h"

namespace quillform::testing {

using Records = std::vector<std::vector<Value>>;

/// What a database file is to these tests, and the faults that it is told to have.
struct MemoryFile {
    std::vector<TableDef> tables;
    std::map<std::string, Records> records;  ///< by table name
    std::vector<Relation> relations;
    bool cannotBeOpened = false;
    bool cannotMakeTables = false;
    int recordsUntilFull = -1;  ///< Update fails with DiskFull after so many; -1: never

    /// The values of one record by column name, as general texts.
    std::map<std::string, std::string> Record(const std::string& table, std::size_t position) const;
};

/// Tables in memory: whole tables and the highest ID are read, records are appended, texts too long for their column
/// are refused, a rollback gives back what was.
class MemoryDatabase final : public Database {
public:
    explicit MemoryDatabase(MemoryFile& file) : file_(file) {}

    const std::string& Name() const override { return name_; }
    const std::vector<TableDef>& TableDefs() const override { return file_.tables; }
    std::vector<Relation> Relations() const override { return file_.relations; }
    void AppendTable(const TableDef& table) override;
    void DropTable(std::string_view) override {}
    std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType, RecordsetOption) override;
    std::int64_t Execute(std::string_view) override { return 0; }
    void BeginTrans() override { before_ = std::make_unique<MemoryFile>(file_); }
    void CommitTrans() override { before_.reset(); }
    void Rollback() override { file_ = *before_; }

private:
    MemoryFile& file_;
    std::string name_ = "memory";
    std::unique_ptr<MemoryFile> before_;
};

class MemoryEngine final : public DBEngine {
public:
    explicit MemoryEngine(MemoryFile& file) : file_(file) {}
    std::unique_ptr<Database> OpenDatabase(std::string_view path, Access) override;
    std::unique_ptr<Database> CreateDatabase(std::string_view, DatabaseVersion) override { return nullptr; }

    std::vector<std::string> opened;

private:
    MemoryFile& file_;
};

// Tables of tests: Table("Orders", {Column("OrderID", FieldType::Long), ...}, "OrderID").
Field Column(std::string name, FieldType type, int size = 0);
/// `key` names the single field of the primary key; empty for a table without one.
TableDef Table(std::string name, std::vector<Field> fields, const std::string& key = {});

}  // namespace quillform::testing
