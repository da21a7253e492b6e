// Documents on the PDF target, as other programs read them there.
#include <gtest/gtest.h>

#include <algorithm>

#include "print/PdfTools.h"
#include "richtext/PlainText.h"
#include "richtext/PrintPages.h"
#include "richtext/ReadRichText.h"
#include "richtext/RichTextTools.h"

namespace quillform::richtext {
namespace {

using print::HasTool;
using print::kEdge;

struct Printed {
    ScratchFolder folder;
    std::filesystem::path file = folder / "a.pdf";
    Printed() : target(print::MakePdfTarget(file, {})) {}
    std::unique_ptr<print::PdfTarget> target;
};

const PlacedWord& Find(const std::vector<PlacedWord>& words, std::string_view text) {
    static const PlacedWord missing{-1, -1, -1, -1, -1, "missing"};
    const auto found = std::find_if(words.begin(), words.end(), [&](const auto& word) { return word.text == text; });
    return found == words.end() ? missing : *found;
}

TEST(PagesTest, ItemsStandOnTheStopsOfTheirTabs) {
    SKIP_WITHOUT("pdftotext");
    const Printed printed;
    PrintPages(
        ReadRichText(Frame() + "{\\f1\\fs20\\cf1\\cb3\\tab\\tab Smith\\tab\\tab}{\\f2\\fs20\\cf1\\cb3 Berlin\\tab}"
                               "{\\f1\\fs16\\cf2\\cb3\\b 1,234.50} \\par\r\n{\\f1\\fs20 next} \\par\r\n\\par}\r\n"),
        *printed.target);
    const auto words = print::WordsOf(printed.file);
    ASSERT_EQ(words.size(), 4U);
    for (const auto& [text, stop] : {std::pair{"Smith", 2}, {"Berlin", 4}, {"1,234.50", 6}, {"next", 0}})
        EXPECT_NEAR(Find(words, text).left, 720 + stop * 720, 2) << text;
    // The line is as high as the Courier in it, from the upper margin on.
    FontSpec courier{"Courier New", 10};
    const double height = printed.target->TextHeight(printed.target->Font(courier));
    EXPECT_NEAR(Find(words, "Berlin").top, 720, 30);
    EXPECT_NEAR(Find(words, "next").top - Find(words, "Smith").top, height, 30);
}

TEST(PagesTest, TextsOfSeveralFontsShareABaseline) {
    SKIP_WITHOUT("pdftoppm");
    const Printed printed;
    PrintPages(ReadRichText(Frame() + "{\\f1\\fs80 H\\tab}{\\f2\\fs20 H}\\par}"), *printed.target);
    const print::Picture picture(printed.file, printed.folder);
    const print::Picture::Pixel black{0, 0, 0};
    const double width = 600;
    const auto lowest = [&](double left) {
        double last = 0;
        for (double y = 0; y < 2880; y += 10)
            if (picture.Count(left, y, left + width, y + 10, black) > 0) last = y;
        return last;
    };
    EXPECT_GT(lowest(720 - kEdge), 720) << "the large letter";
    EXPECT_NEAR(lowest(720 - kEdge), lowest(1440 - kEdge), 20);
}

TEST(PagesTest, SheetsAndColoursAreThoseOfTheDocument) {
    SKIP_WITHOUT("pdftoppm");
    const Printed printed;
    PrintPages(ReadRichText(Frame(true) + "{\\f1\\fs20\\cf3\\cb2 wide}\\par}"), *printed.target);
    const std::string info = print::RunTool("pdfinfo " + print::Quoted(printed.file)).output;
    EXPECT_NE(info.find("792 x 612"), std::string::npos) << info;
    const print::Picture picture(printed.file, printed.folder);
    EXPECT_EQ(picture.At(720 - kEdge + 5, 720 - kEdge + 15), (print::Picture::Pixel{0, 0, 128}));
    EXPECT_GT(picture.Count(720 - kEdge, 720 - kEdge, 1200 - kEdge, 940 - kEdge, {255, 255, 255}), 5);
}

TEST(PagesTest, LabelsStandInTheirCells) {
    SKIP_WITHOUT("pdftotext");
    const Printed printed;
    std::string body;
    for (int row = 0; row < 10; ++row) {
        body +=
            "\\trowd \\trgaph180\\trrh-1440\\trleft-180\\trkeep \\cellx4140\\cellx7920 \\pard \\li198\\ri198\\intbl ";
        for (const char* cell : {"L", "R"})
            body +=
                "{\\tx360\r\n{\\f1\\fs20\\tab " + (cell + std::to_string(row)) + "} \\par\r\n{\\f1\\fs20 x}}\\cell ";
        body += "\\row ";
    }
    PrintPages(ReadRichText(Frame() + body + "\\pard\\par}"), *printed.target);
    EXPECT_EQ(printed.target->PageCount(), 1) << "ten inches of labels between margins of half an inch";
    const auto words = print::WordsOf(printed.file);
    for (const int row : {0, 4, 9}) {
        const auto& left = Find(words, "L" + std::to_string(row));
        const auto& right = Find(words, "R" + std::to_string(row));
        EXPECT_NEAR(left.left, 720 + 360, 2);
        EXPECT_NEAR(right.left, 720 + 4140 + 180 + 360, 2);
        EXPECT_NEAR(left.top - Find(words, "L0").top, row * 1440, 2);
    }
}

TEST(PagesTest, EveryWordOfALongDocumentIsPrinted) {
    SKIP_WITHOUT("pdftotext");
    const Printed printed;
    std::string body, expected;
    for (int i = 0; i < 1000; ++i) {
        const std::string number = std::to_string(i);
        body += "{\\f1\\fs20 Name" + number + "\\tab\\tab}{\\f1\\fs20\\i Town" + number + "} \\par\r\n";
        body += i % 50 == 49 ? " {\\page}\r\n" : "";
        expected += "Name" + number + " Town" + number + "\n";
    }
    PrintPages(ReadRichText(Frame() + body + "\\par}"), *printed.target);
    EXPECT_EQ(printed.target->PageCount(), 20);
    EXPECT_EQ(print::TextOf(printed.file), expected);
}

TEST(PagesTest, PlainTextIsPrintedInOneFont) {
    SKIP_WITHOUT("pdftotext");
    const Printed printed;
    printed.target->SetFont(printed.target->Font({"Courier New", 10}));
    const double letter = printed.target->TextWidth("x");
    const std::string longest(100, 'y');  // wider than the page
    std::string text = "a\tb\n\n  c\f" + longest + " z\n";
    for (int i = 0; i < 200; ++i) text += "word" + std::to_string(i) + " ";
    PrintText(text, *printed.target);
    EXPECT_EQ(printed.target->PageCount(), 2);
    const auto words = print::WordsOfFirstPage(printed.file);
    ASSERT_EQ(words.size(), 3U);
    EXPECT_NEAR(words[1].left, 8 * letter, 2);
    EXPECT_NEAR(words[2].left, 2 * letter, 2);
    EXPECT_NEAR(words[2].top - words[0].top, 2 * printed.target->TextHeight(), 2);
    std::string all = print::TextOf(printed.file);
    std::replace(all.begin(), all.end(), '\n', ' ');
    EXPECT_NE(all.find("word0 word1 "), std::string::npos);
    EXPECT_NE(all.find("word198 word199"), std::string::npos);
    EXPECT_EQ(std::count(all.begin(), all.end(), 'y'), 100);
}

}  // namespace
}  // namespace quillform::richtext
