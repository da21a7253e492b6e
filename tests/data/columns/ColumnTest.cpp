#include <gtest/gtest.h>

#include <random>

#include "data/columns/Column.h"
#include "data/columns/SpillStore.h"

namespace quillform::data {
namespace {

Value RandomValue(ValueKind kind, std::mt19937& random) {
    if (random() % 7 == 0) return {};
    switch (kind) {
        case ValueKind::Boolean:
            return Value::Boolean(random() % 2 == 0);
        // Small numbers first, then ever wider ones, so that blocks of every width come up.
        case ValueKind::Integer:
            return Value::Integer(static_cast<std::int32_t>(random()) >> (random() % 32));
        case ValueKind::Currency:
            return Value::Currency(static_cast<std::int64_t>(random()) * 1000003);
        case ValueKind::Single:
            return Value::Single(static_cast<float>(random()) / 7);
        case ValueKind::Double:
            return Value::Double(static_cast<double>(random()) / 7);
        case ValueKind::Date:
            return Value::Date(static_cast<double>(random() % 100000) / 2);
        case ValueKind::Text:
            return Value::Text(std::string(random() % 20, 'x') + std::to_string(random()));
        case ValueKind::Binary:
            return Value::Binary(std::string(random() % 5, '\0'));
        default:
            return Value::Decimal("-1.25");
    }
}

TEST(Column, GivesBackWhatWasPutInAcrossBlocks) {
    std::mt19937 random(7);
    for (const ValueKind kind :
         {ValueKind::Boolean, ValueKind::Integer, ValueKind::Currency, ValueKind::Single, ValueKind::Double,
          ValueKind::Date, ValueKind::Text, ValueKind::Binary, ValueKind::Decimal}) {
        ColumnBuilder builder(kind, SpillStore::Make());
        std::vector<Value> values;
        for (std::size_t i = 0; i < Column::blockRows * 2 + 5; ++i) {
            values.push_back(RandomValue(kind, random));
            builder.Append(values.back());
        }
        const auto column = builder.Finish();
        ASSERT_EQ(column->Size(), values.size());
        for (RowPosition row = 0; row < values.size(); ++row)
            ASSERT_EQ(Value(column->At(row)), values[row]) << "kind " << static_cast<int>(kind) << " row " << row;
    }
}

TEST(Column, KeepsTheWidestNumbers) {
    ColumnBuilder builder(ValueKind::Integer, SpillStore::Make());
    const std::int64_t numbers[] = {0, 127, -128, 128, 32767, -32769, 2147483647, 2147483648LL, INT64_MAX, INT64_MIN};
    for (const std::int64_t number : numbers) builder.Append(Value::Integer(number));
    const auto column = builder.Finish();
    for (RowPosition row = 0; row < std::size(numbers); ++row) EXPECT_EQ(column->Whole(row), numbers[row]);
}

TEST(Column, ConvertsStrayKinds) {
    ColumnBuilder builder(ValueKind::Text, SpillStore::Make());
    builder.Append(Value::Double(0.5));
    builder.Append(Value::Boolean(true));
    const auto column = builder.Finish();
    EXPECT_EQ(column->Text(0), "0.5");
    EXPECT_EQ(column->Text(1), "True");
}

TEST(SpillStore, RowsBeyondTheBudgetStayReadable) {
    const auto store = SpillStore::Make(1 << 16);
    std::vector<std::shared_ptr<const Column>> columns;
    for (int n = 0; n < 4; ++n) {
        ColumnBuilder builder(ValueKind::Text, store);
        for (int i = 0; i < 40000; ++i) builder.Append(Value::Text(std::to_string(n) + "/" + std::to_string(i)));
        columns.push_back(builder.Finish());
    }
    EXPECT_LE(store->HeapBytes(), std::size_t{1} << 16);
    EXPECT_GT(store->FileBytes(), std::size_t{1} << 20);
    for (int n = 0; n < 4; ++n)
        for (const int i : {0, 16383, 16384, 39999})
            EXPECT_EQ(columns[static_cast<std::size_t>(n)]->Text(static_cast<RowPosition>(i)),
                      std::to_string(n) + "/" + std::to_string(i));
    columns.clear();
    EXPECT_EQ(store->HeapBytes() + store->FileBytes(), 0U);
}

}  // namespace
}  // namespace quillform::data
