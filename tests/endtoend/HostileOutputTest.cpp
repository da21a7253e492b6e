// Texts that outputs have trouble with: what becomes of them is fixed, said, and keeps no reader from opening the file.
#include <gtest/gtest.h>

#include "endtoend/SmallReport.h"
#include "platform/CodePage.h"

namespace endtoend {
namespace {

using namespace quillform::sample;

struct Trap {
    std::string area;   ///< stands before the text and finds it
    std::string note;   ///< in the database
    std::string plain;  ///< in text and merge files, in Windows 1252; shown here in UTF-8
    std::string rich;   ///< in rich text, likewise
    std::string page;   ///< on a page as pdftotext reads it; empty: not compared
    std::string jet3;   ///< in an Access 97 database
};

const std::vector<Trap> traps = {
    {"A1", "say \"hi\" \"", "say \"hi\" \"", "say \"hi\" \"", "say \"hi\" \"", "say \"hi\" \""},
    {"A2", "it's 'so'", "it's 'so'", "it's 'so'", "it's 'so'", "it's 'so'"},
    {"A3", "a{b}c", "a{b}c", "a{b}c", "a{b}c", "a{b}c"},
    {"A4", "C:\\new\\par", "C:\\new\\par", "C:\\new\\par", "C:\\new\\par", "C:\\new\\par"},
    {"A5", "one, two;three", "one, two;three", "one, two;three", "one, two;three", "one, two;three"},
    {"A6", "up\r\ndown\tright", "up\r\ndown\tright", "up\r\ndown\tright", "", "up\r\ndown\tright"},
    {"A7", "€ß é “x” – œ", "€ß é “x” – œ", "€ß é “x” – œ", "€ß é “x” – œ", "€ß é “x” – œ"},
    {"A8", "Ωx中x", "?x?x", "\\u937?x\\u20013?x", "", "?x?x"},
    {"A9", "e\u0301 \U0001F600!", "e? ?!", "e\\u769? \\u-10179?\\u-8704?!", "", "e? ?!"},
};
// Ω, 中, the accent on its own and the face: four characters that Windows 1252 lacks.
constexpr int lacking = 4;

std::string AsRead(std::string text) {
    std::erase(text, '\r');
    return text;
}

class HostileText : public testing::Test {
protected:
    void SetUp() override {
        std::vector<Visit> visits;
        for (const Trap& trap : traps) visits.push_back({trap.area, "t", trap.note, 1});
        layout_ = MakeVisits(folder_, visits, {{"Area", "Area", 0, 4, 'L', Primary}, {"Note", "Note", 6, 30}});
    }
    /// The file that the report becomes, in `content`; gives what was said.
    std::string Run(const std::string& type, std::string& content, const std::vector<std::string>& more = {}) {
        target_ = folder_.File("out." + type);
        std::vector<std::string> command = {"run", layout_, "-t", type, "-o", target_, "--walk", "one-pass"};
        command.insert(command.end(), more.begin(), more.end());
        const Outcome outcome = Quillform(command);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
        content = ReadFile(target_);
        return outcome.errors;
    }
    static void ExpectIn(const std::string& content, const std::string& text, const std::string& what) {
        EXPECT_NE(content.find(text), std::string::npos) << what << ": " << text;
    }
    std::string Replaced() const {
        return "quillform: \"" + target_ + "\": " + std::to_string(lacking) +
               " characters that the Windows character set 1252 lacks became \"?\".\n";
    }

