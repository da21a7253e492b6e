#include <gtest/gtest.h>

#include "designer/ItemFormatting.h"
#include "designer/SurfaceScene.h"

namespace quillform::designer {
namespace {

using testing::Scene;

TEST(SetPageSize, GivesViewportAndScrollRangesOfEachPaper) {
    struct Case {
        int paper;
        int orientation;
        double width;
        double scaleWidth;
        int columns;
        int rows;
    };
    const Case cases[] = {
        {1, 1, 76, 75.5, 26, 46},   {1, 0, 76, 75.5, 56, 31},  {2, 1, 76, 75.5, 26, 46},  {3, 1, 76, 75.5, 56, 82},
        {3, 0, 76, 75.5, 128, 46},  {4, 1, 76, 75.5, 128, 46}, {5, 1, 76, 75.5, 26, 64},  {6, 1, 66, 65.5, 0, 31},
        {6, 0, 76, 75.5, 26, 13},   {7, 1, 76, 75.5, 14, 43},  {16, 1, 76, 75.5, 44, 64}, {19, 1, 46, 45.5, 0, 33},
        {20, 1, 49, 48.5, 0, 37},   {20, 0, 76, 75.5, 38, 4},  {21, 1, 54, 53.5, 0, 42},  {22, 1, 54, 53.5, 0, 46},
        {23, 1, 60, 59.5, 0, 49},   {37, 1, 46, 45.5, 0, 25},  {38, 1, 43, 42.5, 0, 19},  {38, 0, 76, 75.5, 2, 1},
        {39, 1, 76, 75.5, 102, 46}, {40, 1, 76, 75.5, 26, 52}, {41, 1, 76, 75.5, 26, 58},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.paper) + (c.orientation == 0 ? " landscape" : " portrait"));
        SurfaceGeometry surface;
        ReportSettings settings;
        settings.intPaperSize = static_cast<std::int16_t>(c.paper);
        settings.intOrientation = static_cast<std::int16_t>(c.orientation);
        surface.SetPageSize(settings);
        EXPECT_EQ(surface.Picture2.box, (Box{1, 3, c.width, 19.75}));
        EXPECT_EQ(surface.Picture2.ScaleWidth, c.scaleWidth);
        EXPECT_EQ(surface.Picture2.ScaleHeight, 20);
        EXPECT_EQ(surface.HScroll1.Max, c.columns);
        EXPECT_EQ(surface.VScroll1.Max, c.rows);
        EXPECT_EQ(surface.HScroll1.box.width, c.width);
        EXPECT_EQ(surface.HScroll1.box.top, 22.75 + 0.1);
        EXPECT_EQ(surface.VScroll1.box.left, c.width + 1 + 0.1);
        EXPECT_EQ(surface.VScroll1.box.height, 19.75);
    }
}

TEST(SetPageSize, GivesTheSurfaceOfOneLabel) {
    struct Case {
        float height;
        float width;
        Box viewport;
        double scaleWidth;
        double scaleHeight;
        int columns;
        int rows;
    };
    const Case cases[] = {
        {2, 4, {1, 3, 48, 12}, 47.5, 11.75, 0, 0},       {1, 2.63F, {1, 3, 31, 6}, 30.5, 5.75, 0, 0},
        {11, 8.5F, {1, 3, 76, 19.75}, 75.5, 20, 26, 46}, {3.6F, 6.4F, {1, 3, 76, 19.75}, 75.5, 20, 1, 2},
        {0, 0, {1, 3, 1, 1}, 0.5, 0.75, 0, 0},           {1e30F, 1e30F, {1, 3, 76, 19.75}, 75.5, 20, 32767, 32767},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.height) + " by " + std::to_string(c.width));
        SurfaceGeometry surface;
        ReportSettings settings;
        settings.boolLabels = true;
        settings.sngLabelHeight = c.height;
        settings.sngLabelWidth = c.width;
        surface.SetPageSize(settings);
        EXPECT_EQ(surface.Picture2.box, c.viewport);
        EXPECT_EQ(surface.Picture2.ScaleWidth, c.scaleWidth);
        EXPECT_EQ(surface.Picture2.ScaleHeight, c.scaleHeight);
        EXPECT_EQ(surface.HScroll1.Max, c.columns);
        EXPECT_EQ(surface.VScroll1.Max, c.rows);
    }
}

TEST(SetPageSize, KeepsTheRangesOfAPaperThatIsNotKnown) {
    SurfaceGeometry surface;
    ReportSettings settings;
    settings.intPaperSize = 6;
    surface.SetPageSize(settings);
    settings.intPaperSize = 12;
    surface.SetPageSize(settings);
    EXPECT_EQ(surface.Picture2.box.width, 76);
    EXPECT_EQ(surface.HScroll1.box.width, 76);
    EXPECT_EQ(surface.VScroll1.Max, 31);
}

