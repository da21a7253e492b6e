#include "print/PdfOutline.h"

#include <algorithm>

#include "print/PdfSyntax.h"

namespace quillform::print {

void PdfOutline::Add(int level, std::string_view title, int pageObject, double top) {
    if (open_.empty()) {
        open_.emplace_back();
        open_.front().object = file_.Reserve();
    }
    const std::size_t depth = std::clamp<std::size_t>(static_cast<std::size_t>(std::max(level, 1)), 1, open_.size());
    Entry entry;
    entry.object = file_.Reserve();
    entry.title = title;
    entry.page = pageObject;
    entry.top = top;
    if (depth < open_.size()) {
        entry.previous = open_[depth].object;
        CloseDownTo(depth, entry.object);
    }
    Entry& parent = open_[depth - 1];
    if (parent.firstChild == 0) parent.firstChild = entry.object;
    parent.lastChild = entry.object;
    ++parent.children;
    open_.push_back(std::move(entry));
}

void PdfOutline::CloseDownTo(std::size_t level, int next) {
    while (open_.size() > level) {
        const bool isLast = open_.size() > level + 1;
        Write(open_.back(), open_[open_.size() - 2].object, isLast ? 0 : next);
        open_.pop_back();
    }
}

void PdfOutline::Write(const Entry& entry, int parent, int next) {
    std::string& out = file_.BeginObject(entry.object);
    out += "<</Title";
    AppendTextString(entry.title, out);
    out += "/Parent ";
    AppendReference(parent, out);
    const auto link = [&out](std::string_view key, int object) {
        if (object == 0) return;
        out += key;
        AppendReference(object, out);
    };
    link("/Prev ", entry.previous);
    link("/Next ", next);
    link("/First ", entry.firstChild);
    link("/Last ", entry.lastChild);
    if (entry.children != 0) {
        out += "/Count ";
        AppendInteger(-entry.children, out);  // negative: closed
    }
    out += "/Dest[";
    AppendReference(entry.page, out);
    out += "/XYZ null ";
    AppendDecimal(entry.top, out);
    out += " null]>>";
}

int PdfOutline::Finish() {
    if (open_.empty()) return 0;
    CloseDownTo(1, 0);
    const Entry& root = open_.front();
    std::string& out = file_.BeginObject(root.object);
    out += "<</Type/Outlines/First ";
    AppendReference(root.firstChild, out);
    out += "/Last ";
    AppendReference(root.lastChild, out);
    out += "/Count ";
    AppendInteger(root.children, out);
    out += ">>";
    return root.object;
}

}  // namespace quillform::print
