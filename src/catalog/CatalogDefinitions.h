#pragma once

#include <string_view>

#include "model/DataAccess.h"

namespace quillform {

// The three tables as they are made: 15, 6 and 10 columns, without any index. This is the one place that knows them.
TableDef IndexTableDef();
TableDef RelationTableDef();
TableDef LabelsTableDef();

/// Whether the name is one of the three, case counted.
bool IsCatalogTable(std::string_view name);

/// Whether a configuration asks about a table of this name: every table but the catalog's own and those whose first
/// four characters are "MSys".
bool IsOfferedTable(std::string_view name);

}  // namespace quillform
