#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "richtext/CellRow.h"
#include "richtext/Document.h"
#include "richtext/FormatFonts.h"
#include "richtext/LineBreaker.h"

namespace quillform::richtext {

/// One page of a document, laid out. Twips from the upper left corner of the sheet.
struct SheetPage {
    struct Text {
        float x = 0;
        float y = 0;  ///< upper edge of the font's line
        float width = 0;
        std::uint32_t font = 0;   ///< in PageFlow::Fonts
        std::uint32_t start = 0;  ///< in `characters`
        std::uint32_t length = 0;
        std::uint32_t line = 0;  ///< texts of a line share its number
        Rgb colour;
    };
    struct Box {
        float left = 0;
        float top = 0;
        float width = 0;
        float height = 0;
        Rgb colour;
    };

    Geometry geometry;
    std::vector<Box> boxes;  ///< below the texts
    std::vector<Text> texts;
    std::string characters;

    std::string_view CharactersOf(const Text& text) const {
        return std::string_view(characters).substr(text.start, text.length);
    }
    bool IsBlank() const { return texts.empty() && boxes.empty(); }
};

/// Lays a document out, page by page. The back colour of text fills the height of its line, tabs too but for those that
/// only lead to the first text of a line; white on the white sheet leaves no mark. A row that doesn't fit on the rest
/// of a page begins the next one; one that is higher than a page goes on there. Letters below an exact row height are
/// cut off. A last page without any mark is left out, but a document has one page at least.
class PageFlow {
public:
    /// Both must outlive the flow.
    PageFlow(const Document& document, TextMeasure& measure);
    PageFlow(const PageFlow&) = delete;
    PageFlow& operator=(const PageFlow&) = delete;

    /// Fills `page`, whose memory is used again, with the next page; false behind the last one.
    bool Next(SheetPage& page);
    /// Fonts of the pages so far; numbers don't change.
    const std::vector<PlacedFont>& Fonts() const { return fonts_.All(); }

private:
    bool IsAtEnd() const { return block_ == document_.blocks.size(); }
    void StartPage(SheetPage& page);
    bool EntersSection();
    /// Each gives false if the page has to end first.
    bool PlaceBlock(SheetPage& page);
    bool PlaceParagraph(SheetPage& page);
    bool PlaceRow(SheetPage& page);
    void EndBlock();
    void PlaceLine(const LineList& list, const Line& line, double left, double top, SheetPage& page);

    const Document& document_;
    FormatFonts fonts_;
    LineBreaker breaker_;

    std::size_t block_ = 0;
    std::size_t section_ = 0;
    bool isLaid_ = false;  // lines_ or row_ hold the current block
    LineList lines_;
    std::size_t nextLine_ = 0;
    CellRow row_;

    Geometry geometry_;  // of the page
    double y_ = 0;       // below the upper margin
    std::size_t pageCount_ = 0;
    std::uint32_t lineNumber_ = 0;
};

}  // namespace quillform::richtext
