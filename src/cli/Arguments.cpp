#include "cli/Arguments.h"

namespace quillform::cli {

Arguments::Arguments(std::span<const std::string_view> words, std::span<const Switch> switches)
    : words_(words), switches_(switches) {
    bool switchesEnded = false;
    while (next_ < words_.size()) {
        const std::string_view word = words_[next_++];
        if (switchesEnded || word.size() < 2 || word.front() != '-')
            operands_.emplace_back(word);
        else if (word == "--")
            switchesEnded = true;
        else if (word[1] == '-')
            TakeLong(word);
        else
            TakeShort(word);
    }
}

void Arguments::TakeLong(std::string_view word) {
    const std::size_t equals = word.find('=');
    const std::string_view name = word.substr(2, equals == std::string_view::npos ? equals : equals - 2);
    const Switch& found = Find(name);
    const bool hasOwn = equals != std::string_view::npos;
    if (hasOwn && found.value.empty()) throw UsageError("the switch --" + std::string(name) + " takes no value");
    Store(found, word.substr(0, equals), hasOwn ? std::optional(word.substr(equals + 1)) : std::nullopt);
}

void Arguments::TakeShort(std::string_view word) {
    for (std::size_t i = 1; i < word.size(); ++i) {
        const Switch& found = Find(word[i]);
        const std::string shown = std::string("-") + word[i];
        if (found.value.empty()) {
            Store(found, shown, std::nullopt);
            continue;
        }
        const std::string_view rest = word.substr(i + 1);
        Store(found, shown, rest.empty() ? std::nullopt : std::optional(rest));
        return;
    }
}

void Arguments::Store(const Switch& found, std::string_view shown, std::optional<std::string_view> value) {
    if (!found.value.empty() && !value) {
        if (next_ >= words_.size()) throw UsageError("the switch " + std::string(shown) + " needs a value");
        value = words_[next_++];
    }
    values_[std::string(found.name)] = value.value_or(std::string_view());
}

const Switch& Arguments::Find(std::string_view name) const {
    for (const Switch& candidate : switches_)
        if (candidate.name == name) return candidate;
    throw UsageError("there is no switch --" + std::string(name));
}

const Switch& Arguments::Find(char letter) const {
    for (const Switch& candidate : switches_)
        if (candidate.letter == letter) return candidate;
    throw UsageError(std::string("there is no switch -") + letter);
}

std::optional<std::string> Arguments::Value(std::string_view name) const {
    const auto found = values_.find(std::string(name));
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

void Arguments::ExpectOperands(std::size_t least, std::size_t most, std::string_view names) const {
    if (operands_.size() < least) throw UsageError("missing " + std::string(names));
    if (operands_.size() > most) throw UsageError("one word too many: \"" + operands_[most] + "\"");
}

}  // namespace quillform::cli
