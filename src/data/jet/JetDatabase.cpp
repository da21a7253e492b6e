#include "data/jet/JetDatabase.h"

#include <algorithm>

#include "data/collation/TextOrder.h"
#include "data/jet/CatalogWriter.h"
#include "data/jet/CreateDatabase.h"
#include "data/jet/DefinitionWriter.h"
#include "platform/Clock.h"

namespace quillform::jet {

JetDatabase::JetDatabase(std::unique_ptr<FileAccess> file, std::string name, Access access)
    : name_(std::move(name)), file_(std::move(file), name_), allocator_(file_), mayWrite_(access == Access::ReadWrite) {
    ReadTables();
}

JetDatabase::~JetDatabase() {
    while (file_.InTransaction()) file_.Rollback();
}

/// The catalogue lists the tables by name, since that is how its index over the container and the name gives them.
void JetDatabase::ReadTables() {
    ++tablesChanges_;
    std::vector<Entry> entries;
    for (CatalogEntry& object : ReadCatalog(file_)) {
        if (!object.IsTable()) continue;
        entries.emplace_back();
        entries.back().object = std::move(object);
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
        return collation::Compare(left.object.name, right.object.name) < 0;
    });
    definitions_.clear();
    for (Entry& entry : entries) {
        definitions_.push_back(ReadTable(entry));
        // Rows that somebody holds stay valid as long as their table is there.
        for (Entry& old : entries_)
            if (old.rows && old.object.id == entry.object.id) entry.rows = std::move(old.rows);
    }
    for (const Entry& gone : entries_) std::erase(touched_, gone.rows.get());
    entries_ = std::move(entries);
}

/// A table whose definition is broken is listed without columns, so that the others can be used.
TableDef JetDatabase::ReadTable(Entry& entry) const {
    TableDef definition;
    definition.Name = entry.object.name;
    if (entry.object.kind == CatalogEntry::LocalTable) {
        try {
            entry.table = ReadTableDefinition(file_, static_cast<std::uint32_t>(entry.object.id));
            definition = MakeTableDef(entry.object.name, entry.table, entry.object.properties, file_.Form());
        } catch (const RunTimeError& error) {
            entry.fault = error.what();
        }
    }
    definition.IsLinked = entry.object.kind != CatalogEntry::LocalTable;
    definition.IsSystem = entry.object.IsHidden();
    return definition;
}

data::StoredTable& JetDatabase::Rows(std::size_t index) {
    Entry& entry = entries_.at(index);
    const std::string& table = definitions_[index].Name;
    if (definitions_[index].IsLinked)
        throw RunTimeError(ErrorNumber::NotSupported,
                           "The table \"" + table + "\" is linked: it lives in another file.");
    if (!entry.fault.empty()) throw RunTimeError(ErrorNumber::UnrecognizedFormat, entry.fault);
    if (!entry.rows)
        entry.rows = std::make_unique<JetTable>(static_cast<TableHost&>(*this), definitions_[index], entry.table);
    return *entry.rows;
}

int JetDatabase::Find(std::string_view name) const {
    for (std::size_t i = 0; i < definitions_.size(); ++i)
        if (collation::Equal(definitions_[i].Name, name)) return static_cast<int>(i);
    return -1;
}

JetTable& JetDatabase::SystemTable(std::string_view name) {
    const int index = Find(name);
    if (index < 0) Damaged("the system table " + std::string(name) + " is missing");
    return static_cast<JetTable&>(Rows(static_cast<std::size_t>(index)));
}

void JetDatabase::Refuse(ErrorNumber number, std::string_view table, const char* why) const {
    throw RunTimeError(number, "The table \"" + std::string(table) + "\" " + why);
}

