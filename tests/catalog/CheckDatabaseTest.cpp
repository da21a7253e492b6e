#include <gtest/gtest.h>

#include "catalog/CatalogDefinitions.h"
#include "catalog/CheckDatabase.h"
#include "catalog/MemoryDatabase.h"

namespace quillform {
namespace {

using testing::Column;
using testing::MemoryEngine;
using testing::MemoryFile;
using testing::Table;
using Log = std::vector<std::string>;

constexpr const char* path = "/data/shop.mdb";
constexpr const char* configureQuestion =
    "You have selected a database that has not been configured for the quillform.  If you continue the quillform will "
    "guide you through the configuration process.  You should be aware that this process will not change the structure "
    "of any of the existing tables in your database, however, it will add three tables to the database.  You can "
    "delete these tables via Microsoft Access later if you like.  Do you wish to continue?";

/// Answers from a script and writes down all that happens, the walk's calls among it.
class ScriptedUser final : public UserInterface, public ConfigurationWalk {
public:
    explicit ScriptedUser(std::string answers) : answers_(std::move(answers)) {}

    void Message(std::string_view text, std::string_view title) override {
        log.push_back("message " + std::string(text) + "|" + std::string(title));
    }
    bool Ask(std::string_view question, std::string_view title, MessageIcon icon) override {
        EXPECT_EQ(question, configureQuestion);
        EXPECT_EQ(title, "ALTER DATABASE?");
        EXPECT_EQ(icon, MessageIcon::Question);
        EXPECT_LT(asked_, answers_.size()) << "one question too many";
        const bool answer = asked_ < answers_.size() && answers_[asked_++] == 'y';
        log.push_back(answer ? "yes" : "no");
        return answer;
    }
    void Warn(std::string_view text) override { log.push_back("warning " + std::string(text)); }

    void ConfigureTableFields(Database&, const TableDef& table, Recordset& index) override {
        EXPECT_EQ(index.Fields().size(), 15U);
        log.push_back("fields " + table.Name);
        if (table.Name == failingTable) throw RunTimeError(ErrorNumber::ValueTooLong, "too long");
    }
    void ConfigureTableRelation(const TableDef& first, const TableDef& second, Recordset& relations,
                                std::string_view firstPath, std::string_view secondPath) override {
        EXPECT_EQ(relations.Fields().size(), 6U);
        EXPECT_EQ(firstPath, path);
        EXPECT_EQ(secondPath, path);
        log.push_back("pair " + first.Name + "," + second.Name);
    }
    void MaintainLabels(Database& database) override {
        log.push_back(database.FindTable("Report - Labels") ? "labels" : "labels without a table");
    }

