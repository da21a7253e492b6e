#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/Format.h"

using namespace quillform;

namespace {

/// Takes a number from the input; zeros where it has ended.
template <typename Number>
Number Take(std::string_view& input) {
    Number number{};
    const std::size_t size = std::min(sizeof number, input.size());
    std::memcpy(&number, input.data(), size);
    input.remove_prefix(size);
    return number;
}

}  // namespace

/// Any mask on any value: the mask is the text up to the first line feed, the rest is the values.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    const double real = Take<double>(input);
    const auto whole = Take<std::int64_t>(input);
    const std::size_t end = std::min(input.find('\n'), input.size());
    const Mask mask(input.substr(0, end));
    const std::string text(input.substr(std::min(end + 1, input.size())));

    const Value values[] = {
        Value(),
        Value::Boolean(whole % 2 != 0),
        Value::Integer(whole),
        Value::Currency(whole),
        Value::Date(real),
        Value::Double(real),
        Value::Text(text),
        Value::Single(static_cast<float>(real)),
        Value::Guid(text),
        Value::Decimal(text),
        Value::Binary(text),
    };
    std::string out;
    for (const Value& value : values) {
        const std::size_t before = out.size();
        mask.AppendTo(value, out);
        // What one value gives doesn't depend on what stood before it.
        std::string alone;
        mask.AppendTo(value, alone);
        if (std::string_view(out).substr(before) != alone) __builtin_trap();
    }
    return 0;
}
