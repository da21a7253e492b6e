#include "data/collation/KeyBuilder.h"

#include <algorithm>

namespace quillform::collation {

namespace {

constexpr char noAccent = 2;

}  // namespace

void KeyBuilder::PadAccents() {
    if (covered_ >= positions_) return;
    extra_.append(positions_ - covered_, noAccent);
    covered_ = positions_;
}

void KeyBuilder::AppendExtra(const Weight& weight) {
    for (int i = weight.extraSize - 1; i >= 0; --i) extra_.push_back(static_cast<char>(weight.extra >> 8 * i));
}

void KeyBuilder::Add(char16_t unit) {
    const Weight& weight = weights_[unit];
    const std::size_t letters = pairs_ == PairedLetters::CountTwo ? weight.letters : 1;
    switch (weight.kind) {
        case WeightClass::None:
            return;
        case WeightClass::Ignorable:
            AddIgnorable(weight);
            return;
        case WeightClass::Modifier:
            AddModifier(weight);
            return;
        case WeightClass::Kana:
            kana_.push_back(weight.special == 1 ? 2 : 3);
            [[fallthrough]];
        case WeightClass::Accent:
            PadAccents();
            AppendExtra(weight);
            covered_ += letters;
            break;
        case WeightClass::Plain:
            break;
    }
    for (int i = weight.inlineSize - 1; i >= 0; --i) out_.push_back(static_cast<char>(weight.inlineBytes >> 8 * i));
    positions_ += letters;
}

void KeyBuilder::AddUnknown(char32_t letter) {
    out_.append("\xFF\xFF", 2);
    for (int shift = 16; shift >= 0; shift -= 8) out_.push_back(static_cast<char>(letter >> shift));
    ++positions_;
}

void KeyBuilder::AddModifier(const Weight& weight) {
    PadAccents();
    if (extra_.empty()) {
        AppendExtra(weight);
        leadingMarks_ = extra_.size();
    } else {
        extra_.back() = static_cast<char>(extra_.back() + static_cast<char>(weight.extra));
    }
}

/// The place is kept in 15 bits as 7 + 4 * q: texts are told apart by ignorable characters only up to there.
void KeyBuilder::AddIgnorable(const Weight& weight) {
    constexpr std::size_t lastPlace = 0x7FFF;
    const std::size_t accents = extra_.size() - leadingMarks_;
    const std::size_t ahead = positions_ > covered_ ? positions_ - covered_ : 0;
    const std::size_t place = std::min(7 + 4 * (extra_.empty() ? positions_ : accents + ahead), lastPlace);
    special_.push_back(static_cast<char>(0x80 | place >> 8));
    special_.push_back(static_cast<char>(place & 0xFF));
    special_.push_back(6);
    special_.push_back(static_cast<char>(weight.special));
}

void KeyBuilder::FinishKana() {
    while (!kana_.empty() && kana_.back() == 3) kana_.pop_back();
    for (std::size_t i = 0; i < kana_.size(); i += 3) {
        unsigned packed = 2;
        for (std::size_t k = i; k < i + 3; ++k) packed = packed << 2 | (k < kana_.size() ? kana_[k] : 0u);
        out_.push_back(static_cast<char>(packed));
    }
    out_.append("\xFF\x02\x80\xFF\x80", 5);
    if (!special_.empty()) out_.push_back('\xFF');
}

void KeyBuilder::Finish() {
    constexpr char partEnd = 1;
    out_.push_back(partEnd);
    while (!extra_.empty() && extra_.back() >= 0 && extra_.back() <= noAccent) extra_.pop_back();
    out_ += extra_;
    if (!kana_.empty() || !special_.empty()) {
        out_.push_back(partEnd);
        out_.push_back(partEnd);
    }
    if (!kana_.empty()) FinishKana();
    if (!special_.empty()) {
        out_.push_back(partEnd);
        out_ += special_;
    }
    out_.push_back('\0');
}

}  // namespace quillform::collation
