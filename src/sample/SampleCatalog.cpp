#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "catalog/CatalogDefinitions.h"
#include "catalog/CatalogWriter.h"
#include "catalog/CommonSheets.h"
#include "catalog/FieldRows.h"
#include "sample/SampleDatabase.h"

namespace quillform::sample {

namespace {

enum class Kind { Text, Memo, TextDate, Date, Number, Boolean, Formula };

/// One row of the catalog as a person would answer the questions about it.
struct Entry {
    std::string_view table;
    std::string_view field;
    std::string_view description;  ///< what the user sees; dates get their mask behind it
    Kind kind;
    std::string_view mask = "";
    FunctionCode function = FunctionCode::None;
    std::string_view alias = "";
    int parameter = 0;  ///< characters that Left$ and Right$ take
};

constexpr std::string_view wholeNumber = "###,###,##0";
constexpr std::string_view money = "###,###,##0.00";
constexpr int memoWidth = 70;

constexpr Entry entries[] = {
    {"Stock Code Table", "Stock Code", "Stock Code", Kind::Text},
    {"Stock Code Table", "Stock Code", "Department Letters", Kind::Formula, "", FunctionCode::Left, "DeptLetters", 2},
    {"Stock Code Table", "Stock Code", "Finish Letters", Kind::Formula, "", FunctionCode::Right, "FinishLetters", 2},
    {"Stock Code Table", "Stock Code Description", "Stock Code Description", Kind::Text},
    {"Stock Code Table", "Quantity On Hand", "Quantity On Hand", Kind::Number, wholeNumber},
    {"Stock Code Table", "Total Cost", "Total Cost", Kind::Number, money},
    {"Stock Code Table", "Account #", "Account #", Kind::Text},
    {"Stock Code Table", "Account #", "Ledger Account", Kind::Formula, "", FunctionCode::Left, "LedgerAccount", 4},

    {"Products", "Product ID", "Product ID", Kind::Number, "##0"},
    {"Products", "Product Name", "Product", Kind::Text},
    {"Products", "Category", "Category", Kind::Text},
    {"Products", "Unit", "Unit", Kind::Text},
    {"Products", "Unit Price", "Unit Price", Kind::Number, "###,##0.00"},
    {"Products", "Units In Stock", "Units In Stock", Kind::Number, "##,##0"},
    {"Products", "Weight", "Weight in kg", Kind::Number, "##0.00"},
    {"Products", "Discontinued", "Discontinued", Kind::Boolean},
    {"Products", "Description", "Product Description", Kind::Memo},

    {"Customers", "Customer ID", "Customer ID", Kind::Text},
    {"Customers", "Customer ID", "Country Code", Kind::Formula, "", FunctionCode::Left, "CountryCode", 2},
    {"Customers", "Company Name", "Company", Kind::Text},
    {"Customers", "Contact Name", "Contact", Kind::Text},
    {"Customers", "Street", "Street", Kind::Text},
    {"Customers", "Postal Code", "Postal Code", Kind::Text},
    {"Customers", "City", "City", Kind::Text},
    {"Customers", "Country", "Country", Kind::Text},
    {"Customers", "Phone", "Phone", Kind::Text},
    {"Customers", "Credit Limit", "Credit Limit", Kind::Number, wholeNumber},
    {"Customers", "Preferred", "Preferred", Kind::Boolean},
    {"Customers", "Customer Since", "Customer Since", Kind::Date, "mm/dd/yyyy"},
    {"Customers", "Customer Since", "Customer Since", Kind::Date, "mmmm yyyy"},
    {"Customers", "Notes", "Customer Notes", Kind::Memo},

    {"Orders", "Order Number", "Order Number", Kind::Number, "#####0"},
    {"Orders", "Customer ID", "Customer of Order", Kind::Text},
    {"Orders", "Salesperson", "Salesperson", Kind::Text},
    {"Orders", "Order Date", "Order Date", Kind::Date, "mm/dd/yyyy"},
    {"Orders", "Order Date", "Order Date", Kind::Date, "mm/dd"},
    {"Orders", "Order Date", "Order Date", Kind::Date, "mmmm dd, yyyy"},
    {"Orders", "Order Date", "Order Date", Kind::Date, "yyyy/mm/dd"},
    {"Orders", "Entered At", "Entered", Kind::TextDate, "mmm dd, yyyy"},
    {"Orders", "Entered At", "Entered", Kind::TextDate, "dddd"},
    {"Orders", "Required By", "Required", Kind::TextDate, "ddd mm/dd/yyyy"},
    {"Orders", "Pickup Time", "Pickup", Kind::TextDate, "hh:mm AM/PM"},
    {"Orders", "Shipped Date", "Shipped", Kind::Date, "mm/dd/yyyy"},
    {"Orders", "Freight", "Freight", Kind::Number, "###,##0.00"},
    {"Orders", "Paid", "Paid", Kind::Boolean},
    {"Orders", "Remarks", "Remarks", Kind::Memo},

    {"Order Lines", "Order Number", "Order of Line", Kind::Number, "#####0"},
    {"Order Lines", "Line Number", "Line", Kind::Number, "##0"},
    {"Order Lines", "Product ID", "Product of Line", Kind::Number, "##0"},
    {"Order Lines", "Quantity", "Quantity", Kind::Number, "##,##0"},
    {"Order Lines", "Price", "Price", Kind::Number, "###,##0.00"},
    {"Order Lines", "Discount", "Discount", Kind::Number, "##0%"},
    {"Order Lines", "Amount", "Amount", Kind::Number, money},
    {"Order Lines", "Amount", "Sum of Amounts", Kind::Formula, money, FunctionCode::Sum, "SumOfAmounts"},
};

struct Link {
    std::string_view table1;
    std::string_view table2;
    std::string_view field;  ///< of the same name in both
};
constexpr Link links[] = {
    {"Customers", "Orders", "Customer ID"},
    {"Orders", "Order Lines", "Order Number"},
    {"Products", "Order Lines", "Product ID"},
};

CatalogRow FormulaRow(const Entry& entry, const Field& field) {
    const bool isText = field.Type == FieldType::Text;
    CatalogRow row = isText ? TextRow(entry.table, field, entry.description, "")
                            : NumberRow(entry.table, field, entry.description, entry.mask);
    row.formulaFlag = true;
    row.functionCode = static_cast<std::int32_t>(entry.function);
    row.aliasName = entry.alias;
    if (entry.parameter > 0) {
        row.parameter1 = " " + std::to_string(entry.parameter);
        row.defaultLength = entry.parameter;
    }
    return row;
}

CatalogRow RowOf(const Entry& entry, const Field& field) {
    switch (entry.kind) {
        case Kind::Text:
            return TextRow(entry.table, field, entry.description, entry.mask);
        case Kind::Memo: {
            CatalogRow row = TextRow(entry.table, field, entry.description, entry.mask);
            row.defaultLength = memoWidth;
            return row;
        }
        case Kind::TextDate:
            return TextDateRow(entry.table, field, entry.description, entry.mask);
        case Kind::Date:
            return DateRow(entry.table, field, entry.description, entry.mask);
        case Kind::Number:
            return NumberRow(entry.table, field, entry.description, entry.mask);
        case Kind::Boolean:
            return BooleanRow(entry.table, field, entry.description);
        case Kind::Formula:
            return FormulaRow(entry, field);
    }
    return {};
}

const Field& FieldOf(const Database& database, const Entry& entry) {
    const TableDef* table = database.FindTable(entry.table);
    const int position = table ? table->FindField(entry.field) : -1;
    if (position < 0)
        throw RunTimeError(ErrorNumber::ItemNotFound, "The sample database has no column [" + std::string(entry.table) +
                                                          "].[" + std::string(entry.field) + "].");
    return table->Fields[static_cast<std::size_t>(position)];
}

std::unique_ptr<Recordset> MakeTable(Database& database, const TableDef& table) {
    database.AppendTable(table);
    return database.OpenRecordset(table.Name, RecordsetType::Dynaset, RecordsetOption::AppendOnly);
}

}  // namespace

void WriteCatalog(Database& database, std::string_view path) {
    database.BeginTrans();
    const auto indexRows = MakeTable(database, IndexTableDef());
    IndexWriter index(*indexRows, path);
    std::int32_t id = 0;
    for (const Entry& entry : entries) {
        CatalogRow row = RowOf(entry, FieldOf(database, entry));
        row.id = ++id;
        index.Write(row);
    }
    const auto relationRows = MakeTable(database, RelationTableDef());
    RelationWriter relations(*relationRows, path, path);
    for (const Link& link : links)
        relations.Write(
            {std::string(link.table1), std::string(link.table2), std::string(link.field), std::string(link.field)});
    database.AppendTable(LabelsTableDef());
    AddSheets(database, commonSheets);
    database.CommitTrans();
}

}  // namespace quillform::sample
