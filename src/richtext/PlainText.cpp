#include "richtext/PlainText.h"

#include <algorithm>

namespace quillform::richtext {

namespace {

void AppendParagraph(const Document& document, const Paragraph& paragraph, std::string& out) {
    for (std::uint32_t i = 0; i < paragraph.runCount; ++i)
        out += document.TextOf(document.runs[paragraph.firstRun + i]);
}

void AppendRow(const Document& document, const Row& row, std::string& out) {
    const auto first = document.cells.begin() + row.firstCell;
    const bool isOneLine =
        std::all_of(first, first + row.cellCount, [](const Cell& cell) { return cell.paragraphCount <= 1; });
    for (std::uint32_t c = 0; c < row.cellCount; ++c) {
        if (c > 0) out += isOneLine ? '\t' : '\n';
        const Cell& cell = document.cells[row.firstCell + c];
        for (std::uint32_t p = 0; p < cell.paragraphCount; ++p) {
            if (p > 0) out += '\n';
            AppendParagraph(document, document.paragraphs[cell.firstParagraph + p], out);
        }
    }
}

}  // namespace

std::string PlainText(const Document& document) {
    std::string out;
    out.reserve(document.text.size() + document.blocks.size());
    for (const Block& block : document.blocks) {
        switch (block.kind) {
            case BlockKind::Paragraph:
                AppendParagraph(document, document.paragraphs[block.index], out);
                out += '\n';
                break;
            case BlockKind::Row:
                AppendRow(document, document.rows[block.index], out);
                out += '\n';
                break;
            case BlockKind::PageBreak:
                out += '\f';
                break;
        }
    }
    return out;
}

}  // namespace quillform::richtext
