#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "richtext/Document.h"
#include "richtext/LineBreaker.h"

namespace quillform::richtext {

/// A table row while it is laid out: the lines of each of its cells, and how many of them have been placed.
class CellRow {
public:
    /// A line of a cell, at `left` and `top` from the corner of the text area.
    using LinePlacer = std::function<void(const LineList& list, const Line& line, double left, double top)>;

    void Lay(const Document& document, const Row& row, LineBreaker& breaker);
    /// What the rest of the row takes. An exact height doesn't ask what the cells need.
    double Height() const;
    /// Places the lines that fit between `top` and `bottom`, one of each cell at least, and gives the height that this
    /// took.
    double Place(double top, double bottom, const LinePlacer& place);
    bool IsDone() const { return isDone_; }

private:
    struct LaidCell {
        double left = 0;
        LineList list;
        std::size_t next = 0;
    };

    int height_ = 0;  // as RowFormat has it
    bool isDone_ = false;
    std::vector<LaidCell> cells_;  // more than cellCount_ after a row of more cells, for their memory
    std::size_t cellCount_ = 0;
};

}  // namespace quillform::richtext
