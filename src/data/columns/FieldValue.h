#pragma once

#include "model/DataAccess.h"
#include "platform/Value.h"

namespace quillform::data {

/// The value in the form in which a column keeps it: rounded, parsed or cut to the column's kind. Null stays Null.
/// RunTimeError DataTypeMismatch where the value doesn't read as one of the kind, Overflow where it is out of the
/// column's range, ValueTooLong where a text or bytes don't fit its size. `currentYear` completes dates.
Value ValueForField(const Field& field, const ValueView& value, int currentYear);

}  // namespace quillform::data
