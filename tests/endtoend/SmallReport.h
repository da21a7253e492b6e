#pragma once

#include <functional>
#include <string>
#include <vector>

#include "endtoend/Support.h"
#include "sample/LayoutDraft.h"

namespace endtoend {

/// A visit to a town, the row of a small report. Empty texts are Null.
struct Visit {
    std::string area;
    std::string town;
    std::string note;
    int guests = 0;
};

/// Makes "Visits.mdb", with its catalog, and a layout over it in the folder: a title with date and page, the number of
/// records, columns Area (the first group), Town (the second), Note and Guests. `change` may alter the layout.
/// Gives the layout's path.
std::string MakeVisits(const ScratchFolder& folder, const std::vector<Visit>& visits,
                       const std::vector<quillform::sample::ColumnPlan>& columns,
                       const std::function<void(quillform::Layout&)>& change = {});

/// Compares with tests/golden/NAME. What differs is left beside it as NAME.actual; with QUILLFORM_ACCEPT_GOLDEN in the
/// environment the golden file is written anew instead.
void ExpectGolden(const std::string& name, const std::string& actual);

}  // namespace endtoend
