// What is wrong is said in one sentence with the exit code for it, and nothing on disk changes.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "endtoend/Support.h"

namespace endtoend {
namespace {

namespace fs = std::filesystem;

constexpr int runFailed = 1;
constexpr int badDatabase = 5;
constexpr int badLayout = 6;
constexpr int badTarget = 7;

class BadInput : public testing::Test {
protected:
    void SetUp() override {
        const Outcome made = Quillform({"sample", folder_.Path().string()});
        ASSERT_EQ(made.exitCode, 0) << made.errors;
    }
    std::string Layout() const { return (folder_ / "STOCK.REP").string(); }
    std::string Database() const { return (folder_ / "Sample.mdb").string(); }

    /// Runs, and expects the exit code, a message that names `named`, and that the folder is as it was.
    void ExpectRefused(const std::vector<std::string>& arguments, int exitCode, const std::string& named) {
        const auto before = Snapshot(folder_.Path());
        const Outcome outcome = Quillform(arguments);
        EXPECT_EQ(outcome.exitCode, exitCode) << outcome.errors;
        EXPECT_NE(outcome.errors.find(named), std::string::npos) << outcome.errors;
        EXPECT_EQ(Lines(outcome.errors).size(), 1U) << outcome.errors;
        EXPECT_TRUE(Snapshot(folder_.Path()) == before) << "files changed";
    }
    std::vector<std::string> RunTo(const std::string& target) const {
        return {"run", Layout(), "-o", (folder_ / target).string()};
    }

    ScratchFolder folder_;
};

TEST_F(BadInput, MissingDatabase) {
    fs::remove(Database());
    ExpectRefused(RunTo("out.pdf"), badDatabase, "Sample.mdb");
    ExpectRefused(RunTo("out.txt"), badDatabase, "Sample.mdb");
}

TEST_F(BadInput, GarbageForADatabase) {
    WriteFile(Database(), std::string(200000, 'q'));
    ExpectRefused(RunTo("out.pdf"), badDatabase, "Sample.mdb");
}

TEST_F(BadInput, EmptyDatabaseFile) {
    WriteFile(Database(), "");
    ExpectRefused(RunTo("out.pdf"), badDatabase, "Sample.mdb");
}

TEST_F(BadInput, PipeForADatabase) {
    fs::remove(Database());
    ASSERT_EQ(::mkfifo(Database().c_str(), 0600), 0);
    ExpectRefused(RunTo("out.pdf"), badDatabase, "is not a file");
    ExpectRefused({"tables", Database()}, badDatabase, "is not a file");
}

TEST_F(BadInput, TruncatedDatabase) {
    const std::string whole = ReadFile(Database());
    for (const std::size_t kept : {std::size_t{100}, std::size_t{4096}, std::size_t{5000}, whole.size() / 3}) {
        WriteFile(Database(), std::string_view(whole).substr(0, kept));
        const auto before = Snapshot(folder_.Path());
        const Outcome outcome = Quillform(RunTo("out.pdf"));
        EXPECT_EQ(outcome.exitCode, badDatabase) << "kept " << kept << ": " << outcome.errors;
        EXPECT_TRUE(Snapshot(folder_.Path()) == before) << "kept " << kept;
        const Outcome counted = Quillform({"tables", "-l", Database()});
        EXPECT_EQ(counted.exitCode, badDatabase) << "kept " << kept << ": " << counted.errors;
    }
}

TEST_F(BadInput, PasswordProtectedDatabase) {
    const fs::path locked = CopyOfShared("jet4-password.mdb", folder_);
    if (locked.empty()) GTEST_SKIP() << "the shared sample databases aren't beside the project";
    ExpectRefused({"run", Layout(), "-d", locked.string(), "-o", (folder_ / "out.pdf").string()}, badDatabase,
                  "password");
}

TEST_F(BadInput, DatabaseWithoutCatalog) {
    const fs::path plain = CopyOfShared("jet4-northwind.mdb", folder_);
    if (plain.empty()) GTEST_SKIP() << "the shared sample databases aren't beside the project";
    ExpectRefused({"run", Layout(), "-d", plain.string(), "-o", (folder_ / "out.pdf").string()}, badDatabase,
                  "configure");
}

TEST_F(BadInput, MissingLayout) {
    fs::remove(Layout());
    ExpectRefused(RunTo("out.pdf"), badLayout, "STOCK.REP");
}

TEST_F(BadInput, LayoutThatIsNone) {
    WriteFile(Layout(), std::string("\x7f"
                                    "ELF\0\0\1\2",
                                    8) +
                            std::string(5000, '\xff'));
    const Outcome outcome = Quillform(RunTo("out.pdf"));
    EXPECT_EQ(outcome.exitCode, badLayout) << outcome.errors;
    EXPECT_FALSE(fs::exists(folder_ / "out.pdf"));
}

TEST_F(BadInput, BrokenLinesOfALayoutAreReadAsFarAsTheyGo) {
    const std::string whole = ReadFile(Layout());
    for (std::size_t kept = 20; kept < whole.size(); kept += whole.size() / 40 + 1) {
        WriteFile(Layout(), std::string_view(whole).substr(0, kept));
        const Outcome outcome = Quillform({"run", Layout(), "-d", Database(), "-o", (folder_ / "out.txt").string()});
        EXPECT_NE(outcome.exitCode, -1) << "kept " << kept;
        EXPECT_TRUE(outcome.exitCode == 0 || !outcome.errors.empty()) << "kept " << kept;
        fs::remove(folder_ / "out.txt");
    }
}

TEST_F(BadInput, TargetInAMissingFolder) { ExpectRefused(RunTo("nowhere/out.pdf"), badTarget, "nowhere"); }

TEST_F(BadInput, TargetBelowAFile) { ExpectRefused(RunTo("SALES.REP/out.pdf"), badTarget, "SALES.REP/out.pdf"); }

TEST_F(BadInput, FullDisk) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
    ExpectRefused({"run", Layout(), "-t", "txt", "-o", "/dev/full"}, badTarget, "/dev/full");
}

TEST_F(BadInput, RefusedStatementNamesItsCause) {
    // A quote in a condition's value spoils the statement; the run says what the database engine said.
    std::string layout = ReadFile(Layout());
    layout.insert(layout.rfind("*"), "& 1,\"x\",\"O'Dell\",\"=\",\"AND\"\r\n");
    WriteFile(Layout(), layout);
    const Outcome outcome = Quillform(RunTo("out.pdf"));
    EXPECT_EQ(outcome.exitCode, runFailed) << outcome.errors;
    EXPECT_NE(outcome.errors.find("closing quote"), std::string::npos) << outcome.errors;
    EXPECT_FALSE(fs::exists(folder_ / "out.pdf"));
}

TEST(Program, NeedsNoQtAndNoDisplay) {
    if (!HasTool("ldd")) GTEST_SKIP() << "ldd isn't installed";
    const Outcome libraries = RunProgram({"ldd", QUILLFORM_PROGRAM});
    for (const char* unwanted : {"Qt", "libX11", "libGL", "wayland"})
        EXPECT_EQ(libraries.output.find(unwanted), std::string::npos) << unwanted;
}

}  // namespace
}  // namespace endtoend
