#include "data/sql/TokenReader.h"

namespace quillform::sql {

namespace {

// Deep enough for people, shallow enough for the smallest stack.
constexpr int deepestNesting = 100;

}  // namespace

bool TokenReader::IsWord(std::string_view word, std::size_t ahead) const {
    return Peek(ahead).kind == TokenKind::Name && IsSameWord(Peek(ahead).written, word);
}

bool TokenReader::TakeWord(std::string_view word) {
    if (!IsWord(word)) return false;
    Take();
    return true;
}

bool TokenReader::TakeSymbol(std::string_view symbol) {
    if (!IsSymbol(symbol)) return false;
    Take();
    return true;
}

void TokenReader::ExpectWord(std::string_view word) {
    if (!TakeWord(word)) Refuse("The word " + std::string(word) + " is missing");
}

void TokenReader::ExpectSymbol(std::string_view symbol) {
    if (!TakeSymbol(symbol)) Refuse("The sign \"" + std::string(symbol) + "\" is missing");
}

bool TokenReader::IsName(std::size_t ahead) const {
    const Token& token = Peek(ahead);
    if (token.kind == TokenKind::BracketedName) return true;
    return token.kind == TokenKind::Name && token.written.back() != '$' && !IsReserved(token.written);
}

std::string TokenReader::ExpectName(std::string_view what) {
    if (!IsName()) Refuse("The place of " + std::string(what) + " is empty or taken by a reserved word");
    return Take().text;
}

void TokenReader::Refuse(ErrorNumber number, const std::string& cause) const {
    throw RunTimeError(number, cause + " " + Near(Peek(), statement_) + ".");
}

Nesting::Nesting(int& depth) : depth_(depth) {
    if (depth_ >= deepestNesting)
        throw RunTimeError(ErrorNumber::QueryTooComplex, "The statement nests its parentheses too deeply.");
    ++depth_;
}

}  // namespace quillform::sql
