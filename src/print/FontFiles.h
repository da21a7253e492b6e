#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

typedef struct _FcConfig FcConfig;
typedef struct _FcCharSet FcCharSet;

namespace quillform::print {

/// One face in a font file that can be drawn and embedded: of fixed weight, with outlines in TrueType's form or in
/// the compact one (CFF) of other OpenType fonts.
struct FontFile {
    std::string path;
    int index = 0;  ///< of the face in a collection
    std::vector<std::string> families;
    int weight = 0;  ///< as fontconfig counts: 80 regular, 200 bold
    bool slanted = false;
    int width = 100;  ///< percent of normal
    bool hasCffOutlines = false;
    const FcCharSet* characters = nullptr;
};

/// The installed fonts, as fontconfig knows them.
class FontFiles {
public:
    /// ObjectDoesNotExist if no font is installed that could be drawn.
    FontFiles();

    struct Choice {
        const FontFile* file = nullptr;
        std::string family;     ///< name of the family that was found
        bool replaced = false;  ///< it isn't the one that was asked for
    };
    /// The face for a family name of any case: the family itself, else its metric twin, else what fontconfig gives.
    /// The style that comes nearest is taken where the family lacks the wanted one.
    Choice Find(std::string_view family, bool bold, bool italic) const;
    /// Other faces to look for characters that a face of `family` lacks, best first.
    std::vector<const FontFile*> Fallbacks(std::string_view family, bool bold, bool italic) const;
    static bool HasCharacter(const FontFile& file, char32_t codePoint);

    /// Families that are installed, and those whose metric twins are, in alphabetical order.
    std::vector<std::string> PresentFamilies() const;

private:
    struct ReleaseConfig {
        void operator()(FcConfig* config) const noexcept;
    };

    void Add(const void* pattern);
    const FontFile* FindFamily(std::string_view family, bool bold, bool italic) const;
    const FontFile* FileOf(const void* pattern) const;

    std::unique_ptr<FcConfig, ReleaseConfig> config_;  // owns the character sets
    std::vector<FontFile> files_;
};

}  // namespace quillform::print
