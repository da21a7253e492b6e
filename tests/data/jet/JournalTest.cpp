// The journal: what a process that died left half-written comes back, and nothing else is touched.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "ScratchFolder.h"
#include "data/jet/JetStorage.h"
#include "data/jet/JetTools.h"
#include "data/jet/Journal.h"
#include "data/jet/Samples.h"

namespace quillform::test {
namespace {

/// Where the content of a file of 4096-byte pages differs from another, the pages as that has them.
std::vector<jet::PageImage> ChangedPages(const std::string& before, const std::string& after) {
    std::vector<jet::PageImage> images;
    for (std::size_t at = 0; at < after.size(); at += 4096)
        if (at >= before.size() || before.compare(at, 4096, after, at, 4096) != 0)
            images.push_back({at, {reinterpret_cast<const std::uint8_t*>(after.data()) + at, 4096}});
    return images;
}

/// Lays the journal of a change to `after` beside a file.
void JournalFor(const std::filesystem::path& path, const std::string& after) {
    jet::WriteJournal(path, jet::FileHandle(path, jet::FileHandle::Mode::Read), ChangedPages(Content(path), after),
                      after.size());
}

/// A database before and after a change of several pages, and the journal of that change.
class JetJournal : public ::testing::Test {
protected:
    void SetUp() override {
        MakeSmall(file_.Path());
        before_ = Content(file_.Path());
        InsertRows(*jet::Open(file_.Path(), Access::ReadWrite), 3000);
        after_ = Content(file_.Path());
        WriteContent(file_.Path(), before_);
        JournalFor(file_.Path(), after_);
        journal_ = Content(JournalFile());
        ASSERT_GT(after_.size(), before_.size());
        ASSERT_GT(ChangedPages(before_, after_).size(), 5u);
    }
    std::filesystem::path JournalFile() const { return jet::JournalPath(file_.Path()); }

    /// The file as a writer leaves it that dies: each 512 bytes are old or new, and the end is anywhere.
    std::string HalfWritten() {
        std::string torn = after_.substr(0, before_.size() + random_() % (after_.size() - before_.size()));
        for (std::size_t at = 0; at < before_.size(); at += 512)
            if (random_() % 2) torn.replace(at, 512, before_, at, 512);
        return torn;
    }
    void Lay(const std::string& database, const std::string& journal) {
        WriteContent(file_.Path(), database);
        WriteContent(JournalFile(), journal);
    }
    /// Opens the file; the error's number, 0 for none.
    ErrorNumber Open(Access access = Access::ReadWrite) {
        return NumberOf([&] { jet::Open(file_.Path(), access); });
    }

