#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "PlacedWords.h"
#include "ScratchFolder.h"
#include "print/PdfTarget.h"

namespace quillform::print {

inline constexpr double kEdge = 360;  // of the printable area, twips

struct ToolResult {
    int exitCode = -1;
    std::string output;  ///< both streams
};
bool HasTool(const std::string& name);
ToolResult RunTool(const std::string& command);
std::string Quoted(const std::filesystem::path& path);

std::vector<PlacedWord> WordsOf(const std::filesystem::path& pdf);
/// The words of the first page by their places in the printable area.
std::vector<PlacedWord> WordsOfFirstPage(const std::filesystem::path& pdf);
/// The text of all pages in reading order, without the page ends.
std::string TextOf(const std::filesystem::path& pdf);

/// The first page as pixels.
class Picture {
public:
    Picture(const std::filesystem::path& pdf, const ScratchFolder& folder);
    struct Pixel {
        int red = 0, green = 0, blue = 0;
        friend bool operator==(const Pixel&, const Pixel&) = default;
    };
    /// By twips in the printable area.
    Pixel At(double x, double y) const;
    int Count(double x1, double y1, double x2, double y2, Pixel wanted) const;

private:
    int width_ = 0, height_ = 0;
    std::string pixels_;
};

#define SKIP_WITHOUT(tool) \
    if (!HasTool(tool)) GTEST_SKIP() << "the program " << (tool) << " isn't installed"

}  // namespace quillform::print
