#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "print/FontBook.h"
#include "print/Page.h"
#include "print/PdfFile.h"
#include "print/PdfOutline.h"
#include "print/PdfPageComposer.h"
#include "print/PdfStructure.h"
#include "print/PdfTarget.h"

namespace quillform::print {

/// The part of every sheet that printers leave blank, on each of its edges, in twips. A PDF could use all of it, but a
/// layout begins at column 0: from the sheet's own edge its first letters would lie where no printer prints and no
/// eye expects them. A quarter of an inch is what common printers keep clear, so lines and pages break as on paper.
inline constexpr double kUnprintableEdge = 360;

struct Sheet {
    double width = 12240;  ///< twips
    double height = 15840;
    double edge = kUnprintableEdge;  ///< from the sheet's corner to the corner that positions count from
    friend bool operator==(const Sheet&, const Sheet&) = default;
};

/// One PDF document: pages as they come, then everything that holds them together.
class PdfDocument {
public:
    PdfDocument(const std::filesystem::path& target, FontBook& fonts);

    void AddPage(const Page& page, const Sheet& sheet);
    /// On the page that will be added next; `y` in twips from the upper edge that positions count from.
    void AddOutlineEntry(int level, std::string_view title, double y, const Sheet& sheet);
    int PageCount() const { return pageCount_; }
    /// Whether something points at the page to come, so that it can't be left out.
    bool HasBegunPage() const { return page_ != 0; }
    void Finish(std::string_view title, const PdfSettings& settings);

private:
    void BeginPage();
    void WriteBranch();
    int WritePages();
    int WriteResources();
    int WriteMetadata(std::string_view title, const PdfSettings& settings);
    int WriteInformation(std::string_view title, const PdfSettings& settings);
    int WriteCatalog(int pages, int metadata, const PdfSettings& settings);

    FontBook& fonts_;
    PdfFile file_;
    PdfStructure structure_;
    PdfOutline outline_;
    PdfPageComposer composer_;

    int pagesRoot_ = 0;
    int resources_ = 0;
    Sheet usualSheet_;  // of the first page; others say theirs
    int pageCount_ = 0;
    int page_ = 0;    // object of the page to come, 0 until somebody needs it
    int branch_ = 0;  // node of the page tree that is being filled
    std::vector<int> branchPages_;
    std::vector<std::pair<int, int>> branches_;  // object and number of pages
};

}  // namespace quillform::print
