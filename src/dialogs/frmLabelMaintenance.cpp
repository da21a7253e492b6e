#include "dialogs/frmLabelMaintenance.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "dialogs/PaperSizes.h"
#include "dialogs/SheetOffer.h"
#include "dialogs/TellFailure.h"
#include "dialogs/frmMeasureBoxes.h"
#include "dialogs/frmSheetPicture.h"
#include "support/TwipScale.h"
#include "support/frmControls.h"
#include "support/frmScrollPage.h"
#include "support/frmSizeForm.h"
#include "support/frmText.h"

namespace quillform::dialogs {

namespace {

constexpr std::size_t descriptionBox = labelMeasures.size();
constexpr int longestDescription = 50;
constexpr int noPaper = -1;  // index in the list
constexpr int linesOfNote = 3;
constexpr int leastPaperText = 18;          // characters, on a screen that is too small for all
constexpr double leastPictureWidth = 1800;  // twips

int LimitOf(std::size_t box) { return box == descriptionBox ? longestDescription : longestMeasure; }

int IndexOf(std::optional<int> paper) {
    const auto found = std::ranges::find(paperSizes, paper, [](const PaperSize& size) { return size.number; });
    return found == paperSizes.end() ? noPaper : static_cast<int>(found - paperSizes.begin());
}

/// Styles are read in boxes that are disabled, so their texts aren't dimmed.
void ReadableAlways(QWidget& box) {
    QPalette palette = box.palette();
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, palette.color(QPalette::Active, role));
    box.setPalette(palette);
}

}  // namespace

frmLabelMaintenance::frmLabelMaintenance(std::string databasePath, UserInterface& user, DBEngine& engine,
                                         QWidget* parent)
    : QDialog(parent), user_(user), styles_(engine, databasePath) {
    setObjectName(QStringLiteral("frmLabelMaintenance"));
    setWindowTitle(QStringLiteral("Add/Edit/Delete Label Styles"));
    auto* const Picture1 = new QFrame;
    Picture1->setObjectName(QStringLiteral("Picture1"));
    auto* const rows = new QVBoxLayout(Picture1);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* const style = new QVBoxLayout;
    style->addWidget(MakeBoxes());
    style->addLayout(MakeMoves());
    style->addStretch(1);
    auto* const page = new QWidget;
    auto* const halves = new QHBoxLayout(page);
    halves->setContentsMargins(0, 0, 0, 0);
    halves->addLayout(style);
    halves->addSpacing(halves->spacing());
    halves->addWidget(MakePicture(), 1);
    rows->addWidget(new frmScrollPage(page), 1);
    rows->addLayout(MakeButtons());
    (new QVBoxLayout(this))->addWidget(Picture1);
    Form_Load();
}

QWidget* frmLabelMaintenance::MakeBoxes() {
    auto* const table = new QWidget;
    auto* const rows = new QFormLayout(table);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* const description = new QLineEdit;
    description->setObjectName(QStringLiteral("Custom_8"));
    const QString caption = QStringLiteral("Label Description:");
    description->setAccessibleName(caption);
    rows->addRow(caption, description);
    std::ranges::copy(AddMeasureBoxes(*rows), Custom_.begin());
    Custom_[descriptionBox] = description;
    cmbPaperSize_ = new QComboBox;
    cmbPaperSize_->setObjectName(QStringLiteral("cmbPaperSize"));
    cmbPaperSize_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbPaperSize_->setMinimumContentsLength(leastPaperText);
    const QString paperCaption = QStringLiteral("Paper Size:");
    cmbPaperSize_->setAccessibleName(paperCaption);
    rows->addRow(paperCaption, cmbPaperSize_);
    // Room for the longest description, which a small screen needn't give.
    const int whole = description->fontMetrics().averageCharWidth() * (longestDescription + 2);
    rows->setItem(rows->rowCount(), QFormLayout::FieldRole,
                  new QSpacerItem(whole, 0, QSizePolicy::Preferred, QSizePolicy::Fixed));
    for (QLineEdit* const box : Custom_) ReadableAlways(*box);
    ReadableAlways(*cmbPaperSize_);
    for (QLineEdit* const box : Custom_) connect(box, &QLineEdit::textChanged, this, &frmLabelMaintenance::ShowSheet);
    connect(cmbPaperSize_, &QComboBox::currentIndexChanged, this, &frmLabelMaintenance::ShowSheet);
    connect(cmbPaperSize_, &QComboBox::activated, this, [this] {
        isPaperUnlisted_ = false;
        ShowSheet();
    });
    return table;
}

