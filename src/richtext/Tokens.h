#pragma once

#include <cstdint>
#include <string_view>

namespace quillform::richtext {

enum class TokenKind : std::uint8_t {
    GroupStart,
    GroupEnd,
    Word,    ///< \name or \nameN
    Symbol,  ///< backslash and one other character, which is `text`
    Hex,     ///< \'hh, its byte in `number`
    Text,    ///< bytes as they stand, without control characters
    Binary,  ///< \binN with its N bytes, which are passed over
    End,
};

struct Token {
    TokenKind kind = TokenKind::End;
    bool hasNumber = false;
    int number = 0;         ///< of a word; numbers too large for 32 bits are the nearest that fits
    std::string_view text;  ///< a part of the input
};

/// Splits rich text into its parts. Whatever the bytes are, each call moves on in them and none fails: a word that
/// breaks off is a word, a hexadecimal byte that is none stands for nothing, a binary part ends with the input.
class TokenReader {
public:
    explicit TokenReader(std::string_view input);

    Token Next();
    /// Passes over ".5" behind a word's number: measures in inches leave such numbers when they become twips.
    void SkipFraction();

private:
    Token Control();
    Token ControlWord();
    Token HexByte();
    Token PlainText();

    std::string_view input_;
    std::size_t at_ = 0;
    std::size_t lastBrace_;  // the last closing brace of the input
    int depth_ = 0;
};

}  // namespace quillform::richtext
