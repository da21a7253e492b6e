// The project's own samples, made by the program and run by the program.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "endtoend/SmallReport.h"
#include "platform/CodePage.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

struct Sample {
    const char* name;
    std::size_t headingRows;    // rows with something on them at the head of each page
    std::size_t labelRows = 0;  // of a label, on sheets with three labels beside each other; 0: no labels
};
const Sample samples[] = {{"STOCK", 4},     {"SALES", 4},  {"ORDERS", 3}, {"PRICES", 3}, {"CUSTOMER", 4},
                          {"LABELS", 0, 4}, {"UNPAID", 3}, {"LETTER", 0}, {"TABLE", 0}};

void PrintTo(const Sample& sample, std::ostream* out) { *out << sample.name; }

class SampleFolder : public testing::Test {
protected:
    void SetUp() override {
        const Outcome made = Quillform({"sample", folder_.Path().string()});
        ASSERT_EQ(made.exitCode, 0) << made.errors;
    }
    /// Runs a layout into a file of that name.
    fs::path Run(const std::string& layout, const std::string& file, const std::string& type) {
        const Outcome run = Quillform(
            {"run", folder_.File(layout + ".REP"), "-o", folder_.File(file), "--type", type, "--walk", "one-pass"});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return folder_ / file;
    }

    ScratchFolder folder_;
};

struct Golden {
    const char* layout;
    const char* file;
    const char* type;
};
const Golden goldens[] = {{"STOCK", "STOCK.txt", "txt"},
                          {"SALES", "SALES.txt", "txt"},
                          {"ORDERS", "ORDERS.txt", "txt"},
                          {"PRICES", "PRICES.txt", "txt"},
                          {"CUSTOMER", "CUSTOMER.txt", "txt"},
                          {"UNPAID", "UNPAID.txt", "txt"},
                          {"UNPAID", "UNPAID.rtf", "rtf"},
                          {"LABELS", "LABELS.rtf", "rtf"},
                          {"LETTER", "LETTER.mrg", "csv"},
                          {"LETTER", "LETTER.doc", "word"},
                          {"LETTER", "LETTER-WP.doc", "wordperfect"}};

void PrintTo(const Golden& golden, std::ostream* out) { *out << golden.file; }

class GoldenSample : public SampleFolder, public testing::WithParamInterface<Golden> {};

TEST_P(GoldenSample, IsTheGoldenFile) {
    const Golden& golden = GetParam();
    ExpectGolden(golden.file, ReadFile(Run(golden.layout, golden.file, golden.type)));
}

INSTANTIATE_TEST_SUITE_P(All, GoldenSample, testing::ValuesIn(goldens), [](const auto& example) {
    std::string name = example.param.file;
    for (char& letter : name)
        if (letter == '.' || letter == '-') letter = '_';
    return name;
});

/// A row of a report as its values with one blank between them.
struct ReportRow {
    std::string values;
    bool isFirstOnPage;  // the first record's, or a total above it
};

std::string Values(const std::string& line) {
    std::istringstream words(line);
    std::string values;
    for (std::string word; words >> word;) values += (values.empty() ? "" : " ") + word;
    return values;
}

std::vector<std::string> RowsWithValues(const std::string& text) {
    std::vector<std::string> rows;
    for (const std::string& line : Lines(text))
        if (std::string values = Values(line); !values.empty()) rows.push_back(std::move(values));
    return rows;
}

/// Lines of totals have figures and strokes only.
bool HasLetter(const std::string& row) {
    return std::any_of(row.begin(), row.end(), [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); });
}

/// The rows without the headings of the pages; the first row is the first of the first heading.
std::vector<ReportRow> WithoutHeadings(const std::vector<std::string>& rows, std::size_t headingRows) {
    std::vector<ReportRow> body;
    bool isFirst = true;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        isFirst = isFirst || (headingRows > 0 && rows[i] == rows[0]);
        if (headingRows > 0 && rows[i] == rows[0]) {
            i += headingRows - 1;
            continue;
        }
        body.push_back({rows[i], isFirst});
        isFirst = isFirst && !HasLetter(rows[i]);
    }
    return body;
}

/// What three labels beside each other give, line by line, from labels below each other.
std::vector<std::string> SideBySide(const std::vector<std::string>& rows, std::size_t labelRows) {
    std::vector<std::string> lines;
    for (std::size_t first = 0; first < rows.size(); first += 3 * labelRows)
        for (std::size_t row = 0; row < labelRows; ++row) {
            std::string line = rows.at(first + row);
            for (std::size_t at = first + row + labelRows; at < std::min(rows.size(), first + 3 * labelRows);
                 at += labelRows)
                line += " " + rows[at];
            lines.push_back(line);
        }
    return lines;
}

/// Pages of text and of paper hold different numbers of rows, and the first record of a page shows the values at its
/// beginning that are left out where they repeat those of the row before.
bool IsSameRow(const ReportRow& a, const ReportRow& b) {
    if (a.values == b.values) return true;
    const auto isRestOf = [](const ReportRow& rest, const ReportRow& whole) {
        return whole.isFirstOnPage && whole.values.ends_with(" " + rest.values);
    };
    return isRestOf(a, b) || isRestOf(b, a);
}

class SampleDocument : public SampleFolder, public testing::WithParamInterface<Sample> {};

TEST_P(SampleDocument, IsSoundAndHasTheValuesOfTheTextRowByRow) {
    if (!HasTool("qpdf") || !HasTool("pdftotext")) GTEST_SKIP() << "qpdf or pdftotext isn't installed";
    const Sample& sample = GetParam();
    const std::string name = sample.name;
    const std::string document = Run(name, name + ".pdf", "pdf").string();
    const Outcome sound = RunProgram({"qpdf", "--check", document});
    EXPECT_EQ(sound.exitCode, 0) << sound.output << sound.errors;

    const Outcome page = RunProgram({"pdftotext", "-layout", document, "-"});
    std::vector<std::string> textRows =
        RowsWithValues(quillform::Utf8FromCp1252(ReadFile(Run(name, name + ".txt", "txt"))));
    if (sample.labelRows > 0) textRows = SideBySide(textRows, sample.labelRows);
    const std::vector<ReportRow> text = WithoutHeadings(textRows, sample.headingRows);
    const std::vector<ReportRow> paper = WithoutHeadings(RowsWithValues(page.output), sample.headingRows);
    ASSERT_GT(text.size(), 30U);
    for (std::size_t i = 0; i < std::min(text.size(), paper.size()); ++i)
        ASSERT_TRUE(IsSameRow(text[i], paper[i]))
            << "row " << i << "\n text:  " << text[i].values << "\n paper: " << paper[i].values;
    EXPECT_EQ(text.size(), paper.size());
}

INSTANTIATE_TEST_SUITE_P(All, SampleDocument, testing::ValuesIn(samples),
                         [](const auto& example) { return std::string(example.param.name); });

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
