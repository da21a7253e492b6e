#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"

namespace quillform {
namespace {

namespace fs = std::filesystem;

/// A folder of its own for each test.
class Files : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "quillform-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder_ = name;
    }
    void TearDown() override { fs::remove_all(folder_); }

    fs::path Put(const fs::path& name, std::string_view content = "old") const {
        fs::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name) << content;
        return folder_ / name;
    }
    std::size_t CountEntries() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }
    static mode_t ModeOf(const fs::path& path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    fs::path folder_;
};

template <typename Action>
std::optional<ErrorNumber> ErrorOf(Action action) {
    try {
        action();
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(std::string_view(error.what()).ends_with('.')) << error.what();
        return error.Number();
    }
    return std::nullopt;
}

TEST_F(Files, OutputAppearsAtCommit) {
    const fs::path target = Put("a.txt");
    const std::string large(1 << 20, 'x');
    OutputFile file(target);
    file.Write("new");
    file.Write(large);
    EXPECT_EQ(file.Position(), 3 + large.size());
    EXPECT_EQ(ReadWholeFile(target), "old");
    file.Commit();
    EXPECT_EQ(ReadWholeFile(target), "new" + large);
    EXPECT_EQ(CountEntries(), 1u);
}

TEST_F(Files, OutputLeavesNothingWithoutCommit) {
    const fs::path target = Put("a.txt");
    {
        OutputFile file(target);
        file.Write(std::string(1 << 20, 'x'));
        OutputFile other(folder_ / "b.txt");
    }
    EXPECT_EQ(ReadWholeFile(target), "old");
    EXPECT_EQ(CountEntries(), 1u);
}

// Nobody would clean up behind a writer that was killed.
TEST_F(Files, AnUnfinishedOutputHasNoName) {
    const int probe = open(folder_.c_str(), O_WRONLY | O_TMPFILE, 0600);
    if (probe < 0) GTEST_SKIP() << "the file system has no files without a name";
    close(probe);
    OutputFile file(folder_ / "a.txt");
    file.Write(std::string(1 << 20, 'x'));
    EXPECT_EQ(CountEntries(), 0u);
    file.Commit();
    EXPECT_EQ(fs::file_size(folder_ / "a.txt"), 1u << 20);
}

TEST_F(Files, OutputKeepsRightsAndLinks) {
    const fs::path target = Put("real.txt");
    ASSERT_EQ(chmod(target.c_str(), 0640), 0);
    fs::create_symlink("real.txt", folder_ / "link.txt");
    OutputFile file(folder_ / "link.txt");
    file.Commit();
    EXPECT_TRUE(fs::is_symlink(folder_ / "link.txt"));
    EXPECT_EQ(ReadWholeFile(target), "");
    EXPECT_EQ(ModeOf(target), 0640u);

    const mode_t before = umask(027);
    OutputFile fresh(folder_ / "fresh.txt");
    umask(before);
    fresh.Commit();
    EXPECT_EQ(ModeOf(folder_ / "fresh.txt"), 0640u);
}

