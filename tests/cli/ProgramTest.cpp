// The built program: its words, its exit codes, and what it leaves on disk.
#include <gtest/gtest.h>

#include "endtoend/Support.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

class Program : public testing::Test {
protected:
    static void SetUpTestSuite() {
        samples_ = new ScratchFolder;
        ASSERT_EQ(Quillform({"sample", samples_->Path().string()}).exitCode, 0);
    }
    static void TearDownTestSuite() {
        delete samples_;
        samples_ = nullptr;
    }
    /// "@x" is the file x of the samples, "=x" the file x of the test's own folder.
    std::string Named(const std::string& word) const {
        if (word.starts_with('@')) return (*samples_ / word.substr(1)).string();
        if (word.starts_with('=')) return (folder_ / word.substr(1)).string();
        return word;
    }
    Outcome Run(const std::vector<std::string>& words) const {
        std::vector<std::string> named;
        for (const std::string& word : words) named.push_back(Named(word));
        return Quillform(named);
    }
    /// A copy of a sample layout with one text replaced.
    std::string Changed(const std::string& layout, const std::string& from, const std::string& to) {
        std::string text = ReadFile(*samples_ / layout);
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        if (at != std::string::npos) text.replace(at, from.size(), to);
        WriteFile(folder_ / layout, text);
        return (folder_ / layout).string();
    }

    static ScratchFolder* samples_;
    ScratchFolder folder_;
};
ScratchFolder* Program::samples_ = nullptr;

