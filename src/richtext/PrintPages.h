#pragma once

#include <string_view>
#include <vector>

#include "model/PrintTarget.h"
#include "richtext/PageFlow.h"

namespace quillform::richtext {

/// Draws one page as the target's current page. Colours become the nearest of the target's sixteen. Positions count
/// from the sheet's corner from then on.
void DrawPage(const SheetPage& page, const std::vector<PlacedFont>& fonts, PrintTarget& target);

/// Prints all pages of a document and ends the target's document. Paper and orientation are those of each page, or the
/// next larger paper that has a number.
void PrintPages(const Document& document, PrintTarget& target);

/// Prints a text in the target's current font, page after page, and ends the target's document. Lines break at the
/// page's right edge, behind a blank where one stands; a tab goes to the next stop of eight characters; '\f' begins a
/// new page.
void PrintText(std::string_view text, PrintTarget& target);

}  // namespace quillform::richtext
