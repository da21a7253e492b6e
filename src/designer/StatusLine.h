#pragma once

#include <filesystem>
#include <string>

#include "designer/DesignSurface.h"

namespace quillform::designer {

/// What an item is, in words: "data field", "page heading text".
std::string KindOf(const clssFields& item);

/// The item for the status line: its text, what it is, its width, its font.
std::string DescribeItem(const clssFields& item);

/// A place on the page in cells and inches: "Column 42, row 8  (3.50 x 1.33 in)". `left`, `top`: cells of the page.
std::string DescribePlace(double left, double top);

/// A file: "SALES.PDF, folder /home/me". The name comes first, since the line may have no room for the folder.
std::string DescribeFile(const std::filesystem::path& file);

}  // namespace quillform::designer
