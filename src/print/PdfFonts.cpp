#include "print/PdfFonts.h"

#include <hb-subset.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "platform/RunTimeError.h"
#include "print/PdfSyntax.h"

namespace quillform::print {

namespace {

template <typename T, void (*Release)(T*)>
struct Releaser {
    void operator()(T* object) const noexcept { Release(object); }
};
using Blob = std::unique_ptr<hb_blob_t, Releaser<hb_blob_t, hb_blob_destroy>>;
using Face = std::unique_ptr<hb_face_t, Releaser<hb_face_t, hb_face_destroy>>;
using SubsetInput = std::unique_ptr<hb_subset_input_t, Releaser<hb_subset_input_t, hb_subset_input_destroy>>;
using SubsetPlan = std::unique_ptr<hb_subset_plan_t, Releaser<hb_subset_plan_t, hb_subset_plan_destroy>>;

using Characters = std::vector<FontFace::UsedCharacter>;

struct Subset {
    Blob program;
    bool isCff = false;                      // the program is the table of outlines alone, not a font file
    std::vector<std::uint16_t> glyphOfCode;  // by code; of CFF what the outlines are addressed by
};

SubsetInput InputFor(const Characters& characters) {
    SubsetInput input(hb_subset_input_create_or_fail());
    if (!input) throw RunTimeError(ErrorNumber::OutOfMemory, "There isn't enough memory to embed a font.");
    hb_set_t* glyphs = hb_subset_input_glyph_set(input.get());
    hb_set_add(glyphs, 0);
    for (const auto& character : characters) {
        if (character.used) hb_set_add(glyphs, character.glyph);
    }
    // Glyphs are addressed by number and placed by us: what maps, names and shapes them would only take room. Hints
    // would move outlines off the places that were measured. The box for missing characters stays to be seen.
    hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_NO_HINTING | HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
    hb_set_t* dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
    for (const char* tag : {"cmap", "name", "post", "OS/2", "GSUB", "GPOS", "GDEF", "kern", "gasp", "hdmx", "VDMX",
                            "LTSH", "DSIG", "FFTM", "PCLT"}) {
        hb_set_add(dropped, hb_tag_from_string(tag, -1));
    }
    return input;
}

Subset SubsetOf(const FontFace& face) {
    const Blob data(hb_blob_create_from_file(face.File().path.c_str()));
    const Face whole(hb_face_create(data.get(), static_cast<unsigned>(face.File().index)));
    const SubsetInput input = InputFor(face.UsedCharacters());
    const SubsetPlan plan(hb_subset_plan_create_or_fail(whole.get(), input.get()));
    const Face part(plan ? hb_subset_plan_execute_or_fail(plan.get()) : nullptr);
    if (!part) {
        throw RunTimeError(ErrorNumber::DeviceIo, "The font file " + face.File().path + " can't be embedded.");
    }
    Subset subset;
    subset.isCff = face.File().hasCffOutlines;
    subset.program.reset(subset.isCff ? hb_face_reference_table(part.get(), HB_TAG('C', 'F', 'F', ' '))
                                      : hb_face_reference_blob(part.get()));
    const hb_map_t* numbers = hb_subset_plan_old_to_new_glyph_mapping(plan.get());
    for (const auto& character : face.UsedCharacters()) {
        hb_codepoint_t glyph = character.used ? hb_map_get(numbers, character.glyph) : 0;
        // Large fonts of this form address their outlines by numbers of their own, which the cut-down font keeps.
        if (subset.isCff && character.used) glyph = face.CharacterIdOf(character.glyph).value_or(glyph);
        subset.glyphOfCode.push_back(glyph == HB_MAP_VALUE_INVALID ? std::uint16_t{0}
                                                                   : static_cast<std::uint16_t>(glyph));
    }
    return subset;
}

// Six letters that tell subsets of the same font in joined documents apart; they follow from what the subset holds.
std::string SubsetName(const FontFace& face) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const auto& character : face.UsedCharacters()) hash = (hash ^ character.codePoint) * 0x100000001B3U;
    std::string name;
    for (int i = 0; i < 6; ++i, hash /= 26) name += static_cast<char>('A' + hash % 26);
    name += '+';
    AppendNameCharacters(face.Measures().postscriptName, name);
    return name;
}

