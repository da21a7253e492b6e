#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quillform {

/// Output types by their letter; what a run makes.
enum class OutputType : char {
    Printer = 'P',
    Screen = 'D',
    Text = 'T',
    RichText = 'R',
    CommaSeparated = 'C',
    AccessDatabase = 'M',
    WordMerge = 'W',
    WordPerfectMerge = 'E',
};

/// Output type of a report option 0 to 10 (`intOutputType`); Printer for any other number.
OutputType OutputTypeOfOption(int reportOption);

enum class JoinRule { Inner = 0, Left = 1, Right = 2 };
/// 0 inner, 1 left, any other value right.
JoinRule JoinRuleOf(int joinType);

/// The settings of a report, kept with its layout. Lengths of labels are inches.
struct ReportSettings {
    bool boolPageBreak1 = false;      ///< new page after a primary group
    std::int16_t intSpaces1 = 0;      ///< blank lines after a primary group
    std::int16_t intCharChange1 = 0;  ///< leading characters compared for a primary break; 0 never breaks
    bool boolPageBreak2 = false;      ///< the same for the secondary group
    std::int16_t intSpaces2 = 0;
    std::int16_t intCharChange2 = 0;
    std::int16_t intOutputType = 0;          ///< 0 to 10, see OutputTypeOfOption
    std::array<std::string, 8> strDatabase;  ///< paths 1 to 7 (entry 0 is unused); 1 is the report database
    std::int16_t intDatabaseCount = 0;
    std::int16_t intJoinType = 0;     ///< see JoinRuleOf
    std::int16_t intOrientation = 1;  ///< 0 landscape, anything else portrait
    std::int16_t intPaperSize = 1;    ///< the printer's paper number
    bool boolLabels = false;
    float sngLabelWidth = 0;
    float sngLabelHeight = 0;
    std::int16_t intLabelsAcross = 0;
    std::int16_t intLabelsDown = 0;
    float sngHorizontalGap = 0;
    float sngVerticalGap = 0;
    float sngTopMargin = 0;
    float sngLeftMargin = 0;
    bool boolCourier = false;  ///< screen output in "Courier New"

    friend bool operator==(const ReportSettings&, const ReportSettings&) = default;
};

}  // namespace quillform
