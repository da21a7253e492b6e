#include "catalog/FormulaLists.h"

namespace quillform {

std::optional<FunctionCode> FormulaOf(FieldType type, std::string_view choice) {
    if (choice.empty()) return FunctionCode::None;
    for (const FormulaChoice& formula : FormulasOf(type))
        if (formula.text == choice) return formula.code;
    return std::nullopt;
}

}  // namespace quillform
