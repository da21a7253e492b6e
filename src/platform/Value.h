#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillform {

/// What a value is. Byte, Integer and Long columns all give `Integer`.
enum class ValueKind : std::uint8_t {
    Null,
    Boolean,
    Integer,
    Currency,
    Single,
    Double,
    Date,
    Decimal,
    Text,
    Binary,
    Guid,
};

/// One value, looked at and not owned: cheap to copy, no allocation. Which members count depends on `kind`:
///
/// | kind                    | member                                                                 |
/// |-------------------------|------------------------------------------------------------------------|
/// | Boolean                 | `integer`, 0 or 1                                                      |
/// | Integer                 | `integer`                                                              |
/// | Currency                | `integer`, the amount times 10,000                                     |
/// | Single, Double          | `real`                                                                 |
/// | Date                    | `real`, days since 1899-12-30; the fraction is always counted forward  |
/// | Text                    | `text`, UTF-8                                                          |
/// | Decimal                 | `text`, plain decimal digits such as "-1.2345"                         |
/// | Guid                    | `text`, "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}"                        |
/// | Binary                  | `text`, the raw bytes                                                  |
///
/// `text` stays valid as long as whoever gave the view says (a record set: until the next move).
struct ValueView {
    ValueKind kind = ValueKind::Null;
    std::int64_t integer = 0;
    double real = 0;
    std::string_view text{};

    bool IsNull() const { return kind == ValueKind::Null; }
};

/// One value that owns its text.
class Value {
public:
    Value() = default;
    explicit Value(const ValueView& view)
        : kind_(view.kind), integer_(view.integer), real_(view.real), text_(view.text) {}

    static Value Boolean(bool truth) { return Value(ValueKind::Boolean, truth ? 1 : 0, 0, {}); }
    static Value Integer(std::int64_t number) { return Value(ValueKind::Integer, number, 0, {}); }
    /// `tenThousandths` is the amount times 10,000.
    static Value Currency(std::int64_t tenThousandths) { return Value(ValueKind::Currency, tenThousandths, 0, {}); }
    static Value Single(float number) { return Value(ValueKind::Single, 0, number, {}); }
    static Value Double(double number) { return Value(ValueKind::Double, 0, number, {}); }
    /// `serial` is in days since 1899-12-30.
    static Value Date(double serial) { return Value(ValueKind::Date, 0, serial, {}); }
    static Value Text(std::string text) { return Value(ValueKind::Text, 0, 0, std::move(text)); }
    static Value Decimal(std::string digits) { return Value(ValueKind::Decimal, 0, 0, std::move(digits)); }
    static Value Guid(std::string braced) { return Value(ValueKind::Guid, 0, 0, std::move(braced)); }
    static Value Binary(std::string bytes) { return Value(ValueKind::Binary, 0, 0, std::move(bytes)); }

    ValueKind Kind() const { return kind_; }
    bool IsNull() const { return kind_ == ValueKind::Null; }
    ValueView View() const { return {kind_, integer_, real_, text_}; }
    operator ValueView() const { return View(); }  // NOLINT(google-explicit-constructor): a view of itself

    friend bool operator==(const Value&, const Value&) = default;

private:
    Value(ValueKind kind, std::int64_t integer, double real, std::string text)
        : kind_(kind), integer_(integer), real_(real), text_(std::move(text)) {}

    ValueKind kind_ = ValueKind::Null;
    std::int64_t integer_ = 0;
    double real_ = 0;
    std::string text_;
};

/// Appends the value as the platform writes it when it is joined to a text: nothing for Null, "True" or "False",
/// numbers in their general decimal form, dates as "m/d/yyyy", with " h:mm:ss AM/PM" behind where there is a time of
/// day, a pure time alone; Currency with up to four decimals; Binary as its bytes taken for characters.
void AppendGeneralText(const ValueView& value, std::string& out);
std::string GeneralText(const ValueView& value);

/// The value as a number where it is one or reads as one (Boolean true is -1, a date its serial); 0 otherwise.
double NumberOf(const ValueView& value);

}  // namespace quillform
