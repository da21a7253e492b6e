#include "designer/frmTextFields.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <algorithm>

#include "platform/Text.h"
#include "support/TwipScale.h"
#include "support/frmControls.h"
#include "support/frmSizeForm.h"
#include "support/frmText.h"

namespace quillform::designer {

namespace {

constexpr int longestText = 60;
constexpr double formWidth = 6300;  // twips
constexpr double formHeight = 5400;

}  // namespace

frmTextFields::frmTextFields(DesignSurface& surface, UserInterface& user, QWidget* parent)
    : QDialog(parent), user_(user), texts_(surface) {
    setObjectName(QStringLiteral("frmTextFields"));
    setWindowTitle(QStringLiteral("Insert/Remove Text Fields"));
    MakeParts();
    connect(NewCmd_, &QPushButton::clicked, this, &frmTextFields::NewCmd_Click);
    connect(EditCmd_, &QPushButton::clicked, this, &frmTextFields::EditCmd_Click);
    connect(DelCmd_, &QPushButton::clicked, this, &frmTextFields::DelCmd_Click);
    connect(AddCmd_, &QPushButton::clicked, this, &frmTextFields::AddCmd_Click);
    connect(XitCmd_, &QPushButton::clicked, this, &frmTextFields::XitCmd_Click);
    connect(List1_, &QListWidget::itemDoubleClicked, this, [this] {
        if (EditCmd_->isEnabled()) EditCmd_Click();
    });
    resize(TwipScale::ToPixels(formWidth), TwipScale::ToPixels(formHeight));
    SizeForm(*this);
    Form_Activate();
}

void frmTextFields::MakeParts() {
    List1_ = new QListWidget;
    List1_->setObjectName(QStringLiteral("List1"));
    List1_->setAccessibleName(QStringLiteral("Texts of the layout"));
    Text_ = new QLineEdit;
    Text_->setObjectName(QStringLiteral("Text"));
    Text_->setAccessibleName(QStringLiteral("Text"));
    Text_->setMaxLength(longestText);
    Opt0_ = new QRadioButton(QStringLiteral("&Page Heading Text"));
    Opt0_->setObjectName(QStringLiteral("Opt_0"));
    Opt0_->setChecked(true);
    Opt1_ = new QRadioButton(QStringLiteral("N&ormal Text"));
    Opt1_->setObjectName(QStringLiteral("Opt_1"));
    NewCmd_ = NewButton("NewCmd", "&New");
    EditCmd_ = NewButton("EditCmd", "&Edit");
    DelCmd_ = NewButton("DelCmd", "&Delete");
    AddCmd_ = NewButton("AddCmd", "&Add");
    AddCmd_->setDefault(true);  // while a text is entered; disabled otherwise
    XitCmd_ = NewButton("XitCmd", "E&xit");

    auto* const frame = new QGroupBox(QStringLiteral("Text"));
    auto* const entry = new QVBoxLayout(frame);
    entry->addWidget(Text_);
    entry->addWidget(Opt0_);
    entry->addWidget(Opt1_);
    auto* const left = new QVBoxLayout;
    left->addWidget(List1_, 1);
    left->addWidget(frame);
    auto* const buttons = new QVBoxLayout;
    for (QPushButton* const button : {NewCmd_, EditCmd_, DelCmd_}) buttons->addWidget(button);
    buttons->addStretch(1);
    for (QPushButton* const button : {AddCmd_, XitCmd_}) buttons->addWidget(button);
    auto* const columns = new QHBoxLayout(this);
    columns->addLayout(left, 1);
    columns->addLayout(buttons);
}

void frmTextFields::Form_Activate() {
    FillTextList();
    EnableForEntry(false);
    if (List1_->count() == 0) NewCmd_->setFocus();
}

void frmTextFields::FillTextList() {
    const int row = List1_->currentRow();
    List1_->clear();
    for (const clssFields& item : texts_.Texts()) List1_->addItem(ToQt(item.Text));
    if (List1_->count() == 0) {
        DelCmd_->setEnabled(false);
        EditCmd_->setEnabled(false);
        return;
    }
    // The row that was selected, so that the next command needs no click.
    List1_->setCurrentRow(std::clamp(row, 0, List1_->count() - 1));
}

/// Position of the selected text, 0 if none is.
int frmTextFields::Selected() const { return List1_->currentRow() + 1; }

void frmTextFields::EnableForEntry(bool isEntering) {
    // What is typed while nothing is entered would go nowhere.
    for (QWidget* const part : std::initializer_list<QWidget*>{Text_, Opt0_, Opt1_, AddCmd_})
        part->setEnabled(isEntering);
    NewCmd_->setEnabled(!isEntering);
    const bool hasTexts = texts_.Texts().Count() > 0;
    EditCmd_->setEnabled(!isEntering && hasTexts);
    DelCmd_->setEnabled(!isEntering && hasTexts);
    // The list stays on the text that is edited until it is stored.
    List1_->setEnabled(!isEntering);
}

void frmTextFields::BeginEntry() {
    EnableForEntry(true);
    Text_->setFocus();
}

void frmTextFields::EndEntry() {
    EnableForEntry(false);
    NewCmd_->setFocus();
}

/// Esc gives an entry up before it closes the form; in the list Enter edits and Delete deletes.
bool frmTextFields::TakesKey(int key) {
    const bool isEntering = AddCmd_->isEnabled();
    if (key == Qt::Key_Escape && isEntering) {
        EndEntry();
        return true;
    }
    if (!List1_->hasFocus()) return false;
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        EditCmd_Click();
    else if (key == Qt::Key_Delete)
        DelCmd_Click();
    else
        return false;
    return true;
}

void frmTextFields::keyPressEvent(QKeyEvent* event) {
    if (!TakesKey(event->key())) QDialog::keyPressEvent(event);
}

void frmTextFields::NewCmd_Click() {
    intTextMode_ = Mode::New;
    Text_->clear();
    Opt1_->setChecked(true);
    BeginEntry();
}

void frmTextFields::EditCmd_Click() {
    if (Selected() < 1) return;
    intTextMode_ = Mode::Edit;
    const clssFields& item = texts_.Texts().Item(Selected());
    Text_->setText(ToQt(LeftCharacters(item.Text, static_cast<std::size_t>(std::max<int>(item.Length, 0)))));
    (TextItems::KindOf(item) == TextKind::PageHeading ? Opt0_ : Opt1_)->setChecked(true);
    BeginEntry();
    Text_->selectAll();
}

void frmTextFields::DelCmd_Click() {
    if (Selected() < 1) return;
    texts_.Delete(Selected());
    FillTextList();
}

void frmTextFields::AddCmd_Click() {
    const std::string text = FromQt(Text_->text());
    if (text.empty()) {
        user_.Message(
            "You cannot save a text that is blank.  If you want to delete an existing text, you should use the delete "
            "button.");
        EndEntry();
        return;
    }
    const TextKind kind = Opt0_->isChecked() ? TextKind::PageHeading : TextKind::Normal;
    if (intTextMode_ == Mode::New) {
        texts_.Add(text, kind);
    } else {
        texts_.Change(Selected(), text, kind);
    }
    EndEntry();
    FillTextList();
    if (intTextMode_ == Mode::New) List1_->setCurrentRow(List1_->count() - 1);
}

void frmTextFields::done(int result) {
    texts_.StoreTextItems();
    QDialog::done(result);
}

}  // namespace quillform::designer
