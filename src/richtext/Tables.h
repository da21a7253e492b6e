#pragma once

#include <cstddef>

#include "richtext/Document.h"

namespace quillform::richtext {

/// The rows of tables while a document is put together. A row's paragraphs are those that were added to the document
/// since the row before it, or since a paragraph outside of tables, ended.
class RowBuilder {
public:
    explicit RowBuilder(Document& document) : document_(document) {}

    void StartDefinition();
    RowFormat& Definition() { return definition_; }
    bool IsDefined() const { return isDefined_; }
    /// A cell without a row's definition makes one of its own.
    void EnsureDefined() { isDefined_ = true; }

    /// Whether paragraphs wait for the end of their cell.
    bool HasOpenCell() const { return document_.paragraphs.size() > cellStart_; }
    bool IsOpen() const { return HasOpenCell() || document_.cells.size() > firstCell_; }
    /// Whether any letter stands in the open row.
    bool HasText() const;

    /// Beyond the most cells that a row may have, what follows stays in the last one.
    void CloseCell();
    /// Nothing if no row is open.
    void CloseRow();
    /// The page ends with the open row, or doesn't.
    void SetPageBreakBehind(bool breaksPage) { breaksPage_ = breaksPage; }
    /// The latest paragraph stands outside of tables.
    void PassOver() { rowStart_ = cellStart_ = document_.paragraphs.size(); }

private:
    RowFormat FormatFor(std::size_t cellCount) const;

    Document& document_;
    RowFormat definition_;
    bool isDefined_ = false;
    bool breaksPage_ = false;
    std::size_t firstCell_ = 0;  // of the open row
    std::size_t rowStart_ = 0;   // its first paragraph
    std::size_t cellStart_ = 0;  // first paragraph of the open cell
};

}  // namespace quillform::richtext
