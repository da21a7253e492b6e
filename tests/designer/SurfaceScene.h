#pragma once

#include <deque>
#include <string>
#include <utility>

#include "PlainItem.h"
#include "designer/DesignSurface.h"
#include "platform/Text.h"

namespace quillform::designer::testing {

/// At 10 points every letter is a cell wide and a line one cell high; both grow with the size, bold letters are a fifth
/// wider.
class PointMeasure final : public TextMeasure {
public:
    FontId Font(const FontSpec& spec) override {
        fonts_.push_back(spec);
        return static_cast<FontId>(fonts_.size() - 1);
    }
    double TextWidth(FontId font, std::string_view text) const override {
        const FontSpec& spec = At(font);
        return 12 * spec.size * (spec.bold ? 1.2 : 1) * static_cast<double>(CountCharacters(text));
    }
    double TextHeight(FontId font) const override { return 24 * At(font).size; }

private:
    const FontSpec& At(FontId font) const { return fonts_[static_cast<std::size_t>(font)]; }
    std::deque<FontSpec> fonts_;
};

/// An empty Letter page in portrait, and items put on it as a load does.
struct Scene {
    Layout layout;
    PointMeasure measure;
    DesignSurface surface{layout, measure};

    Scene() { surface.ClearLayout(); }

    clssFields& Add(float left, float top, int length, std::string text = "Text", int code = 1) {
        clssFields item = PlainItem(left, top, length, std::move(text), code, "Times New Roman");
        item.Index = surface.LowestFreeIndex();
        layout.pictures[item.Index] = MeasureItem(item, measure);
        clssFields& added = layout.Fields.Add(item);
        surface.ShowItems();
        return added;
    }
    const Picture& Pic(int index) const { return *surface.Pic().Find(index); }
};

}  // namespace quillform::designer::testing
