#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <optional>

#include "persistence/LayoutFile.h"
#include "persistence/RecordLine.h"
#include "platform/CodePage.h"
#include "platform/Numbers.h"
#include "platform/OutputFile.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"
#include "platform/Text.h"

namespace quillform {

namespace {

using OptionalText = std::optional<std::string_view>;

/// The leading number of a field; empty if the field is missing or holds a number beyond every range.
std::optional<double> NumberIn(const OptionalText& field) {
    if (!field) return std::nullopt;
    try {
        return Val(*field);
    } catch (const RunTimeError&) {
        return std::nullopt;  // a load never stops on a bad value
    }
}

/// Reads the values of one record line; a value that is missing or doesn't fit keeps what it had, and is noted.
class ValueReader {
public:
    ValueReader(std::string_view line, std::size_t start) : line_(line, start) {}

    void Whole(const OptionalText& field, std::int16_t& value) {
        WholeAs(field, value, std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max());
    }
    void Whole(const OptionalText& field, std::int32_t& value) {
        WholeAs(field, value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max());
    }
    void Number(const OptionalText& field, double& value) {
        const std::optional<double> number = NumberIn(field);
        if (number) value = *number;
        Note(number.has_value());
    }
    void Number(const OptionalText& field, float& value) {
        const std::optional<double> number = NumberIn(field);
        const bool fits = number && std::abs(*number) <= static_cast<double>(std::numeric_limits<float>::max());
        if (fits) value = static_cast<float>(*number);
        Note(fits);
    }
    void Text(const OptionalText& field, std::string& value) {
        if (field) value = *field;
        Note(field.has_value());
    }
    /// "TRUE" in any case and with any outer blanks; anything else is false.
    void Flag(const OptionalText& field, bool& value) {
        if (field) value = UpperCase(Trim(*field)) == "TRUE";
        Note(field.has_value());
    }
    /// "True" to the letter.
    void ExactFlag(const OptionalText& field, bool& value) {
        if (field) value = *field == "True";
        Note(field.has_value());
    }
    /// A number other than 0.
    void NumberFlag(const OptionalText& field, bool& value) {
        std::int16_t number = value ? 1 : 0;
        Whole(field, number);
        value = number != 0;
    }

    OptionalText Unquoted() { return line_.Unquoted(); }
    OptionalText Quoted() { return line_.Quoted(); }
    bool IsWhole() const { return isWhole_; }

private:
    template <typename Number>
    void WholeAs(const OptionalText& field, Number& value, Number lowest, Number highest) {
        const std::optional<double> number = NumberIn(field);
        if (!number) return Note(false);
        const double whole = RoundHalfEven(*number);
        const bool fits = whole >= lowest && whole <= highest;
        if (fits) value = static_cast<Number>(whole);
        Note(fits);
    }
    void Note(bool isGood) { isWhole_ = isWhole_ && isGood; }

