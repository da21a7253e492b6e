#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/TextMeasure.h"

namespace quillform {

/// What a piece of a page is, for readers of the document (tags, outline); drawing doesn't depend on it.
enum class PageRole { Heading, Detail, SubTotal, GrandTotal };

/// Which upper left corner positions count from.
enum class PageOrigin {
    PrintableArea,  ///< what a printer can reach: lines and pages break as on paper
    Sheet,          ///< the paper itself, for sheets whose places are given by their maker, such as labels
};

/// The one page surface of a run: placed texts and filled boxes. Positions and sizes in twips, from the upper left
/// corner of the page's origin. Colours are numbers 0 to 15 of QBColor. A box under a text is drawn below it, whatever
/// order the calls came in.
class PrintTarget : public TextMeasure {
public:
    /// Set before the first page has anything on it.
    virtual void SetTitle(std::string_view title) = 0;
    virtual void SetOrientation(bool landscape) = 0;
    /// The printer's paper number; an unknown number means Letter.
    virtual void SetPaperSize(int paperNumber) = 0;
    /// The printable area unless this is called. ScaleHeight and ScaleWidth are those of what is chosen.
    virtual void SetOrigin(PageOrigin origin) = 0;

    virtual void SetFont(FontId font) = 0;
    virtual void SetForeColor(int colour) = 0;
    virtual double CurrentX() const = 0;
    virtual double CurrentY() const = 0;
    virtual void SetCurrentX(double x) = 0;
    virtual void SetCurrentY(double y) = 0;
    /// Draws the text at the current position, then moves CurrentY down one line of the font and sets CurrentX to 0.
    virtual void Print(std::string_view text) = 0;
    /// A blank line.
    virtual void Print() = 0;
    virtual void FillBox(double x1, double y1, double x2, double y2, int colour) = 0;

    using TextMeasure::TextHeight;
    using TextMeasure::TextWidth;
    double TextWidth(std::string_view text) const { return TextWidth(CurrentFont(), text); }
    double TextHeight() const { return TextHeight(CurrentFont()); }
    virtual FontId CurrentFont() const = 0;

    /// Height and width of the page as far as the origin's corner counts: of the printable area or of the sheet.
    virtual double ScaleHeight() const = 0;
    virtual double ScaleWidth() const = 0;

    /// Ends the page; CurrentX and CurrentY start at 0 on the next one.
    virtual void NewPage() = 0;
    virtual void EndDoc() = 0;

    /// Names of the fonts that count as present: installed families and the originals whose metric twins are.
    virtual const std::vector<std::string>& Fonts() const = 0;

    // For the reader of the document.
    virtual void SetRole(PageRole role) = 0;
    /// A new row of the table begins: what is printed until the next call belongs together.
    virtual void BeginRow() = 0;
    /// An entry of the document's outline at the current position; level 1 primary group, 2 secondary group.
    virtual void AddOutlineEntry(int level, std::string_view title) = 0;
};

}  // namespace quillform
