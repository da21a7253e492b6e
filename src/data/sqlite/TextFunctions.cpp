#include <algorithm>
#include <string>

#include "data/collation/TextOrder.h"
#include "data/sqlite/FunctionCall.h"
#include "platform/CodePage.h"
#include "platform/Text.h"

namespace quillform::sqlite {
namespace {

/// Refuses to build a text that no field and no page could take, before the memory is asked for.
constexpr std::int64_t longestText = 1 << 24;

[[noreturn]] void FailArgument(const char* function) {
    throw RunTimeError(ErrorNumber::InvalidProcedureCall,
                       std::string("Invalid procedure call: an argument of ") + function + " is out of its range.");
}

std::size_t CountArgument(const Call& call, int i, const char* function) {
    const std::int64_t count = call.Whole(i);
    if (count < 0) FailArgument(function);
    return static_cast<std::size_t>(count);
}

void Mid(Call& call) {
    std::string storage;
    const std::size_t start = CountArgument(call, 1, "Mid");
    if (start == 0) FailArgument("Mid");
    const std::size_t count = call.Has(2) ? CountArgument(call, 2, "Mid") : std::string_view::npos;
    call.Return(MidCharacters(call.Text(0, storage), start, count));
}

void Left(Call& call) {
    std::string storage;
    call.Return(LeftCharacters(call.Text(0, storage), CountArgument(call, 1, "Left")));
}

void Right(Call& call) {
    std::string storage;
    call.Return(RightCharacters(call.Text(0, storage), CountArgument(call, 1, "Right")));
}

void Len(Call& call) {
    std::string storage;
    call.ReturnWhole(static_cast<std::int64_t>(CountCharacters(call.Text(0, storage))));
}

template <auto trim>
void Trimmed(Call& call) {
    std::string storage;
    call.Return(std::string_view(trim(call.Text(0, storage))));
}

/// Both texts in the form in which `compare` looks for one in the other: 0 letter for letter, else case-blind.
std::string Folded(std::string_view text, std::int64_t compare) {
    return compare == 0 ? std::string(text) : LowerCase(text);
}

/// 1-based character position of a byte offset; the case mapping keeps the number of characters.
std::int64_t CharacterPosition(std::string_view text, std::size_t offset) {
    return static_cast<std::int64_t>(CountCharacters(text.substr(0, offset))) + 1;
}

void InStr(Call& call) {
    // InStr([start,] text, sought[, compare]): a number in front is the start.
    const bool hasStart = call.Count() > 3 || (call.Count() == 3 && !call.IsText(0));
    const int at = hasStart ? 1 : 0;
    const std::int64_t start = hasStart ? call.Whole(0) : 1;
    if (start < 1) FailArgument("InStr");
    const std::int64_t compare = call.Whole(at + 2, 1);
    std::string first;
    std::string second;
    const std::string text = Folded(call.Text(at, first), compare);
    const std::string sought = Folded(call.Text(at + 1, second), compare);
    const std::string_view rest = MidCharacters(text, static_cast<std::size_t>(start));
    if (rest.empty()) return call.ReturnWhole(0);
    const std::size_t found = rest.find(sought);
    call.ReturnWhole(found == std::string_view::npos ? 0 : CharacterPosition(rest, found) + start - 1);
}

void InStrRev(Call& call) {
    const std::int64_t compare = call.Whole(3, 1);
    std::string first;
    std::string second;
    const std::string text = Folded(call.Text(0, first), compare);
    const std::string sought = Folded(call.Text(1, second), compare);
    const std::int64_t start = call.Whole(2, -1);
    if (start == 0 || start < -1) FailArgument("InStrRev");
    const std::string_view head = start < 0 ? text : LeftCharacters(text, static_cast<std::size_t>(start));
    const std::size_t found = head.rfind(sought);
    call.ReturnWhole(found == std::string_view::npos || head.empty() ? 0 : CharacterPosition(head, found));
}

void Replace(Call& call) {
    std::string first;
    std::string second;
    std::string third;
    const std::int64_t start = call.Whole(3, 1);
    std::int64_t left = call.Whole(4, -1);
    if (start < 1 || left < -1) FailArgument("Replace");
    const std::string_view text = MidCharacters(call.Text(0, first), static_cast<std::size_t>(start));
    const std::string_view replacement = call.Text(2, third);
    std::string_view rest = text;
    std::string result;
    const std::string sought = Folded(call.Text(1, second), call.Whole(5, 1));
    const std::size_t length = CountCharacters(sought);
    std::string folded = Folded(rest, call.Whole(5, 1));
    std::string_view foldedRest = folded;
    while (left != 0 && length > 0) {
        const std::size_t found = foldedRest.find(sought);
        if (found == std::string_view::npos) break;
        // The folded text may differ in bytes, so positions are carried over by characters.
        const std::string_view head = LeftCharacters(rest, CountCharacters(foldedRest.substr(0, found)));
        result.append(head).append(replacement);
        rest.remove_prefix(head.size());
        rest.remove_prefix(LeftCharacters(rest, length).size());
        foldedRest.remove_prefix(found + sought.size());
        if (left > 0) --left;
    }
    result.append(rest);
    call.Return(std::string_view(result));
}

void StrComp(Call& call) {
    std::string first;
    std::string second;
    const std::string_view left = call.Text(0, first);
    const std::string_view right = call.Text(1, second);
    const int order = call.Whole(2, 1) == 0 ? left.compare(right) : collation::Compare(left, right);
    call.ReturnWhole(order < 0 ? -1 : order > 0 ? 1 : 0);
}

std::string Repeated(std::string_view character, std::int64_t count, const char* function) {
    if (count < 0 || count > longestText) FailArgument(function);
    std::string text;
    for (std::int64_t i = 0; i < count; ++i) text += character;
    return text;
}

std::string Character(std::int64_t code) {
    if (code < 0 || code > 0xFFFF) FailArgument("Chr");
    if (code > 255) {  // ChrW comes here as well
        std::string wide;
        AppendCodePoint(static_cast<char32_t>(code), wide);
        return wide;
    }
    const char byte = static_cast<char>(static_cast<unsigned char>(code));
    return Utf8FromCp1252(std::string_view(&byte, 1));
}

void String(Call& call) {
    std::string storage;
    const std::string character =
        call.IsText(1) ? std::string(LeftCharacters(call.Text(1, storage), 1)) : Character(call.Whole(1) % 256);
    call.Return(std::string_view(Repeated(character, call.Whole(0), "String")));
}

void Asc(Call& call) {
    std::string storage;
    const std::string_view text = LeftCharacters(call.Text(0, storage), 1);
    if (text.empty()) FailArgument("Asc");
    std::size_t replaced = 0;
    const std::string byte = Cp1252FromUtf8(text, &replaced);
    std::size_t position = 0;
    // A character that the code page lacks can only be meant by its code point (AscW).
    call.ReturnWhole(replaced > 0 ? static_cast<std::int64_t>(NextCodePoint(text, position))
                                  : static_cast<unsigned char>(byte[0]));
}

std::string ProperCase(std::string_view text) {
    std::string proper;
    bool atStart = true;
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t begin = position;
        NextCodePoint(text, position);
        const std::string_view character = text.substr(begin, position - begin);
        proper += atStart ? UpperCase(character) : LowerCase(character);
        atStart = character == " " || character == "\t" || character == "\n" || character == "\r";
    }
    return proper;
}

void StrConv(Call& call) {
    std::string storage;
    const std::string_view text = call.Text(0, storage);
    switch (call.Whole(1)) {
        case 1:
            return call.Return(std::string_view(UpperCase(text)));
        case 2:
            return call.Return(std::string_view(LowerCase(text)));
        case 3:
            return call.Return(std::string_view(ProperCase(text)));
        default:
            FailArgument("StrConv");
    }
}

template <auto convert>
void Cased(Call& call) {
    std::string storage;
    call.Return(std::string_view(convert(call.Text(0, storage))));
}

const Function functions[] = {
    {"qf_mid", 2, 3, Mid},
    {"qf_left", 2, 2, Left},
    {"qf_right", 2, 2, Right},
    {"qf_len", 1, 1, Len},
    {"qf_trim", 1, 1, Trimmed<Trim>},
    {"qf_ltrim", 1, 1, Trimmed<LTrim>},
    {"qf_rtrim", 1, 1, Trimmed<RTrim>},
    {"qf_ucase", 1, 1, Cased<UpperCase>},
    {"qf_lcase", 1, 1, Cased<LowerCase>},
    {"qf_instr", 2, 4, InStr},
    {"qf_instrrev", 2, 4, InStrRev},
    {"qf_replace", 3, 6, Replace},
    {"qf_strcomp", 2, 3, StrComp},
    {"qf_string", 2, 2, String},
    {"qf_space", 1, 1, [](Call& call) { call.Return(std::string_view(Repeated(" ", call.Whole(0), "Space"))); }},
    {"qf_chr", 1, 1, [](Call& call) { call.Return(std::string_view(Character(call.Whole(0)))); }},
    {"qf_asc", 1, 1, Asc},
    {"qf_strconv", 2, 3, StrConv},
};

}  // namespace

std::span<const Function> TextFunctions() { return functions; }

}  // namespace quillform::sqlite
