#pragma once

#include <functional>
#include <memory>

#include "data/sql/SyntaxTree.h"
#include "data/sql/TokenReader.h"

namespace quillform::sql {

/// Reads expressions. From the tightest: ^, unary -, * and /, \, Mod, + and -, &, comparisons, Not, And, Or, Xor, Eqv,
/// Imp.
class ExpressionParser {
public:
    /// `select` reads a sub-select whose SELECT is the next token.
    using SelectReader = std::function<std::unique_ptr<syntax::Select>()>;
    ExpressionParser(TokenReader& tokens, int& depth, SelectReader select)
        : tokens_(tokens), depth_(depth), select_(std::move(select)) {}

    syntax::ExpressionPtr Read() { return ReadFrom(0); }

private:
    struct Infix {
        Operator op;
        int level;
    };
    syntax::ExpressionPtr ReadFrom(int level);
    syntax::ExpressionPtr ReadPrefix(int level);
    bool NextInfix(Infix& infix) const;
    syntax::ExpressionPtr ReadTest(syntax::ExpressionPtr tested);
    bool NextIsTest() const;
    syntax::ExpressionPtr ReadIn(syntax::ExpressionPtr tested);
    syntax::ExpressionPtr ReadPrimary();
    syntax::ExpressionPtr ReadWord();
    syntax::ExpressionPtr ReadCall();
    syntax::ExpressionPtr ReadColumn();
    syntax::ExpressionPtr ReadParenthesised();

    syntax::ExpressionPtr Made(syntax::Expression::Kind kind) const;
    void Adopt(syntax::Expression& parent, syntax::ExpressionPtr child) const;
    void AdoptSelect(syntax::Expression& parent);

    TokenReader& tokens_;
    int& depth_;
    SelectReader select_;
};

/// QueryTooComplex where a tree grows too high to be walked.
void CheckHeight(int height);

}  // namespace quillform::sql
