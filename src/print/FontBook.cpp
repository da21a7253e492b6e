#include "print/FontBook.h"

#include <algorithm>
#include <cmath>

#include "platform/RunTimeError.h"
#include "platform/Text.h"
#include "print/PdfTarget.h"

namespace quillform::print {

namespace {

constexpr std::string_view kDefaultFamily = "Arial";  // of items that name none, and before the first font is set
constexpr double kTwipsPerPoint = 20;
constexpr double kLargestPoints = 1638;  // as word processors and drivers end there

double UsablePoints(double size) {
    if (!std::isfinite(size) || size <= 0) return 10;
    return std::clamp(size, 1.0, kLargestPoints);
}

bool IsControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029; }

// Joiners, direction marks, variation selectors and the like: they have no shape of their own.
bool IsInvisible(char32_t c) {
    return c == 0xAD || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2060 && c <= 0x2069) ||
           (c >= 0xFE00 && c <= 0xFE0F) || c == 0xFEFF;
}

}  // namespace

FontBook::FontBook() = default;

FontId FontBook::Find(const FontSpec& spec) {
    FontSpec usable = spec;
    usable.size = UsablePoints(spec.size);
    const auto known =
        std::find_if(fonts_.begin(), fonts_.end(), [&](const Font& font) { return font.spec == usable; });
    if (known != fonts_.end()) return static_cast<FontId>(known - fonts_.begin());

    Font font;
    font.spec = usable;
    font.typeface = TypefaceOf(usable);
    font.twipsPerEm = usable.size * kTwipsPerPoint;
    const auto& metrics = faces_[typefaces_[static_cast<std::size_t>(font.typeface)]->face]->Measures();
    font.ascent = metrics.ascent * font.twipsPerEm;
    font.height = (metrics.ascent + metrics.descent) * font.twipsPerEm;
    fonts_.push_back(std::move(font));
    return static_cast<FontId>(fonts_.size() - 1);
}

int FontBook::TypefaceOf(const FontSpec& spec) {
    for (std::size_t i = 0; i < typefaces_.size(); ++i) {
        const Typeface& typeface = *typefaces_[i];
        if (typeface.bold == spec.bold && typeface.italic == spec.italic && EqualCaseBlind(typeface.family, spec.name))
            return static_cast<int>(i);
    }
    const bool isNamed = !spec.name.empty();
    const FontFiles::Choice choice =
        files_.Find(isNamed ? std::string_view(spec.name) : kDefaultFamily, spec.bold, spec.italic);
    auto typeface = std::make_unique<Typeface>();
    typeface->family = spec.name;
    typeface->bold = spec.bold;
    typeface->italic = spec.italic;
    typeface->face = OpenFirstReadable(*choice.file, spec);
    const FontFile& opened = faces_[typeface->face]->File();
    const bool isChoice = opened.path == choice.file->path && opened.index == choice.file->index;
    if (isNamed && (choice.replaced || !isChoice))
        NoteSubstitution(spec.name, isChoice ? choice.family : opened.families.front());
    for (char32_t c = 0; c < 128; ++c) {
        typeface->ascii[c] = Resolve(*typeface, c);
        typeface->asciiAdvances[c] = typeface->ascii[c].advance;
    }
    typefaces_.push_back(std::move(typeface));
    return static_cast<int>(typefaces_.size() - 1);
}

std::uint16_t FontBook::FaceOf(const FontFile& file) const {
    for (std::size_t i = 0; i < faces_.size(); ++i) {
        if (faces_[i]->File().path == file.path && faces_[i]->File().index == file.index)
            return static_cast<std::uint16_t>(i);
    }
    faces_.push_back(std::make_unique<FontFace>(library_, file));
    return static_cast<std::uint16_t>(faces_.size() - 1);
}

