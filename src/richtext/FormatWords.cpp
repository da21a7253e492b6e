#include "richtext/FormatWords.h"

#include <algorithm>
#include <limits>

namespace quillform::richtext {

namespace {

constexpr int kMostTwips = 100'000;
constexpr int kMostHalfPoints = 2 * 1638;
constexpr std::size_t kMostEdges = 64;

}  // namespace

int Parameter::Twips() const { return std::clamp(number, -kMostTwips, kMostTwips); }

std::uint16_t Parameter::Index() const {
    const bool fits = number > 0 && number <= std::numeric_limits<std::uint16_t>::max();
    return fits ? static_cast<std::uint16_t>(number) : std::uint16_t{0};
}

void ApplyWord(CharacterWord word, Parameter parameter, CharacterFormat& format) {
    switch (word) {
        case CharacterWord::Size:
            format.halfPoints = static_cast<std::uint16_t>(std::clamp(parameter.Or(24), 2, kMostHalfPoints));
            break;
        case CharacterWord::ForeColour:
            format.foreColour = parameter.Index();
            break;
        case CharacterWord::BackColour:
            format.backColour = parameter.Index();
            break;
        case CharacterWord::Bold:
            format.bold = parameter.IsOn();
            break;
        case CharacterWord::Italic:
            format.italic = parameter.IsOn();
            break;
        case CharacterWord::Underline:
            format.underline = parameter.IsOn();
            break;
        case CharacterWord::NoUnderline:
            format.underline = false;
            break;
        case CharacterWord::Plain:
        case CharacterWord::Font:
        case CharacterWord::Hidden:
            break;
    }
}

void ApplyWord(ParagraphWord word, Parameter parameter, ParagraphFormat& format, TabAlignment& nextTab) {
    switch (word) {
        case ParagraphWord::Reset:
            format = {};
            nextTab = TabAlignment::Left;
            break;
        case ParagraphWord::AlignLeft:
            format.alignment = Alignment::Left;
            break;
        case ParagraphWord::AlignCentre:
            format.alignment = Alignment::Centre;
            break;
        case ParagraphWord::AlignRight:
            format.alignment = Alignment::Right;
            break;
        case ParagraphWord::LeftIndent:
            format.leftIndent = parameter.Twips();
            break;
        case ParagraphWord::RightIndent:
            format.rightIndent = parameter.Twips();
            break;
        case ParagraphWord::FirstIndent:
            format.firstIndent = parameter.Twips();
            break;
        case ParagraphWord::SpaceBefore:
            format.spaceBefore = std::max(parameter.Twips(), 0);
            break;
        case ParagraphWord::SpaceAfter:
            format.spaceAfter = std::max(parameter.Twips(), 0);
            break;
        case ParagraphWord::LineSpacing:
            format.lineSpacing = parameter.Twips();
            break;
        case ParagraphWord::LineSpacingFactor:
            format.isLineSpacingFactor = parameter.IsOn();
            break;
        case ParagraphWord::InTable:
            format.isInTable = parameter.IsOn();
            break;
        case ParagraphWord::Tab:
            format.AddTab({parameter.Twips(), nextTab});
            nextTab = TabAlignment::Left;
            break;
        case ParagraphWord::NextTabRight:
            nextTab = TabAlignment::Right;
            break;
        case ParagraphWord::NextTabCentre:
            nextTab = TabAlignment::Centre;
            break;
    }
}

void ApplyWord(RowWord word, Parameter parameter, RowFormat& format) {
    switch (word) {
        case RowWord::StartDefinition:
            break;
        case RowWord::Left:
            format.left = parameter.Twips();
            break;
        case RowWord::Gap:
            format.gap = std::max(parameter.Twips(), 0);
            break;
        case RowWord::Height:
            format.height = parameter.Twips();
            break;
        case RowWord::CellEdge:
            if (format.edges.size() < kMostEdges) format.edges.push_back(parameter.Twips());
            break;
    }
}

void ApplyWord(SheetMeasure measure, Parameter parameter, Geometry& geometry) {
    switch (measure) {
        case SheetMeasure::Width:
            geometry.width = parameter.Twips();
            break;
        case SheetMeasure::Height:
            geometry.height = parameter.Twips();
            break;
        case SheetMeasure::Left:
            geometry.left = parameter.Twips();
            break;
        case SheetMeasure::Right:
            geometry.right = parameter.Twips();
            break;
        case SheetMeasure::Top:
            geometry.top = parameter.Twips();
            break;
        case SheetMeasure::Bottom:
            geometry.bottom = parameter.Twips();
            break;
        case SheetMeasure::Landscape:
            geometry.isLandscape = parameter.IsOn();
            break;
    }
}

}  // namespace quillform::richtext
