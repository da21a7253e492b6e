#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Colours.h"

namespace quillform::richtext {

/// A rich text document by value. Lengths are twips. The parts refer to each other by number, so that a document of
/// a hundred thousand lines stays small.

struct Font {
    std::string name;
    int codePage = 1252;  ///< of the bytes that are written in it
};

struct CharacterFormat {
    std::uint16_t font = 0;         ///< in Document::fonts
    std::uint16_t halfPoints = 24;  ///< size
    std::uint16_t foreColour = 0;   ///< in Document::colours
    std::uint16_t backColour = 0;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    friend bool operator==(const CharacterFormat&, const CharacterFormat&) = default;
};

enum class TabAlignment : std::uint8_t { Left, Centre, Right };

struct TabStop {
    int position = 0;  ///< from the left edge of the text area, not from the paragraph's indent
    TabAlignment alignment = TabAlignment::Left;
    friend bool operator==(const TabStop&, const TabStop&) = default;
};

enum class Alignment : std::uint8_t { Left, Centre, Right };

struct ParagraphFormat {
    int leftIndent = 0;
    int rightIndent = 0;
    int firstIndent = 0;  ///< of the first line, added to the left one
    int spaceBefore = 0;
    int spaceAfter = 0;
    /// 0 as high as its letters need; above, at least this; below, exactly so much. With `isLineSpacingFactor` a
    /// factor, 240 for single.
    int lineSpacing = 0;
    bool isLineSpacingFactor = false;
    bool isInTable = false;
    Alignment alignment = Alignment::Left;
    std::shared_ptr<const std::vector<TabStop>> tabs;  ///< in rising order; null for none

    void AddTab(TabStop stop);
    friend bool operator==(const ParagraphFormat& left, const ParagraphFormat& right);
};

/// Text of one format. Ranges of text are bytes in Document::text.
struct Run {
    std::uint32_t format = 0;  ///< in Document::characterFormats
    std::uint32_t start = 0;
    std::uint32_t length = 0;
};

/// Its runs follow one another in the text without a gap. Line ends within it are '\n', tabs '\t'; no other control
/// characters occur.
struct Paragraph {
    std::uint32_t format = 0;      ///< in Document::paragraphFormats
    std::uint32_t markFormat = 0;  ///< of the paragraph's end, which gives an empty line its height
    std::uint32_t firstRun = 0;
    std::uint32_t runCount = 0;
};

struct Cell {
    std::uint32_t firstParagraph = 0;
    std::uint32_t paragraphCount = 0;
};

struct RowFormat {
    int left = 0;            ///< edge of the first cell, from the left edge of the text area
    int gap = 0;             ///< between the edge of a cell and its text, left and right
    int height = 0;          ///< 0 as needed; above, at least; below, exactly so much
    std::vector<int> edges;  ///< right edge of each cell, from the left edge of the text area
    friend bool operator==(const RowFormat&, const RowFormat&) = default;
};

struct Row {
    std::uint32_t format = 0;  ///< in Document::rowFormats; it has an edge for each cell
    std::uint32_t firstCell = 0;
    std::uint32_t cellCount = 0;
};

enum class BlockKind : std::uint8_t { Paragraph, Row, PageBreak };

struct Block {
    BlockKind kind = BlockKind::Paragraph;
    std::uint32_t index = 0;  ///< in Document::paragraphs or rows
};

/// A sheet and the margins around its text.
struct Geometry {
    int width = 12240;
    int height = 15840;
    int left = 1800;
    int right = 1800;
    int top = 1440;
    int bottom = 1440;
    bool isLandscape = false;  ///< a sheet that is higher than wide lies on its side

    int TextWidth() const { return width - left - right; }
    int TextHeight() const { return height - top - bottom; }
    /// A sheet that a page can be laid on: from one to 22 inches, with half an inch of text at least. Margins that
    /// leave less become none.
    Geometry Usable() const;
    friend bool operator==(const Geometry&, const Geometry&) = default;
};

struct Section {
    Geometry geometry;
    std::size_t firstBlock = 0;
    bool startsPage = true;
};

struct Document {
    std::vector<Font> fonts{{"Times New Roman"}};                   ///< number 0 stands for every one that is missing
    std::vector<std::optional<Rgb>> colours{std::optional<Rgb>{}};  ///< empty: automatic
    std::vector<CharacterFormat> characterFormats;
    std::vector<ParagraphFormat> paragraphFormats;
    std::vector<RowFormat> rowFormats;
    int defaultTab = 720;

    std::string text;  ///< UTF-8
    std::vector<Run> runs;
    std::vector<Paragraph> paragraphs;
    std::vector<Cell> cells;
    std::vector<Row> rows;
    std::vector<Block> blocks;
    std::vector<Section> sections{Section{}};  ///< at least one

    std::string_view TextOf(const Run& run) const { return std::string_view(text).substr(run.start, run.length); }
    /// Empty for numbers that aren't in the table.
    std::optional<Rgb> Colour(std::uint16_t number) const;
    /// The back colour of text, if it leaves a mark on a white sheet.
    std::optional<Rgb> ShadeOf(const CharacterFormat& format) const;
};

}  // namespace quillform::richtext