void JetDatabase::CreateTable(const TableDef& table) {
    Run([&] {
        for (const CatalogEntry& entry : ReadCatalog(file_))
            if ((entry.IsTable() || entry.kind == CatalogEntry::Query) && collation::Equal(entry.name, table.Name))
                Refuse(ErrorNumber::TableExists, table.Name, "already exists.");
        TableDefinition plan = PlanTable(table, file_.FileHeader());
        JetTable& objects = SystemTable("MSysObjects");
        JetTable& permissions = SystemTable("MSysACEs");
        std::vector<ColumnProperties> properties;
        for (const Field& field : table.Fields) properties.push_back({field.Name, field.Required});
        Write(objects, [&] {
            PlaceTable(file_, allocator_, plan);
            EnterTable(objects, permissions, table.Name, plan.page,
                       WriteProperties(properties, file_.Form().format, file_.FileHeader().codePage),
                       SystemClock().Now());
            tablesChanged_ = true;
            madeTables_.push_back(static_cast<std::int32_t>(plan.page));
            ReadTables();
        });
    });
}

/// The engine keeps a table that a relation depends on, too.
void JetDatabase::CheckRelations(std::string_view table) const {
    for (const Relation& relation : Relations())
        if (collation::Equal(relation.Table, table) || collation::Equal(relation.ForeignTable, table))
            Refuse(ErrorNumber::NotSupported, table,
                   ("is part of the relation \"" + relation.Name + "\" and can't be dropped.").c_str());
}

void JetDatabase::DropTable(std::string_view name) {
    Run([&] {
        const int index = Find(name);
        if (index < 0) Refuse(ErrorNumber::TableNotFound, name, "doesn't exist.");
        Entry& entry = entries_[static_cast<std::size_t>(index)];
        JetTable& objects = SystemTable("MSysObjects");
        JetTable& permissions = SystemTable("MSysACEs");
        if (entry.table.isSystem || entry.rows.get() == &objects || entry.rows.get() == &permissions)
            Refuse(ErrorNumber::NotSupported, name, "belongs to the database itself and can't be dropped.");
        CheckRelations(name);
        Write(objects, [&] {
            if (entry.object.kind == CatalogEntry::LocalTable && entry.fault.empty())
                FreeTable(file_, allocator_, entry.table);
            std::erase(touched_, entry.rows.get());
            entry.rows.reset();
            RemoveObject(objects, permissions, entry.object.id);
            tablesChanged_ = true;
            ReadTables();
        });
    });
}

void JetDatabase::CheckWritable() const {
    if (!mayWrite_)
        throw RunTimeError(ErrorNumber::ReadOnly, "The database \"" + name_ + "\" was opened for reading only.");
    if (!file_.InTransaction()) file_.CheckWritable();
}

void JetDatabase::Begin() {
    CheckWritable();
    const bool isInner = file_.InTransaction();
    // An inner level goes back to what the pages hold, so nothing may be kept beside them.
    if (isInner) FinishTables();
    file_.Begin();
    if (isInner) inner_.push_back({isBroken_, madeTables_.size()});
}

void JetDatabase::FinishTables() {
    try {
        for (JetTable* table : touched_) table->Finish();
    } catch (...) {
        isBroken_ = true;
        throw;
    }
}

void JetDatabase::Commit() {
    if (!file_.InTransaction()) throw RunTimeError(ErrorNumber::InvalidProcedureCall, "No transaction is open.");
    if (file_.Depth() > 1) {
        inner_.pop_back();
        return file_.Commit();
    }
    if (isBroken_) {
        Rollback();
        throw RunTimeError(
            ErrorNumber::DiskError,
            "A change to \"" + name_ + "\" stopped half-way; all changes of the transaction were taken back.");
    }
    try {
        FinishTables();
        file_.Commit();
    } catch (...) {
        Rollback();
        throw;
    }
    touched_.clear();
    madeTables_.clear();
    tablesChanged_ = false;
}

void JetDatabase::Rollback() {
    if (!file_.InTransaction()) return;
    if (file_.Depth() > 1) return RollbackInner();
    file_.Rollback();
    isBroken_ = false;
    ForgetTouched(0);
    tablesChanged_ = false;
    touched_.clear();
}

