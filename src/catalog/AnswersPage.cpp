#include "catalog/AnswersPage.h"

#include "catalog/FormulaLists.h"
#include "catalog/PageAsker.h"

namespace quillform {

namespace {

/// The same for each time that one page is shown.
std::string KeyOf(const WizardTopic& topic) {
    std::string key = std::to_string(static_cast<int>(topic.question)) + "," + std::to_string(topic.pass);
    for (const std::string* name :
         {&topic.table->Name, topic.field ? &topic.field->Name : nullptr, topic.second ? &topic.second->Name : nullptr})
        if (name) key += "," + *name;
    return key;
}

}  // namespace

TableDef AnswersPage::Prepare(const TableDef& table) {
    table_ = book_.ForTable(table);
    asksForFields_ = true;
    TableDef described = table;
    for (std::size_t i = 0; i < table_.fields.size(); ++i) {
        if (table_.fields[i].asText == 0) continue;
        described.Fields[i].Type = FieldType::Text;
        described.Fields[i].Size = table_.fields[i].asText;
    }
    return described;
}

void AnswersPage::Show() {
    CheckComplaint();
    line_ = 0;
    const WizardTopic& topic = Topic();
    if (topic.question == WizardQuestion::Link) return AnswerLink();
    if (topic.question == WizardQuestion::LinkColumns) return ChooseLink();
    if (topic.question == WizardQuestion::Table) return AnswerTable();
    AnswerField(table_.fields.at(static_cast<std::size_t>(topic.field - topic.table->Fields.data())));
}

void AnswersPage::AnswerTable() {
    Use(table_.line);
    Press(table_.isIncluded);
}

void AnswersPage::AnswerField(const FieldAnswers& field) {
    const auto number = static_cast<std::size_t>(Topic().pass);
    switch (Topic().question) {
        case WizardQuestion::Include:
            Use(field.line);
            return Press(field.isIncluded);
        case WizardQuestion::Raw:
            Use(field.rawLine);
            return Press(field.isRaw);
        case WizardQuestion::Description:
            return ReplyOrKeep(field.description);
        case WizardQuestion::NumberMask:
        case WizardQuestion::TextMask:
        case WizardQuestion::DateMask:
        case WizardQuestion::TextDateMask:
            return ReplyMask(field);
        case WizardQuestion::DateQuestion:
            Use(field.dateLine);
            return Press(field.isDate);
        case WizardQuestion::MaskCount:
            if (field.maskCount || field.masks.empty()) return ReplyOrKeep(field.maskCount);
            return Reply(std::to_string(field.masks.size()));
        case WizardQuestion::FormulaQuestion:
            return Press(!field.formulas.empty());
        case WizardQuestion::FormulaList:
            if (number > field.formulas.size()) return Choose(FormulasOf(Topic().field->Type)[0].text, {});
            Use(field.formulas[number - 1].choice.line);
            return Choose(field.formulas[number - 1].choice.text, {});
        case WizardQuestion::Position:
        case WizardQuestion::Length:
        case WizardQuestion::FormulaMask:
        case WizardQuestion::Alias:
        case WizardQuestion::FormulaDescription:
            return AnswerFormula(field.formulas.at(number - 1));
        case WizardQuestion::Table:
        case WizardQuestion::Link:
        case WizardQuestion::LinkColumns:
            break;
    }
}

void AnswersPage::AnswerFormula(const FormulaAnswers& formula) {
    switch (Topic().question) {
        case WizardQuestion::Position:
            return ReplyOrKeep(formula.position);
        case WizardQuestion::Length:
            return ReplyOrKeep(formula.length);
        case WizardQuestion::FormulaMask:
            return ReplyOrKeep(formula.mask);
        case WizardQuestion::Alias:
            return ReplyOrKeep(formula.alias);
        default:
            return ReplyOrKeep(formula.description);
    }
}

void AnswersPage::ReplyMask(const FieldAnswers& field) {
    const auto number = static_cast<std::size_t>(Topic().pass);
    if (field.masks.empty()) return ReplyOrKeep(std::nullopt);
    ReplyOrKeep(number <= field.masks.size() ? field.masks[number - 1] : Answer{});
}

void AnswersPage::AnswerLink() {
    asksForLinks_ = true;
    link_ = book_.ForLink(*Topic().table, *Topic().second);
    if (link_) Use(link_->line);
    Press(link_ && !link_->field1.empty());
}

void AnswersPage::ChooseLink() { Choose(link_->field1, link_->field2); }

void AnswersPage::ReplyOrKeep(const std::optional<Answer>& answer) {
    if (!answer) return Reply(TextResponse());
    Use(answer->line);
    Reply(answer->text);
}

void AnswersPage::Use(int line) {
    if (line == 0) return;
    line_ = line;
    usedLines_.insert(line);
}

void AnswersPage::TakeMessage(std::string_view text) { complaint_ = text; }

/// A doubt is told once and the answer then taken; a refusal is told each time, so a second one is final.
void AnswersPage::CheckComplaint() {
    const std::string key = KeyOf(Topic());
    const bool isSamePage = key == shown_;
    if (!complaint_.empty() && isSamePage && isRepeated_) book_.Fail(line_, complaint_);
    if (!isSamePage) SettleComplaint();
    isRepeated_ = !complaint_.empty();
    shown_ = key;
}

void AnswersPage::SettleComplaint() {
    if (complaint_.empty()) return;
    if (complaint_.ends_with(keepHint)) complaint_.resize(complaint_.size() - keepHint.size());
    book_.Notes().push_back(std::move(complaint_));
    complaint_.clear();
}

std::vector<std::string> AnswersPage::Finish() {
    SettleComplaint();
    std::vector<std::string> notes = std::move(book_.Notes());
    const auto append = [&](const std::vector<std::string>& more) {
        notes.insert(notes.end(), more.begin(), more.end());
    };
    if (asksForFields_) append(UnusedFieldAnswers(answers_, usedLines_));
    if (asksForLinks_) append(UnusedLinkAnswers(answers_, usedLines_));
    return notes;
}

}  // namespace quillform
