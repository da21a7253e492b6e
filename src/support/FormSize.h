#pragma once

#include <string>
#include <string_view>

namespace quillform {

/// A width and a height in twips.
struct FormSize {
    float width = 0;
    float height = 0;

    friend bool operator==(const FormSize&, const FormSize&) = default;
};

/// A form's place on its screen in twips.
struct FormPlace {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;

    friend bool operator==(const FormPlace&, const FormPlace&) = default;
};

/// The place and size that a form asks for.
struct FormWish {
    static constexpr float notGiven = -1;
    float top = notGiven;
    float left = notGiven;
    float width = notGiven;
    float height = notGiven;
    bool boolScale = true;   ///< what is given is meant for a screen of the design's size, and scaled to this one
    bool boolCenter = true;  ///< the form stands in the middle of the screen
};

/// What SizeForm worked out.
struct SizedForm {
    FormPlace place;       ///< where the form is to be moved, in one operation
    FormSize base;         ///< its size before scaling
    std::string tag;       ///< the base size as text, for the next call
    float horizontal = 1;  ///< width of the design's screen (12288 twips) by the width of this one
    float vertical = 1;    ///< height of the design's screen (9216 twips) by the height of this one
};

/// The base size that a form's tag keeps: "[SIZE]:01234;00567" anywhere in it, width before height in twips. A tag
/// without the mark gives `current`.
FormSize BaseSizeOf(std::string_view tag, FormSize current);
std::string SizeTag(FormSize base);

/// Where a form belongs: `place` is where it is, `tag` what an earlier call left in it (empty at the first), `screen`
/// the size of its screen. A form that wishes nothing keeps its size and is centred.
SizedForm SizeForm(const FormPlace& place, std::string_view tag, FormSize screen, const FormWish& wish = {});

}  // namespace quillform
