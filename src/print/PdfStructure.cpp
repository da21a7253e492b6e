#include "print/PdfStructure.h"

#include <algorithm>

#include "print/PdfSyntax.h"

namespace quillform::print {

namespace {

std::string_view RowType(PageRole role) {
    switch (role) {
        case PageRole::SubTotal:
            return "SubTotal";
        case PageRole::GrandTotal:
            return "GrandTotal";
        case PageRole::Heading:
        case PageRole::Detail:
            break;
    }
    return "TR";
}

}  // namespace

PdfStructure::PdfStructure(PdfFile& file) : file_(file) {
    root_ = file_.Reserve();
    document_ = file_.Reserve();
    table_ = file_.Reserve();
}

void PdfStructure::BeginPage(int pageObject) {
    page_ = pageObject;
    body_ = 0;
    elements_.clear();
    rows_.clear();
}

std::string& PdfStructure::Begin(int object) { return file_.BeginObject(object, ObjectGroup::Structure); }

int PdfStructure::MarkContent(int element) {
    elements_.push_back(element);
    return static_cast<int>(elements_.size()) - 1;
}

int PdfStructure::AddHeadingLine() {
    const int element = file_.Reserve();
    const int mark = MarkContent(element);
    std::string& out = Begin(element);
    out += headingLines_.empty() ? "<</S/H1/P " : "<</S/P/P ";
    AppendReference(document_, out);
    out += "/Pg ";
    AppendReference(page_, out);
    out += "/K ";
    AppendInteger(mark, out);
    out += ">>";
    headingLines_.push_back(element);
    return mark;
}

void PdfStructure::BeginRow(PageRole role) {
    if (body_ == 0) body_ = file_.Reserve();
    row_ = file_.Reserve();
    rowRole_ = role;
    cells_.clear();
}

int PdfStructure::AddCell() {
    const int element = file_.Reserve();
    const int mark = MarkContent(element);
    cells_.push_back(element);
    std::string& out = Begin(element);
    out += "<</S/TD/P ";
    AppendReference(row_, out);
    out += "/Pg ";
    AppendReference(page_, out);
    out += "/K ";
    AppendInteger(mark, out);
    out += ">>";
    return mark;
}

void PdfStructure::AddBlankCell() {
    const int element = file_.Reserve();
    cells_.push_back(element);
    std::string& out = Begin(element);
    out += "<</S/TD/P ";
    AppendReference(row_, out);
    out += ">>";
}

void PdfStructure::AppendReferences(const std::vector<int>& objects, std::string& out) const {
    out += '[';
    for (const int object : objects) {
        AppendReference(object, out);
        out += ' ';
    }
    if (!objects.empty()) out.pop_back();
    out += ']';
}

void PdfStructure::EndRow() {
    std::string& out = Begin(row_);
    out += "<</S/";
    out += RowType(rowRole_);
    out += "/P ";
    AppendReference(body_, out);
    out += "/K";
    AppendReferences(cells_, out);
    out += ">>";
    rows_.push_back(row_);
}

void PdfStructure::EndPage() {
    if (body_ != 0) {
        std::string& out = Begin(body_);
        out += "<</S/TBody/P ";
        AppendReference(table_, out);
        out += "/K";
        AppendReferences(rows_, out);
        out += ">>";
        bodies_.push_back(body_);
    }
    const int parents = file_.Reserve();
    AppendReferences(elements_, Begin(parents));
    pageParents_.push_back(parents);
}

// A number tree of two levels: readers look a page up without reading all of it.
int PdfStructure::WriteParentTree() {
    constexpr std::size_t kLeafPages = 256;
    const int tree = file_.Reserve();
    std::vector<int> leaves;
    for (std::size_t first = 0; first < pageParents_.size(); first += kLeafPages) {
        const std::size_t end = std::min(first + kLeafPages, pageParents_.size());
        leaves.push_back(file_.Reserve());
        std::string& out = Begin(leaves.back());
        out += "<</Limits[";
        AppendInteger(static_cast<std::int64_t>(first), out);
        out += ' ';
        AppendInteger(static_cast<std::int64_t>(end - 1), out);
        out += "]/Nums[";
        for (std::size_t page = first; page < end; ++page) {
            AppendInteger(static_cast<std::int64_t>(page), out);
            out += ' ';
            AppendReference(pageParents_[page], out);
            out += ' ';
        }
        out.back() = ']';
        out += ">>";
    }
    std::string& out = Begin(tree);
    out += "<</Kids";
    AppendReferences(leaves, out);
    out += ">>";
    return tree;
}

int PdfStructure::Finish() {
    std::string& table = Begin(table_);
    table += "<</S/Table/P ";
    AppendReference(document_, table);
    table += "/K";
    AppendReferences(bodies_, table);
    table += ">>";

    std::vector<int> children = headingLines_;
    if (!bodies_.empty()) children.push_back(table_);
    std::string& document = Begin(document_);
    document += "<</S/Document/P ";
    AppendReference(root_, document);
    document += "/K";
    AppendReferences(children, document);
    document += ">>";

    const int parentTree = WriteParentTree();
    std::string& root = Begin(root_);
    root += "<</Type/StructTreeRoot/RoleMap<</SubTotal/TR/GrandTotal/TR>>/K ";
    AppendReference(document_, root);
    root += "/ParentTree ";
    AppendReference(parentTree, root);
    root += "/ParentTreeNextKey ";
    AppendInteger(static_cast<std::int64_t>(pageParents_.size()), root);
    root += ">>";
    return root_;
}

}  // namespace quillform::print
