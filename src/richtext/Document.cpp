#include "richtext/Document.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace quillform::richtext {

namespace {

constexpr std::size_t kMostTabs = 64;
constexpr int kLeastSheet = 1440;
constexpr int kMostSheet = 22 * 1440;
constexpr int kLeastText = 720;

// Two margins of one direction.
void KeepRoom(int sheet, int& near, int& far) {
    near = std::clamp(near, 0, sheet);
    far = std::clamp(far, 0, sheet);
    if (sheet - near - far < kLeastText) near = far = 0;
}

}  // namespace

void ParagraphFormat::AddTab(TabStop stop) {
    auto list = tabs ? *tabs : std::vector<TabStop>{};
    const auto at = std::lower_bound(list.begin(), list.end(), stop.position,
                                     [](const TabStop& known, int position) { return known.position < position; });
    if (at != list.end() && at->position == stop.position)
        *at = stop;
    else if (list.size() < kMostTabs)
        list.insert(at, stop);
    tabs = std::make_shared<const std::vector<TabStop>>(std::move(list));
}

bool operator==(const ParagraphFormat& left, const ParagraphFormat& right) {
    const auto plain = [](const ParagraphFormat& f) {
        return std::tie(f.leftIndent, f.rightIndent, f.firstIndent, f.spaceBefore, f.spaceAfter, f.lineSpacing,
                        f.isLineSpacingFactor, f.isInTable, f.alignment);
    };
    if (plain(left) != plain(right)) return false;
    if (left.tabs == right.tabs) return true;
    return left.tabs && right.tabs && *left.tabs == *right.tabs;
}

Geometry Geometry::Usable() const {
    Geometry usable = *this;
    usable.width = std::clamp(width, kLeastSheet, kMostSheet);
    usable.height = std::clamp(height, kLeastSheet, kMostSheet);
    if (isLandscape && usable.width < usable.height) std::swap(usable.width, usable.height);
    KeepRoom(usable.width, usable.left, usable.right);
    KeepRoom(usable.height, usable.top, usable.bottom);
    return usable;
}

std::optional<Rgb> Document::Colour(std::uint16_t number) const {
    return number < colours.size() ? colours[number] : std::nullopt;
}

std::optional<Rgb> Document::ShadeOf(const CharacterFormat& format) const {
    const auto colour = Colour(format.backColour);
    return colour == Rgb{255, 255, 255} ? std::nullopt : colour;
}

}  // namespace quillform::richtext
