#include <gtest/gtest.h>

#include <string>

#include "data/columns/LikePattern.h"

namespace quillform::data {
namespace {

TEST(LikePattern, Matches) {
    struct Case {
        std::string text;
        const char* pattern;
        bool matches;
    };
    const Case cases[] = {
        {"Berlin", "b*", true},
        {"Berlin", "*LIN", true},
        {"Berlin", "B?rlin", true},
        {"Berlin", "Ber", false},
        {"", "*", true},
        {"", "?", false},
        {"", "", true},
        {"a1b", "a#b", true},
        {"axb", "a#b", false},
        {"B%n", "B%n", true},
        {"Bean", "B%n", false},
        {"a_c", "a_c", true},
        {"abc", "a_c", false},
        {"b", "[a-c]", true},
        {"d", "[a-c]", false},
        {"d", "[!a-c]", true},
        {"*", "[*]", true},
        {"x", "[*]", false},
        {"?", "[?]", true},
        {"[a", "[[]a", true},
        {"aXbXc", "*x*x*", true},
        {"aXbc", "*x*x*", false},
        {"Größe", "GRÖSSE", false},
        {"Größe", "gr?ße", true},
        {"a-b", "a[-]b", true},
        {"open [", "open [", true},
        {"abcabd", "*abd", true},
    };
    for (const Case& c : cases)
        EXPECT_EQ(MatchesPattern(c.text, c.pattern), c.matches) << c.text << " like " << c.pattern;
}

TEST(LikePattern, ManyStarsTakeNoForever) {
    const std::string text(3000, 'a');
    std::string pattern;
    for (int i = 0; i < 50; ++i) pattern += "*a";
    EXPECT_FALSE(MatchesPattern(text, pattern + "*b"));
}

}  // namespace
}  // namespace quillform::data
