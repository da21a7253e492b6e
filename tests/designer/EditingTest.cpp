#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "designer/ItemEditing.h"
#include "designer/ItemFormatting.h"
#include "designer/SurfaceScene.h"

namespace quillform::designer {
namespace {

using testing::Scene;

TEST(Drop, SnapsToWholeCells) {
    struct Case {
        double x;
        float left;
    };
    // The picture is held at its corner.
    const Case cases[] = {{3, 3}, {3.4, 3}, {3.5, 3}, {3.51, 4}, {3.6, 4}, {0, 0}, {-0.4, 0}, {-0.5, -1}, {-3.6, -4}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.x);
        Scene scene;
        scene.Add(20, 5, 10);
        ItemEditing editing(scene.surface);
        ASSERT_EQ(editing.Pic_MouseDown(1, MouseButton::Left, 0, 0), PressResult::Drag);
        editing.Picture2_DragDrop(1, c.x, c.x);
        EXPECT_EQ(scene.layout.Fields.Item(1).Left, c.left);
        EXPECT_EQ(scene.layout.Fields.Item(1).Top, c.left);
        EXPECT_EQ(scene.Pic(1).box, (Box{c.left, c.left, 10, 1}));
    }
}

TEST(Drop, TakesGrabPointAndScrollValuesIntoAccount) {
    Scene scene;
    scene.Add(40, 30, 10);
    scene.surface.ScrollTo(10, 20);
    ItemEditing editing(scene.surface);
    editing.Pic_MouseDown(1, MouseButton::Left, 2.5, 0.75);
    editing.Picture2_DragDrop(1, 7.5, 3.75);
    EXPECT_EQ(scene.Pic(1).box.left, 5);
    EXPECT_EQ(scene.layout.Fields.Item(1).Left, 15);
    EXPECT_EQ(scene.layout.Fields.Item(1).Top, 23);
}

TEST(Drop, OnAnotherPictureMovesTheDraggedOneAlone) {
    Scene scene;
    scene.Add(0, 0, 10);
    scene.Add(20, 4, 10);
    ItemEditing editing(scene.surface);
    editing.Pic_MouseDown(1, MouseButton::Left, 3, 0.5);
    editing.Pic_DragDrop(2, 1, 5, 0.5);
    EXPECT_EQ(scene.layout.Fields.Item(1).Left, 22);
    EXPECT_EQ(scene.layout.Fields.Item(1).Top, 4);
    EXPECT_EQ(scene.layout.Fields.Item(2).Left, 20);
    EXPECT_EQ(scene.surface.intSelected, 1);
    // On itself it is a short move.
    editing.Pic_MouseDown(1, MouseButton::Left, 3, 0.5);
    editing.Pic_DragDrop(1, 1, 4, 0.5);
    EXPECT_EQ(scene.layout.Fields.Item(1).Left, 23);
}

TEST(Pointer, DecidesWhatAPressMeans) {
    struct Case {
        double x;  // in a picture 10 cells wide
        MouseButton button;
        int code;
        PressResult result;
    };
    const Case cases[] = {
        {8.9, MouseButton::Left, 1, PressResult::Drag},      {9, MouseButton::Left, 1, PressResult::Drag},
        {9.1, MouseButton::Left, 1, PressResult::Sizing},    {9.1, MouseButton::Right, 1, PressResult::Nothing},
        {5, MouseButton::Right, 1, PressResult::Options},    {5, MouseButton::Middle, 899, PressResult::Options},
        {5, MouseButton::Right, 9000, PressResult::Options}, {5, MouseButton::Right, 9001, PressResult::Nothing},
        {5, MouseButton::Right, 0, PressResult::Nothing},    {5, MouseButton::Right, -1, PressResult::Nothing},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.x) + " code " + std::to_string(c.code));
        Scene scene;
        scene.Add(0, 5, 10);
        scene.Add(0, 0, 10, "Text", c.code);
        ItemEditing editing(scene.surface);
        editing.Pic_MouseMove(2, MouseButton::None, c.x);
        EXPECT_EQ(editing.Pic_MouseDown(2, c.button, c.x, 0.5), c.result);
        EXPECT_EQ(scene.surface.intSelected, 2);
        EXPECT_EQ(scene.layout.intOptionItem, c.result == PressResult::Options ? 2 : 0);
    }
}

TEST(Pointer, StaysAnArrowWhileTheLeftButtonIsDown) {
    Scene scene;
    scene.Add(0, 0, 10);
    ItemEditing editing(scene.surface);
    editing.Pic_MouseMove(1, MouseButton::None, 9.5);
    EXPECT_EQ(editing.MousePointer(), Pointer::SizeWE);
    editing.Pic_MouseMove(1, MouseButton::Left, 4);
    EXPECT_EQ(editing.MousePointer(), Pointer::SizeWE);
    editing.Pic_MouseMove(1, MouseButton::None, 4);
    EXPECT_EQ(editing.MousePointer(), Pointer::Default);
    editing.Pic_MouseMove(1, MouseButton::None, 9.5);
    editing.Picture2_MouseMove();
    EXPECT_EQ(editing.MousePointer(), Pointer::Default);
}

TEST(Sizing, TakesTheWholePartAndLosesNoItem) {
    struct Case {
        double x;
        int length;
    };
    const Case cases[] = {{14.99, 14}, {15, 15}, {9.5, 9}, {1.2, 1}, {0.4, 1}, {-7, 1}, {1e9, 32767}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.x);
        Scene scene;
        scene.Add(0, 0, 10);
        ItemEditing editing(scene.surface);
        editing.Pic_MouseMove(1, MouseButton::None, 9.5);
        editing.Pic_MouseDown(1, MouseButton::Left, 9.5, 0.5);
        editing.Pic_MouseUp(1, c.x);
        EXPECT_EQ(scene.layout.Fields.Item(1).Length, c.length);
        EXPECT_EQ(scene.Pic(1).box.width, c.length);
        EXPECT_EQ(scene.layout.pictures.at(1).columns, static_cast<float>(c.length));  // what a run reads
    }
}

