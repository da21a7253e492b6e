#include <gtest/gtest.h>

#include "designer/ItemFormatting.h"
#include "designer/SurfaceScene.h"

namespace quillform::designer {
namespace {

using testing::Scene;

TEST(Colors, GoToTheChosenTarget) {
    Scene scene;
    scene.Add(0, 0, 10);
    ItemFormatting formatting(scene.surface);
    formatting.ColorPic_Click(14, ColorTarget::Background);  // nothing is selected yet
    EXPECT_EQ(scene.layout.Fields.Item(1).FontBackColor, 15);
    scene.surface.intSelected = 1;
    formatting.ColorPic_Click(14, ColorTarget::Background);
    EXPECT_EQ(scene.layout.Fields.Item(1).FontBackColor, 14);
    EXPECT_EQ(scene.layout.Fields.Item(1).FontForeColor, 0);
    formatting.ColorPic_Click(9, ColorTarget::Foreground);
    EXPECT_EQ(scene.Pic(1).backColor, 14);
    EXPECT_EQ(scene.Pic(1).foreColor, 9);
}

TEST(Alignment, DrawsTheTextWithItsBlanksUntilTheNextCommand) {
    Scene scene;
    scene.Add(0, 0, 10, " abc ");
    scene.surface.intSelected = 1;
    ItemFormatting formatting(scene.surface);
    formatting.Toolbar2_ButtonClick(Alignment::Center);
    EXPECT_EQ(scene.layout.Fields.Item(1).FontAllignment, "C");
    EXPECT_EQ(scene.Pic(1).text, " abc ");
    EXPECT_EQ(scene.Pic(1).CurrentX, 3.5);
    formatting.Toolbar2_ButtonClick(Alignment::Right);
    EXPECT_EQ(scene.Pic(1).CurrentX, 5);
    formatting.ColorPic_Click(1, ColorTarget::Foreground);
    EXPECT_EQ(scene.Pic(1).text, "abc");
}

TEST(Styles, KeepThePictureSize) {
    Scene scene;
    scene.Add(0, 0, 4, "abcd").FontAllignment = "C";
    scene.surface.SizePicture(1, 8, 1);
    scene.surface.intSelected = 1;
    ItemFormatting formatting(scene.surface);
    formatting.Toolbar3_ButtonClick(FontStyle::Bold, true);
    formatting.Toolbar3_ButtonClick(FontStyle::Italic, true);
    formatting.Toolbar3_ButtonClick(FontStyle::Underline, true);
    const clssFields& item = scene.layout.Fields.Item(1);
    EXPECT_TRUE(item.FontBold && item.FontItalic && item.FontUnderline);
    EXPECT_EQ(scene.Pic(1).box.width, 8);
    EXPECT_NEAR(scene.Pic(1).CurrentX, (8 - 4.8) / 2, 1e-9);
    formatting.Toolbar3_ButtonClick(FontStyle::Bold, false);
    EXPECT_FALSE(item.FontBold);
    EXPECT_TRUE(scene.Pic(1).font.italic);
}

TEST(ApplyItemFont, FitsTheFontToTheGrid) {
    struct Case {
        double points;
        double stored;
        double width;
        double height;
    };
    const Case cases[] = {{10, 10, 10, 1}, {8, 8, 8, 1},        {10.5, 10.5, 11, 2}, {20, 20, 20, 2},
                          {21, 20, 20, 2}, {36.5, 19.5, 20, 2}, {300, 20, 20, 2}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.points);
        Scene scene;
        clssFields& item = scene.Add(3, 4, 10);
        item.FontUnderline = true;
        scene.surface.intSelected = 1;
        EXPECT_TRUE(ItemFormatting(scene.surface).ApplyItemFont({.name = " Arial ", .size = c.points}));
        EXPECT_EQ(item.FontName, "Arial");
        EXPECT_EQ(item.FontSize, c.stored);
        EXPECT_EQ(scene.Pic(1).box, (Box{3, 4, c.width, c.height}));
        EXPECT_EQ(scene.Pic(1).font, (FontSpec{.name = "Arial", .size = c.stored, .underline = true}));
        EXPECT_EQ(item.Length, 10);
    }
}

TEST(ApplyItemFont, DoesNothingWithoutAnItem) {
    Scene scene;
    scene.Add(0, 0, 10);
    ItemFormatting formatting(scene.surface);
    EXPECT_FALSE(formatting.ApplyItemFont({.name = "Arial", .size = 12}));
    scene.surface.intSelected = 1;
    scene.surface.RemoveItem(1);
    EXPECT_FALSE(formatting.ApplyItemFont({.name = "Arial", .size = 12}));
}

}  // namespace
}  // namespace quillform::designer
