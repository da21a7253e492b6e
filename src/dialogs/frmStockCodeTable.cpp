#include "dialogs/frmStockCodeTable.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <utility>

#include "dialogs/frmDataControl.h"
#include "dialogs/frmMeasureBoxes.h"
#include "support/TwipScale.h"
#include "support/frmControls.h"
#include "support/frmText.h"

namespace quillform::dialogs {

namespace {

struct BoundBox {
    const char* label;
    const char* column;
    int limit;     ///< characters
    double width;  ///< twips
    bool isNumber;
};

constexpr int noLimit = 32767;
constexpr BoundBox boxes[] = {
    {"Stock Code:", "Stock Code", 15, 2400, false},
    {"Stock Code Description:", "Stock Code Description", 30, 4200, false},
    {"Quantity On Hand:", "Quantity On Hand", noLimit, 1800, true},
    {"Total Cost:", "Total Cost", noLimit, 1800, true},
    {"Account #:", "Account #", 7, 1200, false},
};

constexpr int margin = 12;  // pixels
constexpr QSize doorIcon(24, 24);
constexpr double doorWidth = 2400;  // twips

QFrame* NewLine() {
    auto* const line = new QFrame;
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    return line;
}

std::vector<std::string> Columns() {
    std::vector<std::string> columns;
    for (const BoundBox& box : boxes) columns.emplace_back(box.column);
    return columns;
}

}  // namespace

frmStockCodeTable::frmStockCodeTable(std::string databasePath, UserInterface& user, DBEngine& engine, QWidget* parent)
    : QWidget(parent, Qt::Window),
      user_(user),
      datPrimaryRS_(engine, {std::move(databasePath), "select * from [Stock Code Table]", Columns()},
                    {[this] { datPrimaryRS_Validate(); }, [this] { datPrimaryRS_Reposition(); },
                     [this](const RunTimeError& DataErr) { datPrimaryRS_Error(DataErr); }}) {
    setObjectName(QStringLiteral("frmStockCodeTable"));
    setWindowTitle(QStringLiteral("Stock Code Table"));
    bar_ = new frmDataControl("datPrimaryRS", datPrimaryRS_);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(margin, margin, margin, margin);
    rows->setSpacing(margin);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    rows->addWidget(MakeBoxes());
    rows->addWidget(bar_);
    rows->addWidget(NewLine());
    rows->addWidget(MakeDoor());
    rows->addWidget(NewLine());
    rows->addWidget(MakeButtons());
    ShowRecord();
}

QWidget* frmStockCodeTable::MakeBoxes() {
    auto* const table = new QWidget;
    auto* const cells = new QGridLayout(table);
    cells->setContentsMargins(0, 0, 0, 0);
    for (std::size_t i = 0; i < boxCount; ++i) {
        const int row = static_cast<int>(i);
        const QString text = QString::fromLatin1(boxes[i].label);
        auto* const label = new QLabel(text);
        label->setObjectName(QStringLiteral("lblLabels_%1").arg(i));
        auto* const box = new QLineEdit;
        box->setObjectName(QStringLiteral("txtFields_%1").arg(i));
        box->setAccessibleName(text.chopped(1));
        box->setMaxLength(boxes[i].limit);
        if (boxes[i].isNumber) box->setAlignment(Qt::AlignRight);
        box->setFixedWidth(TwipScale::ToPixels(boxes[i].width));
        label->setBuddy(box);
        cells->addWidget(label, row, 0);
        cells->addWidget(box, row, 1, Qt::AlignLeft);
        connect(box, &QLineEdit::textChanged, this,
                [this, i](const QString& typed) { datPrimaryRS_.SetText(i, FromQt(typed)); });
        connect(box, &QLineEdit::returnPressed, this, &frmStockCodeTable::cmdUpdate_Click);
        txtFields_[i] = box;
    }
    cells->setColumnStretch(1, 1);
    readOnlyNote_ = new QLabel(QStringLiteral("The database can only be read."));
    cells->addWidget(readOnlyNote_, static_cast<int>(boxCount), 1);
    return table;
}

QWidget* frmStockCodeTable::MakeDoor() {
    auto* const door = new QWidget;
    auto* const row = new QHBoxLayout(door);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(margin);
    auto* const frmReports = NewButton("frmReports", "Reports");
    frmReports->setIcon(QApplication::windowIcon());
    frmReports->setIconSize(doorIcon);
    frmReports->setMinimumHeight(doorIcon.height() + margin);
    frmReports->setMinimumWidth(TwipScale::ToPixels(doorWidth));
    connect(frmReports, &QPushButton::clicked, this, &frmStockCodeTable::frmReports_Click);
    row->addWidget(frmReports);
    row->addWidget(new QLabel(QStringLiteral("Design reports and labels over your\ndatabases, and run them.")), 1);
    return door;
}

QWidget* frmStockCodeTable::MakeButtons() {
    auto* const picButtons = new QWidget;
    picButtons->setObjectName(QStringLiteral("picButtons"));
    auto* const row = new QHBoxLayout(picButtons);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char* name, const char* caption, void (frmStockCodeTable::*click)()) {
        auto* const button = NewButton(name, caption);
        connect(button, &QPushButton::clicked, this, click);
        row->addWidget(button);
        return button;
    };
    add("cmdAdd", "&Add", &frmStockCodeTable::cmdAdd_Click);
    cmdDelete_ = add("cmdDelete", "&Delete", &frmStockCodeTable::cmdDelete_Click);
    add("cmdRefresh", "&Refresh", &frmStockCodeTable::cmdRefresh_Click);
    cmdUpdate_ = add("cmdUpdate", "&Update", &frmStockCodeTable::cmdUpdate_Click);
    add("cmdClose", "&Close", &frmStockCodeTable::cmdClose_Click);
    return picButtons;
}

