#include "PlacedWords.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

namespace quillform {

namespace {

constexpr double twipsPerInch = 1440;
constexpr double twipsPerPoint = 20;

std::string Unescaped(std::string text) {
    for (const auto& [written, meant] :
         {std::pair("&quot;", '"'), {"&apos;", '\''}, {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}})
        for (std::size_t at = 0; (at = text.find(written, at)) != std::string::npos; ++at)
            text.replace(at, std::string_view(written).size(), 1, meant);
    return text;
}

}  // namespace

// From lines such as <word xMin="18.0" yMin="18.1" xMax="55.3" yMax="29.3">text</word>, points.
std::vector<PlacedWord> WordsIn(std::string_view boxes) {
    std::istringstream lines{std::string(boxes)};
    std::vector<PlacedWord> words;
    int page = -1;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("<page ") != std::string::npos) ++page;
        const std::size_t text = line.find("\">");
        const std::size_t end = line.find("</word>");
        if (line.find("<word ") == std::string::npos || text == std::string::npos || end == std::string::npos) continue;
        const auto twips = [&line](std::string_view name) {
            return std::stod(line.substr(line.find(name) + name.size())) * twipsPerPoint;
        };
        words.push_back({page, twips("xMin=\""), twips("yMin=\""), twips("xMax=\""), twips("yMax=\""),
                         Unescaped(line.substr(text + 2, end - text - 2))});
    }
    return words;
}

bool HasWordAt(const std::vector<PlacedWord>& words, std::string_view text, int page, double left, double top) {
    constexpr double tenthOfMillimetre = twipsPerInch / 254;
    return std::ranges::any_of(words, [&](const PlacedWord& word) {
        return word.text == text && word.page == page && std::abs(word.left - left) <= tenthOfMillimetre &&
               std::abs(word.top - top) <= tenthOfMillimetre;
    });
}

double LabelEdge(int position, double size, double gap, double margin) {
    return std::max((size + gap) * position + margin, 0.0) * twipsPerInch;
}

}  // namespace quillform
