#include "data/DynasetTest.h"

#include <gtest/gtest.h>

namespace quillform::data {
namespace {

class DynasetTest : public FormatsTest {};

INSTANTIATE_TEST_SUITE_P(Formats, DynasetTest, allFormats, NameOfFormat);

TEST_P(DynasetTest, WalksBothWays) {
    const auto rows = Open("SELECT * FROM [Towns] ORDER BY Zip");
    EXPECT_EQ(rows->RecordCount(), 3);
    EXPECT_EQ(rows->Text("Town"), "Kiel");
    rows->MoveLast();
    EXPECT_EQ(rows->Text("Town"), "Trier");
    EXPECT_EQ(rows->AbsolutePosition(), 2);
    rows->MovePrevious();
    EXPECT_EQ(rows->Text("Town"), "Bonn");
    rows->MoveFirst();
    rows->MovePrevious();
    EXPECT_TRUE(rows->IsBOF());
    EXPECT_EQ(rows->AbsolutePosition(), -1);
    EXPECT_THROW(rows->MovePrevious(), RunTimeError);
}

TEST_P(DynasetTest, EditsTheCurrentRow) {
    const auto rows = Open("SELECT ID, Town, Fee FROM Members WHERE Town = 'Bonn'");
    rows->Edit();
    rows->SetValue("Town", Value::Text("Mainz"));
    EXPECT_EQ(rows->Text("Town"), "Mainz") << "the record being edited shows";
    rows->SetValue("Fee", Value::Text("3.5"));
    rows->Update();
    EXPECT_EQ(rows->Text("Town"), "Mainz");
    EXPECT_EQ(rows->Text("Fee"), "3.5");
    EXPECT_EQ(rows->LastModified(), rows->Bookmark());
    EXPECT_EQ(Dump(*database_, "SELECT Town, [Last Name] FROM Members WHERE ID = 1"), "Mainz|Miller");
    rows->Edit();
    rows->SetValue("Town", Value::Text("Gone"));
    rows->CancelUpdate();
    EXPECT_EQ(rows->Text("Town"), "Mainz");
    EXPECT_THROW(rows->Update(), RunTimeError);
    EXPECT_THROW(rows->SetValue(0, Value::Integer(1)), RunTimeError);
}

TEST_P(DynasetTest, AddsAndFindsRows) {
    const auto rows = Open("Towns");
    const std::int64_t first = rows->Bookmark();
    rows->AddNew();
    rows->SetValue("Town", Value::Text("Ulm"));
    EXPECT_TRUE(rows->Value("Zip").IsNull());
    rows->SetValue("Big", Value::Integer(2));
    rows->Update();
    EXPECT_EQ(rows->Bookmark(), first) << "the current record stays";
    EXPECT_EQ(rows->RecordCount(), 4);
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Text("Town"), "Ulm");
    rows->FindFirst("Big = 1");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Text("Town"), "Bonn");
    rows->FindFirst("Town = 'ULM' And Zip Is Null");
    EXPECT_EQ(rows->AbsolutePosition(), 3);
    rows->FindFirst("Town Like 'X*'");
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_THROW(rows->FindFirst("Nothing = 1"), RunTimeError);
}

TEST_P(DynasetTest, DeletesRows) {
    const auto rows = Open("Towns");
    rows->MoveNext();
    rows->Delete();
    EXPECT_THROW(static_cast<void>(rows->Value(0)), RunTimeError);
    rows->MoveNext();
    EXPECT_EQ(rows->Text(0), "Kiel");
    rows->Delete();
    rows->MoveNext();
    EXPECT_TRUE(rows->IsEOF());
    EXPECT_EQ(Dump(*database_, "Towns"), "Bonn|53111|1");
}

TEST_P(DynasetTest, AppendOnlyStartsEmpty) {
    const auto rows = database_->OpenRecordset("Towns", RecordsetType::Dynaset, RecordsetOption::AppendOnly);
    EXPECT_TRUE(rows->IsEOF() && rows->IsBOF());
    AddRow(*rows, {"Ulm", "-", "5"});
    EXPECT_EQ(Dump(*database_, "SELECT Town FROM Towns"), "Bonn / Trier / Kiel / Ulm");
}

