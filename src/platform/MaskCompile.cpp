#include <algorithm>
#include <initializer_list>
#include <utility>

#include "platform/Clock.h"
#include "platform/Dates.h"
#include "platform/MaskProgram.h"
#include "platform/Text.h"

namespace quillform::mask {
namespace {

constexpr std::size_t kMostSections = 4;

bool IsDigitPlace(char c) { return c == '0' || c == '#'; }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

struct NamedMask {
    std::string_view name;
    Kind kind;
    std::string_view mask;
};

constexpr NamedMask kNamedMasks[] = {
    {"General Number", Kind::GeneralNumber, ""},
    {"Currency", Kind::Number, "$#,##0.00;($#,##0.00)"},
    {"Fixed", Kind::Number, "0.00"},
    {"Standard", Kind::Number, "#,##0.00"},
    {"Percent", Kind::Number, "0.00%"},
    {"Scientific", Kind::Number, "0.00E+00"},
    {"Yes/No", Kind::YesNo, ""},
    {"True/False", Kind::TrueFalse, ""},
    {"On/Off", Kind::OnOff, ""},
    {"General Date", Kind::Date, "c"},
    {"Long Date", Kind::Date, "dddddd"},
    {"Medium Date", Kind::Date, "dd-mmm-yy"},
    {"Short Date", Kind::Date, "ddddd"},
    {"Long Time", Kind::Date, "ttttt"},
    {"Medium Time", Kind::Date, "hh:nn AM/PM"},
    {"Short Time", Kind::Date, "hh:nn"},
};

struct HalfMarker {
    std::string_view text;
    Step step;
};

/// The longer ones first. The first row that fits counts, so a mixed spelling falls to the case-blind rows at the end.
constexpr HalfMarker kExactMarkers[] = {
    {"am/pm", Step::HalfLower},
    {"a/p", Step::HalfLetterLower},
};
constexpr HalfMarker kAnyCaseMarkers[] = {
    {"AM/PM", Step::HalfUpper},
    {"AMPM", Step::HalfUpper},
    {"A/P", Step::HalfLetterUpper},
};

/// The marker at the beginning of a text, if there is one.
const HalfMarker* MarkerAt(std::string_view text) {
    if (text.empty() || Lower(text.front()) != 'a') return nullptr;
    for (const HalfMarker& marker : kExactMarkers)
        if (text.starts_with(marker.text)) return &marker;
    for (const HalfMarker& marker : kAnyCaseMarkers)
        if (EqualCaseBlind(text.substr(0, marker.text.size()), marker.text)) return &marker;
    return nullptr;
}

constexpr std::string_view kLongTime = "ttttt";

bool IsLongTime(std::string_view text) { return EqualCaseBlind(text.substr(0, kLongTime.size()), kLongTime); }

/// Length of an escaped or quoted literal at the beginning of a text, with its marks; 0 if there is none.
std::size_t QuotedLength(std::string_view text) {
    if (text.front() == '\\') {
        std::size_t length = 1;
        if (length < text.size()) NextCodePoint(text, length);
        return length;
    }
    if (text.front() != '"') return 0;
    const auto end = text.find('"', 1);
    return end == std::string_view::npos ? text.size() : end + 1;
}

/// The literal itself, without backslash or quotes.
std::string_view Unquoted(std::string_view quoted) {
    const bool closed = quoted.front() == '"' && quoted.size() > 1 && quoted.back() == '"';
    quoted.remove_prefix(1);
    if (closed) quoted.remove_suffix(1);
    return quoted;
}

std::vector<std::string_view> SplitSections(std::string_view mask) {
    std::vector<std::string_view> sections;
    std::size_t begin = 0;
    for (std::size_t at = 0; at <= mask.size();) {
        if (at == mask.size() || mask[at] == ';') {
            sections.push_back(mask.substr(begin, at - begin));
            begin = ++at;
        } else {
            const std::size_t quoted = QuotedLength(mask.substr(at));
            at += quoted > 0 ? quoted : 1;
        }
    }
    if (sections.size() > kMostSections) sections.resize(kMostSections);
    return sections;
}

/// The first character that belongs to one kind only decides. Marks of letter case do where nothing else does.
Kind KindOf(std::string_view mask) {
    bool hasTextMark = false;
    for (std::size_t at = 0; at < mask.size();) {
        if (const std::size_t quoted = QuotedLength(mask.substr(at)); quoted > 0) {
            at += quoted;
            continue;
        }
        const char c = Lower(mask[at]);
        if (IsDigitPlace(c)) return Kind::Number;
        if (c == '@' || c == '&') return Kind::Text;
        if (std::string_view("cdwmqyhns").find(c) != std::string_view::npos) return Kind::Date;
        if (IsLongTime(mask.substr(at)) || MarkerAt(mask.substr(at)) != nullptr) return Kind::Date;
        hasTextMark = hasTextMark || c == '<' || c == '>' || c == '!';
        ++at;
    }
    return hasTextMark ? Kind::Text : Kind::Number;
}

/// What the compilers of all kinds share: the walk over a section and its literals.
class SectionCompiler {
public:
    SectionCompiler(std::string_view text, std::string& literals) : text_(text), literals_(literals) {}

protected:
    bool AtEnd() const { return at_ >= text_.size(); }
    char Peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    std::string_view Rest() const { return text_.substr(at_); }
    void Skip(std::size_t count) { at_ += count; }

