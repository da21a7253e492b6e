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

/// Splits into numbers of up to four digits, words and separators; blanks only separate. Empty for anything else.
std::optional<Tokens> Split(std::string_view text) {
    Tokens tokens;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const char c = text[at];
        if (c == ' ') {
            ++at;
            continue;
        }
        Token token;
        if (IsDigit(c)) {
            for (; at < text.size() && IsDigit(text[at]) && at - begin < 5; ++at)
                token.number = token.number * 10 + (text[at] - '0');
            token.kind = '0';
            token.digits = at - begin;
            if (token.digits > 4) return std::nullopt;
        } else if (IsLetter(c)) {
            while (at < text.size() && IsLetter(text[at])) ++at;
            token.kind = 'a';
            token.word = text.substr(begin, at - begin);
            if (at < text.size() && text[at] == '.') ++at;  // "Dec. 31", "10 p.m." is left out
        } else if (c == '/' || c == '-' || c == ':' || c == ',') {
            token.kind = c;
            ++at;
        } else {
            return std::nullopt;
        }
        if (tokens.count == Tokens::kMost) return std::nullopt;
        tokens.list[tokens.count++] = token;
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

    /// Collects up to three numbers and a month's name, then gives them their parts.
    bool ReadDate() {
        char separator = '\0';
        bool wantsPart = true;
        while (!AtEnd() && !(wantsPart && StartsTime())) {
            const Token& token = Peek();
            if (token.kind == '0') {
                // Numbers in a row are a date only with a separator or a month's name between them.
                if (!wantsPart && month_ == 0) return false;
                if (count_ == 3) return false;
                numbers_[count_++] = token;
                wantsPart = false;
            } else if (token.kind == 'a') {
                if (month_ != 0 || count_ > 1) return false;
                month_ = MonthFromWord(token.word);
                if (month_ == 0) return false;
                wantsPart = false;
            } else if (token.kind == ':' || wantsPart) {
                return false;
            } else {
                if (separator != '\0' && separator != token.kind && separator != ',' && token.kind != ',') return false;
                separator = token.kind;
                wantsPart = true;
            }
            ++at_;
            if (!wantsPart && (count_ + (month_ != 0 ? 1u : 0u) == 3 || StartsTime())) break;
        }
        if (wantsPart || (separator == ',' && month_ == 0)) return false;
        return month_ != 0 ? AssignNamed() : AssignNumbers();
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
    double day_ = 0;
    double time_ = 0;
};

}  // namespace

std::optional<double> ParseDate(std::string_view text, int currentYear) {
    const auto tokens = Split(text);
    return tokens ? DateReader(*tokens, currentYear).Read() : std::nullopt;
}

}  // namespace quillform
