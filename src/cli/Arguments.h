#pragma once

#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quillform::cli {

/// One switch of a verb. `value` is the name of its value in the help, empty for a switch without one.
struct Switch {
    char letter = 0;  ///< 0: long form only
    std::string_view name;
    std::string_view value;
    std::string_view help;
};

/// Wrong usage; `what()` is one sentence.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The words behind a verb, sorted into switches and operands: "--name value", "--name=value", "-n value", "-nvalue",
/// several letters in one word; "--" ends the switches, and "-" is an operand.
class Arguments {
public:
    /// UsageError for an unknown switch, a missing or a needless value.
    Arguments(std::span<const std::string_view> words, std::span<const Switch> switches);

    bool Has(std::string_view name) const { return values_.contains(std::string(name)); }
    std::optional<std::string> Value(std::string_view name) const;
    const std::vector<std::string>& Operands() const { return operands_; }
    /// UsageError unless there are between `least` and `most` operands; `names` tells what they are.
    void ExpectOperands(std::size_t least, std::size_t most, std::string_view names) const;

private:
    void TakeLong(std::string_view word);
    void TakeShort(std::string_view word);
    void Store(const Switch& found, std::string_view shown, std::optional<std::string_view> value);
    const Switch& Find(std::string_view name) const;
    const Switch& Find(char letter) const;

    std::span<const std::string_view> words_;
    std::span<const Switch> switches_;
    std::size_t next_ = 0;
    std::map<std::string, std::string> values_;
    std::vector<std::string> operands_;
};

}  // namespace quillform::cli
