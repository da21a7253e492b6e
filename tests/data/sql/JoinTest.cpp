// Joins written out for SQLite give the rows that joining by hand gives, however they nest.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "data/sql/SampleTables.h"

namespace quillform::sql {
namespace {

constexpr std::size_t tableCount = 4;
using Cell = std::optional<int>;
using Row = std::array<Cell, tableCount * 2>;  // x and y of each table
using Rows = std::vector<Row>;

struct Tree {
    int table = -1;
    std::string word;  ///< INNER, LEFT, RIGHT
    std::unique_ptr<Tree> left;
    std::unique_ptr<Tree> right;
    std::vector<std::pair<std::size_t, std::size_t>> equal;  ///< cells that the condition wants equal
};

std::string CellName(std::size_t cell) {
    return "[T" + std::to_string(cell / 2) + "].[" + (cell % 2 == 0 ? "x" : "y") + "]";
}

std::string Written(const Tree& tree) {
    if (tree.table >= 0) return "[T" + std::to_string(tree.table) + "]";
    std::string text = "(" + Written(*tree.left) + " " + tree.word + " JOIN " + Written(*tree.right) + " ON ";
    for (std::size_t i = 0; i < tree.equal.size(); ++i)
        text += (i > 0 ? " AND " : "") + CellName(tree.equal[i].first) + " = " + CellName(tree.equal[i].second);
    return text + ")";
}

bool Meets(const Tree& tree, const Row& row) {
    return std::all_of(tree.equal.begin(), tree.equal.end(), [&](const auto& pair) {
        return row[pair.first] && row[pair.second] && *row[pair.first] == *row[pair.second];
    });
}

Row Merged(const Row& left, const Row& right) {
    Row row = left;
    for (std::size_t i = 0; i < row.size(); ++i)
        if (right[i]) row[i] = right[i];
    return row;
}

Rows Joined(const Tree& tree, const std::array<Rows, tableCount>& tables) {
    if (tree.table >= 0) return tables[static_cast<std::size_t>(tree.table)];
    const Rows left = Joined(*tree.left, tables);
    const Rows right = Joined(*tree.right, tables);
    Rows rows;
    std::vector<bool> leftMet(left.size());
    std::vector<bool> rightMet(right.size());
    for (std::size_t i = 0; i < left.size(); ++i)
        for (std::size_t j = 0; j < right.size(); ++j) {
            const Row row = Merged(left[i], right[j]);
            if (!Meets(tree, row)) continue;
            leftMet[i] = rightMet[j] = true;
            rows.push_back(row);
        }
    for (std::size_t i = 0; i < left.size(); ++i)
        if (tree.word == "LEFT" && !leftMet[i]) rows.push_back(left[i]);
    for (std::size_t j = 0; j < right.size(); ++j)
        if (tree.word == "RIGHT" && !rightMet[j]) rows.push_back(right[j]);
    return rows;
}

class Maker {
public:
    explicit Maker(unsigned seed) : random_(seed) {}

    int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }

    std::unique_ptr<Tree> MakeTree(std::size_t first, std::size_t end) {
        auto tree = std::make_unique<Tree>();
        if (end - first == 1) {
            tree->table = static_cast<int>(first);
            return tree;
        }
        const std::size_t middle = first + 1 + static_cast<std::size_t>(Below(static_cast<int>(end - first - 1)));
        tree->left = MakeTree(first, middle);
        tree->right = MakeTree(middle, end);
        tree->word = std::array{"INNER", "LEFT", "RIGHT"}[static_cast<std::size_t>(Below(3))];
        for (int i = Below(5) == 0 ? 2 : 1; i > 0; --i)
            tree->equal.emplace_back(AnyCell(first, middle), AnyCell(middle, end));
        return tree;
    }

    Rows MakeRows(std::size_t table) {
        Rows rows(static_cast<std::size_t>(Below(5)));
        for (Row& row : rows)
            for (std::size_t i = 0; i < 2; ++i)
                if (Below(4) > 0) row[table * 2 + i] = Below(3);
        return rows;
    }

private:
    std::size_t AnyCell(std::size_t first, std::size_t end) {
        return first * 2 + static_cast<std::size_t>(Below(static_cast<int>((end - first) * 2)));
    }

    std::mt19937 random_;
};

std::string Text(const Row& row) {
    std::string text;
    for (std::size_t i = 0; i < row.size(); ++i) text += (i > 0 ? "," : "") + (row[i] ? std::to_string(*row[i]) : "-");
    return text;
}

Schema MakeSchema() {
    Schema schema;
    for (std::size_t i = 0; i < tableCount; ++i) {
        TableDef table;
        table.Name = "T" + std::to_string(i);
        for (const char* name : {"x", "y"}) {
            Field field;
            field.Name = name;
            field.Type = FieldType::Long;
            table.Fields.push_back(field);
        }
        schema.push_back(table);
    }
    return schema;
}

void Fill(SampleDatabase& database, const std::array<Rows, tableCount>& tables) {
    const auto shown = [](const Cell& cell) { return cell ? std::to_string(*cell) : std::string("NULL"); };
    for (std::size_t i = 0; i < tableCount; ++i) {
        const std::string name = "T" + std::to_string(i);
        database.Run("DROP TABLE IF EXISTS " + name + "; CREATE TABLE " + name + "(x INTEGER, y INTEGER)");
        for (const Row& row : tables[i])
            database.Run("INSERT INTO " + name + " VALUES (" + shown(row[i * 2]) + ", " + shown(row[i * 2 + 1]) + ")");
    }
}

TEST(Joins, GiveTheRowsOfANaiveJoin) {
    const Schema schema = MakeSchema();
    SampleDatabase database;
    Maker maker(20260701);
    for (int round = 0; round < 1000; ++round) {
        std::array<Rows, tableCount> tables;
        for (std::size_t i = 0; i < tableCount; ++i) tables[i] = maker.MakeRows(i);
        Fill(database, tables);
        const std::size_t used = 2 + static_cast<std::size_t>(maker.Below(tableCount - 1));
        const std::unique_ptr<Tree> tree = maker.MakeTree(0, used);

        std::vector<std::string> expected;
        for (const Row& row : Joined(*tree, tables)) expected.push_back(Text(row));
        std::string columns;
        for (std::size_t cell = 0; cell < used * 2; ++cell) columns += (cell > 0 ? ", " : "") + CellName(cell);
        const std::string statement = "SELECT " + columns + " FROM " + Written(*tree);
        const std::string sqlite = Prepare(statement, schema, sampleYear).sqlite;
        std::vector<std::string> rows = database.Rows(sqlite);
        for (std::string& row : rows)
            for (std::size_t cell = used * 2; cell < tableCount * 2; ++cell) row += ",-";
        std::sort(expected.begin(), expected.end());
        std::sort(rows.begin(), rows.end());
        ASSERT_EQ(rows, expected) << statement << "\n" << sqlite;
    }
}

}  // namespace
}  // namespace quillform::sql
