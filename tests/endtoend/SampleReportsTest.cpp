// The project's own samples, made by the program and run by the program.
#include <gtest/gtest.h>

#include "endtoend/Support.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

const char* const sampleReports[] = {"STOCK", "SALES", "ORDERS", "PRICES", "CUSTOMER"};

class SampleReport : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        const Outcome made = Quillform({"sample", folder_.Path().string()});
        ASSERT_EQ(made.exitCode, 0) << made.errors;
    }
    fs::path Run(const std::string& extension) {
        const fs::path target = folder_ / (std::string(GetParam()) + extension);
        const fs::path layout = folder_ / (std::string(GetParam()) + ".REP");
        const Outcome run = Quillform({"run", layout.string(), "-o", target.string(), "--walk", "one-pass"});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return target;
    }

    ScratchFolder folder_;
};

TEST_P(SampleReport, TextIsTheGoldenFile) {
    const fs::path golden = fs::path(QUILLFORM_SOURCE_DIR) / "tests/golden" / (std::string(GetParam()) + ".txt");
    const std::string actual = ReadFile(Run(".txt"));
    const std::string difference = FirstDifference(ReadFile(golden), actual);
    if (!difference.empty()) WriteFile(golden.string() + ".actual", actual);
    EXPECT_EQ(difference, "") << "the whole text is in " << golden << ".actual";
}

TEST_P(SampleReport, DocumentIsSoundAndHoldsTheGrandTotal) {
    if (!HasTool("qpdf") || !HasTool("pdftotext")) GTEST_SKIP() << "qpdf or pdftotext isn't installed";
    const std::string document = Run(".pdf").string();
    const Outcome sound = RunProgram({"qpdf", "--check", document});
    EXPECT_EQ(sound.exitCode, 0) << sound.output << sound.errors;
    const Outcome text = RunProgram({"pdftotext", "-layout", document, "-"});
    // The last word of the text file is the grand total, or stands in the last detail where the report has none.
    const std::string report = ReadFile(Run(".txt"));
    const std::size_t end = report.find_last_not_of(" \r\n") + 1;
    const std::size_t begin = report.find_last_of(' ', end - 1) + 1;
    const std::string lastWord = report.substr(begin, end - begin);
    EXPECT_NE(text.output.find(lastWord), std::string::npos) << lastWord;
}

INSTANTIATE_TEST_SUITE_P(All, SampleReport, testing::ValuesIn(sampleReports),
                         [](const auto& example) { return std::string(example.param); });

TEST(Samples, AreTheSameEachTime) {
    const ScratchFolder first;
    const ScratchFolder second;
    ASSERT_EQ(Quillform({"sample", first.Path().string()}).exitCode, 0);
    ASSERT_EQ(Quillform({"sample", second.Path().string()}).exitCode, 0);
    EXPECT_TRUE(ReadFile(first / "Sample.mdb") == ReadFile(second / "Sample.mdb"));
}

TEST(Samples, AreNotWrittenOverWhatIsThere) {
    const ScratchFolder folder;
    WriteFile(folder / "SALES.REP", "my own");
    const auto before = Snapshot(folder.Path());
    const Outcome made = Quillform({"sample", folder.Path().string()});
    EXPECT_NE(made.exitCode, 0);
    EXPECT_NE(made.errors.find("SALES.REP"), std::string::npos) << made.errors;
    EXPECT_EQ(Snapshot(folder.Path()), before);
}

}  // namespace
}  // namespace endtoend
