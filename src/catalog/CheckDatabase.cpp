#include "catalog/CheckDatabase.h"

#include <vector>

#include "catalog/CatalogDefinitions.h"
#include "catalog/CatalogTables.h"

namespace quillform {

namespace {

constexpr std::string_view missingDatabaseText =
    "The Database you've selected does not exist.  Use [Edit]-[Report Options] to locate the database.";
constexpr std::string_view configureTitle = "ALTER DATABASE?";
constexpr std::string_view configureQuestion =
    "You have selected a database that has not been configured for the quillform.  If you continue the quillform will "
    "guide you through the configuration process.  You should be aware that this process will not change the structure "
    "of any of the existing tables in your database, however, it will add three tables to the database.  You can "
    "delete these tables via Microsoft Access later if you like.  Do you wish to continue?";

/// One check of an open database.
class Check {
public:
    Check(Database& database, const std::string& path, UserInterface& user, ConfigurationWalk& walk,
          OnFailure onFailure)
        : database_(database), path_(path), user_(user), walk_(walk), onFailure_(onFailure) {}

    void Run() {
        if (!Has(catalogIndexTable)) {
            if (!IsWanted()) return;
            Make(IndexTableDef());
            AskForFields();
        }
        if (!Has(catalogRelationTable)) {
            if (!IsWanted()) return;
            Make(RelationTableDef());
            AskForRelations();
        }
        if (!Has(catalogLabelsTable)) {
            if (!IsWanted()) return;
            Make(LabelsTableDef());
            Try([&] { walk_.MaintainLabels(database_); });
        }
    }

private:
    /// A step that fails doesn't stop an attended check: the user reads why it failed, and the next step runs.
    template <typename Step>
    void Try(Step step) {
        try {
            step();
        } catch (const RunTimeError& error) {
            if (onFailure_ == OnFailure::Stop) throw;
            user_.Warn(error.what());
        }
    }
    bool Has(std::string_view table) const { return database_.FindTable(table) != nullptr; }
    bool IsWanted() { return user_.Ask(configureQuestion, configureTitle, MessageIcon::Question); }
    void Make(const TableDef& table) {
        Try([&] { database_.AppendTable(table); });
    }
    std::unique_ptr<Recordset> Open(std::string_view statement) {
        std::unique_ptr<Recordset> records;
        Try([&] { records = database_.OpenRecordset(statement, RecordsetType::Dynaset); });
        return records;
    }
    /// Copies, because the walk may hold on to them while the list of tables changes.
    std::vector<TableDef> OfferedTables() const {
        std::vector<TableDef> tables;
        for (const TableDef& table : database_.TableDefs())
            if (IsOfferedTable(table.Name)) tables.push_back(table);
        return tables;
    }

    void AskForFields() {
        const std::unique_ptr<Recordset> index = Open("SELECT * FROM [Report - Index]");
        if (!index) return;
        for (const TableDef& table : OfferedTables())
            Try([&] { walk_.ConfigureTableFields(database_, table, *index); });
    }
    void AskForRelations() {
        const std::unique_ptr<Recordset> relations = Open("SELECT * FROM [Report - Relation]");
        if (!relations) return;
        const std::vector<TableDef> tables = OfferedTables();
        for (std::size_t i = 0; i < tables.size(); ++i)
            for (std::size_t j = i + 1; j < tables.size(); ++j)
                Try([&] { walk_.ConfigureTableRelation(tables[i], tables[j], *relations, path_, path_); });
    }

    Database& database_;
    const std::string& path_;
    UserInterface& user_;
    ConfigurationWalk& walk_;
    OnFailure onFailure_;
};

}  // namespace

void CompleteCatalog(Database& database, const std::string& databasePath, UserInterface& user, ConfigurationWalk& walk,
                     OnFailure onFailure) {
    Check(database, databasePath, user, walk, onFailure).Run();
}

std::unique_ptr<Database> CheckDatabaseforReportData(const std::optional<std::string>& databasePath, DBEngine& engine,
                                                     UserInterface& user, ConfigurationWalk& walk) {
    if (!databasePath) {
        user.Message(missingDatabaseText);
        return nullptr;
    }
    std::unique_ptr<Database> database;
    try {
        database = engine.OpenDatabase(*databasePath);
    } catch (const RunTimeError& error) {
        user.Warn(error.what());
        return nullptr;
    }
    CompleteCatalog(*database, *databasePath, user, walk, OnFailure::Warn);
    return database;
}

}  // namespace quillform
