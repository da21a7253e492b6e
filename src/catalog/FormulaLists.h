#pragma once

#include <string_view>

#include "catalog/CatalogTables.h"

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

}  // namespace quillform