int WriteProgram(PdfFile& file, const Subset& subset) {
    unsigned length = 0;
    const char* bytes = hb_blob_get_data(subset.program.get(), &length);
    const int object = file.Reserve();
    file.WriteStream(object, subset.isCff ? "/Subtype/CIDFontType0C" : "/Length1 " + std::to_string(length),
                     {bytes, length});
    return object;
}

int WriteDescriptor(PdfFile& file, const FontFace& face, const std::string& name, const Subset& subset) {
    const int program = WriteProgram(file, subset);
    const FontFace::Metrics& metrics = face.Measures();
    constexpr int kFixedPitch = 1;
    constexpr int kSymbolic = 4;  // the codes follow no standard encoding
    constexpr int kItalic = 64;
    const int flags = kSymbolic | (metrics.fixedPitch ? kFixedPitch : 0) | (metrics.italicAngle != 0 ? kItalic : 0);
    const int object = file.Reserve();
    std::string& out = file.BeginObject(object);
    out += "<</Type/FontDescriptor/FontName/" + name + "/Flags ";
    AppendInteger(flags, out);
    out += "/FontBBox[";
    for (const double edge : metrics.box) {
        AppendDecimal(edge * 1000, out);
        out += ' ';
    }
    out.back() = ']';
    const auto number = [&out](std::string_view key, double value) {
        out += key;
        AppendDecimal(value, out);
    };
    number("/ItalicAngle ", metrics.italicAngle);
    number("/Ascent ", metrics.ascent * 1000);
    number("/Descent ", -metrics.descent * 1000);
    number("/CapHeight ", metrics.capHeight * 1000);
    number("/StemV ", metrics.bold ? 140 : 80);  // asked for, but no reader draws by it
    out += subset.isCff ? "/FontFile3 " : "/FontFile2 ";
    AppendReference(program, out);
    out += ">>";
    return object;
}

constexpr std::size_t kMapBlock = 100;  // more entries in one block of a map are not allowed

int WriteGlyphNumbers(PdfFile& file, const std::vector<std::uint16_t>& glyphOfCode) {
    std::string bytes;
    for (const std::uint16_t glyph : glyphOfCode) {
        bytes += static_cast<char>(glyph >> 8U);
        bytes += static_cast<char>(glyph & 0xFFU);
    }
    const int object = file.Reserve();
    file.WriteStream(object, {}, bytes);
    return object;
}

/// The map from codes to outlines as a document wants it of CFF, whose fonts have no such map of their own.
int WriteEncoding(PdfFile& file, const std::vector<std::uint16_t>& glyphOfCode) {
    std::string map =
        "/CIDInit/ProcSet findresource begin 12 dict begin begincmap\n"
        "/CIDSystemInfo 3 dict dup begin/Registry(Adobe)def/Ordering(Identity)def/Supplement 0 def end def\n"
        "/CMapName/Quillform-Codes def/CMapType 1 def\n"
        "1 begincodespacerange<0000><FFFF>endcodespacerange\n";
    for (std::size_t first = 0; first < glyphOfCode.size(); first += kMapBlock) {
        const std::size_t end = std::min(first + kMapBlock, glyphOfCode.size());
        AppendInteger(static_cast<std::int64_t>(end - first), map);
        map += " begincidchar\n";
        for (std::size_t code = first; code < end; ++code) {
            map += '<';
            AppendHex16(static_cast<unsigned>(code), map);
            map += "> ";
            AppendInteger(glyphOfCode[code], map);
            map += '\n';
        }
        map += "endcidchar\n";
    }
    map += "endcmap CMapName currentdict/CMap defineresource pop end end\n";
    const int object = file.Reserve();
    file.WriteStream(object,
                     "/Type/CMap/CMapName/Quillform-Codes/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)"
                     "/Supplement 0>>",
                     map);
    return object;
}

