#pragma once

#include <span>
#include <string_view>

#include "model/DataAccess.h"

namespace quillform::sql {

/// Functions that are more than a call by their arguments.
enum class SpecialFunction { None, IIf, Nz, Switch, Choose, IsNull, IsNumeric, IsDate, InStr, Format, CStr, CBool };

/// What a call gives: a type of its own, or one that follows its first argument.
enum class ResultRule { Fixed, NumberOfFirst, FirstAsItIs, TextOfFirst, Sum, Average };

struct FunctionEntry {
    std::string_view name;    ///< in the dialect, without `$`
    std::string_view sqlite;  ///< in SQLite
    int least = 0;            ///< number of arguments
    int most = 0;             ///< -1: any
    /// One letter an argument, the last for all further ones: T text, N number, D date, A any.
    std::string_view arguments;
    ResultRule rule = ResultRule::Fixed;
    FieldType type = FieldType::Text;
    bool aggregate = false;
    SpecialFunction special = SpecialFunction::None;
};

/// All functions of the dialect.
std::span<const FunctionEntry> Functions();
/// The function of that name, case-blind; null if there is none.
const FunctionEntry* FindFunction(std::string_view name);

}  // namespace quillform::sql
