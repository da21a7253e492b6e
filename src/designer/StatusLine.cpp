#include "designer/StatusLine.h"

#include <cmath>
#include <cstdio>
#include <system_error>

#include "model/DesignGrid.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform::designer {

namespace {

constexpr double twipsPerInch = 1440;

std::string Inches(double cells, double twipsPerCell) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", cells * twipsPerCell / twipsPerInch);
    return text;
}

}  // namespace

std::string KindOf(const clssFields& item) {
    if (IsDataItem(item)) return "data field";
    switch (item.Code) {
        case ItemCode::HeadingText:
            return "page heading text";
        case ItemCode::Text:
            return "text";
        case ItemCode::PageNumber:
            return "page number";
        case ItemCode::LongDate:
        case ItemCode::UsDate:
        case ItemCode::YearFirstDate:
            return "date";
        case ItemCode::LongTime:
        case ItemCode::ShortTime:
            return "time";
        case ItemCode::RecordCount:
            return "record count";
        default:
            return "item " + std::to_string(item.Code);
    }
}

std::string DescribeItem(const clssFields& item) {
    const bool isOneColumn = item.Length == 1;
    return "\"" + std::string(Trim(item.Text)) + "\": " + KindOf(item) + ", " + std::to_string(item.Length) +
           (isOneColumn ? " column wide, " : " columns wide, ") + item.FontName + " " + TrimmedStr(item.FontSize);
}

std::string DescribePlace(double left, double top) {
    return "Column " + TrimmedStr(std::floor(left)) + ", row " + TrimmedStr(std::floor(top)) + "  (" +
           Inches(left, intColumnTwips) + " x " + Inches(top, intRowTwips) + " in)";
}

std::string DescribeFile(const std::filesystem::path& file) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(file, error);
    const std::filesystem::path whole = (error ? file : absolute).lexically_normal();
    return whole.filename().string() + ", folder " + whole.parent_path().string();
}

}  // namespace quillform::designer
