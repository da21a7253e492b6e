// Tables: those of word processors, and label sheets, whose rows are closed in several ways.
#include <gtest/gtest.h>

#include "richtext/PlainText.h"
#include "richtext/ReadRichText.h"
#include "richtext/RichTextTools.h"

namespace quillform::richtext {
namespace {

constexpr std::string_view kRow =
    "\\trowd \\trgaph180\\trrh-1440\\trleft-180\\trkeep \\cellx3780\\cellx7560"
    " \\pard \\li198\\ri198\\widctlpar\\intbl \r\n";

TEST(TableTest, RowsEndInManyWays) {
    const std::string row(kRow);
    const struct {
        std::string body;
        std::string_view expected;
    } cases[] = {
        {row + "{\\tx240\r\na}\\cell {\\tx240\r\nb}\\cell\\row\\pard end\\par", "a/b/#end|"},
        {row + "{a}\\cell \r\n{b}\r\n\\row " + row + "{c}\\cell {d}\\cell \\row", "a/b/#c/d/#"},
        {row + "{a}\\cell {b}\r\n {\\page}\r\n" + row + "{c \\par\r\nd}\\par", "a/b /#=c |d/#"},
        {row + "{a} {\\page}\r\n{b}\\cell {c} {\\page}\\cell\\row\\pard{\\v {\\page}\r\n}d", "a b/c /#=d|"},
        {row + "{a}\\cell {b}\\cell\\row {\\page}\r\n" + row + "{c}\\cell\\row", "a/b/#=c/#"},
        {"head" + row + "{a}\\cell {b}\\cell\\row\\par", "head|a/b/#"},
        {row + "a\\cell b\\cell \\pard\\intbl {\\trowd\\cellx1000\\cellx2000\\row }c", "a/b/#c/#"},
        {row + "a\\cell b\\par\\pard\\par c", "a/b/#|c|"},
        {row + "\\cell\\cell\\row x", "//#x/#"},
        {row + "{\\tx240\r\n", ""},
        {"a\\cell b\\cell\\row", "a/b/#"},
        {"\\row\\row a", "a|"},
    };
    for (const auto& [body, expected] : cases) EXPECT_EQ(Shape("{\\rtf1 " + body + "}"), expected) << body;
}

TEST(TableTest, RowFormatIsThatOfItsDefinition) {
    const Document document = ReadRichText(
        "{\\rtf1\\trowd\\trgaph100\\trrh-1499.76\\trleft-50\\cellx1000.5 \\cellx900\\intbl "
        "a\\cell\\cell\\cell\\row\\trowd\\trrh300 b\\cell\\row}");
    ASSERT_EQ(document.rows.size(), 2U);
    EXPECT_EQ(document.rowFormats[document.rows[0].format], (RowFormat{-50, 100, -1499, {1000, 1000, 2440}}));
    EXPECT_EQ(document.rowFormats[document.rows[1].format], (RowFormat{0, 0, 300, {1440}}));
    EXPECT_EQ(Shape(document), "a///#b/#") << "the fraction of a number is no text";
}

TEST(TableTest, PlainTextDividesCellsByTheirHeight) {
    EXPECT_EQ(PlainText(ReadRichText("{\\rtf1\\trowd\\intbl a\\cell b\\cell\\row a\\par c\\cell b\\cell\\row}")),
              "a\tb\na\nc\nb\n");
}

TEST(TableTest, CellsStandSideBySide) {
    const std::string row(kRow);
    const std::string group = "{\\tx240\r\n{\\f1\\fs20\\tab ab} \\par\r\n{\\f1\\fs20\\tab cd}}";
    EXPECT_EQ(Laid(Frame() + row + group + "\\cell " + group + "\\cell\\row " + row + group + "\\cell\\row\\par}"),
              "960 720 ab\n960 960 cd\n4920 720 ab\n4920 960 cd\n"  // tab stops count from the cell's text
              "960 2160 ab\n960 2400 cd\n");
}

TEST(TableTest, HeightOfRows) {
    const auto laid = [](std::string_view height) {
        return Laid(Frame() + "\\trowd\\trrh" + std::string(height) +
                    "\\cellx2000\\intbl a\\line b\\line c\\cell\\row\\pard end\\par}");
    };
    EXPECT_EQ(laid("0"), "720 720 a\n720 960 b\n720 1200 c\n720 1440 end\n");
    EXPECT_EQ(laid("1000"), "720 720 a\n720 960 b\n720 1200 c\n720 1720 end\n");
    EXPECT_EQ(laid("-500"), "720 720 a\n720 960 b\n720 1220 end\n") << "what lies below an exact height is cut off";
}

TEST(TableTest, RowsMoveToTheNextPageWhole) {
    std::string body;
    for (int i = 1; i <= 11; ++i)
        body += std::string(kRow) + "{" + std::to_string(i) + "}\\cell {" + std::to_string(i) + "b}\\cell\\row ";
    const std::string laid = Laid(Frame() + body + "}");
    EXPECT_NE(laid.find("4878 13680 10b\n-\n918 720 11\n4878 720 11b\n"), std::string::npos) << laid;
}

TEST(TableTest, RowsHigherThanAPageGoOnThere) {
    std::string cell = "1";
    for (int i = 2; i <= 70; ++i) cell += "\\line " + std::to_string(i);
    const std::string laid =
        Laid(Frame() + "before\\par\\trowd\\cellx2000\\cellx4000\\intbl " + cell + "\\cell x\\cell\\row\\pard y}");
    EXPECT_TRUE(laid.starts_with("720 720 before\n-\n720 720 1\n720 960 2\n")) << laid;
    EXPECT_NE(laid.find("720 14880 60\n2720 720 x\n-\n720 720 61\n"), std::string::npos) << laid;
    EXPECT_TRUE(laid.ends_with("720 2880 70\n720 3120 y\n")) << laid;
}

}  // namespace
}  // namespace quillform::richtext
