#include "catalog/RecordingPage.h"

#include <algorithm>
#include <utility>

#include "catalog/FormulaLists.h"

namespace quillform {

namespace {

using Page = RecordingPage::Page;

/// Whether two pages ask the same; numbers first, since a walk has thousands of pages.
bool IsSame(const Page& left, const Page& right) {
    return left.question == right.question && left.pass == right.pass && left.field == right.field &&
           left.second == right.second && left.table == right.table;
}

bool WritesRow(const Page& page) {
    switch (page.question) {
        case WizardQuestion::DateMask:
            return !page.text.empty();
        case WizardQuestion::Description:
            return page.isBoolean;  // a truth has no mask page
        case WizardQuestion::NumberMask:
        case WizardQuestion::TextDateMask:
        case WizardQuestion::TextMask:
        case WizardQuestion::FormulaDescription:
            return true;
        default:
            return false;
    }
}

/// Whether the walk deletes its latest row on the way back from `left` to `next`.
bool DeletesRow(const Page& left, const Page& next) {
    switch (left.question) {
        case WizardQuestion::Include:
        case WizardQuestion::FormulaList:
            return next.question == WizardQuestion::FormulaDescription;
        case WizardQuestion::DateMask:
        case WizardQuestion::TextDateMask:
            return next.question == left.question;
        case WizardQuestion::FormulaQuestion:  // a truth's row is written again at once
            return next.question != WizardQuestion::Raw && next.question != WizardQuestion::FormulaQuestion;
        default:
            return false;
    }
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
                if (page.isTakenBack) return LeaveOut();
                field_->description = AnswerOf(page);
                return;
            case WizardQuestion::DateMask:
                field_->masks.push_back(page.isTakenBack ? Answer() : AnswerOf(page));
                return;
            case WizardQuestion::TextDateMask:
                if (page.isTakenBack) return LeaveOutMask();
                field_->masks.push_back(AnswerOf(page));
                return;
            case WizardQuestion::NumberMask:
                if (page.isTakenBack) return LeaveOut();
                field_->masks.push_back(AnswerOf(page));
                return;
            case WizardQuestion::TextMask:
                if (page.isTakenBack) return LeaveOut();
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
    /// The field itself has no row; its formulas may.
    void LeaveOut() {
        field_->isRaw = field_->isDate = false;
        field_->description.reset();
        field_->masks.clear();
    }
    void LeaveOutMask() { field_->maskCount = Answer{std::to_string(field_->masks.size()), 0}; }
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
        if (page.isTakenBack) field_->formulas.pop_back();
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
    const Page left = std::exchange(topic_, {});
    topic_.question = topic.question;
    topic_.pass = topic.pass;
    topic_.table = topic.table->Name;
    if (topic.field) {
        topic_.field = topic.field->Name;
        topic_.isBoolean = topic.field->Type == FieldType::Boolean;
        if (topic.field->Type == FieldType::Text) topic_.width = topic.field->Size;
    }
    if (topic.second) topic_.second = topic.second->Name;
    isAskedAgain_ = false;
    if (left.table != topic_.table)
        hasRowOfTable_ = false;
    else if (!wentBack_)
        hasRowOfTable_ = hasRowOfTable_ || (!pages_.empty() && pages_.back().hasRow);
    else if (hasRowOfTable_ && DeletesRow(left, topic_))
        TakeRowBack();
    page_.SetTopic(topic);
}

void RecordingPage::TakeRowBack() {
    const auto last = std::find_if(pages_.rbegin(), pages_.rend(), [](const Page& page) { return page.hasRow; });
    if (last == pages_.rend()) return;
    last->hasRow = false;
    last->isTakenBack = true;
}

void RecordingPage::Show() {
    if (isAskedAgain_) pages_.pop_back();
    page_.Show();
    // There is no page before these two: Back on them goes on as Yes does.
    const bool isFirst = topic_.question == WizardQuestion::Table || topic_.question == WizardQuestion::Link;
    wentBack_ = ButtonResponse() == WizardResponse::Back && !isFirst;
    isAskedAgain_ = !wentBack_;
    if (wentBack_) return;
    Page answered = topic_;
    answered.isYes = ButtonResponse() != WizardResponse::No;
    answered.text = TextResponse();
    answered.field1 = Field1();
    answered.field2 = Field2();
    answered.hasRow = WritesRow(answered);
    Keep(std::move(answered));
}

void RecordingPage::Keep(Page answered) {
    // A page that is answered anew is asked anew from there on, so what was answered behind it counts no more.
    // Back never leads out of a table.
    for (std::size_t i = pages_.size(); i > 0 && pages_[i - 1].table == answered.table; --i) {
        if (!IsSame(pages_[i - 1], answered)) continue;
        const auto first = pages_.begin() + static_cast<std::ptrdiff_t>(i) - 1;
        if (std::any_of(first, pages_.end(), [](const Page& page) { return page.hasRow; })) givesAllRows_ = false;
        pages_.erase(first, pages_.end());
        break;
    }
    if (answered.question == WizardQuestion::FormulaDescription &&
        (pages_.empty() || pages_.back().question != WizardQuestion::Alias))
        givesAllRows_ = false;
    pages_.push_back(std::move(answered));
}

Answers RecordingPage::Recorded(const Database& database) const {
    Collector collector(database);
    for (const Page& page : pages_) collector.Add(page);
    return collector.Finish();
}

}  // namespace quillform
