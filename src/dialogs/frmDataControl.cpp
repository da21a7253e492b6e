#include "dialogs/frmDataControl.h"

#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <QShortcut>
#include <QToolButton>

#include "dialogs/BoundRecords.h"
#include "support/frmInkIcon.h"

// Outside of any namespace, as Qt asks.
static void LoadPictures() { Q_INIT_RESOURCE(dataControl); }

namespace quillform::dialogs {

namespace {

struct Move {
    const char* name;
    const char* text;
    Qt::Key key;
    Qt::KeyboardModifier held;
    void (*move)(BoundRecords& records);
};

constexpr Move moves[] = {
    {"first", "First record", Qt::Key_PageUp, Qt::ControlModifier, [](BoundRecords& records) { records.MoveFirst(); }},
    {"previous", "Previous record", Qt::Key_PageUp, Qt::NoModifier,
     [](BoundRecords& records) { records.MovePrevious(); }},
    {"next", "Next record", Qt::Key_PageDown, Qt::NoModifier, [](BoundRecords& records) { records.MoveNext(); }},
    {"last", "Last record", Qt::Key_PageDown, Qt::ControlModifier, [](BoundRecords& records) { records.MoveLast(); }},
};
constexpr std::size_t buttonsBeforeCaption = 2;

QKeySequence KeyOf(const Move& move) { return {move.held | move.key}; }

QToolButton* NewMoveButton(const Move& move) {
    auto* const button = new QToolButton;
    button->setObjectName(QString::fromLatin1(move.name));
    const QKeySequence key = KeyOf(move);
    button->setAccessibleName(QString::fromLatin1(move.text));
    button->setToolTip(QStringLiteral("%1 (%2)").arg(button->accessibleName(), key.toString(QKeySequence::NativeText)));
    button->setFocusPolicy(Qt::TabFocus);  // a click leaves the keyboard in the box that it was in
    return button;
}

}  // namespace

frmDataControl::frmDataControl(const char* name, BoundRecords& records, QWidget* parent)
    : QWidget(parent), records_(records), caption_(new QLabel) {
    LoadPictures();
    setObjectName(QString::fromLatin1(name));
    caption_->setObjectName(QStringLiteral("caption"));
    caption_->setFrameStyle(QFrame::StyledPanel);
    caption_->setAlignment(Qt::AlignCenter);
    caption_->setTextFormat(Qt::PlainText);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        if (i == buttonsBeforeCaption) row->addWidget(caption_, 1);
        buttons_[i] = NewMoveButton(moves[i]);
        row->addWidget(buttons_[i]);
        connect(buttons_[i], &QToolButton::clicked, this, [this, i] { moves[i].move(records_); });
        // At once, also while the key is held down; a button's own shortcut first shows it pressed.
        new QShortcut(KeyOf(moves[i]), this, buttons_[i], &QToolButton::click);
    }
    ShowInk();
    Follow();
}

void frmDataControl::ShowInk() {
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        buttons_[i]->setIcon(
            InkIcon(QStringLiteral(":/dialogs/%1.svg").arg(QString::fromLatin1(moves[i].name)), palette()));
}

void frmDataControl::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && buttons_.back() != nullptr) ShowInk();
}

void frmDataControl::SetCaption(const QString& caption) { caption_->setText(caption); }

void frmDataControl::Follow() {
    for (QToolButton* const button : buttons_) button->setEnabled(records_.HasRows());
}

}  // namespace quillform::dialogs
