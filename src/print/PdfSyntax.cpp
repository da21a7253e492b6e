#include "print/PdfSyntax.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/Text.h"

namespace quillform::print {

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char32_t WithoutControl(char32_t codePoint) {
    const bool isControl = codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
    return isControl ? U' ' : codePoint;
}

}  // namespace

void AppendInteger(std::int64_t number, std::string& out) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    out.append(digits, end);
}

void AppendDecimal(double number, std::string& out) {
    auto thousandths = static_cast<std::int64_t>(std::llround(number * 1000));
    if (thousandths < 0) {
        out += '-';
        thousandths = -thousandths;
    }
    const std::int64_t whole = thousandths / 1000;
    auto fraction = static_cast<int>(thousandths % 1000);
    if (whole != 0 || fraction == 0) AppendInteger(whole, out);
    if (fraction == 0) return;
    out += '.';
    for (int place = 100; fraction != 0; place /= 10) {
        out += static_cast<char>('0' + fraction / place);
        fraction %= place;
    }
}

void AppendReference(int object, std::string& out) {
    AppendInteger(object, out);
    out += " 0 R";
}

void AppendHex16(unsigned value, std::string& out) {
    for (int shift = 12; shift >= 0; shift -= 4) out += kHexDigits[(value >> shift) & 15U];
}

void AppendUtf16Hex(char32_t codePoint, std::string& out) {
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint < 0xE000)) codePoint = 0xFFFD;
    if (codePoint < 0x10000) return AppendHex16(codePoint, out);
    const unsigned rest = static_cast<unsigned>(codePoint) - 0x10000U;
    AppendHex16(0xD800U + (rest >> 10U), out);
    AppendHex16(0xDC00U + (rest & 0x3FFU), out);
}

void AppendTextString(std::string_view utf8, std::string& out) {
    if (IsAscii(utf8)) {
        out += '(';
        for (const char c : utf8) {
            const char shown = static_cast<char>(WithoutControl(static_cast<unsigned char>(c)));
            if (shown == '(' || shown == ')' || shown == '\\') out += '\\';
            out += shown;
        }
        out += ')';
        return;
    }
    out += "<FEFF";
    for (std::size_t at = 0; at < utf8.size();) AppendUtf16Hex(WithoutControl(NextCodePoint(utf8, at)), out);
    out += '>';
}

void AppendNameCharacters(std::string_view name, std::string& out) {
    constexpr std::string_view delimiters = "()<>[]{}/%#";
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == 0) continue;  // no name can hold it, not even by number
        if (byte > 0x20 && byte < 0x7F && delimiters.find(c) == std::string_view::npos) {
            out += c;
            continue;
        }
        out += '#';
        out += kHexDigits[byte >> 4U];
        out += kHexDigits[byte & 15U];
    }
}

void AppendXmlText(std::string_view utf8, std::string& out) {
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t codePoint = WithoutControl(NextCodePoint(utf8, at));
        switch (codePoint) {
            case U'<':
                out += "&lt;";
                break;
            case U'>':
                out += "&gt;";
                break;
            case U'&':
                out += "&amp;";
                break;
            case 0xFFFE:
            case 0xFFFF:
                break;  // no characters of XML
            default:
                AppendCodePoint(codePoint, out);
        }
    }
}

}  // namespace quillform::print
