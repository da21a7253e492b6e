#include "output/RtfText.h"

#include <algorithm>
#include <cctype>

#include "platform/AsciiRun.h"
#include "platform/CodePage.h"
#include "platform/Text.h"

namespace quillform {

namespace {

bool IsHex(std::string_view text, std::size_t at) {
    return at < text.size() && std::isxdigit(static_cast<unsigned char>(text[at])) != 0;
}

/// Whether the backslash at a position begins what no reader gets over.
bool BreaksReaders(std::string_view text, std::size_t backslash) {
    const std::string_view rest = text.substr(backslash + 1);
    if (rest.starts_with('\'')) return !IsHex(rest, 1) || !IsHex(rest, 2);
    if (!rest.starts_with("bin")) return false;
    const char next = rest.size() > 3 ? rest[3] : ' ';
    return next == '-' || std::isdigit(static_cast<unsigned char>(next)) != 0;
}

bool AppendAscii(std::string_view text, std::size_t from, std::size_t count, std::string& out) {
    const std::string_view run = text.substr(from, count);
    const auto isCommand = [](char c) { return c == '\\' || c == '{' || c == '}'; };
    if (std::none_of(run.begin(), run.end(), isCommand)) {
        out += run;
        return false;
    }
    for (std::size_t at = from; at < from + count; ++at) {
        out += text[at];
        if (text[at] != '\\') continue;
        const bool isPair = at + 1 < from + count && text[at + 1] == '\\';
        if (isPair || BreaksReaders(text, at)) out += '\\';
        if (isPair) ++at;
    }
    return true;
}

void AppendUnicode(char16_t unit, std::string& out) {
    out += "\\u";
    AppendRtfNumber(static_cast<std::int16_t>(unit), out);
    out += '?';
}

}  // namespace

void AppendRtfNumber(long number, std::string& out) { out += std::to_string(number); }

bool AppendRtfText(std::string_view utf8, std::string& out) {
    bool hasCommands = false;
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t plain = AsciiRun(utf8, at);
        if (AppendAscii(utf8, at, plain, out)) hasCommands = true;
        at += plain;
        if (at == utf8.size()) break;
        const std::size_t start = at;
        const int byte = Cp1252Byte(NextCodePoint(utf8, at));
        if (byte >= 0)
            out += static_cast<char>(byte);
        else
            for (const char16_t unit : Utf16FromUtf8(utf8.substr(start, at - start))) AppendUnicode(unit, out);
    }
    return hasCommands;
}

void BalanceRtfGroup(std::string& out, std::size_t start) {
    long depth = 0;
    long lowest = 0;
    for (std::size_t at = start; at < out.size(); ++at) {
        if (out[at] == '\\')
            ++at;  // whatever follows is no brace of a group
        else if (out[at] == '{')
            ++depth;
        else if (out[at] == '}')
            lowest = std::min(lowest, --depth);
    }
    if (depth == 0 && lowest == 0) return;
    out.insert(start, static_cast<std::size_t>(-lowest), '{');
    out.append(static_cast<std::size_t>(depth - lowest), '}');
}

}  // namespace quillform