    ScratchFolder folder_;
    std::string layout_;
    std::string target_;
};

TEST_F(HostileText, InTextAndMergeFiles) {
    struct Case {
        std::string type, before, between, behind;
    };
    const Case cases[] = {
        {"txt", "", "    ", ""},
        {"csv", "\"", "\",\"", "\"\r\n"},
        {"word", "\"", "\",\"", "\"\r\n"},
        {"wordperfect", "\"\x12\n", "\x12\n\x12\n", "\x05\n\r\n"},
    };
    for (const Case& c : cases) {
        std::string content;
        const std::string said = Run(c.type, content);
        EXPECT_EQ(said, Replaced()) << c.type;
        for (const Trap& trap : traps)
            ExpectIn(content, c.before + trap.area + c.between + quillform::Cp1252FromUtf8(trap.plain) + c.behind,
                     c.type);
    }
}

TEST_F(HostileText, InRichText) {
    std::string content;
    const std::string said = Run("rtf", content);
    EXPECT_EQ(said, "quillform: \"" + target_ +
                        "\": 2 texts hold a backslash or a brace, which readers of rich text take for commands.\n");
    for (const Trap& trap : traps) ExpectIn(content, " " + quillform::Cp1252FromUtf8(trap.rich), "rtf");
    const Outcome shown = Quillform({"show", target_});
    EXPECT_EQ(shown.exitCode, 0) << shown.errors;
    for (const char* text : {"say \"hi\" \"", "it's 'so'", "€ß é “x” – œ", "Ωx中x", "\U0001F600!"})
        ExpectIn(shown.output, text, "show");
    for (const Trap& trap : traps) ExpectIn(shown.output, trap.area, "show");
}

TEST_F(HostileText, OnPaper) {
    if (!HasTool("qpdf") || !HasTool("pdftotext")) GTEST_SKIP() << "qpdf or pdftotext isn't installed";
    std::string content;
    Run("pdf", content);
    const Outcome sound = RunProgram({"qpdf", "--check", target_});
    EXPECT_EQ(sound.exitCode, 0) << sound.output << sound.errors;
    const std::string text = RunProgram({"pdftotext", "-layout", target_, "-"}).output;
    for (const Trap& trap : traps) {
        ExpectIn(text, trap.area, "pdf");
        ExpectIn(text, trap.page, "pdf");
    }
}

TEST_F(HostileText, InDatabases) {
    if (!HasTool("mdb-export")) GTEST_SKIP() << "mdb-export isn't installed";
    for (const bool isJet3 : {true, false}) {
        std::string content;
        const std::string said = Run("mdb", content, {"--format", isJet3 ? "jet3" : "jet4"});
        EXPECT_EQ(said, isJet3 ? Replaced() : "");
        const std::vector<Row> rows = ExportedRows(target_, "Project1 Table");
        ASSERT_EQ(rows.size(), traps.size());
        for (std::size_t i = 0; i + 1 < rows.size(); ++i)
            EXPECT_EQ(AsRead(rows[i].at("Note")), AsRead(isJet3 ? traps[i].jet3 : traps[i].note));
    }
    // mdb-export knows no characters beyond 16 bits, which the last row has.
    const Outcome last = Quillform({"sql", target_, "SELECT Note FROM [Project1 Table] WHERE Area = 'A9'"});
    ExpectIn(last.output, traps.back().note, "sql");
}

TEST_F(HostileText, WhatIsReplacedIsToldToProgramsToo) {
    std::string content;
    target_ = folder_.File("out.txt");
    const Outcome outcome = Quillform({"run", layout_, "-o", target_, "--json", "--quiet"});
    ExpectIn(outcome.output, "4 characters that the Windows character set 1252 lacks became \\\"?\\\".", "json");
    EXPECT_EQ(Quillform({"run", layout_, "-o", target_, "--quiet", "--strict"}).exitCode, 4);
}

TEST(HostileOutput, CharactersThatNoFontHasAreCountedOnPaper) {
    const ScratchFolder folder;
    const std::string layout = MakeVisits(folder, {{"A1", "t", "x\U000F0001y\U000F0001z", 1}},
                                          {{"Area", "Area", 0, 4, 'L', Primary}, {"Note", "Note", 6, 30}});
    const std::string target = folder.File("out.pdf");
    const Outcome outcome = Quillform({"run", layout, "-o", target});
    const std::string said = "\"" + target + "\": 2 characters that no installed font has became empty boxes.";
    EXPECT_NE(outcome.errors.find(said), std::string::npos) << outcome.errors;
}

}  // namespace
}  // namespace endtoend
