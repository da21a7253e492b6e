#include "platform/Format.h"

#include <cmath>
#include <optional>

#include "platform/DateRange.h"
#include "platform/Dates.h"
#include "platform/DecimalDigits.h"
#include "platform/MaskProgram.h"
#include "platform/MaskWriters.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

namespace quillform {
namespace {

using mask::Kind;
using mask::Program;

constexpr std::size_t kNegativeSection = 1;
constexpr std::size_t kZeroSection = 2;
constexpr std::size_t kNullSection = 3;

/// The digits of a value that is a number or reads as one.
std::optional<DecimalDigits> DigitsOfValue(const ValueView& value) {
    switch (value.kind) {
        case ValueKind::Boolean:
            return DigitsOfInteger(value.integer != 0 ? -1 : 0);
        case ValueKind::Integer:
            return DigitsOfInteger(value.integer);
        case ValueKind::Currency:
            return DigitsOfCurrency(value.integer);
        case ValueKind::Single:
            if (!std::isfinite(value.real)) return std::nullopt;
            return DigitsOf(static_cast<float>(value.real));
        case ValueKind::Double:
        case ValueKind::Date:
            if (!std::isfinite(value.real)) return std::nullopt;
            return DigitsOf(value.real);
        case ValueKind::Decimal:
        case ValueKind::Text:
            return DigitsOfText(value.text);
        case ValueKind::Null:
        case ValueKind::Binary:
        case ValueKind::Guid:
            return std::nullopt;
    }
    return std::nullopt;
}

/// The serial of a value that is a date, reads as one, or is a number inside the range of dates.
std::optional<double> SerialOfValue(const ValueView& value, int currentYear) {
    std::optional<double> serial;
    switch (value.kind) {
        case ValueKind::Boolean:
        case ValueKind::Integer:
        case ValueKind::Currency:
        case ValueKind::Single:
        case ValueKind::Double:
        case ValueKind::Date:
            serial = NumberOf(value);
            break;
        case ValueKind::Decimal:
            serial = ParseNumber(value.text);
            break;
        case ValueKind::Text:
            serial = ParseNumber(value.text);
            if (!serial) serial = ParseDate(value.text, currentYear);
            break;
        case ValueKind::Null:
        case ValueKind::Binary:
        case ValueKind::Guid:
            break;
    }
    return serial && IsDateSerial(*serial) ? serial : std::nullopt;
}

std::optional<bool> TruthOfValue(const ValueView& value) {
    if (value.kind == ValueKind::Text) {
        const std::string_view text = Trim(value.text);
        if (EqualCaseBlind(text, "True")) return true;
        if (EqualCaseBlind(text, "False")) return false;
    }
    const auto digits = DigitsOfValue(value);
    return digits ? std::optional(!digits->IsZero()) : std::nullopt;
}

void AppendTruth(Kind kind, const ValueView& value, std::string& out) {
    const auto truth = TruthOfValue(value);
    if (!truth) return AppendGeneralText(value, out);
    if (kind == Kind::YesNo) out += *truth ? "Yes" : "No";
    if (kind == Kind::TrueFalse) out += *truth ? "True" : "False";
    if (kind == Kind::OnOff) out += *truth ? "On" : "Off";
}

void AppendAsGeneralNumber(const ValueView& value, std::string& out) {
    if (value.kind == ValueKind::Text) {
        const auto number = ParseNumber(value.text);
        return number ? AppendGeneralNumber(*number, out) : AppendGeneralText(value, out);
    }
    if (value.kind == ValueKind::Date) return AppendGeneralNumber(value.real, out);
    if (value.kind == ValueKind::Boolean) return AppendGeneralInteger(value.integer != 0 ? -1 : 0, out);
    AppendGeneralText(value, out);
}

void AppendAsNumber(const Program& program, const ValueView& value, std::string& out) {
    auto digits = DigitsOfValue(value);
    if (!digits) return AppendGeneralText(value, out);
    const auto& sections = program.sections;
    const auto given = [&](std::size_t index) { return index < sections.size() && !sections[index].IsEmpty(); };
    if (digits->negative && given(kNegativeSection)) {
        if (!mask::RoundsToZero(sections[kNegativeSection], *digits)) {
            digits->negative = false;
            return mask::AppendNumber(program, sections[kNegativeSection], *digits, out);
        }
        digits = DecimalDigits();
    }
    const bool isZero = given(kZeroSection) && mask::RoundsToZero(sections[0], *digits);
    if (isZero) digits = DecimalDigits();
    mask::AppendNumber(program, sections[isZero ? kZeroSection : 0], *digits, out);
}

void AppendAsDate(const Program& program, const ValueView& value, std::string& out) {
    const auto serial = SerialOfValue(value, program.currentYear);
    if (!serial) return AppendGeneralText(value, out);
    mask::AppendDate(program, program.sections.front(), *serial, out);
}

void AppendAsText(const Program& program, const ValueView& value, std::string& out) {
    const bool isText = value.kind == ValueKind::Text || value.kind == ValueKind::Guid;
    const std::string general = isText ? std::string() : GeneralText(value);
    const std::string_view text = isText ? value.text : std::string_view(general);
    const bool hasEmptySection = program.sections.size() > 1;
    if (text.empty() && !hasEmptySection) return;
    mask::AppendText(program, program.sections[text.empty() ? 1 : 0], text, out);
}

void AppendNull(const Program& program, std::string& out) {
    if (program.kind == Kind::Text) return AppendAsText(program, ValueView{}, out);
    if (program.sections.size() <= kNullSection) return;
    for (const mask::Operation& operation : program.sections[kNullSection].operations)
        if (operation.step == mask::Step::Literal) out += program.LiteralOf(operation);
}

}  // namespace

struct Mask::Program {
    mask::Program compiled;
};

Mask::Mask() = default;
Mask::Mask(std::string_view mask) {
    auto compiled = mask::Compile(mask);
    if (compiled.kind != Kind::General) program_ = std::make_shared<const Program>(Program{std::move(compiled)});
}
Mask::Mask(const Mask&) = default;
Mask::Mask(Mask&&) noexcept = default;
Mask& Mask::operator=(const Mask&) = default;
Mask& Mask::operator=(Mask&&) noexcept = default;
Mask::~Mask() = default;

bool Mask::IsGeneral() const { return program_ == nullptr; }

void Mask::AppendTo(const ValueView& value, std::string& out) const {
    if (program_ == nullptr) return AppendGeneralText(value, out);
    const mask::Program& program = program_->compiled;
    if (value.IsNull()) return AppendNull(program, out);
    switch (program.kind) {
        case Kind::General:
            return AppendGeneralText(value, out);
        case Kind::Number:
            return AppendAsNumber(program, value, out);
        case Kind::Date:
            return AppendAsDate(program, value, out);
        case Kind::Text:
            return AppendAsText(program, value, out);
        case Kind::GeneralNumber:
            return AppendAsGeneralNumber(value, out);
        case Kind::YesNo:
        case Kind::TrueFalse:
        case Kind::OnOff:
            return AppendTruth(program.kind, value, out);
    }
}

std::string Format(const ValueView& value, std::string_view mask) {
    std::string text;
    Mask(mask).AppendTo(value, text);
    return text;
}

}  // namespace quillform
