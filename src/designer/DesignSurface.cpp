#include "designer/DesignSurface.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include "model/DesignGrid.h"
#include "platform/Text.h"

namespace quillform::designer {

namespace {

std::size_t LetterCount(int length) { return length > 0 ? static_cast<std::size_t>(length) : 0; }

}  // namespace

DesignSurface::DesignSurface(Layout& layout, TextMeasure& measure) : layout_(layout), measure_(measure) {}

void DesignSurface::ClearLayout() {
    pictures_.Clear();
    layout_.ClearLayout();
    GoToPageCorner();
    SetPageSize();
}

void DesignSurface::ShowLayout() {
    GoToPageCorner();
    geometry_.SetPageSize(ReportSettings{});  // a paper that isn't known keeps the ranges of a new layout
    ShowItems();
    SetPageSize();
}

void DesignSurface::GoToPageCorner() {
    geometry_.HScroll1.Value = geometry_.HScroll1.Max = 0;
    geometry_.VScroll1.Value = geometry_.VScroll1.Max = 0;
    intSelected = 0;
}

void DesignSurface::ShowItems() {
    pictures_.Clear();
    for (const clssFields& item : layout_.Fields) ShowItem(item);
    Changed();
}

void DesignSurface::ShowItem(const clssFields& item) {
    Picture& picture = pictures_.Load(item.Index);
    const ItemSize size = layout_.PictureOf(item);
    picture.box = {static_cast<double>(item.Left) - geometry_.HScroll1.Value,
                   static_cast<double>(item.Top) - geometry_.VScroll1.Value, static_cast<double>(size.columns),
                   static_cast<double>(size.rows)};
    picture.foreColor = item.FontForeColor;
    picture.backColor = item.FontBackColor;
    picture.font = FontOf(item);
    picture.fontId = measure_.Font(picture.font);
    Draw(picture, item, Trim(item.Text));
}

void DesignSurface::SetPageSize() {
    const int column = geometry_.HScroll1.Value;
    const int row = geometry_.VScroll1.Value;
    geometry_.SetPageSize(layout_.settings);
    if (geometry_.HScroll1.Value != column) HScroll1_Change();
    if (geometry_.VScroll1.Value != row) VScroll1_Change();
    Changed();
}

void DesignSurface::ScrollTo(int column, int row) {
    column = std::clamp(column, 0, geometry_.HScroll1.Max);
    row = std::clamp(row, 0, geometry_.VScroll1.Max);
    if (column != geometry_.HScroll1.Value) {
        geometry_.HScroll1.Value = column;
        HScroll1_Change();
    }
    if (row != geometry_.VScroll1.Value) {
        geometry_.VScroll1.Value = row;
        VScroll1_Change();
    }
}

void DesignSurface::HScroll1_Change() {
    for (int position = 1; position <= layout_.Fields.Count();) {
        const clssFields& item = layout_.Fields.Item(position);
        if (Picture* const picture = pictures_.Find(item.Index)) {
            picture->box.left = static_cast<double>(item.Left) - geometry_.HScroll1.Value;
            ++position;
        } else {
            layout_.Fields.Remove(position);
        }
    }
    Changed();
}

void DesignSurface::VScroll1_Change() {
    for (const clssFields& item : layout_.Fields)
        if (Picture* const picture = pictures_.Find(item.Index))
            picture->box.top = static_cast<double>(item.Top) - geometry_.VScroll1.Value;
    Changed();
}

void DesignSurface::Reveal(int index) {
    const Picture* const picture = pictures_.Find(index);
    if (!picture) return;
    const auto needed = [](double from, double to, double room) {
        // Only numbers that a scroll bar can count to; an item may stand anywhere.
        const double beyond = std::min(std::max(0.0, to - room), from);
        return static_cast<int>(std::clamp(from < 0 ? std::floor(from) : std::ceil(beyond), -32767.0, 32767.0));
    };
    ScrollTo(
        geometry_.HScroll1.Value + needed(picture->box.left, picture->box.Right(), geometry_.Picture2.ScaleWidth),
        geometry_.VScroll1.Value + needed(picture->box.top, picture->box.Bottom(), geometry_.Picture2.ScaleHeight));
}

int DesignSurface::FindItem(int index) const {
    int position = 0;
    for (const clssFields& item : layout_.Fields) {
        ++position;
        if (item.Index == index) return position;
    }
    return 0;
}

clssFields* DesignSurface::ItemOf(int index) {
    const int position = FindItem(index);
    return position == 0 ? nullptr : &layout_.Fields.Item(position);
}

const clssFields* DesignSurface::ItemOf(int index) const {
    const int position = FindItem(index);
    return position == 0 ? nullptr : &layout_.Fields.Item(position);
}

std::int16_t DesignSurface::LowestFreeIndex(const collFields* others) const {
    std::set<int> taken;
    for (const clssFields& item : layout_.Fields) taken.insert(item.Index);
    if (others)
        for (const clssFields& item : *others) taken.insert(item.Index);
    std::int16_t index = 1;
    while (taken.contains(index)) ++index;
    return index;
}

const Picture& DesignSurface::AddPicture(std::int16_t index) {
    Picture& picture = pictures_.Load(index);
    picture.fontId = measure_.Font(picture.font);
    Changed();
    return picture;
}

void DesignSurface::RemovePicture(std::int16_t index) {
    pictures_.Unload(index);
    layout_.pictures.erase(index);
    Changed();
}

bool DesignSurface::RemoveItem(int index) {
    const int position = FindItem(index);
    if (position == 0) return false;
    layout_.Fields.Remove(position);
    RemovePicture(static_cast<std::int16_t>(index));
    return true;
}

const Picture* DesignSurface::LastPicture() const {
    const int count = layout_.Fields.Count();
    return count == 0 ? nullptr : pictures_.Find(layout_.Fields.Item(count).Index);
}

void DesignSurface::MovePicture(int index, double left, double top) {
    Picture* const picture = pictures_.Find(index);
    if (!picture) return;
    picture->box.left = left;
    picture->box.top = top;
    Changed();
}

void DesignSurface::SizePicture(int index, double width, double height) {
    Picture* const picture = pictures_.Find(index);
    if (!picture) return;
    picture->box.width = width;
    picture->box.height = height;
    layout_.pictures[picture->Index] = {static_cast<float>(width), static_cast<float>(height)};
    Changed();
}

void DesignSurface::SetPictureFont(int index, const FontSpec& font) {
    Picture* const picture = pictures_.Find(index);
    if (!picture) return;
    picture->font = font;
    picture->fontId = measure_.Font(font);
    Changed();
}

void DesignSurface::SetPictureColors(int index, int foreColor, int backColor) {
    Picture* const picture = pictures_.Find(index);
    if (!picture) return;
    picture->foreColor = foreColor;
    picture->backColor = backColor;
    Changed();
}

void DesignSurface::DrawItemText(int index) {
    if (const clssFields* const item = ItemOf(index)) DrawText(*item, Trim(item->Text));
}

void DesignSurface::DrawText(const clssFields& item, std::string_view shown) {
    Picture* const picture = pictures_.Find(item.Index);
    if (!picture) return;
    Draw(*picture, item, shown);
    Changed();
}

void DesignSurface::Draw(Picture& picture, const clssFields& item, std::string_view shown) {
    picture.text = shown;
    picture.CurrentX = 0;
    const auto room = [&](std::string_view measured) {
        return std::max(0.0, picture.box.width - TextWidth(picture, measured));
    };
    if (item.FontAllignment == "C") picture.CurrentX = room(Trim(item.Text)) / 2;
    if (item.FontAllignment == "R") picture.CurrentX = room(LeftCharacters(item.Text, LetterCount(item.Length)));
}

double DesignSurface::TextWidth(const Picture& picture, std::string_view text) const {
    return measure_.TextWidth(picture.fontId, text) / intColumnTwips;
}

double DesignSurface::TextHeight(const Picture& picture) const {
    return measure_.TextHeight(picture.fontId) / intRowTwips;
}

double DesignSurface::WidthOfLength(const Picture& picture, int length) const {
    return std::ceil(TextWidth(picture, std::string(LetterCount(length), 'X')));
}

double DesignSurface::RowsOf(const Picture& picture) const {
    return TextHeight(picture) > intGridY ? 2.0 * intGridY : intGridY;
}

}  // namespace quillform::designer