QWidget* frmLabelMaintenance::MakePicture() {
    sheetPicture_ = new frmSheetPicture;
    sheetPicture_->setMinimumWidth(TwipScale::ToPixels(leastPictureWidth));
    sheetNote_ = new QLabel;
    sheetNote_->setObjectName(QStringLiteral("sheetNote"));
    sheetNote_->setTextFormat(Qt::PlainText);
    sheetNote_->setWordWrap(true);
    sheetNote_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    sheetNote_->setMinimumHeight(linesOfNote * sheetNote_->fontMetrics().lineSpacing());
    auto* const picture = new QWidget;
    auto* const rows = new QVBoxLayout(picture);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(sheetPicture_, 1);
    rows->addWidget(sheetNote_);
    return picture;
}

QPushButton* frmLabelMaintenance::NewCommand(const char* name, const char* caption, Command click) {
    auto* const button = NewButton(name, caption);
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

QLayout* frmLabelMaintenance::MakeMoves() {
    const auto add = [this](const char* name, const char* caption, Command click, Qt::Key key, const char* tip) {
        auto* const button = NewCommand(name, caption, click);
        // At once, also while the key is held down; a button's own shortcut first shows it pressed.
        new QShortcut(QKeySequence(key), this, button, &QPushButton::click);
        button->setToolTip(QStringLiteral("%1 (%2)").arg(QString::fromLatin1(tip),
                                                         QKeySequence(key).toString(QKeySequence::NativeText)));
        return button;
    };
    cmdPrev_ = add("cmdPrev", "Prev>>", &frmLabelMaintenance::cmdPrev_Click, Qt::Key_PageUp, "Previous label style");
    cmdNext_ = add("cmdNext", "<<Next", &frmLabelMaintenance::cmdNext_Click, Qt::Key_PageDown, "Next label style");
    position_ = new QLabel;
    position_->setObjectName(QStringLiteral("position"));
    position_->setAlignment(Qt::AlignCenter);
    position_->setMinimumWidth(position_->fontMetrics().horizontalAdvance(QStringLiteral("9999 of 9999")));
    auto* const row = new QHBoxLayout;
    row->addWidget(cmdPrev_);
    row->addWidget(position_, 1);
    row->addWidget(cmdNext_);
    return row;
}

QLayout* frmLabelMaintenance::MakeButtons() {
    cmdAdd_ = NewCommand("cmdAdd", "Add", &frmLabelMaintenance::cmdAdd_Click);
    cmdUpdate_ = NewCommand("cmdUpdate", "Update", &frmLabelMaintenance::cmdUpdate_Click);
    cmdDelete_ = NewCommand("cmdDelete", "Delete", &frmLabelMaintenance::cmdDelete_Click);
    cmdSave_ = NewCommand("cmdSave", "Save", &frmLabelMaintenance::cmdSave_Click);
    auto* const row = new QHBoxLayout;
    for (QPushButton* const button : {cmdAdd_, cmdUpdate_, cmdDelete_, cmdSave_}) row->addWidget(button);
    row->addStretch(1);
    row->addWidget(NewCommand("cmdExit", "Exit", &frmLabelMaintenance::cmdExit_Click));
    return row;
}

void frmLabelMaintenance::Form_Load() {
    for (const PaperSize& paper : paperSizes) cmbPaperSize_->addItem(ToQt(paper.styleText));
    cmbPaperSize_->setCurrentIndex(noPaper);
    ShowLabelStyle();
    resize(sizeHint());
    SizeForm(*this);
}

/// Only when the form is first shown. It also becomes active behind each message box and each look at another program,
/// and would then go back to the first style, or drop a style that is half entered.
void frmLabelMaintenance::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    // After the form stands on the screen, because the message belongs over it.
    if (!std::exchange(wasActivated_, true)) QTimer::singleShot(0, this, &frmLabelMaintenance::Form_Activate);
}

void frmLabelMaintenance::Form_Activate() {
    DoneOrTold(user_, [this] {
        styles_.MoveFirst();
        ShowStyleOr("You must add a new label or exit.");
    });
}

void frmLabelMaintenance::ShowStyleOr(const char* messageIfNone) {
    ShowLabelStyle();
    if (styles_.HasRows()) return;
    user_.Message(messageIfNone);
    cmdAdd_Click();
}

void frmLabelMaintenance::ShowLabelStyle() {
    const LabelStyle& style = styles_.Current();
    ShowWhole(*Custom_[descriptionBox], style.description, longestDescription);
    for (std::size_t i = 0; i < style.measures.size(); ++i) ShowWhole(*Custom_[i], style.measures[i], longestMeasure);
    const int paper = IndexOf(style.paper);
    isPaperUnlisted_ = styles_.HasRows() && paper == noPaper;
    if (paper != noPaper) cmbPaperSize_->setCurrentIndex(paper);
    ShowState();
}

