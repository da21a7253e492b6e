#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "catalog/PageAsker.h"
#include "model/DataAccess.h"

// What speaks against the replies of a walk, in words for the person who gave them.
namespace quillform::wizard {

/// The number that a text begins with, as a whole number; 0 if it begins with none. Empty beyond 16 bits.
std::optional<std::int16_t> WholeNumber(std::string_view text);

/// Why the catalog can't hold the name of a table or field, or no statement carry it: "its name has ..."; empty if they
/// can.
std::string NameProblem(std::string_view name);
/// The same as a whole sentence; `what` begins it, such as "The table".
std::string CheckName(std::string_view what, std::string_view name);

/// `behind` is the number of characters that the longest proposed mask adds to the description; 0 for columns that
/// aren't described by their masks.
Objection CheckDescription(std::string_view description, std::size_t behind);
/// `room` is the number of characters that the mask may have.
Objection CheckMask(std::string_view mask, std::size_t room);
/// The description with a mask behind it.
Objection CheckMaskedText(std::string_view text);
Objection CheckMaskCount(std::string_view reply);
/// `parameter` is "position" or "length", `least` the lowest that the functions take.
Objection CheckParameter(std::string_view parameter, std::string_view reply, int least);
Objection CheckAlias(Database& database, std::string_view alias);
Objection CheckFormula(FieldType type, std::string_view entry);

}  // namespace quillform::wizard
