#pragma once

#include <string>
#include <utility>

#include "model/clssFields.h"

namespace quillform {

/// An item of 10 points, black on white, at its left, as the tests put it on a layout.
inline clssFields PlainItem(float left, float top, int length, std::string text, int code, std::string fontName) {
    clssFields item;
    item.Code = static_cast<std::int16_t>(code);
    item.Left = left;
    item.Top = top;
    item.Length = static_cast<std::int16_t>(length);
    item.Text = std::move(text);
    item.FontName = std::move(fontName);
    item.FontSize = 10;
    item.FontBackColor = 15;
    item.FontAllignment = "L";
    return item;
}

}  // namespace quillform
