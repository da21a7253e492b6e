#pragma once

#include <QTreeWidget>
#include <functional>

class QLineEdit;

namespace quillform {

/// The tree of a catalog as forms show it: tables, and their rows below. Ready to be filled; its parent is the layout
/// that it is put into.
QTreeWidget* NewFieldTree(const char* accessibleName);
/// A line "find" that leaves only those rows in view whose text holds what is typed, and opens their tables. Down and
/// Enter go on in the tree, at the first of them.
QLineEdit* NewFieldSearch(QTreeWidget& tree);

/// Calls `click` for every click on a node, and for Enter and the space bar on the current one.
void OnNodeClick(QTreeWidget& tree, std::function<void(QTreeWidgetItem& node)> click);

}  // namespace quillform
