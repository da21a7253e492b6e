#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "catalog/CatalogTables.h"
#include "sample/SampleDatabase.h"

namespace quillform::sample {

namespace {

enum class Kind { Text, TextDate, Date, Number, Boolean, Formula };

/// One row of the catalog as a person would answer the questions about it.
struct Entry {
    std::string_view table;
    std::string_view field;
    std::string_view text;  ///< what the user sees
    Kind kind;
    int length;
    std::string_view mask = " ";
    FunctionCode function = FunctionCode::None;
    std::string_view alias = " ";
    std::string_view parameter1 = " ";  ///< with a blank in front
};

constexpr std::string_view wholeNumber = "###,###,##0";
constexpr std::string_view money = "###,###,##0.00";

constexpr Entry entries[] = {
    {"Stock Code Table", "Stock Code", "Stock Code", Kind::Text, 15},
    {"Stock Code Table", "Stock Code", "Department Letters", Kind::Formula, 2, " ", FunctionCode::Left, "DeptLetters",
     " 2"},
    {"Stock Code Table", "Stock Code", "Finish Letters", Kind::Formula, 2, " ", FunctionCode::Right, "FinishLetters",
     " 2"},
    {"Stock Code Table", "Stock Code Description", "Stock Code Description", Kind::Text, 30},
    {"Stock Code Table", "Quantity On Hand", "Quantity On Hand", Kind::Number, 11, wholeNumber},
    {"Stock Code Table", "Total Cost", "Total Cost", Kind::Number, 14, money},
    {"Stock Code Table", "Account #", "Account #", Kind::Text, 7},
    {"Stock Code Table", "Account #", "Ledger Account", Kind::Formula, 4, " ", FunctionCode::Left, "LedgerAccount",
     " 4"},

    {"Products", "Product ID", "Product ID", Kind::Number, 3, "##0"},
    {"Products", "Product Name", "Product", Kind::Text, 30},
    {"Products", "Category", "Category", Kind::Text, 15},
    {"Products", "Unit", "Unit", Kind::Text, 12},
    {"Products", "Unit Price", "Unit Price", Kind::Number, 10, "###,##0.00"},
    {"Products", "Units In Stock", "Units In Stock", Kind::Number, 6, "##,##0"},
    {"Products", "Weight", "Weight in kg", Kind::Number, 6, "##0.00"},
    {"Products", "Discontinued", "Discontinued", Kind::Boolean, 5},
    {"Products", "Description", "Product Description", Kind::Text, 70},

    {"Customers", "Customer ID", "Customer ID", Kind::Text, 5},
    {"Customers", "Customer ID", "Country Code", Kind::Formula, 2, " ", FunctionCode::Left, "CountryCode", " 2"},
    {"Customers", "Company Name", "Company", Kind::Text, 40},
    {"Customers", "Contact Name", "Contact", Kind::Text, 40},
    {"Customers", "Street", "Street", Kind::Text, 40},
    {"Customers", "Postal Code", "Postal Code", Kind::Text, 10},
    {"Customers", "City", "City", Kind::Text, 20},
    {"Customers", "Country", "Country", Kind::Text, 20},
    {"Customers", "Phone", "Phone", Kind::Text, 20},
    {"Customers", "Credit Limit", "Credit Limit", Kind::Number, 11, wholeNumber},
    {"Customers", "Preferred", "Preferred", Kind::Boolean, 5},
    {"Customers", "Customer Since", "Customer Since (mm/dd/yyyy)", Kind::Date, 10, "mm/dd/yyyy"},
    {"Customers", "Customer Since", "Customer Since (mmmm yyyy)", Kind::Date, 14, "mmmm yyyy"},
    {"Customers", "Notes", "Customer Notes", Kind::Text, 70},

    {"Orders", "Order Number", "Order Number", Kind::Number, 7, "#####0"},
    {"Orders", "Customer ID", "Customer of Order", Kind::Text, 5},
    {"Orders", "Salesperson", "Salesperson", Kind::Text, 20},
    {"Orders", "Order Date", "Order Date (mm/dd/yyyy)", Kind::Date, 10, "mm/dd/yyyy"},
    {"Orders", "Order Date", "Order Date (mm/dd)", Kind::Date, 5, "mm/dd"},
    {"Orders", "Order Date", "Order Date (mmmm dd, yyyy)", Kind::Date, 18, "mmmm dd, yyyy"},
    {"Orders", "Order Date", "Order Date (yyyy/mm/dd)", Kind::Date, 10, "yyyy/mm/dd"},
    {"Orders", "Entered At", "Entered(mmm dd, yyyy)", Kind::TextDate, 12, "mmm dd, yyyy"},
    {"Orders", "Entered At", "Entered(dddd)", Kind::TextDate, 9, "dddd"},
    {"Orders", "Required By", "Required(ddd mm/dd/yyyy)", Kind::TextDate, 14, "ddd mm/dd/yyyy"},
    {"Orders", "Pickup Time", "Pickup(hh:mm AM/PM)", Kind::TextDate, 8, "hh:mm AM/PM"},
    {"Orders", "Shipped Date", "Shipped (mm/dd/yyyy)", Kind::Date, 10, "mm/dd/yyyy"},
    {"Orders", "Freight", "Freight", Kind::Number, 10, "###,##0.00"},
    {"Orders", "Paid", "Paid", Kind::Boolean, 5},
    {"Orders", "Remarks", "Remarks", Kind::Text, 60},

    {"Order Lines", "Order Number", "Order of Line", Kind::Number, 7, "#####0"},
    {"Order Lines", "Line Number", "Line", Kind::Number, 3, "##0"},
    {"Order Lines", "Product ID", "Product of Line", Kind::Number, 3, "##0"},
    {"Order Lines", "Quantity", "Quantity", Kind::Number, 6, "##,##0"},
    {"Order Lines", "Price", "Price", Kind::Number, 10, "###,##0.00"},
    {"Order Lines", "Discount", "Discount", Kind::Number, 4, "##0%"},
    {"Order Lines", "Amount", "Amount", Kind::Number, 14, money},
    {"Order Lines", "Amount", "Sum of Amounts", Kind::Formula, 14, money, FunctionCode::Sum, "SumOfAmounts"},
};

struct Link {
    std::string_view table1;
    std::string_view table2;
    std::string_view field1;
    std::string_view field2;
};
constexpr Link links[] = {
    {"Customers", "Orders", "Customer ID", "Customer ID"},
    {"Orders", "Order Lines", "Order Number", "Order Number"},
    {"Products", "Order Lines", "Product ID", "Product ID"},
};

/// A label sheet; lengths in inches.
struct LabelSheet {
    std::string_view description;
    float leftMargin, topMargin, height, width, across, down, horizontalGap, verticalGap;
};
constexpr LabelSheet labelSheets[] = {
    {"Address, 30 to the sheet", 0.1875F, 0.5F, 1.0F, 2.625F, 3, 10, 0.125F, 0},
    {"Shipping, 10 to the sheet", 0.1563F, 0.5F, 2.0F, 4.0F, 2, 5, 0.1875F, 0},
    {"Folder tab, 20 to the sheet", 0.5F, 0.5F, 1.0F, 3.4375F, 2, 10, 0.4375F, 0},
};
constexpr int letterPaper = 1;

struct ColumnSpec {
    std::string_view name;
    FieldType type;
    int size;
};

TableDef Table(std::string_view name, std::span<const ColumnSpec> columns) {
    TableDef table;
    table.Name = name;
    for (const ColumnSpec& column : columns) {
        Field field;
        field.Name = column.name;
        field.Type = column.type;
        field.Size = column.size;
        table.Fields.push_back(std::move(field));
    }
    return table;
}
constexpr ColumnSpec indexColumns[] = {
    {"ID", FieldType::Integer, 2},           {"Database", FieldType::Text, 255},
    {"Field", FieldType::Text, 50},          {"Table", FieldType::Text, 50},
    {"Text", FieldType::Text, 50},           {"Default Length", FieldType::Integer, 2},
    {"Mask", FieldType::Text, 50},           {"Numeric", FieldType::Boolean, 1},
    {"Is Text Date", FieldType::Boolean, 1}, {"Formula Flag", FieldType::Boolean, 1},
    {"Alias Name", FieldType::Text, 50},     {"Function Code", FieldType::Integer, 2},
    {"Parameter 1", FieldType::Text, 50},    {"Parameter 2", FieldType::Text, 50},
    {"Parameter 3", FieldType::Text, 50},
};
constexpr ColumnSpec relationColumns[] = {
    {"Database1", FieldType::Text, 120}, {"Database2", FieldType::Text, 120}, {"Table1", FieldType::Text, 50},
    {"Table2", FieldType::Text, 50},     {"Field1", FieldType::Text, 50},     {"Field2", FieldType::Text, 50},
};
constexpr ColumnSpec labelColumns[] = {
    {"Label Description", FieldType::Text, 50},
    {"Left Margin", FieldType::Single, 4},
    {"Top Margin", FieldType::Single, 4},
    {"Height", FieldType::Single, 4},
    {"Width", FieldType::Single, 4},
    {"Across", FieldType::Single, 4},
    {"Down", FieldType::Single, 4},
    {"Horizontal Gap", FieldType::Single, 4},
    {"Vertical Gap", FieldType::Single, 4},
    {"Paper Size", FieldType::Integer, 2},
};

std::unique_ptr<Recordset> MakeTable(Database& database, std::string_view name, std::span<const ColumnSpec> columns) {
    database.AppendTable(Table(name, columns));
    return database.OpenRecordset(name, RecordsetType::Dynaset, RecordsetOption::AppendOnly);
}

void SetText(Recordset& rows, std::string_view column, std::string_view text) {
    rows.SetValue(column, {ValueKind::Text, 0, 0, text});
}
void SetInteger(Recordset& rows, std::string_view column, std::int64_t number) {
    rows.SetValue(column, Value::Integer(number).View());
}
void SetBoolean(Recordset& rows, std::string_view column, bool truth) {
    rows.SetValue(column, Value::Boolean(truth).View());
}
void SetSingle(Recordset& rows, std::string_view column, float number) {
    rows.SetValue(column, Value::Single(number).View());
}

void WriteEntry(Recordset& rows, const Entry& entry, int id, std::string_view path) {
    rows.AddNew();
    SetInteger(rows, "ID", id);
    SetText(rows, "Database", path);
    SetText(rows, "Field", entry.field);
    SetText(rows, "Table", entry.table);
    SetText(rows, "Text", entry.text);
    SetInteger(rows, "Default Length", entry.length);
    SetText(rows, "Mask", entry.mask);
    SetBoolean(rows, "Numeric", entry.kind == Kind::Number || entry.function >= FunctionCode::Sum);
    SetBoolean(rows, "Is Text Date", entry.kind == Kind::TextDate);
    SetBoolean(rows, "Formula Flag", entry.kind == Kind::Formula);
    SetText(rows, "Alias Name", entry.alias);
    SetInteger(rows, "Function Code", static_cast<int>(entry.function));
    SetText(rows, "Parameter 1", entry.parameter1);
    SetText(rows, "Parameter 2", " ");
    SetText(rows, "Parameter 3", " ");
    rows.Update();
}

void WriteLink(Recordset& rows, const Link& link, std::string_view path) {
    rows.AddNew();
    SetText(rows, "Database1", path);
    SetText(rows, "Database2", path);
    SetText(rows, "Table1", link.table1);
    SetText(rows, "Table2", link.table2);
    SetText(rows, "Field1", link.field1);
    SetText(rows, "Field2", link.field2);
    rows.Update();
}

void WriteSheet(Recordset& rows, const LabelSheet& sheet) {
    rows.AddNew();
    SetText(rows, "Label Description", sheet.description);
    SetSingle(rows, "Left Margin", sheet.leftMargin);
    SetSingle(rows, "Top Margin", sheet.topMargin);
    SetSingle(rows, "Height", sheet.height);
    SetSingle(rows, "Width", sheet.width);
    SetSingle(rows, "Across", sheet.across);
    SetSingle(rows, "Down", sheet.down);
    SetSingle(rows, "Horizontal Gap", sheet.horizontalGap);
    SetSingle(rows, "Vertical Gap", sheet.verticalGap);
    SetInteger(rows, "Paper Size", letterPaper);
    rows.Update();
}

}  // namespace

void WriteCatalog(Database& database, std::string_view path) {
    database.BeginTrans();
    const auto index = MakeTable(database, catalogIndexTable, indexColumns);
    int id = 0;
    for (const Entry& entry : entries) WriteEntry(*index, entry, ++id, path);
    const auto relations = MakeTable(database, catalogRelationTable, relationColumns);
    for (const Link& link : links) WriteLink(*relations, link, path);
    const auto labels = MakeTable(database, catalogLabelsTable, labelColumns);
    for (const LabelSheet& sheet : labelSheets) WriteSheet(*labels, sheet);
    database.CommitTrans();
}

}  // namespace quillform::sample
