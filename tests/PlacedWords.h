#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillform {

/// A word of a PDF, as `pdftotext`, an independent reader, finds it. Lengths are twips from the sheet's corner.
struct PlacedWord {
    int page = 0;  ///< from 0
    double left = 0, top = 0, right = 0, bottom = 0;
    std::string text;
};
/// The words in what `pdftotext -bbox` prints.
std::vector<PlacedWord> WordsIn(std::string_view boxes);

/// Whether a word stands at a place, to a tenth of a millimetre.
bool HasWordAt(const std::vector<PlacedWord>& words, std::string_view text, int page, double left, double top);

/// Twips to the edge of the label at `position` (from 0) of its row or column, by the label settings in inches.
double LabelEdge(int position, double size, double gap, double margin);

}  // namespace quillform
