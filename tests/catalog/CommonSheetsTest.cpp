#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "catalog/CommonSheets.h"
#include "platform/Text.h"

namespace quillform {
namespace {

constexpr double letterWidth = 8.5;
constexpr double letterHeight = 11;
constexpr double exact = 1e-5;  // what a Single leaves of a third of an inch

double Extent(double margin, int count, double size, double gap) { return margin + count * size + (count - 1) * gap; }

/// "2 5/8" as a number.
double Inches(const std::string& text) {
    double inches = 0;
    std::istringstream parts(text);
    for (std::string part; parts >> part;) {
        const std::size_t slash = part.find('/');
        inches += slash == std::string::npos ? std::stod(part) : std::stod(part) / std::stod(part.substr(slash + 1));
    }
    return inches;
}

TEST(CommonSheets, ComeOutExactlyOnTheirPaper) {
    for (const CommonSheet& sheet : commonSheets) {
        SCOPED_TRACE(sheet.description);
        for (const float least : {sheet.topMargin, sheet.leftMargin, sheet.horizontalGap, sheet.verticalGap})
            EXPECT_GE(least, 0);
        EXPECT_NEAR(Extent(sheet.leftMargin, sheet.across, sheet.width, sheet.horizontalGap),
                    letterWidth - static_cast<double>(sheet.leftMargin), exact);
        EXPECT_NEAR(Extent(sheet.topMargin, sheet.down, sheet.height, sheet.verticalGap),
                    letterHeight - static_cast<double>(sheet.topMargin), exact);
    }
}

TEST(CommonSheets, AreDescribedByTheirOwnMeasures) {
    std::set<std::string_view> descriptions;
    for (const CommonSheet& sheet : commonSheets) {
        SCOPED_TRACE(sheet.description);
        EXPECT_LE(CountCharacters(sheet.description), 50U);
        EXPECT_TRUE(descriptions.insert(sheet.description).second);
        const std::string text(sheet.description);
        const std::size_t count = text.find(", ") + 2;
        EXPECT_EQ(std::stoi(text.substr(count)), sheet.across * sheet.down);
        const std::size_t height = text.find(", ", count) + 2;
        const std::size_t width = text.find(" x ", height) + 3;
        EXPECT_NEAR(Inches(text.substr(height, width - 3 - height)), static_cast<double>(sheet.height), exact);
        EXPECT_NEAR(Inches(text.substr(width, text.find(" in.", width) - width)), static_cast<double>(sheet.width),
                    exact);
    }
}

}  // namespace
}  // namespace quillform
