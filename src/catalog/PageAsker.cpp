#include "catalog/PageAsker.h"

#include "catalog/FormulaLists.h"

namespace quillform {

void PageAsker::Tell(std::string_view sentence) { user_.Message(sentence, "Quillform Wizard"); }

WizardResponse PageAsker::AskYesNo(const WizardTopic& topic, const wizard::PageTexts& texts, WizardResponse focus,
                                   const std::string& problemOfYes) {
    page_.SetTopic(topic);
    page_.SetButtonType(WizardButtonType::Question);
    page_.SetButtonResponse(focus);
    page_.SetExplaination(texts.explanation);
    page_.SetTextLabel(texts.label);
    return ShowUntilTaken(
        [&] { return page_.ButtonResponse() == WizardResponse::No ? Objection{} : Objection::Refuse(problemOfYes); });
}

WizardResponse PageAsker::AskText(const WizardTopic& topic, const wizard::PageTexts& texts,
                                  std::optional<std::string_view> proposed, const FindObjection& find) {
    page_.SetTopic(topic);
    page_.SetButtonType(WizardButtonType::TextReply);
    if (proposed) page_.SetTextResponse(*proposed);
    page_.SetExplaination(texts.explanation);
    page_.SetTextLabel(texts.label);
    return ShowUntilTaken([&] { return find(page_.TextResponse()); });
}

WizardResponse PageAsker::AskFormula(const WizardTopic& topic, const FindObjection& find) {
    page_.SetTopic(topic);
    page_.SetButtonType(HasTextFormulas(topic.field->Type) ? WizardButtonType::TextFormulaList
                                                           : WizardButtonType::NumberFormulaList);
    page_.SetTable1("Formula Type");
    page_.SetExplaination(wizard::FormulaListExplanation());
    return ShowUntilTaken([&] { return find(page_.Field1()); });
}

WizardResponse PageAsker::AskColumns(const WizardTopic& topic, const wizard::PageTexts& texts,
                                     const std::function<std::string()>& problem) {
    page_.SetTopic(topic);
    page_.SetButtonType(WizardButtonType::ColumnLists);
    page_.SetTable1(topic.table->Name);
    page_.SetTable2(topic.second->Name);
    page_.SetExplaination(texts.explanation);
    page_.SetTextLabel(texts.label);
    return ShowUntilTaken([&] { return Objection::Refuse(problem()); });
}

WizardResponse PageAsker::ShowUntilTaken(const std::function<Objection()>& find) {
    std::string told;
    for (;;) {
        page_.Show();
        if (page_.ButtonResponse() == WizardResponse::Back) return WizardResponse::Back;
        const Objection objection = find();
        if (objection.text.empty() || (!objection.isFinal && objection.text == told)) return page_.ButtonResponse();
        Tell(objection.text);
        told = objection.text;
    }
}

}  // namespace quillform
