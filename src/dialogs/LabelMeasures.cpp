#include "dialogs/LabelMeasures.h"

#include <cmath>

#include "platform/Numbers.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform::dialogs {

namespace {

/// Far above any sheet.
constexpr double mostInches = 10000;

/// A text such as the point of ".5", behind which the digits are still to come.
bool IsBegun(const std::string& text) { return text.find_first_not_of("+-.") == std::string::npos; }

}  // namespace

std::string_view Bare(std::string_view caption) {
    caption = Trim(caption);
    if (caption.ends_with(':')) caption.remove_suffix(1);
    return caption;
}

std::optional<double> StoredMeasure(const std::string& text) {
    try {
        return Val(text);
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

std::string MeasureText(double number) {
    std::string text;
    AppendGeneralNumber(static_cast<float>(number), text);
    return text;
}

std::string ReadingProblem(const MeasureTexts& texts) {
    for (std::size_t box = 0; box < texts.size(); ++box) {
        const std::string& text = texts[box];
        if (IsBegun(text)) continue;
        const std::string quoted = std::string(Bare(labelMeasures[box].caption)) + ": \"" + text + "\"";
        const std::optional<double> stored = StoredMeasure(text);
        if (!stored || std::abs(*stored) > mostInches) return quoted + " is too large.";
        if (ParseNumber(text) != stored)
            return quoted + " counts as " + MeasureText(*stored) + ".  Write the number with a point, such as 1.333.";
    }
    return {};
}

}  // namespace quillform::dialogs
