#include "support/frmKeyFilters.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QTimer>
#include <algorithm>

#include "support/KeyFilters.h"

namespace quillform {

namespace {

/// The character that a key types, Enter as 13; nothing for keys that type none and for shortcuts.
std::optional<int> KeyAsciiOf(const QKeyEvent& key) {
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) return 13;
    const QString text = key.text();
    if (text.isEmpty() || !text.front().isPrint()) return std::nullopt;
    // Ctrl and Alt together are AltGr on some keyboards, and type.
    const Qt::KeyboardModifiers held = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (held != Qt::NoModifier && held != (Qt::ControlModifier | Qt::AltModifier)) return std::nullopt;
    return text.front().unicode();
}

/// Hands the characters that are typed into a box to a filter, before the box gets them.
class TypedKeys : public QObject {
public:
    using Filter = FilteredKey (*)(int keyAscii);
    TypedKeys(QLineEdit& box, Filter filter) : QObject(&box), filter_(filter) { box.installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::KeyPress) {
            const std::optional<int> typed = KeyAsciiOf(*static_cast<QKeyEvent*>(event));
            return typed && IsDropped(*typed);
        }
        if (event->type() == QEvent::InputMethod) {
            const QString text = static_cast<QInputMethodEvent*>(event)->commitString();
            return std::any_of(text.begin(), text.end(), [this](QChar typed) { return IsDropped(typed.unicode()); });
        }
        return false;
    }

private:
    bool IsDropped(int keyAscii) const {
        const FilteredKey key = filter_(keyAscii);
        if (key.beeps) QApplication::beep();
        return key.keyAscii == 0;
    }

    Filter filter_;
};

/// Selects the text of its box whenever the box gets the focus.
class SelectOnFocus : public QObject {
public:
    explicit SelectOnFocus(QLineEdit& box) : QObject(&box), box_(box) { box.installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        // A click moves the cursor after the focus came, so the selection waits until the event is through.
        if (event->type() == QEvent::FocusIn) QTimer::singleShot(0, this, [this] { SelectAllText(&box_); });
        return false;
    }

private:
    QLineEdit& box_;
};

}  // namespace

void SelectAllText(QWidget* control) {
    auto* const box = qobject_cast<QLineEdit*>(control);
    if (box == nullptr) return;
    const QString trimmed = box->text().trimmed();
    if (trimmed != box->text()) box->setText(trimmed);
    box->selectAll();
}

std::optional<FocusStep> FocusStepOf(const QKeyEvent& key) {
    if ((key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return std::nullopt;
    switch (key.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Down:
            return FocusStep::Next;
        case Qt::Key_Up:
            return FocusStep::Previous;
        default:
            return std::nullopt;
    }
}

void FilterNumberKeys(QLineEdit& box) {
    new TypedKeys(box, [](int keyAscii) { return NumberKeyFilter(keyAscii); });
    new SelectOnFocus(box);
}

void FilterEnterKey(QLineEdit& box) {
    new TypedKeys(box, [](int keyAscii) { return FilteredKey{NoEnterKey(keyAscii), false}; });
}

}  // namespace quillform
