#include "data/sql/ExpressionParser.h"

#include <algorithm>

namespace quillform::sql {

using syntax::Expression;
using syntax::ExpressionPtr;
using Kind = Expression::Kind;

namespace {

constexpr int highestTree = 400;

// Binding levels, loosest first.
constexpr int impLevel = 1;
constexpr int eqvLevel = 2;
constexpr int xorLevel = 3;
constexpr int orLevel = 4;
constexpr int andLevel = 5;
constexpr int notLevel = 6;
constexpr int comparisonLevel = 7;
constexpr int concatenateLevel = 8;
constexpr int additiveLevel = 9;
constexpr int modLevel = 10;
constexpr int integerDivideLevel = 11;
constexpr int multiplyLevel = 12;
constexpr int negateLevel = 13;
constexpr int powerLevel = 14;

struct InfixSign {
    std::string_view sign;
    Operator op;
    int level;
};
constexpr InfixSign infixSymbols[] = {
    {"=", Operator::Equal, comparisonLevel},
    {"<>", Operator::NotEqual, comparisonLevel},
    {"<", Operator::Less, comparisonLevel},
    {"<=", Operator::LessOrEqual, comparisonLevel},
    {">", Operator::Greater, comparisonLevel},
    {">=", Operator::GreaterOrEqual, comparisonLevel},
    {"&", Operator::Concatenate, concatenateLevel},
    {"+", Operator::Add, additiveLevel},
    {"-", Operator::Subtract, additiveLevel},
    {"\\", Operator::IntegerDivide, integerDivideLevel},
    {"*", Operator::Multiply, multiplyLevel},
    {"/", Operator::Divide, multiplyLevel},
    {"^", Operator::Power, powerLevel},
};
constexpr InfixSign infixWords[] = {
    {"And", Operator::And, andLevel}, {"Or", Operator::Or, orLevel},    {"Xor", Operator::Xor, xorLevel},
    {"Eqv", Operator::Eqv, eqvLevel}, {"Imp", Operator::Imp, impLevel}, {"Mod", Operator::Modulo, modLevel},
};

/// Reading an expression lends its error number to what follows only while it is read.
class ExpressionClause {
public:
    explicit ExpressionClause(TokenReader& tokens) : tokens_(tokens), before_(tokens.Clause()) {
        tokens.EnterClause(ErrorNumber::SyntaxInExpression);
    }
    ~ExpressionClause() { tokens_.EnterClause(before_); }
    ExpressionClause(const ExpressionClause&) = delete;
    ExpressionClause& operator=(const ExpressionClause&) = delete;

private:
    TokenReader& tokens_;
    ErrorNumber before_;
};

}  // namespace

void CheckHeight(int height) {
    if (height > highestTree)
        throw RunTimeError(ErrorNumber::QueryTooComplex, "The statement holds an expression that is too long.");
}

ExpressionPtr ExpressionParser::Made(Kind kind) const {
    auto made = std::make_unique<Expression>();
    made->kind = kind;
    return made;
}

void ExpressionParser::Adopt(Expression& parent, ExpressionPtr child) const {
    parent.height = std::max(parent.height, child->height + 1);
    CheckHeight(parent.height);
    parent.operands.push_back(std::move(child));
}

void ExpressionParser::AdoptSelect(Expression& parent) {
    parent.select = select_();
    parent.height = std::max(parent.height, parent.select->height + 1);
    CheckHeight(parent.height);
}

ExpressionPtr ExpressionParser::ReadFrom(int level) {
    const Nesting nesting(depth_);
    const ExpressionClause clause(tokens_);
    ExpressionPtr left = ReadPrefix(level);
    for (;;) {
        if (level <= comparisonLevel && NextIsTest()) {
            left = ReadTest(std::move(left));
            continue;
        }
        Infix infix{};
        if (!NextInfix(infix) || infix.level < level) return left;
        tokens_.Take();
        ExpressionPtr joined = Made(Kind::Binary);
        joined->op = infix.op;
        Adopt(*joined, std::move(left));
        Adopt(*joined, ReadFrom(infix.level + 1));
        left = std::move(joined);
    }
}

ExpressionPtr ExpressionParser::ReadPrefix(int level) {
    if (tokens_.IsWord("Not")) {
        tokens_.Take();
        ExpressionPtr made = Made(Kind::Unary);
        made->op = Operator::Not;
        Adopt(*made, ReadFrom(notLevel));
        return made;
    }
    if (tokens_.TakeSymbol("+")) return ReadFrom(std::max(level, negateLevel));
    if (tokens_.TakeSymbol("-")) {
        ExpressionPtr made = Made(Kind::Unary);
        made->op = Operator::Negate;
        Adopt(*made, ReadFrom(negateLevel));
        return made;
    }
    return ReadPrimary();
}

bool ExpressionParser::NextInfix(Infix& infix) const {
    const Token& token = tokens_.Peek();
    if (token.kind == TokenKind::Symbol) {
        for (const InfixSign& sign : infixSymbols)
            if (token.text == sign.sign) return infix = {sign.op, sign.level}, true;
    } else if (token.kind == TokenKind::Name) {
        for (const InfixSign& word : infixWords)
            if (IsSameWord(token.written, word.sign)) return infix = {word.op, word.level}, true;
    }
    return false;
}

bool ExpressionParser::NextIsTest() const {
    const std::size_t ahead = tokens_.IsWord("Not") ? 1 : 0;
    return tokens_.IsWord("Like", ahead) || tokens_.IsWord("Between", ahead) || tokens_.IsWord("In", ahead) ||
           (ahead == 0 && tokens_.IsWord("Is"));
}

/// Like, Between, In and Is, each also with Not.
ExpressionPtr ExpressionParser::ReadTest(ExpressionPtr tested) {
    bool negated = tokens_.TakeWord("Not");
    ExpressionPtr made;
    if (tokens_.TakeWord("Like")) {
        made = Made(Kind::Binary);
        made->op = Operator::Like;
        Adopt(*made, std::move(tested));
        Adopt(*made, ReadFrom(concatenateLevel));
    } else if (tokens_.TakeWord("Between")) {
        made = Made(Kind::Between);
        Adopt(*made, std::move(tested));
        Adopt(*made, ReadFrom(concatenateLevel));
        tokens_.ExpectWord("And");
        Adopt(*made, ReadFrom(concatenateLevel));
    } else if (tokens_.TakeWord("In")) {
        made = ReadIn(std::move(tested));
    } else {
        tokens_.ExpectWord("Is");
        negated = tokens_.TakeWord("Not");
        tokens_.ExpectWord("Null");
        made = Made(Kind::IsNull);
        Adopt(*made, std::move(tested));
    }
    made->negated = negated;
    return made;
}

ExpressionPtr ExpressionParser::ReadIn(ExpressionPtr tested) {
    tokens_.ExpectSymbol("(");
    ExpressionPtr made = Made(Kind::InList);
    Adopt(*made, std::move(tested));
    if (tokens_.IsWord("Select")) {
        made->kind = Kind::InSelect;
        AdoptSelect(*made);
    } else {
        do Adopt(*made, Read());
        while (tokens_.TakeSymbol(","));
    }
    tokens_.ExpectSymbol(")");
    return made;
}

ExpressionPtr ExpressionParser::ReadPrimary() {
    const Token& token = tokens_.Peek();
    ExpressionPtr made;
    switch (token.kind) {
        case TokenKind::Name:
            return ReadWord();
        case TokenKind::BracketedName:
            return ReadColumn();
        case TokenKind::Symbol:
            if (token.text == "(") return ReadParenthesised();
            tokens_.Refuse("An operand is missing");
        case TokenKind::End:
            tokens_.Refuse("An operand is missing");
        case TokenKind::Text:
            made = Made(Kind::Text);
            break;
        case TokenKind::Date:
            made = Made(Kind::Date);
            break;
        case TokenKind::Integer:
            made = Made(Kind::Integer);
            break;
        case TokenKind::Real:
            made = Made(Kind::Real);
            break;
    }
    made->text = token.text;
    made->integer = token.integer;
    made->real = token.real;
    tokens_.Take();
    return made;
}

ExpressionPtr ExpressionParser::ReadWord() {
    if (tokens_.IsWord("Exists") && tokens_.IsSymbol("(", 1)) {
        tokens_.Take();
        tokens_.Take();
        if (!tokens_.IsWord("Select")) tokens_.Refuse("A SELECT is missing behind Exists");
        ExpressionPtr made = Made(Kind::Exists);
        AdoptSelect(*made);
        tokens_.ExpectSymbol(")");
        return made;
    }
    if (tokens_.TakeWord("Null")) return Made(Kind::Null);
    // Left and Right are functions where a parenthesis follows, and a trailing $ makes nothing else.
    const Token& token = tokens_.Peek();
    const bool called = tokens_.IsSymbol("(", 1);
    if (called &&
        (tokens_.IsName() || tokens_.IsWord("Left") || tokens_.IsWord("Right") || token.written.back() == '$'))
        return ReadCall();
    if (!tokens_.IsSymbol(".", 1) && !tokens_.IsSymbol("!", 1) && (tokens_.IsWord("True") || tokens_.IsWord("False"))) {
        ExpressionPtr made = Made(Kind::Boolean);
        made->integer = tokens_.IsWord("True") ? -1 : 0;
        tokens_.Take();
        return made;
    }
    if (!tokens_.IsName()) tokens_.Refuse("An operand is missing");
    return ReadColumn();
}

ExpressionPtr ExpressionParser::ReadCall() {
    ExpressionPtr made = Made(Kind::Call);
    made->text = tokens_.Take().text;
    tokens_.ExpectSymbol("(");
    if (tokens_.TakeSymbol(")")) return made;
    if (tokens_.IsSymbol("*") && tokens_.IsSymbol(")", 1)) {
        tokens_.Take();
        Adopt(*made, Made(Kind::Star));
    } else {
        do Adopt(*made, Read());
        while (tokens_.TakeSymbol(","));
    }
    tokens_.ExpectSymbol(")");
    return made;
}

ExpressionPtr ExpressionParser::ReadColumn() {
    ExpressionPtr made = Made(Kind::Name);
    made->text = tokens_.Take().text;
    if (!tokens_.TakeSymbol(".") && !tokens_.TakeSymbol("!")) return made;
    made->qualifier = std::move(made->text);
    // Behind a point every word is a name.
    const TokenKind kind = tokens_.Peek().kind;
    if (kind != TokenKind::Name && kind != TokenKind::BracketedName) tokens_.Refuse("A column's name is missing");
    made->text = tokens_.Take().text;
    return made;
}

ExpressionPtr ExpressionParser::ReadParenthesised() {
    tokens_.ExpectSymbol("(");
    ExpressionPtr made;
    if (tokens_.IsWord("Select")) {
        made = Made(Kind::Select);
        AdoptSelect(*made);
    } else {
        made = Read();
    }
    tokens_.ExpectSymbol(")");
    return made;
}

}  // namespace quillform::sql
