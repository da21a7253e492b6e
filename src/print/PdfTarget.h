#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/PrintTarget.h"

namespace quillform::print {

struct PdfSettings {
    std::string title;  ///< document title; empty: the target's file name
    std::string language = "en-US";
    double created = 0;  ///< local date and time as a serial, for the document's dates
};

/// A print target that writes a PDF file. Pages leave for the file as they end, so memory doesn't grow with their
/// number beyond a few bytes a page. The file appears at EndDoc, whole; without EndDoc nothing is left. PathNotFound,
/// PermissionDenied, DiskFull as OutputFile. ObjectDoesNotExist if no font is installed that could be
/// embedded.
///
/// Sheet: the printable area leaves a quarter of an inch (360 twips) on each edge, as printers do; what a layout places
/// beyond it still shows as far as the sheet goes. With the sheet as origin nothing is taken off. Landscape exchanges
/// width and height. Orientation and paper hold from the page on that is open.
///
/// Fonts: TrueType and OpenType faces found by fontconfig and embedded, cut down to what was used. Families that are
/// missing fall to those of the same advances (Times New Roman, Arial, Courier New and their older names), then to what
/// fontconfig gives. A character that the font lacks is drawn from another that has it. The height of a line is ascent
/// and descent of the font's cell, without line gap. Control characters are drawn as blanks. Text runs from left to
/// right, one glyph a character: scripts that join their letters or run to the left are readable, not set as a book
/// would.
///
/// Readers get a tagged document with an outline; the same calls give the same bytes.
class PdfTarget : public PrintTarget {
public:
    /// What was replaced, one sentence per font family, for the user ("Times New Roman" is drawn with "Liberation
    /// Serif").
    virtual std::vector<std::string> FontSubstitutions() const = 0;
    virtual int PageCount() const = 0;
    /// Characters drawn so far that no installed font has: they show as empty boxes.
    virtual std::size_t MissingCharacters() const { return 0; }
};
std::unique_ptr<PdfTarget> MakePdfTarget(const std::filesystem::path& file, const PdfSettings& settings);

/// The text measurer alone, for loaded item sizes and rich text; same fonts and advances as every target.
std::unique_ptr<TextMeasure> MakeTextMeasure();

/// Width and height in twips of a paper number in portrait; Letter for unknown numbers.
struct PaperSize {
    double widthTwips = 12240;
    double heightTwips = 15840;
};
PaperSize PaperSizeOf(int number);

}  // namespace quillform::print