    RecordLine line_;
    bool isWhole_ = true;
};

clssFields NewItem() {
    clssFields item;
    item.FontName = "Times New Roman";
    item.FontSize = 10;
    item.FontBackColor = 15;
    item.FontAllignment = "L";
    return item;
}

/// False if a value was missing or didn't fit.
bool ReadItem(std::string_view line, clssFields& item) {
    ValueReader reader(line, 1);
    reader.Whole(reader.Unquoted(), item.Code);
    reader.Number(reader.Unquoted(), item.Top);
    reader.Number(reader.Unquoted(), item.Left);
    reader.Whole(reader.Unquoted(), item.Length);
    reader.Text(reader.Quoted(), item.Text);
    reader.Text(reader.Quoted(), item.FontName);
    reader.Number(reader.Quoted(), item.FontSize);
    reader.Flag(reader.Quoted(), item.FontItalic);
    reader.Flag(reader.Quoted(), item.FontUnderline);
    reader.Flag(reader.Quoted(), item.FontBold);
    reader.Whole(reader.Quoted(), item.FontForeColor);
    reader.Whole(reader.Quoted(), item.FontBackColor);
    reader.Text(reader.Quoted(), item.FontAllignment);
    for (bool clssFields::*flag : {&clssFields::PrimarySort, &clssFields::SecondarySort, &clssFields::TriarySort,
                                   &clssFields::SubTotalFlag1, &clssFields::SubTotalFlag2, &clssFields::GrandTotalFlag})
        reader.Flag(reader.Quoted(), item.*flag);
    reader.Text(reader.Quoted(), item.Mask);
    reader.Flag(reader.Quoted(), item.SuppressDuplicate);
    reader.Flag(reader.Quoted(), item.SuppressDetails);
    return reader.IsWhole();
}

bool ReadQuery(std::string_view line, clssQuery& query) {
    // The number is read from the third character on, because it is written with a blank before it.
    ValueReader reader(line, 2);
    reader.Whole(reader.Unquoted(), query.Code);
    reader.Text(reader.Quoted(), query.Text);
    reader.Text(reader.Quoted(), query.Value);
    reader.Text(reader.Quoted(), query.Operator);
    reader.Text(reader.Quoted(), query.Join);
    return reader.IsWhole();
}

bool ReadSettings(std::string_view line, ReportSettings& settings) {
    ValueReader reader(line, 1);
    reader.NumberFlag(reader.Unquoted(), settings.boolPageBreak1);
    reader.Whole(reader.Unquoted(), settings.intSpaces1);
    reader.Whole(reader.Unquoted(), settings.intOutputType);
    reader.Whole(reader.Quoted(), settings.intCharChange1);
    reader.NumberFlag(reader.Quoted(), settings.boolPageBreak2);
    reader.Whole(reader.Quoted(), settings.intSpaces2);
    reader.Whole(reader.Quoted(), settings.intCharChange2);
    reader.Whole(reader.Quoted(), settings.intOrientation);
    reader.Text(reader.Quoted(), settings.strDatabase[1]);
    reader.Whole(reader.Quoted(), settings.intJoinType);
    reader.Whole(reader.Quoted(), settings.intPaperSize);
    reader.ExactFlag(reader.Quoted(), settings.boolLabels);
    reader.Whole(reader.Quoted(), settings.intLabelsAcross);
    reader.Whole(reader.Quoted(), settings.intLabelsDown);
    for (float ReportSettings::*measure :
         {&ReportSettings::sngLabelHeight, &ReportSettings::sngLabelWidth, &ReportSettings::sngTopMargin,
          &ReportSettings::sngLeftMargin, &ReportSettings::sngHorizontalGap, &ReportSettings::sngVerticalGap})
        reader.Number(reader.Quoted(), settings.*measure);
    reader.ExactFlag(reader.Quoted(), settings.boolCourier);
    settings.intDatabaseCount = 1;
    return reader.IsWhole();
}

/// Takes a layout file line by line into a layout.
class LayoutReader {
public:
    LayoutReader(Layout& layout, TextMeasure& measure, const LoadOptions& options)
        : layout_(layout), measure_(measure), options_(options) {}

    void Take(std::string_view line) {
        ++number_;
        if (line.empty()) return;
        switch (line.front()) {
            case '^':
            case '~':
                return;
            case '#':
                return TakeItem(line);
            case '&':
                return TakeQuery(line);
            case '*':
                Note(ReadSettings(line, layout_.settings), "a value of the report settings is missing or no number");
                if (options_.checkDatabase) options_.checkDatabase();
                return;
            default:
                Note(false, "the line is no record of a layout and was passed over");
        }
    }

private:
    void TakeItem(std::string_view line) {
        const int index = layout_.Fields.Count() + 1;
        if (index > std::numeric_limits<std::int16_t>::max()) return Note(false, "the layout has too many items");
        clssFields item = NewItem();
        Note(ReadItem(line, item), "a value of the item is missing or doesn't fit; its default is used");
        item.Index = static_cast<std::int16_t>(index);
        item.Key = Str(static_cast<double>(index));
        layout_.pictures[item.Index] = MeasureItem(item, measure_);
        layout_.Fields.Add(std::move(item));
    }
    void TakeQuery(std::string_view line) {
        clssQuery query;
        Note(ReadQuery(line, query), "a value of the query line is missing");
        query.Key = Str(static_cast<double>(layout_.Queries.Count() + 1));
        layout_.Queries.Add(std::move(query));
    }
    void Note(bool isGood, std::string_view text) {
        if (!isGood && options_.problems) options_.problems->push_back({number_, std::string(text)});
    }

    Layout& layout_;
    TextMeasure& measure_;
    const LoadOptions& options_;
    int number_ = 0;
};

/// Layout files are written in the Windows character set; one that an editor has saved with a UTF-8 mark is read as
/// that.
std::string DecodedText(const std::string& bytes) {
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    return bytes.starts_with(utf8Mark) ? bytes.substr(utf8Mark.size()) : Utf8FromCp1252(bytes);
}

}  // namespace

bool LoadLayout(const std::string& fileName, Layout& layout, TextMeasure& measure, UserInterface& user,
                const LoadOptions& options) {
    const std::optional<ResolvedPath> found = FindFile(fileName);
    if (!found) {
        user.Message("The File That you selected is no longer on file");
        return false;
    }
    const std::string text = DecodedText(ReadWholeFile(found->path));
    layout.ClearLayout();
    layout.strLayoutFile = found->path.string();
    LayoutReader reader(layout, measure, options);
    const std::string_view all = text;
    for (std::size_t start = 0; start < all.size();) {
        const std::size_t end = std::min(all.find('\n', start), all.size());
        std::string_view line = all.substr(start, end - start);
        if (line.ends_with('\r')) line.remove_suffix(1);
        reader.Take(line);
        start = end + 1;
    }
    return true;
}

}  // namespace quillform