void frmStockCodeTable::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // After the form stands on the screen, because a failure is told over it.
    if (!std::exchange(wasShown_, true)) QTimer::singleShot(0, this, &frmStockCodeTable::cmdRefresh_Click);
}

void frmStockCodeTable::cmdAdd_Click() {
    datPrimaryRS_.AddNew();
    if (datPrimaryRS_.IsAdding()) txtFields_[0]->setFocus();
}

void frmStockCodeTable::cmdClose_Click() {
    hourglass_.reset();
    close();
}

void frmStockCodeTable::frmReports_Click() {
    byReports_ = true;
    if (!close()) byReports_ = false;
}

void frmStockCodeTable::datPrimaryRS_Reposition() {
    hourglass_.reset();
    ShowRecord();
}

/// No Reposition follows where nothing moved.
void frmStockCodeTable::datPrimaryRS_Error(const RunTimeError& DataErr) {
    hourglass_.reset();
    ShowRecord();
    user_.Message("Data error event hit err:" + std::string(DataErr.what()));
}

void frmStockCodeTable::Form_Unload(bool& Cancel) {
    hourglass_.reset();
    if (datPrimaryRS_.SaveChanges()) return;
    Cancel = !user_.Ask("The record isn't stored.  Leave without it?", FromQt(windowTitle()), MessageIcon::Exclamation);
}

void frmStockCodeTable::closeEvent(QCloseEvent* event) {
    bool Cancel = false;
    Form_Unload(Cancel);
    event->setAccepted(!Cancel);
    if (!Cancel) Q_EMIT Unloaded(byReports_);
}

void frmStockCodeTable::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
    if (datPrimaryRS_.IsAdding() || datPrimaryRS_.IsChanged()) return datPrimaryRS_.UpdateControls();
    cmdClose_Click();
}

void frmStockCodeTable::ShowRecord() {
    const bool hasRecord = datPrimaryRS_.HasRecord();
    for (std::size_t i = 0; i < boxCount; ++i) {
        QLineEdit& box = *txtFields_[i];
        const QSignalBlocker notTyped(box);
        // The cursor stays in a text that stays.
        if (FromQt(box.text()) != datPrimaryRS_.Text(i)) ShowWhole(box, datPrimaryRS_.Text(i), boxes[i].limit);
        box.setEnabled(hasRecord);
        box.setReadOnly(datPrimaryRS_.IsReadOnly());
    }
    readOnlyNote_->setVisible(hasRecord && datPrimaryRS_.IsReadOnly());
    cmdDelete_->setEnabled(hasRecord);
    cmdUpdate_->setEnabled(hasRecord);
    bar_->Follow();
    const std::int64_t position = datPrimaryRS_.AbsolutePosition();
    if (datPrimaryRS_.IsAdding())
        bar_->SetCaption(QStringLiteral("New record"));
    else
        bar_->SetCaption(position < 0 ? QStringLiteral("No records") : QStringLiteral("Record: %1").arg(position + 1));
}

}  // namespace quillform::dialogs
