#include "data/sql/Parser.h"

#include <algorithm>

#include "data/sql/ExpressionParser.h"
#include "data/sql/TokenReader.h"

namespace quillform::sql {

using namespace syntax;

namespace {

constexpr std::size_t mostTables = 60;  // SQLite joins 64 at most
constexpr std::size_t mostUnions = 100;

class Parser {
public:
    explicit Parser(std::string_view text)
        : tokens_(text), expressions_(tokens_, depth_, [this] { return ReadSelect(); }) {}

    Statement ReadStatement();
    ExpressionPtr ReadCondition();

private:
    std::unique_ptr<Select> ReadSelect();
    std::unique_ptr<Select> ReadSelectCore();
    void ReadOptions(Select& select);
    void ReadColumns(Select& select);
    SelectColumn ReadColumn();
    void ReadFrom(Select& select);
    void ReadClauses(Select& select);
    void ReadOrderBy(Select& select);
    TableExpressionPtr ReadJoins();
    bool TakeJoin(JoinKind& kind);
    TableExpressionPtr ReadTable();
    TableExpressionPtr ReadParenthesisedTable();
    std::string ReadTableAlias();
    void ReadDelete(Statement& statement);
    void ReadInsert(Statement& statement);
    void ReadUpdate(Statement& statement);
    void ExpectEnd();

    ExpressionPtr ReadInto(Select& select) {
        ExpressionPtr made = expressions_.Read();
        select.height = std::max(select.height, made->height);
        return made;
    }

