// Programs that die, and machines that lose their power, at each call that changes a file: what a step was to do is
// done or isn't, the indexes fit the rows, and an independent reader sees the same.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "ScratchFolder.h"
#include "data/jet/DataPage.h"
#include "data/jet/FileCalls.h"
#include "data/jet/IndexCheck.h"
#include "data/jet/JetDatabase.h"
#include "data/jet/JetStorage.h"
#include "data/jet/JetTools.h"
#include "data/jet/Journal.h"
#include "data/jet/Samples.h"
#include "data/jet/UsageMap.h"

namespace quillform::test {
namespace {

using jet::Format;

enum { Id, Name, Note, Picture, Born };

TableDef PeopleTable(const char* name) {
    TableDef table;
    table.Name = name;
    table.Fields = {Column("Id", FieldType::Long), Column("Name", FieldType::Text, 80), Column("Note", FieldType::Memo),
                    Column("Picture", FieldType::LongBinary), Column("Born", FieldType::Date)};
    table.Fields[Id].AutoNumber = true;
    table.Indexes = {PrimaryKey("Id"), {"Name", {{"Name", false}, {"Born", true}}, false, true, false, false, false}};
    return table;
}

std::vector<Value> Person(int number, std::size_t noteLength = 0) {
    return {Value(), Value::Text("a person of number " + std::to_string(number)),
            noteLength > 0 ? Value::Text(std::string(noteLength, static_cast<char>('a' + number % 26))) : Value(),
            number % 9 == 0 ? Value::Binary(std::string(300, '\7')) : Value(), Value::Date(30000 + number)};
}

data::RowId RowOf(const data::StoredTable& table, int id) {
    for (const auto scan = table.Scan(); scan->Next();)
        if (scan->Value(Id).integer == id) return scan->Id();
    throw RunTimeError(ErrorNumber::NoCurrentRecord, "The row isn't there at all.");
}

std::size_t TreePages(const data::Storage& storage, const jet::JetTable& table) {
    std::size_t pages = 0;
    for (const jet::Tree& tree : table.Stored().trees)
        pages += jet::ReadUsageMap(dynamic_cast<const jet::JetDatabase&>(storage).File(), tree.map).size();
    return pages;
}

/// Adds rows one by one until the next one would split an index page; the number of that one.
int FillUpToSplit(data::Storage& storage) {
    auto& people = dynamic_cast<jet::JetTable&>(Table(storage, "People"));
    for (int number = 1;; ++number) {
        const std::size_t pages = TreePages(storage, people);
        storage.Begin();
        people.Insert(Person(number));
        people.Finish();
        if (TreePages(storage, people) > pages && number > 60) {
            storage.Rollback();
            return number;
        }
        storage.Commit();
    }
}

struct Step {
    const char* name;
    std::function<void(data::Storage&)> work;
    bool triesRecovery = false;
};

void ChangeManyRows(data::Storage& storage) {
    data::StoredTable& people = Table(storage, "People");
    storage.Begin();
    for (int i = 0; i < 250; ++i) people.Insert(Person(5000 + i * 7 % 250, i % 25 == 0 ? 5000 : 20));
    const std::pair<int, Value> change[] = {{Name, Value::Text("a longer name than the one that was there before")},
                                            {Note, Value::Text(std::string(3000, 'z'))}};
    people.Update(RowOf(people, 11), change);
    for (int id = 20; id < 50; ++id) people.Delete(RowOf(people, id));
    storage.Commit();
}

std::vector<Step> Steps(int splitting) {
    const std::pair<int, Value> longer[] = {
        {Name, Value::Text("somebody whose name takes all the room that there is, or nearly so")},
        {Note, Value::Text("and a note that stays in the row")}};
    return {
        {"a row with a long memo", [](data::Storage& s) { Table(s, "People").Insert(Person(3000, 7000)); }},
        {"a row that splits an index page",
         [splitting](data::Storage& s) { Table(s, "People").Insert(Person(splitting)); }},
        {"a row that outgrows its page",
         [longer](data::Storage& s) { Table(s, "People").Update(RowOf(Table(s, "People"), 3), longer); }},
        {"a row deleted", [](data::Storage& s) { Table(s, "People").Delete(RowOf(Table(s, "People"), 9)); }},
        {"a table made", [](data::Storage& s) { s.CreateTable(PeopleTable("Others")); }},
        {"many rows in one transaction", ChangeManyRows, true},
        {"a table dropped", [](data::Storage& s) { s.DropTable("People"); }},
    };
}

/// All that users have stored, as text; tells also of a file that isn't there or isn't right.
std::string StateOf(const std::filesystem::path& path) {
    if (!std::filesystem::exists(path)) return "no file";
    try {
        const auto storage = jet::Open(path, Access::ReadOnly);
        std::string state = CheckAllIndexes(dynamic_cast<jet::JetDatabase&>(*storage).File()).fault;
        for (std::size_t i = 0; i < storage->Tables().size(); ++i) {
            const TableDef& table = storage->Tables()[i];
            if (!table.IsSystem) state += table.Name + "\n" + CanonicalDump(storage->Rows(i), {0, 1, 2, 3, 4});
        }
        return state;
    } catch (const RunTimeError& error) {
        return error.what();
    }
}

std::string ExportOf(const std::filesystem::path& path) {
    if (!std::filesystem::exists(path)) return "no file";
    const std::string file = Quoted(path);
    return OutputOf("for table in $(mdb-tables -1 " + file + "); do echo $table; mdb-export -b hex " + file +
                    " $table; done");
}

/// The state of a file before or after a step, as both readers see it.
struct State {
    Files files{};
    std::string own{}, others{};
};

class KillTest : public ::testing::TestWithParam<Format> {
protected:
    void SetUp() override { NeverWaitForTheDisk(); }
    std::string Path() const { return folder_.File("kill.mdb"); }

