#include <algorithm>
#include <optional>

#include "data/DynasetRecordset.h"
#include "data/SharedFile.h"
#include "data/SnapshotRecordset.h"
#include "data/direct/DirectSelect.h"
#include "data/sql/Prepare.h"
#include "platform/Dates.h"
#include "platform/Text.h"

namespace quillform::data {

SharedFile::SharedFile(std::shared_ptr<Storage> theStorage, const std::shared_ptr<SpillStore>& store,
                       const Clock& theClock)
    : storage(std::move(theStorage)), clock(theClock), cache(storage, store), runner(cache, theClock) {}

int SharedFile::CurrentYear() const { return PartsOf(clock.Now()).year; }

namespace {

ColumnNames NamesOf(const sql::PreparedStatement& statement, const sql::Schema& schema) {
    ColumnNames names{statement.columns, std::vector<std::string>(statement.columns.size())};
    for (std::size_t i = 0; i < statement.origins.size() && i < names.tables.size(); ++i)
        if (const int table = statement.origins[i].table; table >= 0)
            names.tables[i] = schema[statement.tables[static_cast<std::size_t>(table)]].Name;
    return names;
}

class OpenedDatabase final : public Database {
public:
    OpenedDatabase(std::shared_ptr<SharedFile> file, std::string name, Access access)
        : file_(std::move(file)), name_(std::move(name)), isReadOnly_(access == Access::ReadOnly) {}

    ~OpenedDatabase() override {
        try {
            while (open_ > 0) Rollback();
        } catch (const std::exception&) {
            // A handle that closes can't tell anybody; the journal brings the file back at the next open.
        }
    }

    const std::string& Name() const override { return name_; }
    const std::vector<TableDef>& TableDefs() const override { return file_->storage->Tables(); }
    std::vector<Relation> Relations() const override { return file_->storage->Relations(); }

    void AppendTable(const TableDef& table) override {
        CheckWritable();
        if (const auto& tables = TableDefs();
            std::ranges::any_of(tables, [&](const TableDef& t) { return EqualCaseBlind(t.Name, table.Name); }))
            throw RunTimeError(ErrorNumber::TableExists, "Table \"" + table.Name + "\" already exists.");
        file_->storage->CreateTable(table);
        ForgetTables();
    }

    void DropTable(std::string_view name) override {
        CheckWritable();
        if (!FindTable(name))
            throw RunTimeError(ErrorNumber::TableNotFound, "There is no table \"" + std::string(name) + "\" to drop.");
        ForgetTables();
        file_->storage->DropTable(name);
        ForgetTables();
    }

    std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType type,
                                             RecordsetOption option) override {
        const sql::PreparedStatement statement = sql::Prepare(source, TableDefs(), file_->CurrentYear());
        if (statement.kind != sql::StatementKind::Select)
            throw RunTimeError(ErrorNumber::InvalidArgument,
                               "Only a SELECT statement gives records; run this one by Execute.");
        return type == RecordsetType::Dynaset ? OpenDynaset(statement, std::string(source), option)
                                              : OpenSnapshot(statement);
    }

    std::int64_t Execute(std::string_view statement) override {
        const sql::PreparedStatement action = sql::Prepare(statement, TableDefs(), file_->CurrentYear());
        if (action.kind == sql::StatementKind::Select)
            throw RunTimeError(ErrorNumber::InvalidArgument, "A SELECT statement can't be executed; open it instead.");
        CheckWritable();
        return file_->runner.Execute(action);
    }

    void BeginTrans() override {
        CheckWritable();
        file_->storage->Begin();
        ++open_;
    }
    void CommitTrans() override {
        CheckTransaction();
        file_->storage->Commit();
        --open_;
    }
    void Rollback() override {
        CheckTransaction();
        --open_;
        file_->storage->Rollback();
        ForgetTables();
    }

private:
    std::unique_ptr<Recordset> OpenSnapshot(const sql::PreparedStatement& statement) {
        std::optional<Result> result = DirectSelect(*statement.select, file_->cache);
        if (!result) result = file_->runner.Select(statement);
        return std::make_unique<SnapshotRecordset>(std::move(*result), NamesOf(statement, TableDefs()));
    }

    /// The rows that a statement over one table gives, prepared anew, for tables may have moved since it was.
    static std::vector<RowId> RowsOf(SharedFile& file, const std::string& source) {
        const sql::PreparedStatement statement = sql::Prepare(source, file.storage->Tables(), file.CurrentYear());
        std::optional<std::vector<RowId>> rows = DirectRows(*statement.select, file.cache);
        if (!rows) RefuseDynaset();
        return std::move(*rows);
    }

    [[noreturn]] static void RefuseDynaset() {
        throw RunTimeError(ErrorNumber::NotSupported,
                           "A dynaset shows rows of one table, without computed columns, groups or joins; open the "
                           "statement as a snapshot.");
    }

    std::unique_ptr<Recordset> OpenDynaset(const sql::PreparedStatement& statement, std::string source,
                                           RecordsetOption option) {
        std::vector<int> columns;
        for (const auto& origin : statement.origins)
            if (origin.table == 0) columns.push_back(origin.column);
        if (statement.tables.size() != 1 || columns.size() != statement.columns.size()) RefuseDynaset();
        file_->storage->CheckThere();  // before anybody types what could then not be stored
        DynasetRecordset::Select select;
        // The record set that holds the closure holds the file too.
        if (option != RecordsetOption::AppendOnly)
            select = [file = file_.get(), text = std::move(source)] { return RowsOf(*file, text); };
        return std::make_unique<DynasetRecordset>(file_, statement.tables[0], std::move(columns),
                                                  NamesOf(statement, TableDefs()), std::move(select), isReadOnly_);
    }

    void ForgetTables() {
        file_->cache.Clear();
        file_->runner.ForgetTables();
    }
    void CheckWritable() const {
        if (isReadOnly_)
            throw RunTimeError(ErrorNumber::ReadOnly, "The database \"" + name_ + "\" was opened for reading only.");
        file_->storage->CheckWritable();
    }
    void CheckTransaction() const {
        if (open_ == 0) throw RunTimeError(ErrorNumber::NotSupported, "There is no open transaction to end.");
    }

    std::shared_ptr<SharedFile> file_;
    std::string name_;
    bool isReadOnly_;
    int open_ = 0;  // transactions begun by this handle
};

}  // namespace

std::unique_ptr<Database> OpenHandle(std::shared_ptr<SharedFile> file, std::string name, Access access) {
    return std::make_unique<OpenedDatabase>(std::move(file), std::move(name), access);
}

}  // namespace quillform::data
