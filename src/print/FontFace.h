#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "print/FontFiles.h"

typedef struct FT_LibraryRec_* FT_Library;
typedef struct FT_FaceRec_* FT_Face;

namespace quillform::print {

class FontLibrary {
public:
    FontLibrary();
    FT_Library Get() const { return library_.get(); }

private:
    struct Release {
        void operator()(FT_Library library) const noexcept;
    };
    std::unique_ptr<std::remove_pointer_t<FT_Library>, Release> library_;
};

/// One opened face: its measures at design units as parts of the font size (1 is the em), and the codes under which its
/// characters are written into a document.
class FontFace {
public:
    /// Throws DeviceIo if the file can't be read as a font that may be embedded.
    FontFace(const FontLibrary& library, const FontFile& file);

    std::uint32_t GlyphOf(char32_t codePoint) const;  ///< 0 if it has none
    /// What addresses the glyph's outline in fonts that number their outlines apart from their glyphs; else empty.
    std::optional<std::uint32_t> CharacterIdOf(std::uint32_t glyph) const;
    double AdvanceOf(std::uint32_t glyph) const;

    struct Metrics {
        double ascent = 0;
        double descent = 0;          ///< positive
        double underlineCentre = 0;  ///< below the baseline, positive
        double underlineThickness = 0;
        double capHeight = 0;
        double italicAngle = 0;  ///< degrees
        double box[4] = {};
        bool fixedPitch = false;
        bool bold = false;
        std::string postscriptName;
    };
    const Metrics& Measures() const { return metrics_; }
    const FontFile& File() const { return file_; }

    struct UsedCharacter {
        char32_t codePoint = 0;
        std::uint32_t glyph = 0;
        double advance = 0;
        bool used = false;
    };
    /// The code of a character in documents, given at its first use. Codes hold no byte that a string of PDF would have
    /// to escape. 0 when all codes are taken.
    std::uint16_t CodeOf(char32_t codePoint, std::uint32_t glyph);
    /// By code; empty if nothing of the face was used.
    const std::vector<UsedCharacter>& UsedCharacters() const { return used_; }

private:
    void ReadMetrics();

    struct Close {
        void operator()(FT_Face face) const noexcept;
    };
    FontFile file_;
    std::unique_ptr<std::remove_pointer_t<FT_Face>, Close> face_;
    Metrics metrics_;
    std::vector<UsedCharacter> used_;
    std::unordered_map<char32_t, std::uint16_t> codes_;
};

}  // namespace quillform::print