    void Lay(const Files& files) {
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path()))
            std::filesystem::remove(entry.path());
        for (const auto& [path, content] : files) WriteContent(path, content);
    }
    Files Present() const {
        Files files;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path()))
            files[entry.path().string()] = Content(entry.path());
        return files;
    }
    State PresentState() const { return {Present(), StateOf(Path()), HasMdbExport() ? ExportOf(Path()) : ""}; }

    /// Runs the work in a process that dies at a call, from the state before.
    void Kill(const State& before, const std::function<void()>& work, std::size_t call, bool isHalfDone) {
        Lay(before.files);
        const int code = InOtherProcess([&] {
            DieAtCall(call, isHalfDone);
            work();
            return 0;
        });
        ASSERT_EQ(code, diedAtCall) << call;
    }

    /// Opens what is there, which puts it right, and compares.
    void Judge(const State& before, const State& after, bool mustBeAfter, const std::string& where) {
        const std::string own = StateOf(Path());
        const bool isAfter = own == after.own;
        ASSERT_TRUE(isAfter || (own == before.own && !mustBeAfter)) << where << "\n" << own.substr(0, 300);
        ASSERT_FALSE(std::filesystem::exists(jet::JournalPath(Path()))) << where;
        ++points_;
        const std::size_t share = everywhere_ ? 1 : 12;
        if (!HasMdbExport() || points_ % share != 0) return;
        ASSERT_EQ(ExportOf(Path()), isAfter ? after.others : before.others) << where;
        ++judged_;
    }

    /// Dies at each call of the work, and loses the power after each.
    void TryAll(const char* name, const State& before, const State& after, const std::function<void()>& work) {
        Lay(before.files);
        const std::vector<FileCall> calls = RecordCalls(work);
        EXPECT_GT(calls.size(), 4u);
        for (std::size_t i = 0; i < calls.size(); ++i) {
            for (const bool isHalfDone : {false, true}) {
                Kill(before, work, i, isHalfDone);
                Judge(before, after, false, std::string(name) + ", killed at call " + std::to_string(i));
                if (HasFatalFailure()) return;
            }
        }
        for (std::size_t count = 0; count <= calls.size(); ++count) {
            for (int round = 0; round < (everywhere_ ? 12 : 3); ++round) {
                Lay(AfterPowerLoss(before.files, calls, count, random_));
                Judge(before, after, count == calls.size(),
                      std::string(name) + ", no power after " + std::to_string(count) + " calls");
                if (HasFatalFailure()) return;
            }
        }
        calls_ += calls.size();
    }

    /// Dies at each call of the recovery of a file that was left in the middle of the work.
    void TryRecovery(const State& before, const std::function<void()>& work) {
        Lay(before.files);
        const std::vector<FileCall> calls = RecordCalls(work);
        Kill(before, work, calls.size() * 2 / 3, true);
        const State half{Present()};
        ASSERT_TRUE(std::filesystem::exists(jet::JournalPath(Path())));
        const auto recover = [this] { jet::Open(Path(), Access::ReadOnly); };
        const std::vector<FileCall> ofRecovery = RecordCalls(recover);
        for (std::size_t i = 0; i < ofRecovery.size(); ++i) {
            Kill(half, recover, i, i % 2 == 0);
            Judge(before, before, false, "killed at call " + std::to_string(i) + " of the recovery");
            if (HasFatalFailure()) return;
        }
        for (std::size_t count = 0; count <= ofRecovery.size(); ++count) {
            Lay(AfterPowerLoss(half.files, ofRecovery, count, random_));
            Judge(before, before, false, "no power after " + std::to_string(count) + " calls of the recovery");
            if (HasFatalFailure()) return;
        }
        calls_ += ofRecovery.size();
    }

    void Report() {
        std::cout << points_ << " points at " << calls_ << " calls, all survived; " << judged_
                  << " of them also read by mdb-export\n";
        RecordProperty("points", static_cast<int>(points_));
    }

    ScratchFolder folder_;
    std::mt19937 random_{20};
    /// Every point is shown to the independent reader, and the power fails more often: takes minutes.
    bool everywhere_ = std::getenv("QUILLFORM_KILL_EVERYWHERE") != nullptr;
    std::size_t points_ = 0, judged_ = 0, calls_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Formats, KillTest, ::testing::Values(Format::Jet3, Format::Jet4), NameOfFormat);

