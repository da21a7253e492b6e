#include "desktop/ProgressPanel.h"

#include <QBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

#include "support/TwipScale.h"

namespace quillform {

namespace {

constexpr int steps = 1000;  // of the bar; records may be more than an int counts
constexpr double panelWidth = 5400;
constexpr double margin = 240;

QBoxLayout* MakeTicks() {
    auto* const row = new QHBoxLayout;
    for (const char* text : {"0%", "50%", "100%"}) {
        if (row->count() > 0) row->addStretch(1);
        row->addWidget(new QLabel(QString::fromLatin1(text)));
    }
    return row;
}

}  // namespace

ProgressPanel::ProgressPanel(QWidget* owner) : QDialog(owner) {
    setObjectName(QStringLiteral("Progress"));
    setWindowTitle(QStringLiteral("Quillform"));
    setWindowModality(Qt::ApplicationModal);
    Gauge1_ = new QProgressBar;
    Gauge1_->setObjectName(QStringLiteral("Gauge1"));
    Gauge1_->setAccessibleName(QStringLiteral("Progress of the report"));
    Gauge1_->setTextVisible(false);
    CanRptCmd_ = new QPushButton(QStringLiteral("&Cancel Report"));
    CanRptCmd_->setObjectName(QStringLiteral("CanRptCmd"));
    connect(CanRptCmd_, &QPushButton::clicked, this, &ProgressPanel::reject);

    auto* const rows = new QVBoxLayout(this);
    const int space = TwipScale::ToPixels(margin);
    rows->setContentsMargins(space, space, space, space);
    rows->addWidget(Gauge1_);
    rows->addLayout(MakeTicks());
    rows->addWidget(CanRptCmd_, 0, Qt::AlignHCenter);
    setFixedSize(TwipScale::ToPixels(panelWidth), sizeHint().height());
    SetMaximum(0);
}

void ProgressPanel::SetMaximum(long long maximum) {
    maximum_ = std::max(0LL, maximum);
    Gauge1_->setRange(0, maximum_ > 0 ? steps : 0);
}

void ProgressPanel::SetValue(long long value) {
    if (maximum_ == 0) return;
    const double share = static_cast<double>(value) / static_cast<double>(maximum_);
    Gauge1_->setValue(static_cast<int>(std::clamp(share, 0.0, 1.0) * steps));
}

void ProgressPanel::reject() {
    isCancelled_ = true;
    CanRptCmd_->setEnabled(false);
}

void ProgressPanel::showEvent(QShowEvent* event) {
    isCancelled_ = false;
    CanRptCmd_->setEnabled(true);
    QDialog::showEvent(event);
}

}  // namespace quillform
