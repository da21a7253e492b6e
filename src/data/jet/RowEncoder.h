#pragma once

#include <optional>
#include <string>
#include <vector>

#include "data/jet/RowForm.h"
#include "data/jet/TableDefinition.h"

namespace quillform::jet {

/// Stored bytes of the columns of a row by position; nothing for Null. A Boolean is true where there is something.
using StoredValues = std::vector<std::optional<std::string>>;

/// Puts the stored bytes of a row together. docs/mdb-format.md, "Rows". A row that is longer than Layout::maxRow may
/// lack its end.
std::string EncodeRow(const TableDefinition& table, const Layout& form, const StoredValues& values);

/// The stored form of a value that goes into the row itself: everything but long values. ValueTooLong, Overflow,
/// DataTypeMismatch. Nothing for Null.
std::optional<std::string> EncodeValue(const Column& column, const ValueView& value, const Layout& form, int codePage);

/// The content of a long value. DataTypeMismatch.
std::string EncodeLongContent(const Column& column, const ValueView& value, const Layout& form, int codePage);

}  // namespace quillform::jet
