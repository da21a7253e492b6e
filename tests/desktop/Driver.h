#pragma once

#include <QApplication>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <functional>
#include <string>

namespace quillform {

/// Does something as soon as a modal window waits for it: a step runs inside the window's own event loop. Steps that
/// weren't reached when the driver goes are a failed test, and so is a window that no step closes.
class Driver {
public:
    using Step = std::function<void(QWidget& window)>;

    explicit Driver(std::vector<Step> steps);
    ~Driver();
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    std::size_t Done() const { return next_; }

private:
    void LookSoon();
    void Look();
    void EndHang();

    std::vector<Step> steps_;
    std::size_t next_ = 0;
    QWidget* busy_ = nullptr;  // the window that a step is at work in: it isn't ready for the next one
    std::size_t looked_ = 0;   // what the watch saw when it looked last
    QTimer watch_;
};

/// A control of a window by its type and given name; the test fails, and ends, where there is none.
template <typename Control>
Control& Named(QWidget& window, const char* name) {
    auto* const found = window.findChild<Control*>(QString::fromLatin1(name));
    if (found == nullptr) throw std::runtime_error(std::string("no control ") + name);
    return *found;
}

void Click(QWidget& control);
/// A node of a tree by its text, however deep; the test fails, and ends, where there is none.
QTreeWidgetItem& NodeOf(QTreeWidget& tree, const char* text);
/// Clicks a node, after opening the tree down to it.
void ClickNode(QTreeWidget& tree, QTreeWidgetItem& node);
void ClickRow(QListWidget& list, int row);
void Press(QWidget& control, Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);
/// Into whatever has the focus, as a keyboard does.
void Press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);
void Type(const char* text);

}  // namespace quillform
