// What readers of the document find beside the ink: text, tags, outline, properties.

#include <gtest/gtest.h>

#include "platform/Dates.h"
#include "print/PdfTools.h"

namespace quillform::print {
namespace {

// The file with its objects laid open, one entry a line.
std::string LaidOpen(const std::filesystem::path& pdf) {
    return RunTool("qpdf --qdf --object-streams=disable --no-original-object-ids " + Quoted(pdf) + " -").output;
}

int CountOf(std::string_view text, std::string_view part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

TEST(PdfReaderTest, TextOutsideTheWesternAlphabetIsExtractedAsPrinted) {
    SKIP_WITHOUT("pdftotext");
    // Pairs that share a glyph in many fonts are among them: each must come back as itself.
    const char* texts[] = {
        "Gr\xC3\xBC\xC3\x9F"
        "e \xE2\x82\xAC",
        "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82", "\xCE\x94\xCE\xA9", "\xE2\x88\x86\xE2\x84\xA6",
        "\xE2\x80\x9Cquoted\xE2\x80\x9D"};
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "a.pdf", {});
    std::string expected;
    for (const char* text : texts) {
        target->Print(text);
        target->Print();
        expected += std::string(text) + "\n";
    }
    target->EndDoc();
    EXPECT_EQ(TextOf(folder / "a.pdf"), expected);
}

TEST(PdfReaderTest, CharactersTheFontLacksComeFromAnother) {
    SKIP_WITHOUT("pdffonts");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "a.pdf", {});
    target->SetFont(target->Font({"Liberation Sans", 10}));
    const char* umbrella =
        "a\xE2\x98\x82"
        "b";
    const double width = target->TextWidth(umbrella);
    target->Print(umbrella);
    target->EndDoc();
    const std::string fonts = RunTool("pdffonts " + Quoted(folder / "a.pdf")).output;
    if (CountOf(fonts, "Identity-H") < 2) GTEST_SKIP() << "no two fonts installed that share the text";
    const auto words = WordsOfFirstPage(folder / "a.pdf");
    ASSERT_FALSE(words.empty());
    EXPECT_EQ(TextOf(folder / "a.pdf"), std::string(umbrella) + "\n");
    EXPECT_NEAR(words.back().right - words.front().left, width, 1);
}

TEST(PdfReaderTest, FontsAreEmbeddedSubsetsThatNameTheirCharacters) {
    SKIP_WITHOUT("pdffonts");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "a.pdf", {});
    for (const char* family : {"Arial", "Times New Roman", "Courier New"}) {
        target->SetFont(target->Font({family, 10, false, true}));
        target->Print("text");
    }
    target->Font({"Arial", 10, true});  // measured with, not printed with
    target->EndDoc();
    const std::string fonts = RunTool("pdffonts " + Quoted(folder / "a.pdf")).output;
    EXPECT_EQ(CountOf(fonts, "CID TrueType"), CountOf(fonts, "yes yes yes")) << fonts;
    EXPECT_GE(CountOf(fonts, "CID TrueType"), 1) << fonts;
    EXPECT_EQ(fonts.find("Bold"), std::string::npos) << fonts;
}

TEST(PdfReaderTest, OpenTypeOutlinesAreEmbeddedAndReadBack) {
    for (const char* tool : {"fc-list", "pdffonts", "pdftotext", "pdftoppm", "qpdf"}) SKIP_WITHOUT(tool);
    std::string family = RunTool("fc-list :fontformat=CFF:variable=false:lang=en family").output;
    family = family.substr(0, family.find_first_of(",\n"));
    if (family.empty()) GTEST_SKIP() << "no OpenType font with compact outlines is installed";
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "opentype.pdf", {});
    target->SetFont(target->Font({family, 40}));
    EXPECT_TRUE(target->FontSubstitutions().empty()) << family;
    // More characters than a block of the map holds, and repeated in another order.
    std::string all;
    for (char letter = '!'; letter <= '~'; ++letter) all += letter;
    const double width = target->TextWidth("Hamburg");
    target->Print("Hamburg");
    target->SetFont(target->Font({family, 8}));
    target->Print(all + "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xC3\xA9\xC3\xA8\xC3\xAA\xC3\xA7");
    target->EndDoc();
    const std::string pdf = Quoted(folder / "opentype.pdf");
    EXPECT_EQ(RunTool("qpdf --check " + pdf).exitCode, 0);
    const std::string fonts = RunTool("pdffonts " + pdf).output;
    EXPECT_NE(fonts.find("CID Type 0C"), std::string::npos) << fonts;
    EXPECT_NE(fonts.find("yes yes yes"), std::string::npos) << fonts;
    EXPECT_EQ(RunTool("pdftoppm -singlefile " + pdf + " " + Quoted(folder / "x")).output, "");
    const std::vector<PlacedWord> words = WordsOfFirstPage(folder / "opentype.pdf");
    ASSERT_EQ(words.size(), 2U);
    EXPECT_EQ(words[0].text, "Hamburg");
    EXPECT_NEAR(words[0].right - words[0].left, width, 5);
    EXPECT_NE(TextOf(folder / "opentype.pdf").find(all.substr(0, 40)), std::string::npos);
}

