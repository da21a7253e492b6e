#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "print/FontBook.h"
#include "print/Page.h"
#include "print/PdfStructure.h"

namespace quillform::print {

/// Turns a page into the operators of a PDF content stream: boxes first, then texts, then the lines under them. Lengths
/// in the stream are whole twips from the corner that positions count from; one transformation at its head turns
/// them into points.
class PdfPageComposer {
public:
    PdfPageComposer(FontBook& fonts, PdfStructure& structure);

    /// The stream is valid until the next call. `pageNumber` from 1. `originX` and `originY` in points: where that
    /// corner lies, from the sheet's lower left corner.
    std::string_view Compose(const Page& page, int pageNumber, double originX, double originY);

private:
    enum class Tagging { Outside, HeadingLine, Cells, WholeRow, Artifact };

    void DrawBoxes(const Page& page);
    void DrawTexts(const Page& page);
    void DrawUnderlines();
    void EnterRow(PageRole role);
    void LeaveRow();
    void BeginMarked(std::string_view type, int mark);
    void DrawCell(const Page& page, const Page::Text& text);
    void DrawText(const Page& page, const Page::Text& text);
    void MoveTo(long x, long y);
    void UseFace(std::uint16_t face, double size);
    void UseColour(int colour);
    void ShowCharacters(const FontBook::Font& font, std::string_view characters);
    /// Writes the characters from `at` on that the face draws; gives the place of the first it doesn't.
    std::size_t AppendCodes(int typeface, std::uint16_t face, std::string_view characters, std::size_t at);
    void AppendSeparator(int typeface, std::uint16_t face);
    void NoteUnderline(const Page::Text& text, std::string_view characters);

    FontBook& fonts_;
    PdfStructure& structure_;
    std::string out_;
    std::string underlines_;
    int underlineColour_ = -1;
    std::array<std::string, 16> colours_;  // operators

    // State of the stream while texts are drawn.
    int pageNumber_ = 1;
    long x_ = 0;
    long y_ = 0;
    int face_ = -1;
    double size_ = 0;
    int colour_ = -1;
    Tagging tagging_ = Tagging::Outside;
};

}  // namespace quillform::print
