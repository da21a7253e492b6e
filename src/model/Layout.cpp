#include "model/Layout.h"

#include "platform/Paths.h"

namespace quillform {

void Layout::InitReportModule() {
    strAppPath = ProgramFolder();
    intPreviewNumber = 1;
}

void Layout::ClearLayout() {
    Queries.ClearAll();
    Fields.ClearAll();
    pictures.clear();

    ReportSettings fresh;
    fresh.strDatabase[1] = strAppPath + "sample.mdb";
    fresh.intDatabaseCount = 1;
    fresh.intOrientation = 1;
    fresh.intPaperSize = 1;
    fresh.sngLabelWidth = settings.sngLabelWidth;
    fresh.sngLabelHeight = settings.sngLabelHeight;
    fresh.intLabelsAcross = settings.intLabelsAcross;
    fresh.intLabelsDown = settings.intLabelsDown;
    fresh.sngHorizontalGap = settings.sngHorizontalGap;
    fresh.sngVerticalGap = settings.sngVerticalGap;
    fresh.sngTopMargin = settings.sngTopMargin;
    fresh.sngLeftMargin = settings.sngLeftMargin;
    fresh.boolCourier = settings.boolCourier;
    settings = fresh;
    strLayoutFile.clear();
}

ItemSize Layout::PictureOf(const clssFields& item) const {
    if (const auto found = pictures.find(item.Index); found != pictures.end()) return found->second;
    return {static_cast<float>(item.Length), 1};
}

}  // namespace quillform