TEST_F(Program, RefusesInOneSentenceAndLeavesNothing) {
    WriteFile(folder_ / "broken.qry", "1e999,\"=\",\"a\",\"AND\",\"x\"\r\n");
    struct Case {
        std::vector<std::string> words;
        int exitCode;
        std::string named;
    };
    // Without a display; where the program is built without windows, asking for them is wrong usage.
    constexpr int noWindow = QUILLFORM_HAS_WINDOWS ? 1 : 2;
    const Case cases[] = {
        {{}, noWindow, "window"},
        {{"@STOCK.REP"}, noWindow, "window"},
        {{"ruin"}, 2, "\"ruin\""},
        {{"run"}, 2, "LAYOUT.REP"},
        {{"run", "@STOCK.REP", "--tpye", "pdf"}, 2, "--tpye"},
        {{"run", "@STOCK.REP", "-t", "gif"}, 2, "\"gif\""},
        {{"run", "@STOCK.REP", "--walk", "on-foot"}, 2, "one-pass"},
        {{"run", "@STOCK.REP", "--date", "someday"}, 2, "someday"},
        {{"run", "@STOCK.REP", "--paper", "0"}, 2, "paper"},
        {{"run", "@STOCK.REP", "--paper", "5a"}, 2, "\"5a\""},
        {{"run", "@STOCK.REP", "--orientation", "askew"}, 2, "askew"},
        {{"run", "@STOCK.REP", "@SALES.REP", "-o", "=one.pdf"}, 2, "folder"},
        {{"run", "@STOCK.REP", "--json", "-o", "-"}, 2, "standard output"},
        {{"run", "=none.REP", "-o", "=x.pdf"}, 6, "none.REP"},
        {{"run", "@STOCK.REP", "-q", "=none.qry", "-o", "=x.pdf"}, 6, "none.qry"},
        {{"run", "@STOCK.REP", "-q", "=broken.qry", "-o", "=x.pdf"}, 6, "line 1"},
        {{"run", "@", "-o", "=x.pdf"}, 6, "is a folder"},
        {{"run", "@TABLE.REP", "-o", "=x.txt", "--walk", "groups"}, 1, "a single quote; run the report in one pass"},
        {{"run", "=broken.qry", "-o", "=x.pdf"}, 6, "has no item"},
        {{"run", "@STOCK.REP", "-o", "@STOCK.REP"}, 7, "STOCK.REP"},
        {{"run", "@STOCK.REP", "-t", "pdf", "-o", "@Sample.mdb"}, 7, "Sample.mdb"},
        {{"run", "@STOCK.REP", "-d", "@", "-o", "=x.pdf"}, 5, "is a folder"},
        {{"run", "@STOCK.REP", "-d", "=none.mdb", "-o", "=x.pdf"}, 5, "none.mdb"},
        {{"run", "@STOCK.REP", "-d", "@SALES.REP", "-o", "=x.pdf"}, 5, "SALES.REP"},
        {{"run", "@STOCK.REP", "-o", "=no/x.pdf"}, 7, "no/x.pdf"},
        {{"check", "=none.REP"}, 6, "none.REP"},
        {{"tables", "=none.mdb"}, 5, "none.mdb"},
        {{"tables", "@STOCK.REP"}, 5, "STOCK.REP"},
        {{"info", "@STOCK.REP"}, 5, "STOCK.REP"},
        {{"export", "@Sample.mdb", "Nothing"}, 6, "\"Nothing\""},
        {{"export", "@Sample.mdb", "Orders", "-o", "=no/x.csv"}, 7, "no/x.csv"},
        {{"export", "@Sample.mdb", "Orders", "-o", "@Sample.mdb"}, 7, "Sample.mdb"},
        {{"sql", "@Sample.mdb", "SELEC 1"}, 1, "SELEC"},
        {{"sql", "@Sample.mdb", "DELETE FROM Orders"}, 2, "--write"},
        {{"sql", "@Sample.mdb", "SELECT * FROM Nothing"}, 6, "Nothing"},
        {{"show", "=none.rtf"}, 6, "none.rtf"},
        {{"show", "@STOCK.REP", "-o", "=x.pdf"}, 6, "STOCK.REP"},
        {{"show", "@STOCK.REP", "-o", "-", "--date", "someday"}, 6, "rich text"},
        {{"configure", "@Sample.mdb"}, noWindow, "--defaults"},
        {{"configure", "=none.mdb"}, 5, "none.mdb"},
        {{"configure", "=none.mdb", "--defaults"}, 5, "none.mdb"},
        {{"configure", "@Sample.mdb", "--answers", "=none.txt"}, 6, "none.txt"},
        {{"configure", "@Sample.mdb", "--answers", "@STOCK.REP"}, 6, "STOCK.REP, line 1"},
        {{"configure", "@Sample.mdb", "--answers", "=a", "--defaults"}, 2, "exclude"},
        {{"configure", "@Sample.mdb", "--dry-run"}, 2, "--dry-run"},
        {{"configure", "@Sample.mdb", "--defaults", "--record", "=no/a.txt"}, 7, "no/a.txt"},
        {{"configure", "@Sample.mdb", "--defaults", "--record", "@Sample.mdb"}, 7, "Sample.mdb"},
        {{"sample", "@"}, 7, "Sample.mdb"},
    };
    const auto before = Snapshot(folder_.Path());
    const auto samplesBefore = Snapshot(samples_->Path());
    for (const Case& c : cases) {
        const Outcome outcome = Run(c.words);
        const std::string shown = testing::PrintToString(c.words) + " said: " + outcome.errors;
        EXPECT_EQ(outcome.exitCode, c.exitCode) << shown;
        EXPECT_EQ(Lines(outcome.errors).size(), 1U) << shown;
        EXPECT_TRUE(outcome.errors.starts_with("quillform: ")) << shown;
        EXPECT_NE(outcome.errors.find(c.named), std::string::npos) << shown;
        EXPECT_EQ(outcome.output, "") << shown;
    }
    EXPECT_EQ(Snapshot(folder_.Path()), before);
    EXPECT_TRUE(Snapshot(samples_->Path()) == samplesBefore);
}

TEST_F(Program, EveryVerbTellsItsHelpAndVersion) {
    for (const char* verb : {"run", "configure", "check", "tables", "sql", "export", "info", "show", "sample"}) {
        const Outcome help = Run({verb, "--help"});
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_TRUE(help.output.starts_with("Usage: quillform " + std::string(verb))) << help.output;
        EXPECT_EQ(help.errors, "");
        EXPECT_EQ(Run({verb, "--version"}).output, Run({"--version"}).output);
    }
}

