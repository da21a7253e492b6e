#pragma once

#include "catalog/WizardPage.h"

namespace quillform {

/// A page without a window: it keeps what is set, and those who answer in place of a person derive from it and write
/// Show, which leaves the answer by one of Press, Reply, Choose and GoBack.
class PlainPage : public WizardPage {
public:
    void SetTopic(const WizardTopic& topic) override { topic_ = topic; }
    void SetButtonType(WizardButtonType type) override { buttonType_ = type; }
    void SetButtonResponse(WizardResponse response) override { buttonResponse_ = response; }
    void SetTable1(std::string_view table) override { table1_ = table; }
    void SetTable2(std::string_view table) override { table2_ = table; }
    void SetTextResponse(std::string_view text) override { textResponse_ = text; }
    void SetExplaination(std::string_view text) override { explaination_ = text; }
    void SetTextLabel(std::string_view text) override { textLabel_ = text; }
    WizardResponse ButtonResponse() const override { return buttonResponse_; }
    const std::string& TextResponse() const override { return textResponse_; }
    const std::string& Field1() const override { return field1_; }
    const std::string& Field2() const override { return field2_; }

protected:
    const WizardTopic& Topic() const { return topic_; }
    WizardButtonType ButtonType() const { return buttonType_; }
    const std::string& Table1() const { return table1_; }
    const std::string& Table2() const { return table2_; }
    const std::string& Explaination() const { return explaination_; }
    const std::string& TextLabel() const { return textLabel_; }

    void Press(bool isYes) { buttonResponse_ = isYes ? WizardResponse::Yes : WizardResponse::No; }
    void Reply(std::string_view text) {
        textResponse_ = text;
        Choose({}, {});
    }
    void Choose(std::string_view field1, std::string_view field2) {
        field1_ = field1;
        field2_ = field2;
        buttonResponse_ = WizardResponse::Next;
    }
    void GoBack() { buttonResponse_ = WizardResponse::Back; }

private:
    WizardTopic topic_;
    WizardButtonType buttonType_ = WizardButtonType::TextReply;
    WizardResponse buttonResponse_ = WizardResponse::Yes;
    std::string table1_;
    std::string table2_;
    std::string textResponse_;
    std::string explaination_;
    std::string textLabel_;
    std::string field1_;
    std::string field2_;
};

}  // namespace quillform
