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

void AddSheets(Database& database, std::span<const CommonSheet> sheets) {
    const auto rows =
        database.OpenRecordset("SELECT * FROM [Report - Labels]", RecordsetType::Dynaset, RecordsetOption::AppendOnly);
    for (const CommonSheet& sheet : sheets) AddSheet(*rows, sheet);
}

}  // namespace quillform
