#pragma once

#include "richtext/ControlWords.h"
#include "richtext/Document.h"

namespace quillform::richtext {

/// A word's number, where it has one.
struct Parameter {
    bool isGiven = false;
    int number = 0;

    int Or(int otherwise) const { return isGiven ? number : otherwise; }
    bool IsOn() const { return Or(1) != 0; }  ///< \b and \b1, not \b0
    int Twips() const;                        ///< within what a page can take
    std::uint16_t Index() const;              ///< 0 for numbers that no table reaches
};

/// What words do to the formats. Words that need more than the format (a font's number, hidden text) do nothing here.
void ApplyWord(CharacterWord word, Parameter parameter, CharacterFormat& format);
/// `nextTab` is the alignment that the next tab stop takes.
void ApplyWord(ParagraphWord word, Parameter parameter, ParagraphFormat& format, TabAlignment& nextTab);
void ApplyWord(RowWord word, Parameter parameter, RowFormat& format);
void ApplyWord(SheetMeasure measure, Parameter parameter, Geometry& geometry);

}  // namespace quillform::richtext