void AppendUnicodeEntries(const Characters& characters, std::size_t first, std::size_t end, std::string& out) {
    const auto count = std::count_if(characters.begin() + static_cast<std::ptrdiff_t>(first),
                                     characters.begin() + static_cast<std::ptrdiff_t>(end),
                                     [](const auto& character) { return character.used; });
    if (count == 0) return;
    AppendInteger(count, out);
    out += " beginbfchar\n";
    for (std::size_t code = first; code < end; ++code) {
        if (!characters[code].used) continue;
        out += '<';
        AppendHex16(static_cast<unsigned>(code), out);
        out += "><";
        AppendUtf16Hex(characters[code].codePoint, out);
        out += ">\n";
    }
    out += "endbfchar\n";
}

int WriteToUnicode(PdfFile& file, const Characters& characters) {
    std::string map =
        "/CIDInit/ProcSet findresource begin 12 dict begin begincmap\n"
        "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n"
        "/CMapName/Adobe-Identity-UCS def/CMapType 2 def\n"
        "1 begincodespacerange<0000><FFFF>endcodespacerange\n";
    for (std::size_t first = 0; first < characters.size(); first += kMapBlock)
        AppendUnicodeEntries(characters, first, std::min(first + kMapBlock, characters.size()), map);
    map += "endcmap CMapName currentdict/CMap defineresource pop end end\n";
    const int object = file.Reserve();
    file.WriteStream(object, {}, map);
    return object;
}

void AppendWidths(const Characters& characters, std::string& out) {
    out += "/DW 0/W[1[";
    for (std::size_t code = 1; code < characters.size(); ++code) {
        AppendDecimal(characters[code].advance * 1000, out);
        out += ' ';
    }
    out.back() = ']';
    out += ']';
}

/// The same where outlines are not addressed by the codes.
void AppendWidthsByGlyph(const Characters& characters, const std::vector<std::uint16_t>& glyphOfCode,
                         std::string& out) {
    out += "/DW 0/W[";
    for (std::size_t code = 1; code < characters.size(); ++code) {
        if (!characters[code].used) continue;
        AppendInteger(glyphOfCode[code], out);
        out += '[';
        AppendDecimal(characters[code].advance * 1000, out);
        out += ']';
    }
    out += ']';
}

}  // namespace

int EmbedFont(PdfFile& file, const FontFace& face) {
    const Characters& characters = face.UsedCharacters();
    const Subset subset = SubsetOf(face);
    const std::string name = SubsetName(face);
    const int descriptor = WriteDescriptor(file, face, name, subset);
    const int glyphNumbers =
        subset.isCff ? WriteEncoding(file, subset.glyphOfCode) : WriteGlyphNumbers(file, subset.glyphOfCode);
    const int toUnicode = WriteToUnicode(file, characters);

    const int descendant = file.Reserve();
    std::string& cid = file.BeginObject(descendant);
    cid += subset.isCff ? "<</Type/Font/Subtype/CIDFontType0/BaseFont/" : "<</Type/Font/Subtype/CIDFontType2/BaseFont/";
    cid += name;
    cid += "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/FontDescriptor ";
    AppendReference(descriptor, cid);
    if (subset.isCff) {
        AppendWidthsByGlyph(characters, subset.glyphOfCode, cid);
    } else {
        cid += "/CIDToGIDMap ";
        AppendReference(glyphNumbers, cid);
        AppendWidths(characters, cid);
    }
    cid += ">>";

    const int font = file.Reserve();
    std::string& out = file.BeginObject(font);
    out += "<</Type/Font/Subtype/Type0/BaseFont/" + name + "/Encoding";
    if (subset.isCff) {
        out += ' ';
        AppendReference(glyphNumbers, out);
    } else {
        out += "/Identity-H";
    }
    out += "/DescendantFonts[";
    AppendReference(descendant, out);
    out += "]/ToUnicode ";
    AppendReference(toUnicode, out);
    out += ">>";
    return font;
}

}  // namespace quillform::print
