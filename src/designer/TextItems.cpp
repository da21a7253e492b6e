#include "designer/TextItems.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "designer/ItemPlacing.h"
#include "model/DesignGrid.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform::designer {

namespace {

constexpr double newFontSize = 9;
constexpr int white = 15;

/// The whole part, or the next whole number where that is less than what is needed.
double RaisedTo(double value, double needed) {
    const double whole = std::floor(value);
    return whole < needed ? whole + 1 : whole;
}

void SetKind(clssFields& item, TextKind kind) {
    const bool isHeading = kind == TextKind::PageHeading;
    item.Code = isHeading ? ItemCode::HeadingText : ItemCode::Text;
    item.FontForeColor = isHeading ? 1 : 5;  // dark blue, purple: so that the two are told apart on the surface
}

void SetText(clssFields& item, std::string_view text) {
    item.Text = text;
    item.Length = static_cast<std::int16_t>(CountCharacters(text));
}

bool IsText(const clssFields& item) { return item.Code <= ItemCode::Text; }

}  // namespace

TextKind TextItems::KindOf(const clssFields& item) {
    return item.Code == ItemCode::HeadingText ? TextKind::PageHeading : TextKind::Normal;
}

void TextItems::CopyTextItems() {
    for (const clssFields& item : surface_.Report().Fields)
        if (IsText(item)) collTexts_.Add(item);
}

void TextItems::StoreTextItems() {
    collFields& fields = surface_.Report().Fields;
    for (int position = fields.Count(); position >= 1; --position)
        if (IsText(fields.Item(position))) fields.Remove(position);
    for (const clssFields& item : collTexts_) fields.Add(item);
}

void TextItems::Add(std::string_view text, TextKind kind) {
    clssFields item;
    SetText(item, text);
    SetKind(item, kind);
    item.FontName = "Times New Roman";
    item.FontSize = newFontSize;
    item.FontBackColor = white;
    item.FontBold = true;
    item.FontAllignment = "L";
    item.Index = surface_.LowestFreeIndex(&collTexts_);
    item.Key = Str(surface_.Report().Fields.Count() + 1.0);

    surface_.AddPicture(item.Index);
    surface_.SetPictureFont(item.Index, {.name = item.FontName, .size = item.FontSize, .bold = true});
    surface_.SetPictureColors(item.Index, item.FontForeColor, item.FontBackColor);
    const Picture& picture = *surface_.Pic().Find(item.Index);
    // Any two texts of a font are equally high, so the text's height is that of a letter X.
    surface_.SizePicture(item.Index, picture.box.width, std::ceil(surface_.TextHeight(picture)));
    SizeToText(item);
    Place(item.Index);
    surface_.DrawText(item, item.Text);
    AvoidOverlap(item.Index);
    TakePlaceFromPicture(surface_, item);
    collTexts_.Add(item);
}

void TextItems::Change(int position, std::string_view text, TextKind kind) {
    if (position < 1 || position > collTexts_.Count()) return;
    clssFields& item = collTexts_.Item(position);
    SetText(item, text);
    SetKind(item, kind);
    surface_.SetPictureColors(item.Index, item.FontForeColor, item.FontBackColor);
    SizeToText(item);
    surface_.DrawText(item, item.Text);
}

void TextItems::Delete(int position) {
    if (position < 1 || position > collTexts_.Count()) return;
    surface_.RemovePicture(collTexts_.Item(position).Index);
    collTexts_.Remove(position);
    StoreTextItems();
}

/// As wide as so many letters X, but never narrower than the text.
void TextItems::SizeToText(const clssFields& item) {
    const Picture* const picture = surface_.Pic().Find(item.Index);
    if (!picture) return;
    const std::string letters(static_cast<std::size_t>(std::max<int>(item.Length, 0)), 'X');
    const double width = RaisedTo(surface_.TextWidth(*picture, letters), surface_.TextWidth(*picture, item.Text));
    surface_.SizePicture(item.Index, width, picture->box.height);
}

const Picture* TextItems::LastPicture() const {
    if (surface_.Report().Fields.Count() > 0) return surface_.LastPicture();
    return collTexts_.Count() == 0 ? nullptr : surface_.Pic().Find(collTexts_.Item(collTexts_.Count()).Index);
}

/// Right of the last item, or below it where the page ends.
void TextItems::Place(std::int16_t index) {
    const SurfaceGeometry& geometry = surface_.Geometry();
    const double column = geometry.HScroll1.Value;
    const double row = geometry.VScroll1.Value;
    const Picture* const last = LastPicture();
    double left = last ? last->box.Right() + 1 - column : -column;
    double top = last ? last->box.top - row : -row;
    left = std::max(left, -column);
    if (left + surface_.Pic().Find(index)->box.width + column > geometry.LastColumn()) {
        top = (last ? last->box.top : top) + intGridY;
        left = -column;
    }
    surface_.MovePicture(index, left, std::max(top, 0.0));
}

/// Texts that were added before count as well, although the layout doesn't have them yet: two new ones in a row would
/// else lie on each other.
void TextItems::AvoidOverlap(std::int16_t index) {
    std::vector<std::int16_t> others;
    for (const clssFields& item : surface_.Report().Fields) others.push_back(item.Index);
    for (const clssFields& item : collTexts_) others.push_back(item.Index);
    designer::AvoidOverlap(surface_, index, others, textOverlap);
}

}  // namespace quillform::designer
