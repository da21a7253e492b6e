#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/PrintTarget.h"
#include "print/PdfFile.h"

namespace quillform::print {

/// The structure tree of a document, which screen readers and exports follow:
///
///     Document
///         H1, P ...            heading of the first page
///         Table
///             TBody            one per page
///                 TR ...       one per row; SubTotal and GrandTotal are rows too
///                     TD ...   one per item, also for the blank ones; far into a long document one for the row
///
/// Headings of later pages only repeat the first and stand outside the tree. Elements are written as rows and pages
/// end; what stays in memory is two object numbers a page.
class PdfStructure {
public:
    explicit PdfStructure(PdfFile& file);

    void BeginPage(int pageObject);
    /// A line of the first page's heading. Gives the number by which the content is marked.
    int AddHeadingLine();
    void BeginRow(PageRole role);
    /// A cell of the row; gives its number of marked content.
    int AddCell();
    void AddBlankCell();
    void EndRow();
    void EndPage();
    /// Writes what is left and gives the object of the root.
    int Finish();

private:
    std::string& Begin(int object);
    int MarkContent(int element);
    void AppendReferences(const std::vector<int>& objects, std::string& out) const;
    int WriteParentTree();

    PdfFile& file_;
    int root_ = 0;
    int document_ = 0;
    int table_ = 0;
    std::vector<int> headingLines_;
    std::vector<int> bodies_;       // TBody of each page that has rows
    std::vector<int> pageParents_;  // by page: array of the elements of its marked contents

    int page_ = 0;
    int body_ = 0;
    std::vector<int> elements_;  // of the page, by number of marked content
    std::vector<int> rows_;      // of the page
    int row_ = 0;
    PageRole rowRole_ = PageRole::Detail;
    std::vector<int> cells_;  // of the row
};

}  // namespace quillform::print
