#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "model/DesignGrid.h"
#include "model/ReportSettings.h"
#include "model/collFields.h"
#include "model/collQuery.h"

namespace quillform {

/// All that the program shares by design about the report at hand: items, query lines, settings, the boxes of the
/// items' pictures, and a few small values. One object, handed to whoever needs it.
struct Layout {
    collFields Fields;
    collQuery Queries;
    ReportSettings settings;
    std::string strAppPath;                     ///< the program's folder, with a trailing separator
    std::string strLayoutFile;                  ///< path of the layout, empty for one without a name
    std::int16_t intPreviewNumber = 1;          ///< number in the name of the screen output file
    std::int16_t intOptionItem = 0;             ///< position in Fields of the item handed to the options form
    std::map<std::int16_t, ItemSize> pictures;  ///< box of the picture `Index`, in cells

    /// The program start of the shared values: the program's folder and the preview number.
    void InitReportModule();
    /// The one reset: no items, no query lines, new-layout settings. The label measures and boolCourier stay.
    void ClearLayout();
    /// Box of an item's picture; an item without one has the box that its Length takes in whole cells.
    ItemSize PictureOf(const clssFields& item) const;
};

}  // namespace quillform
