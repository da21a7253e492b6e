#include <algorithm>
#include <array>

#include "platform/DateRange.h"
#include "platform/Dates.h"
#include "platform/Text.h"

namespace quillform {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

struct Token {
    char kind = '\0';  ///< '0' a number, 'a' a word, else the separator itself
    int number = 0;
    std::size_t digits = 0;
    std::string_view word{};
};

/// A date text has few tokens; one with more is no date.
struct Tokens {
    static constexpr std::size_t kMost = 16;
    std::array<Token, kMost> list;
    std::size_t count = 0;
};

/// Reads a number of up to four digits, which is all that a part of a date or a time has.
bool TakeNumber(std::string_view text, std::size_t& at, Token& token) {
    token.kind = '0';
    for (; at < text.size() && IsDigit(text[at]); ++at) {
        if (++token.digits > 4) return false;
        token.number = token.number * 10 + (text[at] - '0');
    }
    return true;
}

/// Reads a word and the point of an abbreviation behind it, as in "Dec. 31".
void TakeWord(std::string_view text, std::size_t& at, Token& token) {
    const std::size_t begin = at;
    while (at < text.size() && IsLetter(text[at])) ++at;
    token.kind = 'a';
    token.word = text.substr(begin, at - begin);
    if (at < text.size() && text[at] == '.') ++at;
}

/// Splits into numbers, words and separators; blanks only separate. Empty where there is anything else.
std::optional<Tokens> Split(std::string_view text) {
    Tokens tokens;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (c == ' ') {
            ++at;
            continue;
        }
        if (tokens.count == Tokens::kMost) return std::nullopt;
        Token& token = tokens.list[tokens.count++];
        if (IsDigit(c)) {
            if (!TakeNumber(text, at, token)) return std::nullopt;
        } else if (IsLetter(c)) {
            TakeWord(text, at, token);
        } else if (c == '/' || c == '-' || c == ':' || c == ',') {
            token.kind = c;
            ++at;
        } else {
            return std::nullopt;
        }
    }
    return tokens;
}

enum class Half { None, Before, After };

Half HalfFromWord(std::string_view word) {
    if (EqualCaseBlind(word, "am") || EqualCaseBlind(word, "a")) return Half::Before;
    if (EqualCaseBlind(word, "pm") || EqualCaseBlind(word, "p")) return Half::After;
    return Half::None;
}

/// A month's name or its beginning of three letters at least; 0 for another word.
int MonthFromWord(std::string_view word) {
    if (word.size() < 3) return 0;
    for (int month = 1; month <= 12; ++month)
        if (EqualCaseBlind(MonthName(month).substr(0, word.size()), word)) return month;
    return 0;
}

/// Reads a date, a time, or both from the tokens.
class DateReader {
public:
    DateReader(const Tokens& tokens, int currentYear) : tokens_(tokens), currentYear_(currentYear) {}

    std::optional<double> Read() {
        if (tokens_.count == 0) return std::nullopt;
        if (StartsTime()) {
            if (!ReadTime()) return std::nullopt;
            if (!AtEnd() && !ReadDate()) return std::nullopt;
        } else {
            if (!ReadDate()) return std::nullopt;
            if (!AtEnd() && !(StartsTime() && ReadTime())) return std::nullopt;
        }
        if (!AtEnd()) return std::nullopt;
        return day_ < 0 ? day_ - time_ : day_ + time_;
    }

private:
    const Token& Peek(std::size_t ahead = 0) const {
        static constexpr Token end{};
        return at_ + ahead < tokens_.count ? tokens_.list[at_ + ahead] : end;
    }
    bool AtEnd() const { return at_ >= tokens_.count; }

    bool StartsTime() const {
        if (Peek().kind != '0') return false;
        return Peek(1).kind == ':' || (Peek(1).kind == 'a' && HalfFromWord(Peek(1).word) != Half::None);
    }

    /// One part of a time, 0 to `last`.
    bool ReadTimePart(int last, int& part) {
        if (Peek().kind != '0' || Peek().digits > 2 || Peek().number > last) return false;
        part = Peek().number;
        ++at_;
        return true;
    }

