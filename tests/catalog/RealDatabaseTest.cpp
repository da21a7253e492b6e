// The default configuration over files of every format that can be made, through the data layer itself.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "ScratchFolder.h"
#include "catalog/CatalogTables.h"
#include "catalog/CommonSheets.h"
#include "catalog/MemoryDatabase.h"
#include "catalog/Unattended.h"
#include "data/Engine.h"
#include "platform/Clock.h"

namespace quillform {
namespace {

using testing::Column;
using testing::Table;

constexpr const char* catalogTables[] = {"Report - Index", "Report - Relation", "Report - Labels"};

class RealDatabase : public ::testing::TestWithParam<DatabaseVersion> {
protected:
    void SetUp() override {
        try {
            Fill(*engine_->CreateDatabase(path_, GetParam()));
        } catch (const RunTimeError& error) {
            if (error.Number() != ErrorNumber::NotSupported) throw;
            GTEST_SKIP() << error.what();
        }
    }
    std::unique_ptr<Database> Open() { return engine_->OpenDatabase(path_); }
    static int CountCatalogTables(const Database& database) {
        int count = 0;
        for (const char* name : catalogTables)
            if (database.FindTable(name)) ++count;
        return count;
    }

    ScratchFolder folder_;
    FixedClock clock_{36526};
    std::unique_ptr<DBEngine> engine_ = data::MakeEngine(clock_);
    std::string path_ = folder_.File("shop.db");

private:
    /// Goods and their sales; the wide tables behind them give the configuration something to do.
    static void Fill(Database& database) {
        database.AppendTable(Table("Goods",
                                   {Column("Goods No", FieldType::Long, 4), Column("Name", FieldType::Text, 40),
                                    Column("Price", FieldType::Currency, 8), Column("Weight", FieldType::Double, 8),
                                    Column("Since", FieldType::Date, 8), Column("Sold", FieldType::Boolean, 1),
                                    Column("Notes", FieldType::Memo)},
                                   "Goods No"));
        database.AppendTable(
            Table("Sales", {Column("Sale", FieldType::Long, 4), Column("Goods No", FieldType::Long, 4)}, "Sale"));
        for (int table = 1; table <= 4; ++table) {
            std::vector<Field> fields;
            for (int i = 0; i < 100; ++i) fields.push_back(Column("F" + std::to_string(i), FieldType::Text, 20));
            database.AppendTable(Table("Wide" + std::to_string(table), fields));
        }
    }
};

TEST_P(RealDatabase, HoldsItsCatalogWhenReopened) {
    ConfigureWithDefaults(*Open(), path_);
    const auto database = Open();
    EXPECT_EQ(CountCatalogTables(*database), 3);
    const Catalog catalog = Catalog::Read(*database);
    ASSERT_EQ(catalog.Rows().size(), 412U);  // 6 plain fields, a date under 4 masks, 2 of Sales, 400 of the wide ones
    const CatalogRow& name = *catalog.Find(2);
    EXPECT_EQ(name.table + "." + name.field + "|" + name.text + "|" + name.mask + "|" + name.aliasName,
              "Goods.Name|Name| | ");
    EXPECT_EQ(name.defaultLength, 40);
    EXPECT_FALSE(name.numeric);
    EXPECT_TRUE(catalog.Find(3)->numeric);
    EXPECT_EQ(catalog.Find(4)->mask, "###,###,##0.00");
    EXPECT_EQ(catalog.Find(7)->text, "Since (mmmm dd, yyyy)");
    ASSERT_EQ(catalog.Relations().size(), 1U);
    EXPECT_EQ(catalog.Relations()[0].field1, "Goods No");
    EXPECT_EQ(database->OpenRecordset("Report - Labels", RecordsetType::Snapshot)->RecordCount(),
              static_cast<std::int64_t>(commonSheets.size()));
}

TEST_P(RealDatabase, ASecondTimeChangesNothing) {
    EXPECT_TRUE(ConfigureWithDefaults(*Open(), path_).Changed());
    EXPECT_FALSE(ConfigureWithDefaults(*Open(), path_).Changed());
    EXPECT_EQ(Catalog::Read(*Open()).Rows().size(), 412U);
}

// Ended by force at any moment, the configuration is there whole or not at all, and the next one makes up for it.
TEST_P(RealDatabase, KilledMidwayLeavesAllOrNothing) {
    const auto start = std::chrono::steady_clock::now();
    {
        ScratchFolder folder;
        std::filesystem::copy_file(path_, folder.File("shop.db"));
        ConfigureWithDefaults(*engine_->OpenDatabase(folder.File("shop.db")), path_);
    }
    const auto whole = std::chrono::steady_clock::now() - start;
    constexpr int kills = 12;
    for (int i = 0; i < kills; ++i) {
        const std::string copy = folder_.File("killed" + std::to_string(i) + ".db");
        std::filesystem::copy_file(path_, copy);
        const pid_t child = fork();
        if (child == 0) {
            const auto engine = data::MakeEngine(clock_);
            ConfigureWithDefaults(*engine->OpenDatabase(copy), copy);
            _exit(0);
        }
        std::this_thread::sleep_for(whole * i / kills);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const auto database = engine_->OpenDatabase(copy);
        const int count = CountCatalogTables(*database);
        EXPECT_TRUE(count == 0 || count == 3) << count << " tables after kill " << i;
        ConfigureWithDefaults(*database, copy);
        EXPECT_EQ(Catalog::Read(*database).Rows().size(), 412U) << "after kill " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, RealDatabase,
                         ::testing::Values(DatabaseVersion::Sqlite, DatabaseVersion::Jet30, DatabaseVersion::Jet40),
                         [](const auto& version) {
                             return std::string(version.param == DatabaseVersion::Sqlite  ? "Sqlite"
                                                : version.param == DatabaseVersion::Jet30 ? "Jet3"
                                                                                          : "Jet4");
                         });

}  // namespace
}  // namespace quillform
