#pragma once

#include <utility>

#include "model/KeyedCollection.h"
#include "model/clssFields.h"

namespace quillform {

/// The items of a layout, positions 1 to Count.
class collFields : public KeyedCollection<clssFields> {
public:
    /// Exchanges all values of the items at two positions; the objects stay where they are, so a reference held to one
    /// of them shows the other's data afterwards.
    void Swap(int swapThis, int forThis) {
        if (swapThis != forThis) std::swap(Item(swapThis), Item(forThis));
    }
};

}  // namespace quillform