// What the preview shows of a report is all that its rich text holds, as text and on pages.
TEST_F(Program, ShowsRichTextOfReports) {
    if (!HasTool("pdftotext")) GTEST_SKIP() << "the program pdftotext isn't installed";
    const auto words = [](std::string text) {
        std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) <= ' '; });
        return text;
    };
    for (const char* name : {"STOCK", "ORDERS"}) {
        const std::string layout = std::string("@") + name + ".REP";
        ASSERT_EQ(Run({"run", layout, "-o", "=a.rtf"}).exitCode, 0);
        const Outcome text = Run({"show", "=a.rtf"});
        ASSERT_EQ(text.exitCode, 0) << text.errors;
        EXPECT_GT(text.output.size(), 5000U);
        ASSERT_EQ(Run({"show", "=a.rtf", "-o", "=a.pdf", "--quiet"}).exitCode, 0);
        const Outcome pages = RunProgram({"pdftotext", "-raw", (folder_ / "a.pdf").string(), "-"});
        EXPECT_EQ(words(pages.output), words(text.output)) << name;
    }
}

TEST_F(Program, CheckFindsWhatIsWrong) {
    struct Case {
        std::string from, to;
        int exitCode;
        std::string finding;
    };
    const Case cases[] = {
        {"^1", "^1", 0, ""},
        {"\"Arial\"", "\"No Such Font\"", 0, "warning: the font \"No Such Font\" is not installed"},
        {"#-1, 0,", "#-1, 500,", 6, "error: item 1 \"Stock on Hand\": stands or reaches past"},
        {"#-1,", "#850,", 6, "no catalog row 850"},
        {"#-1,", "#1850,", 6, "reports select the catalog rows 1 to 899 and not 1850"},
        {"\"True\",\"False\",\"False\",\"False\"", "\"False\",\"False\",\"False\",\"False\"", 6, "primary sort"},
        {"Sample.mdb", "Nothing.mdb", 5, "Nothing.mdb\" does not exist"},
        {"\"True\",\"1\"", "\"1e999\",\"1e999\"", 0, "warning: line 2: "},
    };
    for (const Case& c : cases) {
        const std::string layout = Changed("STOCK.REP", c.from, c.to);
        const Outcome outcome = Run({"check", layout});
        EXPECT_EQ(outcome.exitCode, c.exitCode) << c.to << ": " << outcome.output;
        EXPECT_NE(outcome.output.find(c.finding), std::string::npos) << c.to << ": " << outcome.output;
        EXPECT_EQ(outcome.output.empty(), c.finding.empty()) << c.to << ": " << outcome.output;
    }
}

TEST_F(Program, SeveralLayoutsRunAndOneThatFailsStopsNoOther) {
    const std::string target = folder_.Path().string();
    const Outcome outcome = Run({"run", "@STOCK.REP", "=none.REP", "@PRICES.REP", "-t", "txt", "-o", target});
    EXPECT_EQ(outcome.exitCode, 6);
    EXPECT_TRUE(fs::exists(folder_ / "STOCK.txt"));
    EXPECT_TRUE(fs::exists(folder_ / "PRICES.txt"));
    EXPECT_EQ(Lines(outcome.errors).size(), 1U) << outcome.errors;
}

TEST_F(Program, NoLayoutOfSeveralIsWrittenOverAnother) {
    fs::create_directory(folder_ / "other");
    fs::copy(*samples_ / "STOCK.REP", folder_ / "other");
    const Outcome outcome = Run({"run", "@STOCK.REP", "=other/STOCK.REP", "-t", "txt", "-o", "="});
    EXPECT_EQ(outcome.exitCode, 7);
    EXPECT_EQ(Lines(outcome.errors).size(), 1U) << outcome.errors;
}

