#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/Colours.h"
#include "print/PdfTools.h"

namespace quillform::print {
namespace {

constexpr double kTenthOfMillimetre = 5.67;  // twips

TEST(PdfDrawingTest, TextLandsWhereItWasSetAndIsAsWideAsMeasured) {
    SKIP_WITHOUT("pdftotext");
    struct Case {
        const char* text;
        double x, y;
        FontSpec font;
    };
    const Case cases[] = {
        {"Origin", 0, 0, {"Arial", 10}},
        {"AVATAR-Tofi", 1440.4, 1000.3, {"Times New Roman", 12}},
        {"(unbalanced\\", 3000, 2000, {"Courier New", 8.25, true}},
        {"Gr\xC3\xB6\xC3\x9F"
         "e",
         600,
         3000.7,
         {"Arial", 24, true, true}},
        {"\xD0\x96\xD1\x83\xD0\xBA\xCE\xA9", 5000, 4444.4, {"Times New Roman", 9.7, false, true}},
        {"12345.67", 9000.5, 14000.25, {"Arial", 6}},
    };
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "places.pdf", {});
    for (const Case& c : cases) {
        target->SetFont(target->Font(c.font));
        target->SetCurrentX(c.x);
        target->SetCurrentY(c.y);
        target->Print(c.text);
        EXPECT_DOUBLE_EQ(target->CurrentX(), 0);
        EXPECT_DOUBLE_EQ(target->CurrentY(), c.y + target->TextHeight(target->CurrentFont()));
    }
    target->EndDoc();

    const std::vector<PlacedWord> words = WordsOfFirstPage(folder / "places.pdf");
    ASSERT_EQ(words.size(), std::size(cases));
    for (std::size_t i = 0; i < words.size(); ++i) {
        const Case& c = cases[i];
        const FontId font = target->Font(c.font);
        EXPECT_EQ(words[i].text, c.text);
        EXPECT_NEAR(words[i].left, c.x, kTenthOfMillimetre) << c.text;
        EXPECT_NEAR(words[i].top, c.y, kTenthOfMillimetre) << c.text;
        EXPECT_NEAR(words[i].bottom, c.y + target->TextHeight(font), kTenthOfMillimetre) << c.text;
        EXPECT_NEAR(words[i].right - words[i].left, target->TextWidth(font, c.text), 1) << c.text;
    }
}

TEST(PdfDrawingTest, BoxLiesUnderTextWhateverCameFirst) {
    SKIP_WITHOUT("pdftoppm");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "boxes.pdf", {});
    target->SetFont(target->Font({"Arial", 20, true}));
    target->SetForeColor(0);
    target->Print("WWWWWW");
    target->FillBox(0, 0, 3000, 460, 14);      // over the text
    target->FillBox(3000, 2400, 0, 2000, 12);  // corners the other way round
    target->SetCurrentY(2000);
    target->SetForeColor(15);
    target->Print("WWWWWW");
    target->EndDoc();

    const Picture picture(folder / "boxes.pdf", folder);
    const Picture::Pixel yellow{255, 255, 0}, red{255, 0, 0}, black{0, 0, 0}, white{255, 255, 255};
    EXPECT_GT(picture.Count(0, 0, 2000, 400, black), 100);
    EXPECT_GT(picture.Count(0, 0, 2000, 400, yellow), 100);
    EXPECT_GT(picture.Count(0, 2000, 2000, 2400, white), 100);
    EXPECT_EQ(picture.At(2900, 2200), red);
    EXPECT_EQ(picture.At(2970, 440), yellow);
    EXPECT_EQ(picture.At(3030, 440), white);
    EXPECT_EQ(picture.At(2970, 480), white);
}

TEST(PdfDrawingTest, ColoursAreThoseOfTheTable) {
    SKIP_WITHOUT("pdftoppm");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "colours.pdf", {});
    for (int number = -1; number <= 16; ++number) {
        const double top = 500 * (number + 1);
        target->FillBox(0, top, 400, top + 400, number);
    }
    target->EndDoc();
    const Picture picture(folder / "colours.pdf", folder);
    for (int number = -1; number <= 16; ++number) {
        const Rgb wanted = QBColor(number);
        EXPECT_EQ(picture.At(200, 500 * (number + 1) + 200), (Picture::Pixel{wanted.red, wanted.green, wanted.blue}))
            << number;
    }
}

TEST(PdfDrawingTest, UnderlineRunsUnderTheWholeTextAndItsBlanks) {
    SKIP_WITHOUT("pdftoppm");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "underline.pdf", {});
    target->SetFont(target->Font({"Arial", 40, false, false, true}));
    target->SetForeColor(12);
    const double width = target->TextWidth("ab      ");
    target->Print("ab      ");
    target->EndDoc();
    const Picture picture(folder / "underline.pdf", folder);
    const double height = target->TextHeight(target->CurrentFont());
    const double blanks = target->TextWidth("ab") + 50;
    EXPECT_GT(picture.Count(blanks, height * 0.8, width - 20, height, {255, 0, 0}), (width - blanks) / 10 * 2);
    EXPECT_EQ(picture.Count(blanks, 0, width + 1000, height * 0.8, {255, 255, 255}),
              picture.Count(blanks, 0, width + 1000, height * 0.8, picture.At(blanks, 100)));
    EXPECT_EQ(picture.Count(width + 20, 0, width + 500, height, {255, 0, 0}), 0);
}

TEST(PdfDrawingTest, PlacesThatCannotBeDoNoHarm) {
    SKIP_WITHOUT("qpdf");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "wild.pdf", {});
    const double wild[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -1e300,
                           1e300};
    for (const double place : wild) {
        target->SetCurrentX(place);
        target->SetCurrentY(place);
        target->SetForeColor(1000);
        target->Print("somewhere");
        target->FillBox(place, 0, 0, place, -7);
    }
    target->EndDoc();
    const ToolResult check = RunTool("qpdf --check " + Quoted(folder / "wild.pdf"));
    EXPECT_EQ(check.exitCode, 0) << check.output;
}

}  // namespace
}  // namespace quillform::print
