#include "engine/ItemValues.h"

#include <optional>

#include "platform/Dates.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform {

namespace {

// The platform completes a date without a year by the current one; every date rebuilt here has its year.
constexpr int noYear = 1900;

std::string_view Part(std::string_view text, std::size_t start, std::size_t count) {
    return MidCharacters(text, start, count);
}

bool IsValidDigits(std::string_view value) {
    return Val(value) > 0 && Val(MidCharacters(value, 5)) > 0 && Val(RightCharacters(value, 2)) > 0 &&
           value.find('-') == std::string_view::npos && value.find('/') == std::string_view::npos;
}

std::string RebuiltDate(std::string_view value) {
    std::string date(Part(value, 5, 2));
    date.append("/").append(Part(value, 7, 2)).append("/").append(Part(value, 1, 4));
    return date;
}

/// Formats the date in `text`; false if there is none.
bool AppendDateOf(const std::string& text, const Mask& mask, std::string& out) {
    const std::optional<double> serial = ParseDate(text, noYear);
    if (!serial) return false;
    mask.AppendTo({.kind = ValueKind::Date, .real = DatePartOf(*serial)}, out);
    return true;
}

void AppendDateAndTime(std::string_view value, const Mask& mask, std::string& out) {
    if (!IsValidDigits(value)) return;
    const std::string date = RebuiltDate(value);
    // One digit of the minute is enough, as only the date is used.
    std::string whole = date;
    whole.append(" ").append(Part(value, 9, 2)).append(":").append(Part(value, 11, 1));
    if (AppendDateOf(whole, mask, out)) return;
    if (AppendDateOf(date, mask, out)) return;
    out += date;
}

void AppendDate(std::string_view value, const Mask& mask, std::string& out) {
    if (!IsValidDigits(value)) return;
    const std::string date = RebuiltDate(value);
    if (!AppendDateOf(date, mask, out)) out += date;
}

std::string TwoDigits(std::string_view part) {
    const std::string padded = "00" + TrimmedStr(Val(part));
    return padded.substr(padded.size() - 2);
}

std::string RebuiltTime(std::string_view value) {
    return TwoDigits(LeftCharacters(value, 2)) + ":" + TwoDigits(RightCharacters(value, 2));
}

void AppendTime(std::string_view value, const Mask& mask, std::string& out) {
    std::string_view limited = value;
    if (Val(value) > 2359) limited = "2359";
    if (Val(value) < 1) limited = "0000";
    const std::optional<double> serial = ParseDate(RebuiltTime(limited), noYear);
    if (serial)
        mask.AppendTo({.kind = ValueKind::Date, .real = TimePartOf(*serial)}, out);
    else
        out += RebuiltTime(value);
}

bool IsNumber(ValueKind kind) {
    switch (kind) {
        case ValueKind::Integer:
        case ValueKind::Currency:
        case ValueKind::Single:
        case ValueKind::Double:
        case ValueKind::Decimal:
            return true;
        case ValueKind::Null:
        case ValueKind::Boolean:
        case ValueKind::Date:
        case ValueKind::Text:
        case ValueKind::Binary:
        case ValueKind::Guid:
            return false;
    }
    return false;
}

/// Leading number of the value's text. Whole numbers, amounts and doubles are taken as they are, which is the same to
/// the 15 digits that the text has; a Single goes through its 7 digits, or its binary tail would show in sums.
double LeadingNumber(const ValueView& value, std::string& scratch) {
    switch (value.kind) {
        case ValueKind::Null:
            return 0;
        case ValueKind::Integer:
            return static_cast<double>(value.integer);
        case ValueKind::Currency:
            return static_cast<double>(value.integer) / 10000;
        case ValueKind::Double:
            return value.real;
        case ValueKind::Text:
            return Val(value.text);
        case ValueKind::Boolean:
        case ValueKind::Single:
        case ValueKind::Date:
        case ValueKind::Decimal:
        case ValueKind::Binary:
        case ValueKind::Guid:
            break;
    }
    scratch.clear();
    AppendGeneralText(value, scratch);
    return Val(scratch);
}

/// The value's text without outer blanks; a view of the value's own text where it has one.
std::string_view TrimmedText(const ValueView& value, std::string& scratch) {
    if (value.kind == ValueKind::Text) return Trim(value.text);
    scratch.clear();
    AppendGeneralText(value, scratch);
    return Trim(scratch);
}

void AppendColumnText(const ItemSource& source, const ValueView& value, std::string& scratch, std::string& out) {
    if (value.IsNull() && !source.isTextDate && source.isDate) return;
    if (source.isTextDate) {
        AppendTextDate(TrimmedText(value, scratch), source.mask, out);
    } else if (source.isDate && value.kind == ValueKind::Date) {
        source.mask.AppendTo({.kind = ValueKind::Date, .real = DatePartOf(value.real)}, out);
    } else if (IsNumber(value.kind)) {
        source.mask.AppendTo(value, out);
    } else {
        const std::string_view text = TrimmedText(value, scratch);
        if (source.mask.IsGeneral())
            out += text;
        else
            source.mask.AppendTo({.kind = ValueKind::Text, .text = text}, out);
    }
}

void AddToSums(clssFields& item) {
    item.SubTotal1 += item.CurrentTotal;
    item.SubTotal2 += item.CurrentTotal;
    item.GrandTotal += item.CurrentTotal;
}

}  // namespace

