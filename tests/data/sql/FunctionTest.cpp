#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "data/sql/FunctionTable.h"
#include "data/sql/SampleTables.h"
#include "data/sqlite/Connection.h"
#include "data/sqlite/Functions.h"
#include "platform/Clock.h"

namespace quillform::sql {
namespace {

/// A call with so many arguments of the kinds that the function asks for.
std::string Call(const FunctionEntry& entry, int count) {
    std::string call = std::string(entry.name) + "(";
    for (int i = 0; i < count; ++i) {
        const char kind = entry.arguments[std::min(static_cast<std::size_t>(i), entry.arguments.size() - 1)];
        call += std::string(i > 0 ? ", " : "") + (kind == 'T' ? "Remark" : kind == 'D' ? "Ordered" : "ID");
    }
    return call + ")";
}

TEST(Functions, AreAllKnownToSqlite) {
    const FixedClock clock(45000);
    sqlite::Connection connection({}, sqlite::Connection::Mode::Memory);
    sqlite::AddFunctions(connection, clock);
    connection.Execute("CREATE TABLE Orders(ID, Ordered, Remark)");
    for (const FunctionEntry& entry : Functions())
        for (int count = entry.least; count <= (entry.most < 0 ? entry.least : entry.most); ++count) {
            const std::string call = Call(entry, count);
            const PreparedStatement prepared = Prepare("SELECT " + call + " FROM Orders", SampleTables(), sampleYear);
            EXPECT_NO_THROW(sqlite::Statement(connection, prepared.sqlite).Step()) << call << "\n" << prepared.sqlite;
        }
}

}  // namespace
}  // namespace quillform::sql
