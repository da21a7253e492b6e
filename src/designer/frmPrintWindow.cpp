#include "designer/frmPrintWindow.h"

#include <QAction>
#include <QBoxLayout>
#include <QLabel>
#include <QShowEvent>
#include <QToolBar>

#include "designer/PreviewPages.h"
#include "platform/RunTimeError.h"
#include "richtext/ReadRichText.h"
#include "support/TwipScale.h"
#include "support/frmBusyPointer.h"
#include "support/frmSizeForm.h"

namespace quillform::designer {

namespace {

constexpr double formWidth = 9360;  // twips
constexpr double formHeight = 5955;
constexpr double toolbarHeight = 420;
constexpr double margin = 120;

}  // namespace

frmPrintWindow::frmPrintWindow(std::filesystem::path file, Printing print, UserInterface& user, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
      file_(std::move(file)),
      print_(std::move(print)),
      user_(user),
      Toolbar1_(new QToolBar),
      Text1_(new PreviewPages),
      pageText_(new QLabel) {
    setObjectName(QStringLiteral("frmPrintWindow"));
    setWindowTitle(QStringLiteral(" "));
    QPalette colors = palette();
    colors.setColor(QPalette::Window, QColor(128, 128, 128));
    setPalette(colors);

    Toolbar1_->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1_->setFixedHeight(TwipScale::ToPixels(toolbarHeight));
    Toolbar1_->setAutoFillBackground(true);
    Toolbar1_->setPalette(QPalette());
    QAction* const Print = Toolbar1_->addAction(QIcon(QStringLiteral(":/designer/print.svg")), QStringLiteral("Print"));
    Print->setObjectName(QStringLiteral("Print"));
    Print->setToolTip(QStringLiteral("Print to Printer"));
    Print->setShortcut(QKeySequence::Print);
    Toolbar1_->widgetForAction(Print)->setFocusPolicy(Qt::TabFocus);
    auto* const space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    Toolbar1_->addWidget(space);
    pageText_->setObjectName(QStringLiteral("pageText"));
    Toolbar1_->addWidget(pageText_);
    Text1_->setObjectName(QStringLiteral("Text1"));
    Text1_->setFrameShape(QFrame::NoFrame);

    const int edge = TwipScale::ToPixels(margin);
    auto* const view = new QVBoxLayout;
    view->setContentsMargins(edge, TwipScale::ToPixels(margin / 2), edge, TwipScale::ToPixels(margin / 2));
    view->addWidget(Text1_);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(Toolbar1_);
    rows->addLayout(view, 1);
    Text1_->setFocus();

    connect(Print, &QAction::triggered, this, &frmPrintWindow::Toolbar1_ButtonClick);
    connect(Text1_, &PreviewPages::PagesChanged, this, &frmPrintWindow::ShowPageNumber);
    Form_Load();
}

void frmPrintWindow::Form_Load() {
    resize(TwipScale::ToPixels(formWidth), TwipScale::ToPixels(formHeight));
    SizeForm(*this);
}

void frmPrintWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) Form_Activate();
}

void frmPrintWindow::Form_Activate() {
    try {
        const BusyPointer busy;
        Text1_->Show(richtext::ReadRichTextFile(file_));
    } catch (const RunTimeError& error) {
        user_.Message(error.what());
    }
}

void frmPrintWindow::ShowPageNumber() {
    if (Text1_->PageCount() == 0) return;
    const QString more = Text1_->IsLaidOut() ? QString() : QStringLiteral("+");
    pageText_->setText(
        QStringLiteral("Page %1 of %2%3  ").arg(Text1_->CurrentPage()).arg(Text1_->PageCount()).arg(more));
}

void frmPrintWindow::Toolbar1_ButtonClick() {
    try {
        print_(Text1_->Text());
    } catch (const RunTimeError& error) {
        user_.Message(error.what());
    }
}

}  // namespace quillform::designer
