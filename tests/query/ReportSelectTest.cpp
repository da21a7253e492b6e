#include <gtest/gtest.h>

#include "query/ReportSelect.h"

namespace quillform {
namespace {

CatalogRow PlainRow(int id, std::string table, std::string field, bool numeric = false) {
    CatalogRow row;
    row.id = id;
    row.table = std::move(table);
    row.field = std::move(field);
    row.numeric = numeric;
    row.aliasName = " ";
    return row;
}

CatalogRow FormulaRow(int id, FunctionCode code, bool numeric) {
    CatalogRow row = PlainRow(id, "T", "F", numeric);
    row.formulaFlag = true;
    row.functionCode = static_cast<int>(code);
    row.aliasName = "Alias";
    row.parameter1 = " 2";
    row.parameter2 = " 3";
    return row;
}

clssFields DataItem(int code) {
    clssFields item;
    item.Code = static_cast<std::int16_t>(code);
    return item;
}

clssQuery Line(int code, std::string op, std::string value, std::string join = "AND") {
    return {.Key = {},
            .Text = {},
            .Join = std::move(join),
            .Value = std::move(value),
            .Operator = std::move(op),
            .Code = static_cast<std::int16_t>(code)};
}

ReportSelect Build(std::vector<clssFields> items, const std::vector<clssQuery>& lines, const Catalog& catalog,
                   JoinRule joinRule = JoinRule::Inner) {
    collFields fields;
    for (clssFields& item : items) fields.Add(std::move(item));
    collQuery queries;
    for (const clssQuery& line : lines) queries.Add(line);
    return BuildReportSelect(fields, queries, catalog, joinRule);
}

TEST(ReportSelect, ColumnFragmentsKeepEveryBlank) {
    struct Case {
        CatalogRow row;
        std::string_view columns;
    };
    const Case cases[] = {
        {PlainRow(1, "T", "F"), "[T].[F]"},
        {FormulaRow(1, FunctionCode::Mid, false), " Mid$([T].[F],  2,  3)  AS [Alias] "},
        {FormulaRow(1, FunctionCode::Left, false), " Left$([T].[F],  2)  AS [Alias] "},
        {FormulaRow(1, FunctionCode::Right, false), " Right$([T].[F],  2)  AS [Alias] "},
        {FormulaRow(1, FunctionCode::Count, true), " Count([T].[F])  AS [Alias] "},
        {FormulaRow(1, FunctionCode::Sum, true), " Sum([T].[F])  AS [Alias] "},
        {FormulaRow(1, FunctionCode::Average, true), " Avg([T].[F])  AS [Alias] "},
        {FormulaRow(1, FunctionCode::StandardDeviation, true), " StdDev([T].[F])  AS [Alias] "},
        {FormulaRow(1, FunctionCode::PopulationDeviation, true), " StdDevP([T].[F])  AS [Alias] "},
        {FormulaRow(1, static_cast<FunctionCode>(9), true), ""},
    };
    for (const Case& c : cases) EXPECT_EQ(Build({DataItem(1)}, {}, Catalog::Of({c.row}, {})).strColumns, c.columns);
}

TEST(ReportSelect, ItemsWithoutRowOrOutsideTheCatalogSelectNothing) {
    const Catalog catalog = Catalog::Of({PlainRow(1, "T", "F"), PlainRow(900, "T", "G")}, {});
    collFields fields;
    for (const int code : {-1, 0, 1, 7, 900, 9000, 1}) fields.Add(DataItem(code));
    const ReportSelect select = BuildReportSelect(fields, {}, catalog, JoinRule::Inner);
    EXPECT_EQ(select.strColumns, "[T].[F], [T].[F]");
    EXPECT_EQ(fields.Item(4).Code, 0);
    EXPECT_EQ(fields.Item(5).Code, 900);
    EXPECT_EQ(select.itemColumns, (std::vector<int>{-1, -1, 0, -1, -1, -1, 1}));
}

TEST(ReportSelect, TablesJoinInOrderOfAppearance) {
    const auto rows = std::vector<CatalogRow>{PlainRow(1, "A", "a"), PlainRow(2, "B", "b"), PlainRow(3, "C", "c")};
    const CatalogRelation ab{"A", "B", "x", "y"};
    const CatalogRelation bc{"B", "C", "z", "w"};
    const CatalogRelation ca{"C", "A", "p", "q"};
    struct Case {
        std::vector<int> items;
        std::vector<int> lines;
        std::vector<CatalogRelation> relations;
        JoinRule joinRule;
        std::string_view from;
    };
    const Case cases[] = {
        {{1}, {}, {}, JoinRule::Inner, "[A]"},
        {{1, 2}, {}, {}, JoinRule::Inner, "[A]"},
        {{1, 2, 3},
         {},
         {ab, bc},
         JoinRule::Inner,
         "(([A] INNER JOIN [B] ON [A].[x] = [B].[y]) INNER JOIN [C] ON [B].[z] = [C].[w])"},
        {{1, 3}, {}, {ca}, JoinRule::Left, "([A] LEFT JOIN [C] ON [C].[p] = [A].[q])"},
        {{2, 1}, {}, {ab, {"B", "A", "r", "s"}}, JoinRule::Right, "([B] RIGHT JOIN [A] ON [A].[x] = [B].[y])"},
        {{1}, {2}, {ab}, JoinRule::Inner, "([A] INNER JOIN [B] ON [A].[x] = [B].[y])"},
        {{1, 2, 3}, {}, {bc}, JoinRule::Inner, "([A] INNER JOIN [C] ON [B].[z] = [C].[w])"},
        {{0}, {}, {ab}, JoinRule::Inner, ""},
    };
    for (const Case& c : cases) {
        std::vector<clssFields> items;
        for (const int code : c.items) items.push_back(DataItem(code));
        std::vector<clssQuery> lines;
        for (const int code : c.lines) lines.push_back(Line(code, "=", "1"));
        EXPECT_EQ(Build(items, lines, Catalog::Of(rows, c.relations), c.joinRule).strFrom, c.from);
    }
}

TEST(ReportSelect, EleventhTableIsRefused) {
    std::vector<CatalogRow> rows;
    std::vector<clssFields> items;
    for (int i = 1; i <= 11; ++i) {
        rows.push_back(PlainRow(i, "T" + std::to_string(i), "F"));
        items.push_back(DataItem(i));
    }
    const Catalog catalog = Catalog::Of(rows, {});
    EXPECT_THROW(Build(items, {}, catalog), RunTimeError);
    items.pop_back();
    EXPECT_NO_THROW(Build(items, {}, catalog));
}

TEST(ReportSelect, ConditionsFollowTheNumericColumn) {
    struct Case {
        CatalogRow row;
        std::string_view where;
    };
    const Case cases[] = {
        {PlainRow(1, "T", "F", true), "[T].[F] >= 5"},
        {PlainRow(1, "T", "F", false), "[T].[F] >= '5'"},
        {FormulaRow(1, FunctionCode::Sum, true), "Sum([T].[F]) >= 5"},
        {FormulaRow(1, FunctionCode::PopulationDeviation, true), "StdDevP([T].[F]) >= 5"},
        {FormulaRow(1, FunctionCode::Mid, false), "Mid$([T].[F],  2,  3) >= ' 5 '"},
        {FormulaRow(1, FunctionCode::Right, false), "Right$([T].[F],  2) >= ' 5 '"},
        {FormulaRow(1, FunctionCode::Mid, true), ""},
        {FormulaRow(1, FunctionCode::Sum, false), ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Build({}, {Line(1, " >= ", " 5 ", "OR")}, Catalog::Of({c.row}, {})).strWhere, c.where);
}

TEST(ReportSelect, JoinWordsStandOnlyBetweenConditions) {
    const Catalog catalog = Catalog::Of({PlainRow(1, "T", "F", true), PlainRow(2, "T", "G")}, {});
    struct Case {
        std::vector<clssQuery> lines;
        std::string_view where;
        bool hasOr;
    };
    const Case cases[] = {
        {{Line(1, "=", "1", "OR")}, "[T].[F] = 1", false},
        {{Line(9, "=", "1"), Line(1, "=", "1", "OR"), Line(2, "LIKE", "a*", " AND ")},
         "[T].[F] = 1 AND [T].[G] LIKE 'a*'",
         false},
        {{Line(1, "=", "1"), Line(9, "=", "1"), Line(2, "=", "O'x", "and")}, "[T].[F] = 1 OR [T].[G] = 'O'x'", true},
    };
    for (const Case& c : cases) {
        const ReportSelect select = Build({}, c.lines, catalog);
        EXPECT_EQ(select.strWhere, c.where);
        EXPECT_EQ(select.hasOr, c.hasOr);
    }
}

TEST(ReportSelect, StatementsOfARun) {
    const Catalog catalog =
        Catalog::Of({PlainRow(1, "T", "F"), PlainRow(2, "T", "N", true), FormulaRow(3, FunctionCode::Left, false)}, {});
    clssFields sorted = DataItem(1);
    sorted.PrimarySort = sorted.TriarySort = true;
    clssFields formula = DataItem(3);
    formula.SecondarySort = true;
    const ReportSelect plain = Build({DataItem(1)}, {}, catalog);
    EXPECT_EQ(ReportStatement(plain), "SELECT [T].[F] FROM [T]");
    const ReportSelect full = Build({formula, sorted}, {Line(2, ">", "1")}, catalog);
    EXPECT_EQ(ReportStatement(full),
              "SELECT  Left$([T].[F],  2)  AS [Alias] , [T].[F] FROM [T] WHERE [T].[N] > 1 ORDER BY [T].[F], [T].[F], "
              "[T].[F]");
    EXPECT_EQ(GroupListStatement(full, *catalog.Find(1)), "SELECT [T].[F] FROM [T] WHERE [T].[N] > 1 GROUP BY [T].[F]");
    EXPECT_EQ(GroupListStatement(plain, *catalog.Find(1)), "SELECT [T].[F] FROM [T] GROUP BY [T].[F]");
}

TEST(ReportSelect, GroupTermsAndWhetherTheyAreExact) {
    const Catalog catalog =
        Catalog::Of({PlainRow(1, "T", "F"), PlainRow(2, "T", "N", true), FormulaRow(3, FunctionCode::Left, false)}, {});
    struct Case {
        int row;
        Value key;
        std::string_view term;
        bool isExact;
    };
    const Case cases[] = {
        {1, Value::Text("x"), "[T].[F] = 'x'", true},
        {1, Value::Text(" x "), "[T].[F] = 'x'", false},
        {1, Value::Text("O'x"), "[T].[F] = 'O'x'", false},
        {1, Value(), "[T].[F] Is Null", true},
        {1, Value::Text(""), "[T].[F] = ''", true},
        {2, Value::Integer(5), "[T].[N] = 5", true},
        {2, Value(), "[T].[N] Is Null", true},
        {2, Value::Single(0.1F), "[T].[N] = 0.1", false},
        {2, Value::Text("5"), "[T].[N] = 5", false},
        {3, Value::Text("xyz"), " Left$([T].[F],  2) = 'xyz'", false},
    };
    const ReportSelect select = Build({DataItem(1)}, {}, catalog);
    for (const Case& c : cases) {
        EXPECT_EQ(GroupStatement(select, *catalog.Find(c.row), c.key),
                  "SELECT [T].[F] FROM [T] WHERE " + std::string(c.term));
        EXPECT_EQ(GroupStatementIsExact(*catalog.Find(c.row), c.key), c.isExact) << c.term;
    }
}

}  // namespace
}  // namespace quillform
