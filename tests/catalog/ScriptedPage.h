#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalog/PlainPage.h"
#include "model/UserInterface.h"

namespace quillform::testing {

/// Answers page after page from a script and writes down what was on each. The answers:
///
/// | answer      | means                                      |
/// |-------------|--------------------------------------------|
/// | `yes`, `no` | the buttons of a question                  |
/// | `next`      | Next with what the reply box holds         |
/// | `=text`     | Next with this reply, or this formula      |
/// | `A=B`       | Next with these two columns                |
/// | `back`      | Back                                       |
class ScriptedPage : public PlainPage {
public:
    explicit ScriptedPage(std::vector<std::string> answers) : answers_(std::move(answers)) {}
    ~ScriptedPage() override { EXPECT_EQ(next_, answers_.size()) << "answers that nobody asked for"; }

    void Show() override {
        shown.push_back(Describe());
        words.push_back(Words());
        if (next_ >= answers_.size()) throw std::runtime_error("no answer is left for " + shown.back());
        const std::string& answer = answers_[next_++];
        const std::size_t middle = answer.find('=');
        if (answer == "yes" || answer == "no")
            Press(answer == "yes");
        else if (answer == "back")
            GoBack();
        else if (answer == "next")
            Reply(TextResponse());
        else if (ButtonType() == WizardButtonType::TextReply)
            Reply(answer.substr(1));
        else if (ButtonType() == WizardButtonType::ColumnLists)
            Choose(answer.substr(0, middle), answer.substr(middle + 1));
        else
            Choose(answer.substr(1), {});
    }

    std::vector<std::string> shown;  ///< "question field pass" of each page
    std::vector<std::string> words;  ///< "type focus|label|explanation|reply or lists" of each page

private:
    std::string Describe() const {
        constexpr const char* names[] = {"Table",     "Include", "Raw",      "Description", "NumberMask",
                                         "DateMask",  "Date?",   "Count",    "TextDate",    "TextMask",
                                         "Formulas?", "List",    "Position", "Length",      "FormulaMask",
                                         "Alias",     "Formula", "Link?",    "Columns"};
        std::string text = names[static_cast<int>(Topic().question)];
        if (Topic().field) text += " " + Topic().field->Name;
        if (Topic().second) text += " " + Topic().table->Name + "-" + Topic().second->Name;
        if (Topic().pass != 1) text += " " + std::to_string(Topic().pass);
        return text;
    }
    std::string Words() const {
        std::string text = std::to_string(static_cast<int>(ButtonType()));
        if (ButtonType() == WizardButtonType::Question) text += ButtonResponse() == WizardResponse::Yes ? " Y" : " N";
        text += "|" + TextLabel() + "|" + Explaination();
        if (ButtonType() == WizardButtonType::TextReply) text += "|" + TextResponse();
        if (ButtonType() == WizardButtonType::ColumnLists) text += "|" + Table1() + "," + Table2();
        if (ButtonType() >= WizardButtonType::TextFormulaList) text += "|" + Table1();
        return text;
    }

    std::vector<std::string> answers_;
    std::size_t next_ = 0;
};

/// Says Yes to every question and keeps what was told.
class ListeningUser : public UserInterface {
public:
    void Message(std::string_view text, std::string_view) override { told.emplace_back(text); }
    bool Ask(std::string_view, std::string_view, MessageIcon) override { return true; }
    void Warn(std::string_view text) override { warnings.emplace_back(text); }

    std::vector<std::string> told;
    std::vector<std::string> warnings;
};

}  // namespace quillform::testing
