// Sheets of labels, measured on the paper: where the texts of each label stand, as an independent reader of the
// document finds them.
#include <gtest/gtest.h>

#include <sstream>

#include "endtoend/Support.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

struct LabelStyle {
    const char* name;
    int across, down;
    double height, width, top, left, horizontalGap, verticalGap;  // inches
    int fontSize = 9;
    double rowHeight = 240;  // of an item in that font, twips
    bool isLandscape = false;
    int paper = 1;
};

void PrintTo(const LabelStyle& style, std::ostream* out) { *out << style.name; }

const LabelStyle styles[] = {
    {"Address", 3, 10, 1, 2.625, 0.5, 0.1875, 0.125, 0},
    {"Shipping", 2, 5, 2, 4, 0.5, 0.1563, 0.1875, 0},
    {"GapsBothWays", 4, 6, 1.25, 1.75, 0.75, 0.3, 0.11, 0.17},
    {"FromTheEdge", 2, 7, 1.5, 4.25, 0, 0, 0, 0},
    {"NegativeMargins", 3, 9, 1, 2.5, -0.125, -0.25, 0.25, 0.25},
    {"TallLetters", 2, 5, 2, 4, 0.5, 0.15625, 0.1875, 0, 16, 480},
    {"LandscapeLegal", 4, 6, 1.25, 3.25, 0.4, 0.2, 0.15, 0.1, 9, 240, true, 5},
    {"Envelope", 1, 1, 4.125, 9.5, 2, 4, 0, 0, 12, 480, true, 20},
};

constexpr double columnTwips = 120;
constexpr int firstRowColumn = 2;  // cells from the label's left edge
constexpr int secondRowColumn = 3;
constexpr int firstOrder = 20001;
constexpr int orders = 130;

/// A label of two rows: the order number, and a word that is the same on all.
std::string LabelLayout(const LabelStyle& style, const fs::path& database) {
    const Outcome code = Quillform(
        {"sql", database.string(), "--no-header", "SELECT ID FROM [Report - Index] WHERE [Text] = 'Order Number'"});
    const std::string orderNumber = Lines(code.output).at(0);
    std::ostringstream text;
    const auto writeItem = [&](const std::string& catalogId, int row, int column, const char* isSorted) {
        text << '#' << catalogId << ", " << row << ", " << column << ", 8,\"Ship\",\"Arial\",\"" << style.fontSize
             << "\",\"False\",\"False\",\"False\",\"0\",\" 15\",\"L\",\"" << isSorted
             << "\",\"False\",\"False\",\"False\",\"False\",\"False\",\"#####0\",\"False\",\"False\"\r\n";
    };
    text << "^1.000.000\r\n";
    writeItem(orderNumber, 0, firstRowColumn, "True");
    writeItem("0", 1, secondRowColumn, "False");
    text << "& " << orderNumber << ",\"Order Number\",\"" << firstOrder + orders << "\",\"<\",\"AND\"\r\n"
         << "*0,0,0,\"1\",\"0\",\"0\",\"0\",\"" << (style.isLandscape ? 0 : 1) << "\",\"" << database.string()
         << "\",\"0\",\"" << style.paper << "\",\"True\"";
    for (const double setting : {style.across + 0.0, style.down + 0.0, style.height, style.width, style.top, style.left,
                                 style.horizontalGap, style.verticalGap})
        text << ",\"" << setting << '"';
    text << ",\"False\"\r\n";
    return text.str();
}

class LabelSheet : public testing::TestWithParam<LabelStyle> {};

TEST_P(LabelSheet, EveryTextStandsAtItsLabelToATenthOfAMillimetre) {
    if (!HasTool("pdftotext")) GTEST_SKIP() << "pdftotext isn't installed";
    const LabelStyle& style = GetParam();
    const ScratchFolder folder;
    ASSERT_EQ(Quillform({"sample", folder.Path().string()}).exitCode, 0);
    WriteFile(folder / "LABELS.REP", LabelLayout(style, folder / "Sample.mdb"));
    for (const char* walk : {"one-pass", "groups"}) {
        const fs::path document = folder / (std::string(walk) + ".pdf");
        const Outcome run = Quillform({"run", folder.File("LABELS.REP"), "-o", document.string(), "--walk", walk});
        ASSERT_EQ(run.exitCode, 0) << run.errors;
        const std::vector<PlacedWord> words = WordsOf(document);
        ASSERT_EQ(words.size(), 2U * orders) << walk;
        for (int label = 0; label < orders; ++label) {
            const int column = label % style.across;
            const int row = label / style.across % style.down;
            const double left = quillform::LabelEdge(column, style.width, style.horizontalGap, style.left);
            // The first row of a label stands one row below the label's upper edge.
            const double top = quillform::LabelEdge(row, style.height, style.verticalGap, style.top) + style.rowHeight;
            const auto expect = [&](const std::string& text, double x, double y) {
                EXPECT_TRUE(quillform::HasWordAt(words, text, label / (style.across * style.down), x, y))
                    << walk << ": no \"" << text << "\" on label " << label << " at " << x << ", " << y << " twips";
            };
            expect(std::to_string(firstOrder + label), left + firstRowColumn * columnTwips, top);
            expect("Ship", left + secondRowColumn * columnTwips, top + style.rowHeight);
            if (HasFailure()) return;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Styles, LabelSheet, testing::ValuesIn(styles),
                         [](const auto& example) { return std::string(example.param.name); });

}  // namespace
}  // namespace endtoend
