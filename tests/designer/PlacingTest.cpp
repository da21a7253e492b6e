#include <gtest/gtest.h>

#include <vector>

#include "designer/ItemPlacing.h"
#include "designer/SurfaceScene.h"

namespace quillform::designer {
namespace {

using testing::Scene;

std::vector<std::int16_t> Indexes(const Layout& layout) {
    std::vector<std::int16_t> indexes;
    for (const clssFields& item : layout.Fields) indexes.push_back(item.Index);
    return indexes;
}

TEST(LowestFreeIndex, FillsGapsFirst) {
    Scene scene;
    for (int i = 0; i < 4; ++i) scene.Add(0, 0, 1);
    EXPECT_EQ(scene.surface.LowestFreeIndex(), 5);
    scene.surface.RemoveItem(2);
    EXPECT_EQ(scene.surface.LowestFreeIndex(), 2);
    collFields others;
    others.Add({}).Index = 2;
    EXPECT_EQ(scene.surface.LowestFreeIndex(&others), 5);
}

TEST(AvoidOverlap, MovesRightAndWrapsByItsRule) {
    struct Case {
        const char* name;
        Box added;  // over items at column 0 (10 wide), 30 (20 wide) and 80 (15 wide), all in row 2 and two rows high
        Box data;   // where a data field ends up
        int wraps;
        Box text;  // where a text ends up
    };
    const Case cases[] = {
        {"free", {12, 2, 10, 1}, {12, 2, 10, 1}, 0, {12, 2, 10, 1}},
        {"equal edges", {0, 2, 10, 2}, {0, 2, 10, 2}, 0, {11, 2, 10, 2}},
        {"lower edge inside", {4, 1, 10, 2}, {11, 1, 10, 2}, 0, {11, 1, 10, 2}},
        {"touches above", {4, 1, 10, 1}, {4, 1, 10, 1}, 0, {11, 1, 10, 1}},
        {"pushed past two", {4, 2.5, 25, 1}, {51, 2.5, 25, 1}, 0, {51, 2.5, 25, 1}},
        {"pushed off the page", {81, 2.5, 10, 0.5}, {0, 3.5, 10, 0.5}, 1, {11, 3.5, 10, 0.5}},
    };
    for (const Case& c : cases) {
        for (const bool isText : {false, true}) {
            SCOPED_TRACE(std::string(c.name) + (isText ? " text" : " data"));
            Scene scene;
            const Box there[] = {{0, 2, 10, 2}, {30, 2, 20, 2}, {80, 2, 15, 2}};
            for (const Box& box : there) {
                scene.Add(static_cast<float>(box.left), static_cast<float>(box.top), 1);
                scene.surface.SizePicture(scene.layout.Fields.Count(), box.width, box.height);
            }
            scene.Add(static_cast<float>(c.added.left), static_cast<float>(c.added.top), 1);
            scene.surface.SizePicture(4, c.added.width, c.added.height);
            int wraps = 0;
            AvoidOverlap(scene.surface, 4, Indexes(scene.layout), isText ? textOverlap : dataFieldOverlap,
                         [&] { ++wraps; });
            EXPECT_EQ(scene.Pic(4).box, isText ? c.text : c.data);
            EXPECT_EQ(wraps, c.wraps);
        }
    }
}

}  // namespace
}  // namespace quillform::designer
