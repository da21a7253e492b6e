// Where things stand on the pages. The measure is that of square letters, so every number can be checked by head.
#include <gtest/gtest.h>

#include "richtext/RichTextTools.h"

namespace quillform::richtext {
namespace {

// A text area of 2400 twips at 1000, 1000: twenty letters of ten points, and ten lines.
constexpr std::string_view kSmall =
    "{\\rtf1{\\colortbl;\\red255\\green0\\blue0;\\red255\\green255\\blue255;}"
    "\\paperw4400\\paperh4400\\margl1000\\margr1000\\margt1000\\margb1000\\fs20 ";

void ExpectLaid(std::string_view body, std::string_view expected) {
    EXPECT_EQ(Laid(std::string(kSmall) + std::string(body) + "}"), expected) << body;
}

TEST(LayoutTest, LinesBreakBehindBlanksAndHyphens) {
    ExpectLaid("12345678 12345678901 x", "1000 1000 12345678 12345678901 \n1000 1240 x\n");
    ExpectLaid("12345678 123456789012 x", "1000 1000 12345678 \n1000 1240 123456789012 x\n");
    ExpectLaid("a  {\\b bold}ly-spoken words",
               "1000 1000 a  \n1360 1000 bold\n1840 1000 ly-spoken \n1000 1240 words\n");
    ExpectLaid("1234567890 {\\b 12345}678901", "1000 1000 1234567890 \n1000 1240 12345\n1600 1240 678901\n");
    ExpectLaid("one 1234567890-1234567890", "1000 1000 one 1234567890-\n1000 1240 1234567890\n");
    ExpectLaid("x 1234567890123456789012345 y", "1000 1000 x \n1000 1240 12345678901234567890\n1000 1480 12345 y\n");
    ExpectLaid("a\\line\\line b\\par\\par c", "1000 1000 a\n1000 1480 b\n1000 1960 c\n");
}

TEST(LayoutTest, TabsGoToTheirStops) {
    ExpectLaid("\\tab a\\tab b", "1720 1000 a\n2440 1000 b\n");
    ExpectLaid("123456\\tab b", "1000 1000 123456\n2440 1000 b\n");  // its end is a stop itself
    ExpectLaid("\\tx300\\tx1000 \\tab a\\tab b\\tab c", "1300 1000 a\n2000 1000 b\n2440 1000 c\n");
    ExpectLaid("\\deftab500 \\tab a", "1500 1000 a\n");
    ExpectLaid("\\tqr\\tx1200\\tqc\\tx1800 \\tab 12\\tab 345\\tab b", "1960 1000 12\n2620 1000 345\n3160 1000 b\n");
    ExpectLaid("\\tqr\\tx360 123\\tab 4567", "1000 1000 123\n1720 1000 4567\n");
    ExpectLaid("\\tqr\\tx480 12\\tab 4567", "1000 1000 12\n1240 1000 4567\n");  // no room to the left
    ExpectLaid("\\tqr\\tx2400 ab\\tab 12", "1000 1000 ab\n3160 1000 12\n");
    ExpectLaid("\\li600\\fi-600 1\\tab text that wraps around",
               "1000 1000 1\n1600 1000 text that wraps \n1600 1240 around\n");
}

TEST(LayoutTest, TabsThatLeadToTheMarginBeginALine) {
    ExpectLaid("a\\tab\\tab\\tab b\\tab c", "1000 1000 a\n3160 1000 b\n1720 1240 c\n");
    ExpectLaid("\\tx2400 a\\tab b", "1000 1000 a\n1000 1240 b\n");
}

TEST(LayoutTest, AlignmentAndIndents) {
    ExpectLaid("\\qc abcd  \\par\\qr abcd  \\par\\qr\\tab x", "1960 1000 abcd  \n2920 1240 abcd  \n3280 1480 x\n");
    ExpectLaid("\\li240\\ri240\\fi120 1234567890123 45 x", "1360 1000 1234567890123 \n1240 1240 45 x\n");
    ExpectLaid("\\li9000\\ri9000 ab", "10000 1000 ab\n");
}

TEST(LayoutTest, LinesAreAsHighAsTheirTallestLetters) {
    // Letters of 20 points are 480 high, 384 of it above the baseline; those of ten are 240 and 192.
    ExpectLaid("a{\\fs40 b}c\\par d", "1000 1192 a\n1120 1000 b\n1360 1192 c\n1000 1480 d\n");
    ExpectLaid("a\\sb100\\sa50\\par\\pard b", "1000 1100 a\n1000 1390 b\n");
    ExpectLaid("\\sl-300 a\\par b", "1000 1060 a\n1000 1360 b\n");
    ExpectLaid("\\sl480\\slmult1 a\\par b", "1000 1240 a\n1000 1720 b\n");
    ExpectLaid("a {\\fs40  }\\fs40\\par\\fs20 b", "1000 1000 a \n1000 1240 b\n");  // neither blanks nor the end
    ExpectLaid("\\fs40\\par{\\fs60  }\\par\\fs20 a{\\fs40  }b", "1000 2392 a\n1360 2392 b\n");
}

TEST(LayoutTest, PagesEndWhenTheyAreFullOrAsked) {
    ExpectLaid("1\\par 2\\par 3\\par 4\\par 5\\par 6\\par 7\\par 8\\par 9\\par 10\\par 11\\par",
               "1000 1000 1\n1000 1240 2\n1000 1480 3\n1000 1720 4\n1000 1960 5\n1000 2200 6\n1000 2440 7\n"
               "1000 2680 8\n1000 2920 9\n1000 3160 10\n-\n1000 1000 11\n");
    ExpectLaid("a {\\page}\r\nb\\par  {\\page}\\page c\\page", "1000 1000 a \n-\n1000 1000 b\n-\n-\n1000 1000 c\n");
    ExpectLaid("", "");
    ExpectLaid("a\\sect\\sectd\\pgwsxn3000\\marglsxn500 b\\sect\\sectd\\sbknone c",
               "1000 1000 a\n-\n500 1000 b\n500 1240 c\n");
    ExpectLaid("\\fs800 a\\par b", "1000 1000 a\n-\n1000 1000 b\n");  // higher than the page
}

TEST(LayoutTest, BackColoursFillTextAndTheTabsBehindIt) {
    ExpectLaid("{\\cb1\\tab ab}", "1720 1000 ab\n1720 1000 240 240 255,0,0\n");
    ExpectLaid("{\\cb1 ab\\tab}{\\cb2 c\\tab}{\\cb9 d}",
               "1000 1000 ab\n1720 1000 c\n2440 1000 d\n1000 1000 240 240 255,0,0\n1240 1000 480 240 255,0,0\n");
    ExpectLaid("{\\cb1  }{\\ul  }\\par", "1120 1000  \n1000 1000 120 240 255,0,0\n");
}

}  // namespace
}  // namespace quillform::richtext
