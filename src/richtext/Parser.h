#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "richtext/CharacterSets.h"
#include "richtext/ControlWords.h"
#include "richtext/DocumentBuilder.h"
#include "richtext/FormatWords.h"
#include "richtext/Tokens.h"

namespace quillform::richtext {

/// Turns the parts of rich text into a document. Time and memory grow with the input only: groups beyond a depth share
/// one state, tables beyond a size take no more entries. Nothing fails; what isn't understood is passed over, and where
/// the input breaks off the document ends.
class Parser {
public:
    explicit Parser(std::string_view input) : tokens_(input) {}
    Document Read();

private:
    /// What a group's end takes back.
    struct Group {
        CharacterFormat character{};
        ParagraphFormat paragraph{};
        TabAlignment nextTab = TabAlignment::Left;
        Destination destination = Destination::Body;
        bool isHidden = false;
        int unicodeSkip = 1;
        int style = 0;  ///< in the sheet of styles: the number that the group describes
    };
    struct FontEntry {
        int number = -1;
        int charset = 1;
        int codePage = 0;  ///< 0: the one of the character set
        std::string name;  ///< bytes as they stand
    };

    void StartGroup();
    void EndGroup();
    void OnText(std::string_view bytes);
    void OnSymbol(char symbol);
    void OnWord(const Token& token);
    bool SkipsForUnicode();
    void FlushText();
    int CodePage() const;

    // The words, where their group lets them act
    void Act(CharacterWord word, Parameter parameter);
    void Act(ParagraphWord word, Parameter parameter);
    void Act(RowWord word, Parameter parameter);
    void Act(EndWord word, Parameter parameter);
    void Act(SheetWord word, Parameter parameter);
    void Act(DocumentWord word, Parameter parameter);
    void Act(TableWord word, Parameter parameter);
    void Act(Destination destination, Parameter parameter);
    void Act(NamedCharacter character, Parameter parameter);

    // Tables
    void OnTableText(std::string_view bytes);
    void EndFontEntry();
    void EndTable(Destination ended);
    std::uint16_t FontOf(int number) const;

    TokenReader tokens_;
    DocumentBuilder builder_;
    TextDecoder decoder_;
    Group now_;
    std::vector<Group> outer_;
    std::size_t depthBeyond_ = 0;  // groups that are open and have no state of their own
    int toSkip_ = 0;               // characters that stand for one that was written by its number

    CharacterFormat plain_;  // what \plain gives
    int codePage_ = 1252;
    int defaultFont_ = -1;
    Geometry geometry_;  // of the document; a section may have its own
    std::unordered_map<int, std::uint16_t> fontOfNumber_;
    FontEntry fontEntry_;
    Rgb colour_;
    bool hasColour_ = false;
    bool hasFirstColour_ = false;
};

}  // namespace quillform::richtext
