#include <gtest/gtest.h>

#include "ScratchFolder.h"
#include "cli/Arguments.h"
#include "cli/RowWriter.h"
#include "engine/FakeSurroundings.h"

namespace quillform::cli {
namespace {

constexpr Switch switches[] = {{'o', "output", "FILE", ""}, {'v', "verbose", "", ""}, {'q', "quiet", "", ""}};

std::string Parsed(const std::vector<std::string_view>& words) {
    try {
        const Arguments arguments(words, switches);
        std::string text;
        for (const Switch& s : switches)
            if (arguments.Has(s.name)) text += std::string(s.name) + "=" + *arguments.Value(s.name) + " ";
        for (const std::string& operand : arguments.Operands()) text += operand + " ";
        return text;
    } catch (const UsageError& error) {
        return error.what();
    }
}

TEST(Arguments, SwitchesAndOperands) {
    struct Case {
        std::vector<std::string_view> words;
        std::string_view parsed;
    };
    const Case cases[] = {
        {{"a", "-o", "x", "b"}, "output=x a b "},
        {{"-ox", "--verbose"}, "output=x verbose= "},
        {{"-vqo", "x"}, "output=x verbose= quiet= "},
        {{"--output=a=b", "-"}, "output=a=b - "},
        {{"--output="}, "output= "},
        {{"--", "-v", "--quiet"}, "-v --quiet "},
        {{"-o"}, "the switch -o needs a value"},
        {{"--output"}, "the switch --output needs a value"},
        {{"--verbose=1"}, "the switch --verbose takes no value"},
        {{"--verb"}, "there is no switch --verb"},
        {{"-x"}, "there is no switch -x"},
    };
    for (const Case& c : cases) EXPECT_EQ(Parsed(c.words), c.parsed);
}

TEST(RowWriter, ADateOutsideTheCalendarIsItsNumber) {
    for (const auto& [serial, text] : {std::pair(3000000.5, "3000000.5"), std::pair(-700000.5, "-700000.5"),
                                       std::pair(-657434.0, "0100-01-01"), std::pair(2958465.0, "9999-12-31")}) {
        std::string written;
        AppendMachineText(Value::Date(serial), written);
        EXPECT_EQ(written, text);
    }
}

// Names of files may be any bytes.
TEST(RowWriter, JsonIsAlwaysUtf8) {
    for (const auto& [text, json] :
         {std::pair("\xC3\xA4 \xF0\x9F\x98\x80", "\"\xC3\xA4 \xF0\x9F\x98\x80\""), std::pair("a\xFF"
                                                                                             "b\xC3",
                                                                                             "\"a\xEF\xBF\xBD"
                                                                                             "b\xEF\xBF\xBD\"")}) {
        std::string written;
        AppendJsonText(text, written);
        EXPECT_EQ(written, json);
    }
}

TEST(RowWriter, RowsAsCsvAndJson) {
    using quillform::testing::FakeRecordset;
    const std::vector<Field> fields = {{.Name = "a, b", .Type = FieldType::Text, .Size = 9},
                                       {.Name = "n", .Type = FieldType::Double, .Size = 8}};
    const quillform::testing::Rows rows = {
        {Value::Text("x\"y"), Value::Double(0.1)},      {Value::Text(""), Value()},
        {Value::Text("l\n"), Value::Date(36160.75)},    {Value(), Value::Date(0.5)},
        {Value::Text("\x01"), Value::Currency(-12345)}, {Value::Binary("\x0f\xff"), Value::Boolean(true)},
        {Value::Text("e"), Value::Single(0.1F)},
    };
    const std::string csv =
        "\"a, b\",n\r\n\"x\"\"y\",0.1\r\n\"\",\r\n\"l\n\",1998-12-31 "
        "18:00:00\r\n,12:00:00\r\n\x01,-1.2345\r\n0fff,True\r\ne,0.1\r\n";
    const std::string json =
        "[\n{\"a, b\": \"x\\\"y\", \"n\": 0.1},\n{\"a, b\": \"\", \"n\": null},\n{\"a, b\": \"l\\u000a\", \"n\": "
        "\"1998-12-31 "
        "18:00:00\"},\n{\"a, b\": null, \"n\": \"12:00:00\"},\n{\"a, b\": \"\\u0001\", \"n\": -1.2345},\n{\"a, b\": "
        "\"0fff\", \"n\": "
        "true},\n{\"a, b\": \"e\", \"n\": 0.1}\n]\n";
    for (const auto& [format, expected] : {std::pair(RowFormat::Csv, csv), std::pair(RowFormat::Json, json)}) {
        const ScratchFolder folder;
        FakeRecordset records(fields, rows);
        OutputFile file(folder.File("rows"));
        EXPECT_TRUE(WriteRows(records, format, file, [] { return false; }));
        file.Commit();
        EXPECT_EQ(ReadWholeFile(folder.File("rows")), expected);
    }
}

}  // namespace
}  // namespace quillform::cli
