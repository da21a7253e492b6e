// Rich text documents, as a word processor shows them and as a plain look at their groups finds them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <sstream>
#include <tuple>

#include "endtoend/Support.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

constexpr int orderLines = 2416;  // of the sample database
constexpr int customers = 80;
constexpr int linesOfPage = 51;
constexpr double pointTwips = 20;
constexpr double documentMargin = 720;  // twips
constexpr double printMargin = 360;

struct LayoutItem {
    std::string text;  // in the catalog
    int row, column, length;
    bool isSorted = false;
};

/// A layout in Arial 8 of catalog items, without a heading. `settings` is the rest of the last line from the
/// orientation on, with %D for the database.
std::string LayoutText(const fs::path& database, const std::vector<LayoutItem>& items, std::string settings) {
    std::ostringstream text;
    text << "^1.000.000\r\n";
    for (const LayoutItem& item : items) {
        const Outcome code = Quillform({"sql", database.string(), "--no-header",
                                        "SELECT ID FROM [Report - Index] WHERE [Text] = '" + item.text + "'"});
        text << '#' << Lines(code.output).at(0) << ", " << item.row << ", " << item.column << ", " << item.length
             << ",\"" << item.text << "\",\"Arial\",\"8\",\"False\",\"False\",\"False\",\"0\",\" 15\",\"L\",\""
             << (item.isSorted ? "True" : "False")
             << "\",\"False\",\"False\",\"False\",\"False\",\"False\",\"\",\"False\",\"False\"\r\n";
    }
    settings.replace(settings.find("%D"), 2, database.string());
    text << "*0,0,3,\"0\",\"0\",\"0\",\"0\"," << settings << "\r\n";
    return text.str();
}

constexpr std::string_view noLabels = R"("False","0","0","0","0","0","0","0","0","False")";

/// Order lines in columns on tab stops.
std::string LinesLayout(const fs::path& database, int orientation) {
    return LayoutText(database,
                      {{"Order of Line", 0, 0, 8, true},
                       {"Line", 0, 12, 4},
                       {"Product", 0, 18, 28},
                       {"Quantity", 0, 48, 8},
                       {"Amount", 0, 60, 12}},
                      "\"" + std::to_string(orientation) + "\",\"%D\",\"0\",\"1\"," + std::string(noLabels));
}

std::string LabelLayout(const fs::path& database) {
    return LayoutText(database, {{"Customer ID", 0, 0, 8, true}, {"Country Code", 1, 6, 4}, {"Preferred", 2, 0, 6}},
                      R"("1","%D","0","1","True","3","10","1","2.625","0.5","0.1875","0.125","0","False")");
}

class RichText : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Quillform({"sample", folder_.Path().string()}).exitCode, 0); }

    fs::path Database() const { return folder_ / "Sample.mdb"; }
    fs::path Run(const std::string& name, const std::string& extension) {
        const fs::path target = folder_ / (name + extension);
        const Outcome run = Quillform({"run", folder_.File(name + ".REP"), "-o", target.string()});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return target;
    }
    /// Has LibreOffice make PDFs of documents, into the folder "shown".
    void Show(const std::vector<fs::path>& documents) {
        std::vector<std::string> command = {"soffice",
                                            "-env:UserInstallation=file://" + folder_.File("profile"),
                                            "--headless",
                                            "--convert-to",
                                            "pdf",
                                            "--outdir",
                                            folder_.File("shown")};
        for (const fs::path& document : documents) command.push_back(document.string());
        const Outcome shown = RunProgram(command);
        EXPECT_EQ(shown.errors.find("Error"), std::string::npos) << shown.errors;
        for (const fs::path& document : documents) EXPECT_TRUE(fs::exists(Shown(document))) << document;
    }
    fs::path Shown(const fs::path& document) const {
        return folder_ / "shown" / document.filename().replace_extension(".pdf");
    }
    static bool CanShow() { return HasTool("soffice") && HasTool("pdftotext"); }

    ScratchFolder folder_;
};

#define SKIP_WITHOUT_WORD_PROCESSOR() \
    if (!CanShow()) GTEST_SKIP() << "soffice (LibreOffice) or pdftotext isn't installed"

/// In reading order.
std::vector<PlacedWord> SortedWords(const fs::path& document) {
    std::vector<PlacedWord> words = WordsOf(document);
    std::sort(words.begin(), words.end(), [](const PlacedWord& left, const PlacedWord& right) {
        return std::make_tuple(left.page, std::round(left.top / pointTwips), left.left) <
               std::make_tuple(right.page, std::round(right.top / pointTwips), right.left);
    });
    return words;
}

class RichTextColumns : public RichText, public testing::WithParamInterface<int> {};

TEST_P(RichTextColumns, StandWhereTheyArePrinted) {
    SKIP_WITHOUT_WORD_PROCESSOR();
    WriteFile(folder_ / "LINES.REP", LinesLayout(Database(), GetParam()));
    const fs::path document = Run("LINES", ".rtf");
    Show({document});
    const std::vector<PlacedWord> shown = SortedWords(Shown(document));
    const std::vector<PlacedWord> printed = SortedWords(Run("LINES", ".pdf"));
    ASSERT_EQ(shown.size(), printed.size());
    EXPECT_EQ(shown.back().page, (orderLines - 1) / linesOfPage);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        ASSERT_EQ(shown[i].text, printed[i].text) << "word " << i;
        // Inside an item a word processor may set its letters a little closer.
        ASSERT_NEAR(shown[i].left - documentMargin, printed[i].left - printMargin, 1.5 * pointTwips)
            << "word " << i << " \"" << shown[i].text << '"';
    }
}

