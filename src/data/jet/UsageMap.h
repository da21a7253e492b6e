#pragma once

#include <vector>

#include "data/jet/PageFile.h"

namespace quillform::jet {

/// The pages of a usage map in ascending order; none for a null pointer. Pages behind the end of the file are left out.
std::vector<std::uint32_t> ReadUsageMap(const PageFile& file, RowPointer map);

}  // namespace quillform::jet
