#pragma once

#include "data/sqlite/Connection.h"

namespace quillform::sqlite {

/// qf_stdev, qf_stdevp, qf_var, qf_varp (Null without enough numbers: two, or one for the "p" forms), qf_first,
/// qf_last.
void AddAggregates(Connection& connection);

}  // namespace quillform::sqlite
