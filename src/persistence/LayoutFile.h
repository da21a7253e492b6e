#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "model/Layout.h"
#include "model/TextMeasure.h"
#include "model/UserInterface.h"

namespace quillform {

/// Version that layout files are written with; readers don't look at it.
inline constexpr int layoutMajorVersion = 1;
inline constexpr int layoutMinorVersion = 0;
inline constexpr int layoutRevision = 0;

/// A line of a layout file that wasn't read as it is meant; the load went on.
struct LayoutProblem {
    int line;  ///< from 1
    std::string text;
};

struct LoadOptions {
    /// Called when the settings are read, before the rest of the file: tells of a database that is gone or not
    /// configured.
    std::function<void()> checkDatabase;
    /// Where the problems go; null if nobody wants them.
    std::vector<LayoutProblem>* problems = nullptr;
};

/// Replaces the layout by a file's content. A file that isn't there is said to the user, and the layout stays. A value
/// that can't be read takes its fallback; a line of no known kind is passed over. RunTimeError if the file exists and
/// can't be read. True if a layout was loaded.
bool LoadLayout(const std::string& fileName, Layout& layout, TextMeasure& measure, UserInterface& user,
                const LoadOptions& options = {});

/// Writes the layout, whole or not at all, and says so to the user; what a failure is, too. True if it was written.
/// Text in the Windows character set 1252, lines that end in carriage return and line feed.
bool SaveLayout(const std::string& fileName, const Layout& layout, UserInterface& user);

/// The text of a layout file, in UTF-8. `hasReplaced`, where given, tells whether a value held a character that the
/// format can't write.
std::string LayoutText(const Layout& layout, bool* hasReplaced = nullptr);

/// One record line of a layout, without its line end: item, query line, settings.
std::string ItemRecord(const clssFields& item);
std::string QueryRecord(const clssQuery& line);
std::string SettingsRecord(const ReportSettings& settings);

}  // namespace quillform
