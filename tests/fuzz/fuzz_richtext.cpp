// Rich text: whatever the bytes are, what is read can be laid out, and nothing on the pages lies outside the text.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "model/TextMeasure.h"
#include "platform/RunTimeError.h"
#include "richtext/PageFlow.h"
#include "richtext/PlainText.h"
#include "richtext/ReadRichText.h"

namespace {

using namespace quillform;

/// Letters of one width, so that no font file takes the time.
class BlockMeasure final : public TextMeasure {
public:
    FontId Font(const FontSpec& spec) override { return static_cast<FontId>(static_cast<int>(spec.size * 2)); }
    double TextWidth(FontId font, std::string_view text) const override {
        return TextHeight(font) / 2 * static_cast<double>(text.size());
    }
    double TextHeight(FontId font) const override { return 10.0 * static_cast<int>(font); }
};

void Require(bool holds) {
    if (!holds) std::abort();
}

void LayOut(const richtext::Document& document) {
    BlockMeasure measure;
    richtext::PageFlow flow(document, measure);
    richtext::SheetPage page;
    std::size_t pages = 0;
    for (; flow.Next(page); ++pages) {
        for (const auto& text : page.texts) {
            Require(text.font < flow.Fonts().size());
            Require(std::size_t{text.start} + text.length <= page.characters.size());
            Require(std::isfinite(text.x) && std::isfinite(text.y));
        }
        for (const auto& box : page.boxes) Require(box.width >= 0 && box.height >= 0);
    }
    Require(pages > 0);
    // Each page has a line, or a break asked for it.
    std::size_t lines = document.text.size() + document.blocks.size() + document.paragraphs.size();
    Require(pages <= lines + document.sections.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Most of the inputs should reach the body, so the head is given.
    std::string bytes = size > 0 && data[0] == '{' ? "" : "{\\rtf1 ";
    bytes.append(reinterpret_cast<const char*>(data), size);
    try {
        const richtext::Document document = richtext::ReadRichText(bytes);
        LayOut(document);
        Require(richtext::PlainText(document).size() <=
                document.text.size() + document.blocks.size() + document.paragraphs.size() + document.cells.size());
    } catch (const RunTimeError&) {
    }
    return 0;
}
