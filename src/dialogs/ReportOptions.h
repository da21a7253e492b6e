#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "dialogs/LabelMeasures.h"
#include "model/ReportSettings.h"

namespace quillform::dialogs {

/// By the number of the output type.
inline constexpr std::array<std::string_view, 11> outputCaptions{
    "Print Report to Printer",           "Display Report to Screen",
    "Save Report to File (TXT)",         "Rich Text File (RTF)",
    "Offload Merge File (CSV)",          "Microsoft Access 1.0 Format (MDB)",
    "Microsoft Access 1.1 Format (MDB)", "Microsoft Access 2.0/2.5 Format(MDB)",
    "Microsoft Access 3.0 Format(MDB)",  "Word for Windows Mail Merge (DOC)",
    "WordPerfect Mail Merge (DOC)",
};
inline constexpr int screenOption = 1;      ///< the one that can be shown in "Courier New"
inline constexpr int labelOptionCount = 2;  ///< labels go to the first so many only

/// By the number of the join rule.
inline constexpr std::array<std::string_view, 3> joinCaptions{
    "Contained in both tables",
    "Contained in 1st tables",
    "Contained in 2nd tables",
};

/// The captions of a group's settings.
struct GroupCaptions {
    std::string_view frame, pageBreak, spaces, charChange;
};
/// Primary, secondary. The secondary page break says "Primary", too: users know the tab so.
inline constexpr std::array<GroupCaptions, 2> groupCaptions{{
    {"Primary Group...", " Page Break after Primary Group", " # of spaces after group",
     "# of characters to change before group breaks"},
    {"Secondary Group", " Page Break after Primary Group", " # of spaces after group",
     "# of characters to change before group breaks"},
}};

inline constexpr std::string_view groupingTab = "Grouping";
inline constexpr std::string_view labelTab = "Label Type";
inline constexpr std::size_t databaseBoxes = 7;

/// What the controls of the report options hold. The members have the controls' names.
struct OptionControls {
    std::optional<int> RptOpt;  ///< the selected one of an array; empty if none is
    bool chkDisplayOption = false;
    std::array<bool, 2> Chk{};
    std::array<std::string, 2> NumSpc;
    std::array<std::string, 2> CharChange;
    std::optional<int> optJoin;
    std::array<std::string, databaseBoxes> Database;
    std::optional<int> optPaperSize;
    MeasureTexts Custom;

    friend bool operator==(const OptionControls&, const OptionControls&) = default;
};

/// The controls as they show the settings. A number that no control stands for leaves its array without a selection.
OptionControls ShowSettings(const ReportSettings& settings);

/// A box whose number no setting can hold.
struct OptionRefusal {
    std::string box;  ///< "NumSpc_0", "Custom_3"
    std::string message;
};
/// Stores what the controls hold, or, with a refusal, nothing at all. What no control stands for stays: entries whose
/// box is empty, numbers of arrays without a selection. A number whose text is as it was shown stays, too, since the
/// text may have fewer digits. The labels switch follows from the label measures.
std::optional<OptionRefusal> StoreSettings(const OptionControls& controls, ReportSettings& settings);

/// What the user may not expect of storing: a label measure that counts as another number, the labels switch turned.
/// Empty if there is nothing.
std::string LabelHint(const OptionControls& controls, const ReportSettings& settings);

}  // namespace quillform::dialogs
