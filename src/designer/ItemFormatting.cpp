#include "designer/ItemFormatting.h"

#include "model/DesignGrid.h"
#include "platform/Text.h"

namespace quillform::designer {

namespace {

constexpr double mostRows = 2 * intGridY;

}  // namespace

Alignment AlignmentOf(std::string_view letter) {
    if (letter == "L") return Alignment::Left;
    return letter == "C" ? Alignment::Center : Alignment::Right;
}

void ItemFormatting::ColorPic_Click(int color, ColorTarget target) {
    clssFields* const item = surface_.SelectedItem();
    if (surface_.intSelected < 1 || !item) return;
    (target == ColorTarget::Background ? item->FontBackColor : item->FontForeColor) = color;
    surface_.SetPictureColors(item->Index, item->FontForeColor, item->FontBackColor);
    surface_.DrawItemText(item->Index);
}

void ItemFormatting::Toolbar2_ButtonClick(Alignment alignment) {
    clssFields* const item = surface_.SelectedItem();
    if (surface_.intSelected < 1 || !item) return;
    item->FontAllignment = static_cast<char>(alignment);
    surface_.DrawText(*item, item->Text);
}

void ItemFormatting::Toolbar3_ButtonClick(FontStyle style, bool isDown) {
    clssFields* const item = surface_.SelectedItem();
    const Picture* const picture = item ? surface_.Pic().Find(item->Index) : nullptr;
    if (!picture) return;
    switch (style) {
        case FontStyle::Bold:
            item->FontBold = isDown;
            break;
        case FontStyle::Italic:
            item->FontItalic = isDown;
            break;
        case FontStyle::Underline:
            item->FontUnderline = isDown;
            break;
    }
    FontSpec font = picture->font;
    font.bold = item->FontBold;
    font.italic = item->FontItalic;
    font.underline = item->FontUnderline;
    surface_.SetPictureFont(item->Index, font);
    surface_.DrawItemText(item->Index);
}

bool ItemFormatting::ApplyItemFont(const FontSpec& font) {
    clssFields* const item = surface_.SelectedItem();
    const Picture* const picture = item ? surface_.Pic().Find(item->Index) : nullptr;
    if (surface_.intSelected < 1 || !picture) return false;
    item->FontName = Trim(font.name);
    item->FontSize = font.size;
    item->FontBold = font.bold;
    item->FontItalic = font.italic;
    FitFont(*item);
    surface_.SizePicture(item->Index, surface_.WidthOfLength(*picture, item->Length), surface_.RowsOf(*picture));
    surface_.DrawItemText(item->Index);
    return true;
}

void ItemFormatting::FitFont(clssFields& item) {
    const Picture& picture = *surface_.Pic().Find(item.Index);
    FontSpec font = FontOf(item);
    if (item.FontName.empty()) font.name = picture.font.name;
    surface_.SetPictureFont(item.Index, font);
    while (surface_.TextHeight(picture) > mostRows && font.size > 1) {
        font.size -= 1;
        item.FontSize -= 1;
        surface_.SetPictureFont(item.Index, font);
    }
}

void ItemFormatting::Toolbar4_ButtonClick(bool isLandscape) {
    surface_.Report().settings.intOrientation = isLandscape ? 0 : 1;
    surface_.SetPageSize();
}

}  // namespace quillform::designer
