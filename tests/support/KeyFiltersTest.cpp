#include <gtest/gtest.h>

#include "support/KeyFilters.h"

namespace quillform {
namespace {

TEST(KeyFilters, NumberBoxesTakeDigitsAndBackspace) {
    struct Case {
        int key;
        FilteredKey expected;
    };
    const Case cases[] = {{'0', {'0', false}}, {'9', {'9', false}}, {8, {8, false}},  {13, {0, false}},
                          {' ', {0, false}},   {'/', {0, true}},    {':', {0, true}}, {'a', {0, true}},
                          {'-', {0, true}},    {9, {0, true}},      {0xB2, {0, true}}};
    for (const Case& example : cases) EXPECT_EQ(NumberKeyFilter(example.key), example.expected) << example.key;
}

TEST(KeyFilters, OneLineBoxesDropEnterAlone) {
    for (int key = 0; key < 256; ++key) EXPECT_EQ(NoEnterKey(key), key == 13 ? 0 : key);
}

}  // namespace
}  // namespace quillform
