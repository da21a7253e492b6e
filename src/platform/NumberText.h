#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillform {

/// Characters that are kept on the stack as long as they are few, as the digits of nearly all numbers are.
class ShortText {
public:
    void Add(char c) {
        if (size_ < small_.size())
            small_[size_++] = c;
        else
            AddLarge(c);
    }
    std::string_view View() const {
        return large_.empty() ? std::string_view(small_.data(), size_) : std::string_view(large_);
    }

private:
    void AddLarge(char c) {
        if (large_.empty()) large_.assign(small_.data(), size_);
        large_ += c;
    }

    std::size_t size_ = 0;
    std::array<char, 64> small_;
    std::string large_;
};

/// The parts of a text that reads as a number.
struct NumberText {
    bool negative = false;
    ShortText digits;  ///< before and behind the point, without separators
    int pointAt = 0;   ///< how many of the digits stand before the point, the exponent counted in
};

/// Empty if the whole text isn't a number, or one beyond the range of a Double.
std::optional<NumberText> ReadNumberText(std::string_view text);

inline void AppendWhole(std::uint64_t number, std::string& out) {
    std::array<char, 20> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    out.append(text.data(), end);
}

}  // namespace quillform
