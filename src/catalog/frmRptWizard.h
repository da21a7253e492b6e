#pragma once

#include <QDialog>
#include <string>
#include <string_view>

#include "catalog/WizardPage.h"

class QComboBox;
class QEventLoop;
class QLabel;
class QLineEdit;
class QPushButton;
class QSvgWidget;

namespace quillform {

/// The wizard's page as a window, "Quillform Wizard": one form for every question, loaded at the start of a walk and
/// kept until its end. A page changes only what its caller sets. The controls carry their given names as object names.
///
/// Show is a modal show: the program's events run until a button is pressed. Between two pages the form stays on the
/// screen, so that a walk doesn't flicker and messages about a reply stand above it; it goes with the walk.
///
/// The wizard has no cancel. Who closes it by the system menu or Esc is asked, and goes on or throws WizardLeft out of
/// Show.
class frmRptWizard final : public QDialog, public WizardPage {
    Q_OBJECT

public:
    /// The column lists are read from the database `strDatabase`, opened by `engine`, which outlives the form.
    frmRptWizard(DBEngine& engine, std::string strDatabase, QWidget* parent = nullptr);

    void SetTopic(const WizardTopic& topic) override;
    void SetButtonType(WizardButtonType type) override;
    void SetButtonResponse(WizardResponse response) override;
    void SetTable1(std::string_view table) override;
    void SetTable2(std::string_view table) override;
    void SetTextResponse(std::string_view text) override;
    void SetExplaination(std::string_view text) override;
    void SetTextLabel(std::string_view text) override;
    void SetField1(std::string_view text) { field1_ = text; }
    void SetField2(std::string_view text) { field2_ = text; }

    void Show() override;

    WizardButtonType ButtonType() const { return buttonType_; }
    WizardResponse ButtonResponse() const override { return buttonResponse_; }
    const std::string& Table1() const { return table1_; }
    const std::string& Table2() const { return table2_; }
    const std::string& TextResponse() const override { return textResponse_; }
    const std::string& Explaination() const { return explaination_; }
    const std::string& TextLabel() const { return textLabel_; }
    const std::string& Field1() const override { return field1_; }
    const std::string& Field2() const override { return field2_; }

public Q_SLOTS:
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Form_Load();
    void Form_Activate();
    void cmdYes_Click();
    void cmdNo_Click();
    void cmdOkay_Click();
    void cmdBack_Click();

    QWidget* MakePage();
    QWidget* MakeQuestion();
    QWidget* MakeLists();
    QWidget* MakeButtons();
    void MakeTabOrder();
    void ShowTopic(const QString& text);
    void FillColumns(std::string_view table, QLabel& label, QComboBox& list);
    void FitToTexts();
    void EndShow(WizardResponse response);
    bool WantsToLeave();

    DBEngine& engine_;
    std::string strDatabase_;
    QEventLoop* shown_ = nullptr;  // while the form is shown modally
    bool isLeft_ = false;

    WizardButtonType buttonType_ = WizardButtonType::TextReply;
    WizardResponse buttonResponse_ = WizardResponse::Yes;
    std::string table1_, table2_, textResponse_, explaination_, textLabel_, field1_, field2_;

    // Owned by the form.
    QLabel *lblTopic_, *lblExplaination_, *lblTextLabel_, *lblTable1_, *lblTable2_;
    QLineEdit* txtResponse_;
    QComboBox *cmbTable1_, *cmbTable2_;
    QSvgWidget *PicLink_, *Picture1_;
    QPushButton *cmdYes_, *cmdNo_, *cmdOkay_, *cmdBack_;
};

}  // namespace quillform
