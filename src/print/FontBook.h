#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/TextMeasure.h"
#include "print/FontFace.h"
#include "print/FontFiles.h"

namespace quillform::print {

/// The fonts of one document or measure: finds them by name, measures texts, and says for each character which face
/// draws it, so that measuring and drawing can't disagree. Not for more than one thread at a time.
class FontBook {
public:
    struct Glyph {
        double advance = 0;       ///< as a part of the font size
        std::uint16_t face = 0;   ///< index in Faces()
        std::uint16_t code = 0;   ///< in the face; 0 until it is first drawn
        std::uint32_t index = 0;  ///< of the glyph in the font file
        bool isDrawn = true;      ///< false for characters that only steer the layout of a text
    };
    struct Font {
        FontSpec spec;  ///< as asked for, the size made usable
        int typeface = 0;
        double twipsPerEm = 200;
        double height = 0;  ///< of a line, twips
        double ascent = 0;  ///< from the top of the line to the baseline, twips
    };

    FontBook();

    FontId Find(const FontSpec& spec);
    const Font& At(FontId id) const { return fonts_[static_cast<std::size_t>(id)]; }
    double TextWidth(FontId id, std::string_view text) const;

    /// The glyph of a character in a font's typeface. Control characters are drawn as blanks. Valid until the next
    /// call.
    Glyph& GlyphOf(int typeface, char32_t codePoint) const {
        Typeface& found = *typefaces_[static_cast<std::size_t>(typeface)];
        return codePoint < 128 ? found.ascii[codePoint] : OtherGlyph(found, codePoint);
    }
    /// Notes that a character was drawn as the box for those that no font has.
    void CountMissing() { ++missing_; }
    std::size_t MissingCharacters() const { return missing_; }
    /// Gives the glyph the code under which documents write it.
    void AssignCode(Glyph& glyph, char32_t codePoint);

    /// Every face that was opened, in the order of first use.
    const std::vector<std::unique_ptr<FontFace>>& Faces() const { return faces_; }
    const FontFace& PrimaryFace(FontId id) const;
    const FontFiles& Files() const { return files_; }
    /// One sentence per family that was replaced, in the order of first use.
    const std::vector<std::string>& Substitutions() const { return substitutions_; }

private:
    struct Typeface {
        std::string family;
        bool bold = false;
        bool italic = false;
        std::uint16_t face = 0;
        std::array<double, 128> asciiAdvances{};
        std::array<Glyph, 128> ascii{};
        std::unordered_map<char32_t, Glyph> others;
        std::vector<const FontFile*> fallbacks;  // filled when the first character is missing
    };

    int TypefaceOf(const FontSpec& spec);
    std::uint16_t FaceOf(const FontFile& file) const;
    std::uint16_t OpenFirstReadable(const FontFile& wanted, const FontSpec& spec);
    Glyph& OtherGlyph(Typeface& typeface, char32_t codePoint) const;
    Glyph Resolve(Typeface& typeface, char32_t codePoint) const;
    Glyph FallbackGlyph(Typeface& typeface, char32_t codePoint) const;
    void NoteSubstitution(std::string_view wanted, std::string_view found);

    FontFiles files_;
    FontLibrary library_;  // before the faces, which need it to the last
    // Opened as characters turn up that others lack, also while measuring; what was decided never changes.
    mutable std::vector<std::unique_ptr<FontFace>> faces_;
    std::vector<std::unique_ptr<Typeface>> typefaces_;
    std::vector<Font> fonts_;
    std::vector<std::string> substitutions_;
    std::size_t missing_ = 0;
};

}  // namespace quillform::print
