// The look of the wizard's page: which controls there are, and how they lie.

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSvgWidget>

#include "catalog/frmRptWizard.h"
#include "support/TwipScale.h"
#include "support/frmSizeForm.h"

// Outside of any namespace, as Qt asks.
static void LoadPictures() { Q_INIT_RESOURCE(frmRptWizard); }

namespace quillform {

namespace {

constexpr double formWidth = 9600;  // twips, as everything here
constexpr double formHeight = 5250;
constexpr double margin = 300;
constexpr double gap = 120;
constexpr double listGap = 60;
constexpr double buttonWidth = 1380;
constexpr double pictureWidth = 1500;
constexpr double pictureHeight = 1875;
constexpr double linkWidth = 720;
constexpr double linkHeight = 360;

int Pixels(double twips) { return TwipScale::ToPixels(twips); }

/// A text as it stands: names of tables and fields may look like markup.
QLabel* MakeLabel(const char* name, bool isBold = false) {
    auto* const label = new QLabel;
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setBold(isBold);
    label->setFont(font);
    return label;
}

QComboBox* MakeList(const char* name) {
    auto* const list = new QComboBox;
    list->setObjectName(QString::fromLatin1(name));
    list->setPlaceholderText(QStringLiteral("(nothing selected)"));
    list->setMaxVisibleItems(16);
    list->setMinimumContentsLength(12);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return list;
}

QPushButton* MakeButton(const char* name, const char* caption, const char* accessibleName) {
    auto* const button = new QPushButton(QString::fromLatin1(caption));
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(QString::fromLatin1(accessibleName));
    button->setMinimumWidth(Pixels(buttonWidth));
    return button;
}

QSvgWidget* MakePicture(const char* name, const char* resource, double width, double height) {
    auto* const picture = new QSvgWidget(QString::fromLatin1(resource));
    picture->setObjectName(QString::fromLatin1(name));
    picture->setFixedSize(Pixels(width), Pixels(height));
    return picture;
}

}  // namespace

frmRptWizard::frmRptWizard(DBEngine& engine, std::string strDatabase, QWidget* parent)
    : QDialog(parent), engine_(engine), strDatabase_(std::move(strDatabase)) {
    LoadPictures();
    setObjectName(QStringLiteral("frmRptWizard"));
    setWindowTitle(QStringLiteral("Quillform Wizard"));
    setWindowModality(Qt::ApplicationModal);

    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(MakePage(), 1);
    rows->addWidget(MakeButtons());
    MakeTabOrder();
    cmdOkay_->setDefault(true);  // a dialog knows only the buttons that it has already

    connect(cmdYes_, &QPushButton::clicked, this, &frmRptWizard::cmdYes_Click);
    connect(cmdNo_, &QPushButton::clicked, this, &frmRptWizard::cmdNo_Click);
    connect(cmdOkay_, &QPushButton::clicked, this, &frmRptWizard::cmdOkay_Click);
    connect(cmdBack_, &QPushButton::clicked, this, &frmRptWizard::cmdBack_Click);
    SetButtonType(WizardButtonType::TextReply);
    ShowTopic({});
    Form_Load();
}

void frmRptWizard::Form_Load() {
    setMinimumSize(Pixels(formWidth), Pixels(formHeight));
    resize(minimumSize());
    SizeForm(*this);
}

QWidget* frmRptWizard::MakePage() {
    auto* const page = new QWidget;
    page->setBackgroundRole(QPalette::Base);
    page->setAutoFillBackground(true);
    auto* const columns = new QHBoxLayout(page);
    columns->setContentsMargins(Pixels(margin), Pixels(margin), Pixels(margin), Pixels(margin));
    columns->setSpacing(Pixels(margin));
    Picture1_ = MakePicture("Picture1", ":/catalog/configure.svg", pictureWidth, pictureHeight);
    columns->addWidget(Picture1_, 0, Qt::AlignTop);
    columns->addWidget(MakeQuestion(), 1);
    return page;
}

QWidget* frmRptWizard::MakeQuestion() {
    lblTopic_ = MakeLabel("lblTopic");
    lblTopic_->setForegroundRole(QPalette::PlaceholderText);
    lblExplaination_ = MakeLabel("lblExplaination");
    lblTextLabel_ = MakeLabel("lblTextLabel", true);
    txtResponse_ = new QLineEdit;
    txtResponse_->setObjectName(QStringLiteral("txtResponse"));

    auto* const question = new QWidget;
    auto* const rows = new QVBoxLayout(question);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Pixels(gap));
    rows->addWidget(lblTopic_);
    rows->addWidget(lblExplaination_);
    rows->addSpacing(Pixels(gap));
    rows->addWidget(lblTextLabel_);
    rows->addWidget(txtResponse_);
    rows->addWidget(MakeLists());
    rows->addStretch(1);
    return question;
}

QWidget* frmRptWizard::MakeLists() {
    lblTable1_ = MakeLabel("lblTable1");
    lblTable2_ = MakeLabel("lblTable2");
    cmbTable1_ = MakeList("cmbTable1");
    cmbTable2_ = MakeList("cmbTable2");
    PicLink_ = MakePicture("PicLink", ":/catalog/link.svg", linkWidth, linkHeight);

    auto* const lists = new QWidget;
    auto* const grid = new QGridLayout(lists);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(Pixels(gap));
    grid->setVerticalSpacing(Pixels(listGap));
    grid->addWidget(lblTable1_, 0, 0, Qt::AlignBottom);
    grid->addWidget(cmbTable1_, 1, 0);
    grid->addWidget(PicLink_, 1, 1, Qt::AlignCenter);
    grid->addWidget(lblTable2_, 0, 2, Qt::AlignBottom);
    grid->addWidget(cmbTable2_, 1, 2);
    return lists;
}

QWidget* frmRptWizard::MakeButtons() {
    cmdBack_ = MakeButton("cmdBack", "<< &Back", "Back");
    cmdYes_ = MakeButton("cmdYes", "&Yes", "Yes");
    cmdNo_ = MakeButton("cmdNo", "&No", "No");
    cmdOkay_ = MakeButton("cmdOkay", "Ne&xt >>", "Next");

    auto* const buttons = new QWidget;
    auto* const row = new QHBoxLayout(buttons);
    row->setContentsMargins(Pixels(margin), Pixels(gap), Pixels(margin), Pixels(gap));
    row->setSpacing(Pixels(gap));
    row->addWidget(cmdBack_);
    row->addStretch(1);
    row->addWidget(cmdYes_);
    row->addWidget(cmdNo_);
    row->addWidget(cmdOkay_);
    return buttons;
}

void frmRptWizard::MakeTabOrder() {
    QWidget* last = txtResponse_;
    for (QWidget* next :
         {static_cast<QWidget*>(cmbTable1_), static_cast<QWidget*>(cmbTable2_), static_cast<QWidget*>(cmdYes_),
          static_cast<QWidget*>(cmdNo_), static_cast<QWidget*>(cmdOkay_), static_cast<QWidget*>(cmdBack_)}) {
        setTabOrder(last, next);
        last = next;
    }
}

/// Long texts make the form taller; it never shrinks again, so that its buttons stay where they are.
void frmRptWizard::FitToTexts() {
    const int needed = layout()->totalHeightForWidth(width());
    if (needed > height()) resize(width(), needed);
}

}  // namespace quillform
