// Statements over the data layer against plain SQLite on the same file. Prints seconds of processor time, which a busy
// machine distorts less than the clock, and ratios of one run.
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>

#include "data/Engine.h"

namespace {

using quillform::AppendGeneralText;
using quillform::Database;
using quillform::RecordsetType;

constexpr int customers = 20000;

constexpr const char* joined =
    "SELECT [orders].[id], [orders].[amount], [orders].[ordered], [orders].[note], [customers].[name] FROM ([orders] "
    "INNER "
    "JOIN [customers] ON [orders].[customer] = [customers].[id]) ORDER BY [customers].[name], [orders].[ordered]";
constexpr const char* joinedSqlite =
    "SELECT orders.id, orders.amount, orders.ordered, orders.note, customers.name FROM orders INNER JOIN customers ON "
    "orders.customer = customers.id ORDER BY customers.name, orders.ordered";

double ProcessorTime() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double Seconds(const std::function<void()>& work) {
    const double begin = ProcessorTime();
    work();
    return ProcessorTime() - begin;
}

void Check(int code, sqlite3* handle) {
    if (code == SQLITE_OK) return;
    std::fprintf(stderr, "%s\n", sqlite3_errmsg(handle));
    std::exit(1);
}

void MakeFile(const std::string& path, int orders) {
    std::filesystem::remove(path);
    sqlite3* handle = nullptr;
    Check(sqlite3_open(path.c_str(), &handle), handle);
    const std::string text =
        "CREATE TABLE customers(id INTEGER PRIMARY KEY, name VARCHAR(40), town VARCHAR(20));"
        "CREATE TABLE orders(id INTEGER PRIMARY KEY, customer INTEGER, ordered DATETIME, amount CURRENCY, note "
        "VARCHAR(60));"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
        std::to_string(customers) +
        ") "
        "INSERT INTO customers SELECT i, 'Customer ' || (i * 7919 % 20011), 'Town ' || (i % 97) FROM n;"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
        std::to_string(orders) +
        ") "
        "INSERT INTO orders SELECT i, 1 + i * 7907 % " +
        std::to_string(customers) +
        ", "
        "date('1995-01-01', '+' || (i * 31 % 3000) || ' days'), (i * 37 % 100000) / 100.0, 'note number ' || i FROM n;";
    Check(sqlite3_exec(handle, text.c_str(), nullptr, nullptr, nullptr), handle);
    sqlite3_close(handle);
}

std::size_t ReadPlain(const std::string& path, const char* statement) {
    sqlite3* handle = nullptr;
    Check(sqlite3_open(path.c_str(), &handle), handle);
    sqlite3_stmt* rows = nullptr;
    Check(sqlite3_prepare_v2(handle, statement, -1, &rows, nullptr), handle);
    std::size_t bytes = 0;
    while (sqlite3_step(rows) == SQLITE_ROW)
        for (int i = 0; i < sqlite3_column_count(rows); ++i) {
            sqlite3_column_text(rows, i);
            bytes += static_cast<std::size_t>(sqlite3_column_bytes(rows, i));
        }
    sqlite3_finalize(rows);
    sqlite3_close(handle);
    return bytes;
}

std::size_t ReadOurs(Database& database, const char* statement) {
    const auto rows = database.OpenRecordset(statement, RecordsetType::Snapshot);
    const int columns = static_cast<int>(rows->Fields().size());
    std::size_t bytes = 0;
    std::string text;
    for (; !rows->IsEOF(); rows->MoveNext())
        for (int i = 0; i < columns; ++i) {
            text.clear();
            AppendGeneralText(rows->Value(i), text);
            bytes += text.size();
        }
    return bytes;
}

void CopyTable(Database& from, Database& to, const char* name) {
    quillform::TableDef table = *from.FindTable(name);
    table.Indexes.clear();
    for (quillform::Field& field : table.Fields) field.AutoNumber = false;
    to.AppendTable(table);
    const auto source = from.OpenRecordset(name, RecordsetType::Snapshot);
    const auto target = to.OpenRecordset(name, RecordsetType::Dynaset, quillform::RecordsetOption::AppendOnly);
    to.BeginTrans();
    for (; !source->IsEOF(); source->MoveNext()) {
        target->AddNew();
        for (int i = 0; i < static_cast<int>(table.Fields.size()); ++i) target->SetValue(i, source->Value(i));
        target->Update();
    }
    to.CommitTrans();
}

void CompareJoin(const std::string& folder, int orders, const quillform::Clock& clock) {
    const std::string path = folder + "/join.sqlite";
    MakeFile(path, orders);
    std::size_t bytes = 0;
    const double plain = Seconds([&] { bytes = ReadPlain(path, joinedSqlite); });
    const double ours = Seconds([&] {
        const auto engine = quillform::data::MakeEngine(clock);
        bytes = ReadOurs(*engine->OpenDatabase(path), joined);
    });
    std::printf("join %7d x %d, sorted, as text, SQLite file: SQLite %.3f s, ours %.3f s, ratio %.2f (%zu bytes)\n",
                orders, customers, plain, ours, plain / ours, bytes);
    const auto engine = quillform::data::MakeEngine(clock);
    const auto database = engine->OpenDatabase(path);
    ReadOurs(*database, joined);
    const double again = Seconds([&] { ReadOurs(*database, joined); });
    std::printf("  the same statement again on the open database: %.3f s, ratio %.2f\n", again, plain / again);

    const std::string mdb = folder + "/join.mdb";
    std::filesystem::remove(mdb);
    try {
        const auto made = engine->CreateDatabase(mdb, quillform::DatabaseVersion::Jet40);
        const double written = Seconds([&] {
            CopyTable(*database, *made, "customers");
            CopyTable(*database, *made, "orders");
        });
        std::printf("  copied into an .mdb in %.3f s\n", written);
    } catch (const quillform::RunTimeError& error) {
        std::printf("  no .mdb: %s\n", error.what());
        return;
    }
    const auto fresh = quillform::data::MakeEngine(clock);
    const double jet = Seconds([&] { ReadOurs(*fresh->OpenDatabase(mdb), joined); });
    std::printf("  from the .mdb: %.3f s, ratio %.2f\n", jet, plain / jet);
}

void GroupStatements(const std::string& folder, int orders, const quillform::Clock& clock) {
    const std::string path = folder + "/groups.sqlite";
    MakeFile(path, orders);
    const auto engine = quillform::data::MakeEngine(clock);
    const auto database = engine->OpenDatabase(path);
    constexpr int groups = 1000;
    const double ours = Seconds([&] {
        for (int i = 1; i <= groups; ++i)
            ReadOurs(*database, ("SELECT [orders].[id], [customers].[name] FROM ([orders] INNER JOIN [customers] ON "
                                 "[orders].[customer] = [customers].[id]) WHERE [customers].[name] = 'Customer " +
                                 std::to_string(i) + "' ORDER BY [orders].[ordered]")
                                    .c_str());
    });
    std::printf("%d group statements over %d orders: %.3f s, %.1f us each\n", groups, orders, ours,
                ours * 1e6 / groups);
    const double lookups = Seconds([&] {
        for (int i = 1; i <= groups; ++i)
            ReadOurs(*database, ("SELECT * FROM [customers] WHERE ID = " + std::to_string(i)).c_str());
    });
    std::printf("%d look-ups by ID: %.1f us each\n", groups, lookups * 1e6 / groups);
    const double aggregate = Seconds([&] { ReadOurs(*database, "SELECT Sum(amount) AS S FROM orders"); });
    std::printf("a sum through SQLite over the virtual table: %.3f s\n", aggregate);
}

}  // namespace

int main() {
    const quillform::FixedClock clock(36161);
    const std::string folder = (std::filesystem::temp_directory_path() / "quillform-bench").string();
    std::filesystem::create_directories(folder);
    CompareJoin(folder, 100000, clock);
    CompareJoin(folder, 1000000, clock);
    GroupStatements(folder, 100000, clock);
    std::filesystem::remove_all(folder);
}
