#include "richtext/Tokens.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace quillform::richtext {

namespace {

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsText(char c) { return static_cast<unsigned char>(c) >= 0x20 && c != '\\' && c != '{' && c != '}'; }

int HexDigit(char c) {
    if (IsDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

TokenReader::TokenReader(std::string_view input) : input_(input), lastBrace_(input.rfind('}')) {}

Token TokenReader::Next() {
    while (at_ < input_.size()) {
        switch (const char c = input_[at_]) {
            case '{':
                ++at_;
                ++depth_;
                return {TokenKind::GroupStart, false, 0, {}};
            case '}':
                ++at_;
                // Texts of a report are written as they are, so a brace too many may stand in one. Only the last one
                // of the input ends the document.
                if (depth_ <= 1 && at_ - 1 != lastBrace_) continue;
                --depth_;
                return {TokenKind::GroupEnd, false, 0, {}};
            case '\\':
                return Control();
            case '\t':
                ++at_;
                return {TokenKind::Word, false, 0, "tab"};
            default:
                if (IsText(c)) return PlainText();
                ++at_;  // line ends and other control characters mean nothing
        }
    }
    return {};
}

Token TokenReader::PlainText() {
    const std::size_t start = at_;
    while (at_ < input_.size() && IsText(input_[at_])) ++at_;
    return {TokenKind::Text, false, 0, input_.substr(start, at_ - start)};
}

Token TokenReader::Control() {
    ++at_;
    if (at_ == input_.size()) return {};
    if (IsLetter(input_[at_])) return ControlWord();
    if (input_[at_] == '\'') return HexByte();
    return {TokenKind::Symbol, false, 0, input_.substr(at_++, 1)};
}

Token TokenReader::HexByte() {
    ++at_;
    int value = 0;
    for (int digits = 0; digits < 2; ++digits) {
        const int digit = at_ < input_.size() ? HexDigit(input_[at_]) : -1;
        if (digit < 0) return {TokenKind::Text, false, 0, {}};
        value = value * 16 + digit;
        ++at_;
    }
    return {TokenKind::Hex, true, value, {}};
}

Token TokenReader::ControlWord() {
    const std::size_t start = at_;
    while (at_ < input_.size() && IsLetter(input_[at_])) ++at_;
    Token token{TokenKind::Word, false, 0, input_.substr(start, at_ - start)};

    const std::size_t sign = at_;
    if (at_ + 1 < input_.size() && input_[at_] == '-' && IsDigit(input_[at_ + 1])) ++at_;
    const bool isNegative = at_ > sign;
    const std::size_t digits = at_;
    while (at_ < input_.size() && IsDigit(input_[at_])) ++at_;
    if (at_ > digits) {
        token.hasNumber = true;
        const auto read = std::from_chars(input_.data() + sign, input_.data() + at_, token.number);
        using Limits = std::numeric_limits<int>;
        if (read.ec != std::errc()) token.number = isNegative ? Limits::min() : Limits::max();
    }
    if (at_ < input_.size() && input_[at_] == ' ') ++at_;
    if (token.text == "bin") {
        token.kind = TokenKind::Binary;
        at_ += std::min(input_.size() - at_, static_cast<std::size_t>(std::max(token.number, 0)));
    }
    return token;
}

void TokenReader::SkipFraction() {
    if (at_ == 0 || at_ + 1 >= input_.size() || !IsDigit(input_[at_ - 1])) return;
    if (input_[at_] != '.' || !IsDigit(input_[at_ + 1])) return;
    ++at_;
    while (at_ < input_.size() && IsDigit(input_[at_])) ++at_;
    if (at_ < input_.size() && input_[at_] == ' ') ++at_;
}

}  // namespace quillform::richtext