    bool ReadTime() {
        int hour = 0;
        int minute = 0;
        int second = 0;
        if (!ReadTimePart(23, hour)) return false;
        for (int* part : {&minute, &second}) {
            if (Peek().kind != ':') break;
            ++at_;
            if (!ReadTimePart(59, *part)) return false;
        }
        const Half half = Peek().kind == 'a' ? HalfFromWord(Peek().word) : Half::None;
        if (half != Half::None) ++at_;
        if (half == Half::Before && hour > 12) return false;
        if (half == Half::Before && hour == 12) hour = 0;
        if (half == Half::After && hour < 12) hour += 12;
        time_ = TimeSerial(hour, minute, second);
        return true;
    }

    std::size_t PartCount() const { return count_ + (month_ != 0 ? 1 : 0); }

    /// Collects up to three numbers and a month's name, then gives them their parts.
    bool ReadDate() {
        if (!TakePart(true)) return false;
        while (!AtEnd() && PartCount() < 3 && !StartsTime())
            if (!TakePart(TakeSeparator())) return false;
        return month_ != 0 ? AssignNamed() : separator_ != ',' && AssignNumbers();
    }

    bool TakePart(bool separated) {
        const Token& token = Peek();
        if (token.kind == '0') {
            // Numbers in a row are a date only with a separator or a month's name between them.
            if (!separated && month_ == 0) return false;
            numbers_[count_++] = token;
        } else {
            if (token.kind != 'a' || month_ != 0 || count_ > 1) return false;
            month_ = MonthFromWord(token.word);
            if (month_ == 0) return false;
        }
        ++at_;
        return true;
    }

    /// Separators are the same throughout; a comma may stand among others, as in "31-Dec, 1998".
    bool TakeSeparator() {
        const char kind = Peek().kind;
        if (kind != '/' && kind != '-' && kind != ',') return false;
        if (kind != ',' && separator_ != kind && separator_ != ',' && separator_ != '\0') return false;
        separator_ = kind;
        ++at_;
        return true;
    }

    static bool IsYear(const Token& token) { return token.digits > 2 || token.number > 31; }

    bool Assign(int year, int month, int day) {
        const int full = FullYear(year);
        if (full < 100 || full > 9999 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(full, month))
            return false;
        day_ = DateSerial(full, month, day);
        return true;
    }
    bool Assign(const Token& year, const Token& month, const Token& day) {
        return month.digits <= 2 && day.digits <= 2 && Assign(year.number, month.number, day.number);
    }

    bool AssignNamed() {
        const Token& first = numbers_[0];
        const Token& second = numbers_[1];
        if (count_ == 0) return false;
        if (count_ == 1)
            return (!IsYear(first) && Assign(currentYear_, month_, first.number)) || Assign(first.number, month_, 1);
        if (count_ != 2) return false;
        return (!IsYear(first) && Assign(second.number, month_, first.number)) ||
               (second.digits <= 2 && Assign(first.number, month_, second.number));
    }

    bool AssignNumbers() {
        const auto& [first, second, third] = numbers_;
        if (count_ == 2) {
            const Token year{'0', currentYear_, 4, {}};
            const Token day{'0', 1, 1, {}};
            if (IsYear(first)) return Assign(first, second, day);
            return Assign(year, first, second) || Assign(year, second, first) || Assign(second, first, day);
        }
        if (count_ != 3) return false;
        if (IsYear(first)) return Assign(first, second, third) || Assign(first, third, second);
        return Assign(third, first, second) || Assign(third, second, first) || Assign(first, second, third);
    }

    const Tokens& tokens_;
    int currentYear_;
    std::size_t at_ = 0;
    std::array<Token, 3> numbers_;
    std::size_t count_ = 0;
    int month_ = 0;
    char separator_ = '\0';
    double day_ = 0;
    double time_ = 0;
};

}  // namespace

std::optional<double> ParseDate(std::string_view text, int currentYear) {
    const auto tokens = Split(text);
    return tokens ? DateReader(*tokens, currentYear).Read() : std::nullopt;
}

}  // namespace quillform
