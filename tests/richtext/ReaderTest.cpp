// What the reader makes of rich text: of the documents that Quillform writes, and of others.
#include <gtest/gtest.h>

#include "ScratchFolder.h"
#include "platform/OutputFile.h"
#include "platform/RunTimeError.h"
#include "richtext/PlainText.h"
#include "richtext/ReadRichText.h"
#include "richtext/RichTextTools.h"

namespace quillform::richtext {
namespace {

struct Case {
    std::string_view rtf;  // the body; the frame around it is the test's
    std::string_view expected;
};

void ExpectShapes(std::string_view head, const std::vector<Case>& cases) {
    for (const auto& [rtf, expected] : cases)
        EXPECT_EQ(Shape(std::string(head) + std::string(rtf) + "}"), expected) << rtf;
}

TEST(ReaderTest, ReportDocumentIsReadWithItsLooks) {
    const Document document = ReadRichText(Frame(true) +
                                           "{\\f1\\fs28\\cf2\\cb3\\i\\b\\ul\\tab Sales\\tab\\tab}{\\f2\\fs21\\cf1\\cb3 "
                                           "  ab } \\par\r\n\\par\r\n{\\f9\\fs20 x} {\\page}\r\n{\\f1 y}\\par}\r\n");
    EXPECT_EQ(Marked(document),
              "<Arial 14 b i u cf2 cb3>>Sales>><Courier New 10.5 cf1 cb3>  ab <Times New Roman 10> ||x |=<Arial 10>y|");
    EXPECT_EQ(document.sections.back().geometry, (Geometry{15840, 12240, 720, 720, 720, 720}));
    EXPECT_EQ(document.defaultTab, 720) << "the one among the information is no part of the document";
    EXPECT_EQ(document.Colour(0), std::nullopt);
    EXPECT_EQ(document.Colour(2), (Rgb{0, 0, 128}));
    EXPECT_EQ(document.Colour(4), std::nullopt);
}

TEST(ReaderTest, CharactersOfAllKinds) {
    ExpectShapes("{\\rtf1\\ansi ", {{"caf\\'e9 \xE9 \\'80", "caf\u00E9 \u00E9 \u20AC|"},
                                    {"\\u8364?x\\u-3913 ?y", "\u20ACx\u00B7y|"},
                                    {"\\uc0\\u937x{\\uc2\\u937\\'81\\'82y}\\u937z", "\u03A9x\u03A9y\u03A9z|"},
                                    {"\\u55357?\\u56832?", "\U0001F600|"},
                                    {"\\u55357?x\\u56832?", "\uFFFDx\uFFFD|"},
                                    {"\\u8364\\'80{a}\\u8364}{", "\u20ACa\u20AC|"},
                                    {"a\\~b\\_c\\-d\\emdash e\\bullet", "a\u00A0b\u2011cd\u2014e\u2022|"},
                                    {"\\{a\\}\\\\", "{a}\\|"},
                                    {"a\tb\\tab c\\line d\\\r\ne", "a>b>c^d|e|"},
                                    {std::string_view("a\0\1b", 4), "ab|"},
                                    {"a\\'09\\'0ab\\'0", "a>b|"},
                                    {"a\\bin3 }}}b", "ab|"}});
    ExpectShapes("{\\rtf1\\ansi\\ansicpg1251 ", {{"\\'cf\\'f0", "\u041F\u0440|"}});
    ExpectShapes("{\\rtf1\\mac ", {{"\\'8a", "\u00E4|"}});
    ExpectShapes("{\\rtf1{\\fonttbl{\\f0\\fcharset204 A;}{\\f1\\fcharset128 B;}{\\f2\\fcharset0 C;}{\\f3\\cpg1253 D;}}",
                 {{"\\f0\\'cf{\\f1\\'83\\'65\\'83e}\\f2\\'cf\\f3\\'e1", "\u041F\u30C6\u30C6\u00CF\u03B1|"}});
}

TEST(ReaderTest, WhatIsNoTextIsPassedOver) {
    ExpectShapes("{\\rtf1 ", {{"a{\\*\\unknown b{c}}d{\\unknown e}", "ade|"},
                              {"{\\info{\\title T}}{\\header H\\par}{\\footnote F}x", "x|"},
                              {"{\\field{\\*\\fldinst PAGE}{\\fldrslt 7}} pages", "7 pages|"},
                              {"{\\pict\\wmetafile8 0102ff}{\\object{\\*\\objdata 00}{\\result{r}}}", "r|"},
                              {"a{\\v hidden\\tab\\u8364?\\v0 shown}b\\v c\\plain d", "ashownbd|"},
                              {"{\\pntext\\'b7\\tab}item{\\*\\pn{\\pntxtb (}}", "\u00B7>item|"},
                              {"{\\stylesheet{\\s1 Heading;}}{\\*\\generator X;}y", "y|"},
                              {"a\\trowd\\unknownword-12 b", "a|b|"}});
}

TEST(ReaderTest, TextThatWasNotEscapedStaysReadable) {
    ExpectShapes(Frame(), {{"{\\f1 a}b}{\\f1 c}\\par", "abc|"},
                           {"{\\f1 a{b}{\\f1 c}\\par", "abc|"},
                           {"{\\f1 C:\\temp\\x}{\\f1 y}\\par", "C:y|"}});
}

TEST(ReaderTest, ParagraphsTakeTheFormatThatTheirTextHas) {
    const Document document = ReadRichText(
        "{\\rtf1{\\qc\\li100 a}\\par b\\qr\\par\\pard{\\tx500\\tqr\\tx900.75 {\\tqc c}\\par d}\\par\\ql e\\fi-20}");
    std::vector<ParagraphFormat> formats;
    for (const Paragraph& paragraph : document.paragraphs)
        formats.push_back(document.paragraphFormats[paragraph.format]);
    ASSERT_EQ(formats.size(), 5U);
    EXPECT_EQ(formats[0].alignment, Alignment::Centre);
    EXPECT_EQ(formats[0].leftIndent, 100);
    EXPECT_EQ(formats[1].alignment, Alignment::Right);
    for (const std::size_t i : {2U, 3U}) {
        ASSERT_TRUE(formats[i].tabs);
        EXPECT_EQ(*formats[i].tabs, (std::vector<TabStop>{{500, TabAlignment::Left}, {900, TabAlignment::Right}}));
    }
    EXPECT_FALSE(formats[4].tabs);
    EXPECT_EQ(formats[4].firstIndent, -20);
}

TEST(ReaderTest, SectionsHaveTheirOwnSheets) {
    const Document document = ReadRichText(
        "{\\rtf1\\paperw10000\\paperh20000\\margl500 a\\sect\\sectd\\pgwsxn20000\\pghsxn9000 "
        "b\\sect\\sectd\\sbknone\\landscape\\par}");
    ASSERT_EQ(document.sections.size(), 3U);
    EXPECT_EQ(document.sections[0].geometry.width, 10000);
    EXPECT_EQ(document.sections[1].geometry.width, 20000);
    EXPECT_EQ(document.sections[1].geometry.left, 500);
    EXPECT_EQ(document.sections[2].geometry.width, 20000) << "high sheets lie on their side";
    EXPECT_EQ(document.sections[2].geometry.height, 10000);
    EXPECT_FALSE(document.sections[2].startsPage);
}

TEST(ReaderTest, SheetsThatNoPageFitsOnAreMadeUsable) {
    for (const char* words : {"\\paperw0\\paperh-5", "\\paperw99999999\\paperh2147483648", "\\margl9000\\margr9000",
                              "\\margt-100\\margb20000"}) {
        const Geometry geometry = ReadRichText("{\\rtf1" + std::string(words) + " x}").sections[0].geometry;
        EXPECT_GE(geometry.TextWidth(), 720) << words;
        EXPECT_GE(geometry.TextHeight(), 720) << words;
        EXPECT_LE(geometry.width, 31680) << words;
    }
}

TEST(ReaderTest, CutOffFilesShowWhatThereIs) {
    const std::string whole =
        Frame() +
        "{\\f1\\fs20 one\\tab}{\\f2 caf\\'e9} \\par\r\n{\\b two} {\\page}\r\n\\trowd\\cellx900\\intbl{\\tx9 "
        "in}\\cell\\row\\pard{\\*\\x y}end\\par}";
    const std::string text = PlainText(ReadRichText(whole));
    EXPECT_EQ(text, "one\tcaf\u00E9 \ntwo \n\fin\nend\n");
    for (std::size_t length = 5; length < whole.size(); ++length) {
        std::string part = PlainText(ReadRichText(whole.substr(0, length)));
        while (part.ends_with('\n') || part.ends_with('\f') || part.ends_with(' ')) part.pop_back();
        EXPECT_TRUE(text.starts_with(part)) << length << ": " << part;
    }
}

TEST(ReaderTest, HostileInputTakesItsMeasure) {
    const auto repeated = [](std::string_view part, int times) {
        std::string text = "{\\rtf1 ";
        for (int i = 0; i < times; ++i) text += part;
        return text;
    };
    EXPECT_EQ(Shape(repeated("{", 200'000) + "deep" + std::string(200'000, '}') + "}"), "deep|");
    EXPECT_EQ(Shape("{\\rtf1 a\\bin2147483647 b"), "a|");
    EXPECT_EQ(Shape("{\\rtf1\\fs99999999999999999\\li-99999999999\\tx2147483647\\uc99999999 a"), "a|");
    EXPECT_EQ(ReadRichText(repeated("{\\fonttbl\\f1 A;}", 20'000)).fonts.size(), 1000U);
    EXPECT_EQ(ReadRichText(repeated("\\tx1\\tx2", 10) + repeated("\\tx\\tx3", 1) + "x").paragraphs.size(), 1U);
    std::string tabs = "{\\rtf1 ";
    for (int i = 1; i < 5000; ++i) tabs += "\\tx" + std::to_string(i);
    EXPECT_EQ(ReadRichText(tabs + " x}").paragraphFormats[0].tabs->size(), 64U);
    EXPECT_EQ(ReadRichText(repeated("\\trowd\\cellx1\\cell", 500) + "\\row}").rows[0].cellCount, 64U);
}

TEST(ReaderTest, OtherFilesAreRefusedInWords) {
    for (const std::string_view bytes : {"", "plain text", "{\\rt1 x}", "{ \\rtf1 x}", "%PDF-1.4"}) {
        try {
            ReadRichText(bytes);
            FAIL() << bytes;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::InvalidFileFormat) << bytes;
        }
    }
    EXPECT_EQ(Shape("\xEF\xBB\xBF \r\n{\\rtf1 x}"), "x|");
    const ScratchFolder folder;
    OutputFile file(folder / "a.rtf");
    file.Write("no");
    file.Commit();
    try {
        ReadRichTextFile(folder / "a.rtf");
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_NE(std::string(error.what()).find("a.rtf"), std::string::npos);
    }
}

}  // namespace
}  // namespace quillform::richtext