    /// Number of characters from here on that are the same letter, case-blind; `most` at most.
    std::size_t RunLength(std::size_t most) const {
        std::size_t length = 1;
        while (length < most && Lower(Peek(length)) == Lower(Peek())) ++length;
        return length;
    }

    Operation& Add(Step step) { return section_.operations.emplace_back(Operation{step, false, 0, 0}); }

    void AddLiteral(std::string_view literal) {
        if (literal.empty()) return;
        auto& operations = section_.operations;
        // The pool ends with the literal of the last operation, if that is one, so both become one.
        if (operations.empty() || operations.back().step != Step::Literal)
            operations.push_back({Step::Literal, false, 0, static_cast<std::uint32_t>(literals_.size())});
        operations.back().count += static_cast<std::uint32_t>(literal.size());
        literals_ += literal;
    }

    bool TakeQuoted() {
        const std::size_t length = QuotedLength(Rest());
        if (length == 0) return false;
        AddLiteral(Unquoted(Rest().substr(0, length)));
        Skip(length);
        return true;
    }

    void TakeLiteral() {
        AddLiteral(Rest().substr(0, 1));
        Skip(1);
    }

    Section section_;

private:
    std::string_view text_;
    std::size_t at_ = 0;
    std::string& literals_;
};

class NumberCompiler : SectionCompiler {
public:
    using SectionCompiler::SectionCompiler;

    Section Compile() {
        while (!AtEnd()) {
            if (TakeQuoted()) continue;
            const char c = Peek();
            if (IsDigitPlace(c))
                TakeDigitPlace();
            else if (c == ',')
                ++commas_, Skip(1);
            else if (c == '.' && !behindPoint_ && !section_.scientific)
                TakePoint();
            else if (IsExponent())
                TakeExponent();
            else
                TakeOther();
        }
        ScaleByCommas();
        if (firstZero_ >= 0) section_.neededIntegers = section_.integerPlaces - firstZero_;
        SetRests();
        return std::move(section_);
    }

private:
    bool IsExponent() const {
        const bool hasDigits = section_.integerPlaces + section_.decimalPlaces > 0;
        return Lower(Peek()) == 'e' && (Peek(1) == '+' || Peek(1) == '-') && hasDigits && !section_.scientific;
    }