TEST_P(DynasetTest, RefusesValuesThatDoNotFitAndStoresNothing) {
    const auto rows = Open("Towns");
    rows->AddNew();
    EXPECT_THROW(rows->SetValue("Big", Value::Integer(40000)), RunTimeError);
    EXPECT_THROW(rows->SetValue("Big", Value::Text("many")), RunTimeError);
    EXPECT_THROW(rows->SetValue("Town", Value::Text(std::string(21, 'x'))), RunTimeError);
    rows->CancelUpdate();
    EXPECT_EQ(Open("Towns")->RecordCount(), 3);
    EXPECT_THROW(Open("SELECT Count(Town) AS N FROM Towns"), RunTimeError);
    EXPECT_THROW(Open("SELECT Members.ID FROM Members INNER JOIN Towns ON Members.Town = Towns.Town"), RunTimeError);
}

TEST_P(DynasetTest, HandlesOnOneFileSeeEachOther) {
    const auto other = engine_->OpenDatabase(Path());
    EXPECT_EQ(Dump(*other, "SELECT Count(*) AS N FROM Towns"), "3");
    AddRow(*Open("Towns"), {"Ulm", "89073", "0"});
    EXPECT_EQ(Dump(*other, "SELECT Town FROM Towns WHERE Zip = '89073'"), "Ulm");
    const auto rows = other->OpenRecordset("Towns", RecordsetType::Dynaset);
    database_->Execute("UPDATE Towns SET Zip = 'new' WHERE Town = 'Bonn'");
    EXPECT_EQ(rows->Text("Zip"), "new");
}

TEST_P(DynasetTest, TransactionsAreWholeOrNotThere) {
    database_->BeginTrans();
    AddRow(*Open("Towns"), {"Ulm", "89073", "0"});
    EXPECT_EQ(Dump(*database_, "SELECT Count(*) AS N FROM Towns"), "4");
    database_->Rollback();
    EXPECT_EQ(Dump(*database_, "SELECT Count(*) AS N FROM Towns"), "3");
    database_->BeginTrans();
    AddRow(*Open("Towns"), {"Ulm", "89073", "0"});
    database_->CommitTrans();
    EXPECT_THROW(database_->CommitTrans(), RunTimeError);
    {
        const auto other = engine_->OpenDatabase(Path());
        other->BeginTrans();
        other->Execute("DELETE * FROM Towns");
    }
    EXPECT_EQ(Dump(*database_, "SELECT Count(*) AS N FROM Towns"), "4") << "a handle that closes drops what it began";
}

TEST_P(DynasetTest, TablesComeAndGo) {
    TableDef table =
        MakeTable("Export", {MakeField("Name", FieldType::Text, 30), MakeField("Size", FieldType::Single)});
    database_->AppendTable(table);
    EXPECT_THROW(database_->AppendTable(table), RunTimeError);
    AddRow(*Open("Export"), {"a", "0.1"});
    const TableDef* made = database_->FindTable("Export");
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->Fields[0].Type, FieldType::Text);
    EXPECT_EQ(made->Fields[0].Size, 30);
    EXPECT_EQ(made->Fields[1].Type, FieldType::Single);
    EXPECT_EQ(Dump(*database_, "SELECT * FROM Export"), "a|0.1");
    database_->DropTable("Export");
    EXPECT_EQ(database_->FindTable("Export"), nullptr);
    EXPECT_EQ(ErrorOf(*database_, "SELECT * FROM Export"), static_cast<int>(ErrorNumber::InputTableNotFound));
    EXPECT_EQ(Dump(*database_, "SELECT Town FROM Towns"), "Bonn / Trier / Kiel");
    EXPECT_THROW(database_->DropTable("Export"), RunTimeError);
}

TEST_P(DynasetTest, AnOpenRecordsetDoesNotHoldOtherTables) {
    const auto rows = Open("Towns");
    EXPECT_EQ(rows->Text(0), "Bonn");
    database_->DropTable("Payments");
    EXPECT_EQ(rows->Text(1), "53111");
    rows->MoveNext();
    EXPECT_EQ(rows->Text(0), "Trier");
}

TEST_P(DynasetTest, ReadOnlyHandlesChangeNothing) {
    const auto other = engine_->OpenDatabase(Path(), Access::ReadOnly);
    EXPECT_EQ(Dump(*other, "SELECT Count(*) AS N FROM Towns"), "3");
    const auto rows = other->OpenRecordset("Towns", RecordsetType::Dynaset);
    EXPECT_THROW(rows->AddNew(), RunTimeError);
    EXPECT_THROW(rows->Delete(), RunTimeError);
    EXPECT_THROW(other->Execute("DELETE * FROM Towns"), RunTimeError);
    EXPECT_THROW(other->DropTable("Towns"), RunTimeError);
}

}  // namespace
}  // namespace quillform::data
