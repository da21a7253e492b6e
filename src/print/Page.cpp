#include "print/Page.h"

#include <algorithm>
#include <cmath>

namespace quillform::print {

double UsableTwips(double twips) {
    // Four times the largest sheet that the printer numbers can name.
    constexpr double kLimit = 100000;
    return std::isnan(twips) ? 0 : std::clamp(twips, -kLimit, kLimit);
}

void Page::AddText(Text text, std::string_view characters) {
    text.start = static_cast<std::uint32_t>(characters_.size());
    text.length = static_cast<std::uint32_t>(characters.size());
    characters_ += characters;
    texts_.push_back(text);
}

void Page::AddBox(double x1, double y1, double x2, double y2, int colour) {
    Box box;
    box.left = static_cast<float>(UsableTwips(std::min(x1, x2)));
    box.top = static_cast<float>(UsableTwips(std::min(y1, y2)));
    box.width = static_cast<float>(UsableTwips(std::abs(x2 - x1)));
    box.height = static_cast<float>(UsableTwips(std::abs(y2 - y1)));
    box.colour = static_cast<std::uint8_t>(std::clamp(colour, 0, 15));
    boxes_.push_back(box);
}

void Page::Clear() {
    texts_.clear();
    boxes_.clear();
    characters_.clear();
}

}  // namespace quillform::print
