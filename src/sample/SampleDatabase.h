#pragma once

#include <string_view>

#include "model/DataAccess.h"
#include "sample/Company.h"

namespace quillform::sample {

/// Makes the company's tables with their keys and indexes in an empty database and fills them: "Stock Code Table",
/// "Products", "Customers", "Orders", "Order Lines". One transaction.
void WriteTables(Database& database, const Company& company);

/// The catalog of the sample database: what can be reported of the company's tables, with masks, formulas and the links
/// between the tables, and a few label sheets. `path` is what the rows note as their database. One transaction.
void WriteCatalog(Database& database, std::string_view path);

}  // namespace quillform::sample
