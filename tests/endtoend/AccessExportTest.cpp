// Reports as new Access databases, read back by an independent reader.
#include <gtest/gtest.h>

#include "endtoend/Support.h"
#include "platform/CodePage.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

constexpr int badTarget = 7;
const std::string exportTable = "Project1 Table";

class AccessExport : public testing::Test {
protected:
    void SetUp() override {
        const Outcome made = Quillform({"sample", folder_.Path().string()});
        ASSERT_EQ(made.exitCode, 0) << made.errors;
    }
    Outcome Run(const std::string& report, const std::string& target, const std::vector<std::string>& more = {}) {
        std::vector<std::string> command = {"run", folder_.File(report + ".REP"), "-o", folder_.File(target)};
        command.insert(command.end(), more.begin(), more.end());
        return Quillform(command);
    }

    ScratchFolder folder_;
};

TEST_F(AccessExport, HasTheRowsOfTheMergeFile) {
    if (!HasTool("mdb-export")) GTEST_SKIP() << "mdb-export isn't installed";
    for (const char* report : {"CUSTOMER", "ORDERS"}) {
        ASSERT_EQ(Run(report, "merge.csv").exitCode, 0);
        std::string merged = quillform::Utf8FromCp1252(ReadFile(folder_ / "merge.csv"));
        std::erase(merged, '\r');
        auto expected = ParseCsv(merged);
        std::erase(expected, std::vector<std::string>{""});  // blank lines that fill up a page
        for (const char* format : {"jet3", "jet4"}) {
            const Outcome run = Run(report, "out.mdb", {"--format", format});
            EXPECT_EQ(run.exitCode, 0) << run.errors;
            const Outcome read = RunProgram({"mdb-export", "-H", folder_.File("out.mdb"), exportTable});
            const auto rows = ParseCsv(read.output);
            ASSERT_EQ(rows.size(), expected.size()) << report << " " << format;
            ASSERT_GT(rows.size(), 20U) << report;
            for (std::size_t i = 0; i < rows.size(); ++i)
                ASSERT_EQ(rows[i], expected[i]) << report << " " << format << " row " << i;
        }
    }
}

TEST_F(AccessExport, NamesItsColumnsAfterTheItems) {
    if (!HasTool("mdb-schema")) GTEST_SKIP() << "mdb-schema isn't installed";
    ASSERT_EQ(Run("CUSTOMER", "out.mdb").exitCode, 0);
    const Outcome schema = RunProgram({"mdb-schema", "--no-indexes", folder_.File("out.mdb")});
    EXPECT_NE(schema.output.find("[Project1 Table]"), std::string::npos) << schema.output;
    EXPECT_NE(schema.output.find("[Country Code]\t\t\tText (5)"), std::string::npos) << schema.output;
    const auto rows = ExportedRows(folder_ / "out.mdb", exportTable);
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows[0].at("Customer Since (mmmm yyyy)"), "October 2002");
}

TEST_F(AccessExport, RefusesWhatItMustNotReplace) {
    fs::create_symlink(folder_ / "Sample.mdb", folder_ / "link.mdb");
    const auto before = Snapshot(folder_.Path());
    const std::pair<const char*, const char*> refused[] = {
        {"Sample.mdb", "You cannot use the '"},
        {"link.mdb", "You cannot use the '"},
        {"sample.MDB", "You cannot use the '"},
        {"out.txt", "You must save the Access Database to a file with an extension of 'MDB'"},
        {"missing/out.mdb", "Error #:  76"},
    };
    for (const auto& [target, said] : refused) {
        const Outcome outcome = Run("STOCK", target, {"-t", "mdb"});
        EXPECT_EQ(outcome.exitCode, badTarget) << target;
        EXPECT_NE(outcome.errors.find(said), std::string::npos) << outcome.errors;
        EXPECT_EQ(Snapshot(folder_.Path()), before) << target;
    }
}

}  // namespace
}  // namespace endtoend
