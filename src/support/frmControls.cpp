#include "support/frmControls.h"

#include <QKeyEvent>

#include "support/TwipScale.h"

namespace quillform {

namespace {

/// Enter on a button that can't be the default is the default's to Qt: on "Exit" it would press "Save".
class EnterPresses : public QObject {
public:
    explicit EnterPresses(QPushButton& button) : QObject(&button), button_(button) { button.installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
        if (!key.isAutoRepeat()) button_.click();
        return true;
    }

private:
    QPushButton& button_;
};

}  // namespace

QPushButton* NewButton(const char* name, const char* caption) {
    constexpr double leastWidth = 1215;  // twips
    auto* const button = new QPushButton(QString::fromLatin1(caption));
    button->setObjectName(QString::fromLatin1(name));
    button->setMinimumWidth(TwipScale::ToPixels(leastWidth));
    button->setAutoDefault(false);
    new EnterPresses(*button);
    return button;
}

void TabToChecked(const QButtonGroup& group) {
    const QAbstractButton* const checked = group.checkedButton();
    const bool leads = checked != nullptr && checked->isEnabled();
    for (QAbstractButton* const option : group.buttons())
        option->setFocusPolicy(!leads || option == checked ? Qt::StrongFocus : Qt::ClickFocus);
}

}  // namespace quillform
