#include "print/FontFace.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_ADVANCES_H
#include FT_CID_H
#include FT_TRUETYPE_TABLES_H

#include "platform/RunTimeError.h"

namespace quillform::print {

namespace {

bool NeedsEscape(unsigned byte) { return byte == '(' || byte == ')' || byte == '\\' || byte == '\r'; }

[[noreturn]] void FailToRead(const FontFile& file) {
    throw RunTimeError(ErrorNumber::DeviceIo, "The font file " + file.path + " can't be read or may not be embedded.");
}

}  // namespace

void FontLibrary::Release::operator()(FT_Library library) const noexcept { FT_Done_FreeType(library); }

FontLibrary::FontLibrary() {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) throw RunTimeError(ErrorNumber::OutOfMemory, "FreeType can't be started.");
    library_.reset(library);
}

void FontFace::Close::operator()(FT_Face face) const noexcept { FT_Done_Face(face); }

FontFace::FontFace(const FontLibrary& library, const FontFile& file) : file_(file) {
    FT_Face face = nullptr;
    if (FT_New_Face(library.Get(), file.path.c_str(), file.index, &face) != 0) FailToRead(file);
    face_.reset(face);
    const bool mayEmbed = (FT_Get_FSType_Flags(face) & FT_FSTYPE_RESTRICTED_LICENSE_EMBEDDING) == 0;
    if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0 || !mayEmbed) FailToRead(file);
    FT_Select_Charmap(face, FT_ENCODING_UNICODE);  // where it fails, every character counts as missing
    ReadMetrics();
}

void FontFace::ReadMetrics() {
    FT_Face face = face_.get();
    const double em = face->units_per_EM;
    metrics_.ascent = face->ascender / em;
    metrics_.descent = -face->descender / em;
    metrics_.underlineCentre = -face->underline_position / em;
    metrics_.underlineThickness = face->underline_thickness / em;
    metrics_.capHeight = metrics_.ascent;
    // The platform's text height is that of the cell, which these two fields give; the line gap is no part of it.
    if (const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2))) {
        if (os2->usWinAscent + os2->usWinDescent > 0) {
            metrics_.ascent = os2->usWinAscent / em;
            metrics_.descent = os2->usWinDescent / em;
        }
        metrics_.capHeight = os2->version >= 2 && os2->sCapHeight > 0 ? os2->sCapHeight / em : metrics_.ascent;
    }
    if (const auto* post = static_cast<const TT_Postscript*>(FT_Get_Sfnt_Table(face, FT_SFNT_POST))) {
        metrics_.italicAngle = static_cast<double>(post->italicAngle) / 65536.0;
    }
    metrics_.box[0] = static_cast<double>(face->bbox.xMin) / em;
    metrics_.box[1] = static_cast<double>(face->bbox.yMin) / em;
    metrics_.box[2] = static_cast<double>(face->bbox.xMax) / em;
    metrics_.box[3] = static_cast<double>(face->bbox.yMax) / em;
    metrics_.fixedPitch = FT_IS_FIXED_WIDTH(face) != 0;
    metrics_.bold = (face->style_flags & FT_STYLE_FLAG_BOLD) != 0;
    const char* name = FT_Get_Postscript_Name(face);
    metrics_.postscriptName = name != nullptr ? name : "Font";
}

std::uint32_t FontFace::GlyphOf(char32_t codePoint) const { return FT_Get_Char_Index(face_.get(), codePoint); }

std::optional<std::uint32_t> FontFace::CharacterIdOf(std::uint32_t glyph) const {
    FT_UInt id = 0;
    if (FT_Get_CID_From_Glyph_Index(face_.get(), glyph, &id) != 0) return std::nullopt;
    return id;
}

double FontFace::AdvanceOf(std::uint32_t glyph) const {
    FT_Fixed advance = 0;
    if (FT_Get_Advance(face_.get(), glyph, FT_LOAD_NO_SCALE, &advance) != 0) return 0;
    return static_cast<double>(advance) / face_->units_per_EM;
}

std::uint16_t FontFace::CodeOf(char32_t codePoint, std::uint32_t glyph) {
    const auto [known, isNew] = codes_.try_emplace(codePoint, std::uint16_t{0});
    if (!isNew) return known->second;
    std::size_t code = used_.empty() ? 1 : used_.size();
    while (NeedsEscape(static_cast<unsigned>(code & 0xFFU)) || NeedsEscape(static_cast<unsigned>(code >> 8U))) ++code;
    if (code > 0xFFFF) return 0;
    used_.resize(code + 1);
    used_[code] = {codePoint, glyph, AdvanceOf(glyph), true};
    known->second = static_cast<std::uint16_t>(code);
    return known->second;
}

}  // namespace quillform::print
