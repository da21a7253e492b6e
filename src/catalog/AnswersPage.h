#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "catalog/AnswerBook.h"
#include "catalog/Answers.h"
#include "catalog/PlainPage.h"

namespace quillform {

/// Answers each page of a walk from given answers, and with what is proposed where they say nothing. An answer that the
/// walk refuses ends it: RunTimeError InvalidFileFormat with the line of the answer.
class AnswersPage final : public PlainPage {
public:
    /// Both outlive the page.
    AnswersPage(const Database& database, const Answers& answers) : answers_(answers), book_(database, answers) {}

    /// Looks up the answers for a table, and gives it as the walk is to see it: with memos and GUIDs as the texts that
    /// they are described as. To be called before the walk comes to the table.
    TableDef Prepare(const TableDef& table);
    void Show() override;
    /// What the walk told its user: why the answer given last isn't taken, or that nothing more is asked.
    void TakeMessage(std::string_view text);

    /// What is good to know after the walk, a whole sentence each.
    std::vector<std::string> Finish();

private:
    void AnswerField(const FieldAnswers& field);
    void AnswerFormula(const FormulaAnswers& formula);
    void AnswerTable();
    void AnswerLink();
    void ChooseLink();
    void ReplyMask(const FieldAnswers& field);
    void ReplyOrKeep(const std::optional<Answer>& answer);
    void Use(int line);
    void CheckComplaint();
    void SettleComplaint();

    const Answers& answers_;
    AnswerBook book_;
    TableAnswers table_;               ///< the one that the walk is at
    std::optional<LinkAnswers> link_;  ///< the same
    bool asksForFields_ = false;
    bool asksForLinks_ = false;
    std::set<int> usedLines_;
    int line_ = 0;           ///< of the answer given last
    std::string shown_;      ///< the page shown last
    std::string complaint_;  ///< what was told about it
    bool isRepeated_ = false;
};

}  // namespace quillform
