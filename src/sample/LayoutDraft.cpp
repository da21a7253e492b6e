#include "sample/LayoutDraft.h"

#include "platform/Text.h"

namespace quillform::sample {

namespace {

// Colour numbers. A box is filled with the number behind the item's own (the program's rule), so 0 fills in navy.
constexpr int navy = 1;
constexpr int grey = 8;
constexpr int white = 15;
constexpr int navyFill = 0;

constexpr double titleSize = 18;

}  // namespace

LayoutDraft::LayoutDraft(const Catalog& catalog, std::string_view databasePath) : catalog_(catalog) {
    layout_.ClearLayout();
    layout_.settings.strDatabase[1] = databasePath;
    layout_.settings.intDatabaseCount = 1;
}

void LayoutDraft::TitleBlock(std::string_view title, std::string_view explanation, int left, int right) {
    const auto characters = [](std::string_view text) { return static_cast<int>(CountCharacters(text)); };
    constexpr int dateLength = 18;  // "September 30, 2025"
    constexpr int pageLength = 4;
    const Look beside{.foreColour = grey, .alignment = 'R'};
    Add(ItemCode::HeadingText, title, 0, left, characters(title),
        {.size = titleSize, .bold = true, .foreColour = navy});
    Add(ItemCode::LongDate, "Date", 0, right - dateLength - 1, dateLength, beside);
    Add(ItemCode::HeadingText, explanation, 2, left, characters(explanation), {.italic = true, .foreColour = grey});
    Add(ItemCode::HeadingText, "Page", 2, right - 2 * pageLength - 2, pageLength, beside);
    Add(ItemCode::PageNumber, "Page Number", 2, right - pageLength - 1, pageLength, beside);
}

void LayoutDraft::HeadingText(std::string_view text, int row, int left, int length, const Look& look) {
    Add(ItemCode::HeadingText, text, row, left, length, look);
}

void LayoutDraft::RecordCount(int row, int right) {
    constexpr int labelLength = 8;
    constexpr int countLength = 6;
    const Look look{.foreColour = grey, .alignment = 'R'};
    Add(ItemCode::HeadingText, "Records", row, right - countLength - labelLength - 2, labelLength, look);
    Add(ItemCode::RecordCount, "Record Count", row, right - countLength - 1, countLength, look);
}

void LayoutDraft::Columns(const std::vector<ColumnPlan>& columns, int headingRow, int left, int right,
                          const Look& detail) {
    Look band{.bold = true, .foreColour = white, .backColour = navyFill};
    // One cell of the band's colour at either end, so that the headings don't touch its edges.
    Look edge = band;
    edge.size = 8;
    Add(ItemCode::HeadingText, "", headingRow, left - 1, 1, edge);
    for (const ColumnPlan& column : columns) {
        if (column.heading.empty()) continue;
        band.alignment = column.alignment;
        Add(ItemCode::HeadingText, column.heading, headingRow, column.left, column.length, band);
    }
    Add(ItemCode::HeadingText, "", headingRow, right, 1, edge);
    for (const ColumnPlan& column : columns) {
        const CatalogRow& row = RowOf(column.field);
        Look look = detail;
        look.alignment = column.alignment;
        if ((column.traits & (Primary | Secondary)) != 0) look.bold = true;
        if ((column.traits & Primary) != 0) look.foreColour = navy;
        clssFields& item = Add(row.id, row.text, headingRow + 1 + column.row, column.left, column.length, look);
        item.Mask = row.mask;
        item.PrimarySort = (column.traits & Primary) != 0;
        item.SecondarySort = (column.traits & Secondary) != 0;
        item.TriarySort = (column.traits & Third) != 0;
        item.SuppressDuplicate = (column.traits & HideDuplicates) != 0;
        item.SubTotalFlag1 = (column.traits & SubTotal1) != 0;
        item.SubTotalFlag2 = (column.traits & SubTotal2) != 0;
        item.GrandTotalFlag = (column.traits & GrandTotal) != 0;
    }
}

void LayoutDraft::DetailText(std::string_view text, int row, int left, int length, const Look& look) {
    Add(ItemCode::Text, text, row, left, length, look);
}

void LayoutDraft::Condition(std::string_view field, std::string_view comparison, std::string_view value,
                            std::string_view join) {
    clssQuery line;
    line.Key = " " + std::to_string(layout_.Queries.Count() + 1);
    line.Code = static_cast<std::int16_t>(RowOf(field).id);
    line.Operator = comparison;
    line.Value = value;
    line.Join = join;
    line.Text = std::string(field) + " " + std::string(comparison) + " " + std::string(value);
    layout_.Queries.Add(std::move(line));
}

void LayoutDraft::Groups(int characters1, int spaces1, int characters2, int spaces2) {
    ReportSettings& settings = layout_.settings;
    settings.intCharChange1 = static_cast<std::int16_t>(characters1);
    settings.intSpaces1 = static_cast<std::int16_t>(spaces1);
    settings.intCharChange2 = static_cast<std::int16_t>(characters2);
    settings.intSpaces2 = static_cast<std::int16_t>(spaces2);
}

clssFields& LayoutDraft::Add(int code, std::string_view text, int row, int left, int length, const Look& look) {
    clssFields item;
    const int number = layout_.Fields.Count() + 1;
    item.Key = " " + std::to_string(number);
    item.Index = static_cast<std::int16_t>(number);
    item.Code = static_cast<std::int16_t>(code);
    item.Text = text;
    item.Top = static_cast<float>(row);
    item.Left = static_cast<float>(left);
    item.Length = static_cast<std::int16_t>(length);
    item.FontName = look.font;
    item.FontSize = look.size;
    item.FontBold = look.bold;
    item.FontItalic = look.italic;
    item.FontForeColor = look.foreColour;
    item.FontBackColor = look.backColour;
    item.FontAllignment = std::string(1, look.alignment);
    return layout_.Fields.Add(std::move(item));
}

const CatalogRow& LayoutDraft::RowOf(std::string_view text) const {
    for (const CatalogRow& row : catalog_.Rows())
        if (row.text == text) return row;
    throw RunTimeError(ErrorNumber::ItemNotFound, "The sample catalog has no row \"" + std::string(text) + "\".");
}

}  // namespace quillform::sample