    ScratchFile file_{"journal.mdb"};
    std::string before_, after_, journal_;
    std::mt19937 random_{3};
};

TEST_F(JetJournal, BringsBackTheOldState) {
    for (int round = 0; round < 20; ++round) {
        Lay(HalfWritten(), journal_);
        EXPECT_EQ(Open(round % 2 == 0 ? Access::ReadWrite : Access::ReadOnly), ErrorNumber{});
        ASSERT_EQ(Content(file_.Path()), before_);
        EXPECT_FALSE(std::filesystem::exists(JournalFile()));
    }
}

/// A process dies while it still writes its journal: the database wasn't touched yet.
TEST_F(JetJournal, CutOffAnywhereItIsDropped) {
    for (std::size_t length = 0; length < journal_.size(); length += length < 100 ? 1 : 397) {
        Lay(before_, journal_.substr(0, length));
        ASSERT_EQ(Open(), ErrorNumber{}) << length;
        ASSERT_EQ(Content(file_.Path()), before_) << length;
        ASSERT_FALSE(std::filesystem::exists(JournalFile())) << length;
    }
}

/// A journal that was damaged after the database had been half-written: the old state, or an error; never half a
/// change.
TEST_F(JetJournal, DamagedAnywhereItNeverPassesHalfAChange) {
    std::size_t recovered = 0;
    for (std::size_t at = 0; at < journal_.size(); at += at < 100 || at + 100 > journal_.size() ? 1 : 211) {
        std::string damaged = journal_;
        damaged[at] = static_cast<char>(damaged[at] ^ 1 << at % 8);
        const std::string half = HalfWritten();
        Lay(half, at % 3 == 0 ? damaged.substr(0, at) : damaged);
        const ErrorNumber number = Open();
        if (number == ErrorNumber{}) {
            ++recovered;
            if (at % 3 != 0) {  // one that is too short to have a head was never acted on by any writer
                ASSERT_EQ(Content(file_.Path()), before_) << at;
            }
        } else {
            ASSERT_EQ(number, ErrorNumber::DiskError);
            ASSERT_EQ(Content(file_.Path()), half) << at;
            ASSERT_TRUE(std::filesystem::exists(JournalFile()));
        }
    }
    EXPECT_GT(recovered, 40u) << "either head is enough";
}

/// Somebody puts another database, or another state of this one, in the place of the half-written one.
TEST_F(JetJournal, OfAnotherFileItIsNotPlayedBack) {
    const ScratchFile other("other.mdb");
    {
        const auto storage = jet::Create(other.Path(), jet::Format::Jet4);
        for (const char* name : {"A", "B", "C", "D", "E", "F"}) {
            TableDef table = SmallTable();
            table.Name = name;
            storage->CreateTable(table);
        }
    }
    WriteContent(file_.Path(), after_);
    std::filesystem::remove(JournalFile());
    InsertRows(*jet::Open(file_.Path(), Access::ReadWrite), 2);
    for (const std::string& content : {Content(other.Path()), Content(file_.Path()), before_.substr(0, 40960)}) {
        Lay(content, journal_);
        std::string message;
        EXPECT_EQ(NumberOf([&] { jet::Open(file_.Path(), Access::ReadWrite); }, &message), ErrorNumber::DiskError);
        EXPECT_NE(message.find("journal.mdb-journal"), std::string::npos) << message;
        EXPECT_EQ(Content(file_.Path()), content);
    }
}

TEST_F(JetJournal, OfADatabaseThatIsGoneItDoesNotHurtANewOne) {
    std::filesystem::remove(file_.Path());
    EXPECT_EQ(jet::Create(file_.Path(), jet::Format::Jet4)->Tables().size(), 4u);
    EXPECT_FALSE(std::filesystem::exists(JournalFile()));
}

TEST_F(JetJournal, ReaderWithoutRightsSaysWhatIsMissing) {
    const ScratchFolder folder;
    const std::filesystem::path path = folder / "r.mdb";
    WriteContent(path, HalfWritten());
    WriteContent(jet::JournalPath(path), journal_);
    using std::filesystem::perms;
    std::filesystem::permissions(path, perms::owner_read | perms::group_read | perms::others_read);
    std::filesystem::permissions(folder.Path(), perms::owner_all | perms::group_read | perms::group_exec |
                                                    perms::others_read | perms::others_exec);
    const auto read = [&] {
        std::string message;
        const ErrorNumber number = NumberOf([&] { jet::Open(path, Access::ReadOnly); }, &message);
        return number == ErrorNumber::NoPermission && message.find("middle of a change") != message.npos ? 0 : 1;
    };
    EXPECT_EQ(InOtherProcess(read, true), 0);
}

TEST_F(JetJournal, WhileAccessHasTheFileNothingIsPutRight) {
    std::filesystem::path lock = file_.Path();
    lock.replace_extension(".ldb");
    const std::string half = HalfWritten();
    Lay(half, journal_);
    WriteContent(lock, "MACHINE");
    EXPECT_EQ(Open(), ErrorNumber::Locked);
    EXPECT_EQ(Content(file_.Path()), half);
    std::filesystem::remove(lock);
    EXPECT_EQ(Open(), ErrorNumber{});
    EXPECT_EQ(Content(file_.Path()), before_);
}

/// Two programs that find a journal at the same time: one puts the file right, and both have it then.
TEST_F(JetJournal, TwoOpenersDoNotBlockEachOther) {
    for (int round = 0; round < 5; ++round) {
        Lay(HalfWritten(), journal_);
        const auto open = [&] { return CountRows(file_.Path()) == 100 ? 0 : 1; };
        EXPECT_EQ(InOtherProcess([&] {
                      const pid_t second = ::fork();
                      if (second == 0) ::_exit(open());
                      const int own = open();
                      int status = 0;
                      ::waitpid(second, &status, 0);
                      return own == 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : 1;
                  }),
                  0);
        EXPECT_EQ(Content(file_.Path()), before_);
    }
}

}  // namespace
}  // namespace quillform::test
