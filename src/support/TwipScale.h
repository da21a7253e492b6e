#pragma once

#include <cmath>

namespace quillform {

/// Twips of a form or a page to the pixels that widgets are measured in, and back. Widgets count logical pixels of 96
/// to the inch, and so 15 twips each, at any scale of the screen; `devicePixelRatio` real pixels stand for one of them
/// (1 on an ordinary screen, 1.5 or 2 on a fine one).
class TwipScale {
public:
    static constexpr double twipsPerPixel = 15;

    explicit TwipScale(double devicePixelRatio = 1) : ratio_(devicePixelRatio) {}

    /// Exact, for painting with fractions.
    static double ToLogical(double twips) { return twips / twipsPerPixel; }
    /// Nearest whole logical pixel, for the geometry of widgets.
    static int ToPixels(double twips) { return static_cast<int>(std::lround(twips / twipsPerPixel)); }
    static double ToTwips(double pixels) { return pixels * twipsPerPixel; }

    /// Logical place of the nearest real pixel: lines drawn there are sharp, and things that lie side by side in twips
    /// lie side by side on the screen.
    double ToSharp(double twips) const { return std::round(twips / twipsPerPixel * ratio_) / ratio_; }
    /// Width of one real pixel in logical ones: the thinnest line there is.
    double Hairline() const { return 1 / ratio_; }

private:
    double ratio_;
};

}  // namespace quillform