TEST_F(Program, AFloodOfUnreadableLinesIsCutShort) {
    WriteFile(
        folder_ / "LONG.REP", ReadFile(*samples_ / "STOCK.REP") + std::string(500, '\n') + [] {
            std::string lines;
            for (int i = 0; i < 500; ++i) lines += "?\r\n";
            return lines;
        }());
    const Outcome outcome = Run({"run", "=LONG.REP", "-o", "=x.txt"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(Lines(outcome.errors).size(), 11U) << outcome.errors;
}

// Else the database, opened next, is standard output to all that prints.
TEST_F(Program, ClosedStandardStreamsLeaveTheDatabaseAlone) {
    fs::copy(*samples_ / "Sample.mdb", folder_ / "a.mdb");
    const std::string before = ReadFile(folder_ / "a.mdb");
    for (const char* words : {"tables --json", "info", "sql --write"}) {
        const std::string update = std::string(words) == "sql --write" ? " 'UPDATE Orders SET Freight = 1'" : "";
        const Outcome outcome = RunProgram(
            {"sh", "-c",
             std::string(QUILLFORM_PROGRAM) + " " + words + " " + Named("=a.mdb") + update + " <&- >&- 2>&-"});
        EXPECT_EQ(outcome.exitCode, 7) << words;
        EXPECT_EQ(Run({"sql", "=a.mdb", "SELECT Count(*) AS n FROM Orders"}).exitCode, 0) << words;
        EXPECT_TRUE(!update.empty() || ReadFile(folder_ / "a.mdb") == before) << words;
    }
}

TEST_F(Program, AFullDiskBehindStandardOutputIsTold) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
    for (const char* words : {"--help", "info @", "tables -c @", "tables --json -s @"}) {
        std::string command = std::string(QUILLFORM_PROGRAM) + " " + words;
        if (command.ends_with('@')) command.replace(command.size() - 1, 1, Named("@Sample.mdb"));
        EXPECT_EQ(RunProgram({"sh", "-c", command + " > /dev/full"}).exitCode, 7) << words;
    }
}

TEST_F(Program, AConditionThatIsLeftOutIsTold) {
    WriteFile(folder_ / "other.qry", "899,\"=\",\"a\",\"AND\",\"Colour\"\r\n7,\"<>\",\"a\",\"AND\",\"Account\"\r\n");
    const Outcome outcome = Run({"run", "@STOCK.REP", "-q", "=other.qry", "-o", "=x.txt", "--strict"});
    EXPECT_EQ(outcome.exitCode, 4) << outcome.errors;
    EXPECT_NE(outcome.errors.find("1 of 2 conditions, \"Colour\""), std::string::npos) << outcome.errors;
}

TEST_F(Program, CountsSheetsOfLabels) {
    for (const char* type : {"pdf", "rtf"}) {
        const Outcome outcome = Run({"run", "@LABELS.REP", "-t", type, "-o", "=x", "--json"});
        EXPECT_NE(outcome.output.find("\"records\": 80, \"pages\": 3,"), std::string::npos) << type << outcome.output;
    }
}

TEST_F(Program, RunsWithoutAHome) {
    const Outcome outcome = RunProgram({"env", "-u", "HOME", "-u", "QUILLFORM_HOME", "-u", "XDG_DATA_HOME",
                                        QUILLFORM_PROGRAM, "run", Named("@STOCK.REP"), "-o", Named("=x.txt")});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
}

TEST_F(Program, ExportedRowsAgreeWithIndependentReader) {
    if (!HasTool("mdb-export")) GTEST_SKIP() << "mdb-export isn't installed";
    ASSERT_EQ(Run({"export", "@Sample.mdb", "order LINES", "-o", "=lines.csv"}).exitCode, 0);
    const auto expected = ExportedRows(*samples_ / "Sample.mdb", "Order Lines");
    EXPECT_EQ(Lines(ReadFile(folder_ / "lines.csv")).size(), expected.size() + 1);
}

TEST_F(Program, AnInterruptedExportLeavesNothing) {
    // 5.8 million rows: the signal comes while they are joined or written.
    const Outcome outcome =
        RunProgram({"timeout", "--preserve-status", "-s", "INT", "0.5", QUILLFORM_PROGRAM, "sql", Named("@Sample.mdb"),
                    "SELECT * FROM [Order Lines] AS a, [Order Lines] AS b", "-o", Named("=x.csv")});
    EXPECT_EQ(outcome.exitCode, 130) << outcome.errors;
    EXPECT_TRUE(Snapshot(folder_.Path()).empty());
}

}  // namespace
}  // namespace endtoend
