#include "data/sqlite/SqliteStorage.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>

#include "data/DatabasePlace.h"
#include "data/sqlite/Connection.h"
#include "data/sqlite/SqliteSchema.h"
#include "data/sqlite/SqliteValue.h"

namespace quillform::sqlite {
namespace {

/// What the tables of one file share.
struct File {
    File(const std::string& path, Connection::Mode mode, const Clock& theClock)
        : connection(path, mode), place(path), clock(theClock) {}

    bool IsReadOnly() const { return sqlite3_db_readonly(connection.Handle(), "main") == 1; }
    void CheckWritable() const {
        if (sqlite3_get_autocommit(connection.Handle()) == 0) return;
        place.CheckWritable();
        if (IsReadOnly())
            throw RunTimeError(ErrorNumber::ReadOnly,
                               "The database \"" + place.Given().string() + "\" was opened for reading only.");
    }

    Connection connection;
    data::DatabasePlace place;
    const Clock& clock;
    std::uint64_t changes = 0;
};

/// The columns that a statement reads, by position in the table.
class RowColumns {
public:
    RowColumns(const TableDef& table, const Clock& clock)
        : table_(table), reader_(clock), place_(table.Fields.size(), -1) {}

    void Add(int column, int place) { place_[static_cast<std::size_t>(column)] = place; }
    ValueView Value(const Statement& statement, int column) const {
        const auto i = static_cast<std::size_t>(column);
        return place_[i] < 0 ? ValueView{} : reader_.Read(statement, place_[i], table_.Fields[i]);
    }

private:
    const TableDef& table_;
    ValueReader reader_;
    std::vector<int> place_;
};

std::string SelectList(const SchemaTable& table, std::span<const int> columns) {
    std::string text = "SELECT " + (table.rowIdName.empty() ? std::string("0") : table.rowIdName);
    for (const int column : columns)
        text += ", " + Quoted(table.definition.Fields[static_cast<std::size_t>(column)].Name);
    return text + " FROM " + Quoted(table.definition.Name);
}

std::vector<int> AllColumns(const TableDef& table) {
    std::vector<int> columns;
    for (std::size_t i = 0; i < table.Fields.size(); ++i) columns.push_back(static_cast<int>(i));
    return columns;
}

RowColumns Placed(const TableDef& table, const Clock& clock, std::span<const int> columns) {
    RowColumns placed(table, clock);
    for (std::size_t i = 0; i < columns.size(); ++i) placed.Add(columns[i], static_cast<int>(i) + 1);
    return placed;
}

class Scanner final : public data::TableScan {
public:
    Scanner(File& file, const SchemaTable& table, std::span<const int> columns)
        : statement_(file.connection, SelectList(table, columns)),
          columns_(Placed(table.definition, file.clock, columns)),
          hasIds_(!table.rowIdName.empty()) {}

    bool Next() override {
        ++number_;
        return statement_.Step();
    }
    data::RowId Id() const override { return hasIds_ ? statement_.Whole(0) : number_; }
    ValueView Value(int column) const override { return columns_.Value(statement_, column); }

private:
    Statement statement_;
    RowColumns columns_;
    bool hasIds_;
    data::RowId number_ = -1;  // rows without ids are known by their place
};

class SingleReader final : public data::RowReader {
public:
    SingleReader(File& file, const SchemaTable& table, const std::vector<int>& columns)
        : statement_(file.connection,
                     SelectList(table, columns) +
                         (table.rowIdName.empty() ? " LIMIT 1 OFFSET ?" : " WHERE " + table.rowIdName + " = ?")),
          columns_(Placed(table.definition, file.clock, columns)),
          width_(columns.size()) {}

    bool Read(data::RowId id) override {
        statement_.Reset();  // where the last read failed
        statement_.BindWhole(0, id);
        row_.clear();
        const bool found = statement_.Step();
        for (int column = 0; found && column < static_cast<int>(width_); ++column)
            row_.emplace_back(columns_.Value(statement_, column));
        // A statement left open would hold the file against writers and against dropping a table.
        statement_.Reset();
        return found;
    }
    ValueView Value(int column) const override { return row_[static_cast<std::size_t>(column)]; }

private:
    Statement statement_;
    RowColumns columns_;
    std::size_t width_;
    std::vector<quillform::Value> row_;
};

class Table final : public data::StoredTable {
public:
    Table(File& file, SchemaTable schema) : file_(file), schema_(std::move(schema)) {}