TEST(Scrolling, MovesPicturesAndLeavesItems) {
    Scene scene;
    scene.Add(30, 40, 10);
    scene.surface.ScrollTo(10, 25);
    EXPECT_EQ(scene.Pic(1).box, (Box{20, 15, 10, 1}));
    EXPECT_EQ(scene.layout.Fields.Item(1).Left, 30);
    scene.surface.ScrollTo(99, -4);
    EXPECT_EQ(scene.surface.Geometry().HScroll1.Value, 26);
    EXPECT_EQ(scene.Pic(1).box, (Box{4, 40, 10, 1}));
}

TEST(Scrolling, FallsBackWithAShorterPageAndTakesThePicturesAlong) {
    Scene scene;
    scene.Add(30, 45, 10);
    scene.surface.ScrollTo(26, 46);
    ItemFormatting(scene.surface).Toolbar4_ButtonClick(true);
    EXPECT_EQ(scene.layout.settings.intOrientation, 0);
    EXPECT_EQ(scene.surface.Geometry().HScroll1.Value, 26);
    EXPECT_EQ(scene.surface.Geometry().VScroll1.Value, 31);
    EXPECT_EQ(scene.Pic(1).box, (Box{4, 14, 10, 1}));
    EXPECT_EQ(scene.layout.Fields.Item(1).Top, 45);
}

TEST(Scrolling, RemovesAnItemWhosePictureHasGone) {
    Scene scene;
    for (const float left : {1.0F, 21.0F, 41.0F, 61.0F}) scene.Add(left, 0, 5);
    scene.surface.RemovePicture(2);
    scene.surface.RemovePicture(3);
    scene.surface.ScrollTo(1, 0);
    ASSERT_EQ(scene.layout.Fields.Count(), 2);
    EXPECT_EQ(scene.Pic(1).box.left, 0);
    EXPECT_EQ(scene.Pic(4).box.left, 60);
}

TEST(DrawItemText, PlacesTheTextByItsAlignment) {
    struct Case {
        const char* alignment;
        int length;
        const char* text;
        double currentX;
        const char* drawn;
    };
    const Case cases[] = {
        {"L", 10, "  abcd ", 0, "abcd"},
        {"C", 10, "  abcd ", 3, "abcd"},
        {"R", 10, "  abcd ", 3, "abcd"},  // measured with its blanks, drawn without
        {"C", 3, "abcdef", 0, "abcdef"},
        {"R", 3, "abcdef", 0, "abcdef"},
        {"R", 10, "\xC3\xA4\xC3\xB6\xC3\xBC", 7, "\xC3\xA4\xC3\xB6\xC3\xBC"},
        {"", 10, "abcd", 0, "abcd"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.alignment) + " " + c.text);
        Scene scene;
        scene.Add(0, 0, c.length, c.text).FontAllignment = c.alignment;
        scene.surface.DrawItemText(1);
        EXPECT_EQ(scene.Pic(1).CurrentX, c.currentX);
        EXPECT_EQ(scene.Pic(1).text, c.drawn);
    }
}

TEST(DrawItemText, MeasuresTheFirstLengthCharactersInAPictureThatWasWidened) {
    Scene scene;
    scene.Add(0, 0, 4, "abcdefgh").FontAllignment = "R";
    scene.surface.SizePicture(1, 20, 1);
    scene.surface.DrawItemText(1);
    EXPECT_EQ(scene.Pic(1).CurrentX, 16);
}

TEST(Pictures, LieInTheOrderOfTheirCreation) {
    Scene scene;
    scene.Add(0, 0, 10);
    scene.Add(5, 0, 10);
    EXPECT_EQ(scene.surface.Pic().At(7, 0.5)->Index, 2);
    EXPECT_EQ(scene.surface.Pic().At(4.9, 0.5)->Index, 1);
    EXPECT_EQ(scene.surface.Pic().At(15, 0.5), nullptr);
    scene.layout.Fields.Swap(1, 2);  // the order in Fields has nothing to do with it
    EXPECT_EQ(scene.surface.Pic().At(7, 0.5)->Index, 2);
    scene.surface.RemoveItem(1);
    scene.surface.AddPicture(1);
    scene.surface.SizePicture(1, 10, 1);
    EXPECT_EQ(scene.surface.Pic().At(7, 0.5)->Index, 1);
}

TEST(ClearLayout, LeavesNothingAndGoesToThePageCorner) {
    Scene scene;
    scene.Add(0, 0, 10);
    scene.layout.settings.intPaperSize = 3;
    scene.layout.settings.sngLabelWidth = 4;
    scene.surface.SetPageSize();
    scene.surface.ScrollTo(50, 50);
    scene.surface.ClearLayout();
    EXPECT_TRUE(scene.surface.Pic().FromBelow().empty());
    EXPECT_EQ(scene.layout.Fields.Count(), 0);
    EXPECT_EQ(scene.surface.Geometry().HScroll1.Value, 0);
    EXPECT_EQ(scene.surface.Geometry().HScroll1.Max, 26);
    EXPECT_EQ(scene.surface.Geometry().VScroll1.Max, 46);
    EXPECT_EQ(scene.layout.settings.sngLabelWidth, 4);
}

}  // namespace
}  // namespace quillform::designer
