#include "print/PdfPageComposer.h"

#include <algorithm>
#include <cmath>

#include "platform/Colours.h"
#include "platform/Text.h"
#include "print/PdfSyntax.h"

namespace quillform::print {

namespace {

// A cell per item costs more than the text itself: with it everywhere, 100,000 rows of six items took 0.51 s and 16.5
// MB instead of 0.32 s and 7.5 MB. Documents that are read through get it; further on a row is one cell.
constexpr int kPagesWithCells = 100;

std::string ColourOperator(int number) {
    const Rgb colour = QBColor(number);
    std::string out;
    if (colour.red == colour.green && colour.green == colour.blue) {
        AppendDecimal(colour.red / 255.0, out);
        return out + " g\n";
    }
    for (const int part : {+colour.red, +colour.green, +colour.blue}) {
        AppendDecimal(part / 255.0, out);
        out += ' ';
    }
    return out + "rg\n";
}

// Lines above totals are typed as characters; nobody wants to hear them read out one by one.
bool IsRule(std::string_view text) {
    return text.size() > 2 && text.find_first_not_of(text.front()) == std::string_view::npos &&
           std::string_view("_-=").find(text.front()) != std::string_view::npos;
}

}  // namespace

PdfPageComposer::PdfPageComposer(FontBook& fonts, PdfStructure& structure) : fonts_(fonts), structure_(structure) {
    for (int number = 0; number < 16; ++number) colours_[static_cast<std::size_t>(number)] = ColourOperator(number);
}

std::string_view PdfPageComposer::Compose(const Page& page, int pageNumber, double originX, double originY) {
    pageNumber_ = pageNumber;
    out_.clear();
    underlines_.clear();
    underlineColour_ = colour_ = face_ = -1;
    x_ = y_ = 0;
    out_ += ".05 0 0 .05 ";
    AppendDecimal(originX, out_);
    out_ += ' ';
    AppendDecimal(originY, out_);
    out_ += " cm\n";
    if (!page.Boxes().empty()) DrawBoxes(page);
    DrawTexts(page);
    if (!underlines_.empty()) DrawUnderlines();
    return out_;
}

void PdfPageComposer::DrawBoxes(const Page& page) {
    out_ += "/Artifact BMC\n";
    for (const Page::Box& box : page.Boxes()) {
        UseColour(box.colour);
        // Edges are rounded, not sizes, so that boxes that touch leave no line between them.
        const long left = std::lround(box.left);
        const long bottom = std::lround(box.top + box.height);
        for (const long number :
             {left, -bottom, std::lround(box.left + box.width) - left, bottom - std::lround(box.top)}) {
            AppendInteger(number, out_);
            out_ += ' ';
        }
        out_ += "re f\n";
    }
    out_ += "EMC\n";
}

void PdfPageComposer::DrawTexts(const Page& page) {
    out_ += "BT\n";
    const Page::Text* previous = nullptr;
    for (const Page::Text& text : page.Texts()) {
        if (previous == nullptr || previous->row != text.row || previous->role != text.role) {
            LeaveRow();
            EnterRow(text.role);
        }
        previous = &text;
        if (tagging_ == Tagging::Cells)
            DrawCell(page, text);
        else if (text.length != 0)
            DrawText(page, text);
    }
    LeaveRow();
    out_ += "ET\n";
}

void PdfPageComposer::EnterRow(PageRole role) {
    if (role == PageRole::Heading && pageNumber_ == 1) {
        BeginMarked("P", structure_.AddHeadingLine());
        tagging_ = Tagging::HeadingLine;
    } else if (role == PageRole::Heading) {
        out_ += "/Artifact<</Type/Pagination/Subtype/Header>>BDC\n";
        tagging_ = Tagging::Artifact;
    } else {
        structure_.BeginRow(role);
        tagging_ = pageNumber_ <= kPagesWithCells ? Tagging::Cells : Tagging::WholeRow;
        if (tagging_ == Tagging::WholeRow) BeginMarked("TD", structure_.AddCell());
    }
}

void PdfPageComposer::LeaveRow() {
    const bool isRow = tagging_ == Tagging::Cells || tagging_ == Tagging::WholeRow;
    if (tagging_ != Tagging::Outside && tagging_ != Tagging::Cells) out_ += "EMC\n";
    if (isRow) structure_.EndRow();
    tagging_ = Tagging::Outside;
}

void PdfPageComposer::BeginMarked(std::string_view type, int mark) {
    out_ += '/';
    out_ += type;
    out_ += "<</MCID ";
    AppendInteger(mark, out_);
    out_ += ">>BDC\n";
}

void PdfPageComposer::DrawCell(const Page& page, const Page::Text& text) {
    const bool isDecoration = IsRule(page.CharactersOf(text));
    if (text.length == 0 || isDecoration) structure_.AddBlankCell();
    if (text.length == 0) return;
    if (isDecoration)
        out_ += "/Artifact BMC\n";
    else
        BeginMarked("TD", structure_.AddCell());
    DrawText(page, text);
    out_ += "EMC\n";
}

void PdfPageComposer::DrawText(const Page& page, const Page::Text& text) {
    const FontBook::Font& font = fonts_.At(text.font);
    const std::string_view characters = page.CharactersOf(text);
    UseColour(text.colour);
    MoveTo(std::lround(text.x), -std::lround(text.y + font.ascent));
    ShowCharacters(font, font.spec.underline ? characters : RTrim(characters));
    if (font.spec.underline) NoteUnderline(text, characters);
}

void PdfPageComposer::MoveTo(long x, long y) {
    AppendInteger(x - x_, out_);
    out_ += ' ';
    AppendInteger(y - y_, out_);
    out_ += " Td";
    x_ = x;
    y_ = y;
}

void PdfPageComposer::UseFace(std::uint16_t face, double size) {
    if (face == face_ && size == size_) return;
    out_ += "/F";
    AppendInteger(face, out_);
    out_ += ' ';
    AppendDecimal(size, out_);
    out_ += " Tf";
    face_ = face;
    size_ = size;
}

void PdfPageComposer::UseColour(int colour) {
    if (colour == colour_) return;
    out_ += colours_[static_cast<std::size_t>(colour)];
    colour_ = colour;
}

// One string per stretch of characters that the same face draws.
void PdfPageComposer::ShowCharacters(const FontBook::Font& font, std::string_view characters) {
    for (std::size_t at = 0; at < characters.size();) {
        std::size_t next = at;
        const FontBook::Glyph& glyph = fonts_.GlyphOf(font.typeface, NextCodePoint(characters, next));
        UseFace(glyph.face, font.twipsPerEm);
        out_ += '(';
        at = AppendCodes(font.typeface, glyph.face, characters, at);
        if (at == characters.size()) AppendSeparator(font.typeface, glyph.face);
        out_ += ")Tj";
    }
    out_ += '\n';
}

// Items that are marked together would be read as one word; a blank behind each keeps them apart.
void PdfPageComposer::AppendSeparator(int typeface, std::uint16_t face) {
    const bool isShared = tagging_ == Tagging::HeadingLine || tagging_ == Tagging::WholeRow;
    if (isShared && fonts_.GlyphOf(typeface, U' ').face == face) AppendCodes(typeface, face, " ", 0);
}

std::size_t PdfPageComposer::AppendCodes(int typeface, std::uint16_t face, std::string_view characters,
                                         std::size_t at) {
    std::size_t end = out_.size();
    out_.resize(end + 2 * (characters.size() - at));  // no character has fewer bytes than one, no code more than two
    while (at < characters.size()) {
        std::size_t next = at + 1;
        char32_t codePoint = static_cast<unsigned char>(characters[at]);
        if (codePoint >= 128) codePoint = NextCodePoint(characters, next = at);
        FontBook::Glyph& glyph = fonts_.GlyphOf(typeface, codePoint);
        if (glyph.face != face) break;
        at = next;
        if (!glyph.isDrawn) continue;
        if (glyph.index == 0) fonts_.CountMissing();
        if (glyph.code == 0) fonts_.AssignCode(glyph, codePoint);
        out_[end++] = static_cast<char>(glyph.code >> 8U);
        out_[end++] = static_cast<char>(glyph.code & 0xFFU);
    }
    out_.resize(end);
    return at;
}

// Lines can't be drawn between the beginning and the end of text, so they are gathered for behind it.
void PdfPageComposer::NoteUnderline(const Page::Text& text, std::string_view characters) {
    const FontBook::Font& font = fonts_.At(text.font);
    const auto& metrics = fonts_.PrimaryFace(text.font).Measures();
    const double thickness = std::max(metrics.underlineThickness * font.twipsPerEm, 1.0);
    const double bottom = text.y + font.ascent + metrics.underlineCentre * font.twipsPerEm + thickness / 2;
    if (text.colour != underlineColour_) underlines_ += colours_[text.colour];
    underlineColour_ = text.colour;
    for (const double number :
         {static_cast<double>(text.x), -bottom, fonts_.TextWidth(text.font, characters), thickness}) {
        AppendInteger(std::lround(number), underlines_);
        underlines_ += ' ';
    }
    underlines_ += "re f\n";
}

void PdfPageComposer::DrawUnderlines() {
    out_ += "/Artifact BMC\n";
    out_ += underlines_;
    out_ += "EMC\n";
}

}  // namespace quillform::print
