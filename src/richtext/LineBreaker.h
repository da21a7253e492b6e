#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "richtext/Document.h"
#include "richtext/FormatFonts.h"

namespace quillform::richtext {

/// A stretch of text of one format on a line. Twips from the left edge of the text area.
struct Piece {
    double x = 0;
    double width = 0;
    std::uint32_t format = 0;
    std::uint32_t start = 0;   ///< in the document's text
    std::uint32_t length = 0;  ///< 0 for a tab that shows its back colour
};

struct Line {
    std::size_t firstPiece = 0;
    std::size_t pieceCount = 0;
    double height = 0;    ///< with the space around it
    double baseline = 0;  ///< from the line's upper edge
    double ascent = 0;    ///< of its tallest letters
    double descent = 0;   ///< of its deepest letters
};

/// Pieces and lines of one or more paragraphs.
struct LineList {
    std::vector<Piece> pieces;
    std::vector<Line> lines;

    void Clear() {
        pieces.clear();
        lines.clear();
    }
};

/// Breaks paragraphs into lines. A line breaks behind blanks and hyphens, and within a word that is wider than the
/// line; blanks at its end may stand beyond the margin.
/// A line is as high as its tallest letters; blanks at its end, and its own end, count where there is nothing else. A
/// tab goes to the next stop of the paragraph behind it, then to the next multiple of the document's default distance;
/// one that leads to the margin or beyond begins a new line.
class LineBreaker {
public:
    LineBreaker(const Document& document, FormatFonts& fonts) : document_(document), fonts_(fonts) {}

    /// Appends the lines of a paragraph in a text area of the given width; at least one.
    void Break(const Paragraph& paragraph, double width, LineList& out);

private:
    void TakeRun(const Run& run);
    void TakeWordPart(const Run& run, std::size_t from, std::size_t to);
    void EndWord();
    void SplitWord();
    void TakeBlanks(const Run& run, std::size_t from, std::size_t to);
    void TakeTab(std::uint32_t format);
    bool HasRoomBehind(TabStop stop) const;
    void ShadeTab(std::uint32_t format, double from);
    TabStop NextStop() const;
    void Place(const Piece& piece);
    void RaiseLine(std::uint32_t format);
    void RaiseEmptyLine(std::uint32_t format);
    /// Where the pen is once `width` more twips have been written.
    double PenBehind(double width) const;
    bool Fits(double width) const;
    void EndSegment();
    void StartLine(double indent);
    void EndLine();
    void AlignLine();
    void SetHeight(Line& line) const;

    const Document& document_;
    FormatFonts& fonts_;

    // The paragraph
    const ParagraphFormat* format_ = nullptr;
    LineList* out_ = nullptr;
    double right_ = 0;  // margin

    // The line
    std::size_t firstPiece_ = 0;
    double pen_ = 0;
    double trailingBlanks_ = 0;
    double ascent_ = 0;
    double descent_ = 0;
    std::optional<std::uint32_t> blankFormat_;  // of the blanks that nothing follows yet
    bool hasText_ = false;
    bool canBreak_ = false;  // something stands on it that may stay without what follows

    // The part of the line since the last tab
    std::size_t segmentPiece_ = 0;
    double segmentStart_ = 0;
    TabStop segmentStop_;

    // Parts of a word whose end isn't known yet
    std::vector<Piece> word_;
    double wordWidth_ = 0;
};

}  // namespace quillform::richtext
