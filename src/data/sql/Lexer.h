#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Text.h"

namespace quillform::sql {

enum class TokenKind {
    End,
    Name,           ///< bare word, keywords included; a trailing `$` belongs to it
    BracketedName,  ///< [any name]
    Text,           ///< 'text' or "text"
    Integer,        ///< fits 64 bits
    Real,
    Date,    ///< #...#
    Symbol,  ///< operators and punctuation, two characters at most
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::size_t offset = 0;    ///< byte in the statement
    std::string_view written;  ///< as it stands in the statement
    std::string text;          ///< name, text or date without what encloses it
    std::int64_t integer = 0;
    double real = 0;
};

/// The tokens of a statement; the last one is End. They point into `statement`.
/// RunTimeError SyntaxInExpression for what is no token.
std::vector<Token> Tokens(std::string_view statement);

/// Whether a word of a statement is this word of the dialect.
inline bool IsSameWord(std::string_view written, std::string_view word) {
    return written.size() == word.size() && EqualCaseBlind(written, word);
}

/// Whether a bare word belongs to the clauses and can't be a name. Others, such as Table or Text, can.
bool IsReserved(std::string_view word);

/// "near "x" (character 5)" for sentences.
std::string Near(const Token& token, std::string_view statement);

}  // namespace quillform::sql
