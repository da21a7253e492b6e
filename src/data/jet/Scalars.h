#pragma once

#include <string>

#include "data/jet/TableDefinition.h"
#include "platform/Value.h"

namespace quillform::jet {

/// A value of a type with a fixed number of bytes, all of which are there. Text forms go to `buffer`.
ValueView DecodeScalar(const Column& column, const std::uint8_t* bytes, std::string& buffer);

/// Appends the stored form of a value. DataTypeMismatch if it isn't of the column's kind, Overflow if it doesn't fit.
void AppendScalar(const Column& column, const ValueView& value, std::string& out);

}  // namespace quillform::jet
