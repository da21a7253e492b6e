#pragma once

#include <cstdint>
#include <string_view>
#include <variant>

namespace quillform::richtext {

/// The control words that the reader knows, by what they act on. Others mean nothing to it.

enum class CharacterWord : std::uint8_t {
    Plain,
    Font,
    Size,
    ForeColour,
    BackColour,
    Bold,
    Italic,
    Underline,
    NoUnderline,
    Hidden,
};

enum class ParagraphWord : std::uint8_t {
    Reset,
    AlignLeft,
    AlignCentre,
    AlignRight,
    LeftIndent,
    RightIndent,
    FirstIndent,
    SpaceBefore,
    SpaceAfter,
    LineSpacing,
    LineSpacingFactor,
    InTable,
    Tab,
    NextTabRight,
    NextTabCentre,
};

enum class RowWord : std::uint8_t { StartDefinition, Left, Gap, Height, CellEdge };

/// Ends of what has been written so far.
enum class EndWord : std::uint8_t { Line, Paragraph, Cell, NestedCell, Row, Page, Section };

/// Sheet and margins, of the document or of one section.
enum class SheetMeasure : std::uint8_t { Width, Height, Left, Right, Top, Bottom, Landscape };
struct SheetWord {
    SheetMeasure measure = SheetMeasure::Width;
    bool isOfSection = false;
};

enum class DocumentWord : std::uint8_t {
    DefaultTab,
    DefaultFont,
    AnsiCodePage,
    Ansi,
    Mac,
    Pc,
    Pca,
    SectionReset,
    SectionStartsNoPage,
    SectionStartsPage,
    UnicodeUnit,
    UnicodeSkip,
};

/// Within the tables of fonts, colours and styles.
enum class TableWord : std::uint8_t { Charset, CodePage, Red, Green, Blue, Style };

/// What a group holds instead of text to show.
enum class Destination : std::uint8_t { Body, FontTable, ColourTable, StyleSheet, Information, Skipped };

/// A character under a name.
struct NamedCharacter {
    std::string_view text;  ///< UTF-8
};

using ControlWord = std::variant<CharacterWord, ParagraphWord, RowWord, EndWord, SheetWord, DocumentWord, TableWord,
                                 Destination, NamedCharacter>;

/// Null for a word that isn't known. Case counts.
const ControlWord* FindControlWord(std::string_view name);

}  // namespace quillform::richtext
