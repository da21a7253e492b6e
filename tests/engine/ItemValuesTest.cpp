#include <gtest/gtest.h>

#include "engine/FakeSurroundings.h"
#include "engine/ItemValues.h"

namespace quillform {
namespace {

using testing::FakeRecordset;

struct Reading {
    std::string text;
    double number;
};

Reading Read(const Value& value, FieldType type, const std::string& mask, const CatalogRow& row) {
    FakeRecordset records({{.Name = "F", .Type = type, .Size = 50}}, {{value}});
    clssFields item;
    item.Code = 1;
    item.Mask = mask;
    item.CurrentTotal = 77;
    std::string scratch;
    GetItemValue(BindItem(item, &row, 0, records), records, item, scratch);
    EXPECT_EQ(item.SubTotal1, item.CurrentTotal);
    EXPECT_EQ(item.GrandTotal, item.CurrentTotal);
    return {item.ThisValue, item.CurrentTotal};
}

TEST(ItemValues, ColumnValuesBecomeTextAndNumber) {
    struct Case {
        Value value;
        FieldType type;
        std::string mask;
        bool numeric;
        std::string text;
        double number;
    };
    const Case cases[] = {
        {Value(), FieldType::Long, "###,###,##0", true, "", 0},
        {Value(), FieldType::Date, "mm/dd/yyyy", false, "", 0},
        {Value::Text("  x y "), FieldType::Text, "", false, "x y", 0},
        {Value::Text("x"), FieldType::Text, " ", false, "x", 0},
        {Value::Text("12abc"), FieldType::Text, "", true, "12abc", 12},
        {Value::Text("12abc"), FieldType::Text, "", false, "12abc", 0},
        {Value::Text("1234"), FieldType::Text, "#,##0", false, "1,234", 0},
        {Value::Text("n/a"), FieldType::Text, "#,##0", true, "n/a", 0},
        {Value::Integer(-1234), FieldType::Long, "###,###,##0", true, "-1,234", -1234},
        {Value::Integer(5), FieldType::Long, "", false, "5", 0},
        {Value::Currency(12345), FieldType::Currency, "0.00", true, "1.23", 1.2345},
        {Value::Single(0.1F), FieldType::Single, "", true, "0.1", 0.1},
        {Value::Double(2.5), FieldType::Double, "0.00%", true, "250.00%", 2.5},
        {Value::Boolean(true), FieldType::Boolean, " ", false, "True", 0},
        {Value::Boolean(true), FieldType::Boolean, "0", true, "True", 0},
        {Value::Date(36161.75), FieldType::Date, "yyyy-mm-dd hh:nn", false, "1999-01-01 00:00", 0},
        {Value::Date(36161.75), FieldType::Date, "", false, "1/1/1999", 0},
    };
    for (const Case& c : cases) {
        CatalogRow row;
        row.field = "F";
        row.numeric = c.numeric;
        const Reading reading = Read(c.value, c.type, c.mask, row);
        EXPECT_EQ(reading.text, c.text) << c.mask;
        EXPECT_EQ(reading.number, c.number) << c.text;
    }
}

TEST(ItemValues, TextDates) {
    struct Case {
        std::string value;
        std::string mask;
        std::string text;
    };
    const Case cases[] = {
        {"19981231", "mm/dd/yyyy", "12/31/1998"},
        {"00000000", "mm/dd/yyyy", ""},
        {"19981200", "mm/dd/yyyy", ""},
        {"1998-1-1", "mm/dd/yyyy", ""},
        {"1998/1/1", "mm/dd/yyyy", ""},
        {"19984599", "mm/dd/yyyy", "45/99/1998"},
        {"199812312359", "yyyy-mm-dd hh", "1998-12-31 00"},
        {"199812312300", "yyyy-mm-dd", ""},
        {"199812319959", "mm/dd/yyyy", "12/31/1998"},
        {"199845991159", "mm/dd/yyyy", "45/99/1998"},
        {"1330", "hh:nn", "13:30"},
        {"0000", "hh:nn", "00:00"},
        {"2400", "hh:nn", "23:59"},
        {"9999", "hh:nn", "23:59"},
        {"1275", "hh:nn AM/PM", "12:75"},
        {"abcd", "hh:nn", "00:00"},
        {"199812", "mm/dd/yyyy", "199812"},
        {"", "mm/dd/yyyy", ""},
    };
    for (const Case& c : cases) {
        std::string text;
        AppendTextDate(c.value, Mask(c.mask), text);
        EXPECT_EQ(text, c.text) << c.value;
    }
}

TEST(ItemValues, ItemsWithoutAColumnKeepWhatTheyHave) {
    FakeRecordset records(
        {{.Name = "F", .Type = FieldType::Long, .Size = 4}, {.Name = "Sum of F", .Type = FieldType::Double, .Size = 8}},
        {{Value::Integer(3), Value::Double(1234.5)}});
    std::string scratch;
    clssFields text;
    text.Text = " fixed ";
    text.CurrentTotal = text.SubTotal1 = 4;
    GetItemValue(BindItem(text, nullptr, -1, records), records, text, scratch);
    EXPECT_EQ(text.ThisValue, "fixed");
    EXPECT_EQ(text.SubTotal1, 4);

    clssFields gone;
    gone.Code = 5;
    gone.Text = "gone";
    gone.CurrentTotal = 4;
    GetItemValue(BindItem(gone, nullptr, -1, records), records, gone, scratch);
    EXPECT_EQ(gone.ThisValue, "gone");
    EXPECT_EQ(gone.CurrentTotal, 0);

    CatalogRow row;
    row.formulaFlag = row.numeric = true;
    row.field = "F";
    clssFields nameless;
    nameless.Code = 6;
    nameless.CurrentTotal = 4;
    GetItemValue(BindItem(nameless, &row, -1, records), records, nameless, scratch);
    EXPECT_EQ(nameless.ThisValue, "");
    EXPECT_EQ(nameless.SubTotal1, 4);

    row.aliasName = "Sum of F";
    clssFields formula;
    formula.Code = 6;
    formula.Mask = "#,##0.00";
    GetItemValue(BindItem(formula, &row, -1, records), records, formula, scratch);
    EXPECT_EQ(formula.ThisValue, "1234.5");  // the statement gives a formula ready, so no mask applies
    EXPECT_EQ(formula.CurrentTotal, 1234.5);

    row.aliasName = "no such column";
    EXPECT_THROW(BindItem(formula, &row, -1, records), RunTimeError);
}

}  // namespace
}  // namespace quillform
