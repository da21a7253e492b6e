#include "platform/Format.h"

namespace quillform {

struct Mask::Program {};

Mask::Mask() = default;
Mask::Mask(std::string_view) {}
Mask::Mask(const Mask&) = default;
Mask::Mask(Mask&&) noexcept = default;
Mask& Mask::operator=(const Mask&) = default;
Mask& Mask::operator=(Mask&&) noexcept = default;
Mask::~Mask() = default;

bool Mask::IsGeneral() const { return program_ == nullptr; }

void Mask::AppendTo(const ValueView& value, std::string& out) const { AppendGeneralText(value, out); }

std::string Format(const ValueView& value, std::string_view mask) {
    std::string text;
    Mask(mask).AppendTo(value, text);
    return text;
}

}  // namespace quillform
