#include "dialogs/ReportOptions.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <variant>

#include "dialogs/PaperSizes.h"
#include "platform/Numbers.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform::dialogs {

namespace {

using Whole = std::int16_t ReportSettings::*;
using Inches = float ReportSettings::*;

constexpr std::array<bool ReportSettings::*, 2> pageBreaks{&ReportSettings::boolPageBreak1,
                                                           &ReportSettings::boolPageBreak2};
constexpr std::array<Whole, 2> spaces{&ReportSettings::intSpaces1, &ReportSettings::intSpaces2};
constexpr std::array<Whole, 2> charChanges{&ReportSettings::intCharChange1, &ReportSettings::intCharChange2};
/// In the order of labelMeasures.
constexpr std::array<std::variant<Whole, Inches>, labelMeasures.size()> measures{
    &ReportSettings::intLabelsAcross,  &ReportSettings::intLabelsDown,  &ReportSettings::sngLabelHeight,
    &ReportSettings::sngLabelWidth,    &ReportSettings::sngTopMargin,   &ReportSettings::sngLeftMargin,
    &ReportSettings::sngHorizontalGap, &ReportSettings::sngVerticalGap,
};

/// A number box, for messages.
struct NumberBox {
    std::string_view array;
    std::size_t index;
    std::string_view caption, tab, frame;
};

/// Calls `visit` with each number box, its text and its setting. It serves showing and storing.
template <typename Controls, typename Settings, typename Visit>
void VisitNumbers(Controls& controls, Settings& settings, Visit visit) {
    for (std::size_t i = 0; i < groupCaptions.size(); ++i) {
        const GroupCaptions& captions = groupCaptions[i];
        visit(NumberBox{"NumSpc", i, captions.spaces, groupingTab, captions.frame}, controls.NumSpc[i],
              settings.*spaces[i]);
        visit(NumberBox{"CharChange", i, captions.charChange, groupingTab, captions.frame}, controls.CharChange[i],
              settings.*charChanges[i]);
    }
    for (std::size_t i = 0; i < labelMeasures.size(); ++i)
        std::visit(
            [&](auto member) {
                visit(NumberBox{"Custom", i, labelMeasures[i].caption, labelTab, {}}, controls.Custom[i],
                      settings.*member);
            },
            measures[i]);
}

std::string NumberText(std::int16_t number) { return Str(static_cast<double>(number)); }
std::string NumberText(float number) { return Str(number); }

bool IsAsShown(std::string_view text, auto number) { return Trim(text) == Trim(NumberText(number)); }

bool Read(std::string_view text, std::int16_t& number) try {
    if (!IsAsShown(text, number)) number = CInt(Val(text));
    return true;
} catch (const RunTimeError&) {
    return false;
}

bool Read(std::string_view text, float& number) try {
    if (IsAsShown(text, number)) return true;
    const double read = Val(text);
    if (std::abs(read) > static_cast<double>(std::numeric_limits<float>::max())) return false;
    number = static_cast<float>(read);
    return true;
} catch (const RunTimeError&) {
    return false;
}

std::string_view RangeOf(std::int16_t) { return "a whole number from -32768 to 32767"; }
std::string_view RangeOf(float) { return "a number below 3.4E+38"; }

OptionRefusal Refuse(const NumberBox& box, std::string_view text, std::string_view range) {
    const auto quoted = [](std::string_view part) { return "\"" + std::string(part) + "\""; };
    const std::string frame = box.frame.empty() ? std::string() : " of " + quoted(box.frame);
    return {std::string(box.array) + "_" + std::to_string(box.index),
            quoted(text) + " is too large for " + quoted(Bare(box.caption)) + frame + " on the tab " + quoted(box.tab) +
                ": it takes " + std::string(range) + "."};
}

/// The number, if a control of the array stands for it.
template <typename Captions>
std::optional<int> Among(const Captions& captions, int number) {
    if (number < 0 || number >= static_cast<int>(captions.size())) return std::nullopt;
    return number;
}

std::optional<int> PaperButton(int number) {
    const bool isThere = std::any_of(paperSizes.begin(), paperSizes.end(),
                                     [number](const PaperSize& size) { return size.number == number; });
    return isThere ? std::optional(number) : std::nullopt;
}

void Keep(const std::optional<int>& selected, std::int16_t& setting) {
    if (selected) setting = static_cast<std::int16_t>(*selected);
}

void StoreDatabases(const OptionControls& controls, ReportSettings& settings) {
    for (std::size_t i = 0; i < databaseBoxes; ++i) {
        if (Trim(controls.Database[i]).empty()) continue;
        settings.intDatabaseCount = static_cast<std::int16_t>(i + 1);
        settings.strDatabase[i + 1] = controls.Database[i];
    }
}

bool MakesLabels(const ReportSettings& settings) {
    return settings.sngLabelHeight != 0 && settings.intLabelsAcross > 0 && settings.intLabelsDown > 0 &&
           settings.sngLabelWidth != 0;
}

}  // namespace

OptionControls ShowSettings(const ReportSettings& settings) {
    OptionControls controls;
    controls.RptOpt = Among(outputCaptions, settings.intOutputType);
    controls.chkDisplayOption = settings.intOutputType == screenOption && settings.boolCourier;
    for (std::size_t i = 0; i < pageBreaks.size(); ++i) controls.Chk[i] = settings.*pageBreaks[i];
    controls.optJoin = Among(joinCaptions, settings.intJoinType);
    const int count = std::clamp<int>(settings.intDatabaseCount, 0, databaseBoxes);
    std::copy_n(settings.strDatabase.begin() + 1, count, controls.Database.begin());
    controls.optPaperSize = PaperButton(settings.intPaperSize);
    VisitNumbers(controls, settings,
                 [](const NumberBox&, std::string& text, const auto& number) { text = NumberText(number); });
    return controls;
}

std::optional<OptionRefusal> StoreSettings(const OptionControls& controls, ReportSettings& settings) {
    ReportSettings stored = settings;
    StoreDatabases(controls, stored);
    Keep(controls.RptOpt, stored.intOutputType);
    stored.boolCourier = controls.chkDisplayOption;
    Keep(controls.optJoin, stored.intJoinType);
    Keep(controls.optPaperSize, stored.intPaperSize);
    for (std::size_t i = 0; i < pageBreaks.size(); ++i) stored.*pageBreaks[i] = controls.Chk[i];
    std::optional<OptionRefusal> refusal;
    VisitNumbers(controls, stored, [&](const NumberBox& box, const std::string& text, auto& number) {
        if (!refusal && !Read(text, number)) refusal = Refuse(box, text, RangeOf(number));
    });
    if (refusal) return refusal;
    stored.boolLabels = MakesLabels(stored);
    settings = std::move(stored);
    return std::nullopt;
}

std::string LabelHint(const OptionControls& controls, const ReportSettings& settings) {
    if (std::string problem = ReadingProblem(controls.Custom); !problem.empty()) return problem;
    ReportSettings stored = settings;
    if (StoreSettings(controls, stored) || stored.boolLabels == settings.boolLabels) return {};
    return stored.boolLabels ? "Save will turn labels on: the tab \"Label Type\" describes a sheet of labels."
                             : "Save will turn labels off: the tab \"Label Type\" describes no sheet of labels.";
}

}  // namespace quillform::dialogs
