#pragma once

#include <string_view>

#include "designer/DesignSurface.h"

namespace quillform::designer {

/// Which of an item's colours a swatch sets.
enum class ColorTarget { Foreground, Background };

enum class Alignment : char { Left = 'L', Center = 'C', Right = 'R' };
/// "L" and "C" to the letter; anything else is right.
Alignment AlignmentOf(std::string_view letter);

/// The styles that have a button of their own.
enum class FontStyle { Bold, Italic, Underline };

/// The looks of the selected item and of the page. With no item selected the commands do nothing.
class ItemFormatting {
public:
    explicit ItemFormatting(DesignSurface& surface) : surface_(surface) {}

    /// `color`: 0 to 15.
    void ColorPic_Click(int color, ColorTarget target);
    /// Here the text is drawn with its outer blanks; the next command takes them off again.
    void Toolbar2_ButtonClick(Alignment alignment);
    /// The picture keeps its size, so a bolder text may be cut.
    void Toolbar3_ButtonClick(FontStyle style, bool isDown);
    /// Name, size, bold and italic for the selected item; underline stays. A letter higher than two rows is made
    /// smaller point by point. The picture takes the width of its Length in the font, and one or two rows. False if no
    /// item is selected.
    bool ApplyItemFont(const FontSpec& font);
    /// Turns the page; the items stay where they are.
    void Toolbar4_ButtonClick(bool isLandscape);

private:
    void FitFont(clssFields& item);

    DesignSurface& surface_;
};

}  // namespace quillform::designer
