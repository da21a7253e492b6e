// Several users of one file, and users who may not write: handles, record sets, processes.

#include <gtest/gtest.h>

#include "data/DynasetTest.h"
#include "data/OtherProcess.h"

namespace quillform::data {
namespace {

class SharingTest : public FormatsTest {
protected:
    /// The file without anybody who has it open.
    void CloseAll() {
        database_.reset();
        engine_.reset();
    }
    /// Number of the error that adding a row to the file from here ends in.
    ErrorNumber ErrorOfWriting() const {
        const auto engine = MakeEngine(clock_);
        return NumberOf([&] {
            AddRow(*engine->OpenDatabase(Path())->OpenRecordset("Towns", dynaset), {"X", "1", "2"});
        });
    }
    /// Every way to write is refused in words that name the file, and before a user types anything.
    bool RefusesEverything() const {
        const auto engine = MakeEngine(clock_);
        const auto database = engine->OpenDatabase(Path());
        const auto rows = database->OpenRecordset("Towns", dynaset);
        for (const auto& step : std::initializer_list<std::function<void()>>{
                 [&] { rows->AddNew(); }, [&] { rows->Edit(); }, [&] { rows->Delete(); },
                 [&] { database->BeginTrans(); }, [&] { database->Execute("DELETE * FROM Towns"); },
                 [&] { database->DropTable("Towns"); },
                 [&] { database->AppendTable(MakeTable("N", {MakeField("X", FieldType::Long)})); }})
            try {
                step();
                return false;
            } catch (const RunTimeError& error) {
                const std::string told = error.what();
                if (error.Number() != ErrorNumber::ReadOnly || told.find("small.db\" can only be read: ") == told.npos)
                    return false;
            }
        return true;
    }
    bool Reads() const {
        const auto engine = MakeEngine(clock_);
        return Dump(*engine->OpenDatabase(Path()), "SELECT Count(*) AS N FROM Towns") == "3";
    }
};

INSTANTIATE_TEST_SUITE_P(Formats, SharingTest, allFormats, NameOfFormat);

TEST_P(SharingTest, AnOpenDynasetTakesInWhatOthersDo) {
    const auto rows = Open("SELECT * FROM Towns WHERE Zip > '3' ORDER BY Town");
    EXPECT_EQ(Dump(*rows), "Bonn|53111|1 / Trier|54290|0");
    const auto other = engine_->OpenDatabase(Path());
    const auto others = other->OpenRecordset("Towns", dynaset);
    AddRow(*others, {"Aachen", "52062", "1"});
    AddRow(*others, {"Berlin", "10115", "1"});
    rows->FindFirst("Town = 'Aachen'");
    ASSERT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Text("Zip"), "52062");
    rows->MoveFirst();
    EXPECT_EQ(Dump(*rows), "Bonn|53111|1 / Trier|54290|0 / Aachen|52062|1") << "those that were added come last";
    others->FindFirst("Town = 'Bonn'");
    others->Delete();
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 2);
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    EXPECT_EQ(rows->Text("Town"), "Aachen");
    AddRow(*rows, {"Cham", "93413", "0"});
    others->MoveLast();
    EXPECT_EQ(others->Text("Town"), "Cham");
}

TEST_P(SharingTest, ARowThatAnotherDeletedIsSaidToBeGone) {
    const auto rows = Open("Towns");
    database_->Execute("DELETE * FROM Towns WHERE Town = 'Bonn'");
    EXPECT_EQ(NumberOf([&] { static_cast<void>(rows->Value(0)); }), ErrorNumber::NoCurrentRecord);
    rows->MoveNext();
    EXPECT_EQ(rows->Text(0), "Trier");
    rows->MoveFirst();
    EXPECT_EQ(rows->Text(0), "Trier");
}

/// Tables are known by their place, which moves when another one goes.
TEST_P(SharingTest, AnOpenDynasetFollowsItsTable) {
    const auto rows = Open("Towns");
    database_->DropTable("Payments");
    database_->DropTable("Members");
    AddRow(*rows, {"Ulm", "89073", "0"});
    rows->SetBookmark(rows->LastModified());
    rows->Edit();
    rows->SetValue("Big", Value::Integer(7));
    rows->Update();
    database_->AppendTable(MakeTable("A first one", {MakeField("X", FieldType::Long)}));
    EXPECT_EQ(rows->Text("Big"), "7");
    rows->FindFirst("Big = 7");
    rows->Delete();
    EXPECT_EQ(Dump(*database_, "SELECT Town FROM Towns"), "Bonn / Trier / Kiel");
    database_->DropTable("Towns");
    EXPECT_EQ(NumberOf([&] { rows->MoveFirst(); }), ErrorNumber::TableNotFound);
    EXPECT_EQ(NumberOf([&] { AddRow(*rows, {"Ulm", "-", "-"}); }), ErrorNumber::TableNotFound);
    database_->AppendTable(MakeTable("Towns", {MakeField("Else", FieldType::Memo)}));
    EXPECT_EQ(NumberOf([&] { rows->MoveLast(); }), ErrorNumber::TableNotFound) << "another table of that name";
}

