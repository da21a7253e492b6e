#include "richtext/Tables.h"

#include <algorithm>

namespace quillform::richtext {

namespace {

constexpr std::size_t kMostCells = 64;
constexpr int kCellWidth = 1440;  // of cells that the definition has no edge for

}  // namespace

void RowBuilder::StartDefinition() {
    definition_ = {};
    isDefined_ = true;
}

bool RowBuilder::HasText() const {
    return std::any_of(document_.paragraphs.begin() + static_cast<std::ptrdiff_t>(rowStart_),
                       document_.paragraphs.end(), [](const Paragraph& paragraph) { return paragraph.runCount > 0; });
}

void RowBuilder::CloseCell() {
    if (document_.cells.size() - firstCell_ == kMostCells) {
        Cell& last = document_.cells.back();
        last.paragraphCount = static_cast<std::uint32_t>(document_.paragraphs.size()) - last.firstParagraph;
    } else {
        document_.cells.push_back({static_cast<std::uint32_t>(cellStart_),
                                   static_cast<std::uint32_t>(document_.paragraphs.size() - cellStart_)});
    }
    cellStart_ = document_.paragraphs.size();
}

void RowBuilder::CloseRow() {
    if (HasOpenCell()) CloseCell();
    if (const std::size_t count = document_.cells.size() - firstCell_; count > 0) {
        const RowFormat format = FormatFor(count);
        if (document_.rowFormats.empty() || document_.rowFormats.back() != format)
            document_.rowFormats.push_back(format);
        document_.rows.push_back({static_cast<std::uint32_t>(document_.rowFormats.size() - 1),
                                  static_cast<std::uint32_t>(firstCell_), static_cast<std::uint32_t>(count)});
        document_.blocks.push_back({BlockKind::Row, static_cast<std::uint32_t>(document_.rows.size() - 1)});
    }
    if (breaksPage_) document_.blocks.push_back({BlockKind::PageBreak, 0});
    breaksPage_ = false;
    firstCell_ = document_.cells.size();
    PassOver();
}

RowFormat RowBuilder::FormatFor(std::size_t cellCount) const {
    RowFormat format = definition_;
    int edge = format.left;
    for (int& each : format.edges) edge = each = std::max(each, edge);
    for (std::size_t i = format.edges.size(); i < cellCount; ++i) format.edges.push_back(edge += kCellWidth);
    return format;
}

}  // namespace quillform::richtext
