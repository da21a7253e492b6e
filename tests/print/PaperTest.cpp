// Sheets: their sizes as an independent reader of the document sees them, and where positions on them begin.
#include <gtest/gtest.h>

#include <array>
#include <sstream>

#include "print/PdfTools.h"

namespace quillform::print {
namespace {

struct Paper {
    int number;
    double width, height;  // of the upright sheet, points
};
constexpr Paper papers[] = {
    {1, 612, 792},   {2, 612, 792},   {3, 792, 1224}, {4, 1224, 792},  {5, 612, 1008}, {6, 396, 612},
    {7, 540, 756},   {16, 720, 1008}, {19, 279, 639}, {20, 297, 684},  {21, 324, 747}, {22, 324, 792},
    {23, 360, 828},  {37, 279, 540},  {38, 261, 468}, {39, 1071, 792}, {40, 612, 864}, {41, 612, 936},
    {999, 612, 792}, {0, 612, 792},   {-1, 612, 792}, {8, 612, 792},   {9, 612, 792},
};

using Size = std::array<double, 2>;

/// Sizes of the pages, from lines such as "Page    1 size:   612 x 792 pts (letter)".
std::vector<Size> PageSizes(const std::filesystem::path& pdf, std::size_t count) {
    std::istringstream info(RunTool("pdfinfo -l " + std::to_string(count) + " " + Quoted(pdf)).output);
    std::vector<Size> sizes;
    for (std::string line; std::getline(info, line);) {
        const std::size_t at = line.find(" size:");
        if (line.rfind("Page ", 0) != 0 || at == std::string::npos) continue;
        std::istringstream numbers(line.substr(at + 6));
        Size size{};
        std::string by;
        numbers >> size[0] >> by >> size[1];
        sizes.push_back(size);
    }
    return sizes;
}

TEST(PaperTest, EveryNumberGivesItsSheetInBothOrientations) {
    SKIP_WITHOUT("pdfinfo");
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "sheets.pdf", {});
    std::vector<Size> expected;
    for (const bool isLandscape : {false, true})
        for (const Paper& paper : papers) {
            target->SetOrientation(isLandscape);
            target->SetPaperSize(paper.number);
            const Size size = isLandscape ? Size{paper.height, paper.width} : Size{paper.width, paper.height};
            EXPECT_DOUBLE_EQ(target->ScaleWidth(), size[0] * 20 - 2 * kEdge) << paper.number;
            EXPECT_DOUBLE_EQ(target->ScaleHeight(), size[1] * 20 - 2 * kEdge) << paper.number;
            target->Print("x");
            target->NewPage();
            expected.push_back(size);
        }
    target->EndDoc();
    EXPECT_EQ(PageSizes(folder / "sheets.pdf", expected.size()), expected);
}

TEST(PaperTest, PositionsCountFromThePrintableAreaOrFromTheSheet) {
    SKIP_WITHOUT("pdftotext");
    for (const PageOrigin origin : {PageOrigin::PrintableArea, PageOrigin::Sheet}) {
        const double edge = origin == PageOrigin::Sheet ? 0 : kEdge;
        const ScratchFolder folder;
        const auto target = MakePdfTarget(folder / "origin.pdf", {});
        target->SetOrigin(origin);
        EXPECT_DOUBLE_EQ(target->ScaleWidth(), 12240 - 2 * edge);
        EXPECT_DOUBLE_EQ(target->ScaleHeight(), 15840 - 2 * edge);
        target->SetCurrentX(1440);
        target->SetCurrentY(2880);
        target->Print("here");
        target->EndDoc();
        const std::vector<PlacedWord> words = WordsOfFirstPage(folder / "origin.pdf");
        ASSERT_EQ(words.size(), 1U);
        EXPECT_NEAR(words[0].left, 1440 + edge - kEdge, 1);
        EXPECT_NEAR(words[0].top, 2880 + edge - kEdge, 1);
    }
}

}  // namespace
}  // namespace quillform::print
