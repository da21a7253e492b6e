#pragma once

#include "data/sqlite/Connection.h"
#include "platform/Clock.h"

namespace quillform::sqlite {

/// Adds the dialect's functions and aggregates ("qf_...") and the collation QFTEXT to a connection. `clock` serves Now
/// and its like and outlives the connection.
///
/// Arguments are Null, numbers and texts as PreparedStatement's table says. Null in gives Null out, but for those that
/// ask for Null (qf_isnull, qf_nz, qf_iif, qf_concat with one Null, ...). Truth is -1 and 0. A text where a number is
/// wanted is read as one, and an error out of the statement where it isn't.
void AddFunctions(Connection& connection, const Clock& clock);

}  // namespace quillform::sqlite
