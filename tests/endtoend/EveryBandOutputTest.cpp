// One small report with every band, to every output, held against what it is to be.
#include <gtest/gtest.h>

#include "catalog/CommonSheets.h"
#include "endtoend/SmallReport.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;
using namespace quillform::sample;

const std::vector<Visit> visits = {
    {"North", "Bergen", "fjord, by boat", 12},
    {"North", "Bergen", "", 3},
    {"North", "Oslo", "Café au lait", 40},
    {"South", "Lisboa", "tram 28", 7},
    {"South", "Roma", "", 1250},
    {"South", "Roma", "forum", 2},
    {"South", "Roma", "forum, by night", 0},
    {"West", "Galway", "“the bay”", 5},
};

const std::vector<ColumnPlan> columns = {
    {"Area", "Area", 0, 8, 'L', Primary | HideDuplicates},
    {"Town", "Town", 9, 10, 'C', Secondary | HideDuplicates},
    {"Note", "Note", 20, 18},
    {"Guests", "Guests", 40, 8, 'R', AllTotals},
    {"Note", "", 20, 30, 'L', None, 1},
};

/// The date of the title block becomes date and time, in two items.
void AddTime(quillform::Layout& layout) {
    quillform::clssFields item = layout.Fields.Item(2);
    item.Code = quillform::ItemCode::LongTime;
    item.Top = 1;
    item.Key = " 999";
    layout.Fields.Add(std::move(item));
}

/// Labels carry no totals, and what stands on one must fit on it.
void MakeLabels(quillform::Layout& layout) {
    UseLabels(quillform::addressSheet, layout.settings);
    quillform::collFields labels;
    for (const quillform::clssFields& item : layout.Fields) {
        if (item.Code <= 0 || item.Code >= quillform::ItemCode::FirstHeadingLoose) continue;
        quillform::clssFields& placed = labels.Add(item);
        placed.Top = static_cast<float>(labels.Count() - 1);
        placed.Left = 1;
        placed.SuppressDuplicate = placed.SubTotalFlag1 = placed.SubTotalFlag2 = placed.GrandTotalFlag = false;
    }
    layout.Fields = std::move(labels);
}

class EveryBand : public testing::Test {
protected:
    /// The file that the report becomes.
    std::string Run(const std::string& type, const std::function<void(quillform::Layout&)>& change = AddTime) {
        const std::string layout = MakeVisits(folder_, visits, columns, change);
        const std::string target = folder_.File("out." + type);
        const Outcome run =
            Quillform({"run", layout, "-t", type, "-o", target, "--walk", "one-pass", "--date", "2025-12-31 14:05:09"});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return target;
    }
    static std::string OutputOf(const std::vector<std::string>& command) {
        const Outcome outcome = RunProgram(command);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        return outcome.output;
    }

    ScratchFolder folder_;
};

TEST_F(EveryBand, Text) { ExpectGolden("EVERYBAND.txt", ReadFile(Run("txt"))); }
TEST_F(EveryBand, CommaSeparated) { ExpectGolden("EVERYBAND.csv", ReadFile(Run("csv"))); }
TEST_F(EveryBand, WordMerge) { ExpectGolden("EVERYBAND.word", ReadFile(Run("word"))); }
TEST_F(EveryBand, WordPerfectMerge) { ExpectGolden("EVERYBAND.wordperfect", ReadFile(Run("wordperfect"))); }
TEST_F(EveryBand, RichText) { ExpectGolden("EVERYBAND.rtf", ReadFile(Run("rtf"))); }
TEST_F(EveryBand, Screen) { ExpectGolden("EVERYBAND.screen.rtf", ReadFile(Run("screen"))); }
TEST_F(EveryBand, RichTextLabels) { ExpectGolden("EVERYBAND.labels.rtf", ReadFile(Run("rtf", MakeLabels))); }

// The bytes of a document hold those of the fonts that the machine has; the words and their places are the report.
TEST_F(EveryBand, Paper) {
    if (!HasTool("pdftotext")) GTEST_SKIP() << "pdftotext isn't installed";
    ExpectGolden("EVERYBAND.pdf.txt", OutputOf({"pdftotext", "-layout", Run("pdf"), "-"}));
}

TEST_F(EveryBand, PaperLabels) {
    if (!HasTool("pdftotext")) GTEST_SKIP() << "pdftotext isn't installed";
    ExpectGolden("EVERYBAND.labels.pdf.txt", OutputOf({"pdftotext", "-layout", Run("pdf", MakeLabels), "-"}));
}

// Two items of one name can't both be columns.
TEST_F(EveryBand, AccessDatabase) {
    if (!HasTool("mdb-export")) GTEST_SKIP() << "mdb-export isn't installed";
    const std::string database = Run("mdb", [](quillform::Layout& layout) {
        for (quillform::clssFields& item : layout.Fields)
            if (item.Text == "Note" && item.Length == 30) item.Text = "Whole note";
    });
    ExpectGolden("EVERYBAND.mdb.csv", OutputOf({"mdb-export", database, "Project1 Table"}));
}

}  // namespace
}  // namespace endtoend
