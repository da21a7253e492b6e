#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillform::sample {

/// Amounts of money are in ten-thousandths, as Currency columns keep them; dates are serials (days since 1899-12-30).
struct StockItem {
    std::string code;         ///< department, number, finish: "KI-1004-WH"
    std::string description;  ///< at most 30 characters
    int quantity = 0;
    std::int64_t totalCost = 0;
    std::string account;  ///< ledger account and warehouse: "1310-20"
};

struct Product {
    int id = 0;
    std::string name;
    std::string category;
    std::string unit;
    std::int64_t price = 0;
    int inStock = 0;
    float weight = 0;  ///< kilograms
    bool discontinued = false;
    std::string description;
};

struct Customer {
    std::string id;  ///< country code and number: "DE-04"
    std::string company;
    std::string contact;
    std::string street;
    std::string postalCode;
    std::string city;
    std::string country;
    std::string phone;
    std::int64_t creditLimit = 0;
    bool preferred = false;
    double since = 0;
    std::string notes;  ///< empty: nothing noted
};

struct Order {
    int number = 0;
    std::size_t customer = 0;  ///< position in Company::customers
    std::string salesperson;
    double date = 0;
    std::string enteredAt;   ///< digits yyyymmddhhmm
    std::string requiredBy;  ///< digits yyyymmdd
    std::string pickupTime;  ///< digits hhmm
    double shipped = 0;      ///< 0: not yet
    std::int64_t freight = 0;
    bool paid = false;
    std::string remarks;  ///< empty: none
};

struct OrderLine {
    int order = 0;            ///< Order::number
    int line = 0;             ///< from 1 within the order
    std::size_t product = 0;  ///< position in Company::products
    int quantity = 0;
    std::int64_t price = 0;
    float discount = 0;       ///< share of the price, such as 0.05
    std::int64_t amount = 0;  ///< quantity times price less the discount, rounded to cents
};

/// A year of a small wholesaler of household goods.
struct Company {
    std::vector<StockItem> stock;
    std::vector<Product> products;
    std::vector<Customer> customers;
    std::vector<Order> orders;
    std::vector<OrderLine> lines;
};

/// Makes a company up. The same number of orders gives the same company on every machine: an own generator with a fixed
/// seed draws from word lists. An order has about three lines.
Company MakeCompany(int orders);

/// Number of orders in the sample database.
inline constexpr int sampleOrders = 800;

}  // namespace quillform::sample
