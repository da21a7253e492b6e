#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "platform/Text.h"
#include "sample/Company.h"

namespace quillform::sample {
namespace {

TEST(Company, KeysAreUniqueAndTextsFitTheirColumns) {
    const Company company = MakeCompany(sampleOrders);
    std::set<std::string> keys;
    for (const StockItem& item : company.stock) {
        EXPECT_TRUE(keys.insert(item.code).second) << item.code;
        EXPECT_LE(CountCharacters(item.code), 15U);
        EXPECT_LE(CountCharacters(item.description), 30U) << item.description;
        EXPECT_EQ(CountCharacters(item.account), 7U) << item.account;
    }
    for (const Customer& customer : company.customers) {
        EXPECT_TRUE(keys.insert(customer.id).second) << customer.id;
        EXPECT_LE(CountCharacters(customer.company), 40U) << customer.company;
        EXPECT_LE(CountCharacters(customer.street), 40U) << customer.street;
    }
}

TEST(Company, AmountsAreQuantityTimesPriceLessDiscount) {
    const Company company = MakeCompany(sampleOrders);
    int discounted = 0;
    for (const OrderLine& line : company.lines) {
        const double exact = static_cast<double>(line.price) * line.quantity * (1 - static_cast<double>(line.discount));
        EXPECT_LE(std::abs(exact - static_cast<double>(line.amount)), 51) << "order " << line.order;
        EXPECT_EQ(line.amount % 100, 0) << "whole cents";
        if (line.discount > 0) ++discounted;
    }
    EXPECT_GT(discounted, 100);
}

TEST(Company, AnOrderHasAProductOnce) {
    const Company company = MakeCompany(sampleOrders);
    std::set<std::pair<int, std::size_t>> seen;
    for (const OrderLine& line : company.lines)
        EXPECT_TRUE(seen.insert({line.order, line.product}).second) << "order " << line.order;
}

TEST(Company, TextDatesAreDigitsThatAReportReads) {
    for (const Order& order : MakeCompany(sampleOrders).orders) {
        EXPECT_EQ(order.enteredAt.size(), 12U);
        EXPECT_NE(order.enteredAt.substr(10), "00") << "minute 00 would print as nothing";
        EXPECT_EQ(order.requiredBy.size(), 8U);
        EXPECT_EQ(order.pickupTime.size(), 4U);
    }
}

}  // namespace
}  // namespace quillform::sample
