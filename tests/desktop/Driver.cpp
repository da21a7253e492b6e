#include "desktop/Driver.h"

#include <gtest/gtest.h>

namespace quillform {

Driver::Driver(std::vector<Step> steps) : steps_(std::move(steps)) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start(0);
}

Driver::~Driver() { EXPECT_EQ(next_, steps_.size()) << "steps that no window waited for"; }

void Driver::Look() {
    QWidget* const window = QApplication::activeModalWidget();
    if (isBusy_ || window == nullptr || !window->isVisible() || next_ == steps_.size()) return;
    isBusy_ = true;
    if (!window->isActiveWindow()) {
        window->activateWindow();
        (void)QTest::qWaitForWindowActive(window);
    }
    isBusy_ = false;  // a step may open a window that the next step waits for
    steps_[next_++](*window);
}

void Click(QWidget& control) { QTest::mouseClick(&control, Qt::LeftButton); }

void Press(QWidget& control, Qt::Key key, Qt::KeyboardModifiers held) { QTest::keyClick(&control, key, held); }

void Press(Qt::Key key, Qt::KeyboardModifiers held) {
    QWidget* const window = QApplication::activeWindow();
    QWidget* const focused = QApplication::focusWidget();
    if (window == nullptr) throw std::runtime_error("no window has the keyboard");
    QTest::keyClick(focused != nullptr ? focused : window, key, held);
}

void Type(const char* text) {
    // Key codes serve for no more than ASCII; what is typed is the text of the event anyway.
    for (const QChar letter : QString::fromUtf8(text)) {
        const Qt::Key key = letter.unicode() < 128 ? static_cast<Qt::Key>(letter.toUpper().unicode()) : Qt::Key_unknown;
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), key, letter, Qt::NoModifier);
    }
}

}  // namespace quillform
