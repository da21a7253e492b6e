#include "richtext/Parser.h"

#include <algorithm>
#include <utility>

#include "platform/CodePage.h"

namespace quillform::richtext {

namespace {

constexpr std::size_t kMostGroups = 2000;
constexpr std::size_t kMostFonts = 1000;
constexpr std::size_t kMostColours = 10'000;
constexpr std::size_t kLongestFontName = 200;

}  // namespace

Document Parser::Read() {
    for (Token token = tokens_.Next(); token.kind != TokenKind::End; token = tokens_.Next()) {
        switch (token.kind) {
            case TokenKind::GroupStart:
                StartGroup();
                break;
            case TokenKind::GroupEnd:
                EndGroup();
                break;
            case TokenKind::Word:
                OnWord(token);
                break;
            case TokenKind::Symbol:
                OnSymbol(token.text.front());
                break;
            case TokenKind::Hex: {
                const char byte = static_cast<char>(token.number);
                OnText({&byte, 1});
                break;
            }
            case TokenKind::Text:
                OnText(token.text);
                break;
            case TokenKind::Binary:
                SkipsForUnicode();
                break;
            case TokenKind::End:
                break;
        }
    }
    FlushText();
    return builder_.Finish();
}

void Parser::StartGroup() {
    FlushText();
    toSkip_ = 0;
    if (outer_.size() == kMostGroups)
        ++depthBeyond_;
    else
        outer_.push_back(now_);
    now_.style = 0;
}

void Parser::EndGroup() {
    FlushText();
    toSkip_ = 0;
    if (depthBeyond_ > 0) {
        --depthBeyond_;
        return;
    }
    if (outer_.empty()) return;
    const Group ended = std::exchange(now_, std::move(outer_.back()));
    outer_.pop_back();
    if (ended.destination == Destination::FontTable) EndFontEntry();
    if (ended.destination == Destination::StyleSheet && now_.destination == ended.destination && ended.style == 0)
        plain_ = ended.character;
    if (ended.destination != now_.destination) EndTable(ended.destination);
}

void Parser::OnText(std::string_view bytes) {
    const auto skipped = std::min(bytes.size(), static_cast<std::size_t>(toSkip_));
    toSkip_ -= static_cast<int>(skipped);
    bytes.remove_prefix(skipped);
    if (now_.destination != Destination::Body) return OnTableText(bytes);
    const bool isInDocument = !outer_.empty();  // a mark may stand before it, and anything behind
    if (now_.isHidden || bytes.empty() || !isInDocument) return;
    if (decoder_.IsEmpty() && IsAscii(bytes) && static_cast<unsigned char>(bytes.front()) >= 0x20)
        builder_.AddText(bytes, now_.character, now_.paragraph);
    else
        decoder_.AddBytes(bytes, CodePage());
}

void Parser::FlushText() {
    if (!decoder_.IsEmpty()) builder_.AddText(decoder_.Take(), now_.character, now_.paragraph);
}

int Parser::CodePage() const {
    return now_.character.font == 0 ? codePage_ : builder_.Draft().fonts[now_.character.font].codePage;
}

void Parser::OnSymbol(char symbol) {
    FlushText();
    // Whether it is known or not, the group is one that readers may leave out; the ones that are shown have no such
    // mark.
    if (symbol == '*') return Act(Destination::Skipped, {});
    if (SkipsForUnicode()) return;
    switch (symbol) {
        case '\r':
        case '\n':
            return Act(EndWord::Paragraph, {});
        case '\t':
            return Act(NamedCharacter{"\t"}, {});
        case '~':
            return Act(NamedCharacter{"\xC2\xA0"}, {});
        case '_':
            return Act(NamedCharacter{"\xE2\x80\x91"}, {});
        case '\\':
        case '{':
        case '}':
            return OnText({&symbol, 1});
        default:
            return;
    }
}

bool Parser::SkipsForUnicode() {
    if (toSkip_ == 0) return false;
    --toSkip_;
    return true;
}

void Parser::OnWord(const Token& token) {
    const ControlWord* word = FindControlWord(token.text);
    const auto* documentWord = word == nullptr ? nullptr : std::get_if<DocumentWord>(word);
    // Units of UTF-16 gather in the decoder until a character is whole.
    const bool isUnit = documentWord != nullptr && *documentWord == DocumentWord::UnicodeUnit;
    if (!isUnit) {
        FlushText();
        if (SkipsForUnicode()) return;
    }
    if (word == nullptr || now_.destination == Destination::Skipped) return;
    const Parameter parameter{token.hasNumber, token.number};
    std::visit([&](const auto& known) { Act(known, parameter); }, *word);
}

void Parser::Act(CharacterWord word, Parameter parameter) {
    if (now_.destination == Destination::FontTable && word == CharacterWord::Font) {
        EndFontEntry();
        fontEntry_.number = parameter.number;
    }
    if (now_.destination != Destination::Body && now_.destination != Destination::StyleSheet) return;
    switch (word) {
        case CharacterWord::Plain:
            now_.character = plain_;
            now_.isHidden = false;
            break;
        case CharacterWord::Font:
            now_.character.font = FontOf(parameter.number);
            break;
        case CharacterWord::Hidden:
            now_.isHidden = parameter.IsOn();
            break;
        default:
            ApplyWord(word, parameter, now_.character);
    }
}

void Parser::Act(ParagraphWord word, Parameter parameter) {
    if (now_.destination != Destination::Body) return;
    ApplyWord(word, parameter, now_.paragraph, now_.nextTab);
    builder_.ChangeParagraph(now_.paragraph);
    if (word == ParagraphWord::Tab) tokens_.SkipFraction();
}

void Parser::Act(RowWord word, Parameter parameter) {
    if (now_.destination != Destination::Body) return;
    if (word == RowWord::StartDefinition) return builder_.StartRowDefinition(now_.character);
    ApplyWord(word, parameter, builder_.RowDefinition());
    tokens_.SkipFraction();
}

void Parser::Act(EndWord word, Parameter) {
    if (now_.destination != Destination::Body) return;
    switch (word) {
        case EndWord::Line:
            return builder_.AddText("\n", now_.character, now_.paragraph);
        case EndWord::Paragraph:
        case EndWord::NestedCell:
            return builder_.EndParagraph(now_.paragraph, now_.character);
        case EndWord::Cell:
            return builder_.EndCell(now_.paragraph, now_.character);
        case EndWord::Row:
            return builder_.EndRow(now_.paragraph, now_.character);
        case EndWord::Page:
            return builder_.BreakPage(now_.character);
        case EndWord::Section:
            return builder_.StartSection(now_.paragraph, now_.character, builder_.Draft().sections.back().geometry);
    }
}

void Parser::Act(SheetWord word, Parameter parameter) {
    // The sheet's measures may stand among the information about the document.
    if (now_.destination != Destination::Body && now_.destination != Destination::Information) return;
    ApplyWord(word.measure, parameter, builder_.Draft().sections.back().geometry);
    if (!word.isOfSection) ApplyWord(word.measure, parameter, geometry_);
}

void Parser::Act(DocumentWord word, Parameter parameter) {
    if (now_.destination != Destination::Body) return;
    Section& section = builder_.Draft().sections.back();
    switch (word) {
        case DocumentWord::DefaultTab:
            if (parameter.number > 0) builder_.Draft().defaultTab = parameter.Twips();
            break;
        case DocumentWord::DefaultFont:
            defaultFont_ = parameter.number;
            break;
        case DocumentWord::AnsiCodePage:
            if (parameter.number > 0) codePage_ = parameter.number;
            break;
        case DocumentWord::Ansi:
            codePage_ = 1252;
            break;
        case DocumentWord::Mac:
            codePage_ = 10000;
            break;
        case DocumentWord::Pc:
            codePage_ = 437;
            break;
        case DocumentWord::Pca:
            codePage_ = 850;
            break;
        case DocumentWord::SectionReset:
            section.geometry = geometry_;
            section.startsPage = true;
            break;
        case DocumentWord::SectionStartsNoPage:
            section.startsPage = false;
            break;
        case DocumentWord::SectionStartsPage:
            section.startsPage = true;
            break;
        case DocumentWord::UnicodeUnit:
            if (!now_.isHidden) decoder_.AddUnit(parameter.number);
            toSkip_ = now_.unicodeSkip;
            break;
        case DocumentWord::UnicodeSkip:
            now_.unicodeSkip = std::clamp(parameter.Or(1), 0, 1000);
            break;
    }
}

void Parser::Act(Destination destination, Parameter) {
    if (now_.destination == Destination::Skipped) return;
    now_.destination = destination;
    if (destination == Destination::StyleSheet) now_.character = plain_;
}

void Parser::Act(NamedCharacter character, Parameter) {
    if (now_.destination == Destination::Body && !now_.isHidden)
        builder_.AddText(character.text, now_.character, now_.paragraph);
}

void Parser::Act(TableWord word, Parameter parameter) {
    if (now_.destination == Destination::Body) return;
    const auto part = static_cast<std::uint8_t>(std::clamp(parameter.number, 0, 255));
    const bool isFont = now_.destination == Destination::FontTable;
    hasColour_ |= now_.destination == Destination::ColourTable;
    switch (word) {
        case TableWord::Charset:
            if (isFont) fontEntry_.charset = parameter.number;
            break;
        case TableWord::CodePage:
            if (isFont) fontEntry_.codePage = parameter.number;
            break;
        case TableWord::Red:
            colour_.red = part;
            break;
        case TableWord::Green:
            colour_.green = part;
            break;
        case TableWord::Blue:
            colour_.blue = part;
            break;
        case TableWord::Style:
            now_.style = parameter.number;
            break;
    }
}

void Parser::OnTableText(std::string_view bytes) {
    for (const char c : bytes) {
        if (now_.destination == Destination::FontTable) {
            if (c == ';')
                EndFontEntry();
            else if (fontEntry_.name.size() < kLongestFontName)
                fontEntry_.name += c;
        } else if (now_.destination == Destination::ColourTable && c == ';') {
            auto& colours = builder_.Draft().colours;
            // The document begins with the automatic colour, as tables do; one that doesn't replaces it.
            if (!hasFirstColour_) colours.clear();
            hasFirstColour_ = true;
            if (colours.size() < kMostColours)
                colours.push_back(hasColour_ ? std::optional<Rgb>(colour_) : std::nullopt);
            colour_ = {};
            hasColour_ = false;
        }
    }
}

void Parser::EndFontEntry() {
    FontEntry entry = std::exchange(fontEntry_, {});
    const std::size_t start = entry.name.find_first_not_of(' ');
    auto& fonts = builder_.Draft().fonts;
    if (start == std::string::npos || fonts.size() == kMostFonts) return;
    const int codePage = entry.codePage > 0 ? entry.codePage : CodePageOfCharset(entry.charset, codePage_);
    entry.name.erase(entry.name.find_last_not_of(' ') + 1).erase(0, start);
    fonts.push_back({Utf8FromCodePage(entry.name, codePage), codePage});
    fontOfNumber_.insert_or_assign(entry.number, static_cast<std::uint16_t>(fonts.size() - 1));
}

void Parser::EndTable(Destination ended) {
    if (ended == Destination::FontTable) plain_.font = FontOf(defaultFont_);
    // The document's text begins with what the tables before it settled.
    const bool settles = ended == Destination::FontTable || ended == Destination::StyleSheet;
    if (settles && builder_.IsEmpty() && now_.destination == Destination::Body) now_.character = plain_;
}

std::uint16_t Parser::FontOf(int number) const {
    const auto found = fontOfNumber_.find(number);
    return found == fontOfNumber_.end() ? std::uint16_t{0} : found->second;
}

}  // namespace quillform::richtext
