#include "support/FormSize.h"

#include <algorithm>

#include "platform/Format.h"
#include "platform/Numbers.h"

namespace quillform {

namespace {

constexpr std::string_view mark = "[SIZE]:";
constexpr std::size_t digits = 5;
constexpr FormSize designScreen{12288, 9216};

bool IsGiven(float value) { return value > FormWish::notGiven; }
void TakeGiven(float given, float& value) {
    if (IsGiven(given)) value = given;
}
void TakeScaled(float given, float ratio, float& value) {
    if (IsGiven(given)) value = given * ratio;
}

void Place(const FormWish& wish, FormSize screen, const SizedForm& sized, FormPlace& place) {
    if (wish.boolCenter) {
        place.top = (screen.height - place.height) / 2;
        place.left = (screen.width - place.width) / 2;
    } else {
        TakeScaled(wish.top, sized.vertical, place.top);
        TakeScaled(wish.left, sized.horizontal, place.left);
    }
}

void Resize(const FormWish& wish, const SizedForm& sized, FormPlace& place) {
    if (wish.boolScale) {
        TakeScaled(wish.width, sized.horizontal, place.width);
        TakeScaled(wish.height, sized.vertical, place.height);
        return;
    }
    TakeGiven(wish.width, place.width);
    TakeGiven(wish.height, place.height);
    TakeGiven(wish.top, place.top);
    TakeGiven(wish.left, place.left);
}

}  // namespace

FormSize BaseSizeOf(std::string_view tag, FormSize current) {
    const std::size_t found = tag.find(mark);
    if (found == std::string_view::npos) return current;
    std::string_view sizes = tag.substr(found + mark.size());
    const auto width = static_cast<float>(Val(sizes.substr(0, digits)));
    sizes.remove_prefix(std::min(sizes.size(), digits + 1));  // the semicolon between the two
    return {width, static_cast<float>(Val(sizes.substr(0, digits)))};
}

std::string SizeTag(FormSize base) {
    const auto padded = [](float size) { return Format(Value::Single(size), "00000"); };
    return std::string(mark) + padded(base.width) + ";" + padded(base.height);
}

SizedForm SizeForm(const FormPlace& place, std::string_view tag, FormSize screen, const FormWish& wish) {
    SizedForm sized;
    sized.horizontal = designScreen.width / screen.width;
    sized.vertical = designScreen.height / screen.height;
    sized.base = BaseSizeOf(tag, {place.width, place.height});
    TakeGiven(wish.width, sized.base.width);
    TakeGiven(wish.height, sized.base.height);
    sized.tag = SizeTag(sized.base);
    sized.place = place;
    Place(wish, screen, sized, sized.place);
    Resize(wish, sized, sized.place);
    return sized;
}

}  // namespace quillform
