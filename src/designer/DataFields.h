#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "designer/DesignSurface.h"

namespace quillform::designer {

/// What a new item takes over from the thing that it shows.
struct FieldChoice {
    int code = 0;
    std::string text;
    int length = 0;  ///< characters
    std::string mask;
};

/// The leaves that no table has: page, dates, times and the record count, in the order of the tree.
const std::array<FieldChoice, 7>& LooseFields();
/// The one with this code, or null.
const FieldChoice* FindLooseField(int code);

/// Puts data items on the surface and takes them off again.
class DataFields {
public:
    /// `onWrap`, if given, is called for each time that a new item gives way to the others into the next row.
    explicit DataFields(DesignSurface& surface, std::function<void()> onWrap = {})
        : surface_(surface), onWrap_(std::move(onWrap)) {}

    /// Position in Fields of the first item that shows `code`, 0 if there is none.
    int Find(int code) const;
    /// A new item behind the last one, in the same row if there is room.
    void Insert(const FieldChoice& choice);
    /// The item and its picture go; an item that never had a picture stays.
    void Remove(int position);

private:
    double FitFont(std::int16_t index);
    void Place(std::int16_t index, double width, double height);

    DesignSurface& surface_;
    std::function<void()> onWrap_;
};

}  // namespace quillform::designer