    void TakeDigitPlace() {
        const bool needed = Peek() == '0';
        Skip(1);
        if (!behindPoint_ && commas_ > 0 && section_.integerPlaces > 0) section_.grouped = true;
        commas_ = 0;
        int& places = behindPoint_ ? section_.decimalPlaces : section_.integerPlaces;
        const Step step = behindPoint_ ? Step::DecimalDigits : Step::IntegerDigits;
        if (needed && behindPoint_) section_.neededDecimals = places + 1;
        if (needed && !behindPoint_ && firstZero_ < 0) firstZero_ = places;
        ++places;
        if (section_.operations.empty() || section_.operations.back().step != step) Add(step);
        ++section_.operations.back().count;
    }

    void TakePoint() {
        ScaleByCommas();
        if (section_.integerPlaces == 0) Add(Step::AllInteger);
        Add(Step::Point);
        behindPoint_ = true;
        Skip(1);
    }

    void TakeExponent() {
        ScaleByCommas();
        Operation& exponent = Add(Step::Exponent);
        exponent.rest = static_cast<unsigned char>(Peek());
        exponent.always = Peek(1) == '+';
        Skip(2);
        for (; IsDigitPlace(Peek()); Skip(1))
            if (Peek() == '0' || exponent.count > 0) ++exponent.count;
        section_.scientific = true;
        behindPoint_ = true;  // further places can only be decimals
    }

    void TakeOther() {
        if (Peek() == '%') section_.power += 2;
        TakeLiteral();
    }

    /// Commas with no digit place behind them, before the point or the end, each divide by a thousand.
    void ScaleByCommas() {
        if (section_.integerPlaces + section_.decimalPlaces > 0) section_.power -= 3 * commas_;
        commas_ = 0;
    }

    void SetRests() {
        int before = 0;
        int behind = 0;
        for (Operation& operation : section_.operations) {
            if (operation.step == Step::IntegerDigits) {
                before += static_cast<int>(operation.count);
                operation.rest = static_cast<std::uint32_t>(section_.integerPlaces - before);
            } else if (operation.step == Step::DecimalDigits) {
                operation.rest = static_cast<std::uint32_t>(behind);
                behind += static_cast<int>(operation.count);
            }
        }
    }

    int commas_ = 0;
    int firstZero_ = -1;
    bool behindPoint_ = false;
};

class DateCompiler : SectionCompiler {
public:
    using SectionCompiler::SectionCompiler;

    Section Compile() {
        while (!AtEnd())
            if (!TakeQuoted() && !TakeMarker() && !TakeToken()) TakeOther();
        SettleMinutes();
        return std::move(section_);
    }

private:
    bool TakeMarker() {
        const HalfMarker* marker = MarkerAt(Rest());
        if (marker == nullptr) return false;
        Add(marker->step);
        section_.halfDay = true;
        Skip(marker->text.size());
        return true;
    }

    void TakeRun(std::initializer_list<Step> steps) {
        const std::size_t length = RunLength(steps.size());
        Add(steps.begin()[length - 1]);
        Skip(length);
    }

    bool TakeToken() {
        switch (Lower(Peek())) {
            case 'c':
                TakeRun({Step::GeneralDate});
                return true;
            case 'd':
                TakeRun({Step::Day, Step::Day2, Step::DayName3, Step::DayName, Step::ShortDate, Step::LongDate});
                return true;
            case 'w':
                TakeRun({Step::Weekday, Step::Week});
                return true;
            case 'm':
                TakeRun({Step::Month, Step::Month2, Step::MonthName3, Step::MonthName});
                return true;
            case 'q':
                TakeRun({Step::Quarter});
                return true;
            case 'y':
                TakeYear();
                return true;
            case 'h':
                TakeRun({Step::Hour, Step::Hour2});
                return true;
            case 'n':
                TakeRun({Step::Minute, Step::Minute2});
                return true;
            case 's':
                TakeRun({Step::Second, Step::Second2});
                return true;
            case 't':
                return TakeLongTime();
            default:
                return false;
        }
    }

