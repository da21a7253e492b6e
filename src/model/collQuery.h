#pragma once

#include "model/KeyedCollection.h"
#include "model/clssQuery.h"

namespace quillform {

/// The query lines of a layout, positions 1 to Count.
class collQuery : public KeyedCollection<clssQuery> {};

}  // namespace quillform
