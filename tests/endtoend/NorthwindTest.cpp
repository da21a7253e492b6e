// A report over real databases of both formats, judged by mdb-export (the sums) and pdftotext (the page).
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <sstream>

#include "endtoend/Support.h"

namespace endtoend {
namespace {

// The layout's columns in characters; the text file has them at these positions.
struct Place {
    std::size_t left;
    std::size_t length;
};
constexpr Place countryPlace{0, 15};
constexpr Place companyPlace{16, 40};
constexpr Place orderPlace{57, 7};
constexpr Place datePlace{65, 10};
constexpr Place freightPlace{76, 14};

std::string CatalogId(const std::vector<Row>& catalog, const std::string& table, const std::string& field) {
    for (const Row& row : catalog)
        if (row.at("Table") == table && row.at("Field") == field) return row.at("ID");
    return "no row for " + table + "." + field;
}

std::string Item(const std::string& code, Place place, const std::string& alignment, const std::string& sorts,
                 const std::string& totals, const std::string& mask) {
    std::ostringstream line;
    line << '#' << code << ", 0, " << place.left << ", " << place.length
         << ",\"x\",\"Arial\",\"8\",\"False\",\"False\",\"False\",\"0\",\" 15\",\"" << alignment << "\"," << sorts
         << ',' << totals << ",\"" << mask << "\",\"False\",\"False\"\r\n";
    return line.str();
}

/// Orders by country and customer with freight above 50 outside the USA; totals on both levels and at the end.
std::string FreightLayout(const std::vector<Row>& catalog, const std::string& database) {
    const std::string plain = "\"False\",\"False\",\"False\"";
    const std::string all = "\"True\",\"True\",\"True\"";
    std::string text = "^1.000.000\r\n";
    text +=
        Item(CatalogId(catalog, "Customers", "Country"), countryPlace, "L", "\"True\",\"False\",\"False\"", plain, "");
    text += Item(CatalogId(catalog, "Customers", "CompanyName"), companyPlace, "L", "\"False\",\"True\",\"False\"",
                 plain, "");
    text += Item(CatalogId(catalog, "Orders", "OrderID"), orderPlace, "R", "\"False\",\"False\",\"True\"", plain, "");
    text += Item(CatalogId(catalog, "Orders", "OrderDate"), datePlace, "L", plain, plain, "mm/dd/yyyy");
    text += Item(CatalogId(catalog, "Orders", "Freight"), freightPlace, "R", plain, all, "###,###,##0.00");
    text += "& " + CatalogId(catalog, "Orders", "Freight") + ",\"Freight > 50\",\"50\",\">\",\"AND\"\r\n";
    text += "& " + CatalogId(catalog, "Customers", "Country") + ",\"Country <> USA\",\"USA\",\"<>\",\"AND\"\r\n";
    text += "*0,1,0,\"15\",\"0\",\"1\",\"40\",\"1\",\"" + database +
            "\",\"0\",\"1\",\"False\",\"0\",\"0\",\"0\",\"0\",\"0\",\"0\",\"0\",\"0\",\"False\"\r\n";
    return text;
}

std::string FromSingleBytes(std::string_view bytes) {
    std::string text;
    for (char letter : bytes) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte < 0x80) {
            text += letter;
        } else {
            text += static_cast<char>(0xC0 | (byte >> 6));
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

std::vector<std::string> Words(std::string_view text) {
    std::istringstream stream{std::string(text)};
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

std::string Cell(const std::string& line, Place place) {
    std::string cell = line.size() > place.left ? line.substr(place.left, place.length) : "";
    cell.erase(0, cell.find_first_not_of(' '));
    cell.erase(cell.find_last_not_of(' ') + 1);
    return cell;
}

/// "1,234.50" in hundredths.
std::int64_t Hundredths(std::string text) {
    std::erase(text, ',');
    return std::llround(std::stod(text) * 100);
}

struct Order {
    std::string country;
    std::string company;
    std::int64_t freight = 0;  // in hundredths
};

/// The orders that the conditions leave, reckoned apart from the program: by number.
std::map<std::string, Order> ExpectedOrders(const std::filesystem::path& database) {
    std::map<std::string, Row> customers;
    for (const Row& row : ExportedRows(database, "Customers")) customers[row.at("CustomerID")] = row;
    std::map<std::string, Order> orders;
    for (const Row& row : ExportedRows(database, "Orders")) {
        const auto customer = customers.find(row.at("CustomerID"));
        if (customer == customers.end() || row.at("Freight").empty()) continue;
        const std::int64_t freight = Hundredths(row.at("Freight"));
        if (freight <= 5000 || customer->second.at("Country") == "USA") continue;
        orders[row.at("OrderID")] = {customer->second.at("Country"), customer->second.at("CompanyName"), freight};
    }
    return orders;
}

/// Walks the text file line by line: every detail against the expected order, every total line against the sum of the
/// orders above it. Gives the number of details.
class SumChecker {
public:
    explicit SumChecker(const std::map<std::string, Order>& orders) : orders_(orders) {}

    void Line(const std::string& line) {
        if (!Cell(line, orderPlace).empty())
            Detail(line);
        else if (const std::string total = Cell(line, freightPlace); !total.empty() && total[0] != '_')
            totals_.push_back(Hundredths(total));
    }
    std::size_t Finish() {
        EndGroup(true);
        EXPECT_EQ(totals_, std::vector<std::int64_t>{sum_}) << "grand total";
        return details_;
    }

private:
    void Detail(const std::string& line) {
        const auto found = orders_.find(Cell(line, orderPlace));
        ASSERT_NE(found, orders_.end()) << line;
        const Order& order = found->second;
        if (details_ > 0 && (order.country != country_ || order.company != company_))
            EndGroup(order.country != country_);
        EXPECT_EQ(Cell(line, countryPlace), order.country) << line;
        EXPECT_EQ(FromSingleBytes(Cell(line, companyPlace)), order.company) << line;
        EXPECT_EQ(Hundredths(Cell(line, freightPlace)), order.freight) << line;
        country_ = order.country;
        company_ = order.company;
        companySum_ += order.freight;
        countrySum_ += order.freight;
        sum_ += order.freight;
        ++details_;
    }
    void EndGroup(bool countryEnds) {
        std::vector<std::int64_t> expected = {companySum_};
        if (countryEnds) expected.push_back(countrySum_);
        ASSERT_GE(totals_.size(), expected.size()) << "after " << company_;
        EXPECT_EQ(
            std::vector<std::int64_t>(totals_.begin(), totals_.begin() + static_cast<std::ptrdiff_t>(expected.size())),
            expected)
            << "after " << company_;
        totals_.erase(totals_.begin(), totals_.begin() + static_cast<std::ptrdiff_t>(expected.size()));
        companySum_ = 0;
        if (countryEnds) countrySum_ = 0;
    }

    const std::map<std::string, Order>& orders_;
    std::vector<std::int64_t> totals_;  // printed since the last detail
    std::string country_;
    std::string company_;
    std::int64_t companySum_ = 0;
    std::int64_t countrySum_ = 0;
    std::int64_t sum_ = 0;
    std::size_t details_ = 0;
};

class Northwind : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (!HasTool("mdb-export") || !HasTool("pdftotext")) GTEST_SKIP() << "mdb-export or pdftotext isn't installed";
        database_ = CopyOfShared(GetParam(), folder_);
        if (database_.empty()) GTEST_SKIP() << "the shared sample databases aren't beside the project";
        const Outcome configured = Quillform({"configure", database_.string(), "--defaults"});
        ASSERT_EQ(configured.exitCode, 0) << configured.errors;
        const auto catalog = ExportedRows(database_, "Report - Index");
        WriteFile(folder_ / "FREIGHT.REP", FreightLayout(catalog, database_.string()));
    }
    void Run(const std::string& name, const std::string& walk) {
        const Outcome run =
            Quillform({"run", (folder_ / "FREIGHT.REP").string(), "-o", (folder_ / name).string(), "--walk", walk});
        ASSERT_EQ(run.exitCode, 0) << run.errors;
    }

    ScratchFolder folder_;
    std::filesystem::path database_;
};

TEST_P(Northwind, SumsAgreeWithIndependentReader) {
    Run("freight.txt", "one-pass");
    const auto orders = ExpectedOrders(database_);
    ASSERT_GT(orders.size(), 100U);
    SumChecker checker(orders);
    for (const std::string& line : Lines(ReadFile(folder_ / "freight.txt"))) checker.Line(line);
    EXPECT_EQ(checker.Finish(), orders.size());
}

TEST_P(Northwind, BothWalksWriteTheSameText) {
    Run("one.txt", "one-pass");
    Run("groups.txt", "groups");
    EXPECT_EQ(FirstDifference(ReadFile(folder_ / "one.txt"), ReadFile(folder_ / "groups.txt")), "");
}

TEST_P(Northwind, PageAndTextFileAgreeInEveryValue) {
    Run("freight.txt", "one-pass");
    Run("freight.pdf", "one-pass");
    const Outcome text = RunProgram({"pdftotext", "-layout", (folder_ / "freight.pdf").string(), "-"});
    ASSERT_EQ(text.exitCode, 0) << text.errors;
    const auto expected = Words(FromSingleBytes(ReadFile(folder_ / "freight.txt")));
    const auto actual = Words(text.output);
    ASSERT_GT(expected.size(), 500U);
    ASSERT_EQ(expected.size(), actual.size());
    for (std::size_t i = 0; i < expected.size(); ++i) ASSERT_EQ(expected[i], actual[i]) << "word " << i;
}

INSTANTIATE_TEST_SUITE_P(BothFormats, Northwind, testing::Values("jet3-northwind.mdb", "jet4-northwind.mdb"),
                         [](const auto& example) { return std::string(example.param).substr(0, 4); });

}  // namespace
}  // namespace endtoend
