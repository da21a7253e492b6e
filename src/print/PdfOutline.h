#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "print/PdfFile.h"

namespace quillform::print {

/// The outline of a document, all entries closed but the first level. An entry is written when the next of its level or
/// a higher one begins, so only one per level is kept.
class PdfOutline {
public:
    explicit PdfOutline(PdfFile& file) : file_(file) {}

    /// `level` from 1; a level that skips one is taken as the next below the open entry. `top` in points from the
    /// sheet's lower edge.
    void Add(int level, std::string_view title, int pageObject, double top);
    /// Writes what is left and gives the object of the root, or 0 if the outline is empty.
    int Finish();

private:
    struct Entry {
        int object = 0;
        std::string title;
        int page = 0;
        double top = 0;
        int previous = 0;
        int firstChild = 0;
        int lastChild = 0;
        int children = 0;
    };

    void Write(const Entry& entry, int parent, int next);
    /// Writes the open entries from the deepest up to the level, whose entry has `next` behind it.
    void CloseDownTo(std::size_t level, int next);

    PdfFile& file_;
    std::vector<Entry> open_;  // [0] is the root
};

}  // namespace quillform::print
