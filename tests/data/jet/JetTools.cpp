#include "data/jet/JetTools.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>

#include "data/jet/JetStorage.h"
#include "data/jet/Samples.h"

namespace quillform::test {

std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteContent(const std::filesystem::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

void CopySample(std::string_view name, const std::filesystem::path& to) {
    std::filesystem::copy_file(SampleFolder() / name, to);
    std::filesystem::permissions(to, std::filesystem::perms::owner_all);
}

ErrorNumber NumberOf(const std::function<void()>& action, std::string* message) {
    try {
        action();
    } catch (const RunTimeError& error) {
        const std::string text = error.what();
        EXPECT_GT(text.size(), 20u);
        EXPECT_EQ(text.back(), '.') << text;
        if (message) *message = text;
        return error.Number();
    }
    return ErrorNumber{};
}

std::string OutputOf(const std::string& command) {
    std::FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (!pipe) return {};
    std::string out;
    std::array<char, 4096> buffer;
    while (const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), pipe)) out.append(buffer.data(), got);
    ::pclose(pipe);
    return out;
}

bool HasMdbExport() {
    static const bool found = std::system("command -v mdb-export > /dev/null") == 0;
    return found;
}

std::string Quoted(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

data::StoredTable& Table(data::Storage& storage, std::string_view name) {
    const int index = FindTable(storage, name);
    if (index < 0) throw RunTimeError(ErrorNumber::TableNotFound, "The table isn't there at all.");
    return storage.Rows(static_cast<std::size_t>(index));
}

Field Column(std::string name, FieldType type, int size) {
    Field field;
    field.Name = std::move(name);
    field.Type = type;
    field.Size = size;
    return field;
}

IndexDef PrimaryKey(const char* column) { return {"PrimaryKey", {{column, false}}, true, true, false, false, true}; }

TableDef SmallTable() {
    TableDef table;
    table.Name = "T";
    table.Fields = {Column("Id", FieldType::Long), Column("Text", FieldType::Text, 50)};
    table.Fields[0].AutoNumber = true;
    table.Indexes = {PrimaryKey("Id")};
    return table;
}

void InsertRows(data::Storage& storage, int count) {
    data::StoredTable& table = Table(storage, "T");
    storage.Begin();
    for (int i = 0; i < count; ++i) table.Insert(std::vector<Value>{Value(), Value::Text("row " + std::to_string(i))});
    storage.Commit();
}

std::size_t CountRows(const std::filesystem::path& path) {
    const auto storage = jet::Open(path, Access::ReadOnly);
    std::size_t rows = 0;
    for (const auto scan = Table(*storage, "T").Scan(); scan->Next();) ++rows;
    return rows;
}

void MakeSmall(const std::filesystem::path& path) {
    const auto storage = jet::Create(path, jet::Format::Jet4);
    storage->CreateTable(SmallTable());
    InsertRows(*storage, 100);
}

}  // namespace quillform::test
