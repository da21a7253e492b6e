#include "catalog/RecordingPage.h"

#include "catalog/FormulaLists.h"

namespace quillform {

namespace {

using Page = RecordingPage::Page;

/// Whether two pages ask the same; numbers first, since a walk has thousands of pages.
bool IsSame(const Page& left, const Page& right) {
    return left.question == right.question && left.pass == right.pass && left.field == right.field &&
           left.second == right.second && left.table == right.table;
}

/// Puts pages in their order together to answers.
class Collector {
public:
    explicit Collector(const Database& database) : database_(database) { answers_.unlistedLinks = Unlisted::No; }

    void Add(const Page& page) {
        switch (page.question) {
            case WizardQuestion::Table:
                return AddTable(page);
            case WizardQuestion::Include:
                return AddField(page);
            case WizardQuestion::Raw:
                field_->isRaw = page.isYes;
                return;
            case WizardQuestion::Description:
                field_->description = AnswerOf(page);
                return;
            case WizardQuestion::NumberMask:
            case WizardQuestion::DateMask:
            case WizardQuestion::TextDateMask:
                field_->masks.push_back(AnswerOf(page));
                return;
            case WizardQuestion::TextMask:
                if (!page.text.empty()) field_->masks.push_back(AnswerOf(page));  // proposed is an empty one
                return;
            case WizardQuestion::DateQuestion:
                field_->isDate = page.isYes;
                return;
            case WizardQuestion::MaskCount:
                field_->maskCount = AnswerOf(page);
                return;
            case WizardQuestion::FormulaQuestion:
            case WizardQuestion::Link:
                return;  // the formulas and links themselves say it
            case WizardQuestion::LinkColumns:
                return AddLink(page);
            case WizardQuestion::FormulaList:
            case WizardQuestion::Position:
            case WizardQuestion::Length:
            case WizardQuestion::FormulaMask:
            case WizardQuestion::Alias:
            case WizardQuestion::FormulaDescription:
                return AddToFormula(page);
        }
    }
    Answers Finish() {
        for (TableAnswers& table : answers_.tables)
            for (FieldAnswers& field : table.fields) Shorten(field);
        return std::move(answers_);
    }

private:
    static Answer AnswerOf(const Page& page) { return {page.text, 0}; }

    void AddTable(const Page& page) {
        TableAnswers table;
        table.name = page.table;
        table.isIncluded = page.isYes;
        answers_.tables.push_back(std::move(table));
    }
    void AddField(const Page& page) {
        FieldAnswers field;
        field.name = page.field;
        field.isIncluded = page.isYes;
        const TableDef* table = database_.FindTable(page.table);
        const int found = table ? table->FindField(page.field) : -1;
        if (found >= 0 && page.width > 0 && table->Fields[static_cast<std::size_t>(found)].Type != FieldType::Text)
            field.asText = page.width;
        answers_.tables.back().fields.push_back(std::move(field));
        field_ = &answers_.tables.back().fields.back();
    }
    void AddToFormula(const Page& page) {
        if (page.question == WizardQuestion::FormulaList) {
            if (page.field1.empty() || page.field1 == textFormulas[0].text) return;
            FormulaAnswers formula;
            formula.choice = {page.field1, 0};
            field_->formulas.push_back(std::move(formula));
        }
        if (field_->formulas.empty()) return;
        FormulaAnswers& formula = field_->formulas.back();
        if (page.question == WizardQuestion::Position) formula.position = AnswerOf(page);
        if (page.question == WizardQuestion::Length) formula.length = AnswerOf(page);
        if (page.question == WizardQuestion::FormulaMask) formula.mask = AnswerOf(page);
        if (page.question == WizardQuestion::Alias) formula.alias = AnswerOf(page);
        if (page.question == WizardQuestion::FormulaDescription) formula.description = AnswerOf(page);
    }
    void AddLink(const Page& page) {
        if (page.field1.empty() || page.field2.empty()) return;
        answers_.links.push_back({page.table, page.second, page.field1, page.field2, 0});
    }

    /// Leaves out what the rules of an answers file say anyway: a count of masks that follow, empty masks at the end.
    static void Shorten(FieldAnswers& field) {
        if (field.maskCount && !field.masks.empty() && field.maskCount->text == std::to_string(field.masks.size()))
            return field.maskCount.reset();
        while (!field.maskCount && field.masks.size() > 1 && field.masks.back().text.empty()) field.masks.pop_back();
    }

    const Database& database_;
    Answers answers_;
    FieldAnswers* field_ = nullptr;  ///< the one being answered
};

}  // namespace

void RecordingPage::SetTopic(const WizardTopic& topic) {
    topic_ = {};
    topic_.question = topic.question;
    topic_.pass = topic.pass;
    topic_.table = topic.table->Name;
    if (topic.field) {
        topic_.field = topic.field->Name;
        if (topic.field->Type == FieldType::Text) topic_.width = topic.field->Size;
    }
    if (topic.second) topic_.second = topic.second->Name;
    page_.SetTopic(topic);
}

void RecordingPage::Show() {
    page_.Show();
    // There is no page before these two: Back on them goes on as Yes does.
    const bool isFirst = topic_.question == WizardQuestion::Table || topic_.question == WizardQuestion::Link;
    if (ButtonResponse() == WizardResponse::Back && !isFirst) return;
    // A page that is answered anew is asked anew from there on, so what was answered behind it counts no more.
    // Back never leads out of a table.
    for (std::size_t i = pages_.size(); i > 0 && pages_[i - 1].table == topic_.table; --i)
        if (IsSame(pages_[i - 1], topic_)) {
            pages_.resize(i - 1);
            break;
        }
    pages_.push_back(topic_);
    Page& page = pages_.back();
    page.isYes = ButtonResponse() != WizardResponse::No;
    page.text = TextResponse();
    page.field1 = Field1();
    page.field2 = Field2();
}

Answers RecordingPage::Recorded(const Database& database) const {
    Collector collector(database);
    for (const Page& page : pages_) collector.Add(page);
    return collector.Finish();
}

}  // namespace quillform
