#include "data/sql/SampleTables.h"

#include <stdexcept>

#include "data/collation/TextOrder.h"

namespace quillform::sql {

namespace {

Field MakeField(const char* name, FieldType type, int size) {
    Field field;
    field.Name = name;
    field.Type = type;
    field.Size = size;
    return field;
}

Schema MakeTables() {
    TableDef orders;
    orders.Name = "Orders";
    orders.Fields = {MakeField("ID", FieldType::Long, 4),        MakeField("CustomerID", FieldType::Long, 4),
                     MakeField("Ordered", FieldType::Date, 8),   MakeField("Amount", FieldType::Currency, 8),
                     MakeField("Paid", FieldType::Boolean, 1),   MakeField("Remark", FieldType::Text, 50),
                     MakeField("Weight", FieldType::Single, 4),  MakeField("Rate", FieldType::Double, 8),
                     MakeField("Scan", FieldType::LongBinary, 0)};
    orders.Fields[0].AutoNumber = true;
    TableDef customers;
    customers.Name = "Customers";
    customers.Fields = {MakeField("ID", FieldType::Long, 4), MakeField("Company Name", FieldType::Text, 40),
                        MakeField("City", FieldType::Text, 30), MakeField("Notes", FieldType::Memo, 0)};
    TableDef lines;
    lines.Name = "Lines";
    lines.Fields = {MakeField("OrderID", FieldType::Long, 4), MakeField("Quantity", FieldType::Integer, 2),
                    MakeField("Price", FieldType::Decimal, 17)};
    TableDef index;
    index.Name = "Report - Index";
    index.Fields = {MakeField("ID", FieldType::Long, 4), MakeField("Text", FieldType::Text, 50),
                    MakeField("Table", FieldType::Text, 64)};
    TableDef far;
    far.Name = "Far";
    far.IsLinked = true;
    return {orders, customers, lines, index, far};
}

const char* const content = R"(
CREATE TABLE "Orders"("ID" INTEGER, "CustomerID" INTEGER, "Ordered" REAL, "Amount" REAL, "Paid" INTEGER, "Remark" TEXT,
                      "Weight" REAL, "Rate" REAL, "Scan" BLOB);
INSERT INTO "Orders" VALUES
  (1, 10, 36160.0, 12.5, -1, 'abc', 0.10000000149011612, 0.33333333333333331, NULL),
  (2, 10, 36160.437673611, 0.1, 0, 'ABC', 0.5, 2, NULL),
  (3, 20, 36161.0, 7, -1, 'b', 1, NULL, NULL),
  (4, NULL, NULL, NULL, 0, NULL, NULL, NULL, NULL),
  (5, 99, 36526.0, 100, 0, 'Abd', 2, 0.1, NULL);
CREATE TABLE "Customers"("ID" INTEGER, "Company Name" TEXT, "City" TEXT, "Notes" TEXT);
INSERT INTO "Customers" VALUES (10, 'Ten & Sons', 'Ulm', NULL), (20, 'Twenty', 'ulm', 'late'), (30, 'Thirty', 'Bonn', '');
CREATE TABLE "Lines"("OrderID" INTEGER, "Quantity" INTEGER, "Price" REAL);
INSERT INTO "Lines" VALUES (1, 2, 3.5), (1, 3, 1), (2, 7, 2), (4, NULL, NULL), (NULL, 1, 1);
CREATE TABLE "Report - Index"("ID" INTEGER, "Text" TEXT, "Table" TEXT);
INSERT INTO "Report - Index" VALUES (1, 'order number', 'Orders'), (2, 'Amount', 'Orders'), (3, 'City', 'Customers');
)";

}  // namespace

const Schema& SampleTables() {
    static const Schema tables = MakeTables();
    return tables;
}

SampleDatabase::SampleDatabase() {
    sqlite3* handle = nullptr;
    sqlite3_open(":memory:", &handle);
    handle_.reset(handle);
    const auto compare = [](void*, int leftSize, const void* left, int rightSize, const void* right) {
        return collation::Compare({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                                  {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
    };
    sqlite3_create_collation(handle, "QFTEXT", SQLITE_UTF8, nullptr, compare);
    Run(content);
}

void SampleDatabase::Run(const std::string& sqlite) {
    if (sqlite3_exec(handle_.get(), sqlite.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(handle_.get()));
}

std::vector<std::string> SampleDatabase::Rows(const std::string& sqlite) {
    std::vector<std::string> rows;
    const auto add = [](void* to, int count, char** values, char**) {
        std::string row;
        for (int i = 0; i < count; ++i) row += std::string(i > 0 ? "," : "") + (values[i] ? values[i] : "-");
        static_cast<std::vector<std::string>*>(to)->push_back(row);
        return 0;
    };
    if (sqlite3_exec(handle_.get(), sqlite.c_str(), add, &rows, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(handle_.get()));
    return rows;
}

}  // namespace quillform::sql