    Log log;
    std::string failingTable;

private:
    std::string answers_;
    std::size_t asked_ = 0;
};

MemoryFile FileWith(const std::vector<std::string>& tables) {
    MemoryFile file;
    for (const std::string& name : tables) file.tables.push_back(Table(name, {Column("A", FieldType::Long)}));
    for (TableDef& table : file.tables) {
        if (table.Name == "Report - Index") table = IndexTableDef();
        if (table.Name == "Report - Relation") table = RelationTableDef();
        if (table.Name == "Report - Labels") table = LabelsTableDef();
    }
    return file;
}

struct Case {
    const char* what;
    std::vector<std::string> tables;
    std::string answers;
    Log expected;
};

TEST(CheckDatabase, AsksForEachMissingTableInOrder) {
    const Case cases[] = {
        {"all missing",
         {"A", "MSysObjects", "B", "C"},
         "yyy",
         {"yes", "fields A", "fields B", "fields C", "yes", "pair A,B", "pair A,C", "pair B,C", "yes", "labels"}},
        {"nothing missing", {"A", "Report - Labels", "Report - Index", "Report - Relation"}, "", {}},
        {"no at once", {"A"}, "n", {"no"}},
        {"no at the second", {"A", "B"}, "yn", {"yes", "fields A", "fields B", "no"}},
        {"no at the third", {"A", "B"}, "yyn", {"yes", "fields A", "fields B", "yes", "pair A,B", "no"}},
        {"only the index is there", {"A", "Report - Index", "B"}, "yy", {"yes", "pair A,B", "yes", "labels"}},
        {"labels take no part", {"Report - Labels", "A", "Report - Index", "B"}, "y", {"yes", "pair A,B"}},
        {"one table has no pair", {"A", "Report - Index", "Report - Labels"}, "y", {"yes"}},
        {"passed over by four characters",
         {"MSysteries", "Msys"},
         "yyy",
         {"yes", "fields Msys", "yes", "yes", "labels"}},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.what);
        MemoryFile file = FileWith(example.tables);
        MemoryEngine engine(file);
        ScriptedUser user(example.answers);
        const auto database = CheckDatabaseforReportData(path, engine, user, user);
        EXPECT_EQ(user.log, example.expected);
        EXPECT_NE(database, nullptr);
        EXPECT_EQ(engine.opened, Log{path});
    }
}

TEST(CheckDatabase, ANoLeavesWhatWasMade) {
    MemoryFile file = FileWith({"A"});
    MemoryEngine engine(file);
    ScriptedUser user("yn");
    const auto database = CheckDatabaseforReportData(path, engine, user, user);
    EXPECT_NE(database->FindTable("Report - Index"), nullptr);
    EXPECT_EQ(database->FindTable("Report - Relation"), nullptr);
    EXPECT_EQ(database->FindTable("Report - Labels"), nullptr);
}

TEST(CheckDatabase, TellsOfMissingFile) {
    MemoryFile file;
    MemoryEngine engine(file);
    ScriptedUser user("");
    EXPECT_EQ(CheckDatabaseforReportData(std::nullopt, engine, user, user), nullptr);
    EXPECT_EQ(user.log, Log{"message The Database you've selected does not exist.  Use [Edit]-[Report Options] to "
                            "locate the database.|"});
    EXPECT_TRUE(engine.opened.empty());
}

TEST(CheckDatabase, FileThatIsNoDatabaseIsWarnedOf) {
    MemoryFile file;
    file.cannotBeOpened = true;
    MemoryEngine engine(file);
    ScriptedUser user("");
    EXPECT_EQ(CheckDatabaseforReportData(path, engine, user, user), nullptr);
    EXPECT_EQ(user.log, Log{"warning The file is no database."});
}

TEST(CheckDatabase, AFailedTableDoesNotStopTheNext) {
    MemoryFile file = FileWith({"A", "B", "Report - Relation", "Report - Labels"});
    MemoryEngine engine(file);
    ScriptedUser user("y");
    user.failingTable = "A";
    CheckDatabaseforReportData(path, engine, user, user);
    EXPECT_EQ(user.log, (Log{"yes", "fields A", "warning too long", "fields B"}));
}

TEST(CheckDatabase, NobodyIsAskedForRowsThatCannotBeStored) {
    MemoryFile file = FileWith({"A", "B"});
    file.cannotMakeTables = true;
    MemoryEngine engine(file);
    ScriptedUser user("yyn");
    CheckDatabaseforReportData(path, engine, user, user);
    const std::string refused = "warning The database can't be written.";
    const std::string nothing = "warning Nothing here answers: SELECT * FROM [Report - ";
    EXPECT_EQ(user.log, (Log{"yes", refused, nothing + "Index]", "yes", refused, nothing + "Relation]", "no"}));
}

// A name in another case is another table for the check; the database refuses to make it, and the check goes on.
TEST(CheckDatabase, NamesAreComparedWithTheirCase) {
    MemoryFile file = FileWith({"report - labels", "Report - Index", "Report - Relation"});
    MemoryEngine engine(file);
    ScriptedUser user("y");
    CheckDatabaseforReportData(path, engine, user, user);
    EXPECT_EQ(user.log, (Log{"yes", "warning The table \"Report - Labels\" exists.", "labels without a table"}));
}

struct Shape {
    TableDef table;
    std::string columns;  ///< "name:type/size" of each
};

TEST(CatalogDefinitions, HaveTheirColumnsInOrder) {
    const Shape shapes[] = {
        {IndexTableDef(),
         "ID:3/2 Database:10/255 Field:10/50 Table:10/50 Text:10/50 Default Length:3/2 Mask:10/50 Numeric:1/1 "
         "Is Text Date:1/1 Formula Flag:1/1 Alias Name:10/50 Function Code:3/2 Parameter 1:10/50 Parameter 2:10/50 "
         "Parameter 3:10/50 "},
        {RelationTableDef(), "Database1:10/120 Database2:10/120 Table1:10/50 Table2:10/50 Field1:10/50 Field2:10/50 "},
        {LabelsTableDef(),
         "Label Description:10/50 Left Margin:6/4 Top Margin:6/4 Height:6/4 Width:6/4 Across:6/4 Down:6/4 "
         "Horizontal Gap:6/4 Vertical Gap:6/4 Paper Size:3/2 "},
    };
    for (const Shape& shape : shapes) {
        std::string columns;
        for (const Field& field : shape.table.Fields)
            columns += field.Name + ":" + std::to_string(static_cast<int>(field.Type)) + "/" +
                       std::to_string(field.Size) + " ";
        EXPECT_EQ(columns, shape.columns) << shape.table.Name;
        EXPECT_TRUE(shape.table.Indexes.empty());
    }
}

}  // namespace
}  // namespace quillform