// A damaged file, or one whose maker forbids embedding, is passed over like a family that isn't there.
std::uint16_t FontBook::OpenFirstReadable(const FontFile& wanted, const FontSpec& spec) {
    try {
        return FaceOf(wanted);
    } catch (const RunTimeError&) {
        for (const FontFile* other : files_.Fallbacks(spec.name, spec.bold, spec.italic)) {
            try {
                return FaceOf(*other);
            } catch (const RunTimeError&) {
                continue;
            }
        }
        throw;
    }
}

void FontBook::NoteSubstitution(std::string_view wanted, std::string_view found) {
    std::string sentence;
    for (const std::string_view part :
         {std::string_view("\""), wanted, std::string_view("\" is drawn with \""), found, std::string_view("\".")})
        sentence += part;
    if (std::find(substitutions_.begin(), substitutions_.end(), sentence) == substitutions_.end())
        substitutions_.push_back(std::move(sentence));
}

FontBook::Glyph FontBook::Resolve(Typeface& typeface, char32_t codePoint) const {
    if (IsInvisible(codePoint)) return {0, typeface.face, 0, 0, false};
    const char32_t shown = IsControl(codePoint) ? U' ' : codePoint;
    const FontFace& face = *faces_[typeface.face];
    if (const std::uint32_t index = face.GlyphOf(shown)) return {face.AdvanceOf(index), typeface.face, 0, index, true};
    return FallbackGlyph(typeface, shown);
}

FontBook::Glyph FontBook::FallbackGlyph(Typeface& typeface, char32_t codePoint) const {
    if (typeface.fallbacks.empty())
        typeface.fallbacks = files_.Fallbacks(typeface.family, typeface.bold, typeface.italic);
    for (const FontFile* file : typeface.fallbacks) {
        if (!FontFiles::HasCharacter(*file, codePoint)) continue;
        try {
            const std::uint16_t number = FaceOf(*file);
            const FontFace& face = *faces_[number];
            if (const std::uint32_t index = face.GlyphOf(codePoint))
                return {face.AdvanceOf(index), number, 0, index, true};
        } catch (const RunTimeError&) {
            continue;  // a font that can't be read is a font that lacks the character
        }
    }
    // Nobody has it: the box that the font shows for such characters, and the text still says what was meant.
    return {faces_[typeface.face]->AdvanceOf(0), typeface.face, 0, 0, true};
}

FontBook::Glyph& FontBook::OtherGlyph(Typeface& typeface, char32_t codePoint) const {
    const auto known = typeface.others.find(codePoint);
    if (known != typeface.others.end()) return known->second;
    return typeface.others.emplace(codePoint, Resolve(typeface, codePoint)).first->second;
}

void FontBook::AssignCode(Glyph& glyph, char32_t codePoint) {
    glyph.code = faces_[glyph.face]->CodeOf(IsControl(codePoint) ? U' ' : codePoint, glyph.index);
}

double FontBook::TextWidth(FontId id, std::string_view text) const {
    const Font& font = At(id);
    const auto& advances = typefaces_[static_cast<std::size_t>(font.typeface)]->asciiAdvances;
    double ems = 0;
    for (std::size_t at = 0; at < text.size();) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte < 128) {
            ems += advances[byte];
            ++at;
        } else {
            ems += GlyphOf(font.typeface, NextCodePoint(text, at)).advance;
        }
    }
    return ems * font.twipsPerEm;
}

const FontFace& FontBook::PrimaryFace(FontId id) const {
    return *faces_[typefaces_[static_cast<std::size_t>(At(id).typeface)]->face];
}

namespace {

class FontMeasure final : public TextMeasure {
public:
    FontId Font(const FontSpec& spec) override { return book_.Find(spec); }
    double TextWidth(FontId font, std::string_view text) const override { return book_.TextWidth(font, text); }
    double TextHeight(FontId font) const override { return book_.At(font).height; }
    double TextAscent(FontId font) const override { return book_.At(font).ascent; }

private:
    FontBook book_;
};

}  // namespace

std::unique_ptr<TextMeasure> MakeTextMeasure() { return std::make_unique<FontMeasure>(); }

}  // namespace quillform::print
