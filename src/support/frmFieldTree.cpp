#include "support/frmFieldTree.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidgetItemIterator>
#include <utility>

namespace quillform {

namespace {

/// Presses the current node of a tree by keys.
class NodeKeys : public QObject {
public:
    NodeKeys(QTreeWidget& tree, std::function<void(QTreeWidgetItem&)> click)
        : QObject(&tree), tree_(tree), click_(std::move(click)) {
        tree.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || tree_.currentItem() == nullptr) return false;
        const auto& key = *static_cast<QKeyEvent*>(event);
        if ((key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
        if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter && key.key() != Qt::Key_Space) return false;
        click_(*tree_.currentItem());
        return true;
    }

private:
    QTreeWidget& tree_;
    std::function<void(QTreeWidgetItem&)> click_;
};

/// The first row in view, or null.
QTreeWidgetItem* FirstMatch(QTreeWidget& tree) {
    const auto wanted = QTreeWidgetItemIterator::NoChildren | QTreeWidgetItemIterator::NotHidden;
    return *QTreeWidgetItemIterator(&tree, wanted);
}

/// Down and Enter lead from the search to what it found.
class SearchKeys : public QObject {
public:
    SearchKeys(QLineEdit& find, QTreeWidget& tree) : QObject(&find), find_(find), tree_(tree) {
        find.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Down) return false;
        if (!find_.text().isEmpty())
            if (QTreeWidgetItem* const found = FirstMatch(tree_)) tree_.setCurrentItem(found);
        tree_.setFocus();
        return true;
    }

private:
    QLineEdit& find_;
    QTreeWidget& tree_;
};

void ShowMatches(QTreeWidget& tree, const QString& wanted) {
    tree.setUpdatesEnabled(false);
    for (int i = 0; i < tree.topLevelItemCount(); ++i) {
        QTreeWidgetItem& table = *tree.topLevelItem(i);
        bool isShown = wanted.isEmpty();
        for (int j = 0; j < table.childCount(); ++j) {
            QTreeWidgetItem& row = *table.child(j);
            const bool isWanted = row.text(0).contains(wanted, Qt::CaseInsensitive);
            row.setHidden(!isWanted);
            isShown |= isWanted;
        }
        table.setHidden(!isShown);
        if (!wanted.isEmpty()) table.setExpanded(isShown);
    }
    tree.setUpdatesEnabled(true);
}

}  // namespace

QTreeWidget* NewFieldTree(const char* accessibleName) {
    auto* const tree = new QTreeWidget;
    tree->setObjectName(QStringLiteral("SSTree1"));
    tree->setAccessibleName(QString::fromLatin1(accessibleName));
    tree->setHeaderHidden(true);
    tree->setUniformRowHeights(true);
    tree->setExpandsOnDoubleClick(false);  // a click does it
    return tree;
}

QLineEdit* NewFieldSearch(QTreeWidget& tree) {
    auto* const find = new QLineEdit;
    find->setObjectName(QStringLiteral("find"));
    find->setPlaceholderText(QStringLiteral("Find a field"));
    find->setAccessibleName(find->placeholderText());
    find->setClearButtonEnabled(true);
    // Some dark desktops leave the ink for this at black.
    QPalette palette = find->palette();
    QColor ink = palette.color(QPalette::Text);
    ink.setAlphaF(0.5F);
    palette.setColor(QPalette::PlaceholderText, ink);
    find->setPalette(palette);
    QObject::connect(find, &QLineEdit::textChanged, &tree,
                     [&tree](const QString& wanted) { ShowMatches(tree, wanted); });
    new SearchKeys(*find, tree);
    return find;
}

void OnNodeClick(QTreeWidget& tree, std::function<void(QTreeWidgetItem& node)> click) {
    QObject::connect(&tree, &QTreeWidget::itemClicked, &tree, [click](QTreeWidgetItem* node) { click(*node); });
    new NodeKeys(tree, std::move(click));
}

}  // namespace quillform