void frmLabelMaintenance::ShowState() {
    const bool isEntering = styles_.IsEntering();
    const bool hasStyle = styles_.HasRows();
    for (QLineEdit* const box : Custom_) box->setEnabled(isEntering);
    cmbPaperSize_->setEnabled(isEntering);
    cmdAdd_->setEnabled(!isEntering);
    for (QPushButton* const button : {cmdUpdate_, cmdDelete_, cmdPrev_, cmdNext_})
        button->setEnabled(!isEntering && hasStyle);
    cmdSave_->setEnabled(isEntering);
    ShowSheet();
    cmdSave_->setDefault(isEntering);
    if (isEntering)
        position_->setText(styles_.IsAdding() ? QStringLiteral("New style") : QStringLiteral("Changing"));
    else
        position_->setText(hasStyle ? QStringLiteral("%1 of %2").arg(styles_.Position() + 1).arg(styles_.Count())
                                    : QString());
}

void frmLabelMaintenance::ShowSheet() {
    LabelStyle style = Entered();
    if (!style.paper && !styles_.IsAdding()) style.paper = styles_.Current().paper;
    const bool isThere = styles_.IsEntering() || styles_.HasRows();
    SheetPlan plan = isThere ? PlanSheet(style) : SheetPlan();
    sheetNote_->setText(ToQt(plan.sentence));
    QFont font = sheetNote_->font();
    font.setBold(plan.isWrong);
    sheetNote_->setFont(font);
    sheetPicture_->Show(std::move(plan));
}

/// The paper stays chosen: the next style is often for the same.
void frmLabelMaintenance::cmdAdd_Click() {
    if (!DoneOrTold(user_, [this] { styles_.Add(); })) return;
    for (std::size_t i = 0; i < Custom_.size(); ++i) ShowWhole(*Custom_[i], {}, LimitOf(i));
    isPaperUnlisted_ = false;
    ShowState();
    Custom_[descriptionBox]->setFocus();
}

void frmLabelMaintenance::cmdUpdate_Click() {
    if (!DoneOrTold(user_, [this] { styles_.Edit(); })) {
        // Another deleted it.
        if (!styles_.HasRows()) Form_Activate();
        return;
    }
    ShowLabelStyle();
    Custom_[descriptionBox]->setFocus();
}

LabelStyle frmLabelMaintenance::Entered() const {
    LabelStyle style;
    style.description = FromQt(Custom_[descriptionBox]->text());
    for (std::size_t i = 0; i < style.measures.size(); ++i) style.measures[i] = FromQt(Custom_[i]->text());
    const int chosen = isPaperUnlisted_ ? noPaper : cmbPaperSize_->currentIndex();
    if (chosen != noPaper) style.paper = paperSizes[static_cast<std::size_t>(chosen)].number;
    return style;
}

/// Shows what was stored, which may differ from what was typed, and may be an older style of the same description. The
/// keyboard, which would go from the box that is disabled to Exit, goes where the next style begins.
void frmLabelMaintenance::cmdSave_Click() {
    if (!DoneOrTold(user_, [this] { styles_.Save(Entered()); })) return ShowState();
    ShowLabelStyle();
    cmdAdd_->setFocus();
}

void frmLabelMaintenance::cmdDelete_Click() {
    if (!user_.Ask("Are you sure you want to delete this label?", "Delete Label", MessageIcon::Exclamation)) return;
    if (DoneOrTold(user_, [this] { styles_.Delete(); }))
        ShowStyleOr("You must add a new label or exit");
    else if (!styles_.HasRows())
        Form_Activate();
}

void frmLabelMaintenance::cmdNext_Click() {
    DoneOrTold(user_, [this] {
        styles_.MoveNext();
        ShowLabelStyle();
    });
}

void frmLabelMaintenance::cmdPrev_Click() {
    DoneOrTold(user_, [this] {
        styles_.MovePrevious();
        ShowLabelStyle();
    });
}

bool ShowLabelStyles(const std::string& databasePath, UserInterface& user, DBEngine& engine, QWidget* owner) {
    bool wasAdded = false;
    DoneOrTold(user, [&] {
        wasAdded = OfferCommonSheets(databasePath, user, engine);
        frmLabelMaintenance(databasePath, user, engine, owner).exec();
    });
    return wasAdded;
}

}  // namespace quillform::dialogs
