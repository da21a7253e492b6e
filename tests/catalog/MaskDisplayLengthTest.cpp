#include <gtest/gtest.h>

#include "catalog/MaskDisplayLength.h"
#include "platform/RunTimeError.h"

namespace quillform {
namespace {

struct Case {
    std::string mask;
    int expected;
};

TEST(MaskDisplayLength, FollowsTheCorrections) {
    const Case cases[] = {
        {"", 0},
        {" ", 1},
        {"###,###,##0", 11},
        {"###,###,##0.00", 14},
        {"mm/dd/yyyy", 10},
        {"mmm dd", 6},
        {"mmmm dd, yyyy", 18},
        {"mmmm mmmm", 14},  // counted once
        {"MMMM", 4},        // case counts
        {"dddd", 9},
        {"ddddd", 15},
        {"dddddd", 16},
        {"dddd ddddd", 20},
        {"hh:mm AM/PM", 8},
        {"hh:mm am/pm", 8},
        {"hh:mm Am/Pm", 11},
        {"hh:mm A/P", 7},
        {"hh:mm a/p", 7},
        {"hh:mm AMPM", 8},
        {"ttttt", 8},
        {"tttt", 4},
        {R"(00\-00)", 5},
        {R"(\\0)", 1},  // every backslash counts, also one that stands for itself
        {"0.00 \xE2\x82\xAC", 6},
    };
    for (const Case& example : cases) EXPECT_EQ(MaskDisplayLength(example.mask), example.expected) << example.mask;
}

TEST(MaskDisplayLength, RefusesMasksBeyondSixteenBits) {
    EXPECT_EQ(MaskDisplayLength(std::string(32767, '#')), 32767);
    EXPECT_THROW(MaskDisplayLength(std::string(32768, '#')), RunTimeError);
}

}  // namespace
}  // namespace quillform
