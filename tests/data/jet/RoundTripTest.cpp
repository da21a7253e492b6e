// A table of all types and many rows, added to every sample database, changed, and read back by this layer and by two
// independent readers. Everything else in the file stays as it was.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <map>

#include "ScratchFolder.h"
#include "data/jet/Catalog.h"
#include "data/jet/DiskFile.h"
#include "data/jet/FileCalls.h"
#include "data/jet/IndexCheck.h"
#include "data/jet/JetDatabase.h"
#include "data/jet/JetTools.h"
#include "data/jet/Samples.h"
#include "platform/Dates.h"

namespace quillform::test {
namespace {

constexpr const char* tableName = "Round Trip";

TableDef AllTypes(jet::Format format) {
    TableDef table;
    table.Name = tableName;
    table.Fields = {Column("Id", FieldType::Long),
                    Column("Flag", FieldType::Boolean),
                    Column("Small", FieldType::Byte),
                    Column("Whole", FieldType::Integer),
                    Column("Big", FieldType::Long),
                    Column("Money", FieldType::Currency),
                    Column("Real", FieldType::Single),
                    Column("Exact", FieldType::Double),
                    Column("Day", FieldType::Date),
                    Column("Code", FieldType::Binary, 30),
                    Column("Name", FieldType::Text, 80),
                    Column("Note", FieldType::Memo),
                    Column("Picture", FieldType::LongBinary),
                    Column("Mark", FieldType::Guid)};
    table.Fields[0].AutoNumber = true;
    if (format == jet::Format::Jet4) {
        table.Fields.push_back(Column("Price", FieldType::Decimal));
        table.Fields.back().Precision = 18;
        table.Fields.back().Scale = 4;
    }
    const auto index = [](const char* name, std::vector<IndexDef::Column> columns, bool isUnique) {
        return IndexDef{name, std::move(columns), false, isUnique, false, false, false};
    };
    table.Indexes = {PrimaryKey("Id"), index("Names", {{"Name", false}, {"Day", true}}, false),
                     index("Marks", {{"Mark", false}}, true), index("Codes", {{"Code", true}}, false),
                     index("Numbers", {{"Money", true}, {"Exact", false}, {"Flag", false}, {"Small", true}}, false)};
    return table;
}

std::string Guid(int number) {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "{%08X-1234-5678-9ABC-%012X}", static_cast<unsigned>(number) * 2654435761u,
                  static_cast<unsigned>(number));
    return text.data();
}

using Row = std::vector<Value>;

Row RowOf(int number, jet::Format format) {
    static constexpr const char* names[] = {"Anna", "bert", "Cäcilie", "D'Arcy", "Smith-Jones", "Straße", "Æsop, the"};
    const auto memo = static_cast<std::size_t>(number % 50 == 0 ? 9000 : number % 80);
    const auto picture = static_cast<std::size_t>(number % 500 == 0 ? 20000 : number % 100 + 1);
    Row row = {Value::Integer(number),
               Value::Boolean(number % 3 == 0),
               Value::Integer(number % 256),
               number % 5 == 0 ? Value() : Value::Integer(number * 7 % 60000 - 30000),
               Value::Integer(number * 100003LL - 500000000),
               Value::Currency(number * 12345LL - 5000000),
               Value::Single(static_cast<float>(number) / 4 - 100),
               Value::Double(number * 0.125 - 7),
               number % 11 == 0 ? Value() : Value::Date(30000 + number / 4.0),
               number % 4 == 0 ? Value() : Value::Binary("code" + std::to_string(number)),
               Value::Text(std::string(names[number % 7]) + " " + std::to_string(number)),
               number % 6 == 0 ? Value() : Value::Text(std::string(memo + 1, static_cast<char>('a' + number % 26))),
               number % 10 == 0 ? Value::Binary(std::string(picture, '\x01')) : Value(),
               Value::Guid(Guid(number))};
    if (format == jet::Format::Jet4) row.push_back(Value::Decimal(std::to_string(number - 50) + ".1250"));
    return row;
}

/// What is written into half of the rows later, by column.
std::vector<std::pair<int, Value>> ChangesOf(int number) {
    return {{5, Value::Currency(number * -3LL)},
            {8, number % 7 == 0 ? Value() : Value::Date(20000 + number)},
            {9, Value::Binary("changed" + std::to_string(number))},
            {10, Value::Text("Somebody with a much longer name than before, number " + std::to_string(number))},
            {11, Value::Text(std::string(static_cast<std::size_t>(number % 97 == 0 ? 5000 : 90), 'q'))},
            {12, number % 3 == 0 ? Value::Binary(std::string(60, '\x7F')) : Value()}};
}

/// Adds the table and its rows, changes those of odd numbers and deletes the others; gives what must be there then.
std::map<int, Row> Fill(data::Storage& storage, jet::Format format, int count) {
    storage.CreateTable(AllTypes(format));
    data::StoredTable& table = Table(storage, tableName);
    std::map<int, Row> rows;
    std::vector<data::RowId> ids(1);
    storage.Begin();
    for (int i = 1; i <= count; ++i) {
        if (i + 3 == count) storage.Commit();  // the last few each by themselves
        Row row = RowOf(i, format);
        rows[i] = row;
        row[0] = Value();
        ids.push_back(table.Insert(row));
    }
    storage.Begin();
    for (int i = 1; i <= count; ++i) {
        if (i % 2 == 0) {
            table.Delete(ids[static_cast<std::size_t>(i)]);
            rows.erase(i);
            continue;
        }
        const auto changes = ChangesOf(i);
        table.Update(ids[static_cast<std::size_t>(i)], changes);
        for (const auto& [column, value] : changes) rows[i][static_cast<std::size_t>(column)] = value;
    }
    storage.Commit();
    return rows;
}

std::string Hex(std::string_view bytes) {
    std::string out;
    for (const char byte : bytes) {
        out.push_back("0123456789ABCDEF"[static_cast<unsigned char>(byte) >> 4]);
        out.push_back("0123456789ABCDEF"[byte & 15]);
    }
    return out;
}

std::string Printed(const char* form, double number) {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), form, number);
    return text.data();
}

