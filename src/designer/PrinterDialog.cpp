#include "designer/PrinterDialog.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>

#include "support/frmBusyPointer.h"
#include "support/frmText.h"

namespace quillform::designer {

namespace {

constexpr int nameRole = Qt::UserRole;

/// "Office (default): Laser, 2nd floor; idle"
QString TextOf(const print::Printer& printer) {
    std::string text = printer.name;
    if (printer.isDefault) text += " (default)";
    std::string about = printer.description;
    if (!printer.location.empty()) about += (about.empty() ? "" : ", ") + printer.location;
    if (!about.empty()) text += ": " + about;
    return ToQt(text + "; " + print::StateInWords(printer));
}

}  // namespace

PrinterDialog::PrinterDialog(const ListPrinters& list, const std::optional<PrinterChoice>& chosen, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("PrinterSetup"));
    setWindowTitle(QStringLiteral("Printer Setup"));
    printers_ = new QListWidget;
    printers_->setObjectName(QStringLiteral("Printers"));
    auto* const caption = new QLabel(QStringLiteral("&Reports for the printer go to:"));
    caption->setBuddy(printers_);
    auto* const note = new QLabel;
    note->setObjectName(QStringLiteral("Note"));
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(printers_, &QListWidget::itemActivated, this, &QDialog::accept);

    auto* const rows = new QVBoxLayout(this);
    for (QWidget* part : std::initializer_list<QWidget*>{caption, printers_, note, buttons}) rows->addWidget(part);
    std::vector<print::Printer> printers;
    try {
        const BusyPointer busy;  // the print service may take some seconds to answer
        printers = list();
        note->setVisible(printers.empty());
        note->setText(QStringLiteral("The print service has no printers."));
    } catch (const RunTimeError& error) {
        note->setText(ToQt(error.what()));
    }
    Fill(printers, chosen);
    resize(440, sizeHint().height());
}

void PrinterDialog::Fill(const std::vector<print::Printer>& printers, const std::optional<PrinterChoice>& chosen) {
    printers_->addItem(QStringLiteral("A PDF file, asked for at each report"));
    printers_->setCurrentRow(0);
    for (const print::Printer& printer : printers) {
        auto* const item = new QListWidgetItem(TextOf(printer), printers_);
        item->setData(nameRole, ToQt(printer.name));
        if (chosen && chosen->name == printer.name) printers_->setCurrentItem(item);
    }
}

std::optional<PrinterChoice> PrinterDialog::Chosen() const {
    const QListWidgetItem* const item = printers_->currentItem();
    if (!item || item->data(nameRole).isNull()) return std::nullopt;
    return PrinterChoice{.name = FromQt(item->data(nameRole).toString())};
}

}  // namespace quillform::designer
