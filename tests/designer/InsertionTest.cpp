// New items on the surface: data fields and free texts.

#include <gtest/gtest.h>

#include "designer/DataFields.h"
#include "designer/SurfaceScene.h"
#include "designer/TextItems.h"

namespace quillform::designer {
namespace {

using testing::PointMeasure;
using testing::Scene;

// In the scene's measure a letter of 8 points is 0.8 cells wide, and a bold one of 9 points 1.08.

FieldChoice Choice(int code, int length) { return {code, "Field", length, "0.00"}; }

TEST(DataFields, ANewItemStandsBehindTheLastOne) {
    Scene scene;
    DataFields fields(scene.surface);
    fields.Insert(Choice(7, 10));
    const clssFields& first = scene.layout.Fields.Item(1);
    clssFields expected;
    expected.Key = " 1";
    expected.Code = 7;
    expected.Text = "Field";
    expected.Length = 10;
    expected.Mask = "0.00";
    expected.FontName = "Times New Roman";
    expected.FontSize = 8;
    expected.FontBackColor = 15;
    expected.FontAllignment = "L";
    expected.Index = 1;
    expected.Left = 1;
    expected.TwipStart = 120;
    expected.TwipEnd = 1080;
    expected.TwipBottom = 240;
    EXPECT_EQ(first, expected);
    EXPECT_EQ(scene.Pic(1).box, (Box{1, 0, 8, 1}));
    EXPECT_EQ(scene.Pic(1).text, "Field");

    fields.Insert(Choice(8, 5));
    EXPECT_EQ(scene.Pic(2).box, (Box{10, 0, 4, 1}));
    fields.Insert(Choice(9, 120));  // 96 cells, the page has 101.5
    EXPECT_EQ(scene.Pic(3).box, (Box{0, 1, 96, 1}));
    fields.Insert(Choice(10, 0));
    EXPECT_EQ(scene.Pic(4).box, (Box{97, 1, 0, 1}));
}

TEST(DataFields, AFieldThatGoesLeavesItsIndexToTheNext) {
    Scene scene;
    DataFields fields(scene.surface);
    for (const int code : {1, 2, 3}) fields.Insert(Choice(code, 5));
    EXPECT_EQ(fields.Find(2), 2);
    fields.Remove(2);
    EXPECT_EQ(fields.Find(2), 0);
    EXPECT_EQ(scene.surface.Pic().Find(2), nullptr);
    fields.Insert(Choice(2, 5));
    EXPECT_EQ(scene.layout.Fields.Item(3).Code, 2);
    EXPECT_EQ(scene.layout.Fields.Item(3).Index, 2);
    EXPECT_EQ(scene.Pic(2).box.left, scene.Pic(3).box.Right() + 1);
}

TEST(DataFields, AScrolledSurfaceStoresPagePlaces) {
    Scene scene;
    scene.surface.ScrollTo(10, 4);
    DataFields fields(scene.surface);
    fields.Insert(Choice(1, 10));
    EXPECT_EQ(scene.Pic(1).box, (Box{1, 0, 8, 1}));
    EXPECT_EQ(scene.layout.Fields.Item(1).Left, 11);
    EXPECT_EQ(scene.layout.Fields.Item(1).Top, 4);
}

TEST(DataFields, GivingWayIntoTheNextRowIsTold) {
    Scene scene;
    scene.Add(9, 0.5F, 92);
    scene.Add(0, 0, 10);
    int wraps = 0;
    DataFields(scene.surface, [&] { ++wraps; }).Insert(Choice(1, 10));
    EXPECT_EQ(wraps, 1);
    EXPECT_EQ(scene.Pic(3).box, (Box{0, 1, 8, 1}));
}

/// Letters three times as high as usual.
class TallMeasure final : public TextMeasure {
public:
    FontId Font(const FontSpec& spec) override { return points_.Font(spec); }
    double TextWidth(FontId font, std::string_view text) const override { return points_.TextWidth(font, text); }
    double TextHeight(FontId font) const override { return 3 * points_.TextHeight(font); }

private:
    PointMeasure points_;
};

TEST(DataFields, AHighFontIsMadeSmallerAndTheItemKeepsTheLargerSize) {
    Layout layout;
    TallMeasure measure;
    DesignSurface surface(layout, measure);
    surface.ClearLayout();
    DataFields(surface).Insert(Choice(1, 10));
    EXPECT_EQ(surface.Pic().Find(1)->font.size, 6.5);
    EXPECT_EQ(layout.Fields.Item(1).FontSize, 7);
    EXPECT_EQ(surface.Pic().Find(1)->box.height, 2);
}

TEST(TextItems, NewTextsStandOneBehindTheOther) {
    Scene scene;
    TextItems texts(scene.surface);
    texts.Add("Sales", TextKind::PageHeading);
    texts.Add("by country", TextKind::Normal);
    EXPECT_EQ(scene.Pic(1).box, (Box{0, 0, 6, 1}));
    EXPECT_EQ(scene.Pic(2).box, (Box{7, 0, 11, 1}));
    EXPECT_EQ(scene.layout.Fields.Count(), 0);

    texts.StoreTextItems();
    ASSERT_EQ(scene.layout.Fields.Count(), 2);
    const clssFields& heading = scene.layout.Fields.Item(1);
    EXPECT_EQ(heading.Code, ItemCode::HeadingText);
    EXPECT_EQ(heading.FontForeColor, 1);
    EXPECT_EQ(heading.Length, 5);
    EXPECT_EQ(heading.FontSize, 9);
    EXPECT_TRUE(heading.FontBold);
    const clssFields& normal = scene.layout.Fields.Item(2);
    EXPECT_EQ(normal.Code, ItemCode::Text);
    EXPECT_EQ(normal.FontForeColor, 5);
    EXPECT_EQ(normal.Left, 7);
}

TEST(TextItems, TheFirstTextStandsWhereTheSurfaceIsScrolledTo) {
    Scene scene;
    scene.surface.ScrollTo(10, 5);
    TextItems texts(scene.surface);
    texts.Add("Sales", TextKind::Normal);
    EXPECT_EQ(texts.Texts().Item(1).Left, 0);
    EXPECT_EQ(texts.Texts().Item(1).Top, 5);
}

TEST(TextItems, TwoNewTextsBehindADataFieldDontLieOnEachOther) {
    Scene scene;
    scene.Add(0, 0, 10);
    TextItems texts(scene.surface);
    texts.Add("One", TextKind::Normal);
    texts.Add("Two", TextKind::Normal);
    EXPECT_EQ(scene.Pic(2).box.left, 11);
    EXPECT_EQ(scene.Pic(3).box.left, scene.Pic(2).box.Right() + 1);
}

TEST(TextItems, PastTheEndOfThePageTheNextRowBegins) {
    Scene scene;
    scene.Add(0, 3, 98);
    TextItems texts(scene.surface);
    texts.Add("Sales", TextKind::Normal);
    EXPECT_EQ(scene.Pic(2).box, (Box{0, 4, 6, 1}));
}

TEST(TextItems, AChangeKeepsThePlaceAndADeletionBringsTheLayoutUpToDate) {
    Scene scene;
    scene.Add(0, 5, 10, "Old", ItemCode::Text);
    scene.Add(0, 2, 10, "Data", 1);
    TextItems texts(scene.surface);
    texts.Add("New", TextKind::Normal);
    texts.Change(1, "Renamed text", TextKind::PageHeading);
    EXPECT_EQ(scene.Pic(1).text, "Renamed text");
    EXPECT_EQ(scene.Pic(1).foreColor, 1);
    EXPECT_EQ(scene.Pic(1).box, (Box{0, 5, 12, 1}));
    EXPECT_EQ(scene.layout.Fields.Item(1).Text, "Old");

    texts.Delete(2);
    EXPECT_EQ(scene.surface.Pic().Find(3), nullptr);
    ASSERT_EQ(scene.layout.Fields.Count(), 2);
    EXPECT_EQ(scene.layout.Fields.Item(1).Text, "Data");  // texts go behind the data
    EXPECT_EQ(scene.layout.Fields.Item(2).Text, "Renamed text");
    EXPECT_EQ(scene.layout.Fields.Item(2).Length, 12);
    EXPECT_EQ(scene.layout.Fields.Item(2).Code, ItemCode::HeadingText);

    for (const int nowhere : {0, 2, -1}) {
        texts.Delete(nowhere);
        texts.Change(nowhere, "x", TextKind::Normal);
    }
    EXPECT_EQ(texts.Texts().Count(), 1);
}

}  // namespace
}  // namespace quillform::designer
