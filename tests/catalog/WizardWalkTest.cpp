#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "catalog/CatalogFixture.h"
#include "catalog/MemoryDatabase.h"

namespace quillform {
namespace {

using testing::CatalogFixture;
using testing::Column;
using testing::ScriptedPage;
using testing::Table;
using Lines = std::vector<std::string>;

class WizardWalkTest : public CatalogFixture {};

/// Texts separated by blanks; `_` stands for a blank inside one.
Lines Words(std::string_view text) {
    Lines words(1);
    for (const char character : text) {
        if (character == ' ')
            words.emplace_back();
        else
            words.back() += character == '_' ? ' ' : character;
    }
    return words;
}

const std::string fieldMask =
    "|Field Mask:|What mask do you want to use when printing the data on the report for the '";
const std::string dateNote =
    ") '?  You have up to 4 masks for Date fields.  If you don't want to use all 4 masks, leave the mask blank.|";
const std::string describe = "0|Field Description:|What description would you give the field '";
const std::string described = "' so that the end user best understands what the data is that they are seeing.|";
const std::string rawNote =
    " ' on the report in it's raw format in the database.  If you respond 'No', you will still have the opportunity to "
    "have formula fields involving the field.";
const std::string rawLabel =
    "1 Y|Include Data as is without performing any calculation/alteration to the data.|Do you want the field '";
const std::string parameter =
    " Parameter in Mid$(Field, Position, Length):|You must enter what the value for certain parameters is going to be. "
    " "
    "Enter a numeric value for the '";
const std::string aliasPage =
    "0|Formula Alias:|When using formulas you must create a unique alias that the system uses to distinguish the "
    "result "
    "of the formula from other data.  Enter the unique alias that you want to use.|";

TEST_F(WizardWalkTest, WordsOfEachPage) {
    Make({Table("Goods", {Column("Since", FieldType::Date), Column("Code", FieldType::Text, 14),
                          Column("Price", FieldType::Double)}),
          Table("Sales", {Column("No", FieldType::Long)})});
    ScriptedPage page({"yes",  // Goods
                       "yes",
                       "yes",
                       "=Day",
                       "next",
                       "next",
                       "next",
                       "next",
                       "yes",
                       "=Count(Field)",  // Since
                       "next",
                       "=Days",
                       "=Number of days",
                       "=(None)",  //
                       "yes",
                       "yes",
                       "=Kind",
                       "yes",
                       "=5",
                       "next",
                       "next",
                       "next",
                       "next",
                       "next",
                       "yes",  // Code
                       "=Mid$(Field, Position, Length)",
                       "=2",
                       "=3",
                       "=Part",
                       "=Middle",
                       "=(None)",  //
                       "yes",
                       "yes",
                       "next",
                       "next",
                       "yes",
                       "=Sum(Field)",
                       "next",
                       "=Total",
                       "next",
                       "=(None)",  //
                       "no",       // Sales
                       "yes",
                       "Code=No"});
    Configure(page);
    const Lines expected = {
        "1 Y|Include Table 'Goods'?|Do you want the table 'Goods' to be included on the report?",
        "1 Y|Include Field 'Since'?|Do you want the Field 'Since' in the table 'Goods' to be included on the report?",
        rawLabel + "Since" + rawNote,
        describe + "Since" + described + "Since",
        "0" + fieldMask + "Day(mm/dd/yyyy" + dateNote + "mm/dd/yyyy",
        "0" + fieldMask + "Day(mm/dd" + dateNote + "mm/dd",
        "0" + fieldMask + "Day(mmmm dd, yyyy" + dateNote + "mmmm dd, yyyy",
        "0" + fieldMask + "Day(yyyy/mm/dd" + dateNote + "yyyy/mm/dd",
        "1 Y|Create Formulas for 'Since'?|Do you want to create any formulas for the field 'Since ' on reports or "
        "queries.",
        "4|Create Formulas for 'Since'?|Select the type of formula you want to use.|Formula Type",
        "0" + fieldMask + "Day'?|mm/dd/yyyy",
        aliasPage + "Since",
        describe + "Since" + described + "Since",
        "4|Field Description:|Select the type of formula you want to use.|Formula Type",
        "1 Y|Include Field 'Code'?|Do you want the Field 'Code' in the table 'Goods' to be included on the report?",
        rawLabel + "Code" + rawNote,
        describe + "Code" + described + "Code",
        "1 N|Is 'Code' a date?|Is field & 'Code' really a date?",
        "0|# of masks:|How many different masks do you want to be able to have for Kind when querying and building "
        "reports?  If this is a text field and you don't want any mask you should still enter one otherwise the field "
        "won't appear in the query builder or the quillform.|4",
        "0" + fieldMask + "Kind'?|mm/dd/yyyy",
        "0" + fieldMask + "Kind'?|mm/dd",
        "0" + fieldMask + "Kind'?|mmmm dd, yyyy",
        "0" + fieldMask + "Kind'?|yyyy/mm/dd",
        "0" + fieldMask + "Kind'?|yyyy/mm/dd",
        "1 Y|Create Formulas for 'Code'?|Do you want to create any formulas for the field 'Code ' on reports or "
        "queries.",
        "3|Create Formulas for 'Code'?|Select the type of formula you want to use.|Formula Type",
        "0|Position" + parameter + "Position' Parameter in the formula 'Mid$(Field, Position, Length)'.|Code",
        "0|Length" + parameter + "Length' Parameter in the formula 'Mid$(Field, Position, Length)'.|Code",
        aliasPage + "Code",
        describe + "Code" + described + "Code",
        "3|Field Description:|Select the type of formula you want to use.|Formula Type",
        "1 Y|Include Field 'Price'?|Do you want the Field 'Price' in the table 'Goods' to be included on the report?",
        rawLabel + "Price" + rawNote,
        describe + "Price" + described + "Price",
        "0" + fieldMask + "Price'?|###,###,##0.00",
        "1 Y|Create Formulas for 'Price'?|Do you want to create any formulas for the field 'Price ' on reports or "
        "queries.",
        "4|Create Formulas for 'Price'?|Select the type of formula you want to use.|Formula Type",
        "0" + fieldMask + "Price'?|###,###,##0.00",
        aliasPage + "Price",
        describe + "Price" + described + "Price",
        "4|Field Description:|Select the type of formula you want to use.|Formula Type",
        "1 Y|Include Table 'Sales'?|Do you want the table 'Sales' to be included on the report?",
        "1 Y||Is there a relationship between 'Goods' and 'Sales'?",
        "2||Select the fields from Table 'Goods' and the field from Table 'Sales' That links the two tables "
        "together.|Goods,Sales",
    };
    ASSERT_EQ(page.words.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(page.words[i], expected[i]) << "page " << i + 1;
    EXPECT_EQ(user_.told, Lines{});
    EXPECT_EQ(user_.warnings, Lines{});
    EXPECT_EQ(IndexRows(), (Lines{"1|Goods|Since|Day (mm/dd/yyyy)|10|mm/dd/yyyy|False|False|False| |0| | | ",
                                  "2|Goods|Since|Day (mm/dd)|5|mm/dd|False|False|False| |0| | | ",
                                  "3|Goods|Since|Day (mmmm dd, yyyy)|18|mmmm dd, yyyy|False|False|False| |0| | | ",
                                  "4|Goods|Since|Day (yyyy/mm/dd)|10|yyyy/mm/dd|False|False|False| |0| | | ",
                                  "5|Goods|Since|Number of days|10|mm/dd/yyyy|False|False|True|Days|5|  |  |  ",
                                  "6|Goods|Code|Kind(mm/dd/yyyy)|10|mm/dd/yyyy|False|True|False| |0| | | ",
                                  "7|Goods|Code|Kind(mm/dd)|5|mm/dd|False|True|False| |0| | | ",
                                  "8|Goods|Code|Kind(mmmm dd, yyyy)|18|mmmm dd, yyyy|False|True|False| |0| | | ",
                                  "9|Goods|Code|Kind(yyyy/mm/dd)|10|yyyy/mm/dd|False|True|False| |0| | | ",
                                  "10|Goods|Code|Kind(yyyy/mm/dd)|10|yyyy/mm/dd|False|True|False| |0| | | ",
                                  "11|Goods|Code|Middle|3| |False|False|True|Part|1| 2| 3|  ",
                                  "12|Goods|Price|Price|14|###,###,##0.00|True|False|False| |0| | | ",
                                  "13|Goods|Price|Price|14|###,###,##0.00|True|False|True|Total|4|  |  |  "}));
    EXPECT_EQ(RelationRows(), Lines{"Goods|Code|Sales|No"});
}

struct Route {
    const char* what;
    std::vector<Field> fields;
    std::string answers;  ///< separated by blanks; `_` stands for a blank
    std::string pages;    ///< the same; behind the table page, which is answered Yes
    Lines rows;           ///< ID, Field, Text, Default Length, Mask
};

const Field number = Column("N", FieldType::Long);
const Field text = Column("T", FieldType::Text, 15);
const Field code = Column("C", FieldType::Text, 14);
const Field flag = Column("B", FieldType::Boolean);
const Field day = Column("D", FieldType::Date);
const Field memo = Column("M", FieldType::Memo);

const Route routes[] = {
    {"a memo has no pages of its own",
     {memo},
     "yes yes next =@ no",
     "Include_M Raw_M Description_M NumberMask_M Formulas?_M",
     {"1|M|M|1|@"}},
    {"a boolean has no mask",
     {flag},
     "yes yes =Sold no",
     "Include_B Raw_B Description_B Formulas?_B",
     {"1|B|Sold|5| "}},
    {"a text of 15 is no date",
     {text},
     "yes yes next =>@ no",
     "Include_T Raw_T Description_T TextMask_T Formulas?_T",
     {"1|T|T|15| >@"}},
    {"a text of 14 may be one",
     {code},
     "yes yes next no next no",
     "Include_C Raw_C Description_C Date?_C TextMask_C Formulas?_C",
     {"1|C|C|14| "}},
    {"text date with an empty mask",
     {code},
     "yes yes next yes =2 = =yyyy no",
     "Include_C Raw_C Description_C Date?_C Count_C TextDate_C TextDate_C_2 Formulas?_C",
     {"1|C|C()|0|", "2|C|C(yyyy)|4|yyyy"}},
    {"no masks at all",
     {code, day},
     "yes yes next yes =0 =0 no yes yes next = = = = no",
     "Include_C Raw_C Description_C Date?_C Count_C Count_C Formulas?_C Include_D Raw_D Description_D DateMask_D "
     "DateMask_D_2 DateMask_D_3 DateMask_D_4 Formulas?_D",
     {}},
    {"neither raw nor formulas", {number, flag}, "yes no no no", "Include_N Raw_N Formulas?_N Include_B", {}},
    {"the description of a date is trimmed",
     {day},
     "yes yes =_Day_ =yyyy = = = no",
     "Include_D Raw_D Description_D DateMask_D DateMask_D_2 DateMask_D_3 DateMask_D_4 Formulas?_D",
     {"1|D|Day (yyyy)|4|yyyy"}},
    {"formulas in all parts of a text",
     {text},
     "yes no yes =Right$(Field,_Position) =3 =End =Last =Left$(Field,_Position) =2 =Start =First =",
     "Include_T Raw_T Formulas?_T List_T Position_T Alias_T Formula_T List_T_2 Position_T_2 Alias_T_2 Formula_T_2 "
     "List_T_3",
     {"1|T|Last|3| ", "2|T|First|2| "}},
    // Back, page by page.
    {"to the table page", {number}, "back yes no", "Include_N Table Include_N", {}},
    {"from raw, description and mask",
     {number},
     "yes yes =x back back back yes yes =y next no",
     "Include_N Raw_N Description_N NumberMask_N Description_N Raw_N Include_N Raw_N Description_N NumberMask_N "
     "Formulas?_N",
     {"1|N|y|11|###,###,##0"}},
    {"from the date question and the mask count",
     {code},
     "yes yes next yes back back =z yes =1 =yyyy no",
     "Include_C Raw_C Description_C Date?_C Count_C Date?_C Description_C Date?_C Count_C TextDate_C Formulas?_C",
     {"1|C|z(yyyy)|4|yyyy"}},
    {"from the mask of a text to its description",
     {code},
     "yes yes next no back =z no = no",
     "Include_C Raw_C Description_C Date?_C TextMask_C Description_C Date?_C TextMask_C Formulas?_C",
     {"1|C|z|14| "}},
    {"from the masks of a date",
     {day},
     "yes yes next =mm =dd back back back =E =yyyy = = = no",
     "Include_D Raw_D Description_D DateMask_D DateMask_D_2 DateMask_D_3 DateMask_D_2 DateMask_D Description_D "
     "DateMask_D DateMask_D_2 DateMask_D_3 DateMask_D_4 Formulas?_D",
     {"1|D|E (yyyy)|4|yyyy"}},
    {"from the masks of a text date",
     {code},
     "yes yes next yes =2 =yy =mm back back back =1 =dd no",
     "Include_C Raw_C Description_C Date?_C Count_C TextDate_C TextDate_C_2 Formulas?_C TextDate_C_2 TextDate_C "
     "Count_C TextDate_C Formulas?_C",
     {"1|C|C(dd)|2|dd"}},
    {"to the mask count where there was no mask",
     {code},
     "yes yes next yes =0 =0 back =1 =dd no",
     "Include_C Raw_C Description_C Date?_C Count_C Count_C Formulas?_C Count_C TextDate_C Formulas?_C",
     {"1|C|C(dd)|2|dd"}},
    {"from the formula question of a number",
     {number},
     "yes yes next =0 back =# no",
     "Include_N Raw_N Description_N NumberMask_N Formulas?_N NumberMask_N Formulas?_N",
     {"1|N|N|1|#"}},
    {"from the formula question of a text",
     {text},
     "yes yes next =0 back =# no",
     "Include_T Raw_T Description_T TextMask_T Formulas?_T TextMask_T Formulas?_T",
     {"1|T|T|15| #"}},
    {"from the formula question of a date",
     {day},
     "yes yes next =m =d =y =w back =q no",
     "Include_D Raw_D Description_D DateMask_D DateMask_D_2 DateMask_D_3 DateMask_D_4 Formulas?_D DateMask_D_4 "
     "Formulas?_D",
     {"1|D|D (m)|1|m", "2|D|D (d)|1|d", "3|D|D (y)|1|y", "4|D|D (q)|1|q"}},
    {"from the formula question of a boolean",
     {flag},
     "yes yes next back back no",
     "Include_B Raw_B Description_B Formulas?_B Formulas?_B Formulas?_B",
     {"1|B|B|5| "}},
    {"from the formula question without raw",
     {number},
     "yes no back yes next next no",
     "Include_N Raw_N Formulas?_N Raw_N Description_N NumberMask_N Formulas?_N",
     {"1|N|N|11|###,###,##0"}},
    {"a page that wrote nothing takes the row before",
     {day},
     "yes yes next =yyyy = = = back =mm no",
     "Include_D Raw_D Description_D DateMask_D DateMask_D_2 DateMask_D_3 DateMask_D_4 Formulas?_D DateMask_D_4 "
     "Formulas?_D",
     {"1|D|D (mm)|2|mm"}},
    {"through Mid$",
     {text},
     "yes no yes back yes =Mid$(Field,_Position,_Length) back =Mid$(Field,_Position,_Length) =1 back =2 =3 back =4 =A "
     "back =A =x back =y =",
     "Include_T Raw_T Formulas?_T List_T Formulas?_T List_T Position_T List_T Position_T Length_T Position_T Length_T "
     "Alias_T Length_T Alias_T Formula_T Alias_T Formula_T List_T_2 Formula_T List_T_2",
     {"1|T|y|4| "}},
    {"through Left$",
     {text},
     "yes no yes =Left$(Field,_Position) back =Left$(Field,_Position) =3 back =4 =A =x =(None)",
     "Include_T Raw_T Formulas?_T List_T Position_T List_T Position_T Alias_T Position_T Alias_T Formula_T List_T_2",
     {"1|T|x|4| "}},
    {"through Sum",
     {number},
     "yes no yes =Sum(Field) back =Avg(Field) =0 back =#0 =A back =B =x =(None)",
     "Include_N Raw_N Formulas?_N List_N FormulaMask_N List_N FormulaMask_N Alias_N FormulaMask_N Alias_N Formula_N "
     "Alias_N Formula_N List_N_2",
     {"1|N|x|2|#0"}},
    {"to a field that was left out",
     {number, flag},
     "no back yes yes next next no no",
     "Include_N Include_B Include_N Raw_N Description_N NumberMask_N Formulas?_N Include_B",
     {"1|N|N|11|###,###,##0"}},
    {"to a field without formulas",
     {number, flag},
     "yes yes next next no back no no",
     "Include_N Raw_N Description_N NumberMask_N Formulas?_N Include_B Formulas?_N Include_B",
     {"1|N|N|11|###,###,##0"}},
    {"to a field with formulas alone",
     {number, flag},
     "yes no yes = back no no no",
     "Include_N Raw_N Formulas?_N List_N Include_B Raw_N Formulas?_N Include_B",
     {}},
    {"to a field with both",
     {number, flag},
     "yes yes next next yes =Sum(Field) =# =A =x = back =y = no",
     "Include_N Raw_N Description_N NumberMask_N Formulas?_N List_N FormulaMask_N Alias_N Formula_N List_N_2 "
     "Include_B Formula_N List_N_2 Include_B",
     {"1|N|N|11|###,###,##0", "2|N|y|1|#"}},
    {"two fields back by the answers given last",
     {number, text, flag},
     "yes yes next next no no back back no no no",
     "Include_N Raw_N Description_N NumberMask_N Formulas?_N Include_T Include_B Include_T Include_N Include_T "
     "Include_B",
     {"1|N|N|11|###,###,##0"}},
};

TEST_F(WizardWalkTest, RoutesThroughATable) {
    int count = 0;
    for (const Route& route : routes) {
        SCOPED_TRACE(route.what);
        path_ = folder_.File("route" + std::to_string(++count) + ".db");
        Make({Table("A", route.fields)});
        Lines answers = Words(route.answers);
        answers.insert(answers.begin(), "yes");
        ScriptedPage page(answers);
        Configure(page);
        EXPECT_EQ(page.shown, Words("Table " + route.pages));
        EXPECT_EQ(user_.warnings, Lines{});
        if (::testing::Test::HasFailure()) return;
        EXPECT_EQ(Rows("Report - Index", "ID, [Field], [Text], [Default Length], [Mask]"), route.rows);
    }
}

TEST_F(WizardWalkTest, ATableWithoutRowsOfItsOwnTakesNone) {
    Make({Table("A", {number}), Table("B", {day})});
    // The second table hasn't counted a row yet, so its Back leaves the first table's row alone.
    ScriptedPage page({"yes", "yes", "yes", "next", "next", "no",                           //
                       "yes", "yes", "yes", "next", "=", "back", "=", "=", "=", "=", "no",  //
                       "no"});
    Configure(page);
    EXPECT_EQ(Rows("Report - Index", "ID, [Text]"), Lines{"1|N"});
}

TEST_F(WizardWalkTest, LinksOfTables) {
    struct Case {
        const char* what;
        Lines answers;
        Lines rows;
    };
    const Case cases[] = {
        {"none", {"no"}, {}},
        {"back to the question", {"yes", "back", "no"}, {}},
        {"back and forth", {"yes", "back", "yes", "X=Y"}, {"A|X|B|Y"}},
        {"nothing picked", {"yes", "X="}, {}},
        {"nothing picked on the left", {"yes", "=Y"}, {}},
        {"back from the question goes on", {"back", "X=Y"}, {"A|X|B|Y"}},
    };
    int count = 0;
    for (const Case& example : cases) {
        SCOPED_TRACE(example.what);
        path_ = folder_.File("links" + std::to_string(++count) + ".db");
        Make({Table("A", {Column("X", FieldType::Long)}), Table("B", {Column("Y", FieldType::Long)})});
        Lines answers = {"no", "no"};
        answers.insert(answers.end(), example.answers.begin(), example.answers.end());
        ScriptedPage page(answers);
        Configure(page);
        EXPECT_EQ(RelationRows(), example.rows);
    }
}

struct Slip {
    const char* what;
    Field field;
    std::string answers;
    Lines told;  ///< how each message begins
    Lines rows;
};

TEST_F(WizardWalkTest, ASlipIsToldAndTheReplyKept) {
    const std::string fifty(50, 'x');
    const std::string many = fifty + "y";
    const Slip slips[] = {
        {"description",
         number,
         "yes yes =" + many + " next =" + fifty + " next no",
         {"The description has 51 characters, and the catalog holds 50.", "The description has 51 characters"},
         {"1|N|" + fifty + "|11|###,###,##0| | "}},
        {"mask", number, "yes yes next =" + many + " =# no", {"The mask has 51 characters"}, {"1|N|N|1|#| | "}},
        {"mask with its blank",
         text,
         "yes yes next =" + fifty + " =# no",
         {"The mask has 50 characters"},
         {"1|T|T|15| #| | "}},
        {"description with its mask",
         day,
         "yes yes =" + fifty.substr(9) + " next next = =m = = no",
         {"The mask is written behind the description.", "The description with its mask, \"xxxxx"},
         {"1|D|" + fifty.substr(9) + " (m)|1|m| | "}},
        {"mask count", code, "yes yes next yes =few next no", {"\"few\" is no number and counts as 0"}, {}},
        {"endless masks",
         code,
         "yes yes next yes =900 =99999 =1 =d no",
         {"\"900\" masks are more than the 899", "\"99999\" masks are more"},
         {"1|C|C(d)|1|d| | "}},
        {"position and length",
         text,
         "yes no yes =Mid$(Field,_Position,_Length) =0 =one next =99999 =two =2x next =A =x =(None)",
         {"The position \"0\" is no number from 1 up.", "The position \"one\" is no number from 1 up.",
          "The length \"99999\" is beyond 32767.", "The length \"two\" is no number from 0 up.",
          "The length \"2x\" is no number"},
         {"1|T|x|2| | one| 2x"}},
        {"alias twice",
         number,
         "yes no yes =Sum(Field) =# = =A =Sum =Avg(Field) =# =a next =Avg =Count(Field) =# =a =C =Count =(None)",
         {"The alias is empty.", "The alias \"a\" is that of the formula \"Sum\" already.",
          "The alias \"a\" is that of the formula"},
         {"1|N|Sum|1|#|  |  ", "2|N|Avg|1|#|  |  ", "3|N|Count|1|#|  |  "}},
        {"no formula",
         number,
         "yes no yes =Mid$(Field,_Position,_Length) =",
         {"\"Mid$(Field, Position, Length)\" is no formula for a field of this type."},
         {}},
        {"name of a field",
         Column(many, FieldType::Long),
         "yes no",
         {"The field \"" + many + "\" can't be included: its name has more than 50 characters."},
         {}},
    };
    int count = 0;
    for (const Slip& slip : slips) {
        SCOPED_TRACE(slip.what);
        path_ = folder_.File("slip" + std::to_string(++count) + ".db");
        user_.told.clear();
        Make({Table("A", {slip.field})});
        Lines answers = Words(slip.answers);
        answers.insert(answers.begin(), "yes");
        ScriptedPage page(answers);
        Configure(page);
        ASSERT_EQ(user_.told.size(), slip.told.size());
        for (std::size_t i = 0; i < slip.told.size(); ++i)
            EXPECT_TRUE(user_.told[i].starts_with(slip.told[i])) << user_.told[i];
        EXPECT_EQ(Rows("Report - Index", "ID, [Field], [Text], [Default Length], [Mask], [Parameter 1], [Parameter 2]"),
                  slip.rows);
    }
}

TEST(FullCatalog, EndsTheFieldsAndGoesOnToTheLinks) {
    // A date as text with a mask for each entry, so that one field fills the catalog but for one entry.
    testing::MemoryFile file;
    file.tables = {Table("A", {code, number, flag}), Table("B", {number})};
    testing::MemoryDatabase database(file);
    Lines answers = {"yes", "yes", "yes", "next", "yes", "=898"};
    answers.insert(answers.end(), 898, "=d");
    for (const char* answer : {"no", "yes", "yes", "next", "next", "yes", "no"})
        answers.emplace_back(answer);  // the last is for the link
    ScriptedPage page(answers);
    testing::ListeningUser user;
    WizardWalk walk(page, user);
    CompleteCatalog(database, "/a.mdb", user, walk, OnFailure::Warn);
    EXPECT_EQ(user.told, Lines{"The catalog is full: a report can select 899 entries, and a formula of the "
                               "field \"N\" would come next. All "
                               "entries so far are kept; no more fields are asked for."});
    EXPECT_EQ(user.warnings, Lines{});
    EXPECT_EQ(file.records["Report - Index"].size(), 899U);
    EXPECT_EQ(file.Record("Report - Index", 898)["ID"], "899");
    EXPECT_EQ(page.shown.back(), "Link? A-B");
    EXPECT_EQ(file.tables.size(), 5U);
}

/// Answers as another page does, and ends the process, as a crash would, instead of the page `last`.
class DyingPage final : public ScriptedPage {
public:
    DyingPage(std::vector<std::string> answers, std::size_t last) : ScriptedPage(std::move(answers)), last_(last) {}
    void Show() override {
        if (shown.size() == last_) _exit(0);
        ScriptedPage::Show();
    }

private:
    std::size_t last_;
};

class KilledWalk : public CatalogFixture, public ::testing::WithParamInterface<DatabaseVersion> {};

// Rows are written as they are answered, so those of the answers so far are there; what wasn't begun is asked for.
TEST_P(KilledWalk, LeavesADatabaseThatOpensAndGoesOn) {
    const Lines answers = Words(
        "yes yes yes next next yes =Sum(Field) next =Total next = no "  // pages 0 to 11: A
        "yes yes yes next next next back next next next no yes N=D");   // 12 to 24: B, and the link
    // How many rows of each table there are when the page of that number would be shown; -1: no table.
    struct Moment {
        std::size_t page;
        int rows;
        int links;
        Lines rest;  ///< the answers to what is asked in the next configuration
    };
    const Moment moments[] = {{0, 0, -1, {"no"}},  {4, 0, -1, {"yes", "N=D"}}, {5, 1, -1, {"no"}},
                              {11, 2, -1, {"no"}}, {18, 4, -1, {"no"}},        {19, 3, -1, {"yes", "N=D"}},
                              {21, 5, -1, {"no"}}, {22, 6, -1, {"no"}},        {23, 6, 0, {}},
                              {24, 6, 0, {}}};
    int count = 0;
    for (const Moment& moment : moments) {
        SCOPED_TRACE(moment.page);
        path_ = folder_.File("killed" + std::to_string(++count) + ".db");
        Make({Table("A", {number, flag}), Table("B", {day})}, GetParam());
        const pid_t child = fork();
        if (child == 0) {
            DyingPage page(answers, moment.page);
            Configure(page);
            _exit(1);
        }
        int status = -1;
        waitpid(child, &status, 0);
        ASSERT_EQ(status, 0);
        EXPECT_EQ(Rows("Report - Index", "ID").size(), static_cast<std::size_t>(moment.rows));
        EXPECT_EQ(engine_->OpenDatabase(path_)->FindTable("Report - Relation") != nullptr, moment.links >= 0);

        ScriptedPage rest(moment.rest);
        Configure(rest);
        EXPECT_EQ(user_.warnings, Lines{});
        EXPECT_EQ(RelationRows().size(), moment.rest.size() == 2 ? 1U : 0U);
        EXPECT_EQ(Rows("Report - Labels", "*"), Lines{});
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, KilledWalk,
                         ::testing::Values(DatabaseVersion::Sqlite, DatabaseVersion::Jet30, DatabaseVersion::Jet40));

}  // namespace
}  // namespace quillform
