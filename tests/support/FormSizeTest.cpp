#include <gtest/gtest.h>

#include "support/FormSize.h"

namespace quillform {

std::ostream& operator<<(std::ostream& out, const FormPlace& place) {
    return out << place.left << "," << place.top << " " << place.width << "x" << place.height;
}

namespace {

constexpr float none = FormWish::notGiven;
constexpr FormPlace form{100, 200, 4000, 3000};
constexpr FormSize design{12288, 9216};
constexpr FormSize twice{24576, 18432};  // ratios of one half

struct Case {
    const char* what;
    FormSize screen;
    FormWish wish;
    FormPlace expected;
    const char* tag;
};

TEST(FormSize, PlacesForms) {
    const Case cases[] = {
        {"as every form asks", design, {}, {4144, 3108, 4000, 3000}, "[SIZE]:04000;03000"},
        {"middle of another screen", twice, {}, {10288, 7716, 4000, 3000}, "[SIZE]:04000;03000"},
        {"given place is scaled",
         twice,
         {600, 500, none, none, true, false},
         {250, 300, 4000, 3000},
         "[SIZE]:04000;03000"},
        {"given place loses against the middle",
         twice,
         {600, 500, none, none, true, true},
         {10288, 7716, 4000, 3000},
         "[SIZE]:04000;03000"},
        {"given place wins where nothing is scaled",
         twice,
         {600, 500, none, none, false, true},
         {500, 600, 4000, 3000},
         "[SIZE]:04000;03000"},
        {"given size is scaled, the base isn't",
         twice,
         {none, none, 2000, 1000, true, false},
         {100, 200, 1000, 500},
         "[SIZE]:02000;01000"},
        {"the middle is that of the former size",
         design,
         {none, none, 2000, 1000, true, true},
         {4144, 3108, 2000, 1000},
         "[SIZE]:02000;01000"},
        {"zero is given", design, {0, 0, none, none, true, false}, {0, 0, 4000, 3000}, "[SIZE]:04000;03000"},
        {"nothing at all", twice, {none, none, none, none, false, false}, form, "[SIZE]:04000;03000"},
    };
    for (const Case& example : cases) {
        const SizedForm sized = SizeForm(form, {}, example.screen, example.wish);
        EXPECT_EQ(sized.place, example.expected) << example.what;
        EXPECT_EQ(sized.tag, example.tag) << example.what;
    }
}

TEST(FormSize, RatiosAreOneOnTheDesignsScreen) {
    EXPECT_EQ(SizeForm(form, {}, design).horizontal, 1);
    EXPECT_EQ(SizeForm(form, {}, design).vertical, 1);
    EXPECT_EQ(SizeForm(form, {}, {6144, 18432}).horizontal, 2);
    EXPECT_EQ(SizeForm(form, {}, {6144, 18432}).vertical, 0.5F);
}

TEST(FormSize, TagKeepsTheBaseSize) {
    struct Tag {
        const char* text;
        FormSize base;
    };
    const Tag tags[] = {{"[SIZE]:01234;00567", {1234, 567}},
                        {"before[SIZE]:01234;00567behind", {1234, 567}},
                        {"", {4000, 3000}},
                        {"something else", {4000, 3000}},
                        {"[SIZE]:01234", {1234, 0}},
                        {"[SIZE]:", {0, 0}}};
    for (const Tag& tag : tags) EXPECT_EQ(BaseSizeOf(tag.text, {4000, 3000}), tag.base) << tag.text;

    const SizedForm first = SizeForm(form, {}, design);
    EXPECT_EQ(SizeForm({0, 0, 1, 1}, first.tag, design).base, (FormSize{4000, 3000}));
}

}  // namespace
}  // namespace quillform
