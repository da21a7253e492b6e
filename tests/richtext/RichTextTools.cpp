#include "richtext/RichTextTools.h"

#include <cmath>

#include "platform/Text.h"
#include "richtext/PageFlow.h"
#include "richtext/ReadRichText.h"

namespace quillform::richtext {

namespace {

std::string LooksOf(const Document& document, const CharacterFormat& format) {
    std::string looks = "<" + document.fonts[format.font].name;
    looks += " " + std::to_string(format.halfPoints / 2) + (format.halfPoints % 2 != 0 ? ".5" : "");
    if (format.bold) looks += " b";
    if (format.italic) looks += " i";
    if (format.underline) looks += " u";
    if (format.foreColour != 0) looks += " cf" + std::to_string(format.foreColour);
    if (format.backColour != 0) looks += " cb" + std::to_string(format.backColour);
    return looks + ">";
}

class Marker {
public:
    Marker(const Document& document, bool showsLooks) : document_(document), showsLooks_(showsLooks) {}

    std::string Text() {
        for (const Block& block : document_.blocks) {
            if (block.kind == BlockKind::Paragraph) AddParagraph(document_.paragraphs[block.index]);
            if (block.kind == BlockKind::Row) AddRow(document_.rows[block.index]);
            if (block.kind == BlockKind::PageBreak) text_ += '=';
        }
        return text_;
    }

private:
    void AddRow(const Row& row) {
        for (std::uint32_t c = 0; c < row.cellCount; ++c) {
            const Cell& cell = document_.cells[row.firstCell + c];
            for (std::uint32_t p = 0; p < cell.paragraphCount; ++p)
                AddParagraph(document_.paragraphs[cell.firstParagraph + p]);
            text_.back() = '/';
        }
        text_ += '#';
    }
    void AddParagraph(const Paragraph& paragraph) {
        for (std::uint32_t i = 0; i < paragraph.runCount; ++i) {
            const Run& run = document_.runs[paragraph.firstRun + i];
            const std::string looks = LooksOf(document_, document_.characterFormats[run.format]);
            if (showsLooks_ && looks != looks_) text_ += looks_ = looks;
            for (const char c : document_.TextOf(run)) text_ += c == '\t' ? '>' : c == '\n' ? '^' : c;
        }
        text_ += '|';
    }

    const Document& document_;
    bool showsLooks_;
    std::string looks_;
    std::string text_;
};

std::string Number(double twips) { return std::to_string(std::lround(twips)); }

}  // namespace

FontId SquareMeasure::Font(const FontSpec& spec) {
    sizes_.push_back(spec.size);
    return static_cast<FontId>(sizes_.size() - 1);
}

double SquareMeasure::TextWidth(FontId font, std::string_view text) const {
    return 12 * SizeOf(font) * static_cast<double>(CountCharacters(text));
}

std::string Marked(const Document& document) { return Marker(document, true).Text(); }
std::string Shape(const Document& document) { return Marker(document, false).Text(); }
std::string Shape(std::string_view rtf) { return Shape(ReadRichText(rtf)); }

std::string Laid(std::string_view rtf) {
    const Document document = ReadRichText(rtf);
    SquareMeasure measure;
    PageFlow flow(document, measure);
    std::string out;
    SheetPage page;
    for (bool isFirst = true; flow.Next(page); isFirst = false) {
        if (!isFirst) out += "-\n";
        for (const SheetPage::Text& text : page.texts)
            out += Number(text.x) + " " + Number(text.y) + " " + std::string(page.CharactersOf(text)) + "\n";
        for (const SheetPage::Box& box : page.boxes)
            out += Number(box.left) + " " + Number(box.top) + " " + Number(box.width) + " " + Number(box.height) + " " +
                   std::to_string(box.colour.red) + "," + std::to_string(box.colour.green) + "," +
                   std::to_string(box.colour.blue) + "\n";
    }
    return out;
}

std::string Frame(bool isLandscape) {
    std::string frame =
        "{\\rtf1\\ansi \\deff4\\deflang1033{\\fonttbl{\\f1\\fcharset0\\fprq2 Arial;}{\\f2\\fcharset0\\fprq2 Courier "
        "New;}}\r\n"
        "{\\colortbl;\\red0\\green0\\blue0;\\red0\\green0\\blue128;\r\n\\red255\\green255\\blue255;}\r\n"
        "{\\stylesheet{\\f4\\fs20 \\snext0 Normal;}{\\*\\cs10 \\additive Default Paragraph Font;}}{\\info{\\author "
        "Project1}{\\creatim\\yr1999\\mo3\\dy4\\hr05\\min06}{\\version1}{\\edmins3}{\\nofpages0}{\\nofwords0}"
        "{\\deftab15000}\r\n{\\nofchars0}{\\vern49203}";
    frame += isLandscape ? "\\paperw15840 \\paperh12240" : "\\paperw12240 \\paperh15840";
    return frame +
           " \\margl720 \\margr720 \\margt720 \\margb720}\\widowctrl\\ftnbj\\aenddoc\\formshade \\fet0\\sectd \\linex0"
           "\\endnhere {\\*\\pnseclvl1\\pnucrm\\pnstart1\\pnindent720\\pnhang{\\pntxta .}}{\\*\\pnseclvl5\\pndec"
           "\\pnstart1\\pnindent720\\pnhang{\\pntxtb (}{\\pntxta )}}\r\n";
}

}  // namespace quillform::richtext
