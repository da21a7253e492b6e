#include <algorithm>
#include <iterator>

#include "print/PdfTarget.h"

namespace quillform::print {

namespace {

constexpr double kInch = 1440;

// Numbers as printer drivers use them.
constexpr PaperSize kPaperSizes[] = {
    {1, "Letter", 8.5 * kInch, 11 * kInch},
    {2, "Letter Small", 8.5 * kInch, 11 * kInch},
    {3, "Tabloid", 11 * kInch, 17 * kInch},
    {4, "Ledger", 17 * kInch, 11 * kInch},
    {5, "Legal", 8.5 * kInch, 14 * kInch},
    {6, "Statement", 5.5 * kInch, 8.5 * kInch},
    {7, "Executive", 7.5 * kInch, 10.5 * kInch},
    {16, "10 x 14", 10 * kInch, 14 * kInch},
    {19, "Envelope #9", 3.875 * kInch, 8.875 * kInch},
    {20, "Envelope #10", 4.125 * kInch, 9.5 * kInch},
    {21, "Envelope #11", 4.5 * kInch, 10.375 * kInch},
    {22, "Envelope #12", 4.5 * kInch, 11 * kInch},
    {23, "Envelope #14", 5 * kInch, 11.5 * kInch},
    {37, "Envelope Monarch", 3.875 * kInch, 7.5 * kInch},
    {38, "Envelope", 3.625 * kInch, 6.5 * kInch},
    {39, "US Standard Fanfold", 14.875 * kInch, 11 * kInch},
    {40, "German Std Fanfold", 8.5 * kInch, 12 * kInch},
    {41, "German Legal Fanfold", 8.5 * kInch, 13 * kInch},
};

}  // namespace

PaperSize PaperSizeOf(int number) {
    const auto* found = std::find_if(std::begin(kPaperSizes), std::end(kPaperSizes),
                                     [&](const PaperSize& size) { return size.number == number; });
    return found == std::end(kPaperSizes) ? PaperSize{} : *found;
}

}  // namespace quillform::print
