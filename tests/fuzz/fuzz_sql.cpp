// Statements of any bytes are prepared or refused, and SQLite takes what is prepared: a text that it doesn't read means
// that the checker let something pass or the writer wrote it wrongly.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "data/sql/Prepare.h"
#include "data/sqlite/Connection.h"
#include "data/sqlite/Functions.h"
#include "platform/Clock.h"

namespace {

using namespace quillform;

Field MakeField(const char* name, FieldType type) {
    Field field;
    field.Name = name;
    field.Type = type;
    return field;
}

sql::Schema MakeSchema() {
    TableDef orders;
    orders.Name = "O";
    orders.Fields = {MakeField("ID", FieldType::Long),       MakeField("D", FieldType::Date),
                     MakeField("A", FieldType::Currency),    MakeField("B", FieldType::Boolean),
                     MakeField("T", FieldType::Text),        MakeField("S", FieldType::Single),
                     MakeField("F", FieldType::Double),      MakeField("X", FieldType::LongBinary),
                     MakeField("Two Words", FieldType::Memo)};
    TableDef customers;
    customers.Name = "C";
    customers.Fields = {MakeField("ID", FieldType::Long), MakeField("T", FieldType::Text)};
    TableDef lines;
    lines.Name = "L";
    lines.Fields = {MakeField("N", FieldType::Decimal), MakeField("G", FieldType::Guid)};
    return {orders, customers, lines};
}

constexpr const char* tables = R"(
CREATE TABLE "O"("ID", "D", "A", "B", "T", "S", "F", "X", "Two Words");
CREATE TABLE "C"("ID", "T");
CREATE TABLE "L"("N", "G");
INSERT INTO "O" VALUES (1, 36160.0, 1.5, -1, 'abc', 0.5, 3, x'00', 'x'), (2, NULL, NULL, 0, NULL, NULL, NULL, NULL, NULL);
INSERT INTO "C" VALUES (1, 'ABC'), (NULL, '5');
INSERT INTO "L" VALUES (1.25, '{00000000-0000-0000-0000-000000000000}');
)";

/// What SQLite may say about a text that is right but too deep for it.
bool IsBound(std::string_view message) {
    return message.find("parser stack overflow") != message.npos || message.find("too large") != message.npos ||
           message.find("too many") != message.npos || message.find("at most") != message.npos;
}

void Run(sqlite::Connection& connection, const sql::PreparedStatement& prepared) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(connection.Handle(), prepared.sqlite.c_str(), -1, &statement, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(statement, sqlite3_finalize);
    if (code != SQLITE_OK) {
        const char* message = sqlite3_errmsg(connection.Handle());
        if (IsBound(message)) return;
        std::fprintf(stderr, "%s\n%s\n", message, prepared.sqlite.c_str());
        std::abort();
    }
    if (prepared.kind != sql::StatementKind::Select) return;
    if (sqlite3_column_count(statement) != static_cast<int>(prepared.columns.size())) std::abort();
    // Functions may refuse their arguments; that ends the statement and is no fault.
    for (int row = 0; row < 20 && sqlite3_step(statement) == SQLITE_ROW; ++row) {
    }
}

/// A database of the tables of the schema, whose statements end after so many steps.
sqlite::Connection& Tables() {
    static const FixedClock clock(45000.5);
    static sqlite::Connection connection({}, sqlite::Connection::Mode::Memory);
    static const bool ready = [] {
        sqlite::AddFunctions(connection, clock);
        connection.Execute(tables);
        sqlite3_progress_handler(
            connection.Handle(), 20000, [](void*) { return 1; }, nullptr);
        return true;
    }();
    if (!ready) std::abort();
    return connection;
}

/// Words of the dialect: an input that begins with a 1 names them by its further bytes, which reaches deeper than
/// letters.
// clang-format off
constexpr const char* words[] = {
    "SELECT", "FROM", "WHERE", "GROUP BY", "HAVING", "ORDER BY", "O", "C", "L", "O.ID", "O.D", "O.A", "O.B",
    "O.T", "O.S", "O.F", "O.X", "[Two Words]", "C.ID", "C.T", "L.N", "L.G", "D", "A", "B", "S", "F", "N",
    "AS q", "AS r", "q", "r.ID", "(", ")", ",", "=", "<>", "<", ">=", "+", "-", "*", "/", "\\", "Mod", "^",
    "&", "And", "Or", "Xor", "Eqv", "Imp", "Not", "Like", "Between", "In (", "Is Null", "Is Not Null",
    "Exists (SELECT", "DISTINCT", "TOP 2", "TOP 50 PERCENT", "DISTINCTROW", "UNION", "UNION ALL", "DESC",
    "INNER JOIN", "LEFT JOIN", "RIGHT JOIN", "ON", "1", "2", "-0.5", "1E300", "'abc'", "'5'", "'1/1/2000'",
    "'True'", "#1/1/2000#", "Null", "True", "Count(", "Count(*)", "Sum(", "Avg(", "Min(", "Max(", "First(",
    "StdDev(", "IIf(", "Nz(", "Switch(", "Choose(", "Mid$(", "Left(", "InStr(", "Format(", "CStr(", "CDbl(",
    "CBool(", "IsNull(", "IsDate(", "Int(", "Round(", "DateAdd('m',", "Year(", "Date()", "*", "O.*", "T",
    "ID", "SELECT * FROM O WHERE", "SELECT ID FROM C ORDER BY", "(SELECT Max(ID) FROM C WHERE",
    "FROM O INNER JOIN C ON O.ID = C.ID", "FROM (O LEFT JOIN C ON O.ID = C.ID) RIGHT JOIN L ON O.F = L.N",
    "UPDATE O SET T =", "INSERT INTO C (ID, T) VALUES (", "DELETE * FROM O WHERE", "INSERT INTO L SELECT",
};
// clang-format on

std::string FromWords(const std::uint8_t* data, std::size_t size) {
    std::string statement;
    for (std::size_t i = 0; i < size; ++i) statement += std::string(words[data[i] % std::size(words)]) + " ";
    return statement;
}

void Try(std::string_view statement) {
    static const sql::Schema schema = MakeSchema();
    try {
        const sql::PreparedStatement prepared = sql::Prepare(statement, schema, 2024);
        if (prepared.sqlite.empty() || prepared.columns.size() != prepared.origins.size()) std::abort();
        if (prepared.sqlite.find('\0') != std::string::npos) std::abort();
        Run(Tables(), prepared);
    } catch (const RunTimeError& error) {
        if (std::string_view(error.what()).size() < 10) std::abort();
    }
    try {
        Run(Tables(), sql::PrepareCriteria(statement, schema.front(), 2024));
    } catch (const RunTimeError&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && data[0] == 1)
        Try(FromWords(data + 1, size - 1));
    else
        Try({reinterpret_cast<const char*>(data), size});
    return 0;
}
