#include "sample/Company.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "platform/Dates.h"
#include "sample/WordLists.h"

namespace quillform::sample {

namespace {

constexpr int year = 2025;
constexpr int daysInYear = 365;
constexpr std::size_t customersPerCountry = 8;
constexpr int mostLines = 5;                // of an order
constexpr std::int64_t unitsPerCent = 100;  // of a Currency value, which counts ten-thousandths

/// SplitMix64. The standard library's distributions differ between implementations, so choices are made here.
class Draw {
public:
    explicit Draw(std::uint64_t seed) : state_(seed) {}

    /// 0 to `limit` - 1. The slight bias of the remainder is of no account for limits this small.
    int Below(int limit) { return static_cast<int>(Next() % static_cast<std::uint64_t>(limit)); }
    int Between(int low, int high) { return low + Below(high - low + 1); }
    bool OneIn(int count) { return Below(count) == 0; }
    template <typename List>
    std::string_view Of(const List& words) {
        return words[static_cast<std::size_t>(Below(static_cast<int>(words.size())))];
    }

private:
    std::uint64_t Next() {
        state_ += 0x9E3779B97F4A7C15;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
        return mixed ^ (mixed >> 31);
    }

    std::uint64_t state_;
};

std::string Replace(std::string_view pattern, char mark, std::string_view with) {
    std::string text;
    for (char letter : pattern)
        if (letter == mark)
            text += with;
        else
            text += letter;
    return text;
}

std::string Digits(int number, int width) {
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%0*d", width, number);
    return buffer.data();
}

std::string DayDigits(double serial) {
    const DateParts parts = PartsOf(serial);
    return Digits(parts.year, 4) + Digits(parts.month, 2) + Digits(parts.day, 2);
}

bool IsSunday(double serial) { return PartsOf(serial).weekday == 1; }

std::vector<StockItem> MakeStock(Draw& draw) {
    constexpr std::array<std::string_view, 6> accounts = {"1310-10", "1310-20", "1310-30",
                                                          "1320-10", "1320-20", "1330-10"};
    std::vector<StockItem> stock;
    for (const Department& department : Departments()) {
        int number = 1000;
        for (const Article& article : Articles()) {
            if (article.category != department.category) continue;
            number += draw.Between(1, 9);
            for (std::string_view finish : department.finishes) {
                StockItem item;
                item.code = std::string(department.letters) + "-" + Digits(number, 4) + "-" +
                            static_cast<char>(finish[0] - 'a' + 'A') + static_cast<char>(finish[1] - 'a' + 'A');
                item.description = std::string(article.name) + ", " + std::string(finish);
                item.quantity = draw.OneIn(15) ? 0 : draw.Between(2, 240);
                const std::int64_t unitCost = article.cents * draw.Between(48, 62) / 100;
                item.totalCost = unitCost * item.quantity * unitsPerCent;
                item.account = accounts[static_cast<std::size_t>(draw.Below(static_cast<int>(accounts.size())))];
                stock.push_back(std::move(item));
            }
        }
    }
    return stock;
}

std::vector<Product> MakeProducts(Draw& draw) {
    std::vector<Product> products;
    for (const Article& article : Articles()) {
        Product product;
        product.id = static_cast<int>(products.size()) + 1;
        product.name = article.name;
        product.category = article.category;
        product.unit = article.unit;
        product.price = article.cents * unitsPerCent;
        product.inStock = draw.Between(0, 600);
        product.weight = static_cast<float>(article.weight);
        product.discontinued = draw.OneIn(14);
        product.description = article.description;
        products.push_back(std::move(product));
    }
    return products;
}

Customer MakeCustomer(Draw& draw, const Country& country, std::size_t number) {
    const Country::City& city =
        country.cities[static_cast<std::size_t>(draw.Below(static_cast<int>(country.cities.size())))];
    const std::string_view family = country.families[number];
    Customer customer;
    customer.id = std::string(country.code) + "-" + Digits(static_cast<int>(number) + 1, 2);
    customer.company = Replace(country.patterns[number % country.patterns.size()], '*', family);
    customer.contact = std::string(draw.Of(country.givenNames)) + " " +
                       std::string(draw.OneIn(2) ? family : draw.Of(country.families));
    customer.street = Replace(draw.Of(country.streets), '#', std::to_string(draw.Between(1, 148)));
    customer.postalCode = city.postalCode;
    customer.city = city.name;
    customer.country = country.name;
    customer.phone = std::string(country.dialling) + " " + std::to_string(draw.Between(20, 989)) + " " +
                     std::to_string(draw.Between(100, 999)) + " " + Digits(draw.Below(10000), 4);
    customer.creditLimit = static_cast<std::int64_t>(draw.Between(4, 60)) * 500 * 100 * unitsPerCent;
    customer.preferred = draw.OneIn(3);
    customer.since = DateSerial(draw.Between(1996, 2024), draw.Between(1, 12), draw.Between(1, 28));
    if (draw.OneIn(3)) customer.notes = draw.Of(CustomerNotes());
    return customer;
}

std::vector<Customer> MakeCustomers(Draw& draw) {
    std::vector<Customer> customers;
    for (const Country& country : Countries())
        for (std::size_t number = 0; number < customersPerCountry; ++number)
            customers.push_back(MakeCustomer(draw, country, number));
    return customers;
}

/// A product that the order, whose lines so far are the last ones made, doesn't have yet.
std::size_t NewProduct(Draw& draw, const Company& company, int order) {
    for (;;) {
        const auto product = static_cast<std::size_t>(draw.Below(static_cast<int>(company.products.size())));
        const bool isTaken =
            std::any_of(company.lines.rbegin(),
                        company.lines.rbegin() + std::min<std::ptrdiff_t>(mostLines, std::ssize(company.lines)),
                        [&](const OrderLine& line) { return line.order == order && line.product == product; });
        if (!isTaken) return product;
    }
}

OrderLine MakeLine(Draw& draw, const Company& company, int order, int line) {
    constexpr std::array<int, 6> discountPercents = {0, 0, 0, 0, 5, 10};
    OrderLine made;
    made.order = order;
    made.line = line;
    made.product = NewProduct(draw, company, order);
    made.quantity = draw.Between(1, 24);
    made.price = company.products[made.product].price;
    const int percent =
        discountPercents[static_cast<std::size_t>(draw.Below(static_cast<int>(discountPercents.size())))];
    made.discount = static_cast<float>(percent) / 100;
    const std::int64_t hundredthCents = made.price / unitsPerCent * made.quantity * (100 - percent);
    made.amount = (hundredthCents + 50) / 100 * unitsPerCent;
    return made;
}

Order MakeOrder(Draw& draw, const Company& company, int number, double date) {
    Order order;
    order.number = number;
    order.customer = static_cast<std::size_t>(draw.Below(static_cast<int>(company.customers.size())));
    // A salesperson looks after whole countries.
    order.salesperson = Salespeople()[order.customer / customersPerCountry % Salespeople().size()];
    order.date = date;
    order.enteredAt = DayDigits(date) + Digits(draw.Between(8, 17), 2) + Digits(draw.Between(1, 59), 2);
    order.requiredBy = DayDigits(date + draw.Between(5, 35));
    order.pickupTime = Digits(draw.Between(7, 18), 2) + Digits(draw.Below(4) * 15, 2);
    // The last weeks of the year are still open.
    const double shipped = date + draw.Between(1, 12);
    if (shipped <= DateSerial(year, 12, 31)) order.shipped = shipped;
    order.freight = static_cast<std::int64_t>(draw.Between(350, 14900)) * unitsPerCent;
    order.paid = order.shipped != 0 && !draw.OneIn(6);
    if (draw.OneIn(4)) order.remarks = draw.Of(OrderRemarks());
    return order;
}

void MakeOrders(Draw& draw, Company& company, int count) {
    company.orders.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const auto day = static_cast<int>(static_cast<std::int64_t>(i) * (daysInYear - 2) / count);
        double date = DateSerial(year, 1, 2 + day);
        if (IsSunday(date)) date -= 1;
        const int number = 20001 + i;
        company.orders.push_back(MakeOrder(draw, company, number, date));
        const int lines = draw.Between(1, mostLines);
        for (int line = 1; line <= lines; ++line) company.lines.push_back(MakeLine(draw, company, number, line));
    }
}

}  // namespace

Company MakeCompany(int orders) {
    Draw draw(20250102);
    Company company;
    company.stock = MakeStock(draw);
    company.products = MakeProducts(draw);
    company.customers = MakeCustomers(draw);
    MakeOrders(draw, company, orders);
    return company;
}

}  // namespace quillform::sample
