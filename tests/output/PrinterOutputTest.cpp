#include <gtest/gtest.h>

#include "catalog/CommonSheets.h"
#include "engine/FakeSurroundings.h"
#include "output/PrinterOutput.h"

namespace quillform::testing {
namespace {

/// What was put on the pages, in the order of the calls.
struct Drawn {
    int page;
    double x;
    double y;
    std::string text;
    friend bool operator==(const Drawn&, const Drawn&) = default;
};

void PrintTo(const Drawn& drawn, std::ostream* out) {
    *out << drawn.page << ":(" << drawn.x << "," << drawn.y << ") " << drawn.text;
}

struct Record {
    std::vector<Drawn> texts;
    std::vector<Drawn> boxes;  // upper left corner, and colour and size as text
    std::vector<std::string> outline;
    bool isEnded = false;
    bool isFromSheet = false;  // else from the printable area
};

/// A page of 20 lines; every letter is 120 twips wide and every line 240 high.
class RecordingTarget final : public print::PdfTarget {
public:
    explicit RecordingTarget(Record& record) : record_(record) {}

    FontId Font(const FontSpec&) override { return FontId{0}; }
    double TextWidth(FontId, std::string_view text) const override { return 120.0 * static_cast<double>(text.size()); }
    double TextHeight(FontId) const override { return 240; }
    void SetTitle(std::string_view) override {}
    void SetOrientation(bool) override {}
    void SetPaperSize(int) override {}
    void SetOrigin(PageOrigin origin) override { record_.isFromSheet = origin == PageOrigin::Sheet; }
    void SetFont(FontId) override {}
    void SetForeColor(int) override {}
    double CurrentX() const override { return x_; }
    double CurrentY() const override { return y_; }
    void SetCurrentX(double x) override { x_ = x; }
    void SetCurrentY(double y) override { y_ = y; }
    void Print(std::string_view text) override {
        record_.texts.push_back({page_, x_, y_, std::string(text)});
        Print();
    }
    void Print() override {
        y_ += 240;
        x_ = 0;
    }
    void FillBox(double x1, double y1, double x2, double y2, int colour) override {
        record_.boxes.push_back({page_, x1, y1,
                                 std::to_string(colour) + " " + std::to_string(static_cast<int>(x2 - x1)) + "x" +
                                     std::to_string(static_cast<int>(y2 - y1))});
    }
    FontId CurrentFont() const override { return FontId{0}; }
    double ScaleHeight() const override { return 20 * 240; }
    double ScaleWidth() const override { return 10000; }
    void NewPage() override {
        ++page_;
        x_ = y_ = 0;
    }
    void EndDoc() override { record_.isEnded = true; }
    const std::vector<std::string>& Fonts() const override { return fonts_; }
    void SetRole(PageRole) override {}
    void BeginRow() override {}
    void AddOutlineEntry(int level, std::string_view title) override {
        record_.outline.push_back(std::to_string(level) + " " + std::string(title));
    }
    std::vector<std::string> FontSubstitutions() const override { return {}; }
    int PageCount() const override { return page_; }

private:
    Record& record_;
    std::vector<std::string> fonts_ = {"TIMES NEW ROMAN", "Arial "};
    int page_ = 1;
    double x_ = 0;
    double y_ = 0;
};

const std::vector<Field> columns = {{.Name = "City", .Type = FieldType::Text, .Size = 20},
                                    {.Name = "Amount", .Type = FieldType::Long, .Size = 4}};
constexpr int City = 1;
constexpr int Amount = 2;

Rows Numbered(int count) {
    Rows rows;
    for (int i = 1; i <= count; ++i) rows.push_back({Value::Text("A"), Value::Integer(i)});
    return rows;
}

Record RunOn(Scene& scene, RunOptions options = {.walk = Walk::OnePass}) {
    Record record;
    PrinterOutput output({"unused.pdf"}, [&record](const std::filesystem::path&, const print::PdfSettings&) {
        return std::make_unique<RecordingTarget>(record);
    });
    const RunOutcome outcome = scene.Run(output, options);
    EXPECT_FALSE(outcome.failure) << outcome.failure->what();
    EXPECT_TRUE(record.isEnded);
    return record;
}

TEST(PrinterOutput, ItemsStandInTheirBoxes) {
    Scene scene(columns, {{Value::Text("abcdef"), Value::Integer(7)}});
    scene.Add(City, 0, 1, 4).PrimarySort = true;
    scene.Add(Amount, 0, 10, 4).FontAllignment = "R";
    scene.Add(Amount, 0, 20, 4).FontAllignment = "C";
    clssFields& wide = scene.Add(City, 0, 30, 4);
    wide.FontAllignment = "R";  // wider than its box: starts at the box and is cut to its length
    wide.FontBackColor = 14;
    const Record record = RunOn(scene);
    EXPECT_EQ(
        record.texts,
        (std::vector<Drawn>{
            {1, 120, 0, "abcd"}, {1, 1200 + 480 - 120, 0, "7"}, {1, 2400 + 240 - 60, 0, "7"}, {1, 3600, 0, "abcd"}}));
    EXPECT_EQ(record.boxes, (std::vector<Drawn>{{1, 3600, 0, "15 480x240"}}));
}

TEST(PrinterOutput, PagesBreakBelowTheLastRowAndShowTheirDuplicates) {
    Scene scene(columns, Numbered(40));
    scene.Add(-1, 0, 0, 4, "Head");
    clssFields& city = scene.Add(City, 1, 0, 4);
    city.PrimarySort = city.SuppressDuplicate = true;
    scene.Add(Amount, 1, 5, 4);
    const Record record = RunOn(scene);
    std::vector<Drawn> cities;
    for (const Drawn& drawn : record.texts)
        if (drawn.text == "A") cities.push_back(drawn);
    // 20 lines a page, of which the item test keeps the last one free: a heading and 18 rows.
    EXPECT_EQ(cities, (std::vector<Drawn>{{1, 0, 240, "A"}, {2, 0, 240, "A"}, {3, 0, 240, "A"}}));
    EXPECT_EQ(record.texts.back(), (Drawn{3, 600, 240.0 * 4, "40"}));
    EXPECT_EQ(std::count_if(record.texts.begin(), record.texts.end(), [](const Drawn& d) { return d.text == "Head"; }),
              3);
}

TEST(PrinterOutput, TotalsStandBelowTheirGroupWithItsSpacesAndPages) {
    Scene scene(columns, {{Value::Text("A"), Value::Integer(1)}, {Value::Text("B"), Value::Integer(2)}});
    scene.layout.settings.intSpaces1 = 2;
    scene.Add(City, 0, 0, 4).PrimarySort = true;
    scene.Add(Amount, 0, 5, 3).SubTotalFlag1 = true;
    Record record = RunOn(scene);
    const auto only = [&record](std::string_view text) {
        std::vector<double> lines;
        for (const Drawn& drawn : record.texts)
            if (drawn.text == text) lines.push_back(drawn.y / 240 + (drawn.page - 1) * 100);
        return lines;
    };
    EXPECT_EQ(only("A"), std::vector<double>{0});
    EXPECT_EQ(only("___"), (std::vector<double>{1, 6}));
    EXPECT_EQ(only("B"), std::vector<double>{5});
    EXPECT_EQ(record.outline, (std::vector<std::string>{"1 A", "1 B"}));

    scene.layout.settings.intSpaces1 = 0;
    scene.layout.settings.boolPageBreak1 = true;
    record = RunOn(scene);
    EXPECT_EQ(only("B"), std::vector<double>{100});
}

TEST(PrinterOutput, AHeadingTallerThanThePageComesToItsEnd) {
    Scene scene(columns, Numbered(3));
    scene.Add(-1, 0, 0, 4, "Head");
    scene.Add(-1, 70, 0, 4, "Foot");
    scene.Add(Amount, 71, 0, 4).PrimarySort = true;
    const Record record = RunOn(scene);
    EXPECT_EQ(std::count_if(record.texts.begin(), record.texts.end(), [](const Drawn& d) { return d.text == "3"; }), 1);
}

TEST(PrinterOutput, DetailsOnTheLastHeadingRowGoBelowIt) {
    Scene scene(columns, Numbered(2));
    scene.Add(-1, 0, 0, 4, "Head");
    scene.Add(Amount, 0, 5, 4).PrimarySort = true;
    EXPECT_EQ(RunOn(scene).texts, (std::vector<Drawn>{{1, 0, 0, "Head"}, {1, 600, 240, "1"}, {1, 600, 480, "2"}}));
}

TEST(PrinterOutput, HiddenRowsTakeNoRoom) {
    Scene scene(columns, Numbered(2));
    clssFields& hidden = scene.Add(City, 0, 0, 4);
    hidden.PrimarySort = hidden.SuppressDetails = true;
    scene.Add(Amount, 1, 0, 4);
    EXPECT_EQ(RunOn(scene).texts, (std::vector<Drawn>{{1, 0, 0, "1"}, {1, 0, 240, "2"}}));
}

TEST(PrinterOutput, MissingFontsBecomeTheDefaultAndStaySo) {
    Scene scene(columns, Numbered(1));
    scene.Add(City, 0, 0, 4).PrimarySort = true;
    scene.layout.Fields.Item(1).FontName = " arial";
    scene.Add(Amount, 0, 5, 4).FontName = "No Such Font";
    RunOn(scene);
    EXPECT_EQ(scene.layout.Fields.Item(1).FontName, " arial");
    EXPECT_EQ(scene.layout.Fields.Item(2).FontName, "Times New Roman");
    EXPECT_EQ(scene.user.warnings.size(), 1U);
}

TEST(PrinterOutput, PaperThatIsNotKnownIsTold) {
    Scene scene(columns, Numbered(1));
    scene.Add(City, 0, 0, 4).PrimarySort = true;
    scene.layout.settings.intPaperSize = 41;
    RunOn(scene);
    EXPECT_TRUE(scene.user.warnings.empty());
    scene.layout.settings.intPaperSize = 9;
    RunOn(scene);
    ASSERT_EQ(scene.user.warnings.size(), 1U);
    EXPECT_NE(scene.user.warnings[0].find("paper number 9"), std::string::npos) << scene.user.warnings[0];
}

TEST(PrinterOutput, LabelsRunAcrossThenDownThenToANewSheet) {
    for (const Walk walk : {Walk::OnePass, Walk::Groups}) {
        Scene scene(columns, Numbered(5));
        scene.data.rows[2][0] = scene.data.rows[3][0] = scene.data.rows[4][0] = Value::Text("B");
        const CommonSheet sheet{.across = 2,
                                .down = 2,
                                .height = 1,
                                .width = 2.5F,
                                .topMargin = 0.5F,
                                .leftMargin = 0.25F,
                                .horizontalGap = 0.125F};
        UseLabels(sheet, scene.layout.settings);
        scene.Add(Amount, 0, 1, 4);
        scene.Add(City, 1, 1, 4).PrimarySort = true;
        scene.GroupBy(0);
        std::vector<Drawn> amounts;
        const Record record = RunOn(scene, {.walk = walk});
        EXPECT_TRUE(record.isFromSheet);
        for (const Drawn& drawn : record.texts)
            if (drawn.text < "A") amounts.push_back(drawn);
        EXPECT_EQ(amounts, (std::vector<Drawn>{{1, 360 + 120, 960, "1"},
                                               {1, 4140 + 120, 960, "2"},
                                               {1, 360 + 120, 2400, "3"},
                                               {1, 4140 + 120, 2400, "4"},
                                               {2, 360 + 120, 960, "5"}}));
    }
}

}  // namespace
}  // namespace quillform::testing
