#include "catalog/frmRptWizard.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSvgWidget>
#include <span>

#include "catalog/FormulaLists.h"
#include "support/frmText.h"

namespace quillform {

namespace {

void FillFormulas(std::span<const FormulaChoice> choices, QLabel& label, QComboBox& list) {
    label.setText(QStringLiteral("Select Formula Type:"));
    list.setAccessibleName(label.text());
    list.clear();
    for (const FormulaChoice& choice : choices) list.addItem(ToQt(choice.text));
}

/// "Customers, field 3 of 12", or the two tables of a link.
QString TopicText(const WizardTopic& topic) {
    if (topic.table == nullptr) return {};
    const QString table = ToQt(topic.table->Name);
    if (topic.second != nullptr) return table + QStringLiteral(" and ") + ToQt(topic.second->Name);
    if (topic.field == nullptr) return table;
    return QStringLiteral("%1, field %2 of %3")
        .arg(table)
        .arg(topic.table->FindField(topic.field->Name) + 1)
        .arg(topic.table->Fields.size());
}

}  // namespace

void frmRptWizard::SetTopic(const WizardTopic& topic) { ShowTopic(TopicText(topic)); }

void frmRptWizard::ShowTopic(const QString& text) {
    lblTopic_->setText(text);
    lblTopic_->setVisible(!text.isEmpty());
}

void frmRptWizard::SetButtonType(WizardButtonType type) {
    buttonType_ = type;
    const auto layOut = [this](bool isQuestion, bool hasReply, bool hasList, bool hasTwoLists) {
        for (QWidget* button : {cmdYes_, cmdNo_}) button->setVisible(isQuestion);
        cmdOkay_->setEnabled(!isQuestion);
        txtResponse_->setVisible(hasReply);
        lblTable1_->setVisible(hasList);
        cmbTable1_->setVisible(hasList);
        lblTable2_->setVisible(hasTwoLists);
        cmbTable2_->setVisible(hasTwoLists);
        PicLink_->setVisible(hasTwoLists);
    };
    switch (type) {
        case WizardButtonType::TextReply:
            return layOut(false, true, false, false);
        case WizardButtonType::Question:
            return layOut(true, false, false, false);
        case WizardButtonType::ColumnLists:
            return layOut(false, false, true, true);
        case WizardButtonType::TextFormulaList:
        case WizardButtonType::NumberFormulaList:
            return layOut(false, false, true, false);
    }
}

void frmRptWizard::SetButtonResponse(WizardResponse response) {
    buttonResponse_ = response;
    if (isVisible()) Form_Activate();
}

void frmRptWizard::SetTable1(std::string_view table) {
    switch (buttonType_) {
        case WizardButtonType::ColumnLists:
            FillColumns(table, *lblTable1_, *cmbTable1_);
            table1_ = table;
            return;
        case WizardButtonType::TextFormulaList:
            return FillFormulas(textFormulas, *lblTable1_, *cmbTable1_);
        case WizardButtonType::NumberFormulaList:
            return FillFormulas(numberFormulas, *lblTable1_, *cmbTable1_);
        case WizardButtonType::TextReply:
        case WizardButtonType::Question:
            return;
    }
}

void frmRptWizard::SetTable2(std::string_view table) {
    if (buttonType_ != WizardButtonType::ColumnLists) return;
    FillColumns(table, *lblTable2_, *cmbTable2_);
    table2_ = table;
}

void frmRptWizard::FillColumns(std::string_view table, QLabel& label, QComboBox& list) {
    const auto database = engine_.OpenDatabase(strDatabase_, Access::ReadOnly);
    const TableDef* const found = database->FindTable(table);
    if (found == nullptr)
        throw RunTimeError(ErrorNumber::ItemNotFound, "The database has no table \"" + std::string(table) + "\".");
    label.setText(ToQt(table));
    list.setAccessibleName(QStringLiteral("Field of ") + label.text());
    list.clear();
    for (const Field& field : found->Fields) list.addItem(ToQt(field.Name));
}

void frmRptWizard::SetTextResponse(std::string_view text) {
    textResponse_ = text;
    txtResponse_->setText(ToQt(text));
}

void frmRptWizard::SetExplaination(std::string_view text) {
    explaination_ = text;
    lblExplaination_->setText(ToQt(text));
    setAccessibleDescription(lblExplaination_->text());
}

void frmRptWizard::SetTextLabel(std::string_view text) {
    textLabel_ = text;
    lblTextLabel_->setText(ToQt(text));
    txtResponse_->setAccessibleName(lblTextLabel_->text());
}

void frmRptWizard::Show() {
    FitToTexts();
    show();
    Form_Activate();
    QEventLoop loop;
    shown_ = &loop;
    isLeft_ = true;  // unless a button ends the show: the whole program may end while the form waits
    loop.exec(QEventLoop::DialogExec);
    shown_ = nullptr;
    if (isLeft_) throw WizardLeft();
}

void frmRptWizard::EndShow(WizardResponse response) {
    buttonResponse_ = response;
    isLeft_ = false;
    if (shown_ != nullptr) shown_->quit();
}

void frmRptWizard::Form_Activate() {
    if (buttonResponse_ == WizardResponse::Yes && !cmdYes_->isHidden()) return cmdYes_->setFocus();
    if (buttonResponse_ == WizardResponse::No && !cmdNo_->isHidden()) return cmdNo_->setFocus();
    if (!txtResponse_->isHidden()) {
        txtResponse_->setFocus();
        txtResponse_->selectAll();
    } else if (!cmbTable1_->isHidden()) {
        cmbTable1_->setFocus();
    }
}

void frmRptWizard::cmdYes_Click() { EndShow(WizardResponse::Yes); }

void frmRptWizard::cmdNo_Click() { EndShow(WizardResponse::No); }

void frmRptWizard::cmdBack_Click() { EndShow(WizardResponse::Back); }

void frmRptWizard::cmdOkay_Click() {
    textResponse_ = FromQt(txtResponse_->text());
    field1_ = FromQt(cmbTable1_->currentText());
    field2_ = FromQt(cmbTable2_->currentText());
    EndShow(WizardResponse::Next);
}

void frmRptWizard::closeEvent(QCloseEvent* event) {
    event->ignore();
    reject();
}

void frmRptWizard::reject() {
    if (shown_ == nullptr || !WantsToLeave()) return;
    if (shown_ != nullptr) shown_->quit();
}

bool frmRptWizard::WantsToLeave() {
    QMessageBox box(QMessageBox::Question, windowTitle(), QStringLiteral("Do you want to leave the configuration?"),
                    QMessageBox::NoButton, this);
    box.setInformativeText(
        QStringLiteral("What you answered so far is kept. Fields that you haven't been asked about can't be used in "
                       "reports. To be asked everything again, delete the tables \"Report - Index\" and "
                       "\"Report - Relation\" from the database."));
    QPushButton* const goOn = box.addButton(QStringLiteral("&Go On"), QMessageBox::RejectRole);
    QPushButton* const leave = box.addButton(QStringLiteral("&Leave"), QMessageBox::DestructiveRole);
    box.setDefaultButton(goOn);
    box.setEscapeButton(goOn);
    box.exec();
    return box.clickedButton() == leave;
}

}  // namespace quillform