INSTANTIATE_TEST_SUITE_P(Orientations, RichTextColumns, testing::Values(0, 1), [](const auto& example) {
    return std::string(example.param == 0 ? "Landscape" : "Portrait");
});

TEST_F(RichText, LabelsStandInTheirRowsAndColumns) {
    SKIP_WITHOUT_WORD_PROCESSOR();
    constexpr int across = 3;
    constexpr int down = 10;
    WriteFile(folder_ / "LABELS.REP", LabelLayout(Database()));
    Show({Run("LABELS", ".rtf")});
    std::vector<PlacedWord> words;
    for (const PlacedWord& word : SortedWords(folder_ / "shown/LABELS.pdf"))
        if (word.text.find('-') != std::string::npos) words.push_back(word);
    ASSERT_EQ(words.size(), customers);
    std::vector<std::string> ids;
    const double columns[] = {words[0].left, words[1].left, words[2].left};
    EXPECT_NEAR(columns[1] - columns[0], 2.75 * 1440 + 180 + 270,
                2 * pointTwips);  // cells begin at -180, labels at 270
    EXPECT_NEAR(columns[2] - columns[1], 2.75 * 1440, 2 * pointTwips);
    for (int i = 0; i < customers; ++i) {
        const PlacedWord& word = words[static_cast<std::size_t>(i)];
        EXPECT_EQ(word.page, i / (across * down)) << word.text;
        EXPECT_NEAR(word.left, columns[i % across], 1) << word.text;
        EXPECT_NEAR(word.top - words[0].top, i / across % down * 1440, pointTwips) << word.text;
        ids.push_back(word.text);
    }
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
}

TEST_F(RichText, OpensWithWhateverTheDataHold) {
    SKIP_WITHOUT_WORD_PROCESSOR();
    const char* const names[] = {"open { brace",    "close } brace", R"(C:\DATA\)", R"(a \''zz b)",
                                 R"(x \bin9999 y)", "}}}} {",        R"(\\\{)",     "Ωμέγα"};
    int number = 0;
    for (const char* name : names) {
        const Outcome changed = Quillform({"sql", "--write", Database().string(),
                                           "UPDATE Customers SET [Company Name] = '" + std::string(name) +
                                               "' WHERE [Customer ID] = 'US-0" + std::to_string(++number) + "'"});
        ASSERT_EQ(changed.output, "1\n") << changed.errors;
    }
    WriteFile(folder_ / "NAMES.REP", LayoutText(Database(), {{"Customer ID", 0, 0, 8, true}, {"Company", 0, 12, 40}},
                                                "\"1\",\"%D\",\"0\",\"1\"," + std::string(noLabels)));
    const fs::path document = folder_ / "NAMES.rtf";
    const Outcome run = Quillform({"run", folder_.File("NAMES.REP"), "-o", document.string()});
    EXPECT_NE(run.errors.find("7 texts hold a backslash or a brace"), std::string::npos) << run.errors;
    Show({document});
    const std::vector<PlacedWord> words = WordsOf(Shown(document));
    const auto isId = [](const PlacedWord& word) { return word.text.size() == 5 && word.text[2] == '-'; };
    EXPECT_EQ(std::count_if(words.begin(), words.end(), isId), customers);
    EXPECT_TRUE(std::any_of(words.begin(), words.end(), [](const PlacedWord& word) { return word.text == "Ωμέγα"; }));
}

/// What is wrong with the groups and tables of a document; "" if nothing.
std::string FaultOf(const std::string& document) {
    long depth = 0;
    int cells = 0, edges = 0;
    bool isInRow = false;
    for (std::size_t at = 0; at < document.size(); ++at) {
        if (document[at] == '{') ++depth;
        if (document[at] == '}' && --depth == 0 && at + 3 != document.size()) return "the document ends too early";
        if (document[at] != '\\') continue;
        std::string word;
        while (at + 1 < document.size() && std::isalpha(static_cast<unsigned char>(document[at + 1])) != 0)
            word += document[++at];
        if (word.empty()) ++at;
        if (word == "trowd") {
            if (isInRow) return "a row begins inside a row";
            isInRow = true;
            cells = edges = 0;
        }
        if (word == "cellx") ++edges;
        if (word == "cell") ++cells;
        if (word == "row") {
            if (!isInRow || cells != edges) return "a row ends with " + std::to_string(cells) + " cells";
            isInRow = false;
        }
    }
    if (isInRow) return "the last row is open";
    return depth == 0 ? "" : "a group is open";
}

TEST_F(RichText, EverySampleIsWellFormedAndOpens) {
    std::vector<fs::path> documents;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_.Path())) {
        if (entry.path().extension() != ".REP") continue;
        const std::string name = entry.path().stem().string();
        documents.push_back(Run(name, ".rtf"));
        EXPECT_EQ(FaultOf(ReadFile(documents.back())), "") << name;
        const fs::path onScreen = folder_ / (name + "-SCREEN.rtf");
        const Outcome run = Quillform({"run", "-t", "screen", entry.path().string(), "-o", onScreen.string()});
        EXPECT_NE(run.errors.find(onScreen.string()), std::string::npos) << run.errors;
        EXPECT_EQ(FaultOf(ReadFile(onScreen)), "") << name;
    }
    EXPECT_GT(documents.size(), 5U);
    if (CanShow()) Show(documents);
}

}  // namespace
}  // namespace endtoend