    bool TakeLongTime() {
        if (!IsLongTime(Rest())) return false;
        Add(Step::LongTime);
        Skip(kLongTime.size());
        return true;
    }

    void TakeYear() {
        const std::size_t run = RunLength(4);
        const std::size_t length = run == 3 ? 2 : run;
        Add(length == 4 ? Step::Year4 : length == 2 ? Step::Year2 : Step::DayOfYear);
        Skip(length);
    }

    void TakeOther() {
        if (Peek() == '>' || Peek() == '<') {
            section_.letters = Peek() == '>' ? LetterCase::Upper : LetterCase::Lower;
            Skip(1);
        } else {
            TakeLiteral();
        }
    }

    /// An m behind hours or before seconds means minutes.
    void SettleMinutes() {
        Operation* previous = nullptr;
        for (Operation& operation : section_.operations) {
            if (operation.step == Step::Literal) continue;
            const bool isMonth = operation.step == Step::Month || operation.step == Step::Month2;
            const bool isSecond = operation.step == Step::Second || operation.step == Step::Second2;
            if (previous != nullptr) {
                const bool wasHour = previous->step == Step::Hour || previous->step == Step::Hour2;
                if (isMonth && wasHour) MakeMinutes(operation);
                if (isSecond) MakeMinutes(*previous);
            }
            previous = &operation;
        }
    }

    static void MakeMinutes(Operation& operation) {
        if (operation.step == Step::Month) operation.step = Step::Minute;
        if (operation.step == Step::Month2) operation.step = Step::Minute2;
    }
};

class TextCompiler : SectionCompiler {
public:
    using SectionCompiler::SectionCompiler;

    Section Compile() {
        while (!AtEnd()) {
            if (TakeQuoted()) continue;
            const char c = Peek();
            if (c == '@' || c == '&') {
                Add(c == '@' ? Step::Character : Step::OptionalCharacter);
                ++section_.characterPlaces;
                Skip(1);
            } else if (c == '<' || c == '>' || c == '!') {
                TakeMark(c);
            } else {
                TakeLiteral();
            }
        }
        if (section_.characterPlaces > 0)
            std::erase_if(section_.operations, [](const Operation& each) { return each.step == Step::WholeText; });
        return std::move(section_);
    }

private:
    void TakeMark(char mark) {
        // A mask without places takes the whole text where its first mark stands.
        if (!std::exchange(hasMark_, true)) Add(Step::WholeText);
        if (mark == '!') section_.fillsFromLeft = true;
        if (mark == '<') section_.letters = LetterCase::Lower;
        if (mark == '>') section_.letters = LetterCase::Upper;
        Skip(1);
    }

    bool hasMark_ = false;
};

Section CompileSection(Kind kind, std::string_view text, std::string& literals) {
    if (kind == Kind::Date) return DateCompiler(text, literals).Compile();
    if (kind == Kind::Text) return TextCompiler(text, literals).Compile();
    return NumberCompiler(text, literals).Compile();
}

}  // namespace

Program Compile(std::string_view mask) {
    Program program;
    if (Trim(mask).empty()) return program;
    std::string_view text = mask;
    program.kind = KindOf(mask);
    for (const NamedMask& named : kNamedMasks)
        if (EqualCaseBlind(named.name, mask)) {
            program.kind = named.kind;
            text = named.mask;
        }
    for (const std::string_view section : SplitSections(text))
        program.sections.push_back(CompileSection(program.kind, section, program.literals));
    // Semicolons alone would make every value disappear.
    const auto isEmpty = [](const Section& section) { return section.IsEmpty(); };
    if (text == mask && std::all_of(program.sections.begin(), program.sections.end(), isEmpty))
        program.kind = Kind::General;
    if (program.kind == Kind::Date) program.currentYear = PartsOf(SystemClock().Now()).year;
    return program;
}

}  // namespace quillform::mask
