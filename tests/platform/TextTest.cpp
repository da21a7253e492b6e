#include <gtest/gtest.h>

#include "platform/Colours.h"
#include "platform/Text.h"

namespace quillform {
namespace {

// "aäb€c" and a byte that is no UTF-8
const std::string kMixed =
    "a\xC3\xA4"
    "b\xE2\x82\xAC"
    "c\xFF";

TEST(Text, TrimTakesBlanksOnly) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\t a\n "), "\t a\n");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(LTrim("  a "), "a ");
    EXPECT_EQ(RTrim("  a "), "  a");
}

TEST(Text, CharactersAreCodePoints) {
    EXPECT_EQ(CountCharacters(kMixed), 6u);
    EXPECT_EQ(LeftCharacters(kMixed, 2), "a\xC3\xA4");
    EXPECT_EQ(LeftCharacters(kMixed, 99), kMixed);
    EXPECT_EQ(RightCharacters(kMixed, 3),
              "\xE2\x82\xAC"
              "c\xFF");
    EXPECT_EQ(RightCharacters(kMixed, 0), "");
    EXPECT_EQ(MidCharacters(kMixed, 2, 3),
              "\xC3\xA4"
              "b\xE2\x82\xAC");
    EXPECT_EQ(MidCharacters(kMixed, 4),
              "\xE2\x82\xAC"
              "c\xFF");
    EXPECT_EQ(MidCharacters(kMixed, 7), "");
    EXPECT_EQ(MidCharacters("abc", 9, 1), "");
    EXPECT_EQ(MidCharacters("abc", 1, 2), "ab");
}

TEST(Text, BrokenUtf8LosesNoByte) {
    for (const std::string text :
         {"\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\x80\xC3"}) {
        EXPECT_EQ(CountCharacters(text), text.size());
        EXPECT_EQ(UpperCase(text), text);
        EXPECT_EQ(LeftCharacters(text, 1).size(), 1u);
    }
}

TEST(Text, CaseMapping) {
    EXPECT_EQ(UpperCase("stra\xC3\x9F"
                        "e \xC3\xA4\xC3\xBF\xC3\xB7"),
              "STRA\xC3\x9F"
              "E \xC3\x84\xC5\xB8\xC3\xB7");
    EXPECT_EQ(LowerCase("\xC3\x96\xC5\xB8 \xC5\xBD"), "\xC3\xB6\xC3\xBF \xC5\xBE");
    EXPECT_EQ(UpperCase("\xCF\x82\xCE\xAC"), "\xCE\xA3\xCE\x86");  // final sigma, alpha with tonos
    EXPECT_EQ(UpperCase("\xD0\xB6\xD1\x91"), "\xD0\x96\xD0\x81");  // Cyrillic
    EXPECT_TRUE(EqualCaseBlind("K\xC3\x84SE", "k\xC3\xA4se"));
    EXPECT_FALSE(EqualCaseBlind("abc", "ab"));
    EXPECT_FALSE(EqualCaseBlind("\xE4", "\xC4"));  // bytes that are no UTF-8 aren't letters
    EXPECT_TRUE(EqualCaseBlind("", ""));
}

TEST(Text, EveryCasePairGoesBothWays) {
    for (char32_t letter = 0x80; letter < 0x2000; ++letter) {
        std::string text;
        AppendCodePoint(letter, text);
        const std::string upper = UpperCase(text);
        const std::string lower = LowerCase(text);
        ASSERT_TRUE(upper == text || lower == text) << std::hex << static_cast<unsigned>(letter);
        ASSERT_EQ(UpperCase(lower), upper) << std::hex << static_cast<unsigned>(letter);
        ASSERT_TRUE(letter == 0x3C2 || LowerCase(upper) == lower) << std::hex << static_cast<unsigned>(letter);
    }
}

TEST(Colours, TableAndItsEnds) {
    EXPECT_EQ(QBColor(0), (Rgb{0, 0, 0}));
    EXPECT_EQ(QBColor(1), (Rgb{0, 0, 128}));
    EXPECT_EQ(QBColor(4), (Rgb{128, 0, 0}));
    EXPECT_EQ(QBColor(7), (Rgb{192, 192, 192}));
    EXPECT_EQ(QBColor(12), (Rgb{255, 0, 0}));
    EXPECT_EQ(QBColor(-1), QBColor(0));
    EXPECT_EQ(QBColor(99), (Rgb{255, 255, 255}));
}

}  // namespace
}  // namespace quillform
