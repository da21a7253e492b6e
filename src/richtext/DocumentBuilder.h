#pragma once

#include <cstddef>
#include <string_view>

#include "richtext/Document.h"
#include "richtext/Tables.h"

namespace quillform::richtext {

/// Puts a document together in reading order: text gathers in an open paragraph until something ends it.
class DocumentBuilder {
public:
    DocumentBuilder() : rows_(document_) {}
    DocumentBuilder(const DocumentBuilder&) = delete;
    DocumentBuilder& operator=(const DocumentBuilder&) = delete;

    /// Tables of fonts and colours and the like may be filled at any time.
    Document& Draft() { return document_; }
    const Document& Draft() const { return document_; }

    /// UTF-8 without control characters but '\n' and '\t'.
    void AddText(std::string_view text, const CharacterFormat& character, const ParagraphFormat& paragraph);
    /// A paragraph has the format that holds where its first text stands, since groups around its text end before it
    /// does; but a later word about paragraphs holds for all of it.
    void ChangeParagraph(const ParagraphFormat& paragraph) {
        if (HasText()) openFormat_ = paragraph;
    }
    void EndParagraph(const ParagraphFormat& paragraph, const CharacterFormat& mark);
    void EndCell(const ParagraphFormat& paragraph, const CharacterFormat& mark);
    void EndRow(const ParagraphFormat& paragraph, const CharacterFormat& mark);
    /// What was begun and not ended is ended: a row in the table, a paragraph outside.
    void StartRowDefinition(const CharacterFormat& mark);
    RowFormat& RowDefinition() { return rows_.Definition(); }
    /// A break that a row's end or the next row's definition follows stands behind the row. Others within a cell are
    /// passed over, as other readers do: a page can't end beside cells that go on.
    void BreakPage(const CharacterFormat& mark);
    void StartSection(const ParagraphFormat& paragraph, const CharacterFormat& mark, const Geometry& geometry);

    bool IsEmpty() const { return document_.text.empty() && document_.blocks.empty(); }
    Document Finish();

private:
    bool HasText() const { return document_.runs.size() > firstRun_; }
    bool IsBlank() const;
    void DropText();
    void CloseCell(const ParagraphFormat& paragraph, const CharacterFormat& mark);

    Document document_;
    RowBuilder rows_;
    std::size_t firstRun_ = 0;    // of the open paragraph
    std::size_t textStart_ = 0;   // of the open paragraph
    ParagraphFormat openFormat_;  // meaningful while the open paragraph has text
};

}  // namespace quillform::richtext
