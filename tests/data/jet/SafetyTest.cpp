// What others must not notice: tables that aren't touched, files that can't be written, programs that die, other
// processes.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <functional>
#include <map>
#include <set>

#include "data/jet/Catalog.h"
#include "data/jet/DiskFile.h"
#include "data/jet/IndexCheck.h"
#include "data/jet/JetDatabase.h"
#include "data/jet/JetStorage.h"
#include "data/jet/JetTools.h"
#include "data/jet/Journal.h"
#include "data/jet/Samples.h"
#include "platform/RunTimeError.h"

namespace quillform::test {
namespace {

using jet::Format;

/// Pages of each table by the table's definition page.
std::map<std::int32_t, std::set<std::uint32_t>> PagesByTable(const jet::PageFile& file) {
    std::map<std::int32_t, std::set<std::uint32_t>> found;
    for (const jet::CatalogEntry& entry : jet::ReadCatalog(file)) {
        if (entry.kind != jet::CatalogEntry::LocalTable) continue;
        const auto pages = PagesOfTable(file, jet::ReadTableDefinition(file, static_cast<std::uint32_t>(entry.id)));
        found[entry.id] = {pages.begin(), pages.end()};
    }
    return found;
}

struct RealFile {
    const char* file;
    const char* table;
    const char* key;
};

/// Changes one table of a real file: the rest of the file stays byte for byte as it was, and all indexes stay right.
TEST(JetSafety, OtherTablesStayAsTheyAre) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    const RealFile files[] = {{"jet3-northwind.mdb", "Customers", "ZZZZZ"},
                              {"jet4-northwind.mdb", "Customers", "ZZZZZ"},
                              {"jet4-encoded-pages.mdb", "", ""},
                              {"jet3-encoded-pages.mdb", "", ""},
                              {"jet4-overflow-rows.mdb", "", ""}};
    for (const RealFile& real : files) {
        SCOPED_TRACE(real.file);
        const ScratchFile file(real.file);
        CopySample(real.file, file.Path());
        const std::string before = Content(file.Path());
        std::set<std::uint32_t> others;
        {
            const auto storage = jet::Open(file.Path(), Access::ReadWrite);
            const auto& pages = dynamic_cast<jet::JetDatabase&>(*storage).File();
            std::string name = real.table;
            for (const TableDef& table : storage->Tables())
                if (name.empty() && !table.IsSystem) name = table.Name;
            data::StoredTable& table = Table(*storage, name);
            const auto own = dynamic_cast<jet::JetTable&>(table).Stored().page;
            for (const auto& [id, theirs] : PagesByTable(pages))
                if (id != static_cast<std::int32_t>(own)) others.insert(theirs.begin(), theirs.end());
            std::vector<data::RowId> rows;
            std::vector<std::vector<Value>> copies;
            for (const auto scan = table.Scan(); scan->Next();) {
                rows.push_back(scan->Id());
                copies.emplace_back();
                for (std::size_t i = 0; i < table.Definition().Fields.size(); ++i)
                    copies.back().emplace_back(scan->Value(static_cast<int>(i)));
            }
            if (*real.key) {
                std::vector<Value> fresh = copies.front();
                fresh[0] = Value::Text(real.key);
                const data::RowId added = table.Insert(fresh);
                const std::pair<int, Value> change[] = {{1, Value::Text("A company whose name is new")}};
                table.Update(rows[7], change);
                table.Update(added, change);
                table.Delete(rows[8]);
            } else if (!rows.empty()) {
                table.Delete(rows.back());
                table.Insert(copies.back());
            }
            EXPECT_EQ(CheckAllIndexes(pages).fault, "");
        }
        const std::string after = Content(file.Path());
        const std::size_t size = before[0x14] == 0 ? 2048 : 4096;
        EXPECT_NE(before, after);
        EXPECT_GT(others.size(), 5u);
        for (const std::uint32_t page : others)
            EXPECT_EQ(before.compare(page * size, size, after, page * size, size), 0) << "page " << page;
        EXPECT_FALSE(std::filesystem::exists(jet::JournalPath(file.Path())));
    }
}

TEST(JetSafety, UnknownSortOrderIsNotWritten) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    const ScratchFile file("cyrillic.mdb");
    CopySample("jet4-cyrillic.mdb", file.Path());
    const std::string before = Content(file.Path());
    const auto storage = jet::Open(file.Path(), Access::ReadWrite);
    EXPECT_EQ(NumberOf([&] { storage->CreateTable(SmallTable()); }), ErrorNumber::NotSupported);
    EXPECT_EQ(Content(file.Path()), before);
}

/// The disk is full: the transaction fails, and the file is as it was.
TEST(JetSafety, FullDiskChangesNothing) {
    const ScratchFile file("full.mdb");
    MakeSmall(file.Path());
    const std::string before = Content(file.Path());
    for (const std::size_t room : {std::size_t{8192}, before.size() + 3000, before.size() + 40000}) {
        const int code = InOtherProcess([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{room, room};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            const auto storage = jet::Open(file.Path(), Access::ReadWrite);
            const ErrorNumber number = NumberOf([&] { InsertRows(*storage, 5000); });
            return number == ErrorNumber::DiskFull && CountRows(file.Path()) == 100 ? 0 : 1;
        });
        EXPECT_EQ(code, 0) << room;
        EXPECT_EQ(CountRows(file.Path()), 100u);
        EXPECT_EQ(Content(file.Path()), before);
    }
}