TEST(Sizing, NeedsTheLeftButton) {
    Scene scene;
    scene.Add(0, 0, 10);
    ItemEditing editing(scene.surface);
    editing.Pic_MouseMove(1, MouseButton::None, 9.5);
    editing.Pic_MouseDown(1, MouseButton::Right, 9.5, 0.5);
    editing.Pic_MouseUp(1, 9.5);
    EXPECT_EQ(scene.layout.Fields.Item(1).Length, 10);
}

TEST(Delete, RemovesTheSelectedItemOnce) {
    Scene scene;
    scene.Add(0, 0, 10);
    scene.Add(0, 5, 10);
    ItemEditing editing(scene.surface);
    EXPECT_FALSE(editing.DeleteSelected());
    editing.Pic_MouseDown(1, MouseButton::Left, 1, 0);
    EXPECT_TRUE(editing.DeleteSelected());
    EXPECT_FALSE(editing.DeleteSelected());
    EXPECT_EQ(scene.layout.Fields.Count(), 1);
    EXPECT_EQ(scene.surface.Pic().Find(1), nullptr);
    EXPECT_EQ(scene.surface.intSelected, 1);
    EXPECT_EQ(editing.Pic_MouseDown(1, MouseButton::Left, 1, 0), PressResult::Nothing);
}

TEST(Keys, MoveAndWidenAndStayOnThePage) {
    Scene scene;
    scene.Add(-6, 1, 10);
    scene.surface.ScrollTo(5, 5);
    ItemEditing editing(scene.surface);
    editing.Select(1);
    editing.MoveSelected(1, 0);
    EXPECT_EQ(scene.layout.Fields.Item(1).Left, 0);
    editing.MoveSelected(3, 2);
    EXPECT_EQ(scene.layout.Fields.Item(1).Left, 3);
    EXPECT_EQ(scene.layout.Fields.Item(1).Top, 3);
    editing.MoveSelected(0, -9);
    EXPECT_EQ(scene.layout.Fields.Item(1).Top, 0);
    editing.WidenSelected(2);
    EXPECT_EQ(scene.layout.Fields.Item(1).Length, 12);
    editing.WidenSelected(-99);
    EXPECT_EQ(scene.layout.Fields.Item(1).Length, 1);
}

// Whatever mouse and keys do, pictures and items agree, and so do the boxes that a run reads.
TEST(Editing, KeepsPicturesAndItemsTogether) {
    Scene scene;
    ItemEditing editing(scene.surface);
    ItemFormatting formatting(scene.surface);
    std::minstd_rand random(7);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE(step);
        const int index = 1 + below(12);
        switch (below(8)) {
            case 0:
                if (scene.layout.Fields.Count() < 10)
                    scene.Add(static_cast<float>(below(100)), static_cast<float>(below(60)), below(30));
                break;
            case 1:
                editing.Pic_MouseMove(index, MouseButton::None, below(30));
                if (editing.Pic_MouseDown(index, MouseButton::Left, below(9), 0.5) == PressResult::Drag)
                    editing.Picture2_DragDrop(index, below(90) - 10 + 0.25 * below(4), below(25) - 3);
                else
                    editing.Pic_MouseUp(index, below(60) - 20 + 0.25 * below(4));
                break;
            case 2:
                scene.surface.ScrollTo(below(60), below(60));
                break;
            case 3:
                formatting.Toolbar4_ButtonClick(below(2) == 0);
                break;
            case 4:
                formatting.ApplyItemFont({.name = "Arial", .size = 5.0 + below(80)});
                break;
            case 5:
                editing.MoveSelected(below(7) - 3, below(7) - 3);
                break;
            case 6:
                editing.WidenSelected(below(21) - 10);
                break;
            case 7:
                if (below(4) == 0) editing.DeleteSelected();
                break;
        }
        ASSERT_EQ(scene.surface.Pic().FromBelow().size(), static_cast<std::size_t>(scene.layout.Fields.Count()));
        for (const clssFields& item : scene.layout.Fields) {
            const Picture* const picture = scene.surface.Pic().Find(item.Index);
            ASSERT_NE(picture, nullptr);
            ASSERT_EQ(picture->box.left + scene.surface.Geometry().HScroll1.Value, item.Left);
            ASSERT_EQ(picture->box.top + scene.surface.Geometry().VScroll1.Value, item.Top);
            ASSERT_EQ(item.Left, std::floor(item.Left));
            const ItemSize& size = scene.layout.pictures.at(item.Index);
            ASSERT_EQ(picture->box.width, size.columns);
            ASSERT_EQ(picture->box.height, size.rows);
        }
    }
}

TEST(Keys, WalkTheItemsRowByRow) {
    Scene scene;
    scene.Add(5, 2, 10);
    scene.Add(20, 0, 10);
    scene.Add(0, 0, 10);
    ItemEditing editing(scene.surface);
    std::vector<int> order;
    for (auto next = editing.Neighbour(true); next; next = editing.Neighbour(true)) {
        editing.Select(*next);
        order.push_back(*next);
    }
    EXPECT_EQ(order, (std::vector<int>{3, 2, 1}));
    EXPECT_EQ(editing.Neighbour(false), 2);
}

}  // namespace
}  // namespace quillform::designer
