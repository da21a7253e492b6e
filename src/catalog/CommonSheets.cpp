#include "catalog/CommonSheets.h"

#include <string>

namespace quillform {

namespace {

constexpr int letterPaper = 1;

void AddSheet(Recordset& rows, const CommonSheet& sheet) {
    rows.AddNew();
    rows.SetValue("Label Description", Value::Text(std::string(sheet.description)));
    rows.SetValue("Left Margin", Value::Single(sheet.leftMargin));
    rows.SetValue("Top Margin", Value::Single(sheet.topMargin));
    rows.SetValue("Height", Value::Single(sheet.height));
    rows.SetValue("Width", Value::Single(sheet.width));
    rows.SetValue("Across", Value::Integer(sheet.across));
    rows.SetValue("Down", Value::Integer(sheet.down));
    rows.SetValue("Horizontal Gap", Value::Single(sheet.horizontalGap));
    rows.SetValue("Vertical Gap", Value::Single(sheet.verticalGap));
    rows.SetValue("Paper Size", Value::Integer(letterPaper));
    rows.Update();
}

}  // namespace

void UseLabels(const CommonSheet& sheet, ReportSettings& settings) {
    settings.boolLabels = true;
    settings.intLabelsAcross = static_cast<std::int16_t>(sheet.across);
    settings.intLabelsDown = static_cast<std::int16_t>(sheet.down);
    settings.sngLabelHeight = sheet.height;
    settings.sngLabelWidth = sheet.width;
    settings.sngTopMargin = sheet.topMargin;
    settings.sngLeftMargin = sheet.leftMargin;
    settings.sngHorizontalGap = sheet.horizontalGap;
    settings.sngVerticalGap = sheet.verticalGap;
}

void AddSheets(Database& database, std::span<const CommonSheet> sheets) {
    const auto rows =
        database.OpenRecordset("SELECT * FROM [Report - Labels]", RecordsetType::Dynaset, RecordsetOption::AppendOnly);
    for (const CommonSheet& sheet : sheets) AddSheet(*rows, sheet);
}

}  // namespace quillform