TEST(JetSafety, SecondWriterIsLockedOut) {
    const ScratchFile file("locked.mdb");
    MakeSmall(file.Path());
    const auto storage = jet::Open(file.Path(), Access::ReadWrite);
    const auto tryToWrite = [&] {
        const auto other = std::make_shared<jet::JetDatabase>(std::make_unique<jet::DiskFile>(file.Path()), "other",
                                                              Access::ReadWrite);
        return NumberOf([&] { InsertRows(*other, 1); }) == ErrorNumber::Locked ? 0 : 1;
    };
    EXPECT_EQ(InOtherProcess(tryToWrite), 0) << "while somebody else reads";
    storage->Begin();
    EXPECT_EQ(InOtherProcess(
                  [&] { return NumberOf([&] { jet::DiskFile other(file.Path()); }) == ErrorNumber::Locked ? 0 : 1; }),
              0)
        << "while somebody else writes";
    storage->Commit();
    EXPECT_EQ(InOtherProcess([&] {
                  jet::DiskFile other(file.Path());
                  return 0;
              }),
              0)
        << "many can read";
    EXPECT_EQ(jet::Open(file.Path(), Access::ReadOnly), storage) << "one process shares one storage";
}

TEST(JetSafety, ReadOnlyFileAndFolder) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("quillform-readonly-" + std::to_string(::getpid()));
    std::filesystem::create_directory(folder);
    const std::filesystem::path path = folder / "r.mdb";
    MakeSmall(path);
    const std::string before = Content(path);
    const auto tryToWrite = [&] {
        const auto storage = jet::Open(path, Access::ReadWrite);
        return NumberOf([&] { InsertRows(*storage, 1); }) == ErrorNumber::ReadOnly && CountRows(path) == 100 ? 0 : 1;
    };
    using std::filesystem::perms;
    constexpr perms readAll = perms::owner_read | perms::group_read | perms::others_read;
    constexpr perms enter = perms::owner_exec | perms::group_exec | perms::others_exec;
    constexpr perms writeAll = perms::owner_write | perms::group_write | perms::others_write;
    std::filesystem::permissions(path, readAll);
    std::filesystem::permissions(folder, readAll | enter | writeAll);
    EXPECT_EQ(InOtherProcess(tryToWrite, true), 0) << "file";
    std::filesystem::permissions(path, readAll | writeAll);
    std::filesystem::permissions(folder, readAll | enter);
    EXPECT_EQ(InOtherProcess(tryToWrite, true), 0) << "folder";
    std::filesystem::permissions(folder, perms::owner_all);
    EXPECT_EQ(Content(path), before);
    {
        const auto storage = jet::Open(path, Access::ReadOnly);
        EXPECT_TRUE(storage->IsReadOnly());
        EXPECT_EQ(NumberOf([&] { InsertRows(*storage, 1); }), ErrorNumber::ReadOnly);
    }
    std::filesystem::remove_all(folder);
}

TEST(JetSafety, OpenByAccess) {
    const ScratchFile file("ldb.mdb");
    MakeSmall(file.Path());
    std::filesystem::path lock = file.Path();
    lock.replace_extension(".ldb");
    WriteContent(lock, "MACHINE");
    const auto storage = jet::Open(file.Path(), Access::ReadWrite);
    EXPECT_EQ(NumberOf([&] { InsertRows(*storage, 1); }), ErrorNumber::Locked);
    std::filesystem::remove(lock);
    InsertRows(*storage, 1);
    EXPECT_EQ(CountRows(file.Path()), 101u);
}

std::string WithText(std::size_t size, std::size_t at, std::string_view text) {
    std::string bytes(size, '\0');
    bytes[1] = 1;
    bytes.replace(at, text.size(), text);
    return bytes.substr(0, size);
}

TEST(JetSafety, WhatIsNotADatabaseIsNamed) {
    const ScratchFile file("bad.mdb");
    struct Case {
        std::string content;
        const char* word;
        bool looksLikeJet;
    };
    const std::string future = WithText(0x2000, 4, std::string_view("Standard Jet DB\0\x07", 17));
    const std::string ace = WithText(0x2000, 4, std::string_view("Standard ACE DB\0\x02", 17));
    const Case cases[] = {
        {"", "empty", false},
        {"Hello, this is a text.", "not an Access database", false},
        {std::string(5000, 'x'), "not an Access database", false},
        {"SQLite format 3" + std::string(5000, '\0'), "not an Access database", false},
        {ace, ".accdb", true},
        {future, "format version 7", true},
        {WithText(0x2000, 4, "MSISAM Database"), "Money", true},
        {WithText(0x2000, 0x40A, "\x09"), "2.0", true},
        {WithText(0x2000, 0x40A, "\x08"), "1.1", true},
        {Content(SampleFolder() / "jet4-minimal-a.mdb").substr(0, 100), "ends in its first page", true},
        {Content(SampleFolder() / "jet4-minimal-a.mdb").substr(0, 9000), "cut off", true},
    };
    for (const Case& bad : cases) {
        if (SampleFolder().empty() && bad.looksLikeJet && bad.content.empty()) continue;
        WriteContent(file.Path(), bad.content);
        std::string message;
        EXPECT_EQ(NumberOf([&] { jet::Open(file.Path(), Access::ReadWrite); }, &message),
                  ErrorNumber::UnrecognizedFormat);
        EXPECT_NE(message.find(bad.word), std::string::npos) << message;
        EXPECT_EQ(message.back(), '.');
        EXPECT_EQ(jet::LooksLikeJet(file.Path()), bad.looksLikeJet) << message;
    }
    EXPECT_EQ(NumberOf([&] { jet::Open("/no/such/file.mdb", Access::ReadWrite); }), ErrorNumber::FileMissing);
    EXPECT_EQ(NumberOf([&] { jet::Open(std::filesystem::temp_directory_path(), Access::ReadOnly); }),
              ErrorNumber::DiskError);
}

}  // namespace
}  // namespace quillform::test
