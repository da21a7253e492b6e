#include "catalog/MaskDisplayLength.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform {

namespace {

/// How much wider than written a mask prints that holds `part`, however often it holds it.
struct Correction {
    std::string_view part;
    int width;
};
constexpr Correction corrections[] = {
    {"mmmm", 5}, {"dddd", 5}, {"ddddd", 5}, {"AM/PM", -3}, {"am/pm", -3},
    {"A/P", -2}, {"a/p", -2}, {"AMPM", -2}, {"ttttt", 3},
};

}  // namespace

std::int16_t MaskDisplayLength(std::string_view mask) {
    auto length = static_cast<double>(CountCharacters(mask));
    for (const Correction& correction : corrections)
        if (mask.find(correction.part) != std::string_view::npos) length += correction.width;
    length -= static_cast<double>(std::count(mask.begin(), mask.end(), '\\'));
    return CInt(length);
}

}  // namespace quillform
