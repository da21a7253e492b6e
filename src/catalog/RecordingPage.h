#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "catalog/Answers.h"
#include "catalog/WizardPage.h"

namespace quillform {

/// Passes everything on to another page and keeps the answers that it gets. Of an answer that was taken back or given
/// anew only the last stays, with what was answered behind it.
class RecordingPage final : public WizardPage {
public:
    /// `page` outlives the recording.
    explicit RecordingPage(WizardPage& page) : page_(page) {}

    /// What was answered so far, as an answers file would say it: the same answers give the same rows again. Tables and
    /// fields that it doesn't name are for the rules: proposed answers for fields, no links. `database` is the one that
    /// was asked about; its own types tell which fields were described as texts.
    Answers Recorded(const Database& database) const;
    /// False if going back left rows in the catalog that no answers give: those of a field that was answered twice
    /// without its first row taken back, or of a formula that was only described.
    bool GivesAllRows() const { return givesAllRows_; }

    void SetTopic(const WizardTopic& topic) override;
    void SetButtonType(WizardButtonType type) override { page_.SetButtonType(type); }
    void SetButtonResponse(WizardResponse response) override { page_.SetButtonResponse(response); }
    void SetTable1(std::string_view table) override { page_.SetTable1(table); }
    void SetTable2(std::string_view table) override { page_.SetTable2(table); }
    void SetTextResponse(std::string_view text) override { page_.SetTextResponse(text); }
    void SetExplaination(std::string_view text) override { page_.SetExplaination(text); }
    void SetTextLabel(std::string_view text) override { page_.SetTextLabel(text); }
    void Show() override;
    WizardResponse ButtonResponse() const override { return page_.ButtonResponse(); }
    const std::string& TextResponse() const override { return page_.TextResponse(); }
    const std::string& Field1() const override { return page_.Field1(); }
    const std::string& Field2() const override { return page_.Field2(); }

    /// One page as it was left.
    struct Page {
        WizardQuestion question = WizardQuestion::Table;
        int pass = 1;
        std::string table;
        std::string field;   ///< empty where the page is about no field
        std::string second;  ///< empty where it is about no pair
        int width = 0;       ///< of a text
        bool isBoolean = false;
        bool isYes = false;
        std::string text;
        std::string field1;
        std::string field2;
        bool hasRow = false;       ///< the answer put a row into the catalog
        bool isTakenBack = false;  ///< the row was deleted again by going back, maybe from a page far behind
    };

private:
    void Keep(Page answered);
    void TakeRowBack();

    WizardPage& page_;
    Page topic_;
    std::vector<Page> pages_;
    bool isAskedAgain_ = false;   ///< the page is shown once more because its answer was refused
    bool wentBack_ = false;       ///< how the last page was left
    bool hasRowOfTable_ = false;  ///< going back deletes nothing before the table has its first row
    bool givesAllRows_ = true;
};

}  // namespace quillform
