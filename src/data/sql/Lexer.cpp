#include "data/sql/Lexer.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform::sql {

namespace {

constexpr std::string_view reservedWords[] = {
    "All",    "And", "As", "Between", "By",    "Distinct", "DistinctRow", "Eqv",   "Exists", "From", "Group",
    "Having", "Imp", "In", "Inner",   "Into",  "Is",       "Join",        "Left",  "Like",   "Mod",  "Not",
    "Null",   "On",  "Or", "Order",   "Right", "Select",   "Union",       "Where", "Xor",
};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool IsNamePart(char c) { return IsNameStart(c) || IsDigit(c); }
bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

class Lexer {
public:
    explicit Lexer(std::string_view statement) : statement_(statement) {}

    std::vector<Token> Run() {
        while (SkipSpace()) {
            start_ = position_;
            Token token = Next();
            token.offset = start_;
            token.written = statement_.substr(start_, position_ - start_);
            tokens_.push_back(std::move(token));
        }
        Token end;
        end.offset = statement_.size();
        tokens_.push_back(std::move(end));
        return std::move(tokens_);
    }

private:
    char At(std::size_t offset) const {
        return position_ + offset < statement_.size() ? statement_[position_ + offset] : '\0';
    }
    bool SkipSpace() {
        while (position_ < statement_.size() && IsSpace(statement_[position_])) ++position_;
        return position_ < statement_.size();
    }

    Token Next() {
        const char c = At(0);
        if (IsNameStart(c)) return Word();
        if (IsDigit(c) || (c == '.' && IsDigit(At(1)) && !AfterName())) return Number();
        if (c == '&' && !AfterOperand() && (At(1) == 'H' || At(1) == 'h')) return Prefixed(16);
        if (c == '&' && !AfterOperand() && (At(1) == 'O' || At(1) == 'o')) return Prefixed(8);
        switch (c) {
            case '[':
                return Enclosed(TokenKind::BracketedName, ']', "A name's closing bracket is missing");
            case '`':
                return Enclosed(TokenKind::BracketedName, '`', "A name's closing mark is missing");
            case '#':
                return Enclosed(TokenKind::Date, '#', "A date's closing number sign is missing");
            case '\'':
            case '"':
                return Quoted(c);
            default:
                return Symbol();
        }
    }

    Token Word() {
        Token token;
        token.kind = TokenKind::Name;
        while (IsNamePart(At(0))) token.text += statement_[position_++];
        if (At(0) == '$') ++position_;
        return token;
    }

    Token Number() {
        bool real = false;
        while (IsDigit(At(0))) ++position_;
        if (At(0) == '.') {
            real = true;
            ++position_;
            while (IsDigit(At(0))) ++position_;
        }
        if (At(0) == 'e' || At(0) == 'E') {
            const std::size_t sign = At(1) == '+' || At(1) == '-' ? 1 : 0;
            if (IsDigit(At(1 + sign))) {
                real = true;
                position_ += 1 + sign;
                while (IsDigit(At(0))) ++position_;
            }
        }
        if (IsNamePart(At(0))) Refuse("A letter follows a number without an operator");
        return NumberToken(real);
    }

    Token NumberToken(bool real) const {
        Token token;
        const char* first = statement_.data() + start_;
        const char* last = statement_.data() + position_;
        token.kind = TokenKind::Integer;
        if (real || std::from_chars(first, last, token.integer).ec != std::errc{}) {
            token.kind = TokenKind::Real;
            // Numbers too small for a double are 0, numbers too large are refused.
            const auto result = std::from_chars(first, last, token.real);
            if (result.ec == std::errc::result_out_of_range && (std::isinf(token.real) || IsLarge(first, last)))
                throw RunTimeError(ErrorNumber::Overflow, "The number " + std::string(first, last) + " is too large.");
        }
        return token;
    }
    static bool IsLarge(const char* first, const char* last) {
        const std::string_view text(first, static_cast<std::size_t>(last - first));
        return text.find("e-") == text.npos && text.find("E-") == text.npos;
    }