    bool Is(const SchemaTable& schema) const {
        return schema_.definition.Name == schema.definition.Name &&
               schema_.definition.Fields == schema.definition.Fields &&
               schema_.definition.Indexes == schema.definition.Indexes && schema_.rowIdName == schema.rowIdName;
    }

    const TableDef& Definition() const override { return schema_.definition; }
    std::unique_ptr<data::TableScan> Scan() const override { return ScanColumns(AllColumns(schema_.definition)); }
    std::unique_ptr<data::TableScan> ScanColumns(std::span<const int> columns) const override {
        return std::make_unique<Scanner>(file_, schema_, columns);
    }
    std::unique_ptr<data::RowReader> Reader() const override {
        return std::make_unique<SingleReader>(file_, schema_, AllColumns(schema_.definition));
    }

    std::int64_t RowEstimate() const override {
        // The greatest row id is found at once; counting would walk the table.
        if (schema_.rowIdName.empty()) return 1000;
        Statement greatest(file_.connection,
                           "SELECT max(" + schema_.rowIdName + ") FROM " + Quoted(schema_.definition.Name));
        return greatest.Step() ? greatest.Whole(0) : 0;
    }

    data::RowId Insert(std::span<const Value> values) override {
        std::string names;
        std::string places;
        for (const Field& field : schema_.definition.Fields) {
            names += (names.empty() ? "" : ", ") + Quoted(field.Name);
            places += places.empty() ? "?" : ", ?";
        }
        Statement insert(file_.connection,
                         "INSERT INTO " + Quoted(schema_.definition.Name) + '(' + names + ") VALUES(" + places + ')');
        for (std::size_t i = 0; i < values.size(); ++i) BindValue(insert, static_cast<int>(i), values[i]);
        RunChange(insert);
        return file_.connection.LastRowId();
    }

    void Update(data::RowId id, std::span<const std::pair<int, Value>> changes) override {
        if (changes.empty()) return;
        std::string sets;
        for (const auto& [column, value] : changes)
            sets += (sets.empty() ? "" : ", ") +
                    Quoted(schema_.definition.Fields[static_cast<std::size_t>(column)].Name) + " = ?";
        Statement update(file_.connection, "UPDATE " + Quoted(schema_.definition.Name) + " SET " + sets + OneRow());
        int place = 0;
        for (const auto& [column, value] : changes) BindValue(update, place++, value);
        update.BindWhole(place, id);
        RunChange(update);
    }

    void Delete(data::RowId id) override {
        Statement remove(file_.connection, "DELETE FROM " + Quoted(schema_.definition.Name) + OneRow());
        remove.BindWhole(0, id);
        RunChange(remove);
    }

private:
    std::string OneRow() const {
        if (schema_.rowIdName.empty())
            throw RunTimeError(ErrorNumber::NotSupported, "The rows of \"" + schema_.definition.Name +
                                                              "\" can't be changed: the table has no row ids.");
        return " WHERE " + schema_.rowIdName + " = ?";
    }
    void RunChange(Statement& change) {
        file_.CheckWritable();
        ++file_.changes;
        while (change.Step()) {
        }
    }

    File& file_;
    const SchemaTable schema_;
};

class SqliteStorage final : public data::Storage {
public:
    SqliteStorage(const std::filesystem::path& path, Connection::Mode mode, const Clock& clock)
        : path_(path.string()), file_(path_, mode, clock), version_(file_.connection, "PRAGMA data_version") {
        ReadTables();
    }

    const std::string& Path() const override { return path_; }
    const std::vector<TableDef>& Tables() const override { return definitions_; }
    data::StoredTable& Rows(std::size_t index) override { return *tables_.at(index); }
    std::vector<Relation> Relations() const override { return ReadRelations(file_.connection, schema_); }

    void CreateTable(const TableDef& table) override {
        ++file_.changes;
        Begin();
        try {
            file_.connection.Execute(CreateTableText(table));
            Commit();
        } catch (...) {
            Rollback();
            throw;
        }
        ReadTables();
    }

    void DropTable(std::string_view name) override {
        file_.CheckWritable();
        ++file_.changes;
        file_.connection.Execute("DROP TABLE " + Quoted(name));
        ReadTables();
    }

    bool IsReadOnly() const override { return file_.IsReadOnly(); }
    void CheckThere() const override { file_.place.CheckThere(); }
    void CheckWritable() const override { file_.CheckWritable(); }

