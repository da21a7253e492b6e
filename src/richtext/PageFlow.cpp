#include "richtext/PageFlow.h"

#include <algorithm>

namespace quillform::richtext {

namespace {

constexpr double kSlack = 0.5;  // of a page's height, for sums of line heights

bool IsBlank(std::string_view text) { return text.find_first_not_of(' ') == std::string_view::npos; }

}  // namespace

PageFlow::PageFlow(const Document& document, TextMeasure& measure)
    : document_(document), fonts_(document, measure), breaker_(document, fonts_) {}

bool PageFlow::Next(SheetPage& page) {
    if (IsAtEnd() && pageCount_ > 0) return false;
    StartPage(page);
    while (!IsAtEnd() && PlaceBlock(page)) continue;
    ++pageCount_;
    return !IsAtEnd() || !page.IsBlank() || pageCount_ == 1;
}

void PageFlow::StartPage(SheetPage& page) {
    EntersSection();
    geometry_ = document_.sections[section_].geometry;
    page.geometry = geometry_;
    page.boxes.clear();
    page.texts.clear();
    page.characters.clear();
    y_ = 0;
    lineNumber_ = 0;
}

bool PageFlow::EntersSection() {
    bool startsPage = false;
    while (section_ + 1 < document_.sections.size() && document_.sections[section_ + 1].firstBlock <= block_)
        startsPage |= document_.sections[++section_].startsPage;
    return startsPage;
}

bool PageFlow::PlaceBlock(SheetPage& page) {
    if (EntersSection()) return false;
    switch (document_.blocks[block_].kind) {
        case BlockKind::Paragraph:
            return PlaceParagraph(page);
        case BlockKind::Row:
            return PlaceRow(page);
        case BlockKind::PageBreak:
            break;
    }
    EndBlock();
    return false;
}

bool PageFlow::PlaceParagraph(SheetPage& page) {
    if (!isLaid_) {
        lines_.Clear();
        nextLine_ = 0;
        breaker_.Break(document_.paragraphs[document_.blocks[block_].index], geometry_.TextWidth(), lines_);
        isLaid_ = true;
    }
    for (; nextLine_ < lines_.lines.size(); ++nextLine_) {
        const Line& line = lines_.lines[nextLine_];
        if (y_ > 0 && y_ + line.height > geometry_.TextHeight() + kSlack) return false;
        PlaceLine(lines_, line, 0, y_, page);
        y_ += line.height;
    }
    EndBlock();
    return true;
}

bool PageFlow::PlaceRow(SheetPage& page) {
    const double bottom = geometry_.TextHeight() + kSlack;
    if (!isLaid_) row_.Lay(document_, document_.rows[document_.blocks[block_].index], breaker_);
    isLaid_ = true;
    if (y_ > 0 && y_ + row_.Height() > bottom) return false;
    y_ += row_.Place(y_, bottom, [&](const LineList& list, const Line& line, double left, double top) {
        PlaceLine(list, line, left, top, page);
    });
    if (!row_.IsDone()) return false;
    EndBlock();
    return true;
}

void PageFlow::EndBlock() {
    ++block_;
    isLaid_ = false;
}

void PageFlow::PlaceLine(const LineList& list, const Line& line, double left, double top, SheetPage& page) {
    left += geometry_.left;
    const double baseline = geometry_.top + top + line.baseline;
    ++lineNumber_;
    for (std::size_t i = line.firstPiece; i < line.firstPiece + line.pieceCount; ++i) {
        const Piece& piece = list.pieces[i];
        const CharacterFormat& format = document_.characterFormats[piece.format];
        const std::string_view characters = std::string_view(document_.text).substr(piece.start, piece.length);
        if (const auto shade = document_.ShadeOf(format))
            page.boxes.push_back({static_cast<float>(left + piece.x), static_cast<float>(baseline - line.ascent),
                                  static_cast<float>(piece.width), static_cast<float>(line.ascent + line.descent),
                                  *shade});
        if (characters.empty() || (IsBlank(characters) && !format.underline)) continue;
        SheetPage::Text text;
        text.x = static_cast<float>(left + piece.x);
        text.y = static_cast<float>(baseline - fonts_.Of(piece.format).ascent);
        text.width = static_cast<float>(piece.width);
        text.font = static_cast<std::uint32_t>(fonts_.NumberOf(piece.format));
        text.start = static_cast<std::uint32_t>(page.characters.size());
        text.length = piece.length;
        text.line = lineNumber_;
        text.colour = document_.Colour(format.foreColour).value_or(Rgb{});
        page.texts.push_back(text);
        page.characters += characters;
    }
}

}  // namespace quillform::richtext
