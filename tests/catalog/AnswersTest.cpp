#include <gtest/gtest.h>

#include "catalog/AnswersFile.h"
#include "catalog/MemoryDatabase.h"
#include "catalog/Unattended.h"
#include "platform/OutputFile.h"

namespace quillform {
namespace {

using testing::Column;
using testing::MemoryDatabase;
using testing::MemoryFile;
using testing::Table;
using Lines = std::vector<std::string>;

const std::string whole =
    "quillform answers 1\n"
    "\n"
    "unlisted fields no\n"
    "unlisted links default\n"
    "label sheets no\n"
    "\n"
    "table [Goods]\n"
    "  field [Goods No]\n"
    "    raw no\n"
    "    formula Count(Field)\n"
    "      mask #,##0\n"
    "      alias GoodsCount\n"
    "      description Number of goods\n"
    "  field [Short]\n"
    "    description \" Kind \"\n"
    "    date yes\n"
    "    masks 3\n"
    "    mask yyyymmdd\n"
    "    mask \"\"\n"
    "    mask \"\"\"when\"\" said\"\n"
    "    formula Mid$(Field, Position, Length)\n"
    "      position 1\n"
    "      length 2\n"
    "  field [Notes]\n"
    "    as text 80\n"
    "  no field [odd]]name]\n"
    "\n"
    "no table [Log]\n"
    "\n"
    "link [Goods].[Goods No] = [Sales].[Goods No]\n"
    "no link [Goods] [Log]\n";

TEST(AnswersFile, IsReadAsItIsWritten) {
    EXPECT_EQ(AnswersText(ParseAnswers(whole, "a")), whole);

    std::string windows = "\xEF\xBB\xBF# a comment\r\n";
    for (const char character : whole) windows += character == '\n' ? "  \r\n" : std::string(1, character);
    EXPECT_EQ(AnswersText(ParseAnswers(windows, "a")), whole);
}

TEST(AnswersFile, FaultsAreToldWithTheirLine) {
    struct Case {
        const char* text;  ///< behind the heading, so from line 2
        const char* message;
    };
    const Case cases[] = {
        {"tabel [A]", "a.txt, line 2: \"tabel [A]\" begins with no word that an answers file knows."},
        {"tables [A]", "a.txt, line 2: \"tables [A]\" begins with no word that an answers file knows."},
        {"label sheets some", "a.txt, line 2: \"some\" is neither yes nor no."},
        {"table A", "a.txt, line 2: A name in brackets is missing."},
        {"table [A", "a.txt, line 2: A closing ] is missing."},
        {"table [A]]", "a.txt, line 2: A closing ] is missing."},
        {"table []", "a.txt, line 2: The name in brackets is empty."},
        {"table [A] yes", "a.txt, line 2: \"yes\" is too much."},
        {"table [A]\n\ntable [a]", "a.txt, line 4: The same is answered in line 2."},
        {"field [A]", "a.txt, line 2: A field stands below its table."},
        {"no table [A]\nfield [B]", "a.txt, line 3: The table \"A\" is left out, so its fields have no answers."},
        {"table [A]\nfield [B]\nfield [b]", "a.txt, line 4: The same is answered in line 3."},
        {"table [A]\nmask 0", "a.txt, line 3: This answer stands below no field."},
        {"table [A]\nno field [B]\nmask 0", "a.txt, line 4: The field \"B\" is left out, so it has no answers."},
        {"table [A]\nfield [B]\nalias x", "a.txt, line 4: This answer stands below no formula."},
        {"table [A]\nfield [B]\nformula Sum(Field)\nraw no",
         "a.txt, line 5: This answer stands above the field's formulas."},
        {"table [A]\nfield [B]\ndescription x\ndescription y", "a.txt, line 5: The same is answered in line 4."},
        {"table [A]\nfield [B]\nraw maybe", "a.txt, line 4: \"maybe\" is neither yes nor no."},
        {"table [A]\nfield [B]\nas text 0", "a.txt, line 4: \"0\" is no width from 1 to 255."},
        {"table [A]\nfield [B]\nmask \"0", "a.txt, line 4: A closing \" is missing."},
        {"table [A]\nfield [B]\nmask \"0\" 1", "a.txt, line 4: \"1\" is too much."},
        {"table [A]\nfield [B]\nmask \xE9", "a.txt, line 4: The line is no UTF-8 text."},
        {"table [A\rB]", "a.txt, line 2: The line is no UTF-8 text."},
        {"link [A].[B] [C].[D]", "a.txt, line 2: A link is written [TABLE].[FIELD] = [TABLE].[FIELD]."},
        {"link [A].[B] = [C].[D]\nno link [C] [A]", "a.txt, line 3: The same is answered in line 2."},
        {"unlisted fields never", "a.txt, line 2: \"never\" is none of default, no and stop."},
    };
    for (const Case& example : cases) {
        try {
            ParseAnswers("quillform answers 1\n" + std::string(example.text), "a.txt");
            ADD_FAILURE() << example.text;
        } catch (const RunTimeError& error) {
            EXPECT_STREQ(error.what(), example.message);
            EXPECT_EQ(error.Number(), ErrorNumber::InvalidFileFormat);
        }
    }
    for (const char* text : {"", "# nothing", "quillform answers 2", "table [A]"})
        EXPECT_THROW(ParseAnswers(text, "a.txt"), RunTimeError) << text;
}

/// Three tables, of which the answers of a test name some.
MemoryFile Shop() {
    MemoryFile file;
    file.tables = {Table("Goods",
                         {Column("Goods No", FieldType::Long), Column("Name", FieldType::Text, 40),
                          Column("Notes", FieldType::Memo), Column("Since", FieldType::Date)},
                         "Goods No"),
                   Table("Sales", {Column("Goods No", FieldType::Long), Column("Paid", FieldType::Boolean)}),
                   Table("Log", {Column("Line", FieldType::Long)})};
    return file;
}

/// "Table.Field|Text|Default Length|Mask" of each row, then "Table1.Field1=Table2.Field2" of each link.
Lines CatalogOf(const MemoryFile& file) {
    Lines lines;
    for (std::size_t i = 0; file.records.contains("Report - Index") && i < file.records.at("Report - Index").size();
         ++i) {
        auto row = file.Record("Report - Index", i);
        lines.push_back(row["Table"] + "." + row["Field"] + "|" + row["Text"] + "|" + row["Default Length"] + "|" +
                        row["Mask"]);
    }
    for (std::size_t i = 0;
         file.records.contains("Report - Relation") && i < file.records.at("Report - Relation").size(); ++i) {
        auto row = file.Record("Report - Relation", i);
        lines.push_back(row["Table1"] + "." + row["Field1"] + "=" + row["Table2"] + "." + row["Field2"]);
    }
    return lines;
}

TEST(Answers, OfTheGuidesExample) {
    const std::string guide = ReadWholeFile(QUILLFORM_SOURCE_DIR "/docs/guide.md");
    const std::size_t begin = guide.find("quillform answers 1\n");
    ASSERT_NE(begin, std::string::npos);
    const std::string example = guide.substr(begin, guide.find("```", begin) - begin);
    MemoryFile file;
    file.tables = {Table("Customers", {Column("CustomerID", FieldType::Text, 5),
                                       Column("CompanyName", FieldType::Text, 40), Column("Fax", FieldType::Text, 24)}),
                   Table("Log", {Column("Line", FieldType::Memo)}),
                   Table("Orders", {Column("Freight", FieldType::Currency), Column("PaidOn", FieldType::Text, 8),
                                    Column("OrderDate", FieldType::Date), Column("CustomerID", FieldType::Text, 5)})};
    MemoryDatabase database(file);
    const ConfigurationReport report = ConfigureByAnswers(database, "/shop.mdb", ParseAnswers(example, "example"));
    EXPECT_EQ(CatalogOf(file),
              (Lines{"Customers.CustomerID|Customer number|5| ", "Customers.CompanyName|Company|40| ",
                     "Customers.CompanyName|Initial|1| ", "Orders.Freight|Freight|8|#,##0.00",
                     "Orders.Freight|Freight in all|8|#,##0.00", "Orders.PaidOn|Paid(yyyymmdd)|8|yyyymmdd",
                     "Orders.OrderDate|Ordered (mm/dd/yyyy)|10|mm/dd/yyyy",
                     "Orders.OrderDate|Ordered (mmmm yyyy)|14|mmmm yyyy", "Orders.CustomerID|CustomerID|5| ",
                     "Customers.CustomerID=Orders.CustomerID"}));
    EXPECT_EQ(report.notes, Lines{});
}

struct Case {
    const char* what;
    std::string answers;
    Lines catalog;
    Lines notes;
};

TEST(Answers, ApplyToWhatTheyNameAndRulesToTheRest) {
    const Case cases[] = {
        {"a field by its answers, the rest left out",
         "unlisted fields no\nunlisted links no\ntable [goods]\nfield [since]\ndescription Day\nmask yyyy\nmask mm",
         {"Goods.Since|Day (yyyy)|4|yyyy", "Goods.Since|Day (mm)|2|mm"},
         {"The field \"Goods No\" of \"Goods\" isn't in the answers; it is left out.",
          "The field \"Name\" of \"Goods\" isn't in the answers; it is left out.",
          "The field \"Notes\" of \"Goods\" isn't in the answers; it is left out.",
          "The table \"Sales\" isn't in the answers; it is left out.",
          "The table \"Log\" isn't in the answers; it is left out."}},
        {"proposed answers for the rest",
         "no table [Goods]\nno table [Log]\ntable [Sales]\nno field [Goods No]",
         {"Sales.Paid|Paid|5| ", "Goods.Goods No=Sales.Goods No"},
         {"The field \"Paid\" of \"Sales\" isn't in the answers; it got the proposed ones."}},
        {"a memo as a number and as a text",
         "unlisted links no\nno table [Sales]\nno table [Log]\ntable [Goods]\nno field [Goods No]\nno field "
         "[Name]\nfield "
         "[Notes]\nas text 80\nno field [Since]",
         {"Goods.Notes|Notes|80| "},
         {}},
        {"a link in the other order",
         "unlisted links no\nno table [Goods]\nno table [Sales]\nno table [Log]\nlink [sales].[goods no] = "
         "[goods].[GOODS NO]",
         {"Goods.Goods No=Sales.Goods No"},
         {}},
        {"what the database lacks is passed over",
         "no table [Goods]\nno table [Log]\ntable [Gone]\nfield [A]\ntable [Sales]\nno field [Goods No]\nno field "
         "[Price]\nfield [Paid]\nmask 0\nformula Count(Field)\nposition 1\nalias N\nno link [Gone] [Sales]\nno link "
         "[Goods] [Sales]",
         {"Sales.Paid|Paid|5| ", "Sales.Paid|Paid|11|###,###,##0"},
         {"a.txt, line 4 wasn't used: the table \"Gone\" wasn't asked about.",
          "a.txt, line 8 wasn't used: the field \"Price\" wasn't asked about.",
          "a.txt, line 10 wasn't used: nothing asked for this answer.",
          "a.txt, line 12 wasn't used: nothing asked for this answer.",
          "a.txt, line 14 wasn't used: the tables \"Gone\" and \"Sales\" weren't asked about."}},
    };
    for (const Case& example : cases) {
        SCOPED_TRACE(example.what);
        MemoryFile file = Shop();
        MemoryDatabase database(file);
        const ConfigurationReport report =
            ConfigureByAnswers(database, "/shop.mdb", ParseAnswers("quillform answers 1\n" + example.answers, "a.txt"));
        EXPECT_EQ(CatalogOf(file), example.catalog);
        EXPECT_EQ(report.notes, example.notes);
    }
}

TEST(Answers, ThatCannotBeTakenChangeNothing) {
    const std::string table = "no table [Sales]\nno table [Log]\ntable [Goods]\n";
    struct Refusal {
        std::string answers;
        std::string message;
    };
    const Refusal refusals[] = {
        {table + "field [Name]\ndescription " + std::string(51, 'x'),
         "a.txt, line 6: The description has 51 characters, and the catalog holds 50. Please shorten it."},
        {table + "field [Name]\nformula Sum(Field)",
         "a.txt, line 6: \"Sum(Field)\" is no formula for a field of this type."},
        {table + "field [Name]\nas text 10",
         "a.txt, line 6: The field \"Name\" of \"Goods\" is neither a memo nor a GUID."},
        {"unlisted fields stop\n" + table,
         "a.txt, line 5: The field \"Goods No\" of \"Goods\" is in the database and not "
         "in the answers."},
        {"unlisted fields stop", "a.txt: The table \"Goods\" is in the database and not in the answers."},
        {"unlisted links stop", "a.txt: The answers don't say whether the tables \"Goods\" and \"Sales\" are linked."},
        {"link [Goods].[Price] = [Sales].[Goods No]", "a.txt, line 2: The table \"Goods\" has no field \"Price\"."},
    };
    for (const Refusal& refusal : refusals) {
        MemoryFile file = Shop();
        MemoryDatabase database(file);
        try {
            ConfigureByAnswers(database, "/shop.mdb", ParseAnswers("quillform answers 1\n" + refusal.answers, "a.txt"));
            ADD_FAILURE() << refusal.answers;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.what(), refusal.message);
        }
        EXPECT_EQ(file.tables.size(), Shop().tables.size()) << refusal.answers;
        EXPECT_TRUE(file.records.empty()) << refusal.answers;
    }
}

TEST(Answers, OfTheProposalsGiveTheSameCatalog) {
    MemoryFile file = Shop();
    MemoryDatabase database(file);
    const ConfigurationReport report = ConfigureWithDefaults(database, "/shop.mdb");
    MemoryFile again = Shop();
    MemoryDatabase second(again);
    const ConfigurationReport replayed =
        ConfigureByAnswers(second, "/shop.mdb", ParseAnswers(AnswersText(report.answered), "a.txt"));
    EXPECT_EQ(again.records, file.records);
    EXPECT_EQ(replayed.notes, Lines{});
    EXPECT_EQ(replayed.made, report.made);
}

TEST(Answers, CanBeTriedWithoutAChange) {
    MemoryFile file = Shop();
    MemoryDatabase database(file);
    const ConfigurationReport report = ConfigureByAnswers(database, "/shop.mdb", {}, Changes::Drop);
    EXPECT_EQ(report.made.size(), 3U);
    EXPECT_EQ(report.answered.tables.size(), 3U);
    EXPECT_EQ(file.tables.size(), 3U);
}

}  // namespace
}  // namespace quillform