ItemSource BindItem(const clssFields& item, const CatalogRow* row, int column, const Recordset& records) {
    ItemSource source;
    if (item.Code == ItemCode::Text) return source;
    source.kind = ItemSource::Kind::MissingRow;
    if (!row) return source;

    source.mask = Mask(item.Mask);
    source.numeric = row->numeric;
    source.isTextDate = row->isTextDate && !row->formulaFlag;
    if (row->formulaFlag && row->aliasName.empty()) {
        source.kind = ItemSource::Kind::NamelessFormula;
        return source;
    }
    source.kind = row->formulaFlag ? ItemSource::Kind::Formula : ItemSource::Kind::Column;
    const std::string& name = row->formulaFlag ? row->aliasName : row->field;
    // The statement's own column serves two tables that share a field name; the name is for items that it selects
    // nothing for.
    source.column =
        column >= 0 && column < static_cast<int>(records.Fields().size()) ? column : records.FindField(name);
    if (source.column < 0)
        throw RunTimeError(ErrorNumber::ItemNotFound, "Item \"" + item.Text + "\": the records have no column \"" +
                                                          name + "\"; run \"quillform check\" on the layout.");
    source.isDate = records.Fields()[static_cast<std::size_t>(source.column)].Type == FieldType::Date;
    return source;
}

void AppendTextDate(std::string_view value, const Mask& mask, std::string& out) {
    switch (CountCharacters(value)) {
        case 12:
            AppendDateAndTime(value, mask, out);
            break;
        case 8:
            AppendDate(value, mask, out);
            break;
        case 4:
            AppendTime(value, mask, out);
            break;
        default:
            out += value;
    }
}

void GetItemValue(const ItemSource& source, const Recordset& shadow, clssFields& item, std::string& scratch) {
    // The two texts change places, so that their memory is used again for every record.
    item.LastValue.swap(item.ThisValue);
    item.ThisValue.clear();
    switch (source.kind) {
        case ItemSource::Kind::Text:
            item.ThisValue = Trim(item.Text);
            return;
        case ItemSource::Kind::MissingRow:
            item.ThisValue = Trim(item.Text);
            item.CurrentTotal = 0;
            break;
        case ItemSource::Kind::NamelessFormula:
            break;
        case ItemSource::Kind::Formula:
        case ItemSource::Kind::Column: {
            const ValueView value = shadow.Value(source.column);
            if (source.kind == ItemSource::Kind::Formula)
                item.ThisValue = TrimmedText(value, scratch);
            else
                AppendColumnText(source, value, scratch, item.ThisValue);
            item.CurrentTotal = source.numeric ? LeadingNumber(value, scratch) : 0;
            break;
        }
    }
    AddToSums(item);
}

}  // namespace quillform
