#include "desktop/Driver.h"

#include <gtest/gtest.h>

#include <utility>

namespace quillform {

namespace {

constexpr auto patience = std::chrono::seconds(5);

}  // namespace

Driver::Driver(std::vector<Step> steps) : steps_(std::move(steps)) {
    LookSoon();
    QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { EndHang(); });
    watch_.start(patience);
}

Driver::~Driver() { EXPECT_EQ(next_, steps_.size()) << "steps that no window waited for"; }

/// A timer doesn't fire inside its own slot, and a step may open a window that the next step waits for; so each look
/// has a timer of its own.
void Driver::LookSoon() {
    QTimer::singleShot(1, &watch_, [this] { Look(); });
}

void Driver::EndHang() {
    if (next_ != looked_) {
        looked_ = next_;
        return;
    }
    ADD_FAILURE() << "a window waits for ever after step " << next_ << " of " << steps_.size();
    QCoreApplication::exit();  // ends every loop there is
}

void Driver::Look() {
    if (next_ == steps_.size()) return;
    QWidget* const window = QApplication::activeModalWidget();
    if (window == nullptr || !window->isVisible() || window == busy_) return LookSoon();
    if (QApplication::activeWindow() != window) {
        window->activateWindow();
        return LookSoon();
    }
    const Step& step = steps_[next_++];
    LookSoon();
    QWidget* const before = std::exchange(busy_, window);
    step(*window);
    busy_ = before;
}

void Click(QWidget& control) { QTest::mouseClick(&control, Qt::LeftButton); }

QTreeWidgetItem& NodeOf(QTreeWidget& tree, const char* text) {
    const auto found = tree.findItems(QString::fromUtf8(text), Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty()) throw std::runtime_error(std::string("no node ") + text);
    return *found.front();
}

void ClickNode(QTreeWidget& tree, QTreeWidgetItem& node) {
    tree.scrollToItem(&node);  // opens what is above
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(&node).center());
}

void ClickRow(QListWidget& list, int row) {
    list.scrollToItem(list.item(row));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(row)).center());
}

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
