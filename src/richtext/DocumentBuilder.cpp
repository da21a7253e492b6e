#include "richtext/DocumentBuilder.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quillform::richtext {

namespace {

// Formats come back at short distance: looking at the latest few finds nearly all, and costs the same in any document.
constexpr std::size_t kRemembered = 16;

template <typename Format>
std::uint32_t NumberOf(std::vector<Format>& formats, const Format& format) {
    const std::size_t first = formats.size() > kRemembered ? formats.size() - kRemembered : 0;
    for (std::size_t i = formats.size(); i > first; --i)
        if (formats[i - 1] == format) return static_cast<std::uint32_t>(i - 1);
    formats.push_back(format);
    return static_cast<std::uint32_t>(formats.size() - 1);
}

}  // namespace

void DocumentBuilder::AddText(std::string_view text, const CharacterFormat& character,
                              const ParagraphFormat& paragraph) {
    // Places in the text have 32 bits; what goes beyond is left out, like what is cut off a file.
    if (text.empty() || text.size() > std::numeric_limits<std::uint32_t>::max() - document_.text.size()) return;
    rows_.SetPageBreakBehind(false);
    if (!HasText()) openFormat_ = paragraph;
    const std::uint32_t format = NumberOf(document_.characterFormats, character);
    if (HasText() && document_.runs.back().format == format)
        document_.runs.back().length += static_cast<std::uint32_t>(text.size());
    else
        document_.runs.push_back(
            {format, static_cast<std::uint32_t>(document_.text.size()), static_cast<std::uint32_t>(text.size())});
    document_.text += text;
}

void DocumentBuilder::EndParagraph(const ParagraphFormat& paragraph, const CharacterFormat& mark) {
    const ParagraphFormat& format = HasText() ? openFormat_ : paragraph;
    const bool isInTable = format.isInTable && rows_.IsDefined();
    if (!isInTable) rows_.CloseRow();
    Paragraph ended;
    ended.format = NumberOf(document_.paragraphFormats, format);
    ended.markFormat = NumberOf(document_.characterFormats, mark);
    ended.firstRun = static_cast<std::uint32_t>(firstRun_);
    ended.runCount = static_cast<std::uint32_t>(document_.runs.size() - firstRun_);
    document_.paragraphs.push_back(ended);
    firstRun_ = document_.runs.size();
    textStart_ = document_.text.size();
    if (isInTable) return;
    document_.blocks.push_back({BlockKind::Paragraph, static_cast<std::uint32_t>(document_.paragraphs.size() - 1)});
    rows_.PassOver();
}

void DocumentBuilder::EndCell(const ParagraphFormat& paragraph, const CharacterFormat& mark) {
    rows_.SetPageBreakBehind(false);
    CloseCell(paragraph, mark);
}

void DocumentBuilder::CloseCell(const ParagraphFormat& paragraph, const CharacterFormat& mark) {
    ParagraphFormat inTable = HasText() ? openFormat_ : paragraph;
    inTable.isInTable = true;
    openFormat_ = inTable;
    rows_.EnsureDefined();
    EndParagraph(inTable, mark);
    rows_.CloseCell();
}

void DocumentBuilder::EndRow(const ParagraphFormat& paragraph, const CharacterFormat& mark) {
    // The last cell of a row may have been left open; blanks between its end and the row's are none.
    if (IsBlank() && !rows_.HasOpenCell()) DropText();
    if (HasText() || rows_.HasOpenCell()) CloseCell(paragraph, mark);
    rows_.CloseRow();
}

void DocumentBuilder::StartRowDefinition(const CharacterFormat& mark) {
    // Many writers repeat the definition between the last cell and the row's end; that one ends nothing.
    if (IsBlank() && !rows_.HasOpenCell())
        DropText();
    else if (rows_.IsDefined() && (rows_.HasOpenCell() || openFormat_.isInTable))
        EndRow(openFormat_, mark);
    else
        EndParagraph(openFormat_, mark);
    rows_.StartDefinition();
}

void DocumentBuilder::BreakPage(const CharacterFormat& mark) {
    // A line of nothing but blanks before the break would take a place on the page, and begin another where it is full.
    if (IsBlank()) DropText();
    if (rows_.IsOpen() || (HasText() && openFormat_.isInTable && rows_.IsDefined())) {
        rows_.SetPageBreakBehind(true);
        return;
    }
    if (HasText()) EndParagraph(openFormat_, mark);
    document_.blocks.push_back({BlockKind::PageBreak, 0});
}

void DocumentBuilder::StartSection(const ParagraphFormat& paragraph, const CharacterFormat& mark,
                                   const Geometry& geometry) {
    if (HasText()) EndParagraph(paragraph, mark);
    rows_.CloseRow();
    document_.sections.push_back({geometry, document_.blocks.size(), true});
}

Document DocumentBuilder::Finish() {
    if (IsBlank()) DropText();
    if (HasText()) EndParagraph(openFormat_, document_.characterFormats[document_.runs.back().format]);
    if (rows_.HasText()) rows_.CloseRow();
    for (Section& section : document_.sections) section.geometry = section.geometry.Usable();
    return std::move(document_);
}

bool DocumentBuilder::IsBlank() const {
    return std::all_of(document_.text.begin() + static_cast<std::ptrdiff_t>(textStart_), document_.text.end(),
                       [](char c) { return c == ' '; });
}

void DocumentBuilder::DropText() {
    document_.runs.resize(firstRun_);
    document_.text.resize(textStart_);
}

}  // namespace quillform::richtext