    /// &H1F and &O17.
    Token Prefixed(int base) {
        position_ += 2;
        const std::size_t digits = position_;
        while (IsNamePart(At(0))) ++position_;
        Token token;
        token.kind = TokenKind::Integer;
        const char* last = statement_.data() + position_;
        std::uint64_t bits = 0;
        const auto result = std::from_chars(statement_.data() + digits, last, bits, base);
        if (result.ec != std::errc{} || result.ptr != last || bits > 0xFFFFFFFFU)
            Refuse("A hexadecimal or octal number can't be read");
        // Four digits make a 16-bit number and eight a 32-bit number, so that &HFFFF is -1.
        token.integer = bits <= 0xFFFF ? static_cast<std::int16_t>(bits) : static_cast<std::int32_t>(bits);
        return token;
    }

    Token Enclosed(TokenKind kind, char closing, const char* missing) {
        const std::size_t end = statement_.find(closing, position_ + 1);
        if (end == std::string_view::npos) Refuse(missing);
        Token token;
        token.kind = kind;
        token.text = statement_.substr(position_ + 1, end - position_ - 1);
        if (token.text.find('\0') != std::string::npos) Refuse("A name or date holds a character that can't be");
        position_ = end + 1;
        if (kind == TokenKind::BracketedName && Trim(token.text).empty()) Refuse("A name in brackets is empty");
        return token;
    }

    Token Quoted(char quote) {
        Token token;
        token.kind = TokenKind::Text;
        for (++position_; position_ < statement_.size(); ++position_) {
            const char c = statement_[position_];
            if (c == '\0') Refuse("A text holds a character that can't be");
            if (c == quote) {
                ++position_;
                if (At(0) != quote) return token;
            }
            token.text += c;
        }
        Refuse("A text's closing quote is missing");
    }

    Token Symbol() {
        Token token;
        token.kind = TokenKind::Symbol;
        const std::string_view two = statement_.substr(position_, 2);
        if (two == "<=" || two == ">=" || two == "<>" || two == "=<" || two == "=>" || two == "!=") {
            token.text = two == "=<" ? "<=" : two == "=>" ? ">=" : two == "!=" ? "<>" : two;
            position_ += 2;
            return token;
        }
        if (std::string_view("+-*/\\^&=<>().,;!").find(At(0)) == std::string_view::npos)
            Refuse("A character has no meaning here");
        token.text = At(0);
        ++position_;
        return token;
    }

    bool AfterOperand() const {
        if (tokens_.empty()) return false;
        const Token& last = tokens_.back();
        if (last.kind == TokenKind::Name && IsReserved(last.written)) return false;
        return last.kind != TokenKind::Symbol || last.text == ")";
    }
    bool AfterName() const { return position_ > 0 && !tokens_.empty() && AfterOperand() && TouchesLast(); }
    bool TouchesLast() const { return tokens_.back().offset + tokens_.back().written.size() == position_; }

    [[noreturn]] void Refuse(const std::string& cause) const {
        Token token;
        token.offset = start_;
        token.written = statement_.substr(start_, 12);
        throw RunTimeError(ErrorNumber::SyntaxInExpression, cause + " " + Near(token, statement_) + ".");
    }

    std::string_view statement_;
    std::size_t position_ = 0;
    std::size_t start_ = 0;
    std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> Tokens(std::string_view statement) { return Lexer(statement).Run(); }

bool IsReserved(std::string_view word) {
    return std::any_of(std::begin(reservedWords), std::end(reservedWords),
                       [word](std::string_view reserved) { return IsSameWord(word, reserved); });
}

std::string Near(const Token& token, std::string_view statement) {
    const std::size_t character = CountCharacters(statement.substr(0, token.offset)) + 1;
    if (token.written.empty()) return "at the statement's end (character " + std::to_string(character) + ")";
    std::string shown(LeftCharacters(token.written, 40));
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < 0x20) c = ' ';
    return "near \"" + shown + "\" (character " + std::to_string(character) + ")";
}

}  // namespace quillform::sql
