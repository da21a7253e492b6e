#include "print/FontFiles.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "platform/RunTimeError.h"
#include "platform/Text.h"

#if defined(__SANITIZE_ADDRESS__)
// fontconfig reaches the rules of its configuration by offsets, which the leak checker doesn't see as pointers.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
#endif

namespace quillform::print {

namespace {

struct Twin {
    std::string_view original;
    std::string_view twins[3];  // same advances first, then what looks alike
};

// Fonts that are free and have the advances of the originals, glyph by glyph. The old bitmap fonts stand with the
// outlines that replaced them.
constexpr Twin kTwins[] = {
    {"Times New Roman", {"Liberation Serif", "Tinos", "FreeSerif"}},
    {"Times", {"Liberation Serif", "Tinos", "FreeSerif"}},
    {"Arial", {"Liberation Sans", "Arimo", "FreeSans"}},
    {"Helvetica", {"Liberation Sans", "Arimo", "FreeSans"}},
    {"Courier New", {"Liberation Mono", "Cousine", "FreeMono"}},
    {"Courier", {"Liberation Mono", "Cousine", "FreeMono"}},
    {"Arial Narrow", {"Liberation Sans Narrow", "", ""}},
    {"Calibri", {"Carlito", "", ""}},
    {"Cambria", {"Caladea", "", ""}},
    {"MS Sans Serif", {"Microsoft Sans Serif", "Liberation Sans", "Arimo"}},
    {"MS Serif", {"Liberation Serif", "Tinos", "FreeSerif"}},
    {"Tms Rmn", {"Liberation Serif", "Tinos", "FreeSerif"}},
    {"Helv", {"Liberation Sans", "Arimo", "FreeSans"}},
};

struct PatternDeleter {
    void operator()(FcPattern* pattern) const noexcept { FcPatternDestroy(pattern); }
};
struct SetDeleter {
    void operator()(FcFontSet* set) const noexcept { FcFontSetDestroy(set); }
};
using Pattern = std::unique_ptr<FcPattern, PatternDeleter>;

int IntegerOf(const FcPattern* pattern, const char* object, int otherwise) {
    int value = otherwise;
    return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch ? value : otherwise;
}

bool BoolOf(const FcPattern* pattern, const char* object, bool otherwise) {
    FcBool value = otherwise ? FcTrue : FcFalse;
    return FcPatternGetBool(pattern, object, 0, &value) == FcResultMatch ? value == FcTrue : otherwise;
}

std::string_view StringOf(const FcPattern* pattern, const char* object, int number = 0) {
    FcChar8* value = nullptr;
    if (FcPatternGetString(pattern, object, number, &value) != FcResultMatch || value == nullptr) return {};
    return reinterpret_cast<const char*>(value);
}

bool HasCffOutlines(const FcPattern* pattern) { return StringOf(pattern, FC_FONTFORMAT) == "CFF"; }

/// Outlines of that form may also stand in files of their own, which lack what else a font is measured by.
bool IsOpenTypeFile(std::string_view path) {
    const std::string extension = std::filesystem::path(path).extension().string();
    return EqualCaseBlind(extension, ".otf") || EqualCaseBlind(extension, ".otc");
}

// Variable fonts would have to be frozen.
bool IsEmbeddable(const FcPattern* pattern) {
    const bool isKnown = StringOf(pattern, FC_FONTFORMAT) == "TrueType" ||
                         (HasCffOutlines(pattern) && IsOpenTypeFile(StringOf(pattern, FC_FILE)));
    return isKnown && BoolOf(pattern, FC_OUTLINE, true) && BoolOf(pattern, FC_SCALABLE, true) &&
           !BoolOf(pattern, FC_VARIABLE, false) && !BoolOf(pattern, FC_COLOR, false) &&
           IntegerOf(pattern, FC_INDEX, 0) < 0x10000;
}

Pattern Wanted(std::string_view family, bool bold, bool italic) {
    Pattern pattern(FcPatternCreate());
    const std::string name(family.substr(0, family.find('\0')));
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddString(pattern.get(), FC_FONTFORMAT, reinterpret_cast<const FcChar8*>("TrueType"));
    // Without a language fontconfig takes that of the environment, and the same report would look different elsewhere.
    FcPatternAddString(pattern.get(), FC_LANG, reinterpret_cast<const FcChar8*>("en"));
    return pattern;
}

int Distance(const FontFile& file, bool bold, bool italic) {
    const int weight = std::abs(file.weight - (bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR));
    return weight + std::abs(file.width - FC_WIDTH_NORMAL) * 10 + (file.slanted != italic ? 500 : 0);
}

bool HasFamily(const FontFile& file, std::string_view family) {
    return std::any_of(file.families.begin(), file.families.end(),
                       [&](const std::string& name) { return EqualCaseBlind(name, family); });
}

}  // namespace

void FontFiles::ReleaseConfig::operator()(FcConfig* config) const noexcept { FcConfigDestroy(config); }

FontFiles::FontFiles() : config_(FcConfigReference(nullptr)) {
    for (const FcSetName name : {FcSetSystem, FcSetApplication}) {
        const FcFontSet* set = config_ ? FcConfigGetFonts(config_.get(), name) : nullptr;
        for (int i = 0; set != nullptr && i < set->nfont; ++i) Add(set->fonts[i]);
    }
    if (files_.empty()) {
        throw RunTimeError(ErrorNumber::ObjectDoesNotExist,
                           "No TrueType or OpenType font is installed, so no text can be measured or printed; "
                           "install one, for example the Liberation fonts.");
    }
    // fontconfig's order follows the directories; ours may not, since equal reports shall give equal files.
    std::sort(files_.begin(), files_.end(), [](const FontFile& a, const FontFile& b) {
        return std::pair(std::string_view(a.path), a.index) < std::pair(std::string_view(b.path), b.index);
    });
}

void FontFiles::Add(const void* pattern) {
    const auto* font = static_cast<const FcPattern*>(pattern);
    FcCharSet* characters = nullptr;
    if (!IsEmbeddable(font) || FcPatternGetCharSet(font, FC_CHARSET, 0, &characters) != FcResultMatch) return;
    FontFile file;
    file.path = StringOf(font, FC_FILE);
    file.index = IntegerOf(font, FC_INDEX, 0);
    for (int i = 0; !StringOf(font, FC_FAMILY, i).empty(); ++i)
        file.families.emplace_back(StringOf(font, FC_FAMILY, i));
    file.weight = IntegerOf(font, FC_WEIGHT, FC_WEIGHT_REGULAR);
    file.slanted = IntegerOf(font, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
    file.width = IntegerOf(font, FC_WIDTH, FC_WIDTH_NORMAL);
    file.hasCffOutlines = HasCffOutlines(font);
    file.characters = characters;
    if (!file.path.empty() && !file.families.empty()) files_.push_back(std::move(file));
}

const FontFile* FontFiles::FindFamily(std::string_view family, bool bold, bool italic) const {
    const FontFile* best = nullptr;
    for (const FontFile& file : files_) {
        if (!HasFamily(file, family)) continue;
        if (best == nullptr || Distance(file, bold, italic) < Distance(*best, bold, italic)) best = &file;
    }
    return best;
}

const FontFile* FontFiles::FileOf(const void* pattern) const {
    const auto* font = static_cast<const FcPattern*>(pattern);
    const std::string_view path = StringOf(font, FC_FILE);
    const int index = IntegerOf(font, FC_INDEX, 0);
    for (const FontFile& file : files_) {
        if (file.path == path && file.index == index) return &file;
    }
    return nullptr;
}

FontFiles::Choice FontFiles::Find(std::string_view family, bool bold, bool italic) const {
    if (const FontFile* file = FindFamily(family, bold, italic)) return {file, std::string(family), false};
    for (const Twin& entry : kTwins) {
        if (!EqualCaseBlind(entry.original, family)) continue;
        for (const std::string_view twin : entry.twins) {
            if (twin.empty()) continue;
            if (const FontFile* file = FindFamily(twin, bold, italic)) return {file, std::string(twin), true};
        }
    }
    const std::vector<const FontFile*> others = Fallbacks(family, bold, italic);
    // The family of what fontconfig ranks first, but our own choice within it: its ranking puts names above styles.
    const std::string& name = others.empty() ? files_.front().families.front() : others.front()->families.front();
    return {FindFamily(name, bold, italic), name, true};
}

std::vector<const FontFile*> FontFiles::Fallbacks(std::string_view family, bool bold, bool italic) const {
    const Pattern pattern = Wanted(family, bold, italic);
    FcConfigSubstitute(config_.get(), pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    const std::unique_ptr<FcFontSet, SetDeleter> set(
        FcFontSort(config_.get(), pattern.get(), FcFalse, nullptr, &result));
    std::vector<const FontFile*> files;
    for (int i = 0; set && i < set->nfont; ++i) {
        if (const FontFile* file = FileOf(set->fonts[i])) files.push_back(file);
    }
    // TrueType's outlines take less room in a document; the others serve where no such font will do.
    std::stable_partition(files.begin(), files.end(), [](const FontFile* file) { return !file->hasCffOutlines; });
    return files;
}

bool FontFiles::HasCharacter(const FontFile& file, char32_t codePoint) {
    return FcCharSetHasChar(file.characters, codePoint) == FcTrue;
}

std::vector<std::string> FontFiles::PresentFamilies() const {
    std::set<std::string> names;
    for (const FontFile& file : files_) names.insert(file.families.begin(), file.families.end());
    for (const Twin& entry : kTwins) {
        const auto isThere = [&](std::string_view twin) { return names.count(std::string(twin)) != 0; };
        if (std::any_of(std::begin(entry.twins), std::end(entry.twins), isThere)) names.emplace(entry.original);
    }
    return {names.begin(), names.end()};
}

}  // namespace quillform::print
