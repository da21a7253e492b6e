#include <gtest/gtest.h>

#include "catalog/CatalogTables.h"
#include "catalog/CommonSheets.h"
#include "catalog/MemoryDatabase.h"
#include "catalog/Unattended.h"

namespace quillform {
namespace {

using testing::Column;
using testing::MemoryDatabase;
using testing::MemoryFile;
using testing::Table;

/// One of every type, in an order that shows the numbering.
MemoryFile Shop() {
    MemoryFile file;
    file.tables.push_back(Table("MSysObjects", {Column("Id", FieldType::Long)}));
    file.tables.push_back(Table(
        "Goods",
        {Column("Goods No", FieldType::Long), Column("Name", FieldType::Text, 40), Column("Short", FieldType::Text, 14),
         Column("Price", FieldType::Currency), Column("Weight", FieldType::Single), Column("Since", FieldType::Date),
         Column("Sold", FieldType::Boolean), Column("Notes", FieldType::Memo), Column("Photo", FieldType::LongBinary),
         Column("Tag", FieldType::Guid), Column("Raw", FieldType::Binary, 8)},
        "Goods No"));
    file.tables.push_back(Table("Sales", {Column("Goods No", FieldType::Long), Column("Factor", FieldType::Double)}));
    return file;
}

struct Row {
    std::string table, field, text, length, mask, numeric;
};

TEST(DefaultAnswers, WriteTheRowsOfTheProposedAnswers) {
    MemoryFile file = Shop();
    MemoryDatabase database(file);
    ConfigureWithDefaults(database, "/data/shop.mdb");
    const Row expected[] = {
        {"Goods", "Goods No", "Goods No", "11", "###,###,##0", "True"},
        {"Goods", "Name", "Name", "40", " ", "False"},
        {"Goods", "Short", "Short", "14", " ", "False"},
        {"Goods", "Price", "Price", "11", "###,###,##0", "True"},
        {"Goods", "Weight", "Weight", "14", "###,###,##0.00", "True"},
        {"Goods", "Since", "Since (mm/dd/yyyy)", "10", "mm/dd/yyyy", "False"},
        {"Goods", "Since", "Since (mm/dd)", "5", "mm/dd", "False"},
        {"Goods", "Since", "Since (mmmm dd, yyyy)", "18", "mmmm dd, yyyy", "False"},
        {"Goods", "Since", "Since (yyyy/mm/dd)", "10", "yyyy/mm/dd", "False"},
        {"Goods", "Sold", "Sold", "5", " ", "False"},
        {"Goods", "Notes", "Notes", "50", " ", "False"},
        {"Goods", "Tag", "Tag", "38", " ", "False"},
        {"Sales", "Goods No", "Goods No", "11", "###,###,##0", "True"},
        {"Sales", "Factor", "Factor", "14", "###,###,##0.00", "True"},
    };
    ASSERT_EQ(file.records["Report - Index"].size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const auto row = file.Record("Report - Index", i);
        const Row& wanted = expected[i];
        const std::map<std::string, std::string> record = {
            {"ID", std::to_string(i + 1)}, {"Database", "/data/shop.mdb"},
            {"Field", wanted.field},       {"Table", wanted.table},
            {"Text", wanted.text},         {"Default Length", wanted.length},
            {"Mask", wanted.mask},         {"Numeric", wanted.numeric},
            {"Is Text Date", "False"},     {"Formula Flag", "False"},
            {"Alias Name", " "},           {"Function Code", "0"},
            {"Parameter 1", " "},          {"Parameter 2", " "},
            {"Parameter 3", " "}};
        EXPECT_EQ(row, record) << "row " << i + 1;
    }
    ASSERT_EQ(file.records["Report - Relation"].size(), 1U);
    EXPECT_EQ(file.Record("Report - Relation", 0), (std::map<std::string, std::string>{{"Database1", "/data/shop.mdb"},
                                                                                       {"Database2", "/data/shop.mdb"},
                                                                                       {"Table1", "Goods"},
                                                                                       {"Table2", "Sales"},
                                                                                       {"Field1", "Goods No"},
                                                                                       {"Field2", "Goods No"}}));
    ASSERT_EQ(file.records["Report - Labels"].size(), commonSheets.size());
    EXPECT_EQ(file.Record("Report - Labels", 0),
              (std::map<std::string, std::string>{{"Label Description", "Address, 30/sheet, 1 x 2 5/8 in., as 5160"},
                                                  {"Left Margin", "0.1875"},
                                                  {"Top Margin", "0.5"},
                                                  {"Height", "1"},
                                                  {"Width", "2.625"},
                                                  {"Across", "3"},
                                                  {"Down", "10"},
                                                  {"Horizontal Gap", "0.125"},
                                                  {"Vertical Gap", "0"},
                                                  {"Paper Size", "1"}}));
}

TEST(DefaultAnswers, TellWhatWasDone) {
    MemoryFile file = Shop();
    MemoryDatabase database(file);
    const std::vector<std::string> expected = {
        "Made the table \"Report - Index\" with 14 rows for 11 fields of 2 tables.",
        "Made the table \"Report - Relation\" with 1 relation.",
        "Made the table \"Report - Labels\" with the 17 common label sheets.",
        "The field \"Photo\" of \"Goods\" is left out: OLE object fields can't be printed.",
        "The field \"Raw\" of \"Goods\" is left out: Binary fields can't be printed.",
        "1 currency or decimal field has the mask \"###,###,##0\", which prints no decimals; an item that should show "
        "them needs another mask.",
    };
    EXPECT_EQ(ConfigureWithDefaults(database, "/data/shop.mdb").Lines(), expected);
}

TEST(DefaultAnswers, LeaveTheLabelSheetsOutWhereTheAnswersSayNo) {
    MemoryFile file = Shop();
    MemoryDatabase database(file);
    Answers answers;
    answers.commonSheets = false;
    const ConfigurationReport report = ConfigureByAnswers(database, "/data/shop.mdb", answers);
    EXPECT_TRUE(file.records["Report - Labels"].empty());
    EXPECT_EQ(report.made.back(), "Made the table \"Report - Labels\", empty.");
    EXPECT_FALSE(report.answered.commonSheets);
}

TEST(DefaultAnswers, ASecondTimeChangesNothing) {
    MemoryFile file = Shop();
    MemoryDatabase database(file);
    ConfigureWithDefaults(database, "/data/shop.mdb");
    const auto records = file.records;
    const ConfigurationReport again = ConfigureWithDefaults(database, "/other.mdb");
    EXPECT_FALSE(again.Changed());
    EXPECT_EQ(again.Lines(),
              std::vector<std::string>{"The database has its three catalog tables already; nothing was changed."});
    EXPECT_EQ(file.records, records);
}

TEST(DefaultAnswers, MakeOnlyWhatIsMissing) {
    for (const std::string missing : {"Report - Index", "Report - Relation", "Report - Labels"}) {
        MemoryFile file = Shop();
        MemoryDatabase database(file);
        ConfigureWithDefaults(database, "/data/shop.mdb");
        const auto whole = file.records;
        file.records.erase(missing);
        std::erase_if(file.tables, [&](const TableDef& table) { return table.Name == missing; });
        EXPECT_EQ(ConfigureWithDefaults(database, "/data/shop.mdb").made.size(), 1U) << missing;
        EXPECT_EQ(file.records["Report - Index"], whole.at("Report - Index")) << missing;
        EXPECT_EQ(file.records["Report - Relation"], whole.at("Report - Relation")) << missing;
    }
}

TEST(DefaultAnswers, AFullDiskLeavesTheDatabaseAsItWas) {
    for (int room = 0; room < 15; ++room) {  // 14 rows of the index, 1 relation
        MemoryFile file = Shop();
        file.recordsUntilFull = room;
        MemoryDatabase database(file);
        EXPECT_THROW(ConfigureWithDefaults(database, "/data/shop.mdb"), RunTimeError) << room;
        EXPECT_EQ(file.tables.size(), Shop().tables.size()) << room;
        EXPECT_TRUE(file.records.empty() || file.records["Report - Index"].empty()) << room;
    }
}

TEST(DefaultAnswers, LeaveOutTablesThatCannotBeReportedOn) {
    MemoryFile file;
    TableDef hidden = Table("~Work", {Column("A", FieldType::Long)});
    hidden.IsSystem = true;
    TableDef linked = Table("Elsewhere", {Column("A", FieldType::Long)});
    linked.IsLinked = true;
    const std::string fifty(50, 'n');
    file.tables = {hidden, linked, Table(fifty + "x", {Column("A", FieldType::Long)}),
                   Table("odd]name", {Column("A", FieldType::Long)}),
                   Table(fifty, {Column(fifty + "x", FieldType::Long), Column(fifty, FieldType::Text, 20)})};
    MemoryDatabase database(file);
    const ConfigurationReport report = ConfigureWithDefaults(database, "/data/shop.mdb");
    ASSERT_EQ(file.records["Report - Index"].size(), 1U);
    EXPECT_EQ(file.Record("Report - Index", 0)["Field"], fifty);
    const std::vector<std::string> notes = {
        "The table \"Elsewhere\" is left out: its records are in another file.",
        "The table \"" + fifty + "x\" is left out: its name has more than 50 characters.",
        "The table \"odd]name\" is left out: its name holds a bracket.",
        "The field \"" + fifty + "x\" of \"" + fifty + "\" is left out: its name has more than 50 characters.",
    };
    EXPECT_EQ(report.notes, notes);
}

TEST(DefaultAnswers, LongTextsAreCutToTheirColumns) {
    MemoryFile file;
    const std::string name = "The day on which it was sent off to \xC3\xA5ll of them";  // 46 characters
    file.tables = {Table("A", {Column(name, FieldType::Date)})};
    MemoryDatabase database(file);
    const std::string folder = "/" + std::string(300, '\xE9');
    const ConfigurationReport report = ConfigureWithDefaults(database, folder);
    const std::string cut = "The day on which it was sent off t";  // 34 characters, and 16 of the longest mask
    const std::string texts[] = {cut + " (mm/dd/yyyy)", cut + " (mm/dd)", cut + " (mmmm dd, yyyy)",
                                 cut + " (yyyy/mm/dd)"};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(file.Record("Report - Index", i)["Text"], texts[i]);
    EXPECT_EQ(file.Record("Report - Index", 0)["Database"], folder.substr(0, 255));
    EXPECT_EQ(report.notes, std::vector<std::string>{"The description of \"" + name +
                                                     "\" of \"A\" is cut, so that it and its mask fit into 50 "
                                                     "characters."});
}

TEST(DefaultAnswers, StopAtTheLastRowThatAReportCanSelect) {
    std::vector<Field> fields;
    for (int i = 1; i <= 897; ++i) fields.push_back(Column("F" + std::to_string(i), FieldType::Long));
    fields.push_back(Column("Day", FieldType::Date));
    fields.push_back(Column("Rest", FieldType::Long));
    MemoryFile file;
    file.tables = {Table("Wide", fields), Table("Later", {Column("A", FieldType::Long)})};
    MemoryDatabase database(file);
    const ConfigurationReport report = ConfigureWithDefaults(database, "/data/shop.mdb");
    ASSERT_EQ(file.records["Report - Index"].size(), 899U);
    EXPECT_EQ(file.Record("Report - Index", 898)["ID"], "899");
    EXPECT_EQ(file.Record("Report - Index", 898)["Text"], "Day (mm/dd)");
    EXPECT_EQ(
        report.notes,
        std::vector<std::string>{
            "The catalog is full: a report can select 899 entries, and a mask of the field \"Day\" would come next. "
            "All entries so far are kept; no more fields are asked for."});
}

}  // namespace
}  // namespace quillform