TEST_F(Files, OutputErrors) {
    EXPECT_EQ(ErrorOf([&] { OutputFile file(folder_); }), ErrorNumber::PermissionDenied);
    EXPECT_EQ(ErrorOf([&] { OutputFile file(folder_ / "missing" / "a.txt"); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(ErrorOf([&] { OutputFile file(Put("a.txt") / "b.txt"); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(ErrorOf([&] { OutputFile file(""); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(ErrorOf([&] { OutputFile file(folder_ / std::string("a\0b", 3)); }), ErrorNumber::PathNotFound);
    if (geteuid() != 0) {
        const fs::path target = Put("locked.txt");
        ASSERT_EQ(chmod(target.c_str(), 0444), 0);
        EXPECT_EQ(ErrorOf([&] { OutputFile file(target); }), ErrorNumber::PermissionDenied);
    }
}

TEST_F(Files, FullDiskIsTold) {
    OutputFile device("/dev/full");
    device.Write("x");
    EXPECT_EQ(ErrorOf([&] { device.Commit(); }), ErrorNumber::DiskFull);

    // A limit on the size of files stands for a disk that fills up.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{100'000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto error = ErrorOf([&] {
        OutputFile file(Put("a.txt"));
        file.Write(std::string(1 << 20, 'x'));
        file.Commit();
    });
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(error, ErrorNumber::DiskFull);
    EXPECT_EQ(ReadWholeFile(folder_ / "a.txt"), "old");
    EXPECT_EQ(CountEntries(), 1u);
}

TEST_F(Files, DevicesAreWrittenThrough) {
    OutputFile file("/dev/null");
    file.Write("x");
    file.Commit();
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(Files, ReadWholeFile) {
    EXPECT_EQ(ReadWholeFile(Put("a.txt", "content")), "content");
    EXPECT_EQ(ErrorOf([&] { ReadWholeFile(folder_ / "none"); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOf([&] { ReadWholeFile(folder_); }), ErrorNumber::PermissionDenied);
}

TEST_F(Files, FindFileIsCaseBlind) {
    const fs::path file = Put("Data/Sub/Sample.mdb");
    const std::string base = folder_.string();
    for (const std::string_view tail : {"/Data/Sub/Sample.mdb", "/DATA/SUB/SAMPLE.MDB", "\\data\\sub\\sample.mdb"}) {
        const auto found = FindFile(base + std::string(tail));
        ASSERT_TRUE(found) << tail;
        EXPECT_EQ(found->path, file);
        EXPECT_FALSE(found->substituted);
    }
    EXPECT_FALSE(FindFile(base + "/data"));  // a folder is no file
    EXPECT_FALSE(FindFile(base + "/data/other.mdb"));
    EXPECT_FALSE(FindFile(""));
    EXPECT_FALSE(FindFile("\\"));
}

TEST_F(Files, FindFileTriesEveryFolderThatDiffersInCase) {
    Put("data/other.txt");
    const fs::path file = Put("DATA/sample.mdb");
    EXPECT_EQ(FindFile(folder_.string() + "/data/SAMPLE.mdb").value().path, file);
    const fs::path exact = Put("data/sample.mdb");
    EXPECT_EQ(FindFile(folder_.string() + "/data/sample.mdb").value().path, exact);
}

TEST_F(Files, FindFileOfAnotherMachine) {
    Put("first/x.txt");
    const fs::path file = Put("second/sample.MDB");
    const std::vector<fs::path> folders = {folder_ / "missing", folder_ / "first", folder_ / "second"};
    for (const std::string_view path :
         {"C:\\reptest\\Sample.mdb", "\\\\server\\share\\SAMPLE.MDB", "D:sample.mdb", "/none/sample.mdb"}) {
        const auto found = FindFile(path, folders);
        ASSERT_TRUE(found) << path;
        EXPECT_EQ(found->path, file);
        EXPECT_TRUE(found->substituted);
        EXPECT_FALSE(FindFile(path));
    }
}

TEST_F(Files, TargetPathKeepsTheName) {
    Put("Out/a.txt");
    EXPECT_EQ(TargetPath(folder_.string() + "\\OUT\\REPORT.TXT"), folder_ / "Out/REPORT.TXT");
    EXPECT_EQ(TargetPath(folder_.string() + "/Out/A.TXT"), folder_ / "Out/A.TXT");
    EXPECT_EQ(TargetPath("C:\\OUT\\A.TXT"), "C:/OUT/A.TXT");
    EXPECT_EQ(TargetPath("A.TXT"), "A.TXT");
    EXPECT_EQ(TargetPath("-"), "-");
    EXPECT_EQ(TargetPath("/A.TXT"), "/A.TXT");
    EXPECT_EQ(FileNameOf("C:\\OUT/A.TXT"), "A.TXT");
    EXPECT_EQ(FileNameOf("A.TXT"), "A.TXT");
}

TEST_F(Files, ProgramFolderIsMade) {
    ASSERT_EQ(setenv("QUILLFORM_HOME", (folder_ / "home" / "deep").c_str(), 1), 0);
    EXPECT_EQ(ProgramFolder(), (folder_ / "home" / "deep").string() + "/");
    EXPECT_TRUE(fs::is_directory(folder_ / "home" / "deep"));
    ASSERT_EQ(setenv("QUILLFORM_HOME", (Put("file") / "home").c_str(), 1), 0);
    EXPECT_EQ(ErrorOf([] { ProgramFolder(); }), ErrorNumber::PathNotFound);
    ASSERT_EQ(unsetenv("QUILLFORM_HOME"), 0);
    ASSERT_EQ(setenv("XDG_DATA_HOME", folder_.c_str(), 1), 0);
    EXPECT_EQ(ProgramFolder(), folder_.string() + "/quillform/");
    ASSERT_EQ(unsetenv("XDG_DATA_HOME"), 0);
}

}  // namespace
}  // namespace quillform
