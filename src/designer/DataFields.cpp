#include "designer/DataFields.h"

#include <algorithm>
#include <vector>

#include "designer/ItemPlacing.h"
#include "model/DesignGrid.h"
#include "platform/Numbers.h"
#include "platform/RunTimeError.h"

namespace quillform::designer {

namespace {

constexpr double newFontSize = 8;
constexpr int white = 15;

clssFields NewItem(const FieldChoice& choice) {
    clssFields item;
    item.Code = static_cast<std::int16_t>(choice.code);
    item.Text = choice.text;
    item.Length = static_cast<std::int16_t>(choice.length);
    item.Mask = choice.mask;
    item.FontName = "Times New Roman";
    item.FontBackColor = white;
    item.FontAllignment = "L";
    return item;
}

}  // namespace

const std::array<FieldChoice, 7>& LooseFields() {
    static const std::array<FieldChoice, 7> fields{{
        {ItemCode::PageNumber, "Page #", 11, "###,###,##0"},
        {ItemCode::LongDate, "Date (Month dd, yyyy)", 18, "mmm dd, yyyy"},
        {ItemCode::UsDate, "Date (mm/dd/yyyy)", 10, "mm/dd/yyyy"},
        {ItemCode::YearFirstDate, "Date (yyyy/dd/mm)", 10, "yyyy/mm/dd"},
        {ItemCode::LongTime, "Time (hh:mm:ss)", 8, "hh:mm:ss"},
        {ItemCode::ShortTime, "Time (hh:mm)", 5, "hh:mm"},
        {ItemCode::RecordCount, "Record Count", 11, "###,###,##0"},
    }};
    return fields;
}

const FieldChoice* FindLooseField(int code) {
    const auto& fields = LooseFields();
    const auto found = std::ranges::find(fields, code, &FieldChoice::code);
    return found == fields.end() ? nullptr : &*found;
}

int DataFields::Find(int code) const {
    int position = 0;
    for (const clssFields& item : surface_.Report().Fields) {
        ++position;
        if (item.Code == code) return position;
    }
    return 0;
}

void DataFields::Insert(const FieldChoice& choice) {
    clssFields item = NewItem(choice);
    item.Index = surface_.LowestFreeIndex();
    surface_.AddPicture(item.Index);
    surface_.SetPictureColors(item.Index, item.FontForeColor, item.FontBackColor);
    item.FontSize = FitFont(item.Index);
    const Picture& picture = *surface_.Pic().Find(item.Index);
    Place(item.Index, surface_.WidthOfLength(picture, item.Length), surface_.RowsOf(picture));

    std::vector<std::int16_t> others;
    collFields& fields = surface_.Report().Fields;
    for (const clssFields& other : fields) others.push_back(other.Index);
    AvoidOverlap(surface_, item.Index, others, dataFieldOverlap, onWrap_);
    TakePlaceFromPicture(surface_, item);
    item.Key = Str(fields.Count() + 1.0);
    try {
        SetItemTwips(item, surface_.Report().PictureOf(item));
    } catch (const RunTimeError&) {
        // Too far from the page's corner to be counted in twips. A run says so, if the item is still there then.
    }
    surface_.DrawText(fields.Add(item), item.Text);
}

/// Makes the picture's letters at most two rows high and gives the size that the item keeps, which is lowered more
/// slowly than the picture's own.
double DataFields::FitFont(std::int16_t index) {
    FontSpec font{.name = "Times New Roman", .size = newFontSize};
    surface_.SetPictureFont(index, font);
    double size = newFontSize;
    const Picture& picture = *surface_.Pic().Find(index);
    while (size > 1 && surface_.TextHeight(picture) > 2 * intGridY) {
        font.size = size - 1;
        size -= 0.5;
        surface_.SetPictureFont(index, font);
    }
    return size;
}

/// Right of the last item, or at the start of the row below it where the page ends.
void DataFields::Place(std::int16_t index, double width, double height) {
    const SurfaceGeometry& geometry = surface_.Geometry();
    const double scrolled = geometry.HScroll1.Value;
    double left = 1;
    double top = 0;
    if (const Picture* const last = surface_.LastPicture()) {
        left = last->box.Right() + intGridX;
        top = last->box.top;
    }
    left = std::max(left, -scrolled);
    if (left + width + scrolled > geometry.LastColumn()) {
        top += intGridY;
        left = -scrolled;
    }
    surface_.SizePicture(index, width, height);
    surface_.MovePicture(index, left, top);
}

void DataFields::Remove(int position) {
    collFields& fields = surface_.Report().Fields;
    const std::int16_t index = fields.Item(position).Index;
    if (index < 1) return;
    surface_.RemovePicture(index);
    fields.Remove(position);
}

}  // namespace quillform::designer
