#include <gtest/gtest.h>

#include "data/columns/FieldValue.h"

namespace quillform::data {
namespace {

Field Of(FieldType type, int size = 0) {
    Field field;
    field.Name = "f";
    field.Type = type;
    field.Size = size;
    return field;
}

TEST(FieldValue, ConvertsToTheColumn) {
    struct Case {
        Field field;
        Value given;
        Value kept;
    };
    const Case cases[] = {
        {Of(FieldType::Integer), Value::Text(" 12 "), Value::Integer(12)},
        {Of(FieldType::Integer), Value::Double(2.5), Value::Integer(2)},
        {Of(FieldType::Integer), Value::Boolean(true), Value::Integer(-1)},
        {Of(FieldType::Boolean), Value::Integer(7), Value::Boolean(true)},
        {Of(FieldType::Boolean), Value::Text("false"), Value::Boolean(false)},
        {Of(FieldType::Currency), Value::Text("$1,234.56789"), Value::Currency(12345679)},
        {Of(FieldType::Date), Value::Text("12/31/1998"), Value::Date(36160)},
        {Of(FieldType::Text, 3), Value::Integer(123), Value::Text("123")},
        {Of(FieldType::Text, 3), Value(), Value()},
        {Of(FieldType::Single), Value::Double(0.1), Value::Single(0.1F)},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ValueForField(c.field, c.given, 2000), c.kept)
            << GeneralText(c.given) << " as " << FieldTypeName(c.field.Type);
}

TEST(FieldValue, RefusesWhatDoesNotFit) {
    struct Case {
        Field field;
        Value given;
        ErrorNumber error;
    };
    const Case cases[] = {
        {Of(FieldType::Integer), Value::Integer(32768), ErrorNumber::Overflow},
        {Of(FieldType::Long), Value::Double(1e300), ErrorNumber::Overflow},
        {Of(FieldType::Byte), Value::Integer(-1), ErrorNumber::Overflow},
        {Of(FieldType::Long), Value::Text("twelve"), ErrorNumber::DataTypeMismatch},
        {Of(FieldType::Date), Value::Text("soon"), ErrorNumber::DataTypeMismatch},
        {Of(FieldType::Text, 3), Value::Text("1234"), ErrorNumber::ValueTooLong},
        {Of(FieldType::Guid), Value::Text("{1}"), ErrorNumber::DataTypeMismatch},
    };
    for (const Case& c : cases) {
        try {
            ValueForField(c.field, c.given, 2000);
            ADD_FAILURE() << "took " << GeneralText(c.given) << " as " << FieldTypeName(c.field.Type);
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.Number(), c.error) << error.what();
        }
    }
}

}  // namespace
}  // namespace quillform::data
