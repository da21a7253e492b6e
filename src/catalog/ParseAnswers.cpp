#include <charconv>
#include <utility>

#include "catalog/AnswersFile.h"
#include "catalog/Quoted.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform {

namespace {

constexpr std::string_view heading = "quillform answers 1";
constexpr std::string_view blanks = " \t\r";

std::string_view Stripped(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// UTF-8 without control characters, but for tabs.
bool IsText(std::string_view text) {
    std::string again;
    for (std::size_t position = 0; position < text.size();) {
        const char32_t codePoint = NextCodePoint(text, position);
        if (codePoint < U' ' && codePoint != U'\t') return false;
        AppendCodePoint(codePoint, again);
    }
    return again == text;
}

class Parser {
public:
    Parser(std::string_view text, std::string_view fileName) : text_(text) { answers_.fileName = fileName; }

    Answers Parse() {
        if (text_.starts_with("\xEF\xBB\xBF")) text_.remove_prefix(3);
        while (!text_.empty()) TakeLine(NextLine());
        if (!hasHeading_) FailHere("An answers file begins with \"" + std::string(heading) + "\".");
        return std::move(answers_);
    }

private:
    std::string_view NextLine() {
        ++line_;
        const std::size_t end = text_.find('\n');
        const std::string_view line = text_.substr(0, end);
        text_.remove_prefix(end == std::string_view::npos ? text_.size() : end + 1);
        return Stripped(line);
    }
    void TakeLine(std::string_view line) {
        if (line.empty() || line[0] == '#') return;
        if (!IsText(line)) FailHere("The line is no UTF-8 text.");
        if (!hasHeading_) {
            if (line != heading) FailHere("An answers file begins with \"" + std::string(heading) + "\".");
            hasHeading_ = true;
            return;
        }
        TakeAnswer(line);
    }
    void TakeAnswer(std::string_view line);

    void TakeUnlistedFields(std::string_view value) { answers_.unlisted = UnlistedOf(value); }
    void TakeUnlistedLinks(std::string_view value) { answers_.unlistedLinks = UnlistedOf(value); }
    void TakeLabelSheets(std::string_view value) { answers_.commonSheets = YesOrNo(value); }
    void TakeTable(std::string_view value) { AddTable(value, true); }
    void TakeNoTable(std::string_view value) { AddTable(value, false); }
    void TakeField(std::string_view value) { AddField(value, true); }
    void TakeNoField(std::string_view value) { AddField(value, false); }
    void TakeLink(std::string_view value) {
        LinkAnswers link;
        link.table1 = TakeName(value);
        TakeSign(value, '.');
        link.field1 = TakeName(value);
        TakeSign(value, '=');
        link.table2 = TakeName(value);
        TakeSign(value, '.');
        link.field2 = TakeName(value);
        AddLink(std::move(link), value);
    }
    void TakeNoLink(std::string_view value) {
        LinkAnswers link;
        link.table1 = TakeName(value);
        link.table2 = TakeName(value);
        AddLink(std::move(link), value);
    }

    void TakeAsText(std::string_view value) {
        FieldAnswers& field = PlainField();
        const auto end = std::from_chars(value.data(), value.data() + value.size(), field.asText);
        if (end.ec != std::errc{} || end.ptr != value.data() + value.size() || field.asText < 1 || field.asText > 255)
            FailHere(Quoted(value) + " is no width from 1 to 255.");
        Once(field.asTextLine);
    }
    void TakeRaw(std::string_view value) {
        PlainField().isRaw = YesOrNo(value);
        Once(PlainField().rawLine);
    }
    void TakeDate(std::string_view value) {
        PlainField().isDate = YesOrNo(value);
        Once(PlainField().dateLine);
    }
    void TakeMaskCount(std::string_view value) { Set(PlainField().maskCount, value); }
    void TakeMask(std::string_view value) {
        if (FormulaAnswers* formula = Formula()) return Set(formula->mask, value);
        IncludedField().masks.push_back({Reply(value), line_});
    }
    void TakeDescription(std::string_view value) {
        FormulaAnswers* formula = Formula();
        Set(formula ? formula->description : IncludedField().description, value);
    }
    void TakeFormula(std::string_view value) {
        FormulaAnswers formula;
        formula.choice = {Reply(value), line_};
        IncludedField().formulas.push_back(std::move(formula));
    }
    void TakePosition(std::string_view value) { Set(OpenFormula().position, value); }
    void TakeLength(std::string_view value) { Set(OpenFormula().length, value); }
    void TakeAlias(std::string_view value) { Set(OpenFormula().alias, value); }

    void AddTable(std::string_view value, bool isIncluded) {
        TableAnswers table;
        table.name = OnlyName(value);
        table.line = line_;
        table.isIncluded = isIncluded;
        if (const TableAnswers* other = FindAnswers(answers_.tables, table.name)) FailTwice(other->line);
        answers_.tables.push_back(std::move(table));
    }
    void AddField(std::string_view value, bool isIncluded) {
        if (answers_.tables.empty()) FailHere("A field stands below its table.");
        TableAnswers& table = answers_.tables.back();
        if (!table.isIncluded)
            FailHere("The table " + Quoted(table.name) + " is left out, so its fields have no answers.");
        FieldAnswers field;
        field.name = OnlyName(value);
        field.line = line_;
        field.isIncluded = isIncluded;
        if (const FieldAnswers* other = FindAnswers(table.fields, field.name)) FailTwice(other->line);
        table.fields.push_back(std::move(field));
    }
    void AddLink(LinkAnswers link, std::string_view rest) {
        ExpectEnd(rest);
        link.line = line_;
        if (const LinkAnswers* other = FindAnswers(answers_.links, link.table1, link.table2)) FailTwice(other->line);
        answers_.links.push_back(std::move(link));
    }

    FieldAnswers& IncludedField() {
        if (answers_.tables.empty() || answers_.tables.back().fields.empty())
            FailHere("This answer stands below no field.");
        FieldAnswers& field = answers_.tables.back().fields.back();
        if (!field.isIncluded) FailHere("The field " + Quoted(field.name) + " is left out, so it has no answers.");
        return field;
    }
    /// The field that is being answered, with no formula begun.
    FieldAnswers& PlainField() {
        FieldAnswers& field = IncludedField();
        if (!field.formulas.empty()) FailHere("This answer stands above the field's formulas.");
        return field;
    }
    FormulaAnswers* Formula() {
        FieldAnswers& field = IncludedField();
        return field.formulas.empty() ? nullptr : &field.formulas.back();
    }
    FormulaAnswers& OpenFormula() {
        if (FormulaAnswers* formula = Formula()) return *formula;
        FailHere("This answer stands below no formula.");
    }

    Unlisted UnlistedOf(std::string_view value) const {
        if (value == "default") return Unlisted::Default;
        if (value == "no") return Unlisted::No;
        if (value == "stop") return Unlisted::Stop;
        FailHere(Quoted(value) + " is none of default, no and stop.");
    }
    bool YesOrNo(std::string_view value) const {
        if (value != "yes" && value != "no") FailHere(Quoted(value) + " is neither yes nor no.");
        return value == "yes";
    }
    void Set(std::optional<Answer>& answer, std::string_view value) {
        if (answer) FailTwice(answer->line);
        answer = Answer{Reply(value), line_};
    }
    void Once(int& line) const {
        if (line != 0) FailTwice(line);
        line = line_;
    }

    std::string Reply(std::string_view value) const {
        if (!value.starts_with('"')) return std::string(value);
        return TakeQuoted(value, '"');
    }
    /// What stands between the first character and the next `end` that isn't doubled, to the end of `text`.
    std::string TakeQuoted(std::string_view text, char end) const {
        std::string inner;
        std::size_t position = 1;
        for (; position < text.size(); ++position) {
            if (text[position] == end && text.substr(position + 1, 1) != std::string_view(&end, 1)) break;
            if (text[position] == end) ++position;
            inner += text[position];
        }
        if (position >= text.size()) FailHere(std::string("A closing ") + end + " is missing.");
        ExpectEnd(Stripped(text.substr(position + 1)));
        return inner;
    }
    std::string TakeName(std::string_view& text) const {
        if (!text.starts_with('[')) FailHere("A name in brackets is missing.");
        std::size_t end = 0;
        do end = text.find(']', end == 0 ? 1 : end + 2);
        while (end != std::string_view::npos && text.substr(end + 1, 1) == "]");
        if (end == std::string_view::npos) FailHere("A closing ] is missing.");
        const std::string name = TakeQuoted(text.substr(0, end + 1), ']');
        if (name.empty()) FailHere("The name in brackets is empty.");
        text = Stripped(text.substr(end + 1));
        return name;
    }
    void TakeSign(std::string_view& text, char sign) const {
        if (!text.starts_with(sign)) FailHere(std::string("A link is written [TABLE].[FIELD] = [TABLE].[FIELD]."));
        text = Stripped(text.substr(1));
    }
    std::string OnlyName(std::string_view value) const {
        std::string name = TakeName(value);
        ExpectEnd(value);
        return name;
    }
    void ExpectEnd(std::string_view rest) const {
        if (!rest.empty()) FailHere(Quoted(rest) + " is too much.");
    }

    [[noreturn]] void FailTwice(int former) const {
        FailHere("The same is answered in line " + std::to_string(former) + ".");
    }
    [[noreturn]] void FailHere(std::string_view problem) const { FailAnswer(answers_, line_, problem); }

    std::string_view text_;
    Answers answers_;
    int line_ = 0;
    bool hasHeading_ = false;
};

void Parser::TakeAnswer(std::string_view line) {
    struct Keyword {
        std::string_view word;
        void (Parser::*take)(std::string_view value);
    };
    static constexpr Keyword keywords[] = {
        {"unlisted fields", &Parser::TakeUnlistedFields},
        {"unlisted links", &Parser::TakeUnlistedLinks},
        {"label sheets", &Parser::TakeLabelSheets},
        {"table", &Parser::TakeTable},
        {"no table", &Parser::TakeNoTable},
        {"field", &Parser::TakeField},
        {"no field", &Parser::TakeNoField},
        {"link", &Parser::TakeLink},
        {"no link", &Parser::TakeNoLink},
        {"as text", &Parser::TakeAsText},
        {"raw", &Parser::TakeRaw},
        {"date", &Parser::TakeDate},
        {"masks", &Parser::TakeMaskCount},
        {"mask", &Parser::TakeMask},
        {"description", &Parser::TakeDescription},
        {"formula", &Parser::TakeFormula},
        {"position", &Parser::TakePosition},
        {"length", &Parser::TakeLength},
        {"alias", &Parser::TakeAlias},
    };
    for (const Keyword& keyword : keywords) {
        if (!line.starts_with(keyword.word)) continue;
        const std::string_view rest = line.substr(keyword.word.size());
        if (!rest.empty() && blanks.find(rest[0]) == std::string_view::npos) continue;
        return (this->*keyword.take)(Stripped(rest));
    }
    FailHere(Quoted(line) + " begins with no word that an answers file knows.");
}

}  // namespace

Answers ParseAnswers(std::string_view text, std::string_view fileName) { return Parser(text, fileName).Parse(); }

void FailAnswer(const Answers& answers, int line, std::string_view problem) {
    std::string place = answers.fileName;
    if (line > 0) place += (place.empty() ? "line " : ", line ") + std::to_string(line);
    throw RunTimeError(ErrorNumber::InvalidFileFormat, (place.empty() ? "" : place + ": ") + std::string(problem));
}

}  // namespace quillform
