#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "catalog/CatalogTables.h"
#include "model/DataAccess.h"

namespace quillform {

/// Which of the catalog's ways a column is described in.
enum class FieldKind { Boolean, Date, Text, Number };

/// By the column's type; everything that is no Boolean, Date or Text is described as a number.
FieldKind FieldKindOf(FieldType type);

/// The mask proposed for a number: two decimals for Single and Double, none for all others.
std::string_view ProposedNumberMask(FieldType type);
/// The masks proposed for a date, in the order in which they are asked for.
inline constexpr std::string_view proposedDateMasks[] = {"mm/dd/yyyy", "mm/dd", "mmmm dd, yyyy", "yyyy/mm/dd"};

/// Whether a column is a text short enough to hold a date as digits, "yyyymmddhhmmss" at most.
bool MayBeTextDate(const Field& field);
/// How many characters the longest proposed mask adds to the description of a column that is described by its masks; 0
/// for all others.
std::size_t CharactersBehindDescription(const Field& field);

// Rows of `Report - Index` for one column of a user's table, without their ID. `description` is what the user reads,
// `mask` what the user gave. Columns that a row doesn't use hold a single blank.
CatalogRow NumberRow(std::string_view table, const Field& field, std::string_view description, std::string_view mask);
/// As wide as the column.
CatalogRow TextRow(std::string_view table, const Field& field, std::string_view description, std::string_view mask);
CatalogRow BooleanRow(std::string_view table, const Field& field, std::string_view description);
/// The text is "description (mask)", so that the rows of one column can be told apart.
CatalogRow DateRow(std::string_view table, const Field& field, std::string_view description, std::string_view mask);
/// A text column that holds a date as digits; the text is "description(mask)".
CatalogRow TextDateRow(std::string_view table, const Field& field, std::string_view description, std::string_view mask);

/// A function over a column. What a function or a column doesn't use is a single blank.
struct Formula {
    FunctionCode code = FunctionCode::None;
    std::string position = " ";
    std::string length = " ";
    std::string mask = " ";
    std::int16_t defaultLength = 0;
    std::string alias;
};
/// Position and length as typed, with a blank in front.
CatalogRow FormulaRow(std::string_view table, const Field& field, std::string_view description, const Formula& formula);

}  // namespace quillform