/// How one of the independent readers writes down what it read.
enum class Judge { MdbExport, MdbReader };

std::string Shown(const ValueView& value, Judge judge) {
    if (value.IsNull()) return "\\N";
    switch (value.kind) {
        case ValueKind::Boolean:
        case ValueKind::Integer:
            return std::to_string(value.integer);
        case ValueKind::Currency:
            return Printed("%.4f", static_cast<double>(value.integer) / 10000);
        case ValueKind::Single:
        case ValueKind::Double:
            return Printed("%.10g", value.real);
        case ValueKind::Date: {
            const DateParts parts = PartsOf(value.real);
            std::array<char, 32> text;
            std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", parts.year, parts.month, parts.day,
                          parts.hour, parts.minute, parts.second);
            return text.data();
        }
        case ValueKind::Binary:
            return Hex(value.text);
        case ValueKind::Guid:
            // mdb-export leaves the last dash out and takes the text for bytes.
            return judge == Judge::MdbExport ? Hex(std::string(value.text).erase(24, 1)) : std::string(value.text);
        case ValueKind::Null:
        case ValueKind::Text:
        case ValueKind::Decimal:
            break;
    }
    return std::string(value.text);
}

/// Rows as lines, by their first field.
using Lines = std::map<int, std::string>;

Lines LinesOf(const std::map<int, Row>& rows, Judge judge) {
    Lines lines;
    for (const auto& [number, row] : rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            lines[number] += (i == 0 ? "" : "\t") + Shown(row[i].View(), judge);
    return lines;
}

Lines LinesOf(const std::string& output) {
    Lines lines;
    for (std::size_t start = 0; start < output.size();) {
        const std::size_t end = std::min(output.find('\n', start), output.size());
        const std::string line = output.substr(start, end - start);
        lines[std::atoi(line.c_str())] = line;
        start = end + 1;
    }
    return lines;
}

/// The first row that two readers see differently, for a message; empty if there is none.
std::string Difference(const Lines& expected, const Lines& found) {
    if (expected.size() != found.size())
        return std::to_string(found.size()) + " rows instead of " + std::to_string(expected.size());
    const auto [wanted, seen] = std::mismatch(expected.begin(), expected.end(), found.begin());
    return wanted == expected.end() ? "" : wanted->second + "\ninstead of\n" + seen->second;
}

/// Every other table as mdb-export gives it.
std::string OtherTables(const std::filesystem::path& path) {
    const std::string file = Quoted(path);
    return OutputOf("mdb-tables -1 " + file + " | grep -vx '" + tableName +
                    "' | while IFS= read -r table; do echo \"$table\"; " + "mdb-export -b hex " + file +
                    " \"$table\"; done");
}

/// The folder of the npm package mdb-reader; empty where it isn't installed.
std::string MdbReaderFolder() {
    const char* named = std::getenv("QUILLFORM_MDB_READER");
    const std::string folder = named ? named : QUILLFORM_SOURCE_DIR "/build/judges/node_modules/mdb-reader";
    return std::filesystem::exists(folder + "/package.json") ? folder : std::string();
}

/// Pages of all tables but those of the catalogue, which notes the new table, with their content.
std::map<std::uint32_t, std::string> PagesOfOthers(const jet::PageFile& file, const std::string& bytes) {
    std::map<std::uint32_t, std::string> pages;
    const std::size_t size = file.Form().pageSize;
    for (const jet::CatalogEntry& entry : jet::ReadCatalog(file)) {
        if (entry.kind != jet::CatalogEntry::LocalTable || entry.name == tableName) continue;
        if (entry.name == "MSysObjects" || entry.name == "MSysACEs") continue;
        const auto table = jet::ReadTableDefinition(file, static_cast<std::uint32_t>(entry.id));
        for (const std::uint32_t page : PagesOfTable(file, table)) pages[page] = bytes.substr(page * size, size);
    }
    return pages;
}

class RoundTrip : public ::testing::TestWithParam<jet::Format> {
protected:
    struct Tried {
        std::string file;
        Lines expected;
    };

    static bool RunsFull() { return std::getenv("QUILLFORM_ROUND_TRIP_FULL") != nullptr; }
    int RowsFor(const std::string& name) const {
        return RunsFull() || name.find("northwind") != name.npos ? 10000 : 300;
    }

    /// Below the door that asks for passwords.
    std::unique_ptr<jet::JetDatabase> Open(const std::filesystem::path& path) {
        return std::make_unique<jet::JetDatabase>(std::make_unique<jet::DiskFile>(path), path.string(),
                                                  Access::ReadWrite);
    }

    void Try(const std::filesystem::path& sample) {
        const std::filesystem::path path = folder_ / sample.filename().string();
        CopySample(sample.filename().string(), path);
        const std::string before = Content(path);
        const std::string othersBefore = HasMdbExport() ? OtherTables(path) : "";
        std::map<std::uint32_t, std::string> pagesBefore;
        std::map<int, Row> rows;
        {
            const auto storage = Open(path);
            pagesBefore = PagesOfOthers(storage->File(), before);
            const ErrorNumber refusal =
                NumberOf([&] { rows = Fill(*storage, GetParam(), RowsFor(sample.filename().string())); });
            if (refusal != ErrorNumber{}) {
                EXPECT_EQ(refusal, ErrorNumber::NotSupported);
                EXPECT_EQ(Content(path), before) << "a refusal leaves the file as it was";
                ++refused_;
                return;
            }
        }
        const auto storage = Open(path);
        CheckRows(*storage, rows);
        EXPECT_EQ(CheckAllIndexes(storage->File()).fault, "");
        EXPECT_EQ(PagesOfOthers(storage->File(), Content(path)), pagesBefore);
        tried_.push_back({path.string(), LinesOf(rows, Judge::MdbReader)});
        if (!HasMdbExport()) return;
        EXPECT_EQ(OtherTables(path), othersBefore);
        EXPECT_EQ(Difference(LinesOf(rows, Judge::MdbExport),
                             LinesOf(OutputOf("mdb-export -H -Q -0 '\\N' -d '\t' -b hex -D '%Y-%m-%d %H:%M:%S' -T "
                                              "'%Y-%m-%d %H:%M:%S' " +
                                              Quoted(path) + " '" + tableName + "'"))),
                  "");
    }

    void CheckRows(data::Storage& storage, const std::map<int, Row>& rows) {
        const data::StoredTable& table = Table(storage, tableName);
        ASSERT_EQ(table.RowEstimate(), static_cast<std::int64_t>(rows.size()));
        std::size_t count = 0;
        for (const auto scan = table.Scan(); scan->Next(); ++count) {
            const auto row = rows.find(static_cast<int>(scan->Value(0).integer));
            ASSERT_NE(row, rows.end());
            for (std::size_t i = 0; i < row->second.size(); ++i)
                ASSERT_EQ(Value(scan->Value(static_cast<int>(i))), row->second[i]) << row->first << " column " << i;
        }
        EXPECT_EQ(count, rows.size());
    }

    /// One run of node for all files, since its start takes longer than the reading.
    void AskMdbReader() {
        const std::string package = MdbReaderFolder();
        if (package.empty() || tried_.empty()) {
            std::cout << "mdb-reader is not installed (scripts/judge-mdb-reader does it) and wasn't asked\n";
            return;
        }
        std::string command = "node " + Quoted(QUILLFORM_SOURCE_DIR "/tests/data/jet/read-mdb.mjs") + " " +
                              Quoted(package) + " '" + tableName + "'";
        for (const Tried& file : tried_) command += " " + Quoted(file.file);
        const std::string output = OutputOf(command);
        for (const Tried& file : tried_) {
            const std::string head = "== " + file.file + "\n";
            const std::size_t start = output.find(head);
            ASSERT_NE(start, output.npos) << output.substr(0, 500);
            const std::size_t end = std::min(output.find("== ", start + head.size()), output.size());
            const std::string rows = output.substr(start + head.size(), end - start - head.size());
            EXPECT_EQ(Difference(file.expected, LinesOf(rows)), "") << file.file << "\n" << rows.substr(0, 200);
        }
        std::cout << tried_.size() << " files read by mdb-reader\n";
    }

    ScratchFolder folder_;
    std::vector<Tried> tried_;
    std::size_t refused_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Formats, RoundTrip, ::testing::Values(jet::Format::Jet3, jet::Format::Jet4), NameOfFormat);

TEST_P(RoundTrip, OnEverySample) {
    if (SampleFolder().empty()) GTEST_SKIP() << "the folder of sample databases is not there";
    NeverWaitForTheDisk();
    for (const std::filesystem::path& sample : SampleFiles()) {
        if (sample.filename().string().starts_with("jet3") != (GetParam() == jet::Format::Jet3)) continue;
        SCOPED_TRACE(sample.filename().string());
        Try(sample);
    }
    AskMdbReader();
    EXPECT_GT(tried_.size(), 10u);
    EXPECT_LE(refused_, 1u) << "one sample sorts its texts in an order that isn't known";
    std::cout << tried_.size() << " files changed, " << refused_ << " refused\n";
}

}  // namespace
}  // namespace quillform::test
