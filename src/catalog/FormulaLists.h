#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "catalog/CatalogTables.h"
#include "model/DataAccess.h"

namespace quillform {

/// One choice of a formula list: what the user picks, and the code that the catalog keeps for it.
struct FormulaChoice {
    std::string_view text;
    FunctionCode code;
};

/// For texts and memos.
inline constexpr FormulaChoice textFormulas[] = {
    {"(None)", FunctionCode::None},
    {"Mid$(Field, Position, Length)", FunctionCode::Mid},
    {"Right$(Field, Position)", FunctionCode::Right},
    {"Left$(Field, Position)", FunctionCode::Left},
};
/// For everything else.
inline constexpr FormulaChoice numberFormulas[] = {
    {"(None)", FunctionCode::None},
    {"Sum(Field)", FunctionCode::Sum},
    {"Count(Field)", FunctionCode::Count},
    {"Avg(Field)", FunctionCode::Average},
    {"StDev(Field)", FunctionCode::StandardDeviation},
    {"stDevP(Field)", FunctionCode::PopulationDeviation},
};

constexpr bool HasTextFormulas(FieldType type) { return type == FieldType::Text || type == FieldType::Memo; }
constexpr std::span<const FormulaChoice> FormulasOf(FieldType type) {
    return HasTextFormulas(type) ? std::span<const FormulaChoice>(textFormulas) : numberFormulas;
}
/// The function of a choice in the column's list; None where nothing is picked. Empty for a text that isn't in the
/// list.
std::optional<FunctionCode> FormulaOf(FieldType type, std::string_view choice);

}  // namespace quillform
