#include "sample/SampleLayouts.h"

#include "sample/LayoutDraft.h"

namespace quillform::sample {

namespace {

// Edges of the reports, in cells from the edge of the printable area; 12 cells to the inch.
constexpr int leftEdge = 4;
constexpr int portraitRight = 92;
constexpr int landscapeRight = 122;

constexpr Accent navy{1};
constexpr Accent green{2};
constexpr Accent teal{3, "Times New Roman"};
constexpr Accent maroon{4};
constexpr Accent purple{5};

constexpr std::int16_t landscape = 0;
constexpr std::int16_t legalPaper = 5;

// Report options: what a layout is written as when the command isn't told.
constexpr std::int16_t textFile = 2;
constexpr std::int16_t richText = 3;
constexpr std::int16_t accessDatabase = 8;
constexpr std::int16_t wordMerge = 9;

/// Two levels from two columns: the account, and in it the department, which is the beginning of the stock code.
Layout StockOnHand(const Catalog& catalog, std::string_view database) {
    LayoutDraft draft(catalog, database, navy);
    draft.TitleBlock("Stock on Hand", "By account and department, with quantities and cost", leftEdge, portraitRight);
    draft.RecordCount(3, portraitRight);
    draft.Columns({{"Account #", "Account", 4, 9, 'L', Primary | HideDuplicates},
                   {"Department Letters", "Dept", 14, 5, 'C', HideDuplicates},
                   {"Stock Code", "Stock Code", 20, 14, 'L', Secondary},
                   {"Stock Code Description", "Description", 35, 29},
                   {"Quantity On Hand", "Quantity", 65, 11, 'R', AllTotals},
                   {"Total Cost", "Total Cost", 77, 14, 'R', AllTotals}},
                  5, leftEdge, portraitRight);
    draft.Groups(7, 2, 2, 1);
    return draft.Take();
}

/// Four tables joined (each must follow one that it is linked to, hence the quantity before the product), a condition
/// on a date, subtotals for each customer and country.
Layout SalesByCountry(const Catalog& catalog, std::string_view database) {
    LayoutDraft draft(catalog, database, green);
    draft.TitleBlock("Sales by Country and Customer", "Orders of the last quarter, line by line", leftEdge,
                     landscapeRight);
    draft.RecordCount(3, landscapeRight);
    draft.Columns({{"Country", "Country", 4, 15, 'L', Primary | HideDuplicates},
                   {"Company", "Customer", 20, 26, 'L', Secondary | HideDuplicates},
                   {"Order Number", "Order", 47, 7, 'L', Third | HideDuplicates},
                   {"Order Date (mm/dd/yyyy)", "Date", 55, 11},
                   {"Quantity", "Qty", 67, 7, 'R', AllTotals},
                   {"Product", "Product", 76, 22},
                   {"Price", "Price", 99, 9, 'R'},
                   {"Amount", "Amount", 109, 12, 'R', AllTotals}},
                  5, leftEdge, landscapeRight);
    draft.Condition("Order Date (mm/dd/yyyy)", ">=", "10/01/2025");
    draft.Groups(20, 1, 40, 1);
    draft.Settings().intOrientation = landscape;
    return draft.Take();
}

/// A detail of two rows, dates and times kept as digits in text columns, a page for each salesperson.
Layout OrderBook(const Catalog& catalog, std::string_view database) {
    LayoutDraft draft(catalog, database, maroon);
    draft.TitleBlock("Order Book", "Orders due in December, with their customers; each salesperson begins a page",
                     leftEdge, landscapeRight);
    draft.Columns({{"Salesperson", "Salesperson", 4, 18, 'L', Primary | HideDuplicates},
                   {"Order Number", "Order", 23, 7, 'L', Third},
                   {"Entered(mmm dd, yyyy)", "Entered", 31, 13},
                   {"Required(ddd mm/dd/yyyy)", "Required", 45, 15},
                   {"Pickup(hh:mm AM/PM)", "Pickup", 61, 10},
                   {"Shipped (mm/dd/yyyy)", "Shipped", 72, 12},
                   {"Paid", "Paid", 85, 8},
                   {"Freight", "Freight", 107, 14, 'R', SubTotal1 | GrandTotal},
                   {"Company", "", 23, 28, 'L', None, 1},
                   {"City", "", 52, 18, 'L', None, 1},
                   {"Remarks", "", 72, 48, 'L', None, 1}},
                  4, leftEdge, landscapeRight);
    draft.Condition("Required(ddd mm/dd/yyyy)", ">=", "20251201");
    draft.Condition("Required(ddd mm/dd/yyyy)", "<=", "20251231");
    draft.Groups(20, 0, 0, 0);
    draft.Settings().boolPageBreak1 = true;
    draft.Settings().intOrientation = landscape;
    return draft.Take();
}

/// Descriptions from a memo column below each product.
Layout PriceList(const Catalog& catalog, std::string_view database) {
    LayoutDraft draft(catalog, database, teal);
    draft.TitleBlock("Price List", "Household goods for kitchen, table, garden and workshop", leftEdge, portraitRight);
    draft.Columns({{"Category", "Category", 4, 15, 'L', Primary | HideDuplicates},
                   {"Product", "Product", 20, 30, 'L', Secondary},
                   {"Unit", "Unit", 51, 12},
                   {"Weight in kg", "kg", 64, 9, 'R'},
                   {"Unit Price", "Price", 74, 17, 'R'},
                   {"Product Description", "", 20, 70, 'L', None, 1}},
                  4, leftEdge, portraitRight);
    draft.Spacer(8, 20);
    draft.Condition("Discontinued", "=", "False");
    draft.Groups(15, 1, 0, 0);
    return draft.Take();
}

/// One line for each customer; goes to a text file as well as to paper.
Layout CustomerDirectory(const Catalog& catalog, std::string_view database) {
    LayoutDraft draft(catalog, database, purple);
    draft.TitleBlock("Customer Directory", "Preferred customers, and all with a credit limit of 20,000 or more",
                     leftEdge, landscapeRight);
    draft.RecordCount(3, landscapeRight);
    draft.Columns({{"Country", "Country", 4, 15, 'L', Primary | HideDuplicates},
                   {"Country Code", "Code", 20, 5, 'C', HideDuplicates},
                   {"Company", "Company", 26, 28, 'L', Secondary},
                   {"Contact", "Contact", 55, 21},
                   {"City", "City", 77, 14},
                   {"Customer Since (mmmm yyyy)", "Since", 92, 15},
                   {"Credit Limit", "Credit Limit", 108, 13, 'R', SubTotal1 | GrandTotal}},
                  5, leftEdge, landscapeRight);
    draft.Condition("Preferred", "=", "True");
    draft.Condition("Credit Limit", ">=", "20000", "OR");
    draft.Groups(20, 1, 0, 0);
    draft.Settings().intOrientation = landscape;
    draft.Settings().intOutputType = textFile;
    return draft.Take();
}

/// For a word processor, which gets tabs every half inch between the items: they start on whole half inches, six cells,
/// and no value is left out of a line.
Layout UnpaidOrders(const Catalog& catalog, std::string_view database) {
    LayoutDraft draft(catalog, database, navy);
    draft.Heading("Unpaid Orders", 0, 0, {.size = 18, .bold = true, .foreColour = navy.colour});
    draft.Special(ItemCode::LongDate, 0, 72, 18);
    draft.Heading("Ordered in the first half of the year", 2, 0, {.italic = true});
    draft.Heading("Page", 2, 72, {});
    draft.Special(ItemCode::PageNumber, 2, 78, 3);
    const Look heading{.bold = true, .underline = true, .foreColour = navy.colour};
    const ColumnPlan columns[] = {{"Company", "Customer", 0, 27, 'L', Primary},
                                  {"Order Number", "Order", 30, 5, 'L', Secondary},
                                  {"Order Date (mm/dd/yyyy)", "Date", 36, 11},
                                  {"Salesperson", "Salesperson", 54, 16},
                                  {"Freight", "Freight", 72, 11, 'L', GrandTotal}};
    for (const ColumnPlan& column : columns) {
        draft.Heading(column.heading, 4, column.left, heading);
        draft.Value(column.field, 6, column.left, column.length, {}, column.traits);
    }
    draft.Condition("Paid", "=", "False");
    draft.Condition("Order Date (mm/dd/yyyy)", "<", "07/01/2025");
    draft.Settings().intOutputType = richText;
    return draft.Take();
}

/// A sheet of address labels. Four rows stand in the middle of a label that is six rows high, since the first begins
/// one row below its edge.
Layout AddressLabels(const Catalog& catalog, std::string_view database) {
    LayoutDraft draft(catalog, database, navy);
    constexpr int left = 2;
    constexpr int lineLength = 31;
    constexpr int codeLength = 8;
    draft.Value("Company", 0, left, lineLength, {.bold = true}, Secondary);
    draft.Value("Street", 1, left, lineLength, {});
    draft.Value("Postal Code", 2, left, codeLength, {});
    draft.Value("City", 2, left + codeLength + 1, lineLength - codeLength - 1, {});
    draft.Value("Country", 3, left, lineLength, {}, Primary);
    draft.UseLabels(addressSheet);
    return draft.Take();
}

/// Names and addresses for letters to the preferred customers.
Layout LetterAddresses(const Catalog& catalog, std::string_view database) {
    LayoutDraft draft(catalog, database, navy);
    draft.Value("Company", 0, 4, 28, {}, Primary);
    draft.Value("Contact", 0, 34, 22, {});
    draft.Value("Customer Since (mmmm yyyy)", 0, 58, 15, {});
    draft.Value("Credit Limit", 0, 75, 11, {.alignment = 'R'});
    draft.Value("Street", 1, 4, 32, {});
    draft.Value("Postal Code", 1, 38, 9, {});
    draft.Value("City", 1, 49, 15, {});
    draft.Value("Country", 1, 66, 15, {});
    draft.Condition("Preferred", "=", "True");
    draft.Settings().intOutputType = wordMerge;
    return draft.Take();
}

/// A table for other programs: one row for each order line of the fourth quarter.
Layout SalesTable(const Catalog& catalog, std::string_view database) {
    LayoutDraft draft(catalog, database, green);
    draft.Value("Company", 0, 4, 28, {}, Primary);
    draft.Value("Country", 0, 33, 15, {});
    draft.Value("Order Number", 0, 49, 7, {}, Secondary);
    draft.Value("Order Date (yyyy/mm/dd)", 0, 57, 11, {});
    draft.Value("Salesperson", 0, 69, 16, {});
    draft.Value("Quantity", 0, 86, 7, {.alignment = 'R'});
    draft.Value("Product", 0, 95, 22, {});
    draft.Value("Amount", 0, 118, 12, {.alignment = 'R'});
    draft.Condition("Order Date (mm/dd/yyyy)", ">=", "10/01/2025");
    draft.Settings().intOrientation = landscape;
    draft.Settings().intPaperSize = legalPaper;
    draft.Settings().intOutputType = accessDatabase;
    return draft.Take();
}

using LayoutMaker = Layout (*)(const Catalog&, std::string_view);
constexpr std::string_view layoutNames[] = {"STOCK.REP",  "SALES.REP",  "ORDERS.REP", "PRICES.REP", "CUSTOMER.REP",
                                            "UNPAID.REP", "LABELS.REP", "LETTER.REP", "TABLE.REP"};
constexpr LayoutMaker layoutMakers[] = {StockOnHand,  SalesByCountry, OrderBook,       PriceList, CustomerDirectory,
                                        UnpaidOrders, AddressLabels,  LetterAddresses, SalesTable};
static_assert(std::size(layoutNames) == std::size(layoutMakers));

}  // namespace

std::span<const std::string_view> SampleLayoutNames() { return layoutNames; }

std::vector<SampleLayout> MakeLayouts(const Catalog& catalog, std::string_view databasePath) {
    std::vector<SampleLayout> layouts;
    for (std::size_t i = 0; i < std::size(layoutNames); ++i)
        layouts.push_back({std::string(layoutNames[i]), layoutMakers[i](catalog, databasePath)});
    return layouts;
}

}  // namespace quillform::sample