TEST_P(KillTest, EachStepIsWholeOrNotThere) {
    int splitting = 0;
    {
        const auto storage = jet::Create(Path(), GetParam());
        storage->CreateTable(PeopleTable("People"));
        splitting = FillUpToSplit(*storage);
    }
    State before = PresentState();
    ASSERT_EQ(before.own.find("definition"), std::string::npos) << before.own.substr(0, 300);
    for (const Step& step : Steps(splitting)) {
        const auto work = [&] { step.work(*jet::Open(Path(), Access::ReadWrite)); };
        Lay(before.files);
        work();
        const State after = PresentState();
        ASSERT_NE(before.own, after.own) << step.name;
        TryAll(step.name, before, after, work);
        ASSERT_FALSE(HasFatalFailure()) << step.name;
        if (step.triesRecovery) TryRecovery(before, work);
        ASSERT_FALSE(HasFatalFailure()) << step.name;
        before = after;
    }
    Report();
}

/// The steps above do what their names say.
TEST_P(KillTest, StepsAreWhatTheyAreCalled) {
    const auto storage = jet::Create(Path(), GetParam());
    storage->CreateTable(PeopleTable("People"));
    const std::vector<Step> steps = Steps(FillUpToSplit(*storage));
    auto& people = dynamic_cast<jet::JetTable&>(Table(*storage, "People"));
    const std::size_t pages = TreePages(*storage, people);
    steps[1].work(*storage);
    EXPECT_GT(TreePages(*storage, people), pages);
    steps[2].work(*storage);
    jet::FoundRow found;
    const jet::RowPointer home{static_cast<std::uint32_t>(RowOf(people, 3))};
    ASSERT_TRUE(jet::FindRow(dynamic_cast<jet::JetDatabase&>(*storage).File(), home, found));
    EXPECT_NE(found.place, home);
}

TEST_P(KillTest, DatabaseIsMadeWholeOrNotAtAll) {
    const State before = PresentState();
    const auto work = [&] { jet::Create(Path(), GetParam()); };
    work();
    State after = PresentState();
    TryAll("a database made", before, after, work);
    ASSERT_FALSE(HasFatalFailure());
    Lay({});
    WriteContent(Path() + "-new", "what a program left that died");
    work();
    EXPECT_EQ(StateOf(Path()), "");
    EXPECT_EQ(Present().size(), 1u);
    Report();
}

}  // namespace
}  // namespace quillform::test
