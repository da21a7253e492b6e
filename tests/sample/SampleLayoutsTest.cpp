#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>

#include "data/Engine.h"
#include "persistence/LayoutFile.h"
#include "print/PdfTarget.h"
#include "sample/SampleData.h"

namespace quillform::sample {
namespace {

namespace fs = std::filesystem;

class SilentUser : public UserInterface {
public:
    void Message(std::string_view, std::string_view) override {}
    bool Ask(std::string_view, std::string_view, MessageIcon) override { return false; }
    void Warn(std::string_view) override {}
};

/// The layouts as a user gets them: written to files and loaded again, measured by the fonts of the page.
class SampleLayouts : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "samples-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
        const auto engine = data::MakeEngine(clock_);
        const auto measure = print::MakeTextMeasure();
        SilentUser user;
        for (const fs::path& file : WriteSamples(*engine, folder_)) {
            if (file.extension() != ".REP") continue;
            Layout& layout = layouts_.emplace_back();
            ASSERT_TRUE(LoadLayout(file.string(), layout, *measure, user));
            for (clssFields& item : layout.Fields) SetItemTwips(item, layout.PictureOf(item));
        }
        ASSERT_EQ(layouts_.size(), 9U);
    }
    void TearDown() override { fs::remove_all(folder_); }

    FixedClock clock_{46000};
    fs::path folder_;
    std::vector<Layout> layouts_;
};

/// Width of the printable area in twips: the paper less a quarter of an inch on either side.
int PrintableWidth(const ReportSettings& settings) {
    const print::PaperSize paper = print::PaperSizeOf(settings.intPaperSize);
    return static_cast<int>(settings.intOrientation == 0 ? paper.heightTwips : paper.widthTwips) - 720;
}

TEST_F(SampleLayouts, ItemsStayOnThePaper) {
    for (const Layout& layout : layouts_)
        for (const clssFields& item : layout.Fields)
            EXPECT_LE(item.TwipEnd, PrintableWidth(layout.settings)) << layout.strLayoutFile << ": " << item.Text;
}

TEST_F(SampleLayouts, HeadingBandHasNoGap) {
    int filled = 0;
    for (const Layout& layout : layouts_) {
        int end = -1;
        for (const clssFields& item : layout.Fields) {
            if (item.FontBackColor == 15) continue;
            ++filled;
            if (end >= 0) {
                EXPECT_EQ(item.TwipStart, end) << layout.strLayoutFile << ": " << item.Text;
            }
            end = item.TwipEnd;
        }
    }
    EXPECT_GT(filled, 0);
}

TEST_F(SampleLayouts, ItemsOfARowStandSideBySideOnPaperAndInTextFiles) {
    for (const Layout& layout : layouts_)
        for (const clssFields& left : layout.Fields)
            for (const clssFields& right : layout.Fields) {
                if (left.Top != right.Top || right.Left <= left.Left) continue;
                EXPECT_LE(left.Left + static_cast<float>(left.Length), right.Left)
                    << layout.strLayoutFile << ": " << left.Text << " and " << right.Text;
                // Titles are set larger and have room to their right.
                if (IsDataItem(left)) {
                    EXPECT_LE(left.TwipEnd, right.TwipStart) << left.Text << " and " << right.Text;
                }
            }
}

}  // namespace
}  // namespace quillform::sample