TEST_P(SharingTest, AWriterInAnotherProcessLocksTheFile) {
    CloseAll();
    {
        const WaitingProcess writer([this] {
            auto engine = MakeEngine(clock_);
            auto database = engine->OpenDatabase(Path());
            database->BeginTrans();
            database->Execute("UPDATE Towns SET Big = 5");
            engine->OpenDatabase(Path(), Access::ReadOnly);  // a look at the file takes no lock away
            return std::pair(std::move(engine), std::move(database));
        });
        ASSERT_TRUE(writer.IsReady());
        EXPECT_EQ(static_cast<int>(ErrorOfWriting()), 3260);
    }
    EXPECT_EQ(ErrorOfWriting(), ErrorNumber{}) << "what the other began is taken back";
    EXPECT_EQ(Dump(*MakeEngine(clock_)->OpenDatabase(Path()), "SELECT Town FROM Towns WHERE Big = 5"), "");
}

TEST_P(SharingTest, ReadOnlyFilesAndFoldersAreReadAndNotWritten) {
    CloseAll();
    using std::filesystem::perms;
    constexpr perms read = perms::owner_read | perms::group_read | perms::others_read;
    constexpr perms write = perms::owner_write | perms::group_write | perms::others_write;
    constexpr perms enter = perms::owner_exec | perms::group_exec | perms::others_exec;
    constexpr std::pair<perms, perms> cases[] = {{read, read | write | enter}, {read | write, read | enter}};
    for (const auto& [file, folder] : cases) {
        std::filesystem::permissions(Path(), file);
        std::filesystem::permissions(folder_.Path(), folder);
        const auto tryBoth = [&] { return Reads() && RefusesEverything() && Reads() ? 0 : 1; };
        EXPECT_EQ(InOtherProcess(tryBoth, true), 0);
    }
    std::filesystem::permissions(folder_.Path(), perms::owner_all);
    std::filesystem::permissions(Path(), perms::none);
    const auto open = [&] { return ErrorOfWriting() == ErrorNumber::NoPermission ? 0 : 1; };
    std::filesystem::permissions(folder_.Path(), read | enter);
    EXPECT_EQ(InOtherProcess(open, true), 0);
    std::filesystem::permissions(folder_.Path(), perms::owner_all);
}

TEST_P(SharingTest, AFileThatIsGoneOrAnotherTakesNoRows) {
    const std::filesystem::path aside = Path() + ".aside";
    const auto rows = Open("Towns");
    const auto add = [&] { AddRow(*rows, {"Ulm", "89073", "0"}); };
    const auto expectRefusal = [&] {
        const std::function<void()> steps[] = {
            add,
            [&] { rows->AddNew(); },
            [&] { rows->Edit(); },
            [&] { rows->Delete(); },
            [&] { Open("Towns"); },
            [&] { database_->BeginTrans(); },
            [&] { database_->Execute("DELETE * FROM Towns"); },
            [&] { database_->DropTable("Towns"); },
            [&] { database_->AppendTable(MakeTable("N", {MakeField("X", FieldType::Long)})); }};
        for (const auto& step : steps) EXPECT_EQ(NumberOf(step), ErrorNumber::FileMissing) << &step - steps;
    };
    std::filesystem::rename(Path(), aside);
    expectRefusal();
    EXPECT_EQ(Dump(*rows), "Bonn|53111|1 / Trier|54290|0 / Kiel|24103|1") << "what is at hand can be read";
    EXPECT_EQ(NumberOf([&] { engine_->OpenDatabase(Path()); }), ErrorNumber::FileMissing);
    std::filesystem::copy_file(aside, Path());
    expectRefusal();
    {
        const auto other = engine_->OpenDatabase(Path());
        other->Execute("DELETE * FROM Towns WHERE Town = 'Trier'");
        EXPECT_EQ(Dump(*other, "SELECT Town FROM Towns"), "Bonn / Kiel") << "the file that is there now";
    }
    std::filesystem::rename(aside, Path());
    rows->MoveFirst();
    add();
    EXPECT_EQ(Dump(*database_, "SELECT Town FROM Towns"), "Bonn / Trier / Kiel / Ulm");
}

