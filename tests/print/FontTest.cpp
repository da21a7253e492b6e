#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "print/PdfTools.h"

namespace quillform::print {
namespace {

bool HasFamily(const std::vector<std::string>& fonts, std::string_view name) {
    return std::find(fonts.begin(), fonts.end(), name) != fonts.end();
}

std::vector<std::string> PresentFonts() {
    const ScratchFolder folder;
    return MakePdfTarget(folder / "fonts.pdf", {})->Fonts();
}

#define SKIP_WITHOUT_FONT(name) \
    if (!HasFamily(PresentFonts(), name)) GTEST_SKIP() << "the font " << (name) << " isn't installed"

TEST(FontTest, OriginalsCountAsPresentWhereTheirTwinsAre) {
    SKIP_WITHOUT_FONT("Liberation Sans");
    const auto fonts = PresentFonts();
    for (const char* name : {"Arial", "Helvetica", "Times New Roman", "Courier New"})
        EXPECT_TRUE(HasFamily(fonts, name)) << name;
    EXPECT_FALSE(HasFamily(fonts, "No Such Font"));
    EXPECT_TRUE(std::is_sorted(fonts.begin(), fonts.end()));
}

// Advances in thousandths of the em that Arial, Times New Roman and Courier New are known for.
TEST(FontTest, TwinsHaveTheAdvancesOfTheOriginals) {
    SKIP_WITHOUT_FONT("Liberation Sans");
    struct Case {
        const char* font;
        bool bold;
        const char* text;
        double em;
    };
    const Case cases[] = {
        {"Arial", false, "W", 0.944}, {"Arial", false, "Hello", 2.278},   {"arial", true, "W", 0.944},
        {"Arial", true, "a", 0.556},  {"Helvetica", false, "0", 0.556},   {"Times New Roman", false, "W", 0.944},
        {"Times", true, "a", 0.5},    {"Courier New", false, "iW.", 1.8}, {"MS Sans Serif", false, "0", 0.556}};
    const auto measure = MakeTextMeasure();
    for (const Case& c : cases) {
        const FontId font = measure->Font({c.font, 100, c.bold});
        EXPECT_NEAR(measure->TextWidth(font, c.text), c.em * 2000, 2) << c.font << ' ' << c.text;
    }
}

TEST(FontTest, WidthIsTheSumOfItsCharactersAtEverySize) {
    const auto measure = MakeTextMeasure();
    for (const double size : {6.0, 8.25, 9.7, 10.0, 72.0}) {
        const FontId font = measure->Font({"Arial", size});
        double sum = 0;
        for (const char* c : {"A", "V", "f", "i", " ", "\xC3\xA9"}) sum += measure->TextWidth(font, c);
        EXPECT_NEAR(measure->TextWidth(font, "AVfi \xC3\xA9"), sum, 1e-6) << "no kerning, no ligatures at " << size;
        EXPECT_NEAR(measure->TextHeight(font) / size, measure->TextHeight(measure->Font({"Arial", 10})) / 10, 1e-9);
    }
}

TEST(FontTest, SizesThatCannotBeAreTakenAsUsableOnes) {
    const auto measure = MakeTextMeasure();
    const double usual = measure->TextHeight(measure->Font({"Arial", 10}));
    for (const double size :
         {0.0, -5.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        EXPECT_DOUBLE_EQ(measure->TextHeight(measure->Font({"Arial", size})), usual);
    EXPECT_LT(measure->TextHeight(measure->Font({"Arial", 1e300})), 100000);
}

TEST(FontTest, ControlCharactersAreAsWideAsBlanks) {
    const auto measure = MakeTextMeasure();
    const FontId font = measure->Font({"Arial", 10});
    EXPECT_DOUBLE_EQ(measure->TextWidth(font, std::string_view("a\0\n\t\x7F", 5)), measure->TextWidth(font, "a    "));
    EXPECT_DOUBLE_EQ(measure->TextWidth(font,
                                        "a\xE2\x80\x8B"
                                        "b"),
                     measure->TextWidth(font, "ab"));
}

TEST(FontTest, SameSpecIsTheSameFont) {
    const auto measure = MakeTextMeasure();
    const FontId font = measure->Font({"Arial", 10});
    EXPECT_EQ(measure->Font({"Arial", 10}), font);
    EXPECT_NE(measure->Font({"Arial", 10, true}), font);
    EXPECT_NE(measure->Font({"Arial", 11}), font);
}

TEST(FontTest, ReplacementsAreSaidOnceEach) {
    const ScratchFolder folder;
    const auto target = MakePdfTarget(folder / "fonts.pdf", {});
    EXPECT_TRUE(target->FontSubstitutions().empty());
    for (const bool bold : {false, true}) target->Font({"No Such Font", 10, bold});
    target->Font({"No Such Font", 12});
    ASSERT_EQ(target->FontSubstitutions().size(), 1U);
    EXPECT_EQ(target->FontSubstitutions().front().find("\"No Such Font\" is drawn with \""), 0U);
}

}  // namespace
}  // namespace quillform::print
