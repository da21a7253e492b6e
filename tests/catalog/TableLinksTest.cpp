#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "catalog/CatalogDefinitions.h"
#include "catalog/MemoryDatabase.h"
#include "catalog/TableLinks.h"
#include "data/jet/JetStorage.h"

namespace quillform {
namespace {

using testing::Column;
using testing::Table;
using Lines = std::vector<std::string>;

Lines Written(const TableLinks& links) {
    Lines lines;
    for (const CatalogRelation& link : links.relations)
        lines.push_back(link.table1 + "." + link.field1 + " = " + link.table2 + "." + link.field2);
    return lines;
}

Field Long(const char* name) { return Column(name, FieldType::Long); }
Field Text(const char* name) { return Column(name, FieldType::Text, 10); }
Field Counter(const char* name) {
    Field field = Long(name);
    field.AutoNumber = true;
    return field;
}

TableDef WithIndex(TableDef table, const std::vector<std::string>& columns, bool primary, bool unique) {
    IndexDef index;
    for (const std::string& column : columns) index.Columns.push_back({column, false});
    index.Primary = primary;
    index.Unique = unique;
    table.Indexes.push_back(index);
    return table;
}

struct Guess {
    const char* what;
    std::vector<TableDef> tables;
    Lines expected;
};

TEST(TableLinks, AreGuessedFromKeys) {
    const TableDef customers = Table("Customers", {Counter("CustomerID"), Text("Name")}, "CustomerID");
    const Guess guesses[] = {
        {"field named as a key, any case",
         {Table("Orders", {Long("OrderID"), Long("customerid")}, "OrderID"), customers},
         {"Orders.customerid = Customers.CustomerID"}},
        {"numbers of different size compare",
         {customers, Table("Orders", {Long("OrderID"), Column("CustomerID", FieldType::Double)}, "OrderID")},
         {"Customers.CustomerID = Orders.CustomerID"}},
        {"text and number don't", {customers, Table("Orders", {Long("OrderID"), Text("CustomerID")}, "OrderID")}, {}},
        {"two references aren't a link",
         {Table("Orders", {Long("OrderID"), Long("CustomerID")}, "OrderID"),
          Table("Visits", {Long("VisitID"), Long("CustomerID")}, "VisitID")},
         {}},
        {"keys of one name",
         {customers, Table("Photos", {Long("CustomerID"), Text("Path")}, "CustomerID")},
         {"Customers.CustomerID = Photos.CustomerID"}},
        {"keys of one name that doesn't read as a key",
         {Table("One", {Long("Row")}, "Row"), Table("Two", {Long("Row")}, "Row")},
         {}},
        {"first fields alone aren't shared keys",
         {Table("NextOrder", {Long("NewKey")}), Table("NextItem", {Long("NewKey")})},
         {}},
        {"tables that number their own rows",
         {Table("One", {Counter("SeqNo")}, "SeqNo"), Table("Two", {Counter("SeqNo")}, "SeqNo")},
         {}},
        {"names that any table has",
         {Table("One", {Long("ID"), Text("Name")}, "ID"), Table("Two", {Long("ID"), Text("Name")}, "Name")},
         {}},
        {"part of a longer key",
         {Table("Orders", {Long("OrderNo")}, "OrderNo"),
          WithIndex(Table("Lines", {Long("OrderNo"), Long("LineNo")}), {"OrderNo", "LineNo"}, true, true)},
         {"Orders.OrderNo = Lines.OrderNo"}},
        {"unique index for want of a primary key",
         {WithIndex(Table("Towns", {Text("Name"), Text("Postal")}), {"Postal"}, false, true),
          Table("People", {Long("PersonID"), Text("Postal")}, "PersonID")},
         {"Towns.Postal = People.Postal"}},
        {"first field for want of any index",
         {Table("Towns", {Text("TownCode"), Text("Name")}), Table("People", {Text("Name"), Text("TownCode")})},
         {"Towns.TownCode = People.TownCode"}},
        {"first field that doesn't read as a key",
         {Table("Towns", {Text("Town"), Text("Mayor")}), Table("People", {Text("Person"), Text("Town")})},
         {}},
    };
    for (const Guess& guess : guesses) EXPECT_EQ(Written(LinkTables(guess.tables, {})), guess.expected) << guess.what;
}

// A report over three tables that are all linked with each other would join one of them twice.
TEST(TableLinks, NeverCloseACircle) {
    const std::vector<TableDef> tables = {
        Table("Orders", {Long("OrderID"), Long("CustomerID")}, "OrderID"),
        Table("Customers", {Long("CustomerID")}, "CustomerID"),
        Table("Invoices", {Long("InvoiceID"), Long("OrderID"), Long("CustomerID")}, "InvoiceID")};
    const TableLinks guessed = LinkTables(tables, {});
    EXPECT_EQ(Written(guessed),
              (Lines{"Orders.CustomerID = Customers.CustomerID", "Orders.OrderID = Invoices.OrderID"}));
    EXPECT_EQ(guessed.leftOut,
              Lines{"\"Invoices\" and \"Customers\" both have the field \"CustomerID\", but are linked "
                    "by way of other tables already; no relation is made of it."});

    const TableLinks own = LinkTables(tables, {{"CI", "Customers", "Invoices", {"CustomerID"}, {"CustomerID"}},
                                               {"CO", "Customers", "Orders", {"CustomerID"}, {"CustomerID"}},
                                               {"OI", "Orders", "Invoices", {"OrderID"}, {"OrderID"}}});
    EXPECT_EQ(Written(own),
              (Lines{"Orders.CustomerID = Customers.CustomerID", "Customers.CustomerID = Invoices.CustomerID"}));
    ASSERT_FALSE(own.leftOut.empty());
    EXPECT_EQ(own.leftOut[0],
              "The relation \"OI\" between \"Orders\" and \"Invoices\" is left out: they are linked already, and a "
              "report joins a table only once.");
}

TEST(TableLinks, OwnRelationsThatCannotBeTakenWholeAreTold) {
    const std::vector<TableDef> tables = {Table("A", {Long("X"), Long("Y"), Long("Boss")}, "X"),
                                          Table("B", {Long("P"), Long("Q")}, "P")};
    const TableLinks links = LinkTables(tables, {{"Self", "A", "A", {"X"}, {"Boss"}},
                                                 {"Gone", "A", "B", {"Z"}, {"P"}},
                                                 {"System", "MSysNames", "B", {"X"}, {"P"}},
                                                 {"Empty", "A", "B", {}, {}},
                                                 {"Wide", "b", "a", {"q", "P"}, {"y", "X"}}});
    EXPECT_EQ(Written(links), Lines{"A.Y = B.Q"});
    EXPECT_EQ(links.leftOut, (Lines{"The relation \"Self\" links \"A\" with itself; it is left out.",
                                    "The relation \"Gone\" names a field that doesn't exist; it is left out.",
                                    "The relation \"Wide\" has 2 pairs of fields, and only the first is used: a report "
                                    "over it may repeat records."}));
}

struct Sample {
    const char* file;
    Lines own;      ///< as the file keeps them
    Lines guessed;  ///< without the file's word
};

const Lines northwindGuessed = {
    "Categories.CategoryID = Products.CategoryID",  "Customers.CustomerID = Orders.CustomerID",
    "Employees.EmployeeID = Orders.EmployeeID",     "Order Details.OrderID = Orders.OrderID",
    "Order Details.ProductID = Products.ProductID", "Products.SupplierID = Suppliers.SupplierID"};
const Lines northwindOwn = [] {
    Lines lines = northwindGuessed;
    lines.insert(lines.begin() + 5, "Orders.ShipVia = Shippers.ShipperID");
    return lines;
}();
const Lines ordersOwn = {"customer.CustNo = orders.CustNo", "employee.EmpNo = orders.EmpNo",
                         "items.OrderNo = orders.OrderNo", "items.PartNo = parts.PartNo",
                         "parts.VendorNo = vendors.VendorNo"};

/// The lines as sets: files list their tables in orders of their own.
Lines AnyOrder(Lines lines) {
    for (std::string& line : lines) {
        const std::size_t middle = line.find(" = ");
        std::string left = line.substr(0, middle);
        std::string right = line.substr(middle + 3);
        if (right < left) std::swap(left, right);
        line = left + " = " + right;
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(TableLinks, OfRealFilesAreTheFilesOwn) {
    const std::filesystem::path folder = QUILLFORM_SOURCE_DIR "/../shared/jet/samples";
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << "the shared sample databases aren't beside the project";
    const Sample samples[] = {
        {"jet3-northwind.mdb", northwindOwn, northwindGuessed},
        {"jet4-northwind.mdb", northwindOwn, northwindGuessed},
        {"jet4-orders-doubles.mdb", ordersOwn, ordersOwn},
        {"jet3-relations.mdb", {"Table1.otherfk1 = Table2.id", "Table1.otherfk2 = Table3.id"}, {}},
    };
    for (const Sample& sample : samples) {
        SCOPED_TRACE(sample.file);
        const auto storage = jet::Open(folder / sample.file, Access::ReadOnly);
        std::vector<TableDef> tables;
        for (const TableDef& table : storage->Tables())
            if (IsOfferedTable(table.Name) && !table.IsSystem) tables.push_back(table);
        const TableLinks links = LinkTables(tables, storage->Relations());
        EXPECT_EQ(AnyOrder(Written(links)), AnyOrder(sample.own));
        EXPECT_EQ(links.leftOut, Lines{});
        EXPECT_EQ(AnyOrder(Written(LinkTables(tables, {}))), AnyOrder(sample.guessed));
    }
}

}  // namespace
}  // namespace quillform
