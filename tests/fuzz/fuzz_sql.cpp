// Statements of any bytes are prepared or refused, and what is prepared has its parts.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "data/sql/Prepare.h"

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const sql::Schema schema = MakeSchema();
    const std::string_view statement(reinterpret_cast<const char*>(data), size);
    try {
        const sql::PreparedStatement prepared = sql::Prepare(statement, schema, 2024);
        if (prepared.sqlite.empty() || prepared.columns.size() != prepared.origins.size()) std::abort();
        if (prepared.sqlite.find('\0') != std::string::npos) std::abort();
    } catch (const RunTimeError& error) {
        if (std::string_view(error.what()).size() < 10) std::abort();
    }
    try {
        sql::PrepareCriteria(statement, schema.front(), 2024);
    } catch (const RunTimeError&) {
    }
    return 0;
}
