#include "sample/LayoutDraft.h"

#include "platform/Text.h"

namespace quillform::sample {

namespace {

constexpr int grey = 8;
constexpr int white = 15;
/// A box is filled with the colour behind the item's own number; this number fills with `colour`.
constexpr int FillOf(int colour) { return colour - 1; }

constexpr double titleSize = 18;

int CharactersOf(std::string_view text) { return static_cast<int>(CountCharacters(text)); }

}  // namespace

LayoutDraft::LayoutDraft(const Catalog& catalog, std::string_view databasePath, Accent accent)
    : catalog_(catalog), accent_(accent) {
    layout_.ClearLayout();
    layout_.settings.strDatabase[1] = databasePath;
    layout_.settings.intDatabaseCount = 1;
}

void LayoutDraft::TitleBlock(std::string_view title, std::string_view explanation, int left, int right) {
    constexpr int dateLength = 18;  // "September 30, 2025"
    constexpr int pageLength = 4;
    constexpr int numberLength = 2;
    const Look beside{.foreColour = grey, .alignment = 'R'};
    Heading(title, 0, left, {.font = accent_.titleFont, .size = titleSize, .bold = true, .foreColour = accent_.colour});
    Add(ItemCode::LongDate, "Date", 0, right - dateLength - 1, dateLength, beside);
    Heading(explanation, 2, left, {.italic = true, .foreColour = grey});
    Add(ItemCode::HeadingText, "Page", 2, right - pageLength - numberLength - 2, pageLength, beside);
    Add(ItemCode::PageNumber, "Page Number", 2, right - numberLength - 1, numberLength, beside);
}

void LayoutDraft::RecordCount(int row, int right) {
    constexpr int labelLength = 8;
    constexpr int countLength = 5;
    const Look look{.foreColour = grey, .alignment = 'R'};
    Add(ItemCode::HeadingText, "Records", row, right - countLength - labelLength - 2, labelLength, look);
    Add(ItemCode::RecordCount, "Record Count", row, right - countLength - 1, countLength, look);
}

void LayoutDraft::Columns(const std::vector<ColumnPlan>& columns, int headingRow, int left, int right) {
    Band(columns, headingRow, left, right);
    for (const ColumnPlan& column : columns) DetailItem(column, headingRow + 2 + column.row);
}

void LayoutDraft::Band(const std::vector<ColumnPlan>& columns, int row, int left, int right) {
    Look band{.bold = true, .foreColour = white, .backColour = FillOf(accent_.colour)};
    // The colour goes through the gaps and one cell beyond either edge; at this size an item of one character takes
    // one cell.
    Look filler = band;
    filler.size = 8;
    int end = left - 1;
    const auto fillTo = [&](int column) {
        while (end < column) Add(ItemCode::HeadingText, "", row, end++, 1, filler);
    };
    for (const ColumnPlan& column : columns) {
        if (column.heading.empty()) continue;
        fillTo(column.left);
        band.alignment = column.alignment;
        Add(ItemCode::HeadingText, column.heading, row, column.left, column.length, band);
        end = column.left + column.length + 1;
    }
    fillTo(right + 1);
}

void LayoutDraft::DetailItem(const ColumnPlan& column, int row) {
    Look look{.alignment = column.alignment};
    look.bold = (column.traits & (Primary | Secondary)) != 0;
    if ((column.traits & Primary) != 0) look.foreColour = accent_.colour;
    if (column.row > 0) {
        look.italic = true;
        look.foreColour = grey;
    }
    Value(column.field, row, column.left, column.length, look, column.traits);
}

void LayoutDraft::Heading(std::string_view text, int row, int left, const Look& look) {
    Add(ItemCode::HeadingText, text, row, left, CharactersOf(text), look);
}

void LayoutDraft::Special(int code, int row, int left, int length) { Add(code, "", row, left, length, {}); }

clssFields& LayoutDraft::Value(std::string_view field, int row, int left, int length, const Look& look,
                               unsigned traits) {
    const CatalogRow& source = RowOf(field);
    clssFields& item = Add(source.id, source.text, row, left, length, look);
    item.Mask = source.mask;
    item.PrimarySort = (traits & Primary) != 0;
    item.SecondarySort = (traits & Secondary) != 0;
    item.TriarySort = (traits & Third) != 0;
    item.SuppressDuplicate = (traits & HideDuplicates) != 0;
    item.SubTotalFlag1 = (traits & SubTotal1) != 0;
    item.SubTotalFlag2 = (traits & SubTotal2) != 0;
    item.GrandTotalFlag = (traits & GrandTotal) != 0;
    return item;
}

void LayoutDraft::UseLabels(const CommonSheet& sheet) { quillform::UseLabels(sheet, layout_.settings); }

void LayoutDraft::Spacer(int row, int left) { Add(ItemCode::Text, "", row, left, 1, {}); }

void LayoutDraft::Condition(std::string_view field, std::string_view comparison, std::string_view value,
                            std::string_view join) {
    clssQuery line;
    line.Key = " " + std::to_string(layout_.Queries.Count() + 1);
    line.Code = static_cast<std::int16_t>(RowOf(field).id);
    line.Operator = comparison;
    line.Value = value;
    line.Join = join;
    line.Text = field;
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
    item.FontUnderline = look.underline;
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
