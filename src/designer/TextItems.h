#pragma once

#include <string_view>

#include "designer/DesignSurface.h"

namespace quillform::designer {

enum class TextKind { PageHeading, Normal };

/// The free texts of a layout, in a private copy. What is added or changed is seen on the surface at once and reaches
/// the layout with StoreTextItems. Positions are from 1; one that doesn't exist is passed over.
class TextItems {
public:
    explicit TextItems(DesignSurface& surface) : surface_(surface) { CopyTextItems(); }

    const collFields& Texts() const { return collTexts_; }
    static TextKind KindOf(const clssFields& item);

    /// A new text behind the last item, in the same row if there is room. `text` isn't empty.
    void Add(std::string_view text, TextKind kind);
    /// Another text, or the other kind, for one that is there; its place stays.
    void Change(int position, std::string_view text, TextKind kind);
    /// The text goes with its picture, and the layout is brought up to date.
    void Delete(int position);
    /// Puts the copy in place of the layout's texts: they stand behind all data items then.
    void StoreTextItems();

private:
    void CopyTextItems();
    void SizeToText(const clssFields& item);
    void Place(std::int16_t index);
    const Picture* LastPicture() const;
    void AvoidOverlap(std::int16_t index);

    DesignSurface& surface_;
    collFields collTexts_;
};

}  // namespace quillform::designer
