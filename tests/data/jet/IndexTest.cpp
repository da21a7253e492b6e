// B-trees that change row by row.

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <numeric>
#include <random>

#include "data/jet/IndexCheck.h"
#include "data/jet/JetDatabase.h"
#include "data/jet/JetTools.h"

namespace quillform::test {
namespace {

using jet::Format;

class JetIndex : public ::testing::TestWithParam<Format> {};

INSTANTIATE_TEST_SUITE_P(Formats, JetIndex, ::testing::Values(Format::Jet3, Format::Jet4), NameOfFormat);

/// Each change a transaction of its own, so that the trees split and shrink page by page instead of being built anew.
TEST_P(JetIndex, SingleChangesKeepTreesRight) {
    jet::JetDatabase database(std::make_unique<jet::MemoryFile>(jet::JetDatabase::MakeEmpty(GetParam(), 40000)),
                              "memory", Access::ReadWrite);
    TableDef table;
    table.Name = "T";
    table.Fields = {Column("Id", FieldType::Long), Column("Name", FieldType::Text, 100)};
    table.Indexes = {PrimaryKey("Id"), {"Name", {{"Name", false}}, false, false, false, false, false}};
    database.CreateTable(table);
    data::StoredTable& rows = Table(database, "T");
    std::mt19937 random(9);
    std::vector<int> numbers(3000);
    for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = static_cast<int>(i);
    std::shuffle(numbers.begin(), numbers.end(), random);
    const auto name = [](int number) { return "A rather long name that all share, number " + std::to_string(number); };
    std::vector<data::RowId> ids;
    for (const int number : numbers)
        ids.push_back(rows.Insert(std::vector<Value>{Value::Integer(number), Value::Text(name(number))}));
    IndexFindings findings = CheckAllIndexes(database.File());
    ASSERT_EQ(findings.fault, "");
    EXPECT_GE(findings.levels, 2u);
    // These cost a page the prefix that all its entries shared; its halves then take more room than the page had.
    for (int i = 0; i < 12; ++i) {
        const std::pair<int, Value> change[] = {{1, Value::Text(i % 2 ? "zebra" : "Aardvark " + std::to_string(i))}};
        rows.Update(ids[static_cast<std::size_t>(i)], change);
        findings = CheckAllIndexes(database.File());
        ASSERT_EQ(findings.fault, "") << i;
    }
    for (std::size_t i = 0; i < 2900; ++i) {
        rows.Delete(ids[i]);
        if (i % 900 == 0) {
            ASSERT_EQ(CheckAllIndexes(database.File()).fault, "") << i;
        }
    }
    EXPECT_EQ(CheckAllIndexes(database.File()).fault, "");
    EXPECT_EQ(rows.RowEstimate(), 100);
}

/// A database in memory that notes how many pages each commit writes.
class CountedFile final : public jet::FileAccess {
public:
    CountedFile(Format format, std::vector<std::size_t>& commits)
        : file_(jet::JetDatabase::MakeEmpty(format, 40000)), commits_(commits) {}
    std::uint64_t Size() const override { return file_.Size(); }
    void ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override { file_.ReadAt(offset, out); }
    bool IsReadOnly() const override { return false; }
    void StartWriting() override {}
    void Replace(std::span<const jet::PageImage> images, std::uint64_t newSize) override {
        commits_.push_back(images.size());
        file_.Replace(images, newSize);
    }
    void StopWriting() override {}

private:
    jet::MemoryFile file_;
    std::vector<std::size_t>& commits_;
};

/// Rows come and go one by one in a large table: none costs more than a few pages, also where the last row of a leaf
/// goes and the leaf leaves the tree.
TEST_P(JetIndex, OneRowCostsFewPages) {
    std::vector<std::size_t> commits;
    jet::JetDatabase database(std::make_unique<CountedFile>(GetParam(), commits), "memory", Access::ReadWrite);
    TableDef table;
    table.Name = "T";
    table.Fields = {Column("Id", FieldType::Long), Column("Name", FieldType::Text, 60)};
    table.Indexes = {PrimaryKey("Id"), {"Name", {{"Name", true}}, false, false, false, false, false}};
    database.CreateTable(table);
    data::StoredTable& rows = Table(database, "T");
    std::vector<data::RowId> ids;
    const auto insert = [&](int number) {
        return rows.Insert(std::vector<Value>{Value::Integer(number), Value::Text("name " + std::to_string(number))});
    };
    database.Begin();
    for (int i = 0; i < 6000; ++i) ids.push_back(insert(i));
    database.Commit();
    EXPECT_GT(commits.back(), 60u);
    commits.clear();
    const auto check = [&](int at) {
        if (at % 1000 == 0) {
            ASSERT_EQ(CheckAllIndexes(database.File()).fault, "") << at;
        }
    };
    for (int i = 2000; i < 5000; ++i) {  // in order of the key, from the middle
        rows.Delete(ids[static_cast<std::size_t>(i)]);
        check(i);
    }
    for (int i = 5999; i >= 5000; --i) {  // and from the end
        rows.Delete(ids[static_cast<std::size_t>(i)]);
        check(i);
    }
    for (int i = 2000; i < 4000; ++i) {
        insert(i);
        check(i);
    }
    const std::pair<int, Value> change[] = {{1, Value::Text("somewhere else")}};
    for (int i = 0; i < 200; ++i) rows.Update(ids[static_cast<std::size_t>(i * 7)], change);
    EXPECT_EQ(CheckAllIndexes(database.File()).fault, "");
    EXPECT_EQ(rows.RowEstimate(), 4000);
    EXPECT_LE(*std::ranges::max_element(commits), 12u);
    const auto all = std::accumulate(commits.begin(), commits.end(), std::size_t{0});
    std::cout << commits.size() << " commits, " << all << " pages, " << *std::ranges::max_element(commits)
              << " at most\n";
}

}  // namespace
}  // namespace quillform::test