    TokenReader tokens_;
    int depth_ = 0;
    std::size_t tables_ = 0;
    ExpressionParser expressions_;
};

Statement Parser::ReadStatement() {
    Statement statement;
    if (tokens_.IsWord("Select")) {
        statement.select = ReadSelect();
    } else if (tokens_.TakeWord("Delete")) {
        ReadDelete(statement);
    } else if (tokens_.TakeWord("Insert")) {
        ReadInsert(statement);
    } else if (tokens_.TakeWord("Update")) {
        ReadUpdate(statement);
    } else {
        tokens_.Refuse(ErrorNumber::InvalidStatement,
                       "A statement begins with SELECT, DELETE, INSERT or UPDATE, but this one doesn't,");
    }
    ExpectEnd();
    return statement;
}

ExpressionPtr Parser::ReadCondition() {
    ExpressionPtr condition = expressions_.Read();
    ExpectEnd();
    return condition;
}

void Parser::ExpectEnd() {
    tokens_.TakeSymbol(";");
    if (!tokens_.AtEnd())
        tokens_.Refuse(ErrorNumber::SyntaxInExpression,
                       "An operator is missing, or the statement goes on after its end,");
}

std::unique_ptr<Select> Parser::ReadSelect() {
    const Nesting nesting(depth_);
    std::unique_ptr<Select> select = ReadSelectCore();
    while (tokens_.TakeWord("Union")) {
        Select::Union further;
        further.all = tokens_.TakeWord("All");
        further.select = ReadSelectCore();
        select->height = std::max(select->height, further.select->height);
        select->unions.push_back(std::move(further));
        if (select->unions.size() > mostUnions)
            throw RunTimeError(ErrorNumber::QueryTooComplex, "The statement unites too many selects.");
    }
    ReadOrderBy(*select);
    return select;
}

std::unique_ptr<Select> Parser::ReadSelectCore() {
    const ErrorNumber before = tokens_.Clause();
    tokens_.EnterClause(ErrorNumber::SyntaxError);
    tokens_.ExpectWord("Select");
    auto select = std::make_unique<Select>();
    ReadOptions(*select);
    ReadColumns(*select);
    if (tokens_.IsWord("Into"))
        tokens_.Refuse(ErrorNumber::NotSupported,
                       "SELECT INTO can't be run: make the table first, then insert its rows;");
    ReadFrom(*select);
    ReadClauses(*select);
    tokens_.EnterClause(before);
    return select;
}

void Parser::ReadOptions(Select& select) {
    for (;;) {
        if (tokens_.TakeWord("All")) continue;
        if (tokens_.TakeWord("Distinct")) {
            select.distinct = true;
        } else if (tokens_.TakeWord("DistinctRow")) {
            select.distinctRow = true;
        } else if (!select.hasTop && tokens_.IsWord("Top") &&
                   (tokens_.Peek(1).kind == TokenKind::Integer || tokens_.Peek(1).kind == TokenKind::Real)) {
            tokens_.Take();
            const Token& number = tokens_.Take();
            select.hasTop = true;
            select.top = number.kind == TokenKind::Integer ? static_cast<double>(number.integer) : number.real;
            select.topPercent = tokens_.TakeWord("Percent");
            const bool whole = number.kind == TokenKind::Integer;
            if ((!whole && !select.topPercent) || (select.topPercent && select.top > 100) || select.top < 0)
                tokens_.Refuse("TOP needs a whole number, or a part of a hundred with PERCENT,");
        } else {
            return;
        }
    }
}

void Parser::ReadColumns(Select& select) {
    if (tokens_.AtEnd() || tokens_.IsWord("From")) tokens_.Refuse("No column is selected");
    do {
        SelectColumn column = ReadColumn();
        if (column.expression) select.height = std::max(select.height, column.expression->height);
        select.columns.push_back(std::move(column));
    } while (tokens_.TakeSymbol(","));
}

SelectColumn Parser::ReadColumn() {
    SelectColumn column;
    if (tokens_.TakeSymbol("*")) {
        column.all = true;
        return column;
    }
    if (tokens_.IsName() && (tokens_.IsSymbol(".", 1) || tokens_.IsSymbol("!", 1)) && tokens_.IsSymbol("*", 2)) {
        column.all = true;
        column.qualifier = tokens_.Take().text;
        tokens_.Take();
        tokens_.Take();
        return column;
    }
    column.expression = expressions_.Read();
    if (tokens_.TakeWord("As")) column.alias = tokens_.ExpectName("a column's alias");
    return column;
}

void Parser::ReadFrom(Select& select) {
    if (!tokens_.IsWord("From")) {
        if (tokens_.AtEnd() || tokens_.IsSymbol(";") || tokens_.IsSymbol(")") || tokens_.IsWord("Union") ||
            tokens_.IsWord("Where") || tokens_.IsWord("Order"))
            return;  // a select of values alone
        tokens_.Refuse("An operator or a comma is missing, or FROM,");
    }
    tokens_.Take();
    tokens_.EnterClause(ErrorNumber::SyntaxInFrom);
    do select.from.push_back(ReadJoins());
    while (tokens_.TakeSymbol(","));
    if (tokens_.IsWord("In")) tokens_.Refuse(ErrorNumber::NotSupported, "Tables of another database can't be read");
}

void Parser::ReadClauses(Select& select) {
    if (tokens_.TakeWord("Where")) {
        tokens_.EnterClause(ErrorNumber::SyntaxInWhere);
        select.where = ReadInto(select);
    }
    if (tokens_.TakeWord("Group")) {
        tokens_.EnterClause(ErrorNumber::SyntaxInGroupBy);
        tokens_.ExpectWord("By");
        do select.groupBy.push_back(ReadInto(select));
        while (tokens_.TakeSymbol(","));
    }
    if (tokens_.TakeWord("Having")) {
        tokens_.EnterClause(ErrorNumber::SyntaxInHaving);
        select.having = ReadInto(select);
    }
}

void Parser::ReadOrderBy(Select& select) {
    if (!tokens_.TakeWord("Order")) return;
    const ErrorNumber before = tokens_.Clause();
    tokens_.EnterClause(ErrorNumber::SyntaxInOrderBy);
    tokens_.ExpectWord("By");
    do {
        SortTerm term;
        term.expression = ReadInto(select);
        term.descending = tokens_.TakeWord("Desc") || tokens_.TakeWord("Descending");
        if (!term.descending && !tokens_.TakeWord("Asc")) tokens_.TakeWord("Ascending");
        select.orderBy.push_back(std::move(term));
    } while (tokens_.TakeSymbol(","));
    tokens_.EnterClause(before);
}

bool Parser::TakeJoin(JoinKind& kind) {
    if (tokens_.TakeWord("Inner")) {
        kind = JoinKind::Inner;
    } else if (tokens_.IsWord("Left") || tokens_.IsWord("Right")) {
        kind = tokens_.IsWord("Left") ? JoinKind::Left : JoinKind::Right;
        tokens_.Take();
        tokens_.TakeWord("Outer");
    } else if (tokens_.IsWord("Join")) {
        kind = JoinKind::Inner;
    } else {
        return false;
    }
    tokens_.EnterClause(ErrorNumber::JoinSyntax);
    tokens_.ExpectWord("Join");
    return true;
}

TableExpressionPtr Parser::ReadJoins() {
    const Nesting nesting(depth_);
    TableExpressionPtr left = ReadTable();
    JoinKind kind{};
    while (TakeJoin(kind)) {
        auto join = std::make_unique<TableExpression>();
        join->join = kind;
        join->left = std::move(left);
        join->right = ReadTable();
        tokens_.EnterClause(ErrorNumber::JoinSyntax);
        tokens_.ExpectWord("On");
        join->on = expressions_.Read();
        left = std::move(join);
        tokens_.EnterClause(ErrorNumber::SyntaxInFrom);
    }
    return left;
}

TableExpressionPtr Parser::ReadTable() {
    if (tokens_.IsSymbol("(")) return ReadParenthesisedTable();
    if (++tables_ > mostTables)
        throw RunTimeError(ErrorNumber::QueryTooComplex, "The statement joins too many tables.");
    auto table = std::make_unique<TableExpression>();
    table->table = tokens_.ExpectName("a table's name");
    table->alias = ReadTableAlias();
    return table;
}

TableExpressionPtr Parser::ReadParenthesisedTable() {
    tokens_.ExpectSymbol("(");
    TableExpressionPtr made;
    if (tokens_.IsWord("Select")) {
        made = std::make_unique<TableExpression>();
        made->select = ReadSelect();
        tokens_.ExpectSymbol(")");
        made->alias = ReadTableAlias();
        if (made->alias.empty()) tokens_.Refuse("A select in FROM needs a name behind AS, missing");
        return made;
    }
    made = ReadJoins();
    tokens_.ExpectSymbol(")");
    return made;
}

std::string Parser::ReadTableAlias() {
    if (tokens_.TakeWord("As")) return tokens_.ExpectName("a table's alias");
    // Without AS only a word that can begin no clause is an alias; SET belongs to UPDATE.
    if (tokens_.IsName() && !tokens_.IsWord("Set") && !tokens_.IsWord("Values")) return tokens_.Take().text;
    return {};
}

void Parser::ReadDelete(Statement& statement) {
    statement.kind = Statement::Kind::Delete;
    tokens_.EnterClause(ErrorNumber::SyntaxInFrom);
    if (!tokens_.IsWord("From")) {
        // `*` or `table.*`: whole rows in either case.
        if (!tokens_.TakeSymbol("*")) {
            tokens_.ExpectName("a table's name");
            if (!tokens_.TakeSymbol(".")) tokens_.ExpectSymbol("!");
            tokens_.ExpectSymbol("*");
        }
    }
    tokens_.ExpectWord("From");
    statement.table = tokens_.ExpectName("a table's name");
    statement.alias = ReadTableAlias();
    if (tokens_.IsSymbol(",") || tokens_.IsWord("Inner") || tokens_.IsWord("Left") || tokens_.IsWord("Right"))
        tokens_.Refuse(ErrorNumber::JoinNotSupported, "A DELETE can't join tables");
    if (tokens_.TakeWord("Where")) statement.where = expressions_.Read();
}

void Parser::ReadInsert(Statement& statement) {
    statement.kind = Statement::Kind::Insert;
    tokens_.EnterClause(ErrorNumber::SyntaxInInsert);
    tokens_.ExpectWord("Into");
    statement.table = tokens_.ExpectName("a table's name");
    if (tokens_.TakeSymbol("(")) {
        do statement.columns.push_back(tokens_.ExpectName("a column's name"));
        while (tokens_.TakeSymbol(","));
        tokens_.ExpectSymbol(")");
    }
    if (tokens_.IsWord("Select")) {
        statement.select = ReadSelect();
        return;
    }
    tokens_.ExpectWord("Values");
    tokens_.ExpectSymbol("(");
    do statement.values.push_back(expressions_.Read());
    while (tokens_.TakeSymbol(","));
    tokens_.ExpectSymbol(")");
}

void Parser::ReadUpdate(Statement& statement) {
    statement.kind = Statement::Kind::Update;
    tokens_.EnterClause(ErrorNumber::SyntaxInUpdate);
    statement.table = tokens_.ExpectName("a table's name");
    statement.alias = ReadTableAlias();
    tokens_.ExpectWord("Set");
    do {
        Assignment assignment;
        assignment.column = tokens_.ExpectName("a column's name");
        if (tokens_.TakeSymbol(".") || tokens_.TakeSymbol("!"))
            assignment.column = tokens_.ExpectName("a column's name");
        tokens_.ExpectSymbol("=");
        assignment.value = expressions_.Read();
        statement.assignments.push_back(std::move(assignment));
    } while (tokens_.TakeSymbol(","));
    if (tokens_.TakeWord("Where")) statement.where = expressions_.Read();
}

}  // namespace

Statement Parse(std::string_view statement) { return Parser(statement).ReadStatement(); }
ExpressionPtr ParseCondition(std::string_view condition) { return Parser(condition).ReadCondition(); }

}  // namespace quillform::sql
