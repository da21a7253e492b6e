#pragma once

#include <string>

#include "data/collation/IndexText.h"
#include "data/collation/Weights.h"

namespace quillform::collation {

/// Builds the key of one text in the order of Jet 4: main weights, then accents, then ignorable characters.
class KeyBuilder {
public:
    /// Main weights go straight to the end of `out`.
    KeyBuilder(PairedLetters pairs, std::string& out) : weights_(Jet4Weights()), pairs_(pairs), out_(out) {}

    void Add(char16_t unit);
    /// A character above U+FFFF: the order doesn't know it; it comes last, by its number.
    void AddUnknown(char32_t letter);
    /// Appends the later parts and the end mark.
    void Finish();

private:
    void PadAccents();
    void AppendExtra(const Weight& weight);
    void AddModifier(const Weight& weight);
    void AddIgnorable(const Weight& weight);
    void FinishKana();

    const std::vector<Weight>& weights_;
    PairedLetters pairs_;
    std::string& out_;
    std::string extra_{};
    std::string special_{};
    std::string kana_{};
    std::size_t positions_ = 0;     // letters so far
    std::size_t covered_ = 0;       // of which the accents reach
    std::size_t leadingMarks_ = 0;  // accent bytes of marks before the first letter
};

}  // namespace quillform::collation
