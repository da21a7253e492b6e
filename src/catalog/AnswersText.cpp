#include "catalog/AnswersFile.h"
#include "platform/RunTimeError.h"

namespace quillform {

namespace {

void RefuseControlCharacters(std::string_view text) {
    for (const char character : text)
        if (static_cast<unsigned char>(character) < ' ' && character != '\t')
            throw RunTimeError(ErrorNumber::NotSupported, "\"" + std::string(text) +
                                                              "\" has a line end or another control character in it, "
                                                              "which an answers file can't hold.");
}

std::string Doubling(std::string_view text, char end) {
    std::string doubled;
    for (const char character : text) doubled.append(character == end ? 2U : 1U, character);
    return doubled;
}

std::string Bracketed(std::string_view name) {
    RefuseControlCharacters(name);
    return "[" + Doubling(name, ']') + "]";
}

std::string Reply(std::string_view text) {
    RefuseControlCharacters(text);
    constexpr std::string_view blanks = " \t";
    const bool isPlain = !text.empty() && text[0] != '"' && blanks.find(text.front()) == std::string_view::npos &&
                         blanks.find(text.back()) == std::string_view::npos;
    return isPlain ? std::string(text) : "\"" + Doubling(text, '"') + "\"";
}

std::string_view WordOf(Unlisted unlisted) {
    switch (unlisted) {
        case Unlisted::Default:
            return "default";
        case Unlisted::No:
            return "no";
        case Unlisted::Stop:
            return "stop";
    }
    return {};
}

class Writer {
public:
    std::string Write(const Answers& answers) {
        Line(0, "quillform answers 1", {});
        text_ += "\n";
        Line(0, "unlisted fields", WordOf(answers.unlisted));
        Line(0, "unlisted links", WordOf(answers.unlistedLinks));
        if (!answers.commonSheets) Line(0, "label sheets", "no");
        for (const TableAnswers& table : answers.tables) Write(table);
        if (!answers.links.empty()) text_ += "\n";
        for (const LinkAnswers& link : answers.links) Write(link);
        return std::move(text_);
    }

private:
    void Write(const TableAnswers& table) {
        text_ += "\n";
        Line(0, table.isIncluded ? "table" : "no table", Bracketed(table.name));
        for (const FieldAnswers& field : table.fields) Write(field);
    }
    void Write(const FieldAnswers& field) {
        Line(2, field.isIncluded ? "field" : "no field", Bracketed(field.name));
        if (field.asText > 0) Line(4, "as text", std::to_string(field.asText));
        if (!field.isRaw) Line(4, "raw", "no");
        WriteReply(4, "description", field.description);
        if (field.isDate) Line(4, "date", "yes");
        WriteReply(4, "masks", field.maskCount);
        for (const Answer& mask : field.masks) Line(4, "mask", Reply(mask.text));
        for (const FormulaAnswers& formula : field.formulas) Write(formula);
    }
    void Write(const FormulaAnswers& formula) {
        Line(4, "formula", Reply(formula.choice.text));
        WriteReply(6, "position", formula.position);
        WriteReply(6, "length", formula.length);
        WriteReply(6, "mask", formula.mask);
        WriteReply(6, "alias", formula.alias);
        WriteReply(6, "description", formula.description);
    }
    void Write(const LinkAnswers& link) {
        if (link.field1.empty()) return Line(0, "no link", Bracketed(link.table1) + " " + Bracketed(link.table2));
        Line(0, "link",
             Bracketed(link.table1) + "." + Bracketed(link.field1) + " = " + Bracketed(link.table2) + "." +
                 Bracketed(link.field2));
    }
    void WriteReply(std::size_t indent, std::string_view word, const std::optional<Answer>& answer) {
        if (answer) Line(indent, word, Reply(answer->text));
    }
    void Line(std::size_t indent, std::string_view word, std::string_view value) {
        text_.append(indent, ' ').append(word);
        if (!value.empty()) text_.append(" ").append(value);
        text_ += "\n";
    }

    std::string text_;
};

}  // namespace

std::string AnswersText(const Answers& answers) { return Writer().Write(answers); }

}  // namespace quillform
