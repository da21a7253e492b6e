#include "sample/SampleDatabase.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quillform::sample {

namespace {

Field Column(std::string name, FieldType type, int size) {
    Field field;
    field.Name = std::move(name);
    field.Type = type;
    field.Size = size;
    return field;
}
Field TextColumn(std::string name, int characters) { return Column(std::move(name), FieldType::Text, characters); }
Field LongColumn(std::string name) { return Column(std::move(name), FieldType::Long, 4); }
Field IntegerColumn(std::string name) { return Column(std::move(name), FieldType::Integer, 2); }
Field MoneyColumn(std::string name) { return Column(std::move(name), FieldType::Currency, 8); }
Field SingleColumn(std::string name) { return Column(std::move(name), FieldType::Single, 4); }
Field DateColumn(std::string name) { return Column(std::move(name), FieldType::Date, 8); }
Field BooleanColumn(std::string name) { return Column(std::move(name), FieldType::Boolean, 1); }
Field MemoColumn(std::string name) { return Column(std::move(name), FieldType::Memo, 0); }

IndexDef Index(std::string name, const std::vector<std::string>& columns, bool primary) {
    IndexDef index;
    index.Name = std::move(name);
    for (const std::string& column : columns) index.Columns.push_back({column, false});
    index.Primary = primary;
    index.Unique = primary;
    index.Required = primary;
    return index;
}
IndexDef PrimaryKey(const std::vector<std::string>& columns) { return Index("PrimaryKey", columns, true); }
IndexDef PlainIndex(const std::string& column) { return Index(column, {column}, false); }

TableDef Table(std::string name, std::vector<Field> fields, std::vector<IndexDef> indexes) {
    TableDef table;
    table.Name = std::move(name);
    table.Fields = std::move(fields);
    table.Indexes = std::move(indexes);
    return table;
}

/// Appends rows to one table, value by value in column order.
class RowWriter {
public:
    RowWriter(Database& database, const TableDef& table)
        : rows_(database.OpenRecordset(table.Name, RecordsetType::Dynaset, RecordsetOption::AppendOnly)) {}

    template <typename... Values>
    void Write(const Values&... values) {
        rows_->AddNew();
        int column = 0;
        (Set(column++, values), ...);
        rows_->Update();
    }

private:
    void Set(int column, const Value& value) {
        if (!value.IsNull()) rows_->SetValue(column, value.View());
    }

    std::unique_ptr<Recordset> rows_;
};

Value TextOrNull(const std::string& text) { return text.empty() ? Value() : Value::Text(text); }

void WriteStock(Database& database, const std::vector<StockItem>& stock) {
    const TableDef table =
        Table("Stock Code Table",
              {TextColumn("Stock Code", 15), TextColumn("Stock Code Description", 30), LongColumn("Quantity On Hand"),
               MoneyColumn("Total Cost"), TextColumn("Account #", 7)},
              {PrimaryKey({"Stock Code"}), PlainIndex("Account #")});
    database.AppendTable(table);
    RowWriter rows(database, table);
    for (const StockItem& item : stock)
        rows.Write(Value::Text(item.code), Value::Text(item.description), Value::Integer(item.quantity),
                   Value::Currency(item.totalCost), Value::Text(item.account));
}

void WriteProducts(Database& database, const std::vector<Product>& products) {
    const TableDef table = Table("Products",
                                 {LongColumn("Product ID"), TextColumn("Product Name", 30), TextColumn("Category", 15),
                                  TextColumn("Unit", 12), MoneyColumn("Unit Price"), IntegerColumn("Units In Stock"),
                                  SingleColumn("Weight"), BooleanColumn("Discontinued"), MemoColumn("Description")},
                                 {PrimaryKey({"Product ID"}), PlainIndex("Category")});
    database.AppendTable(table);
    RowWriter rows(database, table);
    for (const Product& product : products)
        rows.Write(Value::Integer(product.id), Value::Text(product.name), Value::Text(product.category),
                   Value::Text(product.unit), Value::Currency(product.price), Value::Integer(product.inStock),
                   Value::Single(product.weight), Value::Boolean(product.discontinued),
                   Value::Text(product.description));
}

void WriteCustomers(Database& database, const std::vector<Customer>& customers) {
    const TableDef table =
        Table("Customers",
              {TextColumn("Customer ID", 5), TextColumn("Company Name", 40), TextColumn("Contact Name", 40),
               TextColumn("Street", 40), TextColumn("Postal Code", 10), TextColumn("City", 20),
               TextColumn("Country", 20), TextColumn("Phone", 20), MoneyColumn("Credit Limit"),
               BooleanColumn("Preferred"), DateColumn("Customer Since"), MemoColumn("Notes")},
              {PrimaryKey({"Customer ID"}), PlainIndex("Company Name"), PlainIndex("Country")});
    database.AppendTable(table);
    RowWriter rows(database, table);
    for (const Customer& customer : customers)
        rows.Write(Value::Text(customer.id), Value::Text(customer.company), Value::Text(customer.contact),
                   Value::Text(customer.street), Value::Text(customer.postalCode), Value::Text(customer.city),
                   Value::Text(customer.country), Value::Text(customer.phone), Value::Currency(customer.creditLimit),
                   Value::Boolean(customer.preferred), Value::Date(customer.since), TextOrNull(customer.notes));
}

void WriteOrders(Database& database, const Company& company) {
    const TableDef table =
        Table("Orders",
              {LongColumn("Order Number"), TextColumn("Customer ID", 5), TextColumn("Salesperson", 20),
               DateColumn("Order Date"), TextColumn("Entered At", 12), TextColumn("Required By", 8),
               TextColumn("Pickup Time", 4), DateColumn("Shipped Date"), MoneyColumn("Freight"), BooleanColumn("Paid"),
               MemoColumn("Remarks")},
              {PrimaryKey({"Order Number"}), PlainIndex("Customer ID"), PlainIndex("Order Date")});
    database.AppendTable(table);
    RowWriter rows(database, table);
    for (const Order& order : company.orders)
        rows.Write(Value::Integer(order.number), Value::Text(company.customers[order.customer].id),
                   Value::Text(order.salesperson), Value::Date(order.date), Value::Text(order.enteredAt),
                   Value::Text(order.requiredBy), Value::Text(order.pickupTime),
                   order.shipped == 0 ? Value() : Value::Date(order.shipped), Value::Currency(order.freight),
                   Value::Boolean(order.paid), TextOrNull(order.remarks));
}

void WriteOrderLines(Database& database, const Company& company) {
    const TableDef table =
        Table("Order Lines",
              {LongColumn("Order Number"), IntegerColumn("Line Number"), LongColumn("Product ID"),
               IntegerColumn("Quantity"), MoneyColumn("Price"), SingleColumn("Discount"), MoneyColumn("Amount")},
              {PrimaryKey({"Order Number", "Line Number"}), PlainIndex("Product ID")});
    database.AppendTable(table);
    RowWriter rows(database, table);
    for (const OrderLine& line : company.lines)
        rows.Write(Value::Integer(line.order), Value::Integer(line.line),
                   Value::Integer(company.products[line.product].id), Value::Integer(line.quantity),
                   Value::Currency(line.price), Value::Single(line.discount), Value::Currency(line.amount));
}

}  // namespace

void WriteTables(Database& database, const Company& company) {
    database.BeginTrans();
    WriteStock(database, company.stock);
    WriteProducts(database, company.products);
    WriteCustomers(database, company.customers);
    WriteOrders(database, company);
    WriteOrderLines(database, company);
    database.CommitTrans();
}

}  // namespace quillform::sample
