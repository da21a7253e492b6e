#include <gtest/gtest.h>

#include "data/sqlite/Functions.h"
#include "platform/RunTimeError.h"

namespace quillform::sqlite {
namespace {

class FunctionsTest : public testing::Test {
protected:
    void SetUp() override { AddFunctions(connection_, clock_); }

    std::string Result(const std::string& expression) {
        Statement statement(connection_, "SELECT " + expression);
        statement.Step();
        return statement.IsNull(0) ? "Null" : std::string(statement.Text(0));
    }

    FixedClock clock_{36161.5};  // 1999-01-01 12:00
    Connection connection_{{}, Connection::Mode::Memory};
};

TEST_F(FunctionsTest, GiveTheDialectsResults) {
    struct Case {
        const char* expression;
        const char* result;
    };
    const Case cases[] = {
        {"qf_mid('Größe', 3, 2)", "öß"},
        {"qf_mid('abc', 9)", ""},
        {"qf_left('abc', 9)", "abc"},
        {"qf_right('Größe', 2)", "ße"},
        {"qf_mid(NULL, 1, 1)", "Null"},
        {"qf_len('Größe')", "5"},
        {"qf_instr(1, 'Hello', 'L')", "3"},
        {"qf_instr(4, 'Hello', 'l')", "4"},
        {"qf_instr(1, 'Hello', 'L', 0)", "0"},
        {"qf_instr(1, 'Hello', '')", "1"},
        {"qf_instrrev('Hello', 'l')", "4"},
        {"qf_replace('aXbxc', 'x', '--')", "a--b--c"},
        {"qf_replace('aXbxc', 'x', '-', 1, 1)", "a-bxc"},
        {"qf_strcomp('a', 'B')", "-1"},
        {"qf_strcomp('a', 'A')", "0"},
        {"qf_strcomp('a', 'A', 0)", "1"},
        {"qf_strconv('hELLO wORLD', 3)", "Hello World"},
        {"qf_string(3, 'xy')", "xxx"},
        {"qf_chr(128)", "€"},
        {"qf_asc('€')", "128"},
        {"qf_val('12 34 x')", "1234.0"},
        {"qf_str(5)", " 5"},
        {"qf_clng(2.5)", "2"},
        {"qf_clng(3.5)", "4"},
        {"qf_cint('-7')", "-7"},
        {"qf_ccur(1.00006)", "1.0001"},
        {"qf_cbool('true')", "-1"},
        {"qf_round(1.005, 1)", "1.0"},
        {"qf_int(-1.5)", "-2.0"},
        {"qf_fix(-1.5)", "-1.0"},
        {"qf_format(0.5, '0.00')", "0.50"},
        {"qf_format(36161.0, 'yyyy', 8)", "1999"},
        {"qf_text(36161.0, 8)", "1/1/1999"},
        {"qf_text(-1, 1)", "True"},
        {"qf_text(1.5)", "1.5"},
        {"qf_isnumeric('1,200')", "-1"},
        {"qf_isnumeric('x')", "0"},
        {"qf_isdate('12/31/1998')", "-1"},
        {"qf_isdate('13/32/1998')", "0"},
        {"qf_weekday(36161)", "6"},
        {"qf_weekday(36161, 2)", "5"},
        {"qf_dateadd('m', 1, 36191)", "36219.0"},
        {"qf_datediff('d', 36161, 36170)", "9"},
        {"qf_monthname(2, -1)", "Feb"},
        {"qf_date()", "36161.0"},
        {"qf_concat('a', NULL)", "a"},
        {"qf_concat(NULL, NULL)", "Null"},
        {"qf_divide(1, 4)", "0.25"},
        {"qf_divide(NULL, 0)", "Null"},
        {"qf_intdiv(7.5, 2)", "4"},
        {"qf_mod(-7, 3)", "-1"},
        {"qf_power(2, 10)", "1024.0"},
        {"qf_like('Berlin', 'b*')", "-1"},
        {"qf_imp(0, NULL)", "-1"},
        {"qf_imp(-1, 0)", "0"},
        {"qf_xor(-1, 0)", "-1"},
        {"'Straße' = 'STRASSE' COLLATE QFTEXT", "1"},
        {"'a ' = 'A' COLLATE QFTEXT", "1"},
    };
    for (const Case& c : cases) {
        try {
            EXPECT_EQ(Result(c.expression), c.result) << c.expression;
        } catch (const std::exception& error) {
            ADD_FAILURE() << c.expression << ": " << error.what();
        }
    }
}

TEST_F(FunctionsTest, FailWithTheirOwnErrors) {
    struct Case {
        const char* expression;
        ErrorNumber number;
    };
    const Case cases[] = {
        {"qf_mid('abc', 0)", ErrorNumber::InvalidProcedureCall},
        {"qf_left('abc', -1)", ErrorNumber::InvalidProcedureCall},
        {"qf_divide(1, 0)", ErrorNumber::DivisionByZero},
        {"qf_mod(1, 0.2)", ErrorNumber::DivisionByZero},
        {"qf_cint(40000)", ErrorNumber::Overflow},
        {"qf_clng('many')", ErrorNumber::DataTypeMismatch},
        {"qf_cdate('soon')", ErrorNumber::DataTypeMismatch},
        {"qf_exp(1000)", ErrorNumber::Overflow},
        {"qf_sqr(-1)", ErrorNumber::InvalidProcedureCall},
        {"qf_space(1e9)", ErrorNumber::InvalidProcedureCall},
        {"qf_dateadd('z', 1, 1)", ErrorNumber::InvalidProcedureCall},
    };
    for (const Case& c : cases) {
        try {
            ADD_FAILURE() << c.expression << " gave " << Result(c.expression);
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.Number(), c.number) << c.expression << ": " << error.what();
        }
    }
    EXPECT_EQ(Result("1"), "1") << "an error doesn't stay behind";
}

TEST_F(FunctionsTest, AggregatesPassOverNull) {
    const std::string from = " FROM (SELECT 1 AS n UNION ALL SELECT NULL UNION ALL SELECT 2 UNION ALL SELECT 4)";
    EXPECT_EQ(Result("round(qf_stdev(n), 9)" + from), "1.527525232");
    EXPECT_EQ(Result("round(qf_varp(n), 9)" + from), "1.555555556");
    EXPECT_EQ(Result("qf_stdev(n)" + from + " WHERE n = 1"), "Null");
    EXPECT_EQ(Result("qf_stdevp(n)" + from + " WHERE n = 1"), "0.0");
    EXPECT_EQ(Result("qf_last(n)" + from), "4");
    EXPECT_EQ(Result("qf_first(n)" + from + " WHERE n > 9"), "Null");
}

}  // namespace
}  // namespace quillform::sqlite
