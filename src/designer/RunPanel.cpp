#include "designer/RunPanel.h"

#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "support/TwipScale.h"

namespace quillform::designer {

namespace {

using namespace std::chrono_literals;

constexpr auto yieldInterval = 10ms;  // a button feels alive, and the run loses nothing
constexpr int steps = 1000;           // of the bar; records may be more than an int counts
constexpr double panelWidth = 4800;
constexpr int tickHeight = 6;

QLabel* MakeLabel(int index, const char* text, Qt::Alignment alignment) {
    auto* const label = new QLabel(QString::fromLatin1(text));
    label->setObjectName(QStringLiteral("Lbl%1").arg(index));
    label->setAlignment(alignment);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);  // equal widths
    return label;
}

}  // namespace

RunPanel::RunPanel(QWidget& form) : QFrame(&form) {
    setObjectName(QStringLiteral("Picture1"));
    setAccessibleName(QStringLiteral("Progress of the report"));
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    setAutoFillBackground(true);
    Gauge1_ = new QProgressBar;
    Gauge1_->setObjectName(QStringLiteral("Gauge1"));
    Gauge1_->setAccessibleName(accessibleName());
    Gauge1_->setTextVisible(false);
    CanRptCmd_ = new QPushButton(QStringLiteral("Cancel Report"));
    CanRptCmd_->setObjectName(QStringLiteral("CanRptCmd"));
    connect(CanRptCmd_, &QPushButton::clicked, this, &RunPanel::CanRptCmd_Click);

    auto* const scale = new QHBoxLayout;  // each label under its tick
    scale->addWidget(MakeLabel(0, "0%", Qt::AlignLeft), 1);
    scale->addWidget(MakeLabel(1, "50%", Qt::AlignHCenter), 1);
    scale->addWidget(MakeLabel(2, "100%", Qt::AlignRight), 1);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(20, 16, 20, 14);
    rows->addWidget(Gauge1_);
    rows->addSpacing(tickHeight);
    rows->addLayout(scale);
    rows->addWidget(CanRptCmd_, 0, Qt::AlignHCenter);
    setFixedSize(TwipScale::ToPixels(panelWidth), sizeHint().height());
    form.installEventFilter(this);
    hide();
}

void RunPanel::Appear() {
    SetMaximum(0);
    PlaceInTheMiddle();
    show();
    raise();
    CanRptCmd_->setFocus();
}

void RunPanel::PlaceInTheMiddle() {
    move((parentWidget()->width() - width()) / 2, (parentWidget()->height() - height()) / 2);
}

bool RunPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) PlaceInTheMiddle();
    return QFrame::eventFilter(watched, event);
}

void RunPanel::SetMaximum(long long maximum) {
    maximum_ = std::max(0LL, maximum);
    Gauge1_->setRange(0, steps);
    Gauge1_->setValue(0);
}

void RunPanel::SetValue(long long value) {
    if (maximum_ == 0) return;
    const double share = static_cast<double>(value) / static_cast<double>(maximum_);
    Gauge1_->setValue(static_cast<int>(std::clamp(share, 0.0, 1.0) * steps));
}

/// The scale under the bar: a base line with ticks at its ends and in its middle.
void RunPanel::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect bar = Gauge1_->geometry();
    const int top = bar.bottom() + 3;
    painter.drawLine(bar.left(), top, bar.right(), top);
    for (const int x : {bar.left(), bar.center().x(), bar.right()}) painter.drawLine(x, top, x, top + tickHeight);
}

void RunUser::ShowProgress() {
    isCancelled_ = false;  // an Esc from before the run belongs to no report
    panel_.Appear();
    panel_.PaintForm();
    busy_.emplace();
}

void RunUser::HideProgress() {
    panel_.hide();
    panel_.PaintForm();
    if (!busy_) busy_.emplace();
}

bool RunUser::YieldAndIsCancelled() {
    busy_.reset();
    const auto now = std::chrono::steady_clock::now();
    if (now - lastYield_ >= yieldInterval) {
        QApplication::processEvents();
        lastYield_ = std::chrono::steady_clock::now();
    }
    return std::exchange(isCancelled_, false);
}

}  // namespace quillform::designer
