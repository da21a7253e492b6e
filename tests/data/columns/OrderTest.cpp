#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "data/collation/TextOrder.h"
#include "data/columns/ColumnIndex.h"
#include "data/columns/Sorting.h"

namespace quillform::data {
namespace {

int Compare(const Column& column, RowPosition left, RowPosition right) {
    if (column.IsNull(left) || column.IsNull(right)) return int{column.IsNull(right)} - int{column.IsNull(left)};
    if (ClassOf(column.Kind()) == CompareClass::Text) return collation::Compare(column.Text(left), column.Text(right));
    const double one = column.Number(left);
    const double other = column.Number(right);
    return one < other ? -1 : one > other;
}

/// Columns that are hard to sort: many ties, Nulls, case and accents, wide ranges, negative numbers.
std::vector<std::shared_ptr<const Column>> HardColumns(int rows) {
    std::mt19937 random(11);
    const char* words[] = {"Alfreds",
                           "ALFREDS",
                           "alfreds ",
                           "Ähre",
                           "Ahre",
                           "co-op",
                           "coop",
                           "O'Neill",
                           "ONeill",
                           "",
                           "a very long common beginning A",
                           "a very long common beginning b"};
    const ValueKind kinds[] = {ValueKind::Text, ValueKind::Integer, ValueKind::Double, ValueKind::Date,
                               ValueKind::Boolean};
    std::vector<std::shared_ptr<const Column>> columns;
    for (const ValueKind kind : kinds) {
        ColumnBuilder builder(kind, SpillStore::Make());
        for (int i = 0; i < rows; ++i) {
            const auto r = static_cast<std::uint32_t>(random());
            if (r % 11 == 0)
                builder.Append({});
            else if (kind == ValueKind::Text)
                builder.Append(
                    Value::Text(words[r % std::size(words)] + (r % 3 ? std::string() : std::to_string(r % 40))));
            else if (kind == ValueKind::Integer)
                builder.Append(Value::Integer(static_cast<std::int32_t>(r) % 50));
            else if (kind == ValueKind::Double)
                builder.Append(Value::Double((static_cast<double>(r % 100) - 50) * (r % 2 ? 1e-9 : 1e12)));
            else if (kind == ValueKind::Date)
                builder.Append(Value::Date(static_cast<double>(r % 300) / 4 - 30));
            else
                builder.Append(Value::Boolean(r % 2 == 0));
        }
        columns.push_back(builder.Finish());
    }
    return columns;
}

TEST(Sorting, AgreesWithComparingRows) {
    for (const int rows : {1, 100, 3000}) {
        const auto columns = HardColumns(rows);
        std::vector<SortKey> keys;
        for (const auto& column : columns) keys.push_back({RankAll(*column), keys.size() % 2 == 1});
        std::vector<RowPosition> expected(static_cast<std::size_t>(rows));
        std::iota(expected.begin(), expected.end(), 0U);
        std::ranges::stable_sort(expected, [&](RowPosition left, RowPosition right) {
            for (std::size_t i = 0; i < columns.size(); ++i)
                if (const int order = Compare(*columns[i], left, right))
                    return keys[i].descending ? order > 0 : order < 0;
            return false;
        });
        EXPECT_EQ(SortedOrder(keys, static_cast<std::size_t>(rows)), expected);
    }
}

TEST(Sorting, RanksAreEqualExactlyWhereValuesAre) {
    for (const auto& column : HardColumns(700)) {
        const Ranks ranks = RankAll(*column);
        for (RowPosition left = 0; left < 700; left += 3)
            for (RowPosition right = 0; right < 700; right += 5)
                ASSERT_EQ(ranks.of[left] == ranks.of[right], Compare(*column, left, right) == 0);
    }
}

TEST(ColumnIndex, FindsWhatWalkingFinds) {
    for (const auto& column : HardColumns(2000)) {
        const ColumnIndex index(column);
        for (RowPosition sought = 0; sought < 2000; sought += 17) {
            std::vector<RowPosition> expected;
            for (RowPosition row = 0; row < 2000; ++row)
                if (!column->IsNull(sought) && Compare(*column, row, sought) == 0) expected.push_back(row);
            const auto found = index.FindAt(*column, sought);
            ASSERT_TRUE(std::ranges::equal(found, expected));
        }
    }
}

TEST(ColumnIndex, NumbersOfDifferentKindsMeet) {
    ColumnBuilder whole(ValueKind::Integer, SpillStore::Make());
    ColumnBuilder money(ValueKind::Currency, SpillStore::Make());
    for (const int n : {3, 1, 2}) {
        whole.Append(Value::Integer(n));
        money.Append(Value::Currency(n * 10000));
    }
    money.Append(Value::Currency(15000));
    const auto amounts = money.Finish();
    const ColumnIndex index(whole.Finish());
    EXPECT_EQ(index.FindAt(*amounts, 0).front(), 0U);
    EXPECT_EQ(index.FindAt(*amounts, 2).front(), 2U);
    EXPECT_TRUE(index.FindAt(*amounts, 3).empty());
    EXPECT_TRUE(index.FindKey(EqualityKey(std::int64_t{-7})).empty());
}

}  // namespace
}  // namespace quillform::data