/// The rows that a user typed are still there for another try when the file is back.
TEST_P(SharingTest, WhatWasTypedIsStoredWhenTheFileIsBack) {
    const auto rows = Open("Towns");
    rows->Edit();
    rows->SetValue("Town", Value::Text("Linz"));
    std::filesystem::rename(Path(), Path() + "x");
    EXPECT_EQ(NumberOf([&] { rows->Update(); }), ErrorNumber::FileMissing);
    EXPECT_EQ(rows->Text("Town"), "Linz");
    std::filesystem::rename(Path() + "x", Path());
    rows->Update();
    EXPECT_EQ(Dump(*database_, "SELECT Town FROM Towns"), "Linz / Trier / Kiel");
}

TEST_P(SharingTest, ATransactionWhoseFileWentIsNotCommitted) {
    database_->BeginTrans();
    database_->Execute("UPDATE Towns SET Big = 5");
    std::filesystem::rename(Path(), Path() + "x");
    EXPECT_EQ(NumberOf([&] { database_->CommitTrans(); }), ErrorNumber::FileMissing);
    database_->Rollback();
    std::filesystem::rename(Path() + "x", Path());
    EXPECT_EQ(Dump(*database_, "SELECT Town FROM Towns WHERE Big = 5"), "");
    CloseAll();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 1) << "nothing lies beside it";
}

TEST_P(SharingTest, ALinkThatLeadsElsewhereTakesNoRows) {
    const std::string link = folder_.File("link.db"), copy = folder_.File("copy.db");
    CloseAll();
    std::filesystem::create_symlink(Path(), link);
    std::filesystem::copy_file(Path(), copy);
    const auto engine = MakeEngine(clock_);
    const auto database = engine->OpenDatabase(link);
    const auto rows = database->OpenRecordset("Towns", dynaset);
    AddRow(*rows, {"Ulm", "89073", "0"});
    std::filesystem::remove(link);
    std::filesystem::create_symlink(copy, link);
    EXPECT_EQ(NumberOf([&] { AddRow(*rows, {"Rom", "00100", "0"}); }), ErrorNumber::FileMissing);
    EXPECT_EQ(Dump(*engine->OpenDatabase(link), "SELECT Town FROM Towns"), "Bonn / Trier / Kiel");
    EXPECT_EQ(Dump(*database, "SELECT Town FROM Towns"), "Bonn / Trier / Kiel / Ulm");
}

TEST_P(SharingTest, ARelativePathOutlivesTheWorkingFolder) {
    CloseAll();
    const auto work = [&] {
        std::filesystem::current_path(folder_.Path());
        const auto engine = MakeEngine(clock_);
        const auto database = engine->OpenDatabase("small.db");
        std::filesystem::current_path("/");
        database->Execute("DELETE * FROM Towns WHERE Town <> 'Kiel'");
        return Dump(*database, "SELECT Town FROM Towns") == "Kiel" ? 0 : 1;
    };
    EXPECT_EQ(InOtherProcess(work), 0);
    EXPECT_EQ(Dump(*MakeEngine(clock_)->OpenDatabase(Path()), "SELECT Town FROM Towns"), "Kiel");
}

/// Somebody protects the file, or its folder, or takes away the way to it, while it is open.
TEST_P(SharingTest, AFileThatIsProtectedWhileItIsOpenTakesNoRows) {
    using std::filesystem::perms;
    constexpr perms all = perms::owner_all | perms::group_all | perms::others_all;
    constexpr perms read = perms::owner_read | perms::group_read | perms::others_read;
    constexpr perms enter = perms::owner_exec | perms::group_exec | perms::others_exec;
    struct Case {
        perms file, folder;
        ErrorNumber number;
    };
    const Case cases[] = {{read, all, ErrorNumber::ReadOnly},
                          {all, read | enter, ErrorNumber::ReadOnly},
                          {all, perms::none, ErrorNumber::NoPermission}};
    CloseAll();
    for (const Case& now : cases) {
        const auto work = [&] {
            const auto engine = MakeEngine(clock_);
            const auto database = engine->OpenDatabase(Path());
            const auto rows = database->OpenRecordset("Towns", dynaset);
            rows->Edit();
            rows->SetValue("Town", Value::Text("Linz"));
            std::filesystem::permissions(Path(), now.file);
            std::filesystem::permissions(folder_.Path(), now.folder);
            if (!LoseRights()) return 2;
            for (const auto& step : std::initializer_list<std::function<void()>>{
                     [&] { rows->Update(); }, [&] { rows->AddNew(); }, [&] { rows->Delete(); },
                     [&] { database->DropTable("Towns"); }})
                if (NumberOf(step) != now.number) return 3;
            return 0;
        };
        EXPECT_EQ(InOtherProcess(work), 0) << static_cast<int>(now.number);
        std::filesystem::permissions(folder_.Path(), all);
        std::filesystem::permissions(Path(), all);
        EXPECT_EQ(Dump(*MakeEngine(clock_)->OpenDatabase(Path()), "SELECT Town FROM Towns"), "Bonn / Trier / Kiel");
    }
}

