#pragma once

#include <span>
#include <string_view>

namespace quillform::sample {

/// What companies of one country are called and where they are. Patterns hold `*` for the family name.
struct Country {
    std::string_view name;
    std::string_view code;  ///< two letters
    std::string_view dialling;
    std::span<const std::string_view> patterns;
    std::span<const std::string_view> families;
    std::span<const std::string_view> givenNames;
    std::span<const std::string_view> streets;  ///< with `#` for the house number
    struct City {
        std::string_view name;
        std::string_view postalCode;
    };
    std::span<const City> cities;
};
std::span<const Country> Countries();

struct Article {
    std::string_view category;
    std::string_view name;  ///< at most 20 characters, so that a finish fits behind it in a stock description
    std::string_view unit;
    int cents;
    double weight;  ///< kilograms
    std::string_view description;
};
std::span<const Article> Articles();

/// A department of the warehouse: a category, the two letters that its stock codes begin with, and its finishes.
struct Department {
    std::string_view category;
    std::string_view letters;
    std::span<const std::string_view> finishes;  ///< at most 8 characters
};
std::span<const Department> Departments();

std::span<const std::string_view> Salespeople();
std::span<const std::string_view> OrderRemarks();
std::span<const std::string_view> CustomerNotes();

}  // namespace quillform::sample