    std::vector<std::pair<std::string, std::string>> Facts() const override {
        std::vector<std::pair<std::string, std::string>> facts{{"format", "SQLite 3"}};
        for (const char* fact : {"page_size", "page_count", "encoding", "user_version", "journal_mode"}) {
            Statement ask(file_.connection, std::string("PRAGMA ") + fact);
            if (!ask.Step()) continue;
            std::string name = fact;
            for (char& c : name)
                if (c == '_') c = ' ';
            facts.emplace_back(name, ask.Text(0));
        }
        facts.emplace_back("tables", std::to_string(definitions_.size()));
        facts.emplace_back("read only", IsReadOnly() ? "yes" : "no");
        return facts;
    }

    void Begin() override {
        file_.CheckWritable();
        file_.connection.Execute(depth_ == 0 ? "BEGIN IMMEDIATE" : "SAVEPOINT " + SavepointName());
        ++depth_;
    }
    void Commit() override {
        if (depth_ == 0) return;
        if (depth_ == 1) CheckThere();  // the transaction may have been open for long
        file_.connection.Execute(depth_ == 1 ? "COMMIT" : "RELEASE " + InnerSavepoint());
        --depth_;
    }
    void Rollback() override {
        if (depth_ == 0) return;
        --depth_;
        ++file_.changes;
        file_.connection.Execute(depth_ == 0 ? "ROLLBACK"
                                             : "ROLLBACK TO " + SavepointName() + "; RELEASE " + SavepointName());
        ReadTables();
    }

    std::uint64_t ChangeCount() const override {
        // The data version tells of other connections, our own count of this one.
        version_.Reset();
        const std::uint64_t version = version_.Step() ? static_cast<std::uint64_t>(version_.Whole(0)) : 0;
        version_.Reset();
        return version << 40 | file_.changes;
    }

    std::uint64_t TablesChangeCount() const override { return tablesChanges_; }

private:
    std::string SavepointName() const { return "level" + std::to_string(depth_); }
    std::string InnerSavepoint() const { return "level" + std::to_string(depth_ - 1); }

    void ReadTables() {
        std::vector<SchemaTable> schema = ReadSchema(file_.connection);
        if (SameTables(schema)) return;  // keeps what callers hold
        ++tablesChanges_;
        std::vector<std::unique_ptr<Table>> former = std::exchange(tables_, {});
        schema_ = std::move(schema);
        definitions_.clear();
        for (const SchemaTable& table : schema_) {
            definitions_.push_back(table.definition);
            const auto same = std::find_if(former.begin(), former.end(),
                                           [&](const auto& known) { return known && known->Is(table); });
            tables_.push_back(same != former.end() ? std::move(*same) : std::make_unique<Table>(file_, table));
        }
        // An open record set may still hold a table that is gone; its next statement then says so.
        for (std::unique_ptr<Table>& gone : former)
            if (gone) retired_.push_back(std::move(gone));
    }
    bool SameTables(const std::vector<SchemaTable>& schema) const {
        if (schema.size() != schema_.size()) return false;
        for (std::size_t i = 0; i < schema.size(); ++i)
            if (schema[i].definition.Name != definitions_[i].Name ||
                schema[i].definition.Fields != definitions_[i].Fields)
                return false;
        return true;
    }

    std::string path_;
    mutable File file_;
    mutable Statement version_;
    std::vector<SchemaTable> schema_;
    std::vector<TableDef> definitions_;
    std::vector<std::unique_ptr<Table>> tables_;
    std::vector<std::unique_ptr<Table>> retired_;  // dropped while somebody may hold them
    int depth_ = 0;
    std::uint64_t tablesChanges_ = 0;
};

}  // namespace

bool LooksLikeSqlite(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string head(16, '\0');
    file.read(head.data(), 16);
    return file.gcount() == 16 && head == std::string("SQLite format 3\0", 16);
}

std::shared_ptr<data::Storage> OpenStorage(const std::filesystem::path& path, Access access, const Clock& clock) {
    const auto mode = access == Access::ReadOnly ? Connection::Mode::ReadOnly : Connection::Mode::ReadWrite;
    return std::make_shared<SqliteStorage>(path, mode, clock);
}

std::shared_ptr<data::Storage> CreateStorage(const std::filesystem::path& path, const Clock& clock) {
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored))
        throw RunTimeError(ErrorNumber::PermissionDenied, "The file \"" + path.string() + "\" exists already.");
    {
        Connection made(path.string(), Connection::Mode::Create);
        made.Execute("PRAGMA encoding = 'UTF-8'; PRAGMA user_version = 0; VACUUM");  // writes the file's head
    }
    return OpenStorage(path, Access::ReadWrite, clock);
}

}  // namespace quillform::sqlite