TEST(PdfReaderTest, TagsFollowRolesAndRows) {
    SKIP_WITHOUT("pdfinfo");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "a.pdf", {});
    const auto row = [&](PageRole role, std::initializer_list<const char*> items) {
        target->SetRole(role);
        target->BeginRow();
        for (const char* item : items) target->Print(item);
    };
    row(PageRole::Heading, {"Report"});
    row(PageRole::Heading, {"Name", "Amount"});
    row(PageRole::Detail, {"Smith", "   ", "1"});
    row(PageRole::SubTotal, {"______"});
    row(PageRole::SubTotal, {"2"});
    target->NewPage();
    row(PageRole::Heading, {"Report again"});
    row(PageRole::GrandTotal, {"3"});
    target->EndDoc();

    const std::string tree = RunTool("pdfinfo -struct-text " + Quoted(folder / "a.pdf")).output;
    EXPECT_EQ(tree.find("__"), std::string::npos) << "lines are drawn, not read out\n" << tree;
    EXPECT_NE(TextOf(folder / "a.pdf").find("______"), std::string::npos);
    EXPECT_EQ(tree.find("again"), std::string::npos) << "headings of later pages are no content\n" << tree;
    std::size_t at = 0;
    for (const char* next :
         {"Document", "H1",    "\"Report", "P ", "\"Name Amount", "Table", "TBody", "TR", "TD",   "\"Smith\"", "TD",
          "TD",       "\"1\"", "TR",       "TD", "\"2\"",         "TBody", "TR",    "TD", "\"3\""}) {
        const std::size_t found = tree.find(next, at);
        ASSERT_NE(found, std::string::npos) << next << " behind " << at << " of\n" << tree;
        at = found + 1;
    }
    const std::string open = HasTool("qpdf") ? LaidOpen(folder / "a.pdf") : "/S /SubTotal/S /SubTotal/S /GrandTotal";
    EXPECT_EQ(CountOf(open, "/S /SubTotal"), 2);
    EXPECT_EQ(CountOf(open, "/S /GrandTotal"), 1);
}

// Cells end where a document is too long to be read through; its text must stay in the tree all the same.
TEST(PdfReaderTest, LongDocumentsStayTagged) {
    SKIP_WITHOUT("pdfinfo");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "a.pdf", {});
    for (int page = 1; page <= 120; ++page) {
        target->BeginRow();
        target->Print("left" + std::to_string(page));
        target->Print("right" + std::to_string(page));
        target->NewPage();
    }
    target->EndDoc();
    const std::string tree = RunTool("pdfinfo -struct-text " + Quoted(folder / "a.pdf")).output;
    EXPECT_EQ(CountOf(tree, "TR"), 120);
    for (const char* text : {"\"left1\"", "\"right1\"", "left120 right120"})
        EXPECT_NE(tree.find(text), std::string::npos) << text;
}

TEST(PdfReaderTest, OutlineHasItsLevelsAndPages) {
    SKIP_WITHOUT("qpdf");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "a.pdf", {});
    const std::pair<int, const char*> entries[] = {{2, "A"}, {2, "B"}, {1, "C"}, {2, "D"}, {2, "E (\xC3\xA9)"},
                                                   {1, "F"}};
    for (const auto& [level, title] : entries) {
        target->SetCurrentY(1440);
        target->AddOutlineEntry(level, title);
        target->Print(title);
        target->NewPage();
    }
    target->EndDoc();
    const std::string json = RunTool("qpdf --json=1 --json-key=outlines " + Quoted(folder / "a.pdf")).output;
    for (int page = 1; page <= 6; ++page)
        EXPECT_EQ(CountOf(json, "\"destpageposfrom1\": " + std::to_string(page)), 1) << json;
    const std::string open = LaidOpen(folder / "a.pdf");
    EXPECT_EQ(CountOf(open, "/Count -2"), 1) << "C holds D and E and is closed";
    EXPECT_NE(open.find("/XYZ\n    null\n    702\n"), std::string::npos) << "an inch below the printable area's top";
}

TEST(PdfReaderTest, PropertiesAreThoseOfTheSettings) {
    SKIP_WITHOUT("pdfinfo");
    const ScratchFolder folder;
    const double created = DateSerial(2001, 2, 3) + TimeSerial(4, 5, 6);
    const auto target = MakePdfTarget(folder / "a.pdf", {"Sales & <more>", "de-DE", created});
    target->Print("x");
    target->EndDoc();
    const std::string info = RunTool("pdfinfo -rawdates " + Quoted(folder / "a.pdf")).output;
    for (const char* part : {"Title:           Sales & <more>", "D:20010203040506", "Tagged:          yes"})
        EXPECT_NE(info.find(part), std::string::npos) << part << " in\n" << info;
    const std::string meta = RunTool("pdfinfo -meta " + Quoted(folder / "a.pdf")).output;
    EXPECT_NE(meta.find("Sales &amp; &lt;more&gt;"), std::string::npos) << meta;
    EXPECT_NE(meta.find("2001-02-03T04:05:06"), std::string::npos) << meta;
    EXPECT_TRUE(!HasTool("qpdf") || CountOf(LaidOpen(folder / "a.pdf"), "/Lang (de-DE)") == 1);
}

TEST(PdfReaderTest, WithoutATitleTheFileNameStandsForIt) {
    SKIP_WITHOUT("pdfinfo");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "Year \xC3\xA9nd.pdf", {});
    target->Print("x");
    target->EndDoc();
    const std::string info = RunTool("pdfinfo " + Quoted(folder / "Year \xC3\xA9nd.pdf")).output;
    EXPECT_NE(info.find("Year \xC3\xA9nd.pdf"), std::string::npos) << info;
    EXPECT_EQ(info.find("CreationDate"), std::string::npos) << "no date was given";
}

}  // namespace
}  // namespace quillform::print
