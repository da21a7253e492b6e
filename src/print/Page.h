#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/PrintTarget.h"

namespace quillform::print {

/// What one page holds, in the order of the calls. Twips from the corner that positions count from.
class Page {
public:
    struct Text {
        float x = 0;
        float y = 0;  ///< upper edge of the line
        FontId font{};
        std::uint32_t start = 0;  ///< in the page's characters
        std::uint32_t length = 0;
        std::uint32_t row = 0;  ///< number of the row it belongs to, counted over the document
        std::uint8_t colour = 0;
        PageRole role = PageRole::Detail;
    };
    struct Box {
        float left = 0;
        float top = 0;
        float width = 0;
        float height = 0;
        std::uint8_t colour = 0;
    };

    void AddText(Text text, std::string_view characters);
    /// Corners in any order.
    void AddBox(double x1, double y1, double x2, double y2, int colour);
    /// Empties the page and keeps its memory for the next one.
    void Clear();

    const std::vector<Text>& Texts() const { return texts_; }
    const std::vector<Box>& Boxes() const { return boxes_; }
    std::string_view CharactersOf(const Text& text) const {
        return std::string_view(characters_).substr(text.start, text.length);
    }
    /// Whether anything on it leaves a mark.
    bool IsBlank() const { return characters_.empty() && boxes_.empty(); }

private:
    std::vector<Text> texts_;
    std::vector<Box> boxes_;
    std::string characters_;
};

/// Keeps a coordinate finite and within what readers of documents can take; a broken layout may hold any number.
double UsableTwips(double twips);

}  // namespace quillform::print