void JetDatabase::RollbackInner() {
    const Level level = inner_.back();
    inner_.pop_back();
    file_.Rollback();
    isBroken_ = level.wasBroken;
    ForgetTouched(level.madeTables);
}

/// Brings what is kept beside the pages in line with them after a rollback. `firstMade`: the tables made from there on
/// are gone.
void JetDatabase::ForgetTouched(std::size_t firstMade) {
    allocator_.Forget();
    ++changes_;
    // A table of before may have been dropped, and its page gone to a new one: that must not stand in for it.
    const auto gone = madeTables_.begin() + static_cast<std::ptrdiff_t>(firstMade);
    for (Entry& entry : entries_) {
        if (std::find(gone, madeTables_.end(), entry.object.id) == madeTables_.end()) continue;
        std::erase(touched_, entry.rows.get());
        entry.rows.reset();
    }
    madeTables_.erase(gone, madeTables_.end());
    if (tablesChanged_) ReadTables();
    // Tables that were made are gone by now, so only those that stayed are looked at.
    for (Entry& entry : entries_)
        if (entry.rows && std::find(touched_.begin(), touched_.end(), entry.rows.get()) != touched_.end())
            entry.rows->Forget();
}

void JetDatabase::Run(const std::function<void()>& change) {
    const bool isOwn = !file_.InTransaction();
    if (isOwn) Begin();
    CheckWritable();
    try {
        change();
        ++changes_;
    } catch (...) {
        if (isOwn) Rollback();
        throw;
    }
    if (isOwn) Commit();
}

void JetDatabase::Write(JetTable& table, const std::function<void()>& work) {
    if (std::find(touched_.begin(), touched_.end(), &table) == touched_.end()) touched_.push_back(&table);
    try {
        work();
    } catch (...) {
        isBroken_ = true;
        throw;
    }
}

std::vector<std::uint8_t> JetDatabase::MakeEmpty(Format format, double created) {
    const auto content = std::make_shared<std::vector<std::uint8_t>>(FirstPages(NewHeader(format, created)));
    {
        PageFile file(std::make_unique<MemoryFile>(content), "a new database");
        PageAllocator allocator(file);
        file.Begin();
        InstallSystemTables(file, allocator);
        file.Commit();
    }
    JetDatabase database(std::make_unique<MemoryFile>(content), "a new database", Access::ReadWrite);
    const auto open = [&database](const char* name, std::uint32_t page) {
        const TableDefinition table = ReadTableDefinition(database.file_, page);
        return JetTable(database, MakeTableDef(name, table, {}, database.file_.Form()), table);
    };
    JetTable objects = open("MSysObjects", objectsTable), permissions = open("MSysACEs", permissionsTable);
    database.Begin();
    EnterSystemObjects(objects, permissions, database.file_.FileHeader());
    database.Commit();
    return *content;
}

std::vector<std::pair<std::string, std::string>> JetDatabase::Facts() const {
    const Header& header = file_.FileHeader();
    const bool jet3 = header.format == Format::Jet3;
    std::vector<std::pair<std::string, std::string>> facts;
    facts.emplace_back("Format", jet3 ? "Jet 3 (Access 95, 97)" : "Jet 4 (Access 2000 to 2003)");
    facts.emplace_back("Pages",
                       std::to_string(file_.PageCount()) + " of " + std::to_string(file_.Form().pageSize) + " bytes");
    facts.emplace_back("Code page", std::to_string(header.codePage));
    facts.emplace_back("Sort order", std::to_string(header.sortOrder) + "/" + std::to_string(header.sortVersion));
    facts.emplace_back("Engine build", std::to_string(header.build));
    facts.emplace_back("Page encoding", header.pageKey != 0 ? "yes" : "no");
    return facts;
}

}  // namespace quillform::jet
