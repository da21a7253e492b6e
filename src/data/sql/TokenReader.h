#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/sql/Lexer.h"
#include "platform/RunTimeError.h"

namespace quillform::sql {

/// Walks the tokens of one statement; knows the words that can't be names and the sentence of a syntax error.
class TokenReader {
public:
    explicit TokenReader(std::string_view statement) : statement_(statement), tokens_(Tokens(statement)) {}

    const Token& Peek(std::size_t ahead = 0) const {
        return tokens_[position_ + ahead < tokens_.size() ? position_ + ahead : tokens_.size() - 1];
    }
    const Token& Take() {
        const Token& token = Peek();
        if (position_ + 1 < tokens_.size()) ++position_;
        return token;
    }
    bool AtEnd() const { return Peek().kind == TokenKind::End; }

    bool IsWord(std::string_view word, std::size_t ahead = 0) const;
    bool IsSymbol(std::string_view symbol, std::size_t ahead = 0) const {
        return Peek(ahead).kind == TokenKind::Symbol && Peek(ahead).text == symbol;
    }
    bool TakeWord(std::string_view word);
    bool TakeSymbol(std::string_view symbol);
    void ExpectWord(std::string_view word);
    void ExpectSymbol(std::string_view symbol);

    /// Whether the token can be a name: bracketed, or a bare word that no clause needs.
    bool IsName(std::size_t ahead = 0) const;
    /// Takes a name; `what` is what the sentence says if there is none ("a table's name").
    std::string ExpectName(std::string_view what);

    /// The number of syntax errors from here on: each clause has one.
    void EnterClause(ErrorNumber number) { clause_ = number; }
    ErrorNumber Clause() const { return clause_; }
    /// "`cause` near ..."
    [[noreturn]] void Refuse(const std::string& cause) const { Refuse(clause_, cause); }
    [[noreturn]] void Refuse(ErrorNumber number, const std::string& cause) const;

private:
    std::string_view statement_;
    std::vector<Token> tokens_;
    std::size_t position_ = 0;
    ErrorNumber clause_ = ErrorNumber::SyntaxError;
};

/// Counts how deep the reader is inside parentheses and prefixes while it lives; QueryTooComplex past the bound.
class Nesting {
public:
    explicit Nesting(int& depth);
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& depth_;
};

}  // namespace quillform::sql
