#include "catalog/AnswerBook.h"

#include "catalog/AnswersFile.h"
#include "catalog/ProposedAnswers.h"
#include "catalog/Quoted.h"
#include "platform/Text.h"

namespace quillform {

namespace {

std::string NameOf(const TableDef& table, const Field& field) {
    return "The field " + Quoted(field.Name) + " of " + Quoted(table.Name);
}

bool CanBeText(FieldType type) { return type == FieldType::Memo || type == FieldType::Guid; }

/// Collects what isn't used, from the outside in.
class Unused {
public:
    Unused(const Answers& answers, const std::set<int>& used) : answers_(answers), used_(used) {}

    void Add(const TableAnswers& table) {
        if (Note(table.line, "the table " + Quoted(table.name) + " wasn't asked about")) return;
        for (const FieldAnswers& field : table.fields) Add(field);
    }
    void Add(const LinkAnswers& link) {
        Note(link.line, "the tables " + Quoted(link.table1) + " and " + Quoted(link.table2) + " weren't asked about");
    }
    std::vector<std::string> Sentences() { return std::move(sentences_); }

private:
    void Add(const FieldAnswers& field) {
        if (Note(field.line, "the field " + Quoted(field.name) + " wasn't asked about")) return;
        Add(field.description);
        Add(field.maskCount);
        for (const Answer& mask : field.masks) Add(mask);
        if (field.dateLine > 0) Note(field.dateLine, notAsked);
        for (const FormulaAnswers& formula : field.formulas) Add(formula);
    }
    void Add(const FormulaAnswers& formula) {
        if (Note(formula.choice.line, notAsked)) return;
        for (const auto* answer :
             {&formula.position, &formula.length, &formula.mask, &formula.alias, &formula.description})
            Add(*answer);
    }
    void Add(const std::optional<Answer>& answer) {
        if (answer) Note(answer->line, notAsked);
    }
    bool Note(int line, std::string_view problem) {
        if (used_.contains(line)) return false;
        sentences_.push_back(answers_.fileName + ", line " + std::to_string(line) +
                             " wasn't used: " + std::string(problem) + ".");
        return true;
    }

    static constexpr std::string_view notAsked = "nothing asked for this answer";

    const Answers& answers_;
    const std::set<int>& used_;
    std::vector<std::string> sentences_;
};

}  // namespace

TableAnswers AnswerBook::ForTable(const TableDef& table) {
    const TableAnswers* listed = FindAnswers(answers_.tables, table.Name);
    TableAnswers answers = listed ? *listed : ForUnlisted(table);
    answers.fields.clear();
    if (!answers.isIncluded) return answers;
    for (const Field& field : table.Fields) answers.fields.push_back(ForField(table, field, listed));
    return answers;
}

TableAnswers AnswerBook::ForUnlisted(const TableDef& table) {
    TableAnswers answers;
    answers.name = table.Name;
    bool isSilent = false;
    std::string problem = ProblemOfTable(table, isSilent);
    answers.isIncluded = problem.empty() && answers_.unlisted == Unlisted::Default;
    if (isSilent) return answers;
    if (answers_.unlisted == Unlisted::Stop)
        Fail(0, "The table " + Quoted(table.Name) + " is in the database and not in the answers.");
    if (!problem.empty())
        notes_.push_back(std::move(problem));
    else if (!answers_.fileName.empty())
        notes_.push_back("The table " + Quoted(table.Name) + " isn't in the answers; it " +
                         (answers.isIncluded ? "got the proposed ones." : "is left out."));
    return answers;
}

FieldAnswers AnswerBook::ForField(const TableDef& table, const Field& field, const TableAnswers* listed) {
    if (listed) {
        if (const FieldAnswers* answers = FindAnswers(listed->fields, field.Name)) {
            if (answers->asText > 0 && !CanBeText(field.Type))
                Fail(answers->asTextLine, NameOf(table, field) + " is neither a memo nor a GUID.");
            return *answers;
        }
        if (answers_.unlisted == Unlisted::Stop)
            Fail(listed->line, NameOf(table, field) + " is in the database and not in the answers.");
        notes_.push_back(NameOf(table, field) + " isn't in the answers; it " +
                         (answers_.unlisted == Unlisted::No ? "is left out." : "got the proposed ones."));
    }
    if (!listed || answers_.unlisted == Unlisted::Default) return ProposedField(table, field, notes_);
    FieldAnswers leftOut;
    leftOut.name = field.Name;
    leftOut.isIncluded = false;
    return leftOut;
}

std::optional<LinkAnswers> AnswerBook::ForLink(const TableDef& first, const TableDef& second) {
    const LinkAnswers* listed = FindAnswers(answers_.links, first.Name, second.Name);
    if (!listed) return ForUnlistedLink(first, second);
    LinkAnswers link = *listed;
    if (link.field1.empty()) return link;
    if (!EqualCaseBlind(link.table1, first.Name)) std::swap(link.field1, link.field2);
    link.field1 = FieldName(first, link.field1, link.line);
    link.field2 = FieldName(second, link.field2, link.line);
    return link;
}

std::optional<LinkAnswers> AnswerBook::ForUnlistedLink(const TableDef& first, const TableDef& second) {
    if (answers_.unlistedLinks == Unlisted::No) return std::nullopt;
    bool isSilent = false;
    if (!ProblemOfTable(first, isSilent).empty() || !ProblemOfTable(second, isSilent).empty()) return std::nullopt;
    if (answers_.unlistedLinks == Unlisted::Stop)
        Fail(0, "The answers don't say whether the tables " + Quoted(first.Name) + " and " + Quoted(second.Name) +
                    " are linked.");
    if (!proposedLinks_) proposedLinks_ = ProposedLinks(database_, notes_);
    for (const CatalogRelation& relation : *proposedLinks_)
        if (relation.table1 == first.Name && relation.table2 == second.Name)
            return LinkAnswers{first.Name, second.Name, relation.field1, relation.field2, 0};
    return std::nullopt;
}

const std::string& AnswerBook::FieldName(const TableDef& table, const std::string& name, int line) const {
    const int found = table.FindField(name);
    if (found < 0) Fail(line, "The table " + Quoted(table.Name) + " has no field " + Quoted(name) + ".");
    return table.Fields[static_cast<std::size_t>(found)].Name;
}

void AnswerBook::Fail(int line, std::string_view problem) const { FailAnswer(answers_, line, problem); }

std::vector<std::string> UnusedFieldAnswers(const Answers& answers, const std::set<int>& used) {
    Unused unused(answers, used);
    for (const TableAnswers& table : answers.tables) unused.Add(table);
    return unused.Sentences();
}

std::vector<std::string> UnusedLinkAnswers(const Answers& answers, const std::set<int>& used) {
    Unused unused(answers, used);
    for (const LinkAnswers& link : answers.links) unused.Add(link);
    return unused.Sentences();
}

}  // namespace quillform
