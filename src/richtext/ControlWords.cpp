#include "richtext/ControlWords.h"

#include <unordered_map>

namespace quillform::richtext {

namespace {

using Words = std::unordered_map<std::string_view, ControlWord>;

const Words& KnownWords() {
    using C = CharacterWord;
    using P = ParagraphWord;
    using D = DocumentWord;
    using S = SheetMeasure;
    constexpr auto kSkipped = Destination::Skipped;
    static const Words words = {
        // Characters
        {"plain", C::Plain},
        {"f", C::Font},
        {"fs", C::Size},
        {"cf", C::ForeColour},
        {"cb", C::BackColour},
        {"chcbpat", C::BackColour},
        {"highlight", C::BackColour},
        {"b", C::Bold},
        {"i", C::Italic},
        {"ul", C::Underline},
        {"uld", C::Underline},
        {"uldb", C::Underline},
        {"ulw", C::Underline},
        {"ulth", C::Underline},
        {"ulnone", C::NoUnderline},
        {"v", C::Hidden},
        {"deleted", C::Hidden},

        // Paragraphs
        {"pard", P::Reset},
        {"ql", P::AlignLeft},
        {"qj", P::AlignLeft},
        {"qc", P::AlignCentre},
        {"qr", P::AlignRight},
        {"li", P::LeftIndent},
        {"ri", P::RightIndent},
        {"fi", P::FirstIndent},
        {"sb", P::SpaceBefore},
        {"sa", P::SpaceAfter},
        {"sl", P::LineSpacing},
        {"slmult", P::LineSpacingFactor},
        {"intbl", P::InTable},
        {"tx", P::Tab},
        {"tqr", P::NextTabRight},
        {"tqdec", P::NextTabRight},
        {"tqc", P::NextTabCentre},

        // Tables
        {"trowd", RowWord::StartDefinition},
        {"trleft", RowWord::Left},
        {"trgaph", RowWord::Gap},
        {"trrh", RowWord::Height},
        {"cellx", RowWord::CellEdge},
        {"cell", EndWord::Cell},
        {"nestcell", EndWord::NestedCell},
        {"row", EndWord::Row},

        // Lines and pages
        {"par", EndWord::Paragraph},
        {"line", EndWord::Line},
        {"page", EndWord::Page},
        {"sect", EndWord::Section},

        // Sheets
        {"paperw", SheetWord{S::Width, false}},
        {"paperh", SheetWord{S::Height, false}},
        {"margl", SheetWord{S::Left, false}},
        {"margr", SheetWord{S::Right, false}},
        {"margt", SheetWord{S::Top, false}},
        {"margb", SheetWord{S::Bottom, false}},
        {"landscape", SheetWord{S::Landscape, false}},
        {"pgwsxn", SheetWord{S::Width, true}},
        {"pghsxn", SheetWord{S::Height, true}},
        {"marglsxn", SheetWord{S::Left, true}},
        {"margrsxn", SheetWord{S::Right, true}},
        {"margtsxn", SheetWord{S::Top, true}},
        {"margbsxn", SheetWord{S::Bottom, true}},
        {"lndscpsxn", SheetWord{S::Landscape, true}},
        {"sectd", D::SectionReset},
        {"sbknone", D::SectionStartsNoPage},
        {"sbkpage", D::SectionStartsPage},

        // The document
        {"deftab", D::DefaultTab},
        {"deff", D::DefaultFont},
        {"ansi", D::Ansi},
        {"ansicpg", D::AnsiCodePage},
        {"mac", D::Mac},
        {"pc", D::Pc},
        {"pca", D::Pca},
        {"u", D::UnicodeUnit},
        {"uc", D::UnicodeSkip},
        {"fcharset", TableWord::Charset},
        {"cpg", TableWord::CodePage},
        {"red", TableWord::Red},
        {"green", TableWord::Green},
        {"blue", TableWord::Blue},
        {"s", TableWord::Style},
        {"cs", TableWord::Style},
        {"ds", TableWord::Style},
        {"ts", TableWord::Style},

        // Groups without text to show
        {"fonttbl", Destination::FontTable},
        {"colortbl", Destination::ColourTable},
        {"stylesheet", Destination::StyleSheet},
        {"info", Destination::Information},
        {"pict", kSkipped},
        {"objdata", kSkipped},
        {"fldinst", kSkipped},
        {"header", kSkipped},
        {"headerl", kSkipped},
        {"headerr", kSkipped},
        {"headerf", kSkipped},
        {"footer", kSkipped},
        {"footerl", kSkipped},
        {"footerr", kSkipped},
        {"footerf", kSkipped},
        {"footnote", kSkipped},
        {"ftnsep", kSkipped},
        {"ftnsepc", kSkipped},
        {"ftncn", kSkipped},
        {"aftnsep", kSkipped},
        {"aftnsepc", kSkipped},
        {"aftncn", kSkipped},
        {"pntxta", kSkipped},
        {"pntxtb", kSkipped},
        {"nonesttables", kSkipped},
        {"listtable", kSkipped},
        {"filetbl", kSkipped},
        {"revtbl", kSkipped},
        {"tc", kSkipped},
        {"tcn", kSkipped},
        {"xe", kSkipped},
        {"rxe", kSkipped},
        {"txe", kSkipped},
        {"private", kSkipped},

        // Characters that have a name
        {"tab", NamedCharacter{"\t"}},
        {"emdash", NamedCharacter{"\xE2\x80\x94"}},
        {"endash", NamedCharacter{"\xE2\x80\x93"}},
        {"bullet", NamedCharacter{"\xE2\x80\xA2"}},
        {"lquote", NamedCharacter{"\xE2\x80\x98"}},
        {"rquote", NamedCharacter{"\xE2\x80\x99"}},
        {"ldblquote", NamedCharacter{"\xE2\x80\x9C"}},
        {"rdblquote", NamedCharacter{"\xE2\x80\x9D"}},
        {"emspace", NamedCharacter{"\xE2\x80\x83"}},
        {"enspace", NamedCharacter{"\xE2\x80\x82"}},
        {"qmspace", NamedCharacter{"\xE2\x80\x85"}},
    };
    return words;
}

}  // namespace

const ControlWord* FindControlWord(std::string_view name) {
    static const Words& words = KnownWords();
    const auto found = words.find(name);
    return found == words.end() ? nullptr : &found->second;
}

}  // namespace quillform::richtext