TEST_P(SharingTest, DuplicateKeysAreRefusedBeforeAnythingIsWritten) {
    TableDef table = MakeTable("Keys", {MakeField("ID", FieldType::Long), MakeField("Name", FieldType::Text, 20)});
    table.Indexes = {{"PrimaryKey", {{"ID", false}}, true, true, false, false, true},
                     {"ByName", {{"Name", false}}, false, true, false, false, false}};
    database_->AppendTable(table);
    const auto rows = Open("Keys");
    for (const char* name : {"one", "two", "three"})
        AddRow(*rows, {std::to_string(rows->RecordCount() + 1).c_str(), name});
    const std::string before = Dump(*database_, "Keys");
    EXPECT_EQ(NumberOf([&] { AddRow(*rows, {"2", "four"}); }), ErrorNumber::DuplicateKey);
    EXPECT_EQ(NumberOf([&] { AddRow(*rows, {"4", "TWO"}); }), ErrorNumber::DuplicateKey);
    rows->CancelUpdate();
    rows->MoveFirst();
    rows->Edit();
    rows->SetValue("Name", Value::Text("three"));
    EXPECT_EQ(NumberOf([&] { rows->Update(); }), ErrorNumber::DuplicateKey);
    rows->CancelUpdate();
    // The first rows of these would be all right.
    const char* statements[] = {"INSERT INTO Keys (ID, Name) SELECT 5 - Members.ID, Members.Notes FROM Members",
                                "UPDATE Keys SET Name = 'same'"};
    for (const char* statement : statements)
        EXPECT_EQ(NumberOf([&] { database_->Execute(statement); }), ErrorNumber::DuplicateKey) << statement;
    EXPECT_EQ(Dump(*database_, "Keys"), before);
    database_->BeginTrans();
    AddRow(*rows, {"10", "ten"});
    EXPECT_EQ(NumberOf([&] { database_->Execute(statements[1]); }), ErrorNumber::DuplicateKey);
    database_->CommitTrans();
    EXPECT_EQ(Dump(*database_, "Keys"), before + " / 10|ten") << "a statement that fails takes only itself back";
}

/// What the form for label styles does with its record set.
TEST_P(SharingTest, RecordEditor) {
    const auto rows = Open("SELECT * FROM Towns ORDER BY Town");
    rows->MoveLast();
    rows->Delete();
    rows->MoveNext();
    ASSERT_TRUE(rows->IsEOF());
    rows->MoveFirst();
    EXPECT_EQ(rows->Text("Town"), "Bonn");
    rows->MovePrevious();
    ASSERT_TRUE(rows->IsBOF());
    rows->MoveFirst();
    AddRow(*rows, {"Aachen", "52062", "1"});
    rows->FindFirst("[Town] = 'Aachen'");
    EXPECT_EQ(rows->AbsolutePosition() + 1, 3);
    rows->Edit();
    rows->SetValue("Big", Value::Text("4"));
    rows->Update();
    rows->MoveFirst();
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Text("Town"), "Aachen");
    rows->Delete();
    rows->MoveNext();
    rows->MoveLast();
    EXPECT_EQ(rows->Text("Town"), "Kiel");
    for (rows->MoveFirst(); !rows->IsEOF(); rows->MoveNext()) rows->Delete();
    EXPECT_FALSE(rows->HasRows());
    rows->AddNew();
    rows->SetValue("Town", Value::Text("Ulm"));
    rows->Update();
    rows->FindFirst("Town = 'Ulm'");
    EXPECT_EQ(rows->AbsolutePosition(), 0);
}

}  // namespace
}  // namespace quillform::data
