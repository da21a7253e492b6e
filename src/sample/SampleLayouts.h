#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalog/CatalogTables.h"
#include "model/Layout.h"

namespace quillform::sample {

struct SampleLayout {
    std::string fileName;  ///< "STOCK.REP"
    Layout layout;
};

/// The sample reports over the sample database. Data items find their catalog rows by the text that the user sees.
/// `databasePath` is what the layouts hold as their report database.
std::vector<SampleLayout> MakeLayouts(const Catalog& catalog, std::string_view databasePath);

/// File names of the layouts, in the order of MakeLayouts.
std::span<const std::string_view> SampleLayoutNames();

}  // namespace quillform::sample
